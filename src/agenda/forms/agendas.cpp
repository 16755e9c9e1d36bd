#include "agenda/forms/agendas.h"

#include "agenda/Calendario.h"
#include "agenda/CambiosTurno.h"
#include "agenda/DetalleTurno.h"
#include "agenda/forms/CalendarioMes.h"
#include "base/Clock.h"
#include "base/Fechas.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"
#include "ui/Grilla.h"
#include "ui/ListaCombo.h"

#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include <QToolButton>

namespace agenda {

namespace {

QColor colorDe(Tono tono)
{
    switch (tono) {
    case Tono::Atendido: return QColor(0xCF, 0xFB, 0xCF);
    case Tono::Pasado: return QColor(0xE0, 0xE0, 0xE0);
    case Tono::Sobreturno: return QColor(0xFF, 0xE6, 0xB8);
    case Tono::Ninguno: break;
    }
    return {};
}

} // namespace

agendas::agendas(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("agendas"), tr("Agenda de Turnos"))
{
    construir();
    fechadia->setHoy(entorno.clock().today());
    fechadia->setFecha(entorno.clock().today());
    conectar();
}

bool agendas::preparar(const ui::Pedido &pedido)
{
    // The day is loaded once, below.
    const QSignalBlocker callaLista(lisdocto), callaFecha(fechadia);
    cargarProfesionales();
    if (const int suyo = pedido.datos.value(QStringLiteral("doctor")).toInt(); suyo != 0)
        ui::elegirId(*lisdocto, suyo);
    else if (lisdocto->currentIndex() < 0)
        ui::elegirId(*lisdocto, db::profesionalActivo(entorno()));
    if (lisdocto->currentIndex() < 0 && lisdocto->count() > 0)
        lisdocto->setCurrentIndex(0);
    fechadia->setPrimerDia(primerDiaSemana(conexion()));
    fechadia->setFecha(pedido.datos.value(QStringLiteral("fecha")).toDate());
    quitarFilaTemporal(conexion());
    recargar();
    lista->setFocus();
    if (lista->filaActual() < 0 && lista->modelo().rowCount() > 0)
        lista->elegirFila(0);
    const int segundos = entorno().segundosAgenda();
    if (segundos > 0)
        tiempo->start(segundos * 1000);
    return true;
}

void agendas::refrescar()
{
    cargarProfesionales();
    fechadia->setPrimerDia(primerDiaSemana(conexion()));
    recargar();
    // A failed tick stops the timer; what loads again by hand brings it back, with the interval set by now.
    if (const int ms = entorno().segundosAgenda() * 1000; ms > 0 && (!tiempo->isActive() || tiempo->interval() != ms))
        tiempo->start(ms);
}

QString agendas::ayuda() const
{
    return tr(
        "TURNOS: Elija el profesional y el día. Con Enter sobre un horario libre se asigna un turno; con varios"
        " horarios libres seleccionados se asignan todos al mismo paciente.\n\n"
        "LLEGÓ Y ATENDIDO: Cuando el paciente llega presione Ctrl+L; cuando fue atendido, Ctrl+A. Las mismas"
        " teclas deshacen la marca.\n\n"
        "COLORES: Verde, ya atendido. Gris, horario libre que ya pasó. Naranja, horario con sobreturnos, cuando la"
        " plantilla pide resaltarlos.\n\n"
        "CALENDARIO: Los días con turnos están en negrita y subrayados; los tachados no se atienden. Se recorre"
        " con las flechas; Re Pág y Av Pág cambian el mes, con Mayúsculas el año; Inicio vuelve a hoy.");
}

void agendas::cargarProfesionales()
{
    std::vector<std::pair<QString, int>> entradas;
    for (const db::Doctor &d : db::profesionales(conexion()))
        entradas.emplace_back(d.nombre, d.id);
    ui::ponerEntradas(*lisdocto, entradas);
}

void agendas::recargar()
{
    // While a name is being typed the list holds no choice: the day shown stays that of the last one.
    m_doctor = ui::idElegido(*lisdocto, m_doctor);
    fechadia->setHoy(entorno().clock().today());
    m_dia = cargarDia(conexion(), m_doctor, fechadia->fecha(), entorno().clock().today());
    m_noLaborables = listarDiasNoLaborables(conexion(), m_doctor);
    mostrarDia();
    mostrarMarcas();
    mostrarResumen();
    m_detalleDe = 0;
    mostrarDetalle();
    habilitar();
}

void agendas::recargarEn(std::optional<QTime> hora)
{
    recargar();
    if (!hora || lista->filaActual() >= 0)
        return;
    // What was done gave the row another identity: its hour stays chosen. Not so when another station changed the day,
    // where the hour may now be another patient's.
    for (const FilaDia &fila : m_dia.filas)
        if (fila.hora == *hora) {
            lista->elegirFila(lista->modelo().filaDe(fila.clave()));
            return;
        }
}

std::optional<QTime> agendas::horaActual() const
{
    const FilaDia *fila = filaActual();
    return fila ? std::optional(fila->hora) : std::nullopt;
}

void agendas::mostrarDia()
{
    std::vector<QStringList> textos;
    std::vector<qint64> claves;
    textos.reserve(m_dia.filas.size());
    claves.reserve(m_dia.filas.size());
    for (const FilaDia &fila : m_dia.filas) {
        textos.push_back(fila.textos());
        claves.push_back(fila.clave());
    }
    lista->mostrar(std::move(textos), std::move(claves));

    QString titulo = QLocale().toString(m_dia.fecha, QStringLiteral("dddd d 'de' MMMM 'de' yyyy"));
    titulo[0] = titulo.at(0).toUpper();
    if (m_dia.noLaborable)
        titulo += tr("  —  No se atiende");
    fechaactiva->setText(titulo);
}

void agendas::mostrarMarcas()
{
    const QDate fecha = fechadia->fecha();
    const QDate desde(fecha.year(), fecha.month(), 1), hasta(fecha.year(), fecha.month(), fecha.daysInMonth());
    fechadia->setMarcas(
        diasConTurnos(conexion(), m_doctor, desde, hasta), diasNoLaborablesEntre(m_noLaborables, desde, hasta));
}

void agendas::mostrarResumen()
{
    const QStringList lineas = m_dia.resumen();
    QStringList mostradas;
    for (int i = 0; i < listatemp->count(); ++i)
        mostradas << listatemp->item(i)->text();
    if (mostradas == lineas)
        return;
    const int lugar = listatemp->verticalScrollBar()->value();
    listatemp->clear();
    listatemp->addItems(lineas);
    listatemp->verticalScrollBar()->setValue(lugar);
}

const FilaDia *agendas::filaDe(qint64 clave) const
{
    for (const FilaDia &fila : m_dia.filas)
        if (fila.clave() == clave)
            return &fila;
    return nullptr;
}

const FilaDia *agendas::filaActual() const { return filaDe(lista->claveActual()); }

void agendas::mostrarDetalle()
{
    const FilaDia *fila = filaActual();
    const qint64 id = fila ? fila->id : 0;
    if (id != 0 && id == m_detalleDe)
        return;
    m_detalleDe = id;
    QStringList lineas = id == 0 ? QStringList() : detalleTurno(conexion(), id);
    if (!lineas.isEmpty() && !fila->telefono.isEmpty())
        lineas.insert(1, fila->telefono.trimmed());
    // Two columns keep it low: the patient's facts in pairs, who gave the appointment below.
    QStringList renglones;
    for (qsizetype i = 0; i < lineas.size(); i += 2)
        renglones << lineas.mid(i, 2).join(QStringLiteral("      "));
    if (fila && fila->clase == FilaDia::Clase::Turno && !fila->observaciones.trimmed().isEmpty())
        renglones << tr("Observaciones: ") + fila->observaciones.simplified();
    detalle->setText(renglones.join(u'\n'));
}

void agendas::habilitar()
{
    const FilaDia *fila = filaActual();
    const bool turno = fila && fila->clase == FilaDia::Clase::Turno;
    bool hayLibres = false, hayOcupados = false;
    for (const qint64 clave : lista->clavesElegidas()) {
        hayLibres = hayLibres || clave < 0;
        hayOcupados = hayOcupados || clave > 0;
    }
    nuevo->setEnabled(m_doctor != 0);
    liberar->setEnabled(hayOcupados);
    bloquear->setEnabled(hayLibres);
    for (QPushButton *boton : {sinollego, sinoatendido, modifobservacion, modifmoticonsul, modifhora})
        boton->setEnabled(turno);
    sinollego->setText(turno && fila->llegado ? tr("No &llegó") : tr("&Llegó"));
    sinoatendido->setText(turno && fila->atendido ? tr("No &atendido") : tr("&Atendido"));
    for (QPushButton *boton : {horarios, imprimir, plantillatur, exportarics})
        boton->setEnabled(m_doctor != 0);
}

QStringList agendas::turnosElegidos() const
{
    QStringList turnos;
    for (const qint64 clave : lista->clavesElegidas())
        if (const FilaDia *fila = filaDe(clave); fila && fila->clase == FilaDia::Clase::Libre)
            turnos << base::fechaHoraTexto(m_dia.momento(*fila));
    if (const FilaDia *fila = filaActual(); turnos.isEmpty() && fila && fila->clase == FilaDia::Clase::Turno)
        turnos << base::fechaHoraTexto(m_dia.momento(*fila)); // an extra appointment at an hour that is taken
    return turnos;
}

void agendas::abrirReserva()
{
    ui::Pedido pedido;
    pedido.datos = {{QStringLiteral("doctor"), m_doctor}, {QStringLiteral("turnos"), turnosElegidos()}};
    const QPointer<agendas> esta(this);
    pedido.alTerminar = [esta, hora = horaActual()](const QVariantMap &) {
        if (esta)
            esta->intentar([&] { esta->recargarEn(hora); });
    };
    ventanas().abrir(QStringLiteral("agendanuevoturno"), pedido, this);
}

void agendas::liberarElegidos()
{
    QVector<qint64> ids;
    for (const qint64 clave : lista->clavesElegidas())
        if (clave > 0)
            ids.append(clave);
    if (ids.isEmpty())
        return;
    const auto hora = horaActual();
    const auto resultado = agenda::liberar(entorno(), ids);
    if (!resultado)
        aceptado(resultado.rechazo());
    recargarEn(hora);
}

void agendas::bloquearElegidos()
{
    QVector<QDateTime> libres;
    for (const qint64 clave : lista->clavesElegidas())
        if (const FilaDia *fila = filaDe(clave); fila && fila->clase == FilaDia::Clase::Libre)
            libres.append(m_dia.momento(*fila));
    if (libres.isEmpty())
        return;
    const auto hora = horaActual();
    aceptado(agenda::bloquear(entorno(), m_doctor, libres));
    recargarEn(hora);
}

void agendas::cambiar(const std::function<base::Control(const FilaDia &)> &cambio)
{
    const FilaDia *actual = filaActual();
    if (!actual || actual->clase != FilaDia::Clase::Turno)
        return;
    // The day may load again while the rule asks the person something.
    const FilaDia fila = *actual;
    aceptado(cambio(fila));
    recargarEn(fila.hora);
}

void agendas::abrirDeTurno(const QString &ventana)
{
    const FilaDia *fila = filaActual();
    if (!fila || fila->clase != FilaDia::Clase::Turno)
        return;
    ui::Pedido pedido;
    pedido.datos = {{QStringLiteral("id"), fila->id}};
    const QPointer<agendas> esta(this);
    pedido.alTerminar = [esta](const QVariantMap &) {
        if (esta)
            esta->actualizar();
    };
    ventanas().abrir(ventana, pedido, this);
    // Gone meanwhile: the window has said so and the day must show it.
    if (!ventanas().buscar(ventana))
        recargar();
}

void agendas::irA(QDate fecha) { fechadia->setFecha(fecha); }

void agendas::alTic()
{
    // Stopped meanwhile, so that a lost connection is told once and not at every interval.
    tiempo->stop();
    if (intentar([this] { recargar(); }))
        tiempo->start();
}

void agendas::conectar()
{
    connect(lisdocto, &QComboBox::currentIndexChanged, this, [this] { intentar([this] { recargar(); }); });
    connect(fechadia, &CalendarioMes::fechaElegida, this, [this] { intentar([this] { recargar(); }); });
    connect(hoy, &QPushButton::clicked, this, [this] { irA(entorno().clock().today()); });
    connect(fechamesmas, &QToolButton::clicked, this, [this] { irA(fechadia->fecha().addMonths(1)); });
    connect(fechamesmenos, &QToolButton::clicked, this, [this] { irA(fechadia->fecha().addMonths(-1)); });
    connect(fechaaniomas, &QToolButton::clicked, this, [this] { irA(fechadia->fecha().addYears(1)); });
    connect(fechaaniomenos, &QToolButton::clicked, this, [this] { irA(fechadia->fecha().addYears(-1)); });

    lista->modelo().setFondo(
        [this](int fila) { return colorDe(m_dia.tono(m_dia.filas[size_t(fila)], entorno().clock().now())); });
    lista->modelo().setAyuda([this](int fila) {
        const FilaDia &f = m_dia.filas[size_t(fila)];
        if (f.clase != FilaDia::Clase::Turno || f.observaciones.trimmed().isEmpty())
            return QString();
        return QStringLiteral("OBSERVACIONES DEL TURNO DE LA HORA ") + horaTexto(f.hora) + u'\n' + f.observaciones;
    });
    connect(lista, &ui::Grilla::filaCambiada, this, [this] { intentar([this] { mostrarDetalle(); }); });
    connect(lista->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { habilitar(); });
    connect(lista, &ui::Grilla::activada, this, [this] {
        const FilaDia *fila = filaActual();
        if (fila && fila->clase == FilaDia::Clase::Libre)
            intentar([this] { abrirReserva(); });
    });

    alPulsar(nuevo, [this] { abrirReserva(); });
    alPulsar(liberar, [this] { liberarElegidos(); });
    alPulsar(bloquear, [this] { bloquearElegidos(); });
    alPulsar(sinollego, [this] {
        cambiar([this](const FilaDia &f) { return marcarLlegado(entorno(), f.id, !f.llegado); });
    });
    alPulsar(sinoatendido, [this] {
        cambiar([this](const FilaDia &f) { return marcarAtendido(entorno(), f.id, !f.atendido); });
    });
    alPulsar(modifobservacion, [this] { abrirDeTurno(QStringLiteral("agendaobservacion")); });
    alPulsar(modifmoticonsul, [this] { abrirDeTurno(QStringLiteral("agendamotivo")); });
    alPulsar(modifhora, [this] { abrirDeTurno(QStringLiteral("agendamodifturno")); });
    alPulsar(horarios, [this] {
        ui::Pedido pedido;
        pedido.datos = {{QStringLiteral("doctor"), m_doctor}};
        ventanas().abrir(QStringLiteral("agendahorarios"), pedido, this);
    });
    connect(tiempo, &QTimer::timeout, this, &agendas::alTic);
}

} // namespace agenda
