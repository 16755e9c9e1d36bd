#include "ui/Iconos.h"

#include <QFile>
#include <QGuiApplication>
#include <QPalette>

// A static library's resources are registered by hand, outside any namespace.
static void registrarIconos() { Q_INIT_RESOURCE(iconos); }

namespace ui {

bool paletaOscura()
{
    const QPalette paleta = QGuiApplication::palette();
    return paleta.color(QPalette::Window).lightness() < paleta.color(QPalette::WindowText).lightness();
}

QIcon icono(const QString &nombre)
{
    static const bool registrados = (registrarIconos(), true);
    Q_UNUSED(registrados)
    const QString juego = paletaOscura() ? QStringLiteral("oscuro") : QStringLiteral("claro");
    QIcon icono;
    for (const int lado : {16, 22, 32, 48, 64}) {
        const QString archivo = QStringLiteral(":/iconos/%1/%2/%3.svg").arg(juego).arg(lado).arg(nombre);
        if (QFile::exists(archivo))
            icono.addFile(archivo, QSize(lado, lado));
    }
    return icono;
}

} // namespace ui
