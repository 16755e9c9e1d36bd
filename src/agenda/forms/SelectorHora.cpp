#include "agenda/forms/SelectorHora.h"

#include "agenda/DiaAgenda.h"
#include "agenda/DiasNoLaborables.h"
#include "agenda/Reserva.h"
#include "agenda/forms/CalendarioMes.h"
#include "base/Fechas.h"
#include "db/Connection.h"
#include "ui/Estilo.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>
#include <QSpinBox>
#include <QVBoxLayout>

namespace agenda {

SelectorHora::SelectorHora(QWidget *parent)
    : QWidget(parent)
{
    construir();
    const auto alMes = [this] {
        const QDate primero(anio->value(), mes->currentIndex() + 1, 1);
        fechadia->setFecha(
            QDate(primero.year(), primero.month(), qMin(fechadia->fecha().day(), primero.daysInMonth())));
    };
    connect(mes, &QComboBox::activated, this, alMes);
    connect(anio, &QSpinBox::valueChanged, this, alMes);
    connect(fechadia, &CalendarioMes::fechaElegida, this, &SelectorHora::diaCambiado);
    connect(listahoras, &QListWidget::currentItemChanged, this, [this](const QListWidgetItem *elegida) {
        if (elegida)
            hora->setText(horaTexto(elegida->data(Qt::UserRole).toTime()));
    });
    connect(listahoras, &QListWidget::itemActivated, this, &SelectorHora::aceptada);
    connect(hora, &QLineEdit::textChanged, this, [this] {
        marcarHora();
        emit horaCambiada();
    });
}

void SelectorHora::preparar(db::Connection &conexion, int doctor, QDate hoy, const QDateTime &momento)
{
    m_doctor = doctor;
    fechadia->setPrimerDia(primerDiaSemana(conexion));
    fechadia->setHoy(hoy);
    {
        const QSignalBlocker calla(fechadia);
        fechadia->setFecha(momento.date());
    }
    hora->setText(momento.time().isValid() ? horaTexto(momento.time()) : QString());
    cargar(conexion, hoy);
}

void SelectorHora::cargar(db::Connection &conexion, QDate hoy)
{
    const QDate fecha = fechadia->fecha();
    const QSignalBlocker callaMes(mes), callaAnio(anio), callaLista(listahoras);
    mes->setCurrentIndex(fecha.month() - 1);
    anio->setValue(fecha.year());

    const DiaAgenda dia = cargarDia(conexion, m_doctor, fecha, hoy);
    listahoras->clear();
    for (const HoraOcupada &ocupada : dia.ocupacion()) {
        auto *renglon = new QListWidgetItem(ocupada.texto, listahoras);
        renglon->setData(Qt::UserRole, ocupada.hora);
    }
    QString estado = QLocale().toString(fecha, QStringLiteral("dddd d 'de' MMMM"));
    if (dia.noLaborable)
        estado += tr(": no se atiende");
    else if (!dia.hayPlantilla)
        estado += tr(": no hay plantilla");
    else if (dia.grilla.cantidad() == 0)
        estado += tr(": sin horarios");
    estado[0] = estado[0].toUpper();
    estadodia->setText(estado);
    marcarHora();

    const QDate desde(fecha.year(), fecha.month(), 1), hasta(fecha.year(), fecha.month(), fecha.daysInMonth());
    fechadia->setMarcas(
        diasConTurnos(conexion, m_doctor, desde, hasta),
        diasNoLaborablesEntre(listarDiasNoLaborables(conexion, m_doctor), desde, hasta));
}

void SelectorHora::marcarHora()
{
    const QSignalBlocker calla(listahoras);
    const auto escrita = momento();
    for (int i = 0; i < listahoras->count(); ++i) {
        if (escrita && listahoras->item(i)->data(Qt::UserRole).toTime() == escrita->time()) {
            listahoras->setCurrentRow(i);
            return;
        }
    }
    listahoras->setCurrentRow(-1);
}

std::optional<QDateTime> SelectorHora::momento() const
{
    const auto leido = leerTurno(base::fechaTexto(fechadia->fecha()) + u' ' + hora->text());
    return leido ? std::optional(*leido) : std::nullopt;
}

base::Resultado<QDateTime> SelectorHora::elegido(db::Connection &conexion) const
{
    const auto leido = leerTurno(base::fechaTexto(fechadia->fecha()) + u' ' + hora->text());
    if (!leido) {
        base::Rechazo rechazo = leido.rechazo();
        rechazo.campo = QStringLiteral("hora");
        return rechazo;
    }
    if (auto rechazo = controlarDiaLaborable(conexion, m_doctor, leido->date())) {
        rechazo->campo = QStringLiteral("fechadia");
        return *rechazo;
    }
    return *leido;
}

void SelectorHora::construir()
{
    mes = new QComboBox(this);
    mes->setObjectName(QStringLiteral("mes"));
    for (int i = 1; i <= 12; ++i)
        mes->addItem(base::nombreMes(i));
    anio = new QSpinBox(this);
    anio->setObjectName(QStringLiteral("anio"));
    anio->setRange(1900, 9999);
    fechadia = new CalendarioMes(this);
    fechadia->setObjectName(QStringLiteral("fechadia"));
    fechadia->setEncabezadosCortos(true);
    estadodia = new QLabel(this);
    estadodia->setObjectName(QStringLiteral("estadodia"));
    listahoras = new QListWidget(this);
    listahoras->setObjectName(QStringLiteral("listahoras"));
    hora = new QLineEdit(this);
    hora->setObjectName(QStringLiteral("hora"));
    hora->setPlaceholderText(tr("hh:mm"));
    auto *rotulo = new QLabel(tr("&Hora:"), this);
    rotulo->setBuddy(hora);

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
    derecha->addWidget(estadodia);
    derecha->addWidget(listahoras, 1);
    derecha->addLayout(horaElegida);
    auto *medio = new QHBoxLayout(this);
    medio->setContentsMargins(0, 0, 0, 0);
    medio->setSpacing(2 * ui::espacio);
    medio->addLayout(izquierda, 1);
    medio->addLayout(derecha, 1);
}

} // namespace agenda
