#include "maintenance/Ajustes.h"

namespace maintenance {

QString Ajuste::rotulo() const
{
    QString texto = etiqueta;
    texto.remove(u'&').replace(u'\n', u' ');
    while (texto.endsWith(u':') || texto.endsWith(u'.') || texto.endsWith(u' '))
        texto.chop(1);
    return texto;
}

const Ajuste *buscarAjuste(QStringView columna)
{
    for (const GrupoAjustes &grupo : gruposDeAjustes())
        for (const SeccionAjustes &seccion : grupo.secciones)
            for (const Ajuste &ajuste : seccion.ajustes)
                if (columna.compare(ajuste.columna, Qt::CaseInsensitive) == 0)
                    return &ajuste;
    return nullptr;
}

QString nombreCompleto(const Ajuste &ajuste)
{
    for (const GrupoAjustes &grupo : gruposDeAjustes())
        for (const SeccionAjustes &seccion : grupo.secciones)
            for (const Ajuste &suyo : seccion.ajustes)
                if (suyo.columna == ajuste.columna)
                    return seccion.titulo + u": "_qs + ajuste.rotulo();
    return ajuste.rotulo();
}

} // namespace maintenance
