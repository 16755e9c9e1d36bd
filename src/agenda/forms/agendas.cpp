#include "agenda/forms/agendas.h"

#include "agenda/Calendario.h"
#include "agenda/DetalleTurno.h"
#include "agenda/OrdenesTurno.h"
#include "agenda/Textos.h"
#include "agenda/TurnoGuardado.h"
#include "agenda/TurnosListados.h"
#include "agenda/forms/CalendarioMes.h"
#include "agenda/forms/ColorTono.h"
#include "agenda/forms/GrillaTurnos.h"
#include "agenda/forms/Registro.h"
#include "base/Clock.h"
#include "base/Fechas.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"
#include "ui/Estilo.h"
#include "ui/ListaCombo.h"

#include <QAction>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>

#include <algorithm>

namespace agenda {

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
    if (!aceptado(db::controlarDerecho(entorno(), derechoAgendas)))
        return false;
    int suyo = pedido.datos.value(QStringLiteral("doctor")).toInt();
    QDate fecha = pedido.datos.value(QStringLiteral("fecha")).toDate();
    const qint64 id = pedido.datos.value(QStringLiteral("id")).toLongLong();
    if (id != 0) {
        const auto turno = leerTurnoGuardado(conexion(), id);
        if (!turno)
            return aceptado(registroEliminado());
        suyo = turno->doctor;
        fecha = turno->fecha.date();
    }
    // The day is loaded once, below.
    const QSignalBlocker callaLista(lisdocto), callaFecha(fechadia);
    cargarProfesionales();
    if (suyo != 0)
        ui::elegirId(*lisdocto, suyo);
    else if (lisdocto->currentIndex() < 0)
        ui::elegirId(*lisdocto, db::profesionalActivo(entorno()));
    if (lisdocto->currentIndex() < 0 && lisdocto->count() > 0)
        lisdocto->setCurrentIndex(0);
    fechadia->setPrimerDia(primerDiaSemana(conexion()));
    fechadia->setFecha(fecha);
    recargar();
    lista->setFocus();
    if (id != 0)
        lista->elegirClave(id);
    else if (const QString hora = pedido.datos.value(QStringLiteral("hora")).toString(); !hora.isEmpty())
        elegirHora(QTime::fromString(hora, QStringLiteral("HH:mm")));
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
        " horarios libres seleccionados se asignan todos al mismo paciente. Con Enter sobre un turno se abre la ficha"
        " del paciente.\n\n"
        "TECLAS: Ctrl+L llegó, Ctrl+A atendido, F2 ficha, Ctrl+G pagar, F6 bloquear, F7 observaciones, F8 motivo,"
        " F9 cambiar, Supr eliminar. Ctrl+Izquierda y Ctrl+Derecha cambian el día, Ctrl+Inicio vuelve a hoy,"
        " Ctrl+Abajo va al horario libre siguiente, F3 muestra los próximos días con lugar.\n\n"
        "PASAR UN TURNO: Ctrl+X lo corta y Ctrl+V lo pega en el horario elegido, también de otro día; Esc lo cancela."
        " En un día sin horarios, Ctrl+V pregunta la hora."
        " También se arrastra con el mouse a otro horario, o a un día del calendario.\n\n"
        "COLORES: Verde, ya atendido. Gris, horario libre que ya pasó. Naranja, horario con sobreturnos, cuando la"
        " plantilla pide resaltarlos. Celeste, el turno cortado.\n\n"
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
    // Everything is read before anything is shown: after a failure the day shown before stays whole. While a name is
    // being typed the list holds no choice: the day shown stays that of the last one.
    const int doctor = ui::idElegido(*lisdocto, m_doctor);
    const QDate fecha = fechadia->fecha(), hoyEs = entorno().clock().today();
    quitarFilaTemporal(conexion());
    DiaAgenda dia = cargarDia(conexion(), doctor, fecha, hoyEs);
    const QDate desde(fecha.year(), fecha.month(), 1), hasta(fecha.year(), fecha.month(), fecha.daysInMonth());
    std::set<QDate> conTurnos = diasConTurnos(conexion(), doctor, desde, hasta);
    std::set<QDate> noLaborables = diasNoLaborablesEntre(listarDiasNoLaborables(conexion(), doctor), desde, hasta);

    m_doctor = doctor;
    m_dia = std::move(dia);
    fechadia->setHoy(hoyEs);
    fechadia->setMarcas(std::move(conTurnos), std::move(noLaborables));
    mostrarDia();
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
    elegirHora(*hora);
}

void agendas::recargarCerca()
{
    if (const auto hora = horaActual(); hora && hora != m_horaHallada)
        m_horaBuscada = hora;
    recargar();
    if (m_horaBuscada && !m_dia.filas.empty()) {
        const auto cerca = std::find_if(
            m_dia.filas.begin(), m_dia.filas.end(), [this](const FilaDia &fila) { return fila.hora >= m_horaBuscada; });
        elegirHora(cerca == m_dia.filas.end() ? m_dia.filas.back().hora : cerca->hora);
    }
    m_horaHallada = horaActual();
}

void agendas::trasCambio(std::optional<QTime> hora)
{
    recargarEn(hora);
    ventanas().refrescar(ventanasDeTurnos(objectName()));
}

void agendas::elegirHora(QTime hora)
{
    for (const FilaDia &fila : m_dia.filas)
        if (fila.hora == hora) {
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
    // The colours go by the hour too: reckoned at each reading, and not for each cell that is painted.
    const QDateTime ahora = entorno().clock().now();
    m_fondos.clear();
    for (const FilaDia &fila : m_dia.filas)
        m_fondos.push_back(colorDe(m_dia.tono(fila, ahora)));
    if (textos == m_textosMostrados && claves == m_clavesMostradas) {
        lista->viewport()->update();
    } else {
        m_textosMostrados = textos;
        m_clavesMostradas = claves;
        lista->mostrar(std::move(textos), std::move(claves));
    }

    fechaactiva->setText(
        m_dia.noLaborable ? fechaLarga(m_dia.fecha) + tr("  —  No se atiende") : fechaLarga(m_dia.fecha));
    QPalette colores = palette();
    if (m_dia.noLaborable)
        colores.setColor(QPalette::WindowText, ui::color::error());
    fechaactiva->setPalette(colores);
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

std::optional<FilaDia> agendas::turnoActual() const
{
    const FilaDia *fila = filaActual();
    return fila && fila->clase == FilaDia::Clase::Turno ? std::optional(*fila) : std::nullopt;
}

void agendas::mostrarDetalle()
{
    const FilaDia *fila = filaActual();
    const qint64 id = fila ? fila->id : 0;
    if (id != 0 && id == m_detalleDe)
        return;
    m_detalleDe = id;
    QStringList lineas = id == 0 ? QStringList() : detalleTurno(conexion(), id);
    const QString ordenes = id == 0 ? QString() : detalleOrdenes(conexion(), id).join(u'\n');
    detalleordenes->setVisible(!ordenes.isEmpty());
    if (ordenes != detalleordenes->toPlainText())
        detalleordenes->setPlainText(ordenes);
    // Low enough for a glance: what is short stands beside another.
    QStringList renglones;
    for (const QString &linea : lineas) {
        const bool alLado = linea.startsWith(QStringLiteral("Ultima Consulta: ")) && !renglones.isEmpty();
        if (alLado)
            renglones.last() += QStringLiteral("      ") + linea;
        else
            renglones << linea;
    }
    if (!renglones.isEmpty() && !fila->telefono.isEmpty())
        renglones.insert(1, fila->telefono.trimmed());
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
    for (QPushButton *boton : {nuevo, horarios, proximolibre})
        boton->setEnabled(m_doctor != 0);
    liberar->setEnabled(hayOcupados);
    bloquear->setEnabled(hayLibres);
    for (QPushButton *boton : {atender, sinollego, sinoatendido, pagar, modifobservacion, modifmoticonsul, modifhora})
        boton->setEnabled(turno);
    sinollego->setText(turno && fila->llegado ? tr("No &llegó") : tr("&Llegó"));
    sinoatendido->setText(turno && fila->atendido ? tr("No &atendido") : tr("&Atendido"));
    for (QPushButton *boton : {horarios, imprimir, plantillatur, exportarics})
        boton->setEnabled(m_doctor != 0);
    for (const AccionDeMenu &suya : m_acciones) {
        suya.accion->setEnabled(suya.boton->isEnabled());
        suya.accion->setText((suya.texto.isEmpty() ? suya.boton->text() : suya.texto) + u'\t' + suya.tecla);
    }
    menucortar->setEnabled(turno);
    menupegar->setEnabled(m_corte && (m_dia.filas.empty() || (fila && fila->clase != FilaDia::Clase::Bloqueado)));
    const QString porque = m_dia.noLaborable ? tr("Ese día no se atiende.")
        : !m_dia.hayPlantilla                ? tr("Ese día no tiene una plantilla de horarios.")
                                             : tr("Ese día no tiene horarios.");
    const QString entonces = m_corte ? tr("Ctrl+V pregunta a qué hora pasa el turno cortado.")
                                     : tr("Nuevo (Ctrl+N) asigna un turno a la hora que se elija.");
    lista->setAviso(m_doctor == 0 ? tr("No hay profesionales cargados.") : porque + u'\n' + entonces);
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

void agendas::irA(QDate fecha) { fechadia->setFecha(fecha); }

void agendas::irALibre(int sentido)
{
    const ui::ModeloGrilla &modelo = lista->modelo();
    const QDateTime ahora = entorno().clock().now();
    for (int i = lista->filaActual() + sentido; i >= 0 && i < modelo.rowCount(); i += sentido) {
        const FilaDia *fila = filaDe(modelo.clave(i));
        if (fila && fila->clase == FilaDia::Clase::Libre && !m_dia.noLaborable
            && m_dia.tono(*fila, ahora) != Tono::Pasado) {
            lista->elegirFila(i);
            return;
        }
    }
    // None is left: the next one is on another day.
    if (sentido > 0)
        proximolibre->click();
}

void agendas::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && m_corte) {
        quitarCorte();
        event->accept();
        return;
    }
    Ventana::keyPressEvent(event);
}

void agendas::alTic()
{
    if (lista->arrastrando())
        return;
    // Stopped meanwhile, so that a lost connection is told once and not at every interval.
    tiempo->stop();
    if (intentar([this] { recargar(); }))
        tiempo->start();
}

void agendas::conectar()
{
    connect(lisdocto, &QComboBox::currentIndexChanged, this, [this] { intentar([this] { recargarCerca(); }); });
    connect(fechadia, &CalendarioMes::fechaElegida, this, [this] { intentar([this] { recargarCerca(); }); });

    const auto irAHora = [this](const QListWidgetItem *renglon) {
        if (const QTime hora = QTime::fromString(renglon->text().left(5), QStringLiteral("HH:mm")); hora.isValid())
            elegirHora(hora);
    };
    connect(listatemp, &QListWidget::itemClicked, this, irAHora);
    connect(listatemp, &QListWidget::itemActivated, this, irAHora);

    lista->modelo().setFondo([this](int fila) {
        const FilaDia &suya = m_dia.filas[size_t(fila)];
        if (m_corte && suya.id == m_corte->id)
            return QColor(0xCF, 0xE2, 0xF7);
        return m_fondos[size_t(fila)];
    });
    lista->modelo().setAyuda([this](int fila) {
        const FilaDia &f = m_dia.filas[size_t(fila)];
        if (f.clase != FilaDia::Clase::Turno || f.observaciones.trimmed().isEmpty())
            return QString();
        return QStringLiteral("OBSERVACIONES DEL TURNO DE LA HORA ") + horaTexto(f.hora) + u'\n' + f.observaciones;
    });
    connect(lista, &ui::Grilla::filaCambiada, this, [this] { intentar([this] { mostrarDetalle(); }); });
    connect(lista->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        // A click makes a row the current one before it is selected: only now there is one to tell of.
        intentar([this] { mostrarDetalle(); });
        habilitar();
    });
    connect(lista, &ui::Grilla::activada, this, [this] { intentar([this] { activarFila(); }); });
    conectarOperaciones();
    conectarMover();
    connect(tiempo, &QTimer::timeout, this, &agendas::alTic);
}

} // namespace agenda
