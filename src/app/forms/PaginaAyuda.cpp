#include "app/forms/PaginaAyuda.h"

#include "app/Manual.h"
#include "ui/Estilo.h"

#include <QAbstractTextDocumentLayout>
#include <QFile>
#include <QImage>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextTable>

namespace app {

namespace {
const QString raiz = QStringLiteral("qrc:/manual/");
}

PaginaAyuda::PaginaAyuda(QWidget *parent)
    : QTextBrowser(parent)
    , m_reajuste(this)
{
    setOpenLinks(false);
    document()->setDocumentMargin(14);
    // A bar that comes and goes would change the width of the pictures while they are being loaded.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    m_reajuste.setSingleShot(true);
    m_reajuste.setInterval(60);
    connect(&m_reajuste, &QTimer::timeout, this, &PaginaAyuda::reajustar);
    connect(this, &QTextBrowser::sourceChanged, this, &PaginaAyuda::alCargar);
    connect(this, &QTextBrowser::anchorClicked, this, [this](const QUrl &enlace) {
        const QString todo = m_direccion.resolved(enlace).toString();
        if (todo.startsWith(raiz))
            irA(todo.mid(raiz.size()));
    });
}

void PaginaAyuda::irA(const QString &direccion)
{
    const QUrl destino(raiz + direccion);
    if (QFile::exists(u':' + destino.path()))
        setSource(destino, QTextDocument::MarkdownResource);
}

QString PaginaAyuda::archivo() const
{
    const QString todo = m_direccion.adjusted(QUrl::RemoveFragment).toString();
    return todo.startsWith(raiz) ? todo.mid(raiz.size()) : QString();
}

void PaginaAyuda::alCargar(const QUrl &direccion)
{
    m_direccion = direccion;
    m_ancho = anchoLibre();
    emparejar();
    if (direccion.hasFragment())
        irAlEncabezado(direccion.fragment(QUrl::FullyDecoded));
    pintarMarcas(false);
    emit mostrada(archivo());
}

void PaginaAyuda::emparejar()
{
    // Qt's reader of Markdown goes on with the letter of a heading behind a picture that follows it.
    std::vector<std::pair<int, int>> mal;
    for (QTextBlock bloque = document()->begin(); bloque.isValid(); bloque = bloque.next())
        for (auto parte = bloque.begin(); bloque.blockFormat().headingLevel() == 0 && !parte.atEnd(); ++parte)
            if (parte.fragment().charFormat().hasProperty(QTextFormat::FontSizeAdjustment))
                mal.emplace_back(parte.fragment().position(), parte.fragment().length());
    for (const auto &[lugar, largo] : mal) {
        QTextCursor cursor(document());
        cursor.setPosition(lugar);
        cursor.setPosition(lugar + largo, QTextCursor::KeepAnchor);
        QTextCharFormat comun = cursor.charFormat();
        comun.clearProperty(QTextFormat::FontSizeAdjustment);
        comun.clearProperty(QTextFormat::FontWeight);
        cursor.setCharFormat(comun);
    }
    for (QTextFrame *marco : document()->rootFrame()->childFrames())
        if (auto *tabla = qobject_cast<QTextTable *>(marco)) {
            QTextTableFormat formato = tabla->format();
            formato.setBorderCollapse(true);
            formato.setCellPadding(4);
            formato.setBorder(1);
            formato.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
            formato.setBorderBrush(palette().mid());
            formato.setTopMargin(ui::espacio);
            formato.setBottomMargin(ui::espacio);
            tabla->setFormat(formato);
        }
}

void PaginaAyuda::irAlEncabezado(const QString &ancla)
{
    for (QTextBlock bloque = document()->begin(); bloque.isValid(); bloque = bloque.next())
        if (bloque.blockFormat().headingLevel() > 0 && anclaDe(bloque.text()) == ancla) {
            setTextCursor(QTextCursor(bloque));
            verticalScrollBar()->setValue(
                int(document()->documentLayout()->blockBoundingRect(bloque).top()) - int(document()->documentMargin()));
            return;
        }
}

int PaginaAyuda::anchoLibre() const { return viewport()->width() - 2 * int(document()->documentMargin()); }

QVariant PaginaAyuda::loadResource(int tipo, const QUrl &nombre)
{
    if (tipo != QTextDocument::ImageResource)
        return QTextBrowser::loadResource(tipo, nombre);
    const QImage imagen = QImage::fromData(QTextBrowser::loadResource(tipo, nombre).toByteArray());
    const int ancho = qMax(100, anchoLibre());
    if (imagen.width() <= ancho)
        return imagen;
    // As many points as the screen has, so that the letters in it stay readable.
    const qreal densidad = devicePixelRatioF();
    QImage chica = imagen.scaledToWidth(qMin(imagen.width(), qRound(ancho * densidad)), Qt::SmoothTransformation);
    chica.setDevicePixelRatio(qreal(chica.width()) / ancho);
    return chica;
}

void PaginaAyuda::resizeEvent(QResizeEvent *event)
{
    QTextBrowser::resizeEvent(event);
    if (!m_direccion.isEmpty() && anchoLibre() != m_ancho)
        m_reajuste.start();
}

void PaginaAyuda::reajustar()
{
    if (anchoLibre() == m_ancho)
        return;
    const auto *barra = verticalScrollBar();
    const double parte = barra->maximum() > 0 ? double(barra->value()) / barra->maximum() : 0;
    reload();
    verticalScrollBar()->setValue(qRound(parte * verticalScrollBar()->maximum()));
}

void PaginaAyuda::marcar(const QString &texto)
{
    m_marcas = texto;
    pintarMarcas(true);
}

void PaginaAyuda::pintarMarcas(bool ir)
{
    QList<ExtraSelection> marcas;
    const QString plano = sinAcentos(document()->toPlainText());
    for (const QString &palabra : sinAcentos(m_marcas).split(u' ', Qt::SkipEmptyParts))
        for (qsizetype i = plano.indexOf(palabra); i >= 0 && marcas.size() < 1000;
             i = plano.indexOf(palabra, i + palabra.size())) {
            ExtraSelection marca;
            marca.cursor = QTextCursor(document());
            marca.cursor.setPosition(int(i));
            marca.cursor.setPosition(int(i + palabra.size()), QTextCursor::KeepAnchor);
            marca.format.setBackground(palette().highlight());
            marca.format.setForeground(palette().highlightedText());
            marcas << marca;
        }
    setExtraSelections(marcas);
    if (!ir || marcas.isEmpty())
        return;
    const auto primera = std::min_element(marcas.begin(), marcas.end(), [](const auto &a, const auto &b) {
        return a.cursor.position() < b.cursor.position();
    });
    QTextCursor cursor = primera->cursor;
    cursor.clearSelection();
    setTextCursor(cursor);
    ensureCursorVisible();
}

} // namespace app
