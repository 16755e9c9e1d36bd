#include "patients/forms/CamaraFoto.h"

#include "ui/Botones.h"

#include <QCamera>
#include <QHBoxLayout>
#include <QLabel>
#include <QMediaCaptureSession>
#include <QMediaDevices>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>
#include <QVideoFrame>
#include <QVideoSink>

namespace patients {

base::Resultado<std::optional<QImage>> CamaraFoto::tomar(QWidget *sobre)
{
    if (QMediaDevices::videoInputs().isEmpty())
        return base::Rechazo{
            base::titulo::atencion,
            tr("No se encontró ninguna cámara conectada a esta computadora."),
            {},
            base::Icono::Informacion};
    const QPointer<CamaraFoto> dialogo(new CamaraFoto(sobre));
    const bool usada = dialogo->exec() == Accepted && dialogo;
    const QImage foto = usada ? dialogo->m_ultima : QImage();
    if (dialogo)
        dialogo->deleteLater();
    return foto.isNull() ? std::optional<QImage>() : std::optional(foto);
}

CamaraFoto::CamaraFoto(QWidget *sobre)
    : QDialog(sobre)
    , m_vista(new QLabel(tr("Esperando a la cámara..."), this))
    , m_tomar(ui::boton(this, QStringLiteral("tomar"), tr("&Tomar"), QStringLiteral("camera-photo")))
    , m_usar(ui::boton(this, QStringLiteral("usar"), tr("&Usar esta foto"), QStringLiteral("dialog-ok")))
    , m_cuadros(std::make_unique<QVideoSink>())
    , m_camara(std::make_unique<QCamera>(QMediaDevices::defaultVideoInput()))
    , m_sesion(std::make_unique<QMediaCaptureSession>())
{
    setWindowTitle(tr("Foto del paciente"));
    m_vista->setFixedSize(480, 360);
    m_vista->setAlignment(Qt::AlignCenter);
    QPushButton *cancelar
        = ui::boton(this, QStringLiteral("cancelar"), tr("&Cancelar"), QStringLiteral("dialog-cancel"));
    auto *botones = new QHBoxLayout;
    botones->addWidget(m_tomar);
    botones->addStretch(1);
    botones->addWidget(m_usar);
    botones->addWidget(cancelar);
    auto *todo = new QVBoxLayout(this);
    todo->addWidget(m_vista);
    todo->addLayout(botones);
    m_tomar->setEnabled(false);
    m_usar->setEnabled(false);
    m_tomar->setDefault(true);

    connect(m_tomar, &QPushButton::clicked, this, [this] { congelar(!m_quieta); });
    connect(m_usar, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancelar, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_cuadros.get(), &QVideoSink::videoFrameChanged, this, [this](const QVideoFrame &cuadro) {
        if (!m_quieta)
            mostrar(cuadro.toImage());
    });
    connect(
        m_camara.get(), &QCamera::errorOccurred, this, [this](QCamera::Error, const QString &texto) { fallar(texto); });
    m_sesion->setCamera(m_camara.get());
    m_sesion->setVideoSink(m_cuadros.get());
    m_camara->start();
}

CamaraFoto::~CamaraFoto() { m_camara->stop(); }

void CamaraFoto::mostrar(const QImage &imagen)
{
    if (imagen.isNull())
        return;
    m_ultima = imagen;
    m_tomar->setEnabled(true);
    m_vista->setPixmap(
        QPixmap::fromImage(imagen.scaled(m_vista->size(), Qt::KeepAspectRatio, Qt::SmoothTransformation)));
}

void CamaraFoto::congelar(bool quieta)
{
    m_quieta = quieta;
    m_tomar->setText(quieta ? tr("&Tomar otra") : tr("&Tomar"));
    m_usar->setEnabled(quieta);
    if (quieta)
        m_usar->setFocus();
}

void CamaraFoto::fallar(const QString &texto)
{
    m_tomar->setEnabled(false);
    m_vista->setText(tr("La cámara no responde.\n%1").arg(texto));
}

} // namespace patients
