#include "ui/NombreArchivo.h"

namespace ui {

QString nombreDeArchivo(QString titulo)
{
    for (QChar &c : titulo)
        if (QStringView(u"\\/:*?\"<>|").contains(c) || c < u' ')
            c = u' ';
    titulo = titulo.simplified().left(100).trimmed();
    return titulo.isEmpty() ? QStringLiteral("Documento") : titulo;
}

} // namespace ui
