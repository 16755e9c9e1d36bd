#include "Escenas.h"
#include "agenda/OrdenesTurno.h"
#include "db/Connection.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>

namespace pantallas {

namespace {

const QString agendas = QStringLiteral("agendas");
const QString taken = QStringLiteral("11:20"); ///< arrived and waiting, with an extra appointment
const QString libre = QStringLiteral("16:20");

const QString horarios = QStringLiteral("agendahorarios");
const QString noLaborables = QStringLiteral("agendasnolabo");

void abrirHorarios(Escena &e)
{
    e.abrirAgenda(taken);
    e.pulsar(agendas, QStringLiteral("horarios"));
}

/// A new template being written, with an afternoon that begins before the morning's last slot is over.
void plantillaNueva(Escena &e)
{
    const QString nombre = QStringLiteral("agendahorarios2");
    e.ventanas().abrir(nombre, {}, &e.marco());
    e.pulsar(nombre, QStringLiteral("nuevo"));
    const std::pair<const char *, const char *> escritos[]
        = {{"fechadesde", "04/01/2027"},
           {"fechahasta", "26/02/2027"},
           {"LuMaDesde", "08:00"},
           {"LuMaHasta", "13:00"},
           {"LuTaDesde", "12:30"},
           {"LuTaHasta", "17:00"},
           {"MiTaDesde", "15:00"},
           {"MiTaHasta", "18:10"},
           {"ViMaDesde", "09:00"}};
    for (const auto &[campo, texto] : escritos)
        e.escribir(nombre, QLatin1String(campo), QLatin1String(texto));
}

void vacaciones(Escena &e, const QString &nombre, const QString &desde, const QString &hasta)
{
    e.escribir(nombre, QStringLiteral("desde"), desde);
    e.escribir(nombre, QStringLiteral("hasta"), hasta);
    e.pulsar(nombre, QStringLiteral("agregar"));
}

void abrirNoLaborables(Escena &e)
{
    abrirHorarios(e);
    e.pulsar(horarios, QStringLiteral("nolabo"));
}

/// An appointment of this day whose patient has orders with sessions left.
qint64 turnoConSesiones(Escena &e)
{
    const db::Rows filas = e.consultorio().conexion().query(
        QStringLiteral("SELECT id,NroHC FROM [Agenda Turnos] WHERE llegado <> 0 ORDER BY id DESC"));
    for (int i = 0; i < filas->rowCount(); ++i)
        if (agenda::ordenesConSesiones(e.consultorio().conexion(), int(filas->integer(i, 1))).size() > 1)
            return filas->integer(i, 0);
    return 0;
}

void elegirOrden(Escena &e)
{
    const qint64 turno = turnoConSesiones(e);
    e.ventanas().abrir(agendas, {{{QStringLiteral("id"), turno}}, {}}, &e.marco());
    e.ventanas().abrir(QStringLiteral("agendaordenes"), {{{QStringLiteral("id"), turno}}, {}}, &e.marco());
}

/// An appointment that is being passed to another hour.
void cortarYElegir(Escena &e)
{
    e.abrirAgenda(taken);
    if (auto *cortar = e.control<QAction>(agendas, QStringLiteral("menucortar")))
        cortar->trigger();
    e.elegir(agendas, QStringLiteral("lista"), 0, libre);
}

std::function<void(Escena &)> deTurno(const QString &boton)
{
    return [boton](Escena &e) {
        e.abrirAgenda(taken);
        e.pulsar(agendas, boton);
    };
}

} // namespace

std::vector<Pantalla> escenasDeAgenda()
{
    return {
        {agendas, [](Escena &e) { e.abrirAgenda(taken); }},
        {horarios, abrirHorarios},
        {QStringLiteral("agendahorarios2"), plantillaNueva},
        {noLaborables,
         [](Escena &e) {
             abrirNoLaborables(e);
             vacaciones(e, noLaborables, QStringLiteral("28/12/2026"), QStringLiteral("15/01/2027"));
             vacaciones(e, noLaborables, QStringLiteral("24/02/2027"), QString());
         }},
        {QStringLiteral("agendasnolabo2"),
         [](Escena &e) {
             const QString nombre = QStringLiteral("agendasnolabo2");
             e.ventanas().abrir(nombre, {}, &e.marco());
             e.pulsar(nombre, QStringLiteral("paratodos"));
             e.escribir(nombre, QStringLiteral("desde"), QStringLiteral("31/12/2026"));
             e.pulsar(nombre, QStringLiteral("guardar"));
         }},
        {QStringLiteral("agendaferiados"),
         [](Escena &e) {
             abrirNoLaborables(e);
             e.pulsar(noLaborables, QStringLiteral("feriados"));
         }},
        {QStringLiteral("agendamotivo"), deTurno(QStringLiteral("modifmoticonsul"))},
        {QStringLiteral("agendaobservacion"), deTurno(QStringLiteral("modifobservacion"))},
        {QStringLiteral("agendalibres"),
         [](Escena &e) {
             e.abrirAgenda(libre);
             e.pulsar(agendas, QStringLiteral("proximolibre"));
             if (auto *todos = e.control<QCheckBox>(QStringLiteral("agendalibres"), QStringLiteral("detodos")))
                 todos->setChecked(true);
         }},
        {QStringLiteral("agendaordenes"), elegirOrden},
        {QStringLiteral("agenda-cortar"), cortarYElegir},
        {QStringLiteral("mensaje-eliminar"),
         [](Escena &e) { e.abrirAgenda(taken); },
         [](Escena &e, base::Mensajes &) { e.pulsar(agendas, QStringLiteral("liberar")); }},
    };
}

} // namespace pantallas
