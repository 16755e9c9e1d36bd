#pragma once

#include "patients/AltaAmplia.h"
#include "ui/Campos.h"

#include <QWidget>

class QComboBox;
class QLineEdit;

namespace patients {

class OpcionCobertura;

/// The expanded form of a new patient: the fields of `nuevopaci` beyond the reduced ones, under their given names.
class FormularioAmplio : public QWidget
{
    Q_OBJECT

public:
    explicit FormularioAmplio(QWidget *parent = nullptr);

    /// Lists and widths from the database; throws db::Error.
    void cargar(db::Connection &conexion);
    /// Shows the number that the patient would get; kept as the counter's as long as it is not edited.
    void setNumeroGenerado(const QString &numero);

    [[nodiscard]] DatosAmplios leer() const;
    /// Takes over what was typed in the reduced form.
    void recibir(const DatosReducidos &datos);
    /// What the reduced form can show of it.
    [[nodiscard]] DatosReducidos reducidos() const;

signals:
    void cambiado();

private:
    [[nodiscard]] QString texto(const char *columna) const;
    [[nodiscard]] int entidad() const;
    void mostrarCobertura();

    ui::Campos m_campos;
    OpcionCobertura *m_cobertura;
    QString m_generado;
};

} // namespace patients
