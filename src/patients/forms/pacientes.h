#pragma once

#include "patients/Ficha.h"
#include "ui/Campos.h"
#include "ui/Ventana.h"

#include <QImage>

class QLabel;
class QPushButton;
class QTabWidget;

namespace ui {
class Borrador;
}

namespace patients {

struct BotonRegistro;
class ColumnaRegistros;
class EncabezadoPaciente;
class FotoPaciente;
class OpcionCobertura;

/// The patient file ("Ficha del Paciente"). Opened with {"nrohc"} on that patient, or without it for a new one. One
/// patient from its opening to its closing or to the next request: what is saved goes to that patient's row or nowhere.
class pacientes : public ui::Ventana
{
    Q_OBJECT

public:
    pacientes(db::Entorno &entorno, ui::Ventanas &ventanas);
    ~pacientes() override;

    bool preparar(const ui::Pedido &pedido) override;
    void refrescar() override;
    [[nodiscard]] bool hayCambios() const override;
    [[nodiscard]] QString ayuda() const override;

    /// What takes a photograph, over this window: the computer's camera unless told otherwise.
    using Camara = std::function<base::Resultado<std::optional<QImage>>(QWidget *)>;
    void setCamara(Camara camara) { m_camara = std::move(camara); }

    /// The patient of this window; empty while a new one has not been saved.
    [[nodiscard]] const std::optional<PacienteAbierto> &paciente() const { return m_paciente; }

    EncabezadoPaciente *encabezado;
    QTabWidget *solapas;
    OpcionCobertura *cobertura;
    FotoPaciente *foto;
    ColumnaRegistros *registros;
    QLabel *estado; ///< "Guardado 09:05"
    QPushButton *nuevo;
    QPushButton *guardar;
    QPushButton *impri;
    QPushButton *cerrar;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    // The layout, in pacientesFormulario.cpp.
    void construir();
    [[nodiscard]] QWidget *construirDatos();
    [[nodiscard]] QWidget *construirSolapas();
    void conLista(const QString &columna, const QString &titulo);
    void conEdad(const QString &columna);

    void abrir(const std::optional<PacienteAbierto> &paciente);
    void mostrarEncabezado();
    void mostrarEdades();
    void mostrarCobertura();
    void alCambiar(const QString &columna);
    [[nodiscard]] bool aceptaDejar();
    [[nodiscard]] QString titulo() const;
    void crear();
    void save();
    void print();
    void abrirRegistro(const BotonRegistro &boton);
    void elegirArchivoFoto();
    void tomarFoto();
    void ponerFoto(const QImage &imagen);

    ui::Campos m_campos;
    std::unique_ptr<ui::Borrador> m_borrador;
    std::optional<PacienteAbierto> m_paciente;
    QHash<QString, QLabel *> m_edades; ///< by date column
    Camara m_camara;
    bool m_preparada = false;
};

} // namespace patients
