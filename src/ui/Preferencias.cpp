#include "ui/Preferencias.h"

#include <QSettings>

namespace ui {

namespace {
std::unique_ptr<QSettings> &archivo()
{
    static std::unique_ptr<QSettings> unico;
    return unico;
}
} // namespace

void Preferencias::usarArchivo(const QString &ruta)
{
    archivo() = ruta.isEmpty() ? nullptr : std::make_unique<QSettings>(ruta, QSettings::IniFormat);
}

QString Preferencias::leer(const QString &clave, const QString &sinValor)
{
    return archivo() ? archivo()->value(clave, sinValor).toString() : sinValor;
}

void Preferencias::guardar(const QString &clave, const QString &valor)
{
    if (archivo())
        archivo()->setValue(clave, valor);
}

} // namespace ui
