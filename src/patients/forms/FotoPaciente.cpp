#include "patients/forms/FotoPaciente.h"

#include "db/Entorno.h"
#include "patients/Foto.h"
#include "ui/Estilo.h"
#include "ui/Iconos.h"

#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPromise>
#include <QThreadPool>
#include <QToolButton>
#include <QVBoxLayout>

namespace patients {

namespace {

constexpr int lado = 132;

/// The first of the patient's files that can be read; null image for none.
QFuture<QImage> leerAparte(const QString &carpetaDatos, int nrohc)
{
    auto promesa = std::make_shared<QPromise<QImage>>();
    promesa->start();
    QThreadPool::globalInstance()->start([promesa, carpetaDatos, nrohc] {
        QImage foto;
        const QStringList archivos = archivosDeFoto(carpetaDatos, nrohc);
        for (auto it = archivos.cbegin(); it != archivos.cend() && foto.isNull(); ++it)
            foto = leerFoto(*it);
        promesa->addResult(foto);
        promesa->finish();
    });
    return promesa->future();
}

} // namespace

FotoPaciente::FotoPaciente(db::Entorno &entorno, QWidget *parent)
    : QWidget(parent)
    , foto(new QLabel(this))
    , fotoelegir(new QToolButton(this))
    , fotocamara(new QToolButton(this))
    , fotoquitar(new QToolButton(this))
    , m_entorno(entorno)
{
    foto->setObjectName(QStringLiteral("foto"));
    foto->setFixedSize(lado, lado);
    foto->setAlignment(Qt::AlignCenter);
    auto *botones = new QHBoxLayout;
    botones->setSpacing(4);
    const struct {
        QToolButton *boton;
        const char *nombre, *icono;
        QString ayuda;
        void (FotoPaciente::*senial)();
    } todos[]
        = {{fotoelegir, "fotoelegir", "folder-open", tr("Elegir la foto de un archivo"), &FotoPaciente::elegir},
           {fotocamara, "fotocamara", "camera-photo", tr("Tomar la foto con la cámara"), &FotoPaciente::tomar},
           {fotoquitar, "fotoquitar", "edit-delete", tr("Eliminar la foto"), &FotoPaciente::quitar}};
    botones->addStretch(1);
    for (const auto &uno : todos) {
        uno.boton->setObjectName(QLatin1String(uno.nombre));
        uno.boton->setIcon(ui::icono(QLatin1String(uno.icono)));
        uno.boton->setToolTip(uno.ayuda);
        uno.boton->setAccessibleName(uno.ayuda);
        connect(uno.boton, &QToolButton::clicked, this, uno.senial);
        botones->addWidget(uno.boton);
    }
    botones->addStretch(1);
    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(0, 0, 0, 0);
    todo->setSpacing(4);
    todo->addWidget(foto, 0, Qt::AlignHCenter);
    todo->addLayout(botones);
    connect(&m_lectura, &QFutureWatcher<QImage>::finished, this, [this] {
        if (m_lectura.future().resultCount() == 0)
            return; // nobody's
        m_foto = m_lectura.result();
        pintar();
    });
    mostrar(std::nullopt);
}

void FotoPaciente::mostrar(const std::optional<PacienteAbierto> &paciente)
{
    m_foto = {};
    pintar();
    for (QToolButton *boton : {fotoelegir, fotocamara})
        boton->setEnabled(paciente.has_value());
    m_lectura.setFuture(paciente ? leerAparte(m_entorno.carpetaDatos(), paciente->nrohc()) : QFuture<QImage>());
}

void FotoPaciente::pintar()
{
    fotoquitar->setEnabled(hayFoto());
    const qreal densidad = devicePixelRatioF();
    QPixmap cuadro(QSize(lado, lado) * densidad);
    cuadro.fill(Qt::transparent);
    QPainter pintor(&cuadro);
    pintor.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const QRect todo(QPoint(0, 0), cuadro.size());
    QPainterPath marco;
    marco.addRoundedRect(todo, 6 * densidad, 6 * densidad);
    pintor.setClipPath(marco);
    pintor.fillRect(todo, palette().color(QPalette::AlternateBase));
    if (hayFoto()) {
        // The middle of it, whole squares of face and no bars.
        const int chico = qMin(m_foto.width(), m_foto.height());
        const QRect de((m_foto.width() - chico) / 2, (m_foto.height() - chico) / 3, chico, chico);
        pintor.drawImage(todo, m_foto, de);
    } else {
        ui::icono(QStringLiteral("user-identity")).paint(&pintor, todo.adjusted(34, 34, -34, -34));
    }
    pintor.end();
    cuadro.setDevicePixelRatio(densidad);
    foto->setPixmap(cuadro);
    foto->setToolTip(hayFoto() ? QString() : tr("Sin foto"));
}

} // namespace patients
