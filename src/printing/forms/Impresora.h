#pragma once

#include "printing/Paginas.h"

#include <QString>

#include <memory>
#include <optional>

class QWidget;

namespace printing {

/// What the person chose to print, and on what.
struct Impresion {
    std::unique_ptr<QPagedPaintDevice> destino;
    QString nombre; ///< of the printer
    int desde = 0; ///< first page, counted from 0
    int hasta = 0; ///< last page
    int copias = 1; ///< times that the pages have to be painted
};

/// The printers of this computer, as far as printing asks for them; tests have their own.
class Impresora
{
public:
    virtual ~Impresora() = default;
    /// False when no printer is installed.
    [[nodiscard]] virtual bool hayAlguna() const = 0;
    /// Asks the person; empty when cancelled.
    [[nodiscard]] virtual std::optional<Impresion> elegir(const Paginas &paginas, QWidget *sobre) = 0;
    /// False when the printer does not take what is sent to it: switched off, gone, in error.
    [[nodiscard]] virtual bool responde(const Impresion &impresion) const = 0;
};

/// Those that the system knows, chosen in its own dialog.
class ImpresoraQt final : public Impresora
{
public:
    bool hayAlguna() const override;
    std::optional<Impresion> elegir(const Paginas &paginas, QWidget *sobre) override;
    bool responde(const Impresion &impresion) const override;
};

} // namespace printing
