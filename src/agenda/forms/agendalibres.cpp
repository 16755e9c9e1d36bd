#include "agenda/forms/agendalibres.h"

#include "agenda/GrillaDia.h"
#include "base/Clock.h"
#include "base/Fechas.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"
#include "ui/Grilla.h"

#include <QCheckBox>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

namespace agenda {

agendalibres::agendalibres(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("agendalibres"), tr("Próximos Turnos Libres"))
{
    detodos = new QCheckBox(tr("De &todos los profesionales"), this);
    detodos->setObjectName(QStringLiteral("detodos"));
    lista = new ui::Grilla(
        QStringLiteral("lista"),
        QStringLiteral(
            "|<Profesional                        |^Fecha          |<Día             |^Primera hora|>Libres"),
        this);
    lista->setSelectionMode(QAbstractItemView::SingleSelection);
    ninguno = new QLabel(this);
    ninguno->setObjectName(QStringLiteral("ninguno"));
    aceptar = ui::boton(this, QStringLiteral("aceptar"), tr("&Ir a ese día"), QStringLiteral("go-jump"));
    cancelar = ui::boton(this, QStringLiteral("cancelar"), tr("&Cancelar"), QStringLiteral("dialog-cancel"));
    auto *botones = new QHBoxLayout;
    botones->addWidget(ninguno, 1);
    botones->addWidget(aceptar);
    botones->addWidget(cancelar);

    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->setSpacing(ui::espacio);
    todo->addWidget(detodos);
    todo->addWidget(lista, 1);
    todo->addLayout(botones);
    setMinimumSize(620, 360);

    connect(detodos, &QCheckBox::toggled, this, [this] { actualizar(); });
    connect(lista, &ui::Grilla::activada, this, [this] { elegir(); });
    alPulsar(aceptar, [this] { elegir(); });
    connect(cancelar, &QPushButton::clicked, this, &QWidget::close);
}

bool agendalibres::preparar(const ui::Pedido &pedido)
{
    m_doctor = pedido.datos.value(QStringLiteral("doctor")).toInt();
    refrescar();
    lista->setFocus();
    return true;
}

void agendalibres::refrescar()
{
    QVector<db::Doctor> quienes = db::profesionales(conexion());
    if (!detodos->isChecked())
        quienes.removeIf([this](const db::Doctor &d) { return d.id != m_doctor; });
    m_dias = proximosLibres(conexion(), quienes, entorno().clock().now());
    std::vector<QStringList> textos;
    std::vector<qint64> claves;
    for (const DiaConLugar &dia : m_dias) {
        textos.push_back(
            {dia.profesional,
             base::fechaTexto(dia.fecha),
             QLocale().dayName(dia.fecha.dayOfWeek()),
             horaTexto(dia.primera),
             QString::number(dia.libres)});
        claves.push_back(qint64(claves.size()) + 1);
    }
    lista->mostrar(std::move(textos), std::move(claves));
    if (lista->filaActual() < 0)
        lista->elegirFila(0);
    ninguno->setText(m_dias.empty() ? tr("No hay horarios libres en los próximos meses.") : QString());
    aceptar->setEnabled(!m_dias.empty());
}

void agendalibres::elegir()
{
    const qint64 clave = lista->claveActual();
    if (clave < 1 || clave > qint64(m_dias.size()))
        return;
    const DiaConLugar &dia = m_dias[size_t(clave - 1)];
    terminar(
        {{QStringLiteral("doctor"), dia.doctor},
         {QStringLiteral("fecha"), dia.fecha},
         {QStringLiteral("hora"), horaTexto(dia.primera)}});
}

} // namespace agenda
