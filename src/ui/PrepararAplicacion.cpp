#include "ui/PrepararAplicacion.h"

#include "ui/Estilo.h"
#include "ui/Iconos.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace ui {

void prepararAplicacion(QApplication &aplicacion)
{
    QLocale::setDefault(QLocale(QStringLiteral("es_AR")));
    // Without the file Qt's own dialogs stay English; ours carry their own words.
    auto *traductor = new QTranslator(&aplicacion);
    if (traductor->load(QStringLiteral("qtbase_es"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(traductor);
    aplicarEstilo(aplicacion);
    QApplication::setWindowIcon(icono(QStringLiteral("office-address-book")));
}

} // namespace ui
