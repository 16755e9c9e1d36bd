#include "Escenas.h"

#include <QComboBox>
#include <QPlainTextEdit>

namespace pantallas {

namespace {

const QString agendas = QStringLiteral("agendas");
const QString booking = QStringLiteral("agendanuevoturno");
const QString chooser = QStringLiteral("elecpaci");
const QString taken = QStringLiteral("11:20"); ///< arrived and waiting, with an extra appointment
const QString libre = QStringLiteral("16:20");

void reservar(Escena &e)
{
    e.abrirAgenda(libre);
    e.pulsar(agendas, QStringLiteral("nuevo"));
    e.pulsar(booking, QStringLiteral("elegirpaciente"));
    e.escribir(chooser, QStringLiteral("apellidoredu"), QStringLiteral("fern"));
    e.tecla(chooser, QStringLiteral("apellidoredu"), Qt::Key_Return);
    if (auto *lista = e.control<ui::Grilla>(chooser, QStringLiteral("listapaci")))
        lista->elegirFila(0);
    e.pulsar(chooser, QStringLiteral("aceptar"));
    if (auto *motivo = e.control<QComboBox>(booking, QStringLiteral("motivo")))
        motivo->setCurrentText(QStringLiteral("Control de salud"));
    if (auto *texto = e.control<QPlainTextEdit>(booking, QStringLiteral("observacionestur")))
        texto->setPlainText(QStringLiteral("Primera vez. Trae estudios."));
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
        {booking, reservar},
        {QStringLiteral("agendahorarios"),
         [](Escena &e) {
             e.abrirAgenda(taken);
             e.pulsar(agendas, QStringLiteral("horarios"));
         }},
        {QStringLiteral("agendamodifturno"), deTurno(QStringLiteral("modifhora"))},
        {QStringLiteral("agendamotivo"), deTurno(QStringLiteral("modifmoticonsul"))},
        {QStringLiteral("agendaobservacion"), deTurno(QStringLiteral("modifobservacion"))},
        {QStringLiteral("mensaje-eliminar"),
         [](Escena &e) { e.abrirAgenda(taken); },
         [](Escena &e, base::Mensajes &) { e.pulsar(agendas, QStringLiteral("liberar")); }},
    };
}

} // namespace pantallas
