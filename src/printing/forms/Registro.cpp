#include "printing/forms/Registro.h"

#include "printing/forms/Impresora.h"
#include "printing/forms/Ver.h"
#include "printing/forms/encabezados.h"
#include "printing/forms/vistaprevia.h"
#include "ui/Registrar.h"
#include "ui/Ventana.h"

namespace printing {

void registrarVentanas(db::Entorno &entorno, ui::Ventanas &ventanas, std::shared_ptr<Impresora> impresora)
{
    if (!impresora)
        impresora = std::make_shared<ImpresoraQt>();
    ui::registrar<encabezados>(entorno, ventanas, QStringLiteral("encabezados"), ui::Modo::Dialogo);
    ventanas.registrar(QStringLiteral("vistaprevia"), ui::Modo::Dialogo, [&entorno, &ventanas, impresora] {
        return new vistaprevia(entorno, ventanas, impresora);
    });
    ventanas.setImprimirLista([&entorno, &ventanas](ui::Ventana &ventana, const ui::Grilla &grilla) {
        imprimirGrilla(entorno, ventanas, grilla, ventana.windowTitle(), &ventana);
    });
}

} // namespace printing
