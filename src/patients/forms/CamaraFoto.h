#pragma once

#include "base/Rechazo.h"

#include <QDialog>
#include <QImage>

#include <memory>

class QCamera;
class QLabel;
class QMediaCaptureSession;
class QPushButton;
class QVideoSink;

namespace patients {

/// Takes a photograph with the computer's camera: the living picture, frozen by a button and taken over by another.
/// Made only when somebody asks for it: looking for cameras takes its time.
class CamaraFoto : public QDialog
{
    Q_OBJECT

public:
    /// Asks for a photograph over `sobre`. Empty optional: cancelled. Refused when there is no camera.
    [[nodiscard]] static base::Resultado<std::optional<QImage>> tomar(QWidget *sobre);

    ~CamaraFoto() override;

private:
    explicit CamaraFoto(QWidget *sobre);
    void mostrar(const QImage &imagen);
    void congelar(bool quieta);
    void fallar(const QString &texto);

    QLabel *m_vista;
    QPushButton *m_tomar;
    QPushButton *m_usar;
    QImage m_ultima;
    bool m_quieta = false;
    std::unique_ptr<QVideoSink> m_cuadros;
    std::unique_ptr<QCamera> m_camara;
    std::unique_ptr<QMediaCaptureSession> m_sesion;
};

} // namespace patients
