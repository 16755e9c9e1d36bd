#pragma once

#include <memory>

namespace db {
class Entorno;
}
namespace ui {
class Ventanas;
}

namespace printing {

class Impresora;

/// Registers the windows of printing, headers and preview, and lets every grid print its rows. Without an `impresora`
/// the printers are those of the system.
void registrarVentanas(db::Entorno &entorno, ui::Ventanas &ventanas, std::shared_ptr<Impresora> impresora = nullptr);

} // namespace printing
