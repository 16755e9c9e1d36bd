#include "agenda/forms/Registro.h"

#include "agenda/forms/Enlaces.h"
#include "agenda/forms/agendaexportar.h"
#include "agenda/forms/agendaferiados.h"
#include "agenda/forms/agendahorarios.h"
#include "agenda/forms/agendamanana.h"
#include "agenda/forms/agendamodifturno.h"
#include "agenda/forms/agendamotivo.h"
#include "agenda/forms/agendanuevoturno.h"
#include "agenda/forms/agendaobservacion.h"
#include "agenda/forms/agendas.h"
#include "agenda/forms/agendasnolabo.h"
#include "ui/Registrar.h"

namespace agenda {

void registrarVentanas(db::Entorno &entorno, ui::Ventanas &ventanas, std::shared_ptr<Enlaces> enlaces)
{
    ui::registrar<agendas>(entorno, ventanas, QStringLiteral("agendas"), ui::Modo::Marco);
    ui::registrar<agendahorarios>(entorno, ventanas, QStringLiteral("agendahorarios"), ui::Modo::Dialogo);
    ventanas.registrar(QStringLiteral("agendahorarios2"), ui::Modo::Dialogo, [&entorno, &ventanas] {
        return new agendahorarios(entorno, ventanas, QStringLiteral("agendahorarios2"));
    });
    for (const QString &nombre : {QStringLiteral("agendasnolabo"), QStringLiteral("agendasnolabo2")})
        ventanas.registrar(nombre, ui::Modo::Dialogo, [&entorno, &ventanas, nombre] {
            return new agendasnolabo(entorno, ventanas, nombre);
        });
    ui::registrar<agendaferiados>(entorno, ventanas, QStringLiteral("agendaferiados"), ui::Modo::Dialogo);
    ui::registrar<agendanuevoturno>(entorno, ventanas, QStringLiteral("agendanuevoturno"), ui::Modo::Dialogo);
    ui::registrar<agendamodifturno>(entorno, ventanas, QStringLiteral("agendamodifturno"), ui::Modo::Dialogo);
    ui::registrar<agendamotivo>(entorno, ventanas, QStringLiteral("agendamotivo"), ui::Modo::Dialogo);
    ui::registrar<agendaobservacion>(entorno, ventanas, QStringLiteral("agendaobservacion"), ui::Modo::Dialogo);
    ui::registrar<agendaexportar>(entorno, ventanas, QStringLiteral("agendaexportar"), ui::Modo::Dialogo);
    if (!enlaces)
        enlaces = std::make_shared<EnlacesDelSistema>();
    ventanas.registrar(QStringLiteral("agendamanana"), ui::Modo::Marco, [&entorno, &ventanas, enlaces] {
        return new agendamanana(entorno, ventanas, enlaces);
    });
}

QStringList ventanasDeDiasLibres()
{
    return {
        QStringLiteral("agendas"),
        QStringLiteral("agendastodas"),
        QStringLiteral("agendahorarios"),
        QStringLiteral("agendahorarios2"),
        QStringLiteral("agendasnolabo"),
        QStringLiteral("agendasnolabo2")};
}

} // namespace agenda
