#pragma once

#include "patients/PacienteAbierto.h"
#include "ui/Campos.h"
#include "ui/Ventana.h"

class QComboBox;
class QPushButton;

namespace ui {
class Borrador;
class EditorTexto;
} // namespace ui

namespace patients {

class EncabezadoPaciente;

/// The clinical-history sheet of a patient: free formatted text beside blood group, Rh factor and alerts. Opened with
/// {"nrohc"}; keeps that patient until it is closed or asked for another one.
class histoclinica : public ui::Ventana
{
    Q_OBJECT

public:
    histoclinica(db::Entorno &entorno, ui::Ventanas &ventanas);
    ~histoclinica() override;

    bool preparar(const ui::Pedido &pedido) override;
    void refrescar() override;
    [[nodiscard]] bool hayCambios() const override;
    [[nodiscard]] QString ayuda() const override;

    EncabezadoPaciente *encabezado;
    QComboBox *GrupoSanguineo;
    QComboBox *FactorSanguineo;
    ui::EditorTexto *HC;
    QPushButton *aceptar;
    QPushButton *imprimir;
    QPushButton *cancelar;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void construir();
    void abrir(const PacienteAbierto &paciente);
    void mostrarEncabezado();
    [[nodiscard]] bool save();
    void print();

    ui::Campos m_campos;
    std::unique_ptr<ui::Borrador> m_borrador;
    std::optional<PacienteAbierto> m_paciente;
};

} // namespace patients
