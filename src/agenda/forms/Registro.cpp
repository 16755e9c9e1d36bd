#include "agenda/forms/Registro.h"

#include "agenda/forms/Enlaces.h"
#include "agenda/forms/agendaexportar.h"
#include "agenda/forms/agendaferiados.h"
#include "agenda/forms/agendahorarios.h"
#include "agenda/forms/agendalibres.h"
#include "agenda/forms/agendamanana.h"
#include "agenda/forms/agendamodifturno.h"
#include "agenda/forms/agendamotivo.h"
#include "agenda/forms/agendanuevahora.h"
#include "agenda/forms/agendanuevoturno.h"
#include "agenda/forms/agendanuevoturnoctrln.h"
#include "agenda/forms/agendaobservacion.h"
#include "agenda/forms/agendaordenes.h"
#include "agenda/forms/agendas.h"
#include "agenda/forms/agendasnolabo.h"
#include "agenda/forms/agendastodas.h"
#include "agenda/forms/resulbusque.h"
#include "agenda/forms/telefonomodif.h"
#include "agenda/forms/telefonos.h"
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
    ui::registrar<agendanuevahora>(entorno, ventanas, QStringLiteral("agendanuevahora"), ui::Modo::Dialogo);
    ui::registrar<agendanuevoturnoctrln>(entorno, ventanas, QStringLiteral("agendanuevoturnoctrln"), ui::Modo::Dialogo);
    ui::registrar<agendamodifturno>(entorno, ventanas, QStringLiteral("agendamodifturno"), ui::Modo::Dialogo);
    ui::registrar<agendamotivo>(entorno, ventanas, QStringLiteral("agendamotivo"), ui::Modo::Dialogo);
    ui::registrar<agendaobservacion>(entorno, ventanas, QStringLiteral("agendaobservacion"), ui::Modo::Dialogo);
    ui::registrar<agendastodas>(entorno, ventanas, QStringLiteral("agendastodas"), ui::Modo::Marco);
    ui::registrar<resulbusque>(entorno, ventanas, QStringLiteral("resulbusque"), ui::Modo::Marco);
    ui::registrar<telefonos>(entorno, ventanas, QStringLiteral("telefonos"), ui::Modo::Marco);
    ui::registrar<telefonomodif>(entorno, ventanas, QStringLiteral("telefonomodif"), ui::Modo::Dialogo);
    ui::registrar<agendalibres>(entorno, ventanas, QStringLiteral("agendalibres"), ui::Modo::Dialogo);
    ui::registrar<agendaordenes>(entorno, ventanas, QStringLiteral("agendaordenes"), ui::Modo::Dialogo);
    ui::registrar<agendaexportar>(entorno, ventanas, QStringLiteral("agendaexportar"), ui::Modo::Dialogo);
    if (!enlaces)
        enlaces = std::make_shared<EnlacesDelSistema>();
    ventanas.registrar(QStringLiteral("agendamanana"), ui::Modo::Marco, [&entorno, &ventanas, enlaces] {
        return new agendamanana(entorno, ventanas, enlaces);
    });
}

QStringList ventanasDeTurnos(const QString &menos)
{
    QStringList ventanas{
        QStringLiteral("agendas"),
        QStringLiteral("agendastodas"),
        QStringLiteral("resulbusque"),
        QStringLiteral("pacientesredu")};
    ventanas.removeAll(menos);
    return ventanas;
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
