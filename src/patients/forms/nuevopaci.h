#pragma once

#include "patients/NuevoPaciente.h"
#include "ui/Ventana.h"

class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QToolButton;

namespace patients {

/// Stores a new patient with the few data that are known at the counter or on the telephone. Opened with {"apellido",
/// "nombres"} as a first guess, both optional; finishes with {"nrohc": int, "nombre": "Apellido, Nombres"}.
class nuevopaci : public ui::Ventana
{
    Q_OBJECT

public:
    nuevopaci(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;
    void refrescar() override;
    [[nodiscard]] bool hayCambios() const override;
    [[nodiscard]] QString ayuda() const override;

    QLabel *numehistoria; ///< the number that the patient will get
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
    [[nodiscard]] DatosReducidos leer() const;
    void save();
    void limitarLargos();

    QFormLayout *m_campos;
    DatosReducidos m_inicial; ///< what stood in the fields before the person typed
    bool m_preparada = false;
    bool m_descartar = false;
};

} // namespace patients
