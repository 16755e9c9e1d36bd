#include "texto/Rtf.h"

#include "base/Windows1252.h"

#include <QHash>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <vector>

namespace texto {

namespace {

class Lector
{
public:
    Lector(QStringView rtf, QTextDocument &destino)
        : m_rtf(rtf)
        , m_cursor(&destino)
    {
    }

    void leer();

private:
    enum class Destino { Texto, Letras, Colores, Nada };
    struct Estado {
        QTextCharFormat formato;
        Qt::Alignment alineacion = Qt::AlignLeft;
        Destino destino = Destino::Texto;
        int saltear = 1; ///< characters that stand after \u for readers without Unicode
        bool oculto = false;
        bool vineta = false; ///< inside the text of a bullet
    };

    void control();
    void palabra(const QString &nombre, int numero, bool hayNumero);
    bool destino(const QString &nombre);
    bool signo(const QString &nombre);
    void formato(const QString &nombre, int numero, bool hayNumero);
    void caracter(QChar c);
    void parrafo();
    void volcar();
    [[nodiscard]] Estado &ahora() { return m_pila.back(); }
    [[nodiscard]] bool quedan(qsizetype n = 1) const { return m_i + n <= m_rtf.size(); }

    QStringView m_rtf;
    qsizetype m_i = 0;
    QTextCursor m_cursor;
    std::vector<Estado> m_pila{Estado()};
    QString m_pendiente; ///< text in the format of ahora()
    int m_sobran = 0; ///< characters still to be passed over
    bool m_estrella = false; ///< the next word names a destination that may be ignored
    QHash<int, QString> m_letras;
    int m_letra = 0;
    std::vector<QColor> m_colores;
    QColor m_color;
};

void Lector::leer()
{
    m_cursor.beginEditBlock();
    while (quedan()) {
        const QChar c = m_rtf[m_i++];
        if (c == u'{') {
            volcar();
            if (m_pila.size() < 2000)
                m_pila.push_back(m_pila.back());
        } else if (c == u'}') {
            volcar();
            if (m_pila.size() > 1)
                m_pila.pop_back();
        } else if (c == u'\\') {
            control();
        } else if (c != u'\r' && c != u'\n' && !c.isNull()) {
            caracter(c);
        }
    }
    volcar();
    // The box ends its text with a paragraph mark that nobody typed.
    if (m_cursor.block().length() == 1 && m_cursor.position() > 0)
        m_cursor.deletePreviousChar();
    m_cursor.endEditBlock();
}

void Lector::control()
{
    if (!quedan())
        return;
    const QChar c = m_rtf[m_i++];
    if (c == u'\'') {
        bool hex = false;
        const int byte = quedan(2) ? m_rtf.sliced(m_i, 2).toInt(&hex, 16) : 0;
        if (hex) {
            m_i += 2;
            const char codigo = char(byte);
            caracter(base::desdeWindows1252({&codigo, 1}).at(0));
        }
        return;
    }
    if (!c.isLetter() || c.unicode() > 127) {
        switch (c.unicode()) {
        case u'*': m_estrella = true; break;
        case u'~': caracter(QChar::Nbsp); break;
        case u'_': caracter(u'-'); break;
        case u'\r':
        case u'\n': parrafo(); break;
        case u'\\':
        case u'{':
        case u'}': caracter(c); break;
        default: break;
        }
        return;
    }
    const qsizetype desde = m_i - 1;
    while (quedan() && m_rtf[m_i].isLetter() && m_rtf[m_i].unicode() < 128)
        ++m_i;
    const QString nombre = m_rtf.sliced(desde, m_i - desde).toString();
    const qsizetype cifras = m_i;
    if (quedan() && m_rtf[m_i] == u'-')
        ++m_i;
    while (quedan() && m_rtf[m_i].isDigit() && m_i - cifras < 10)
        ++m_i;
    bool hayNumero = false;
    const int numero = m_rtf.sliced(cifras, m_i - cifras).toInt(&hayNumero);
    if (quedan() && m_rtf[m_i] == u' ')
        ++m_i;
    palabra(nombre, hayNumero ? numero : 0, hayNumero);
}

void Lector::palabra(const QString &nombre, int numero, bool hayNumero)
{
    const bool estrella = std::exchange(m_estrella, false);
    if (destino(nombre))
        return;
    if (estrella) {
        volcar();
        ahora().destino = Destino::Nada;
        return;
    }
    if (ahora().destino == Destino::Colores) {
        const int nivel = qBound(0, numero, 255);
        if (!m_color.isValid())
            m_color = Qt::black;
        if (nombre == u"red")
            m_color.setRed(nivel);
        else if (nombre == u"green")
            m_color.setGreen(nivel);
        else if (nombre == u"blue")
            m_color.setBlue(nivel);
        return;
    }
    if (nombre == u"bin") {
        m_i = qMin(m_rtf.size(), m_i + qMax(0, numero));
    } else if (nombre == u"uc") {
        ahora().saltear = qBound(0, numero, 16);
    } else if (nombre == u"u") {
        caracter(QChar(ushort(numero)));
        m_sobran = ahora().saltear;
    } else if (!signo(nombre)) {
        formato(nombre, numero, hayNumero);
    }
}

bool Lector::destino(const QString &nombre)
{
    static const QStringList sinTexto{
        QStringLiteral("stylesheet"),
        QStringLiteral("info"),
        QStringLiteral("pict"),
        QStringLiteral("object"),
        QStringLiteral("header"),
        QStringLiteral("headerl"),
        QStringLiteral("headerr"),
        QStringLiteral("headerf"),
        QStringLiteral("footer"),
        QStringLiteral("footerl"),
        QStringLiteral("footerr"),
        QStringLiteral("footerf"),
        QStringLiteral("footnote"),
        QStringLiteral("fldinst"),
        QStringLiteral("pn")};
    if (nombre == u"pntext") {
        ahora().vineta = true;
        return true;
    }
    const Destino nuevo = nombre == u"fonttbl" ? Destino::Letras
        : nombre == u"colortbl"                ? Destino::Colores
        : sinTexto.contains(nombre)            ? Destino::Nada
                                               : Destino::Texto;
    if (nuevo == Destino::Texto)
        return false;
    volcar();
    ahora().destino = nuevo;
    return true;
}

bool Lector::signo(const QString &nombre)
{
    static const QHash<QString, QChar> signos{
        {QStringLiteral("tab"), u'\t'},
        {QStringLiteral("cell"), u'\t'},
        {QStringLiteral("line"), QChar::LineSeparator},
        {QStringLiteral("emdash"), u'—'},
        {QStringLiteral("endash"), u'–'},
        {QStringLiteral("bullet"), u'•'},
        {QStringLiteral("lquote"), u'‘'},
        {QStringLiteral("rquote"), u'’'},
        {QStringLiteral("ldblquote"), u'“'},
        {QStringLiteral("rdblquote"), u'”'}};
    if (nombre == u"par" || nombre == u"row" || nombre == u"page") {
        parrafo();
        return true;
    }
    const auto it = signos.constFind(nombre);
    if (it == signos.cend())
        return false;
    caracter(*it);
    return true;
}

void Lector::formato(const QString &nombre, int numero, bool hayNumero)
{
    const bool si = !hayNumero || numero != 0;
    if (ahora().destino == Destino::Letras) {
        if (nombre == u"f")
            m_letra = numero;
        return;
    }
    volcar();
    QTextCharFormat &letra = ahora().formato;
    if (nombre == u"plain") {
        letra = {};
        ahora().oculto = false;
    } else if (nombre == u"b") {
        letra.setFontWeight(si ? QFont::Bold : QFont::Normal);
    } else if (nombre == u"i") {
        letra.setFontItalic(si);
    } else if (nombre == u"ul" || nombre == u"ulnone") {
        letra.setFontUnderline(si && nombre == u"ul");
    } else if (nombre == u"strike") {
        letra.setFontStrikeOut(si);
    } else if (nombre == u"v") {
        ahora().oculto = si;
    } else if (nombre == u"fs") {
        if (numero > 0)
            letra.setFontPointSize(qBound(4.0, numero / 2.0, 96.0));
    } else if (nombre == u"f") {
        if (const QString familia = m_letras.value(numero); !familia.isEmpty())
            letra.setFontFamilies(QStringList(familia));
    } else if (nombre == u"cf") {
        const bool hay = numero > 0 && size_t(numero) < m_colores.size() && m_colores[size_t(numero)].isValid();
        if (hay)
            letra.setForeground(m_colores[size_t(numero)]);
        else
            letra.clearForeground();
    } else if (nombre == u"pard" || nombre == u"ql" || nombre == u"qj") {
        ahora().alineacion = nombre == u"qj" ? Qt::AlignJustify : Qt::AlignLeft;
    } else if (nombre == u"qc") {
        ahora().alineacion = Qt::AlignHCenter;
    } else if (nombre == u"qr") {
        ahora().alineacion = Qt::AlignRight;
    }
}

void Lector::caracter(QChar c)
{
    m_estrella = false;
    if (m_sobran > 0) {
        --m_sobran;
        return;
    }
    switch (ahora().destino) {
    case Destino::Letras:
        if (c == u';')
            m_letras.insert(m_letra, std::exchange(m_pendiente, {}).trimmed());
        else
            m_pendiente += c;
        break;
    case Destino::Colores:
        if (c == u';')
            m_colores.push_back(std::exchange(m_color, QColor()));
        break;
    case Destino::Texto:
        if (!ahora().oculto)
            m_pendiente += ahora().vineta && c == u'·' ? QChar(u'•') : c; // the bullet of the symbol letters
        break;
    case Destino::Nada: break;
    }
}

void Lector::parrafo()
{
    if (ahora().destino != Destino::Texto)
        return;
    volcar();
    QTextBlockFormat bloque;
    bloque.setAlignment(ahora().alineacion);
    m_cursor.setBlockFormat(bloque);
    m_cursor.insertBlock();
}

void Lector::volcar()
{
    const QString texto = std::exchange(m_pendiente, {});
    if (texto.isEmpty() || ahora().destino != Destino::Texto)
        return;
    if (m_cursor.atBlockStart()) {
        QTextBlockFormat bloque;
        bloque.setAlignment(ahora().alineacion);
        m_cursor.setBlockFormat(bloque);
    }
    m_cursor.insertText(texto, ahora().formato);
}

} // namespace

void leerRtf(QStringView rtf, QTextDocument &destino)
{
    destino.clear();
    Lector(rtf, destino).leer();
}

} // namespace texto
