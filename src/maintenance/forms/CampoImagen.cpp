#include "maintenance/forms/CampoImagen.h"

#include "ui/Botones.h"
#include "ui/Estilo.h"

#include <QHBoxLayout>
#include <QImageReader>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace maintenance {

namespace {

constexpr QSize muestra(192, 108);

/// A picture no larger than it is shown; null when it is none. The content tells the format, not the name.
QImage leer(const QString &archivo)
{
    QImageReader lector(archivo);
    lector.setDecideFormatFromContent(true);
    lector.setAutoTransform(true);
    if (const QSize tamano = lector.size(); tamano.isValid())
        lector.setScaledSize(tamano.scaled(muestra, Qt::KeepAspectRatio).expandedTo({1, 1}));
    return lector.read();
}

} // namespace

CampoImagen::CampoImagen(QWidget *parent)
    : QWidget(parent)
    , elegir(ui::boton(this, QStringLiteral("elegirfondo"), tr("&Elegir imagen..."), QStringLiteral("insert-image")))
    , quitar(ui::boton(this, QStringLiteral("quitarfondo"), tr("&Quitar"), QStringLiteral("edit-delete")))
    , m_muestra(new QLabel(this))
{
    m_muestra->setFixedSize(muestra + QSize(2, 2));
    m_muestra->setFrameShape(QFrame::StyledPanel);
    m_muestra->setAlignment(Qt::AlignCenter);
    auto *botones = new QVBoxLayout;
    botones->setSpacing(ui::espacio);
    botones->addWidget(elegir);
    botones->addWidget(quitar);
    botones->addStretch(1);
    auto *fila = new QHBoxLayout(this);
    fila->setContentsMargins(0, 0, 0, 0);
    fila->addWidget(m_muestra);
    fila->addLayout(botones);
    fila->addStretch(1);
    setFocusProxy(elegir);
    setArchivo({});
    connect(quitar, &QPushButton::clicked, this, [this] { setArchivo({}); });
}

void CampoImagen::setArchivo(const QString &archivo)
{
    const QImage imagen = archivo.isEmpty() ? QImage() : leer(archivo);
    if (imagen.isNull())
        m_muestra->setText(archivo.isEmpty() ? tr("Sin imagen") : tr("No se puede mostrar"));
    else
        m_muestra->setPixmap(QPixmap::fromImage(imagen));
    quitar->setEnabled(!archivo.isEmpty());
    if (std::exchange(m_archivo, archivo) != archivo)
        emit cambiado();
}

bool CampoImagen::esImagen(const QString &archivo) { return !leer(archivo).isNull(); }

QString CampoImagen::filtro()
{
    QStringList formatos;
    for (const QByteArray &formato : QImageReader::supportedImageFormats())
        formatos << QStringLiteral("*.") + QString::fromLatin1(formato);
    return tr("Imágenes (%1)").arg(formatos.join(u' '));
}

} // namespace maintenance
