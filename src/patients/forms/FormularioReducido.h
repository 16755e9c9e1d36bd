#pragma once

#include "patients/NuevoPaciente.h"

#include <QWidget>

class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QToolButton;

namespace ui {
class Ventana;
class Ventanas;
} // namespace ui

namespace patients {

struct Conocido;

/// The reduced form of a new patient: the few data known at the counter or on the telephone, under their given names.
class FormularioReducido : public QWidget
{
    Q_OBJECT

public:
    /// `ventana` is the window it is part of, over which the list of insurers opens.
    FormularioReducido(ui::Ventana &ventana, ui::Ventanas &ventanas);

    /// Lists, widths and the number that the patient will get; what is typed stays. Throws db::Error.
    void cargar(db::Connection &conexion);
    [[nodiscard]] DatosReducidos leer() const;
    void mostrar(const DatosReducidos &datos);
    /// What is known to look for likely duplicates by.
    [[nodiscard]] Conocido conocido() const;

    QLabel *numehistoriar; ///< the number that the patient will get
    QLineEdit *apellidor;
    QLineEdit *nombresr;
    QLineEdit *dnir;
    QLineEdit *telparr;
    QComboBox *coberturar;
    QToolButton *listacoberturar;
    QLineEdit *domicilior;
    QLineEdit *emailr;

signals:
    /// Something that likely duplicates are looked for by was typed.
    void cambiado();

private:
    QFormLayout *m_campos;
};

} // namespace patients
