#include "agenda/forms/agendamodifturno.h"

#include "agenda/CambiosTurno.h"
#include "agenda/DiaAgenda.h"
#include "agenda/DiasNoLaborables.h"
#include "agenda/Reserva.h"
#include "agenda/Textos.h"
#include "agenda/TurnoGuardado.h"
#include "agenda/forms/CalendarioMes.h"
#include "base/Clock.h"
#include "base/Fechas.h"
#include "db/Entorno.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace agenda {

agendamodifturno::agendamodifturno(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("agendamodifturno"), tr("Cambiar Fecha y Hora del Turno"))
{
    construir();
    const auto alMes = [this] {
        const QDate primero(anio->value(), mes->currentIndex() + 1, 1);
        fechadia->setFecha(
            QDate(primero.year(), primero.month(), qMin(fechadia->fecha().day(), primero.daysInMonth())));
    };
    connect(mes, &QComboBox::activated, this, alMes);
    connect(anio, &QSpinBox::valueChanged, this, alMes);
    connect(fechadia, &CalendarioMes::fechaElegida, this, [this] { intentar([this] { mostrarFecha(); }); });
    connect(listahoras, &QListWidget::currentItemChanged, this, [this](const QListWidgetItem *elegida) {
        if (elegida)
            hora->setText(horaTexto(elegida->data(Qt::UserRole).toTime()));
    });
    connect(listahoras, &QListWidget::itemActivated, guardar, &QPushButton::click);
    alPulsar(guardar, [this] { save(); });
    connect(cancelar, &QPushButton::clicked, this, &QWidget::close);
    setEnter(guardar, {hora});
}

bool agendamodifturno::preparar(const ui::Pedido &pedido)
{
    const auto guardado = leerTurnoGuardado(conexion(), pedido.datos.value(QStringLiteral("id")).toLongLong());
    if (!guardado)
        return aceptado(registroEliminado());
    m_id = guardado->id;
    m_doctor = guardado->doctor;
    turno->setText(guardado->titulo());
    fechadia->setPrimerDia(primerDiaSemana(conexion()));
    fechadia->setHoy(entorno().clock().today());
    {
        const QSignalBlocker calla(fechadia);
        fechadia->setFecha(guardado->fecha.date());
    }
    mostrarFecha();
    hora->setText(horaTexto(guardado->fecha.time()));
    fechadia->setFocus();
    return true;
}

void agendamodifturno::mostrarFecha()
{
    const QDate fecha = fechadia->fecha();
    const QSignalBlocker callaMes(mes), callaAnio(anio), callaLista(listahoras);
    mes->setCurrentIndex(fecha.month() - 1);
    anio->setValue(fecha.year());

    const DiaAgenda dia = cargarDia(conexion(), m_doctor, fecha, entorno().clock().today());
    listahoras->clear();
    for (const HoraOcupada &ocupada : dia.ocupacion()) {
        auto *renglon = new QListWidgetItem(ocupada.texto, listahoras);
        renglon->setData(Qt::UserRole, ocupada.hora);
    }
    const QDate desde(fecha.year(), fecha.month(), 1), hasta(fecha.year(), fecha.month(), fecha.daysInMonth());
    fechadia->setMarcas(
        diasConTurnos(conexion(), m_doctor, desde, hasta),
        diasNoLaborablesEntre(listarDiasNoLaborables(conexion(), m_doctor), desde, hasta));
}

void agendamodifturno::save()
{
    if (!aceptado(controlarDiaLaborable(conexion(), m_doctor, fechadia->fecha())))
        return;
    const auto momento = leerTurno(base::fechaTexto(fechadia->fecha()) + u' ' + hora->text());
    if (!momento) {
        base::Rechazo rechazo = momento.rechazo();
        rechazo.campo = QStringLiteral("hora");
        aceptado(rechazo);
        return;
    }
    if (aceptado(mover(entorno(), m_id, *momento)))
        terminar({});
}

void agendamodifturno::construir()
{
    turno = new QLabel(this);
    turno->setObjectName(QStringLiteral("turno"));
    turno->setTextFormat(Qt::PlainText);
    mes = new QComboBox(this);
    mes->setObjectName(QStringLiteral("mes"));
    for (int i = 1; i <= 12; ++i)
        mes->addItem(base::nombreMes(i));
    anio = new QSpinBox(this);
    anio->setObjectName(QStringLiteral("anio"));
    anio->setRange(1900, 9999);
    fechadia = new CalendarioMes(this);
    fechadia->setObjectName(QStringLiteral("fechadia"));
    listahoras = new QListWidget(this);
    listahoras->setObjectName(QStringLiteral("listahoras"));
    hora = new QLineEdit(this);
    hora->setObjectName(QStringLiteral("hora"));
    hora->setPlaceholderText(tr("hh:mm"));
    auto *rotulo = new QLabel(tr("&Hora:"), this);
    rotulo->setBuddy(hora);
    const ui::FinDeFormulario fin = ui::finDeFormulario(this);
    guardar = fin.guardar;
    cancelar = fin.cancelar;

    auto *mesYAnio = new QHBoxLayout;
    mesYAnio->addWidget(mes, 1);
    mesYAnio->addWidget(anio);
    auto *izquierda = new QVBoxLayout;
    izquierda->addLayout(mesYAnio);
    izquierda->addWidget(fechadia);
    izquierda->addStretch(1);
    auto *horaElegida = new QHBoxLayout;
    horaElegida->addWidget(rotulo);
    horaElegida->addWidget(hora, 1);
    auto *derecha = new QVBoxLayout;
    derecha->addWidget(listahoras, 1);
    derecha->addLayout(horaElegida);
    auto *medio = new QHBoxLayout;
    medio->addLayout(izquierda, 1);
    medio->addLayout(derecha, 1);
    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->addWidget(turno);
    todo->addLayout(medio, 1);
    todo->addLayout(fin.fila);
    setMinimumSize(520, 360);
}

} // namespace agenda
