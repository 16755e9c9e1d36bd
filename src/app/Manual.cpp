#include "app/Manual.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>

namespace app {

namespace {

QString leerArchivo(const QString &archivo)
{
    QFile file(archivo);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// What a person reads of a line of Markdown.
QString sinMarcas(QString linea)
{
    static const QRegularExpression enlace(QStringLiteral(R"(!?\[([^\]]*)\]\([^)]*\))"));
    static const QRegularExpression principio(QStringLiteral(R"(^\s*(#+|[-*]|\d+\.|>)\s+)"));
    static const QRegularExpression rayas(QStringLiteral(R"(^[\s|:\-]+$)"));
    if (rayas.match(linea).hasMatch())
        return {};
    linea.replace(enlace, QStringLiteral("\\1")).remove(principio);
    linea.remove(QStringLiteral("**")).remove(u'`').replace(u'|', u' ').remove(u'*');
    return linea.simplified();
}

PaginaManual leerPagina(const QString &raiz, const QString &archivo)
{
    static const QRegularExpression imagen(QStringLiteral(R"(\([^)\s]*pantallas/([^)/]+)\.png\))"));
    PaginaManual pagina;
    pagina.archivo = archivo;
    QStringList lineas;
    const QString todo = leerArchivo(raiz + u'/' + archivo);
    for (const QString &linea : todo.split(u'\n')) {
        const QString texto = sinMarcas(linea);
        if (linea.startsWith(QLatin1String("# ")) && pagina.titulo.isEmpty())
            pagina.titulo = texto;
        else if (linea.startsWith(QLatin1String("## ")))
            pagina.secciones << texto;
        if (!texto.isEmpty())
            lineas << texto;
        for (auto hallada = imagen.globalMatch(linea); hallada.hasNext();)
            pagina.imagenes << hallada.next().captured(1);
    }
    pagina.texto = lineas.join(u' ');
    if (pagina.titulo.isEmpty())
        pagina.titulo = QFileInfo(archivo).completeBaseName();
    return pagina;
}

/// Some words before and after a place, whole.
QString alrededor(const QString &texto, qsizetype lugar, qsizetype largo)
{
    constexpr qsizetype antes = 30, despues = 60;
    qsizetype desde = qMax<qsizetype>(0, lugar - antes), hasta = qMin(texto.size(), lugar + largo + despues);
    if (desde > 0)
        desde = texto.indexOf(u' ', desde) + 1;
    if (hasta < texto.size())
        hasta = qMax(texto.lastIndexOf(u' ', hasta), lugar + largo);
    return (desde > 0 ? QStringLiteral("... ") : QString()) + texto.mid(desde, hasta - desde)
        + (hasta < texto.size() ? QStringLiteral(" ...") : QString());
}

} // namespace

Manual::Manual(const QString &raiz)
{
    const QString indice = QStringLiteral("guia.md");
    if (!QFile::exists(raiz + u'/' + indice))
        return;
    QStringList archivos{indice};
    static const QRegularExpression enlace(QStringLiteral(R"(\((guia/[^)#]+\.md)(#[^)]*)?\))"));
    const QString texto = leerArchivo(raiz + u'/' + indice);
    for (auto hallado = enlace.globalMatch(texto); hallado.hasNext();) {
        const QString archivo = hallado.next().captured(1);
        if (!archivos.contains(archivo) && QFile::exists(raiz + u'/' + archivo))
            archivos << archivo;
    }
    for (const QString &archivo : std::as_const(archivos))
        m_paginas << leerPagina(raiz, archivo);

    const auto enlazadas = m_paginas.size();
    for (const QString &nombre : QDir(raiz + QStringLiteral("/guia")).entryList({QStringLiteral("*.md")}, QDir::Files))
        if (const QString archivo = QStringLiteral("guia/") + nombre; !archivos.contains(archivo))
            m_paginas << leerPagina(raiz, archivo);
    std::sort(m_paginas.begin() + enlazadas, m_paginas.end(), [](const PaginaManual &a, const PaginaManual &b) {
        return sinAcentos(a.titulo) < sinAcentos(b.titulo);
    });
}

QString Manual::paginaDeVentana(const QString &ventana) const
{
    for (const PaginaManual &pagina : m_paginas)
        if (pagina.imagenes.contains(ventana))
            return pagina.archivo;
    return {};
}

QVector<HallazgoManual> Manual::buscar(const QString &texto) const
{
    const QStringList palabras = sinAcentos(texto).split(u' ', Qt::SkipEmptyParts);
    QVector<HallazgoManual> enTitulo, enTexto;
    if (palabras.isEmpty())
        return {};
    for (int i = 0; i < m_paginas.size(); ++i) {
        const PaginaManual &pagina = m_paginas[i];
        const auto todasEn = [&](const QString &donde) {
            return std::all_of(
                palabras.begin(), palabras.end(), [&](const QString &palabra) { return donde.contains(palabra); });
        };
        const QString plano = sinAcentos(pagina.texto);
        if (!todasEn(plano))
            continue;
        // After the title, which stands in the list anyway.
        qsizetype lugar = plano.indexOf(palabras.first(), pagina.titulo.size());
        if (lugar < 0)
            lugar = 0;
        const HallazgoManual hallazgo{i, alrededor(pagina.texto, lugar, palabras.first().size())};
        (todasEn(sinAcentos(pagina.titulo)) ? enTitulo : enTexto) << hallazgo;
    }
    return enTitulo + enTexto;
}

QString sinAcentos(QStringView texto)
{
    QString plano(texto.size(), Qt::Uninitialized);
    for (qsizetype i = 0; i < texto.size(); ++i) {
        const QString partes = texto[i].decompositionTag() == QChar::Canonical ? texto[i].decomposition() : QString();
        plano[i] = (partes.isEmpty() ? texto[i] : partes.front()).toLower();
    }
    return plano;
}

QString anclaDe(const QString &encabezado)
{
    QString ancla;
    for (const QChar letra : encabezado.toLower())
        if (letra.isLetterOrNumber() || letra == u'-' || letra == u'_')
            ancla += letra;
        else if (letra.isSpace())
            ancla += u'-';
    return ancla;
}

} // namespace app
