#include "Escenas.h"

#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QPlainTextEdit>

namespace pantallas {

namespace {

const QString agendas = QStringLiteral("agendas");
const QString booking = QStringLiteral("agendanuevoturno");
const QString picker = QStringLiteral("agendanuevahora");
const QString conPaciente = QStringLiteral("agendanuevoturnoctrln");
const QString modif = QStringLiteral("agendamodifturno");
const QString chooser = QStringLiteral("elecpaci");
const QString taken = QStringLiteral("11:20"); ///< with an extra appointment
const QString libre = QStringLiteral("16:20");

void anotar(Escena &e, const QString &ventana, const QString &texto)
{
    if (auto *observaciones = e.control<QPlainTextEdit>(ventana, QStringLiteral("observacionestur")))
        observaciones->setPlainText(texto);
}

/// Someone who has an appointment that day already.
void reservar(Escena &e)
{
    e.abrirAgenda(taken);
    QString paciente;
    if (const auto *lista = e.control<ui::Grilla>(agendas, QStringLiteral("lista")))
        paciente = lista->modelo().index(lista->filaActual(), 1).data().toString();
    e.elegir(agendas, QStringLiteral("lista"), 0, libre);
    e.pulsar(agendas, QStringLiteral("nuevo"));
    e.pulsar(booking, QStringLiteral("elegirpaciente"));
    e.escribir(chooser, QStringLiteral("apellidoredu"), paciente.section(u',', 0, 0));
    e.escribir(chooser, QStringLiteral("nombresredu"), paciente.section(QStringLiteral(", "), 1));
    e.tecla(chooser, QStringLiteral("nombresredu"), Qt::Key_Return);
    if (auto *lista = e.control<ui::Grilla>(chooser, QStringLiteral("listapaci")))
        lista->elegirFila(0);
    e.pulsar(chooser, QStringLiteral("aceptar"));
    e.escribir(booking, QStringLiteral("nuevoturno"), QStringLiteral("1/12/26 16:20"));
    e.pulsar(booking, QStringLiteral("agregarescrito"));
    if (auto *motivo = e.control<QComboBox>(booking, QStringLiteral("motivo")))
        motivo->setCurrentText(QStringLiteral("Control de salud"));
    anotar(e, booking, QStringLiteral("Trae estudios."));
}

void reservarNuevo(Escena &e)
{
    e.abrirAgenda(libre);
    e.pulsar(agendas, QStringLiteral("nuevo"));
    e.pulsar(booking, QStringLiteral("nuevopaciente"));
    for (const auto &[campo, texto] :
         {std::pair("apellidor", "Fernández"),
          {"nombresr", "Agustina"},
          {"dnir", "38456912"},
          {"telparr", "11 5555-0143"}})
        e.escribir(conPaciente, QLatin1String(campo), QString::fromUtf8(texto));
    anotar(e, conPaciente, QStringLiteral("Primera vez."));
}

/// The same hour for some weeks.
void agregarHoras(Escena &e)
{
    e.abrirAgenda(libre);
    e.pulsar(agendas, QStringLiteral("nuevo"));
    e.pulsar(booking, QStringLiteral("agregarturno"));
    e.escribir(picker, QStringLiteral("hora"), libre);
    if (auto *unico = e.control<QCheckBox>(picker, QStringLiteral("diaunico")))
        unico->setChecked(false);
    e.escribir(picker, QStringLiteral("desde"), QStringLiteral("24/11/2026"));
    e.escribir(picker, QStringLiteral("hasta"), QStringLiteral("11/12/2026"));
    if (auto *horas = e.control<QListWidget>(picker, QStringLiteral("listahoras")))
        horas->setFocus();
}

void modificar(Escena &e)
{
    e.abrirAgenda(taken);
    e.pulsar(agendas, QStringLiteral("modifhora"));
}

} // namespace

std::vector<Pantalla> escenasDeReservas()
{
    return {{booking, reservar}, {picker, agregarHoras}, {conPaciente, reservarNuevo}, {modif, modificar}};
}

} // namespace pantallas
