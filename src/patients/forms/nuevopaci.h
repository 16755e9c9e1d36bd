#pragma once

#include "patients/NuevoPaciente.h"
#include "ui/Ventana.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QStackedWidget;
class QTimer;
class QToolButton;

namespace patients {

struct Conocido;
class FormularioAmplio;
class FormularioReducido;
class PanelParecidos;

/// Stores a new patient: in the reduced form with the few data that are known at the counter or on the telephone, in
/// the expanded one with the others too. Shows likely duplicates beside the form, one of which may be taken instead.
/// Opened with {"apellido", "nombres"} as a first guess, both optional; finishes with {"nrohc": int, "nombre":
/// "Apellido, Nombres"}.
class nuevopaci : public ui::Ventana
{
    Q_OBJECT

public:
    nuevopaci(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;
    void refrescar() override;
    [[nodiscard]] bool hayCambios() const override;
    [[nodiscard]] QString ayuda() const override;

    QRadioButton *opcionredu;
    QRadioButton *opcionampli;
    QLabel *numehistoriar; ///< the number that the patient will get
    QLineEdit *apellidor;
    QLineEdit *nombresr;
    QLineEdit *dnir;
    QLineEdit *telparr;
    QComboBox *coberturar;
    QToolButton *listacoberturar;
    QLineEdit *domicilior;
    QLineEdit *emailr;
    QPushButton *guardar;
    QPushButton *cancelar;

private:
    [[nodiscard]] Conocido conocido() const;
    void cambiarForma();
    void save();
    void buscarIguales();

    QStackedWidget *m_formas;
    FormularioReducido *m_reducido;
    FormularioAmplio *m_amplio;
    PanelParecidos *m_parecidos;
    QTimer *m_pausa;
    QString m_inicial; ///< what stood in the fields before the person typed
    [[nodiscard]] QString huella() const;
    bool m_preparada = false;
    bool m_descartar = false;
};

} // namespace patients
