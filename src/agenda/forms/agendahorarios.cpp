#include "agenda/forms/agendahorarios.h"

#include "agenda/Calendario.h"
#include "agenda/DiasNoLaborables.h"
#include "agenda/SemanaPlantilla.h"
#include "agenda/TurnosListados.h"
#include "agenda/forms/CampoHora.h"
#include "agenda/forms/Registro.h"
#include "agenda/forms/VistaSemana.h"
#include "base/Clock.h"
#include "base/Fechas.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"
#include "ui/CampoFecha.h"
#include "ui/ListaCombo.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <QSpinBox>

namespace agenda {

namespace {

/// In place of a template's `id`: the newest one, which is the one in force.
constexpr int ultima = -1;

} // namespace

agendahorarios::agendahorarios(db::Entorno &entorno, ui::Ventanas &ventanas, const QString &nombre)
    : Ventana(entorno, ventanas, nombre, tr("Plantilla de Días y Horarios"))
{
    construir();
    conectar();
}

void agendahorarios::conectar()
{
    // Once the click is over: the list would go on choosing the row after a question had taken it back.
    connect(
        listaplantillas,
        &QListWidget::currentRowChanged,
        this,
        [this] { intentar([this] { alElegirPlantilla(); }); },
        Qt::QueuedConnection);
    alPulsar(nuevo, [this] {
        if (descartar())
            listar(0);
    });
    alPulsar(guardar, [this] { save(); });
    alPulsar(eliminar, [this] {
        if (m_mostrada.id == 0)
            return;
        const auto eliminada = eliminarPlantilla(entorno(), m_mostrada.id);
        if (!eliminada)
            aceptado(eliminada.rechazo());
        else if (!*eliminada)
            return;
        listar(ultima);
        avisarAgenda();
    });
    alPulsar(agregardia, [this] {
        const DiaNoLaborable nuevoDia{0, ui::idElegido(*dia), ui::idElegido(*mes), ui::idElegido(*anio)};
        // The lists stand on "every" when the window opens: a key pressed by mistake would close the book for good.
        if (nuevoDia == DiaNoLaborable{}
            && !entorno().mensajes().pregunta(
                base::titulo::confirmacion,
                tr("Con «Todos los días», «De cada mes» y «De cada año» no se atenderá nunca. ¿Desea agregarlo?"),
                false))
            return;
        const auto alta = agregarDiasNoLaborables(entorno(), {m_doctor}, {nuevoDia});
        if (!alta) {
            aceptado(alta.rechazo());
            return;
        }
        listarDias();
        avisarAgenda();
    });
    alPulsar(eliminardia, [this] {
        const QListWidgetItem *elegido = listadias->currentItem();
        if (!elegido)
            return;
        const auto eliminados = eliminarDiasNoLaborables(entorno(), {elegido->data(Qt::UserRole).toInt()});
        if (!eliminados)
            aceptado(eliminados.rechazo());
        else if (*eliminados == 0)
            return;
        listarDias();
        avisarAgenda();
    });
    // Del removes from the list that has the focus; the window's own would delete the template.
    auto *suprimir = new QShortcut(QKeySequence(Qt::Key_Delete), listadias);
    suprimir->setContext(Qt::WidgetShortcut);
    connect(suprimir, &QShortcut::activated, eliminardia, &QPushButton::click);
    alPulsar(nolabo, [this] {
        ventanas().abrir(
            objectName() == QStringLiteral("agendahorarios2") ? QStringLiteral("agendasnolabo2")
                                                              : QStringLiteral("agendasnolabo"),
            {{{QStringLiteral("doctor"), m_doctor}}},
            this);
    });
    connect(cerrar, &QPushButton::clicked, this, &QWidget::close);

    for (const Renglon &renglon : dias) {
        for (CampoHora *hora : {renglon.maDesde, renglon.maHasta, renglon.taDesde, renglon.taHasta})
            connect(hora, &QLineEdit::textChanged, this, &agendahorarios::dibujar);
        connect(renglon.duracion, &QComboBox::currentIndexChanged, this, &agendahorarios::dibujar);
    }
    for (ui::CampoFecha *fecha : {fechadesde, fechahasta})
        connect(fecha, &QLineEdit::textChanged, this, &agendahorarios::dibujar);
}

bool agendahorarios::preparar(const ui::Pedido &pedido)
{
    if (isVisible() && !descartar())
        return false;
    m_doctor = pedido.datos.value(QStringLiteral("doctor")).toInt();
    if (m_doctor == 0)
        m_doctor = db::profesionalActivo(entorno());
    m_grupoPlantillas->setTitle(tr("Plantillas de %1").arg(nombreProfesional(conexion(), m_doctor)));
    ordenarDias(primerDiaSemana(conexion()));
    const int esteAnio = entorno().clock().today().year();
    std::vector<std::pair<QString, int>> anios{{QStringLiteral("<De cada año>"), 0}};
    for (int i = esteAnio - 1; i <= esteAnio + 10; ++i)
        anios.emplace_back(QString::number(i), i);
    ui::ponerEntradas(*anio, anios);
    anio->setCurrentIndex(0);
    fechadesde->setHoy(entorno().clock().today());
    fechahasta->setHoy(entorno().clock().today());
    listar(ultima);
    listarDias();
    listaplantillas->setFocus();
    return true;
}

void agendahorarios::refrescar()
{
    QWidget *const foco = focusWidget();
    if (!hayCambios())
        listar(m_mostrada.id);
    listarDias();
    if (foco)
        foco->setFocus();
}

QString agendahorarios::ayuda() const
{
    return tr(
        "PLANTILLAS: Cada una dice entre qué fechas vale y a qué horas se atiende cada día. Si dos comparten fechas,"
        " rige la más nueva, la de número más alto. Un día sin horas no se atiende. Las horas se escriben cortas:"
        " 8, 830 u 8:30.\n\n"
        "LA SEMANA: El dibujo muestra los turnos que dan las horas escritas, antes de guardarlas. El último turno puede"
        " terminar después de la hora final: esa parte se ve más clara. Lo que se enciman la mañana y la tarde está"
        " rayado.\n\n"
        "DÍAS EN QUE NO SE ATIENDE: Se arman con día, mes y año; «Varias fechas o feriados» abre la ventana para"
        " períodos, feriados nacionales y todos los profesionales.");
}

bool agendahorarios::hayCambios() const
{
    return fechadesde->text() != m_desde || fechahasta->text() != m_hasta || !(leer() == m_mostrada);
}

bool agendahorarios::descartar()
{
    return !hayCambios()
        || entorno().mensajes().pregunta(
            base::titulo::atencion, tr("La plantilla tiene cambios sin guardar. ¿Desea descartarlos?"), false);
}

void agendahorarios::alElegirPlantilla()
{
    const QListWidgetItem *elegida = listaplantillas->currentItem();
    if (elegida && elegida->data(Qt::UserRole).toInt() == m_mostrada.id)
        return;
    if (descartar()) {
        cambiarDePlantilla();
        return;
    }
    const QSignalBlocker calla(listaplantillas);
    elegirRenglon(m_mostrada.id);
}

void agendahorarios::elegirRenglon(int id)
{
    for (int i = 0; i < listaplantillas->count(); ++i)
        if (listaplantillas->item(i)->data(Qt::UserRole).toInt() == id) {
            listaplantillas->setCurrentRow(i);
            return;
        }
    listaplantillas->setCurrentRow(-1);
}

void agendahorarios::llenarLista(int elegida)
{
    const QSignalBlocker calla(listaplantillas);
    listaplantillas->clear();
    m_plantillas = listarPlantillas(conexion(), m_doctor);
    for (const PlantillaListada &plantilla : m_plantillas) {
        auto *renglon = new QListWidgetItem(plantilla.texto, listaplantillas);
        renglon->setData(Qt::UserRole, plantilla.id);
    }
    if (elegida == ultima)
        listaplantillas->setCurrentRow(listaplantillas->count() - 1);
    else
        elegirRenglon(elegida);
}

void agendahorarios::listar(int elegida)
{
    llenarLista(elegida);
    cambiarDePlantilla();
}

void agendahorarios::cambiarDePlantilla()
{
    const QListWidgetItem *elegida = listaplantillas->currentItem();
    const int id = elegida ? elegida->data(Qt::UserRole).toInt() : 0;
    const Plantilla nueva = plantillaNueva(conexion(), m_doctor);
    mostrar(id == 0 ? nueva : leerPlantilla(conexion(), id).value_or(nueva));
    if (id == 0)
        fechadesde->setFocus();
}

void agendahorarios::mostrar(const Plantilla &plantilla)
{
    m_mostrada = plantilla;
    fechadesde->setFecha(plantilla.fechadesde);
    fechahasta->setFecha(plantilla.fechahasta);
    for (size_t d = 0; d < dias.size(); ++d) {
        const Jornada &jornada = plantilla.dias[d];
        dias[d].maDesde->setHora(jornada.maDesde);
        dias[d].maHasta->setHora(jornada.maHasta);
        dias[d].taDesde->setHora(jornada.taDesde);
        dias[d].taHasta->setHora(jornada.taHasta);
        // A length that older data hold and the editor does not offer stays as it is until another one is chosen.
        QComboBox &duracion = *dias[d].duracion;
        while (duracion.count() > 12)
            duracion.removeItem(12);
        if (duracion.findData(jornada.duracion) < 0)
            duracion.addItem(tr("%1 min").arg(jornada.duracion), jornada.duracion);
        ui::elegirId(duracion, jornada.duracion);
    }
    cantidadsobreturnos->setValue(plantilla.sobreturnos.cantidadsobreturnos);
    cantidadsobreturnoshora->setValue(plantilla.sobreturnos.cantidadsobreturnoshora);
    sobreturnoshoraresaltar->setChecked(plantilla.sobreturnos.sobreturnoshoraresaltar);
    solosobreturnoshoraplanilla->setChecked(plantilla.sobreturnos.solosobreturnoshoraplanilla);
    m_desde = fechadesde->text();
    m_hasta = fechahasta->text();
    eliminar->setEnabled(plantilla.id != 0);
    dibujar();
}

void agendahorarios::dibujar()
{
    const SemanaPlantilla dibujada = semanaDe(leer().dias);
    semana->setSemana(dibujada);
    total->setText(tr("Total de la semana: %1").arg(turnosTexto(dibujada.total)));
    const auto decir = [](QLabel *donde, const QStringList &renglones) {
        donde->setText(renglones.join(u'\n'));
        donde->setVisible(!renglones.isEmpty());
    };
    decir(fechascompartidas, avisosDeFechas(m_plantillas, m_mostrada.id, fechadesde->fecha(), fechahasta->fecha()));
    decir(avisos, dibujada.avisos);
}

Plantilla agendahorarios::leer() const
{
    Plantilla plantilla = m_mostrada;
    for (size_t d = 0; d < dias.size(); ++d) {
        plantilla.dias[d]
            = {dias[d].maDesde->hora(),
               dias[d].maHasta->hora(),
               dias[d].taDesde->hora(),
               dias[d].taHasta->hora(),
               ui::idElegido(*dias[d].duracion, duracionSupuesta)};
    }
    plantilla.sobreturnos
        = {cantidadsobreturnos->value(),
           cantidadsobreturnoshora->value(),
           sobreturnoshoraresaltar->isChecked(),
           solosobreturnoshoraplanilla->isChecked()};
    return plantilla;
}

void agendahorarios::save()
{
    for (const Renglon &renglon : dias)
        for (CampoHora *hora : {renglon.maDesde, renglon.maHasta, renglon.taDesde, renglon.taHasta})
            if (!hora->esValida()) {
                aceptado(base::Rechazo{
                    base::titulo::aviso,
                    tr("ERROR en la hora ingresada, debe ser del tipo 'hh:mm'."),
                    hora->objectName()});
                return;
            }
    const auto id = guardarPlantilla(entorno(), leer(), fechadesde->text(), fechahasta->text());
    if (!id) {
        aceptado(id.rechazo());
        if (m_mostrada.id != 0 && !leerPlantilla(conexion(), m_mostrada.id)) {
            // Deleted at another station: what is typed stays, and can be stored as a new one.
            m_mostrada.id = 0;
            llenarLista(0);
            eliminar->setEnabled(false);
            dibujar();
        }
        return;
    }
    listar(*id);
    avisarAgenda();
}

void agendahorarios::listarDias()
{
    const int fila = listadias->currentRow();
    listadias->clear();
    for (const DiaNoLaborable &libre : listarDiasNoLaborables(conexion(), m_doctor)) {
        auto *renglon = new QListWidgetItem(libre.texto(), listadias);
        renglon->setData(Qt::UserRole, libre.id);
    }
    listadias->setCurrentRow(qMin(fila, listadias->count() - 1));
    eliminardia->setEnabled(listadias->count() > 0);
}

void agendahorarios::avisarAgenda() { ventanas().refrescar(ventanasDeDiasLibres()); }

} // namespace agenda
