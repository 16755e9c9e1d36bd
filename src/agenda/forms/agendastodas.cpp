#include "agenda/forms/agendastodas.h"

#include "agenda/Calendario.h"
#include "agenda/CambiosTurno.h"
#include "agenda/DetalleTurno.h"
#include "agenda/Textos.h"
#include "agenda/TurnosListados.h"
#include "agenda/forms/AbrirFicha.h"
#include "agenda/forms/CalendarioMes.h"
#include "agenda/forms/Registro.h"
#include "base/Clock.h"
#include "base/Fechas.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"
#include "ui/Estilo.h"
#include "ui/Grilla.h"
#include "ui/Preferencias.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTimer>
#include <QToolButton>

namespace agenda {

namespace {

const QString claveOcultos = QStringLiteral("agendastodas/ocultos");

std::set<int> leerOcultos()
{
    std::set<int> ids;
    for (const QString &id : ui::Preferencias::leer(claveOcultos).split(u' ', Qt::SkipEmptyParts))
        ids.insert(id.toInt());
    return ids;
}

void guardarOcultos(const std::set<int> &ids)
{
    QStringList textos;
    for (const int id : ids)
        textos << QString::number(id);
    ui::Preferencias::guardar(claveOcultos, textos.join(u' '));
}

} // namespace

agendastodas::agendastodas(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("agendastodas"), tr("Todas las Agendas"))
    , m_ocultos(leerOcultos())
{
    construir();
    fechadia->setHoy(entorno.clock().today());
    fechadia->setFecha(entorno.clock().today());
    lista->setAhora([&entorno] { return entorno.clock().now(); });
    conectar();
    conectarOperaciones();
}

bool agendastodas::preparar(const ui::Pedido &pedido)
{
    if (auto sinDerecho = db::controlarDerecho(entorno(), derechoAgendas))
        return aceptado(sinDerecho);
    {
        // The day is loaded once, below.
        const QSignalBlocker callaFecha(fechadia);
        fechadia->setPrimerDia(primerDiaSemana(conexion()));
        fechadia->setFecha(pedido.datos.value(QStringLiteral("fecha")).toDate());
    }
    recargar();
    lista->setFocus();
    const int doctor = pedido.datos.value(QStringLiteral("doctor")).toInt();
    if (doctor != 0 || !lista->actual().fila) {
        const AgendaDelDia *primera = lista->modelo().agenda(0);
        const QDateTime ahora = entorno().clock().now();
        const QTime hora = fechadia->fecha() == ahora.date() ? alMinuto(ahora.time()) : QTime(0, 0);
        if (!lista->elegirHora(doctor, hora) && primera)
            lista->elegirHora(primera->dia.doctor, hora);
    }
    if (const int segundos = entorno().segundosAgenda(); segundos > 0)
        tiempo->start(segundos * 1000);
    return true;
}

void agendastodas::refrescar()
{
    fechadia->setPrimerDia(primerDiaSemana(conexion()));
    recargar();
    // A failed tick stops the timer; what loads again by hand brings it back, with the interval set by now.
    if (const int ms = entorno().segundosAgenda() * 1000; ms > 0 && (!tiempo->isActive() || tiempo->interval() != ms))
        tiempo->start(ms);
}

QString agendastodas::ayuda() const
{
    return tr("TURNOS: Cada columna es un profesional y cada renglón una hora; se recorren con las flechas. Con Enter"
              " sobre un horario libre se asigna un turno; sobre un turno se abre la agenda de ese profesional.\n\n"
              "DÍA: Con Ctrl+Izquierda y Ctrl+Derecha se pasa al día anterior y al siguiente; con Ctrl+Inicio, a"
              " hoy.\n\n"
              "MARCAS: ✓ y letra negrita, llegó y espera. ✓✓ y fondo verde, ya fue atendido. Gris, horario libre que"
              " ya pasó. Naranja, horario con sobreturnos, cuando la plantilla pide resaltarlos. Rayado, no atiende a"
              " esa hora.\n\n"
              "SALA DE ESPERA: Quienes llegaron y no fueron atendidos, primero el que más espera. Enter abre la ficha"
              " del paciente; Ctrl+A lo marca como atendido.\n\n"
              "PROFESIONALES: Los que no tienen la marca no se muestran; esta computadora lo recuerda.");
}

void agendastodas::recargar()
{
    const QDate dia = entorno().clock().today();
    fechadia->setHoy(dia);
    const QDate fecha = fechadia->fecha();
    m_todas = std::make_shared<const TodasAgendas>(cargarTodas(conexion(), fecha, dia));
    m_sala = cargarSala(conexion(), fecha);
    const QDate desde(fecha.year(), fecha.month(), 1), hasta(fecha.year(), fecha.month(), fecha.daysInMonth());
    fechadia->setMarcas(diasConTurnosDeTodos(conexion(), desde, hasta), {});
    m_detalleDe = 0;
    mostrar();
}

void agendastodas::mostrar()
{
    fechaactiva->setText(fechaLarga(m_todas->fecha));
    const bool hayAlgo = std::any_of(m_todas->agendas.begin(), m_todas->agendas.end(), [](const AgendaDelDia &agenda) {
        return agenda.tieneAlgo();
    });
    lista->setAviso(
        hayAlgo ? tr("Ningún profesional de ese día está elegido en la lista de la izquierda.")
                : tr("Ese día no atiende ningún profesional."));
    mostrarProfesionales();
    lista->mostrar(m_todas, m_ocultos);
    mostrarSala();
}

void agendastodas::mostrarProfesionales()
{
    const QScopedValueRollback poniendo(m_poniendo, true);
    const int antes = listaprofesionales->currentRow();
    while (listaprofesionales->count() > int(m_todas->agendas.size()))
        delete listaprofesionales->takeItem(listaprofesionales->count() - 1);
    for (size_t i = 0; i < m_todas->agendas.size(); ++i) {
        const AgendaDelDia &agenda = m_todas->agendas[i];
        QListWidgetItem *item = listaprofesionales->item(int(i));
        if (!item) {
            item = new QListWidgetItem(listaprofesionales);
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        }
        const bool conTurnos = agenda.tieneAlgo() && !agenda.dia.noLaborable;
        item->setText(conTurnos ? agenda.nombre : agenda.nombre + QStringLiteral("  —  ") + agenda.resumen());
        item->setToolTip(agenda.nombre + u'\n' + agenda.resumen());
        item->setData(Qt::UserRole, agenda.dia.doctor);
        item->setData(Qt::ForegroundRole, conTurnos ? QVariant() : QVariant(QBrush(ui::color::tenue())));
        item->setCheckState(m_ocultos.count(agenda.dia.doctor) > 0 ? Qt::Unchecked : Qt::Checked);
    }
    listaprofesionales->setCurrentRow(qMin(antes, listaprofesionales->count() - 1));
}

void agendastodas::mostrarSala()
{
    const QDateTime ahora = entorno().clock().now();
    std::vector<QStringList> textos;
    std::vector<qint64> claves;
    size_t otros = 0;
    for (const EnEspera &uno : m_sala) {
        if (m_ocultos.count(uno.doctor) > 0) {
            ++otros;
            continue;
        }
        textos.push_back(
            {uno.espera(ahora),
             uno.paciente,
             uno.profesional,
             horaTexto(uno.hora),
             uno.llegada.isValid() ? horaTexto(uno.llegada.time()) : QStringLiteral("—")});
        claves.push_back(uno.id);
    }
    QString titulo = tr("&Sala de espera: %1").arg(claves.size());
    if (otros > 0)
        titulo += tr("  (y %1 de profesionales que no se muestran)").arg(otros);
    titulosala->setText(titulo);
    const QScopedValueRollback poniendo(m_poniendo, true);
    sala->mostrar(std::move(textos), std::move(claves));
}

std::optional<agendastodas::Elegido> agendastodas::elegido() const
{
    const GrillaTodas::Lugar lugar = lista->actual();
    return lugar.fila ? std::optional(Elegido{lugar.agenda->dia.doctor, *lugar.fila}) : std::nullopt;
}

std::optional<agendastodas::Elegido> agendastodas::turnoElegido() const
{
    auto uno = elegido();
    return uno && uno->fila.clase == FilaDia::Clase::Turno ? uno : std::nullopt;
}

int agendastodas::doctorElegido() const
{
    if (const auto uno = elegido())
        return uno->doctor;
    const AgendaDelDia *primera = lista->modelo().agenda(0);
    return primera ? primera->dia.doctor : 0;
}

void agendastodas::mostrarDetalle()
{
    const auto uno = elegido();
    const qint64 id = uno ? uno->fila.id : 0;
    if (id != 0 && id == m_detalleDe)
        return;
    m_detalleDe = id;
    QStringList lineas = id == 0 ? QStringList() : detalleTurno(conexion(), id);
    if (!lineas.isEmpty() && !uno->fila.telefono.isEmpty())
        lineas.insert(1, uno->fila.telefono.trimmed());
    if (uno && uno->fila.clase == FilaDia::Clase::Turno) {
        if (!uno->fila.motivo.isEmpty())
            lineas << tr("Motivo: ") + uno->fila.motivo;
        if (!uno->fila.observaciones.trimmed().isEmpty())
            lineas << tr("Observaciones: ") + uno->fila.observaciones.simplified();
    } else if (uno) {
        const AgendaDelDia *agenda = lista->actual().agenda;
        lineas << agenda->nombre
               << (uno->fila.clase == FilaDia::Clase::Libre ? tr("%1: libre") : tr("%1: no se atiende"))
                      .arg(horaTexto(uno->fila.hora));
    }
    detalle->setText(lineas.join(u'\n'));
}

void agendastodas::habilitar()
{
    bool hayLibres = false, hayOcupados = false;
    for (const GrillaTodas::Lugar &lugar : lista->elegidos()) {
        hayLibres = hayLibres || lugar.libre();
        hayOcupados = hayOcupados || !lugar.libre();
    }
    const auto turno = turnoElegido();
    const bool hayColumnas = lista->modelo().columnCount() > 0;
    nuevo->setEnabled(hayColumnas);
    veragenda->setEnabled(hayColumnas);
    horarios->setEnabled(hayColumnas);
    nolabo->setEnabled(hayColumnas);
    bloquear->setEnabled(hayLibres);
    liberar->setEnabled(hayOcupados);
    for (QPushButton *boton : {sinollego, sinoatendido})
        boton->setEnabled(turno.has_value());
    atender->setEnabled(turno && !turno->fila.pacienteEliminado);
    sinollego->setText(turno && turno->fila.llegado ? tr("No &llegó") : tr("&Llegó"));
    sinoatendido->setText(turno && turno->fila.atendido ? tr("No &atendido") : tr("&Atendido"));
}

void agendastodas::elegirProfesionales()
{
    for (int i = 0; i < listaprofesionales->count(); ++i) {
        const QListWidgetItem *item = listaprofesionales->item(i);
        const int doctor = item->data(Qt::UserRole).toInt();
        if (item->checkState() == Qt::Checked)
            m_ocultos.erase(doctor);
        else
            m_ocultos.insert(doctor);
    }
    guardarOcultos(m_ocultos);
    mostrar();
}

void agendastodas::marcarTodos(bool mostrados)
{
    {
        const QScopedValueRollback poniendo(m_poniendo, true);
        for (int i = 0; i < listaprofesionales->count(); ++i)
            listaprofesionales->item(i)->setCheckState(mostrados ? Qt::Checked : Qt::Unchecked);
    }
    elegirProfesionales();
}

void agendastodas::trasCambio(const std::optional<Elegido> &antes)
{
    ventanas().refrescar(ventanasDeTurnos(objectName()));
    recargar();
    // What was done gave the row another identity: its hour stays chosen.
    if (antes && !lista->actual().fila)
        lista->elegirHora(antes->doctor, antes->fila.hora);
}

void agendastodas::activar()
{
    const auto uno = elegido();
    if (!uno)
        return;
    if (uno->fila.clase == FilaDia::Clase::Libre)
        abrirReserva();
    else
        abrirAgenda();
}

void agendastodas::abrirReserva()
{
    const int doctor = doctorElegido();
    if (doctor == 0)
        return;
    const auto antes = elegido();
    QStringList turnos;
    for (const GrillaTodas::Lugar &lugar : lista->elegidos())
        if (lugar.libre() && lugar.agenda->dia.doctor == doctor)
            turnos << base::fechaHoraTexto(lugar.agenda->dia.momento(*lugar.fila));
    if (turnos.isEmpty() && antes && antes->fila.clase == FilaDia::Clase::Turno)
        turnos << base::fechaHoraTexto({m_todas->fecha, antes->fila.hora}); // an extra one at an hour that is taken
    ui::Pedido pedido;
    pedido.datos
        = {{QStringLiteral("doctor"), doctor},
           {QStringLiteral("turnos"), turnos},
           {QStringLiteral("fecha"), m_todas->fecha}};
    const QPointer<agendastodas> esta(this);
    pedido.alTerminar = [esta, antes](const QVariantMap &) {
        if (esta)
            esta->intentar([&] { esta->trasCambio(antes); });
    };
    ventanas().abrir(QStringLiteral("agendanuevoturno"), pedido, this);
}

void agendastodas::liberarElegidos()
{
    QVector<qint64> ids;
    for (const GrillaTodas::Lugar &lugar : lista->elegidos())
        if (!lugar.libre())
            ids.append(lugar.fila->id);
    if (ids.isEmpty())
        return;
    const auto antes = elegido();
    const auto resultado = agenda::liberar(entorno(), ids);
    if (!resultado)
        (void)aceptado(resultado.rechazo());
    trasCambio(antes);
}

void agendastodas::bloquearElegidos()
{
    // The rule takes one professional at a time; each of them all or nothing.
    std::map<int, QVector<QDateTime>> libres;
    for (const GrillaTodas::Lugar &lugar : lista->elegidos())
        if (lugar.libre())
            libres[lugar.agenda->dia.doctor].append(lugar.agenda->dia.momento(*lugar.fila));
    if (libres.empty())
        return;
    const auto antes = elegido();
    for (const auto &[doctor, momentos] : libres)
        if (!aceptado(agenda::bloquear(entorno(), doctor, momentos)))
            break;
    trasCambio(antes);
}

bool agendastodas::cambiar(const std::function<base::Control(const FilaDia &)> &cambio)
{
    const auto turno = turnoElegido();
    if (!turno)
        return false;
    const bool hecho = aceptado(cambio(turno->fila));
    trasCambio(turno);
    return hecho;
}

void agendastodas::marcarAtencion()
{
    const auto turno = turnoElegido();
    if (!turno)
        return;
    const bool atendido = !turno->fila.atendido;
    if (cambiar([&](const FilaDia &f) { return marcarAtendido(entorno(), f.id, atendido); }) && atendido)
        ofrecerSesion(entorno(), ventanas(), *this, turno->fila.id, turno->fila.nrohc);
}

void agendastodas::abrirAgenda()
{
    const int doctor = doctorElegido();
    if (doctor == 0)
        return;
    QVariantMap datos{{QStringLiteral("doctor"), doctor}, {QStringLiteral("fecha"), m_todas->fecha}};
    if (const auto uno = elegido()) {
        datos.insert(QStringLiteral("hora"), horaTexto(uno->fila.hora));
        if (uno->fila.clase == FilaDia::Clase::Turno)
            datos.insert(QStringLiteral("id"), uno->fila.id);
    }
    ventanas().abrir(QStringLiteral("agendas"), {.datos = datos}, this);
}

void agendastodas::abrirFichaElegida()
{
    const auto turno = turnoElegido();
    if (turno && !aceptado(abrirFichaDeTurno(entorno(), ventanas(), turno->fila.id)))
        recargar();
}

void agendastodas::abrirDeProfesional(const QString &ventana)
{
    ventanas().abrir(ventana, {.datos = {{QStringLiteral("doctor"), doctorElegido()}}}, this);
}

void agendastodas::elegirDeSala()
{
    const qint64 id = sala->claveActual();
    for (const EnEspera &uno : m_sala)
        if (uno.id == id)
            lista->elegir(uno.doctor, id);
}

void agendastodas::alTic()
{
    // Stopped meanwhile, so that a lost connection is told once and not at every interval.
    tiempo->stop();
    if (intentar([this] { recargar(); }))
        tiempo->start();
}

void agendastodas::conectar()
{
    connect(fechadia, &CalendarioMes::fechaElegida, this, [this] {
        intentar([this] {
            const auto antes = elegido();
            recargar();
            if (antes && !lista->actual().fila)
                lista->elegirHora(antes->doctor, antes->fila.hora);
        });
    });
    connect(diaanterior, &QToolButton::clicked, this, [this] { fechadia->setFecha(fechadia->fecha().addDays(-1)); });
    connect(diasiguiente, &QToolButton::clicked, this, [this] { fechadia->setFecha(fechadia->fecha().addDays(1)); });

    connect(listaprofesionales, &QListWidget::itemChanged, this, [this] {
        if (!m_poniendo)
            intentar([this] { elegirProfesionales(); });
    });
    alPulsar(todos, [this] { marcarTodos(true); });
    alPulsar(ninguno, [this] { marcarTodos(false); });

    connect(lista, &GrillaTodas::eleccionCambiada, this, [this] {
        habilitar();
        intentar([this] { mostrarDetalle(); });
    });
    connect(lista, &GrillaTodas::activada, this, [this] { intentar([this] { activar(); }); });
    connect(sala->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (!m_poniendo)
            elegirDeSala();
    });
    connect(sala, &ui::Grilla::activada, this, [this] {
        elegirDeSala();
        intentar([this] { abrirFichaElegida(); });
    });
    connect(tiempo, &QTimer::timeout, this, &agendastodas::alTic);
}

void agendastodas::conectarOperaciones()
{
    alPulsar(nuevo, [this] { abrirReserva(); });
    alPulsar(liberar, [this] { liberarElegidos(); });
    alPulsar(bloquear, [this] { bloquearElegidos(); });
    alPulsar(sinollego, [this] {
        cambiar([this](const FilaDia &f) { return marcarLlegado(entorno(), f.id, !f.llegado); });
    });
    alPulsar(sinoatendido, [this] { marcarAtencion(); });
    alPulsar(veragenda, [this] { abrirAgenda(); });
    alPulsar(atender, [this] { abrirFichaElegida(); });
    alPulsar(horarios, [this] { abrirDeProfesional(QStringLiteral("agendahorarios2")); });
    alPulsar(nolabo, [this] { abrirDeProfesional(QStringLiteral("agendasnolabo2")); });
    alPulsar(botontelefonos, [this] { ventanas().abrir(QStringLiteral("telefonos"), {}, this); });
}

} // namespace agenda
