#include "printing/Letra.h"

#include "texto/TextoRico.h"

#include <QImage>

namespace printing {

namespace {

QFont enPixeles(double puntos, bool negrita)
{
    // In pixels: a painter would take points for those of its own device.
    QFont font = texto::letra();
    font.setPixelSize(qRound(puntos * unidadesPorPulgada / 72));
    font.setBold(negrita);
    return font;
}

bool esBlanco(QChar c) { return c == u' ' || c == u'\t'; }

} // namespace

QPaintDevice &dispositivoDeMedida()
{
    static QImage medida = [] {
        QImage una(1, 1, QImage::Format_RGB32);
        una.setDotsPerMeterX(qRound(unidadesPorPulgada / 0.0254));
        una.setDotsPerMeterY(qRound(unidadesPorPulgada / 0.0254));
        return una;
    }();
    return medida;
}

Letra::Letra(double puntos, bool negrita)
    : m_font(enPixeles(puntos, negrita))
    , m_medida(m_font)
    , m_alto(m_medida.height())
    , m_ascenso(m_medida.ascent())
{
    for (size_t i = 0; i < m_signos.size(); ++i)
        m_signos[i] = i < 32 ? 0.f : float(m_medida.horizontalAdvance(QChar(ushort(i))));
    m_signos['\t'] = m_signos[' '];
}

double Letra::ancho(QStringView texto) const
{
    double suma = 0;
    for (const QChar c : texto) {
        if (c.unicode() >= m_signos.size())
            return m_medida.horizontalAdvance(texto.toString());
        suma += double(m_signos[c.unicode()]);
    }
    return suma;
}

Letra::Anchos Letra::anchos(QStringView texto) const
{
    Anchos mayores;
    for (const QStringView linea : texto.split(u'\n')) {
        mayores.linea = qMax(mayores.linea, ancho(linea));
        qsizetype desde = 0;
        for (qsizetype i = 0; i <= linea.size(); ++i)
            if (i == linea.size() || esBlanco(linea[i])) {
                mayores.palabra = qMax(mayores.palabra, ancho(linea.sliced(desde, i - desde)));
                desde = i + 1;
            }
    }
    return mayores;
}

template <typename Linea>
void Letra::partir(QStringView texto, double ancho, Linea linea) const
{
    for (QStringView resto : texto.split(u'\n')) {
        if (resto.endsWith(u'\r'))
            resto.chop(1);
        if (this->ancho(resto) <= ancho) {
            linea(resto);
            continue;
        }
        while (!resto.isEmpty()) {
            double llevo = 0;
            qsizetype fin = 0, ultimoBlanco = -1;
            while (fin < resto.size()) {
                const qsizetype paso
                    = resto[fin].isHighSurrogate() && fin + 1 < resto.size() && resto[fin + 1].isLowSurrogate() ? 2 : 1;
                const double suyo = this->ancho(resto.sliced(fin, paso));
                if (esBlanco(resto[fin]))
                    ultimoBlanco = fin;
                else if (llevo + suyo > ancho && fin > 0)
                    break;
                llevo += suyo;
                fin += paso;
            }
            if (fin >= resto.size()) {
                linea(resto);
                break;
            }
            const qsizetype corte = ultimoBlanco > 0 ? ultimoBlanco : fin;
            linea(resto.first(corte));
            resto = resto.sliced(corte);
            while (!resto.isEmpty() && esBlanco(resto.front()))
                resto = resto.sliced(1);
        }
    }
}

QStringList Letra::renglones(const QString &texto, double ancho) const
{
    QStringList todos;
    partir(texto, ancho, [&](QStringView linea) { todos << linea.toString().replace(u'\t', u' '); });
    return todos;
}

int Letra::cantidadRenglones(const QString &texto, double ancho) const
{
    if (!texto.contains(u'\n') && this->ancho(texto) <= ancho)
        return 1;
    int cuantos = 0;
    partir(texto, ancho, [&](QStringView) { ++cuantos; });
    return qMax(1, cuantos);
}

QString Letra::recortado(const QString &texto, double ancho) const
{
    return m_medida.elidedText(texto, Qt::ElideRight, ancho);
}

} // namespace printing
