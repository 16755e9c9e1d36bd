#include "printing/forms/vistaprevia.h"

#include "db/Entorno.h"
#include "printing/Paginas.h"
#include "printing/forms/Impresora.h"
#include "printing/forms/VistaPaginas.h"
#include "ui/NombreArchivo.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QPagedPaintDevice>
#include <QPushButton>
#include <QSpinBox>
#include <QToolButton>

namespace printing {

namespace {

/// While the pages are painted for a printer the person sees that something is under way.
class Espera
{
public:
    Espera() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~Espera() { QApplication::restoreOverrideCursor(); }
    Espera(const Espera &) = delete;
    Espera &operator=(const Espera &) = delete;
};

} // namespace

vistaprevia::vistaprevia(db::Entorno &entorno, ui::Ventanas &ventanas, std::shared_ptr<Impresora> impresora)
    : Ventana(entorno, ventanas, QStringLiteral("vistaprevia"), tr("Vista previa"))
    , m_impresora(std::move(impresora))
{
    construir();
    conectar();
}

vistaprevia::~vistaprevia() = default;

bool vistaprevia::preparar(const ui::Pedido &pedido)
{
    const QVariant documento = pedido.datos.value(QStringLiteral("documento"));
    if (!documento.canConvert<Documento>())
        return false;
    m_documento = documento.value<Documento>();
    setWindowTitle(
        m_documento.titulo.isEmpty() ? tr("Vista previa")
                                     : tr("Vista previa: %1").arg(m_documento.titulo.simplified().left(80)));
    cargarPapeles(m_documento.hoja);
    aviso->clear();
    componer();
    hojas->irA(0);
    hojas->setFocus();
    return true;
}

QString vistaprevia::ayuda() const
{
    return tr(
        "Las hojas se ven como saldrán impresas. Re Pág y Av Pág pasan de hoja; + y -, o Ctrl y la rueda, cambian"
        " el tamaño con que se ven.\n\n"
        "IMPRIMIR (Ctrl+P): elige la impresora, las hojas y la cantidad de copias.\n\n"
        "PDF: guarda el documento en un archivo que se puede enviar por correo; sus palabras se pueden buscar.\n\n"
        "HOJA: cambia el papel o su posición sólo para esta impresión.");
}

void vistaprevia::cargarPapeles(const Hoja &hoja)
{
    const QSignalBlocker callaPapel(papel), callaOrientacion(orientacion);
    papel->clear();
    for (const Papel uno : {Papel::A4, Papel::A5, Papel::Carta, Papel::Oficio})
        papel->addItem(Hoja{.papel = uno}.nombre(), int(uno));
    if (hoja.papel == Papel::Otro)
        papel->addItem(hoja.nombre(), int(Papel::Otro));
    papel->setCurrentIndex(papel->findData(int(hoja.papel)));
    orientacion->setCurrentIndex(hoja.apaisada ? 1 : 0);
}

void vistaprevia::componer()
{
    const Espera espera;
    Documento documento = m_documento;
    documento.hoja.papel = Papel(papel->currentData().toInt());
    documento.hoja.apaisada = orientacion->currentIndex() == 1;
    m_paginas = std::make_shared<const Paginas>(std::move(documento));
    hojas->mostrar(m_paginas);
    const QSignalBlocker calla(pagina);
    pagina->setRange(1, m_paginas->cantidad());
    pagina->setSuffix(tr(" de %1").arg(m_paginas->cantidad()));
    mostrarPagina();
}

void vistaprevia::mostrarPagina()
{
    const int actual = hojas->pagina(), ultimaPagina = m_paginas ? m_paginas->cantidad() - 1 : 0;
    const QSignalBlocker calla(pagina);
    pagina->setValue(actual + 1);
    primera->setEnabled(actual > 0);
    anterior->setEnabled(actual > 0);
    siguiente->setEnabled(actual < ultimaPagina);
    ultima->setEnabled(actual < ultimaPagina);
}

void vistaprevia::mostrarZoom()
{
    const QSignalBlocker calla(zoom);
    switch (hojas->ajuste()) {
    case VistaPaginas::Ajuste::Ancho: zoom->setCurrentIndex(0); return;
    case VistaPaginas::Ajuste::Entera: zoom->setCurrentIndex(1); return;
    case VistaPaginas::Ajuste::Fijo: break;
    }
    const int tanto = qRound(hojas->zoom() * 100);
    int lugar = zoom->findData(tanto);
    if (lugar < 0) {
        // One that is not in the list stands at its end for as long as it is shown.
        if (zoom->itemData(zoom->count() - 1, Qt::UserRole + 1).toBool())
            zoom->removeItem(zoom->count() - 1);
        zoom->addItem(QStringLiteral("%1 %").arg(tanto), tanto);
        lugar = zoom->count() - 1;
        zoom->setItemData(lugar, true, Qt::UserRole + 1);
    }
    zoom->setCurrentIndex(lugar);
}

void vistaprevia::elegirZoom()
{
    const int tanto = zoom->currentData().toInt();
    if (tanto > 0)
        hojas->setZoom(tanto / 100.0);
    else
        hojas->setAjuste(zoom->currentIndex() == 0 ? VistaPaginas::Ajuste::Ancho : VistaPaginas::Ajuste::Entera);
}

void vistaprevia::print()
{
    if (!m_impresora->hayAlguna()) {
        if (entorno().mensajes().pregunta(
                base::titulo::atencion,
                tr("No hay ninguna impresora instalada en esta computadora. ¿Desea guardar el documento como PDF?")))
            guardarPdf();
        return;
    }
    auto impresion = m_impresora->elegir(*m_paginas, this);
    if (!impresion)
        return;
    bool hecho = m_impresora->responde(*impresion);
    if (hecho) {
        const Espera espera;
        for (int copia = 0; copia < impresion->copias && hecho; ++copia)
            hecho = pintarEn(*m_paginas, *impresion->destino, impresion->desde, impresion->hasta);
        hecho = hecho && m_impresora->responde(*impresion);
    }
    if (!hecho) {
        entorno().mensajes().fallar(
            base::titulo::error,
            tr("La impresora «%1» no está disponible. Verifique que esté encendida y conectada, elija otra, o guarde el"
               " documento como PDF.")
                .arg(impresion->nombre));
        return;
    }
    aviso->setText(tr("Se envió a la impresora."));
}

void vistaprevia::guardarPdf()
{
    auto destino = entorno().mensajes().elegirDestino(
        tr("Guardar como PDF"),
        QDir::home().filePath(ui::nombreDeArchivo(m_documento.titulo) + QStringLiteral(".pdf")),
        tr("Documento PDF (*.pdf)"));
    if (!destino)
        return;
    if (!destino->endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive))
        *destino += QStringLiteral(".pdf");
    base::Control rechazo;
    {
        const Espera espera;
        rechazo = escribirPdf(*m_paginas, *destino);
    }
    if (aceptado(rechazo))
        aviso->setText(tr("Se guardó en %1").arg(QDir::toNativeSeparators(*destino)));
}

void vistaprevia::conectar()
{
    alPulsar(imprimir, [this] { print(); });
    alPulsar(pdf, [this] { guardarPdf(); });
    connect(cerrar, &QPushButton::clicked, this, &QWidget::close);
    connect(primera, &QToolButton::clicked, this, [this] { hojas->irA(0); });
    connect(anterior, &QToolButton::clicked, this, [this] { hojas->irA(hojas->pagina() - 1); });
    connect(siguiente, &QToolButton::clicked, this, [this] { hojas->irA(hojas->pagina() + 1); });
    connect(ultima, &QToolButton::clicked, this, [this] { hojas->irA(m_paginas->cantidad() - 1); });
    connect(pagina, &QSpinBox::valueChanged, this, [this](int n) { hojas->irA(n - 1); });
    connect(alejar, &QToolButton::clicked, this, [this] { hojas->acercar(false); });
    connect(acercar, &QToolButton::clicked, this, [this] { hojas->acercar(true); });
    connect(zoom, &QComboBox::currentIndexChanged, this, &vistaprevia::elegirZoom);
    connect(hojas, &VistaPaginas::paginaCambiada, this, &vistaprevia::mostrarPagina);
    connect(hojas, &VistaPaginas::zoomCambiado, this, &vistaprevia::mostrarZoom);
    connect(papel, &QComboBox::currentIndexChanged, this, &vistaprevia::componer);
    connect(orientacion, &QComboBox::currentIndexChanged, this, &vistaprevia::componer);
}

} // namespace printing
