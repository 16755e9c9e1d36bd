#pragma once

#include "patients/PacienteAbierto.h"

#include <QFutureWatcher>
#include <QImage>
#include <QWidget>

class QLabel;
class QToolButton;

namespace db {
class Entorno;
}

namespace patients {

/// The photograph of a patient with the buttons that choose, take and remove it. Read beside the window's thread: a
/// slow shared folder does not hold the window up.
class FotoPaciente : public QWidget
{
    Q_OBJECT

public:
    explicit FotoPaciente(db::Entorno &entorno, QWidget *parent = nullptr);

    /// Shows that patient's photograph as soon as it is read; without a patient the buttons are off.
    void mostrar(const std::optional<PacienteAbierto> &paciente);
    [[nodiscard]] bool hayFoto() const { return !m_foto.isNull(); }

    QLabel *foto;
    QToolButton *fotoelegir;
    QToolButton *fotocamara;
    QToolButton *fotoquitar;

signals:
    /// A button was pressed; who holds this runs the action and shows its failures.
    void elegir();
    void tomar();
    void quitar();

private:
    void pintar();

    db::Entorno &m_entorno;
    QImage m_foto;
    QFutureWatcher<QImage> m_lectura; ///< forgets the one before with each new patient
};

} // namespace patients
