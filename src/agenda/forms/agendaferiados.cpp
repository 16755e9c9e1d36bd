#include "agenda/forms/agendaferiados.h"

#include "agenda/SemanaPlantilla.h"
#include "agenda/forms/Registro.h"
#include "base/Clock.h"
#include "base/Fechas.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"
#include "ui/ListaCombo.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace agenda {

namespace {

constexpr int ultimoAnio = 2099;
/// In place of a professional's `id`.
constexpr int cadaUno = 0;
constexpr int columnaNombre = 2;

QString estadoDe(const PropuestaFeriado &propuesta, qsizetype profesionales)
{
    if (propuesta.yaEstan == 0)
        return {};
    if (propuesta.yaEstan == profesionales)
        return QObject::tr("Ya está");
    return QObject::tr("Ya está en %1 de %2").arg(propuesta.yaEstan).arg(profesionales);
}

QDate fechaDe(const QTreeWidgetItem *renglon) { return renglon->data(0, Qt::UserRole).toDate(); }

} // namespace

agendaferiados::agendaferiados(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("agendaferiados"), tr("Feriados nacionales"))
{
    construir();
    connect(anio, &QSpinBox::valueChanged, this, [this] { intentar([this] { proponer(); }); });
    connect(lisdocto, &QComboBox::currentIndexChanged, this, [this] { intentar([this] { proponer(); }); });
    connect(todos, &QPushButton::clicked, this, [this] { marcar(Qt::Checked); });
    connect(ninguno, &QPushButton::clicked, this, [this] { marcar(Qt::Unchecked); });
    alPulsar(guardar, [this] { save(); });
    connect(cancelar, &QPushButton::clicked, this, &QWidget::close);
}

void agendaferiados::construir()
{
    anio = new QSpinBox(this);
    anio->setObjectName(QStringLiteral("anio"));
    anio->setRange(primerAnioFeriados, ultimoAnio);
    auto *rotuloAnio = new QLabel(tr("&Año:"), this);
    rotuloAnio->setBuddy(anio);
    lisdocto = new QComboBox(this);
    lisdocto->setObjectName(QStringLiteral("lisdocto"));
    auto *rotuloDocto = new QLabel(tr("&Profesional:"), this);
    rotuloDocto->setBuddy(lisdocto);
    auto *arriba = new QHBoxLayout;
    arriba->addWidget(rotuloAnio);
    arriba->addWidget(anio);
    arriba->addSpacing(2 * ui::margen);
    arriba->addWidget(rotuloDocto);
    arriba->addWidget(lisdocto, 1);

    lista = new QTreeWidget(this);
    lista->setObjectName(QStringLiteral("lista"));
    lista->setHeaderLabels({tr("Fecha"), tr("Día"), tr("Feriado"), tr("Clase"), tr("En la agenda")});
    lista->setRootIsDecorated(false);
    lista->setUniformRowHeights(true);
    lista->setAllColumnsShowFocus(true);
    lista->header()->setStretchLastSection(false);
    lista->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    lista->header()->setSectionResizeMode(columnaNombre, QHeaderView::Stretch);

    auto *nota = new QLabel(
        tr("Según la ley 27.399. No se calculan los días puente ni los feriados que un decreto cambie de lugar: se"
           " fijan cada año y hay que agregarlos aparte."),
        this);
    nota->setWordWrap(true);
    nota->setForegroundRole(QPalette::PlaceholderText);

    todos = ui::boton(this, QStringLiteral("todos"), tr("&Marcar todos"), QStringLiteral("edit-select-all"));
    ninguno = ui::boton(this, QStringLiteral("ninguno"), tr("&Ninguno"), QStringLiteral("edit-clear"));
    const ui::FinDeFormulario fin = ui::finDeFormulario(this);
    guardar = fin.guardar;
    cancelar = fin.cancelar;
    fin.fila->insertWidget(0, todos);
    fin.fila->insertWidget(1, ninguno);

    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->setSpacing(ui::margen);
    todo->addLayout(arriba);
    todo->addWidget(lista, 1);
    todo->addWidget(nota);
    todo->addLayout(fin.fila);
    setMinimumSize(880, 540);
}

bool agendaferiados::preparar(const ui::Pedido &pedido)
{
    const QSignalBlocker callaAnio(anio), callaLista(lisdocto);
    const QDate hoy = entorno().clock().today();
    // From December on it is the next year that is planned.
    anio->setValue(hoy.month() == 12 ? hoy.year() + 1 : hoy.year());
    std::vector<std::pair<QString, int>> entradas{{tr("<Todos los profesionales>"), cadaUno}};
    for (const db::Doctor &doctor : db::profesionales(conexion()))
        entradas.emplace_back(doctor.nombre, doctor.id);
    ui::ponerEntradas(*lisdocto, entradas);
    ui::elegirId(
        *lisdocto,
        pedido.datos.value(QStringLiteral("todos")).toBool() ? cadaUno
                                                             : pedido.datos.value(QStringLiteral("doctor")).toInt());
    if (lisdocto->currentIndex() < 0)
        lisdocto->setCurrentIndex(0);
    proponer();
    lista->setFocus();
    return true;
}

void agendaferiados::refrescar()
{
    const std::set<QDate> antes = elegidos();
    const bool habia = lista->topLevelItemCount() > 0;
    const int actual = lista->indexOfTopLevelItem(lista->currentItem());
    proponer();
    if (!habia)
        return;
    for (int i = 0; i < lista->topLevelItemCount(); ++i)
        if (QTreeWidgetItem *renglon = lista->topLevelItem(i); !renglon->isDisabled())
            renglon->setCheckState(0, antes.contains(fechaDe(renglon)) ? Qt::Checked : Qt::Unchecked);
    lista->setCurrentItem(lista->topLevelItem(actual));
}

QString agendaferiados::ayuda() const
{
    return tr(
        "Elija el año y el profesional, o todos. Los feriados marcados pasan a ser días en que no se atiende; la barra"
        " espaciadora marca o desmarca el elegido. Los que ya pasaron o ya están en la agenda aparecen sin marcar.\n\n"
        "Los trasladables se mueven como dice la ley: de martes o miércoles al lunes anterior, de jueves o viernes al"
        " lunes siguiente. Los días puente, y los traslados que un decreto disponga, se agregan aparte.");
}

QVector<int> agendaferiados::paraQuienes() const
{
    const int elegido = ui::idElegido(*lisdocto, -1);
    if (elegido == -1)
        return {};
    if (elegido != cadaUno)
        return {elegido};
    QVector<int> doctores;
    for (const db::Doctor &doctor : db::profesionales(conexion()))
        doctores.append(doctor.id);
    return doctores;
}

void agendaferiados::proponer()
{
    const QVector<int> doctores = paraQuienes();
    QList<QTreeWidgetItem *> renglones;
    for (const PropuestaFeriado &propuesta : proponerFeriados(conexion(), doctores, anio->value())) {
        auto *renglon = new QTreeWidgetItem(QStringList{
            base::fechaTexto(propuesta.fecha),
            nombreDia(base::diaSemana(propuesta.fecha) - 1),
            propuesta.nombre,
            propuesta.clase,
            estadoDe(propuesta, doctores.size())});
        renglon->setData(0, Qt::UserRole, propuesta.fecha);
        const bool esta = propuesta.yaEstan == doctores.size();
        const bool paso = propuesta.fecha < entorno().clock().today();
        renglon->setCheckState(0, esta || paso ? Qt::Unchecked : Qt::Checked);
        renglon->setDisabled(esta);
        renglones.append(renglon);
    }
    lista->clear();
    lista->addTopLevelItems(renglones);
    // The view would paint anew only the columns whose width changed, and leave the dates of the former year.
    lista->viewport()->update();
    if (lista->topLevelItemCount() > 0)
        lista->setCurrentItem(lista->topLevelItem(0));
}

void agendaferiados::marcar(Qt::CheckState estado)
{
    for (int i = 0; i < lista->topLevelItemCount(); ++i)
        if (QTreeWidgetItem *renglon = lista->topLevelItem(i); !renglon->isDisabled())
            renglon->setCheckState(0, estado);
}

std::set<QDate> agendaferiados::elegidos() const
{
    std::set<QDate> fechas;
    for (int i = 0; i < lista->topLevelItemCount(); ++i)
        if (const QTreeWidgetItem *renglon = lista->topLevelItem(i); renglon->checkState(0) == Qt::Checked)
            fechas.insert(fechaDe(renglon));
    return fechas;
}

void agendaferiados::save()
{
    const auto agregados = agregarFeriados(entorno(), paraQuienes(), anio->value(), elegidos());
    if (!agregados) {
        aceptado(agregados.rechazo());
        return;
    }
    ventanas().refrescar(ventanasDeDiasLibres());
    terminar({{QStringLiteral("agregados"), *agregados}});
}

} // namespace agenda
