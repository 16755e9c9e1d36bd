#include "agenda/forms/agendahorarios.h"

#include "agenda/Calendario.h"
#include "agenda/DiasNoLaborables.h"
#include "agenda/forms/CampoHora.h"
#include "base/Clock.h"
#include "base/Fechas.h"
#include "db/Entorno.h"
#include "ui/CampoFecha.h"
#include "ui/ListaCombo.h"

#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>

namespace agenda {

namespace {

/// In place of a template's `id`: the newest one, which is the one in force.
constexpr int ultima = -1;

} // namespace

agendahorarios::agendahorarios(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("agendahorarios"), tr("Plantilla de Días y Horarios"))
{
    construir();
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
        if (m_mostrada.id != 0 && eliminarPlantilla(this->entorno(), m_mostrada.id)) {
            listar(ultima);
            avisarAgenda();
        }
    });
    alPulsar(agregardia, [this] {
        const DiaNoLaborable nuevoDia{0, ui::idElegido(*dia), ui::idElegido(*mes), ui::idElegido(*anio)};
        if (aceptado(agregarDiasNoLaborables(conexion(), m_doctor, {nuevoDia}))) {
            listarDias();
            avisarAgenda();
        }
    });
    alPulsar(eliminardia, [this] {
        const QListWidgetItem *elegido = listadias->currentItem();
        if (elegido && eliminarDiaNoLaborable(this->entorno(), elegido->data(Qt::UserRole).toInt())) {
            listarDias();
            avisarAgenda();
        }
    });
    connect(cerrar, &QPushButton::clicked, this, &QWidget::close);
}

bool agendahorarios::preparar(const ui::Pedido &pedido)
{
    m_doctor = pedido.datos.value(QStringLiteral("doctor")).toInt();
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
    if (!hayCambios())
        listar(m_mostrada.id);
    listarDias();
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

void agendahorarios::listar(int elegida)
{
    {
        const QSignalBlocker calla(listaplantillas);
        listaplantillas->clear();
        for (const PlantillaListada &plantilla : listarPlantillas(conexion(), m_doctor)) {
            auto *renglon = new QListWidgetItem(plantilla.texto, listaplantillas);
            renglon->setData(Qt::UserRole, plantilla.id);
        }
        if (elegida == ultima)
            listaplantillas->setCurrentRow(listaplantillas->count() - 1);
        else
            elegirRenglon(elegida);
    }
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
    const auto id = guardarPlantilla(conexion(), leer(), fechadesde->text(), fechahasta->text());
    if (!id) {
        aceptado(id.rechazo());
        return;
    }
    listar(*id);
    avisarAgenda();
}

void agendahorarios::listarDias()
{
    listadias->clear();
    for (const DiaNoLaborable &libre : listarDiasNoLaborables(conexion(), m_doctor)) {
        auto *renglon = new QListWidgetItem(libre.texto(), listadias);
        renglon->setData(Qt::UserRole, libre.id);
    }
    eliminardia->setEnabled(listadias->count() > 0);
}

void agendahorarios::avisarAgenda() { ventanas().refrescar({QStringLiteral("agendas")}); }

} // namespace agenda
