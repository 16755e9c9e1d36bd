#include "tds/servidor/Lote.h"

#include <QVector>

namespace tds {

namespace {

/// Position after what cannot hold a separator and begins at `i`: a quoted text, a name in brackets, a comment.
qsizetype despuesDeCerrado(const QString &texto, qsizetype i)
{
    const QChar c = texto.at(i);
    const auto hasta = [&](const QString &fin, qsizetype desde) {
        const qsizetype lugar = texto.indexOf(fin, desde);
        return lugar < 0 ? texto.size() : lugar + fin.size();
    };
    if (c == u'\'') {
        qsizetype fin = i;
        do
            fin = hasta(QStringLiteral("'"), fin + 1);
        while (fin < texto.size() && texto.at(fin) == u'\'');
        return fin;
    }
    if (c == u'[')
        return hasta(QStringLiteral("]"), i + 1);
    const QStringView dos = QStringView(texto).mid(i, 2);
    if (dos == u"--")
        return hasta(QStringLiteral("\n"), i);
    if (dos == u"/*")
        return hasta(QStringLiteral("*/"), i);
    return i;
}

bool esLetra(QChar c) { return c.isLetterOrNumber() || c == u'_' || c == u'@'; }

} // namespace

QStringList sentenciasDe(const QString &lote)
{
    QStringList todas;
    QString actual;
    int abiertos = 0;
    const auto cerrar = [&] {
        if (!actual.trimmed().isEmpty())
            todas << actual.trimmed();
        actual.clear();
    };
    for (qsizetype i = 0; i < lote.size();) {
        if (const qsizetype fin = despuesDeCerrado(lote, i); fin > i) {
            actual += QStringView(lote).mid(i, fin - i);
            i = fin;
            continue;
        }
        if (esLetra(lote.at(i))) {
            qsizetype fin = i;
            while (fin < lote.size() && esLetra(lote.at(fin)))
                ++fin;
            const QString palabra = lote.mid(i, fin - i).toUpper();
            const bool deTransaccion
                = palabra == u"BEGIN" && QStringView(lote).mid(fin).trimmed().startsWith(u"TRAN", Qt::CaseInsensitive);
            if ((palabra == u"BEGIN" && !deTransaccion) || palabra == u"CASE")
                ++abiertos;
            if (palabra == u"END")
                --abiertos;
            actual += QStringView(lote).mid(i, fin - i);
            i = fin;
            continue;
        }
        if (lote.at(i) == u';' && abiertos == 0)
            cerrar();
        else
            actual += lote.at(i);
        ++i;
    }
    cerrar();
    return todas;
}

QString conSignos(const QString &sentencia, QVector<int> &orden)
{
    QString salida;
    for (qsizetype i = 0; i < sentencia.size();) {
        if (const qsizetype fin = despuesDeCerrado(sentencia, i); fin > i) {
            salida += QStringView(sentencia).mid(i, fin - i);
            i = fin;
            continue;
        }
        if (QStringView(sentencia).mid(i, 2).compare(u"@P", Qt::CaseInsensitive) == 0 && i + 2 < sentencia.size()
            && sentencia.at(i + 2).isDigit()) {
            qsizetype fin = i + 2;
            while (fin < sentencia.size() && sentencia.at(fin).isDigit())
                ++fin;
            orden << sentencia.mid(i + 2, fin - i - 2).toInt() - 1;
            salida += u'?';
            i = fin;
            continue;
        }
        salida += sentencia.at(i);
        ++i;
    }
    return salida;
}

} // namespace tds
