#include "printing/Paginas.h"

#include "base/Fechas.h"
#include "printing/Cabecera.h"
#include "printing/Letra.h"
#include "printing/Parte.h"

#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

namespace printing {

struct Paginas::Pieza {
    const Parte *parte;
    Lugar desde;
    Corte corte;
    double y; ///< below the headers
};

namespace {

constexpr double entrePartes = 3, bajoCabecera = 4, altoPie = 6; // millimetres

QString tituloHtml(const Documento &documento)
{
    const auto lineas
        = [](const QString &texto) { return texto.trimmed().toHtmlEscaped().replace(u'\n', QStringLiteral("<br>")); };
    QString html;
    if (documento.conTitulo && !documento.titulo.trimmed().isEmpty())
        html += QStringLiteral("<p align=\"center\" style=\"margin:0;font-size:13pt\"><b>%1</b></p>")
                    .arg(lineas(documento.titulo));
    if (!documento.subtitulo.trimmed().isEmpty())
        html += QStringLiteral("<p align=\"center\" style=\"margin:0\">%1</p>").arg(lineas(documento.subtitulo));
    return html;
}

} // namespace

Paginas::Paginas(Documento documento)
    : m_documento(std::move(documento))
{
    componer();
}

Paginas::~Paginas() = default;

void Paginas::componer()
{
    const QRectF interior = m_documento.hoja.interior();
    m_interior = QRectF(
        enUnidades(interior.x()),
        enUnidades(interior.y()),
        enUnidades(interior.width()),
        enUnidades(interior.height()));
    m_altoPie = m_documento.conPie ? enUnidades(altoPie) : 0;
    m_letraPie = std::make_unique<Letra>(8, false);
    m_cabecera
        = std::make_unique<Cabecera>(m_documento.encabezado, m_interior.width(), m_interior.height() - m_altoPie);
    m_altoCabecera = m_cabecera->alto() > 0 ? m_cabecera->alto() + enUnidades(bajoCabecera) : 0;
    const double alto = m_interior.height() - m_altoCabecera - m_altoPie;

    if (const QString titulo = tituloHtml(m_documento); !titulo.isEmpty())
        m_partes.push_back(parteDeTexto(titulo, m_interior.width(), alto));
    for (const Bloque &bloque : std::as_const(m_documento.cuerpo))
        m_partes.push_back(hacerParte(bloque, m_interior.width(), alto));

    m_paginas.emplace_back();
    double y = 0;
    for (const auto &parte : m_partes) {
        Lugar desde;
        for (bool fin = false; !fin;) {
            const bool vacia = m_paginas.back().empty();
            const double aire = vacia ? 0 : enUnidades(entrePartes);
            const Corte corte = parte->cortar(desde, qMax(0.0, alto - y - aire), vacia);
            const bool algo = corte.fin || corte.hasta != desde;
            Q_ASSERT(algo || !vacia);
            if (algo && corte.alto > 0) {
                m_paginas.back().push_back({parte.get(), desde, corte, y + aire});
                y += aire + corte.alto;
            }
            fin = corte.fin || (!algo && vacia);
            desde = corte.hasta;
            if (!fin) {
                m_paginas.emplace_back();
                y = 0;
            }
        }
    }
}

void Paginas::pintar(QPainter &pintor, int pagina) const
{
    if (pagina < 0 || pagina >= cantidad())
        return;
    pintor.save();
    pintor.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    pintor.scale(enMilimetros(1), enMilimetros(1));
    pintor.translate(m_interior.topLeft());
    pintor.setPen(Qt::black);
    m_cabecera->pintar(pintor);
    for (const Pieza &pieza : m_paginas[size_t(pagina)]) {
        pintor.save();
        pintor.translate(0, m_altoCabecera + pieza.y);
        pieza.parte->pintar(pintor, pieza.desde, pieza.corte);
        pintor.restore();
    }
    if (m_documento.conPie)
        pintarPie(pintor, pagina);
    pintor.restore();
}

void Paginas::pintarPie(QPainter &pintor, int pagina) const
{
    const Letra &letra = *m_letraPie;
    const double ancho = m_interior.width(), y = m_interior.height() - letra.alto() + letra.ascenso();
    pintor.setFont(letra.font());
    pintor.setPen(QColor(0x50, 0x58, 0x60));
    const QString numero = QStringLiteral("Página %1 de %2").arg(pagina + 1).arg(cantidad());
    const double anchoNumero = letra.anchoExacto(numero);
    pintor.drawText(QPointF(ancho - anchoNumero, y), numero);
    double x = 0;
    const QString fecha = base::fechaHoraTexto(m_documento.fecha);
    if (!fecha.isEmpty()) {
        const QString impreso
            = letra.recortado(QStringLiteral("Impreso el ") + fecha, qMax(0.0, ancho - anchoNumero - enUnidades(2)));
        pintor.drawText(QPointF(0, y), impreso);
        x = letra.anchoExacto(impreso);
    }
    // A loose sheet tells what it belongs to.
    const double libre = ancho - anchoNumero - x - enUnidades(8);
    if (pagina > 0 && m_documento.conTitulo && libre > enUnidades(20)) {
        const QString titulo = letra.recortado(m_documento.titulo.simplified(), libre);
        pintor.drawText(QPointF(x + enUnidades(4) + (libre - letra.anchoExacto(titulo)) / 2, y), titulo);
    }
}

bool pintarEn(const Paginas &paginas, QPagedPaintDevice &destino, int desde, int hasta)
{
    destino.setPageLayout(paginas.documento().hoja.pagina());
    QPainter pintor;
    if (!pintor.begin(&destino))
        return false;
    pintor.scale(destino.logicalDpiX() / 25.4, destino.logicalDpiY() / 25.4);
    for (int pagina = qMax(0, desde); pagina <= qMin(hasta, paginas.cantidad() - 1); ++pagina) {
        if (pagina > desde && !destino.newPage())
            return false;
        paginas.pintar(pintor, pagina);
    }
    return pintor.end();
}

base::Control escribirPdf(const Paginas &paginas, const QString &archivo)
{
    QSaveFile salida(archivo);
    bool escrito = salida.open(QIODevice::WriteOnly);
    if (escrito) {
        QPdfWriter pdf(&salida);
        pdf.setResolution(unidadesPorPulgada);
        pdf.setCreator(QStringLiteral("Vastelo"));
        pdf.setTitle(paginas.documento().titulo);
        escrito = pintarEn(paginas, pdf, 0, paginas.cantidad() - 1);
    }
    if (escrito && salida.error() == QFileDevice::NoError && salida.commit())
        return std::nullopt;
    return base::Rechazo{
        base::titulo::error, QStringLiteral("No se pudo escribir el archivo PDF: %1").arg(salida.errorString())};
}

} // namespace printing
