#include "agenda/forms/Registro.h"

#include "agenda/forms/agendahorarios.h"
#include "agenda/forms/agendamodifturno.h"
#include "agenda/forms/agendamotivo.h"
#include "agenda/forms/agendanuevoturno.h"
#include "agenda/forms/agendaobservacion.h"
#include "agenda/forms/agendas.h"

namespace agenda {

namespace {

template <typename Form>
void registrar(db::Entorno &entorno, ui::Ventanas &ventanas, const QString &nombre, ui::Modo modo)
{
    ventanas.registrar(nombre, modo, [&entorno, &ventanas] { return new Form(entorno, ventanas); });
}

} // namespace

void registrarVentanas(db::Entorno &entorno, ui::Ventanas &ventanas)
{
    registrar<agendas>(entorno, ventanas, QStringLiteral("agendas"), ui::Modo::Marco);
    registrar<agendahorarios>(entorno, ventanas, QStringLiteral("agendahorarios"), ui::Modo::Dialogo);
    registrar<agendanuevoturno>(entorno, ventanas, QStringLiteral("agendanuevoturno"), ui::Modo::Dialogo);
    registrar<agendamodifturno>(entorno, ventanas, QStringLiteral("agendamodifturno"), ui::Modo::Dialogo);
    registrar<agendamotivo>(entorno, ventanas, QStringLiteral("agendamotivo"), ui::Modo::Dialogo);
    registrar<agendaobservacion>(entorno, ventanas, QStringLiteral("agendaobservacion"), ui::Modo::Dialogo);
}

} // namespace agenda
