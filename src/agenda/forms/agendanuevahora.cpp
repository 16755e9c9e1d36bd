#include "agenda/forms/agendanuevahora.h"

#include "agenda/RangoTurnos.h"
#include "agenda/forms/CalendarioMes.h"
#include "agenda/forms/SelectorHora.h"
#include "base/Clock.h"
#include "base/Fechas.h"
#include "db/Entorno.h"
#include "ui/Botones.h"
#include "ui/CampoFecha.h"
#include "ui/Estilo.h"
#include "ui/Iconos.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace agenda {

agendanuevahora::agendanuevahora(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("agendanuevahora"), tr("Agregar Turno"))
{
    construir();
    connect(selector, &SelectorHora::diaCambiado, this, [this] { intentar([this] { refrescar(); }); });
    connect(selector, &SelectorHora::horaCambiada, this, [this] { intentar([this] { mostrarCantidad(); }); });
    connect(selector, &SelectorHora::aceptada, guardar, &QPushButton::click);
    connect(diaunico, &QCheckBox::toggled, this, [this](bool unico) {
        desde->setEnabled(!unico);
        hasta->setEnabled(!unico);
        if (!unico && desde->isNull())
            desde->setFecha(fechadia->fecha());
        if (!unico)
            hasta->setFocus();
        intentar([this] { mostrarCantidad(); });
    });
    for (ui::CampoFecha *fecha : {desde, hasta})
        connect(fecha, &ui::CampoFecha::editingFinished, this, [this] { intentar([this] { mostrarCantidad(); }); });
    alPulsar(guardar, [this] {
        const auto turnos = elegidos();
        if (turnos)
            terminar({{QStringLiteral("turnos"), *turnos}});
        else
            aceptado(turnos.rechazo());
    });
    connect(cancelar, &QPushButton::clicked, this, &QWidget::close);
    setEnter(guardar, {hora});
}

bool agendanuevahora::preparar(const ui::Pedido &pedido)
{
    m_doctor = pedido.datos.value(QStringLiteral("doctor")).toInt();
    const QDate hoy = entorno().clock().today();
    QDateTime momento = pedido.datos.value(QStringLiteral("momento")).toDateTime();
    const bool conHora = momento.isValid();
    if (!conHora) {
        const QDate fecha = pedido.datos.value(QStringLiteral("fecha")).toDate();
        momento = QDateTime(fecha.isValid() ? fecha : hoy, QTime(0, 0));
    }
    for (ui::CampoFecha *fecha : {desde, hasta}) {
        fecha->setHoy(hoy);
        fecha->setFecha({});
    }
    diaunico->setChecked(true);
    selector->preparar(conexion(), m_doctor, hoy, momento);
    if (!conHora)
        hora->clear();
    mostrarCantidad();
    fechadia->setFocus();
    return true;
}

void agendanuevahora::refrescar()
{
    selector->cargar(conexion(), entorno().clock().today());
    mostrarCantidad();
}

base::Resultado<QStringList> agendanuevahora::elegidos()
{
    QVector<QDateTime> momentos;
    if (diaunico->isChecked()) {
        const auto momento = selector->elegido(conexion());
        if (!momento)
            return momento.rechazo();
        momentos << *momento;
    } else {
        const auto momento = selector->momento();
        if (!momento) {
            return base::Rechazo{
                base::titulo::error, QStringLiteral("ERROR en la Fecha del Turno."), QStringLiteral("hora")};
        }
        const auto rango = repartirHora(conexion(), m_doctor, momento->time(), desde->text(), hasta->text());
        if (!rango)
            return rango.rechazo();
        momentos = rango->momentos;
    }
    QStringList lineas;
    for (const QDateTime &momento : momentos)
        lineas << base::fechaHoraTexto(momento);
    return lineas;
}

/// Before anything is added, what it would be; what is missing or wrong is told where it stands.
void agendanuevahora::mostrarCantidad()
{
    const auto momento = selector->momento();
    if (!momento) {
        cantidad->setText(tr("Elija la hora."));
    } else if (diaunico->isChecked()) {
        cantidad->setText(tr("Se agregará el %1.").arg(base::fechaHoraTexto(*momento)));
    } else if (desde->isNull() || hasta->isNull()) {
        cantidad->setText(tr("Las %1 de cada día laborable desde una fecha hasta la otra.")
                              .arg(momento->toString(QStringLiteral("HH:mm"))));
    } else {
        const auto rango = repartirHora(conexion(), m_doctor, momento->time(), desde->text(), hasta->text());
        cantidad->setText(rango ? rango->texto() : rango.rechazo().texto);
    }
}

void agendanuevahora::construir()
{
    selector = new SelectorHora(this);
    fechadia = selector->fechadia;
    listahoras = selector->listahoras;
    hora = selector->hora;
    diaunico = new QCheckBox(tr("&Un solo día"), this);
    diaunico->setObjectName(QStringLiteral("diaunico"));
    diaunico->setChecked(true);
    desde = new ui::CampoFecha(this);
    desde->setObjectName(QStringLiteral("desde"));
    hasta = new ui::CampoFecha(this);
    hasta->setObjectName(QStringLiteral("hasta"));
    auto *rotuloDesde = new QLabel(tr("&Desde:"), this), *rotuloHasta = new QLabel(tr("Has&ta:"), this);
    rotuloDesde->setBuddy(desde);
    rotuloHasta->setBuddy(hasta);
    desde->setEnabled(false);
    hasta->setEnabled(false);
    cantidad = new QLabel(this);
    cantidad->setObjectName(QStringLiteral("cantidad"));
    cantidad->setWordWrap(true);
    cantidad->setMinimumHeight(2 * fontMetrics().lineSpacing());
    const ui::FinDeFormulario fin = ui::finDeFormulario(this);
    guardar = fin.guardar;
    guardar->setText(tr("&Agregar"));
    guardar->setIcon(ui::icono(QStringLiteral("list-add")));
    cancelar = fin.cancelar;

    auto *rango = new QHBoxLayout;
    rango->addWidget(diaunico);
    rango->addStretch(1);
    for (QWidget *parte : std::initializer_list<QWidget *>{rotuloDesde, desde, rotuloHasta, hasta})
        rango->addWidget(parte);
    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->setSpacing(ui::espacio);
    todo->addWidget(selector, 1);
    todo->addLayout(rango);
    todo->addWidget(cantidad);
    todo->addLayout(fin.fila);
    setMinimumSize(560, 420);
}

} // namespace agenda
