#include "agenda/forms/agendaexportar.h"

#include "agenda/CalendarioIcs.h"
#include "agenda/Exportacion.h"
#include "agenda/Textos.h"
#include "base/Clock.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"
#include "ui/Botones.h"
#include "ui/CampoFecha.h"
#include "ui/Estilo.h"
#include "ui/NombreArchivo.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>

namespace agenda {

namespace {

constexpr int diasPropuestos = 30;

QLabel *explicacion(QWidget *padre, const QString &texto)
{
    auto *rotulo = new QLabel(texto, padre);
    rotulo->setWordWrap(true);
    QPalette tenue = rotulo->palette();
    tenue.setColor(QPalette::WindowText, ui::color::tenue());
    rotulo->setPalette(tenue);
    return rotulo;
}

} // namespace

agendaexportar::agendaexportar(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("agendaexportar"), tr("Exportar turnos a un calendario"))
{
    profesional = new QLabel(this);
    profesional->setObjectName(QStringLiteral("profesional"));
    profesional->setTextFormat(Qt::PlainText);
    const auto fecha = [this](const char *nombre) {
        auto *campo = new ui::CampoFecha(this);
        campo->setObjectName(QLatin1String(nombre));
        campo->setFixedWidth(130);
        return campo;
    };
    desde = fecha("desde");
    hasta = fecha("hasta");
    connombres = new QCheckBox(tr("Incluir los &nombres de los pacientes"), this);
    connombres->setObjectName(QStringLiteral("connombres"));
    conbloqueados = new QCheckBox(tr("Incluir los horarios &bloqueados («No se atiende»)"), this);
    conbloqueados->setObjectName(QStringLiteral("conbloqueados"));

    auto *campos = new QFormLayout;
    campos->addRow(tr("Profesional:"), profesional);
    campos->addRow(tr("&Desde el:"), desde);
    campos->addRow(tr("&Hasta el:"), hasta);

    const ui::FinDeFormulario fin = ui::finDeFormulario(this);
    guardar = fin.guardar;
    guardar->setText(tr("&Guardar..."));
    cancelar = fin.cancelar;

    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->setSpacing(ui::espacio);
    todo->addWidget(explicacion(
        this,
        tr("Escribe un archivo ICS, que leen los calendarios de los teléfonos y de las computadoras. Al volver a "
           "importar uno nuevo, los turnos que cambiaron se actualizan; los que se eliminaron hay que quitarlos en el "
           "calendario.")));
    todo->addLayout(campos);
    todo->addWidget(connombres);
    todo->addWidget(explicacion(
        this,
        tr("El archivo puede terminar en un teléfono o en un servicio de Internet: sin esta marca cada turno dice "
           "solamente «Turno». Los motivos y las observaciones no se incluyen nunca.")));
    todo->addWidget(conbloqueados);
    todo->addStretch(1);
    todo->addLayout(fin.fila);
    setMinimumWidth(460);

    setEnter(guardar, {desde, hasta});
    alPulsar(guardar, [this] { save(); });
    connect(cancelar, &QPushButton::clicked, this, &QWidget::close);
}

bool agendaexportar::preparar(const ui::Pedido &pedido)
{
    if (!aceptado(db::controlarDerecho(entorno(), derechoAgendas)))
        return false;
    m_doctor = pedido.datos.value(QStringLiteral("doctor")).toInt();
    profesional->setText(nombreProfesional(conexion(), m_doctor));
    const QDate hoy = entorno().clock().today();
    for (ui::CampoFecha *campo : {desde, hasta})
        campo->setHoy(hoy);
    desde->setFecha(hoy);
    hasta->setFecha(hoy.addDays(diasPropuestos));
    desde->setFocus();
    return true;
}

void agendaexportar::save()
{
    PedidoIcs pedido;
    pedido.doctor = m_doctor;
    pedido.desde = desde->fecha();
    pedido.hasta = hasta->fecha();
    pedido.conNombres = connombres->isChecked();
    pedido.conBloqueados = conbloqueados->isChecked();
    const auto calendario = prepararIcs(entorno(), pedido);
    if (!calendario) {
        aceptado(calendario.rechazo());
        return;
    }
    const auto archivo = entorno().mensajes().elegirDestino(
        tr("Exportar"),
        ui::nombreDeArchivo(tr("Turnos de %1").arg(profesional->text())) + QStringLiteral(".ics"),
        tr("Calendario (*.ics)"));
    if (!archivo || !aceptado(guardarIcs(entorno(), *calendario, *archivo)))
        return;
    entorno().mensajes().informar(
        tr("Listo"),
        calendario->turnos == 1 ? tr("Se exportó 1 turno.")
                                : tr("Se exportaron %1.").arg(cantidadTurnos(calendario->turnos)));
    terminar({});
}

} // namespace agenda
