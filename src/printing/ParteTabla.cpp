#include "printing/AnchosTabla.h"
#include "printing/Letra.h"
#include "printing/Parte.h"

#include <QPainter>

#include <algorithm>

namespace printing {

namespace {

const QColor fondoTitulos(0xe6, 0xea, 0xee), fondoGrupo(0xf2, 0xf4, 0xf6), raya(0xc4, 0xca, 0xd0);

/// A list, parted between its rows. Lugar::paso is a row; Lugar::resto, lines of it that are already printed.
class ParteTabla final : public Parte
{
public:
    ParteTabla(const Tabla &tabla, double ancho, double altoPagina);

    Corte cortar(Lugar desde, double alto, bool paginaVacia) const override;
    void pintar(QPainter &pintor, Lugar desde, const Corte &corte) const override;

private:
    [[nodiscard]] int filas() const { return int(m_tabla.filas.size()); }
    [[nodiscard]] const Letra &letraDe(Fila::Clase clase) const
    {
        return clase == Fila::Clase::Comun ? m_letra : m_negrita;
    }
    [[nodiscard]] double anchoTexto(size_t columna) const { return m_anchos.columnas[columna] - 2 * margenCelda(); }
    [[nodiscard]] int renglonesDe(const Fila &fila) const;
    [[nodiscard]] double altoDe(int renglones) const { return renglones * m_letra.alto() + 2 * m_aire; }
    [[nodiscard]] double altoFila(int fila, int desdeRenglon = 0) const
    {
        return altoDe(m_renglones[size_t(fila)] - desdeRenglon);
    }
    [[nodiscard]] int retroceder(int desde, int hasta) const;
    void pintarFila(QPainter &pintor, const Fila &fila, int desde, int hasta) const;
    void pintarCeldas(QPainter &pintor, const QStringList &celdas, const Letra &letra, int desde, int hasta) const;

    Tabla m_tabla;
    double m_ancho;
    AnchosTabla m_anchos;
    Letra m_letra;
    Letra m_negrita;
    double m_aire = enUnidades(0.6); ///< above and below the text of a row
    std::vector<quint16> m_renglones; ///< lines of each row
    QStringList m_titulos;
    double m_altoTitulos = 0;
};

ParteTabla::ParteTabla(const Tabla &tabla, double ancho, double altoPagina)
    : m_tabla(tabla)
    , m_ancho(ancho)
    , m_anchos(repartir(tabla, ancho))
    , m_letra(m_anchos.puntos, false)
    , m_negrita(m_anchos.puntos, true)
{
    m_renglones.reserve(size_t(filas()));
    for (const Fila &fila : std::as_const(m_tabla.filas))
        m_renglones.push_back(quint16(qMin(renglonesDe(fila), 65'000)));
    int masAlto = 0;
    for (size_t i = 0; i < m_anchos.columnas.size(); ++i) {
        const QString &titulo = m_tabla.columnas[qsizetype(i)].titulo;
        m_titulos << titulo;
        if (!titulo.isEmpty())
            masAlto = qMax(masAlto, m_negrita.cantidadRenglones(titulo, anchoTexto(i)));
    }
    if (masAlto > 0)
        m_altoTitulos = qMin(altoDe(masAlto), altoPagina / 2);
}

int ParteTabla::renglonesDe(const Fila &fila) const
{
    const Letra &letra = letraDe(fila.clase);
    if (fila.clase == Fila::Clase::Grupo)
        return letra.cantidadRenglones(fila.celdas.value(0), m_ancho - 2 * margenCelda());
    int mas = 1;
    for (size_t i = 0; i < qMin(m_anchos.columnas.size(), size_t(fila.celdas.size())); ++i)
        mas = qMax(mas, letra.cantidadRenglones(fila.celdas[qsizetype(i)], anchoTexto(i)));
    return mas;
}

/// Where a page that could hold the rows up to `hasta` should rather end: no heading of a group without a row of it, no
/// total without a row above it. `desde` when there is no such place.
int ParteTabla::retroceder(int desde, int hasta) const
{
    const auto clase = [this](int fila) { return m_tabla.filas[fila].clase; };
    int fin = hasta;
    while (fin > desde && fin < filas() && clase(fin) == Fila::Clase::Total)
        --fin;
    while (fin > desde && clase(fin - 1) == Fila::Clase::Grupo)
        --fin;
    return fin;
}

Corte ParteTabla::cortar(Lugar desde, double alto, bool paginaVacia) const
{
    if (filas() == 0 && desde.paso == 0 && m_altoTitulos > 0)
        return m_altoTitulos <= alto || paginaVacia ? Corte{{1, 0}, m_altoTitulos, true} : Corte{desde, 0, false};
    if (desde.paso >= filas())
        return {desde, 0, true};
    double usado = m_altoTitulos;
    int fila = desde.paso, resto = desde.resto;
    while (fila < filas() && usado + altoFila(fila, resto) <= alto) {
        usado += altoFila(fila, resto);
        ++fila;
        resto = 0;
    }
    if (fila == filas())
        return {{fila, 0}, usado, true};
    if (const int mejor = retroceder(desde.paso, fila); mejor > desde.paso && mejor < fila) {
        for (int i = mejor; i < fila; ++i)
            usado -= altoFila(i, i == desde.paso ? desde.resto : 0);
        fila = mejor;
    }
    if (fila > desde.paso)
        return {{fila, 0}, usado, false};
    if (!paginaVacia)
        return {desde, 0, false};
    // Higher than a page: as many of its lines as fit.
    const int caben = qMax(1, int((alto - usado - 2 * m_aire) / m_letra.alto()));
    const int hasta = qMin(resto + caben, int(m_renglones[size_t(fila)]));
    usado += altoDe(hasta - resto);
    if (hasta == m_renglones[size_t(fila)])
        return {{fila + 1, 0}, usado, fila + 1 == filas()};
    return {{fila, hasta}, usado, false};
}

void ParteTabla::pintarCeldas(
    QPainter &pintor, const QStringList &celdas, const Letra &letra, int desde, int hasta) const
{
    double x = 0;
    for (size_t i = 0; i < m_anchos.columnas.size(); x += m_anchos.columnas[i++]) {
        const QString celda = celdas.value(qsizetype(i));
        if (celda.isEmpty())
            continue;
        const Qt::Alignment lado = m_tabla.columnas[qsizetype(i)].alineacion;
        const QStringList renglones = letra.renglones(celda, anchoTexto(i));
        for (int n = desde; n < qMin(hasta, int(renglones.size())); ++n) {
            const QString &texto = renglones[n];
            double aqui = x + margenCelda();
            if (lado & (Qt::AlignRight | Qt::AlignHCenter)) {
                const double libre = anchoTexto(i) - letra.anchoExacto(texto);
                aqui += lado & Qt::AlignRight ? libre : libre / 2;
            }
            pintor.drawText(QPointF(aqui, m_aire + (n - desde) * m_letra.alto() + letra.ascenso()), texto);
        }
    }
}

void ParteTabla::pintarFila(QPainter &pintor, const Fila &fila, int desde, int hasta) const
{
    const Letra &letra = letraDe(fila.clase);
    const QRectF lugar(0, 0, m_ancho, altoDe(hasta - desde));
    pintor.setFont(letra.font());
    if (fila.clase == Fila::Clase::Grupo) {
        pintor.fillRect(lugar, fondoGrupo);
        const QStringList renglones = letra.renglones(fila.celdas.value(0), m_ancho - 2 * margenCelda());
        for (int n = desde; n < qMin(hasta, int(renglones.size())); ++n)
            pintor.drawText(
                QPointF(margenCelda(), m_aire + (n - desde) * m_letra.alto() + letra.ascenso()), renglones[n]);
    } else {
        pintarCeldas(pintor, fila.celdas, letra, desde, hasta);
    }
    const bool total = fila.clase == Fila::Clase::Total;
    if (total) {
        pintor.setPen(QPen(Qt::black, enUnidades(0.2)));
        pintor.drawLine(lugar.topLeft(), lugar.topRight());
    }
    pintor.setPen(QPen(raya, enUnidades(0.1)));
    if (!total)
        pintor.drawLine(lugar.bottomLeft(), lugar.bottomRight());
    pintor.setPen(Qt::black);
}

void ParteTabla::pintar(QPainter &pintor, Lugar desde, const Corte &corte) const
{
    pintor.save();
    pintor.setPen(Qt::black);
    if (m_altoTitulos > 0) {
        const QRectF lugar(0, 0, m_ancho, m_altoTitulos);
        pintor.fillRect(lugar, fondoTitulos);
        pintor.setFont(m_negrita.font());
        pintarCeldas(pintor, m_titulos, m_negrita, 0, int((m_altoTitulos - 2 * m_aire) / m_letra.alto() + 0.5));
        pintor.setPen(QPen(Qt::black, enUnidades(0.2)));
        pintor.drawLine(lugar.bottomLeft(), lugar.bottomRight());
        pintor.setPen(Qt::black);
        pintor.translate(0, m_altoTitulos);
    }
    int resto = desde.resto;
    for (int fila = desde.paso; fila < qMin(corte.hasta.paso, filas()); ++fila, resto = 0) {
        pintarFila(pintor, m_tabla.filas[fila], resto, m_renglones[size_t(fila)]);
        pintor.translate(0, altoFila(fila, resto));
    }
    if (corte.hasta.resto > resto && corte.hasta.paso < filas())
        pintarFila(pintor, m_tabla.filas[corte.hasta.paso], resto, corte.hasta.resto);
    pintor.restore();
}

} // namespace

std::unique_ptr<Parte> parteDeTabla(const Tabla &tabla, double ancho, double altoPagina)
{
    return std::make_unique<ParteTabla>(tabla, ancho, altoPagina);
}

} // namespace printing
