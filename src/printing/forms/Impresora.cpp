#include "printing/forms/Impresora.h"

#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>

namespace printing {

bool ImpresoraQt::hayAlguna() const { return !QPrinterInfo::availablePrinterNames().isEmpty(); }

std::optional<Impresion> ImpresoraQt::elegir(const Paginas &paginas, QWidget *sobre)
{
    auto impresora = std::make_unique<QPrinter>(QPrinter::HighResolution);
    impresora->setDocName(paginas.documento().titulo);
    impresora->setCreator(QStringLiteral("Vastelo"));
    impresora->setPageLayout(paginas.documento().hoja.pagina());
    impresora->setFullPage(true);
    QPrintDialog dialogo(impresora.get(), sobre);
    dialogo.setWindowTitle(QStringLiteral("Imprimir"));
    dialogo.setOption(QAbstractPrintDialog::PrintPageRange, paginas.cantidad() > 1);
    dialogo.setOption(QAbstractPrintDialog::PrintSelection, false);
    dialogo.setMinMax(1, paginas.cantidad());
    dialogo.setFromTo(1, paginas.cantidad());
    if (dialogo.exec() != QDialog::Accepted)
        return std::nullopt;

    Impresion impresion;
    impresion.hasta = paginas.cantidad() - 1;
    if (impresora->printRange() == QPrinter::PageRange && impresora->fromPage() > 0) {
        impresion.desde = impresora->fromPage() - 1;
        impresion.hasta = qMax(impresora->fromPage(), impresora->toPage()) - 1;
    }
    impresion.copias = impresora->supportsMultipleCopies() ? 1 : qMax(1, impresora->copyCount());
    impresion.nombre = impresora->printerName();
    impresion.destino = std::move(impresora);
    return impresion;
}

bool ImpresoraQt::responde(const Impresion &impresion) const
{
    const auto *impresora = dynamic_cast<const QPrinter *>(impresion.destino.get());
    if (!impresora || impresora->printerState() == QPrinter::Error || impresora->printerState() == QPrinter::Aborted)
        return false;
    // "Print to a file" of the dialog needs no printer.
    return !impresora->outputFileName().isEmpty() || !QPrinterInfo::printerInfo(impresion.nombre).isNull();
}

} // namespace printing
