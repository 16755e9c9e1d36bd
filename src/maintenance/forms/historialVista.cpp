// How the window "historial" is laid out.

#include "maintenance/forms/historial.h"
#include "ui/Botones.h"
#include "ui/CampoFecha.h"
#include "ui/Estilo.h"
#include "ui/Grilla.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>

namespace maintenance {

namespace {

QLabel *rotulo(const QString &texto, QWidget *campo)
{
    auto *suyo = new QLabel(texto);
    suyo->setBuddy(campo);
    return suyo;
}

} // namespace

void historial::construir()
{
    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->setSpacing(ui::espacio);
    todo->addWidget(filaDeFiltros());

    lista = new ui::Grilla(
        QStringLiteral("lista"),
        QStringLiteral("|^Fecha     |^Hora |<Equipo        |<Usuario              |<Ventana                  |<Acción"),
        this);
    // Its order is the order of time; it is not all here to be put into another.
    lista->setSortingEnabled(false);
    lista->horizontalHeader()->setSectionsClickable(false);
    lista->horizontalHeader()->setSortIndicatorShown(false);
    todo->addWidget(lista, 1);

    detalle = new QPlainTextEdit(this);
    detalle->setObjectName(QStringLiteral("detalle"));
    detalle->setReadOnly(true);
    detalle->setTabChangesFocus(true);
    detalle->setFixedHeight(5 * detalle->fontMetrics().lineSpacing() + 2 * ui::espacio + 4);
    todo->addWidget(rotulo(tr("&Acción elegida:"), detalle));
    todo->addWidget(detalle);

    todo->addWidget(panelDeDiferencias());
    todo->addWidget(filaDeBotones());
    resize(1090, 680);
}

QWidget *historial::filaDeFiltros()
{
    auto *panel = new QWidget(this);
    auto *fila = new QHBoxLayout(panel);
    fila->setContentsMargins(0, 0, 0, 0);
    fila->setSpacing(ui::espacio);
    const auto poner = [&](const QString &titulo, QWidget *campo, const QString &nombre, int ancho) {
        campo->setObjectName(nombre);
        fila->addWidget(rotulo(titulo, campo));
        fila->addWidget(campo, ancho);
    };
    poner(tr("De&sde:"), fechadesde = new ui::CampoFecha, QStringLiteral("fechadesde"), 0);
    poner(tr("&Hasta:"), fechahasta = new ui::CampoFecha, QStringLiteral("fechahasta"), 0);
    poner(tr("&Usuario:"), usuario = new QComboBox, QStringLiteral("usuario"), 2);
    poner(tr("Ve&ntana:"), ventana = new QComboBox, QStringLiteral("ventana"), 3);
    poner(tr("&Texto:"), texto = new QLineEdit, QStringLiteral("texto"), 3);
    fechadesde->setFixedWidth(fechadesde->minimumWidth());
    fechahasta->setFixedWidth(fechahasta->minimumWidth());
    texto->setClearButtonEnabled(true);
    texto->setPlaceholderText(tr("En la acción"));
    quitarfiltros
        = ui::boton(panel, QStringLiteral("quitarfiltros"), tr("&Quitar filtros"), QStringLiteral("edit-clear"));
    quitarfiltros->setToolTip(tr("Ver todas las acciones (Esc)"));
    fila->addWidget(quitarfiltros);
    return panel;
}

QWidget *historial::panelDeDiferencias()
{
    diferencias = new QWidget(this);
    diferencias->setObjectName(QStringLiteral("diferencias"));
    auto *columna = new QVBoxLayout(diferencias);
    columna->setContentsMargins(0, 0, 0, 0);
    columna->setSpacing(ui::espacio);
    hallazgos = new ui::Grilla(
        QStringLiteral("hallazgos"), QStringLiteral("|<Cuándo                              |<Qué pasó"), diferencias);
    hallazgos->setFixedHeight(
        hallazgos->horizontalHeader()->sizeHint().height() + 4 * hallazgos->verticalHeader()->defaultSectionSize() + 4);
    columna->addWidget(rotulo(tr("Di&ferencias encontradas (Enter muestra ese día):"), hallazgos));
    columna->addWidget(hallazgos);
    diferencias->hide();
    return diferencias;
}

QWidget *historial::filaDeBotones()
{
    auto *panel = new QWidget(this);
    auto *filas = new QVBoxLayout(panel);
    filas->setContentsMargins(0, 0, 0, 0);
    filas->setSpacing(ui::espacio);

    auto *arriba = new QHBoxLayout;
    arriba->setSpacing(ui::espacio);
    icono = new QLabel(panel);
    icono->setObjectName(QStringLiteral("icono"));
    estado = new QLabel(panel);
    estado->setObjectName(QStringLiteral("estado"));
    estado->setTextFormat(Qt::PlainText);
    estado->setWordWrap(true);
    verificar = ui::boton(panel, QStringLiteral("verificar"), tr("&Verificar"), QStringLiteral("object-locked"));
    verificar->setToolTip(tr("Comparar todo el historial con sus sellos"));
    arriba->addWidget(icono);
    arriba->addWidget(estado, 1);
    arriba->addWidget(verificar);
    filas->addLayout(arriba);

    auto *abajo = new QHBoxLayout;
    abajo->setSpacing(ui::espacio);
    cantidad = new QLabel(panel);
    cantidad->setObjectName(QStringLiteral("cantidad"));
    cantidad->setTextFormat(Qt::PlainText);
    avance = new QProgressBar(panel);
    avance->setObjectName(QStringLiteral("avance"));
    avance->setFixedWidth(200);
    QSizePolicy guardado = avance->sizePolicy();
    guardado.setRetainSizeWhenHidden(true);
    avance->setSizePolicy(guardado);
    avance->hide();
    detener = ui::boton(panel, QStringLiteral("detener"), tr("&Detener"), QStringLiteral("dialog-cancel"));
    detener->setToolTip(tr("Dejar de buscar (Esc)"));
    detener->hide();
    exportarlista
        = ui::boton(panel, QStringLiteral("exportarlista"), tr("&Exportar..."), QStringLiteral("document-export"));
    exportarlista->setToolTip(tr("Escribir en una planilla todas las acciones que cumplen los filtros"));
    cerrar = ui::boton(panel, QStringLiteral("cerrar"), tr("&Cerrar"), QStringLiteral("window-close"));
    abajo->addWidget(cantidad);
    abajo->addWidget(detener);
    abajo->addStretch(1);
    abajo->addWidget(avance);
    abajo->addWidget(exportarlista);
    abajo->addWidget(cerrar);
    filas->addLayout(abajo);
    return panel;
}

} // namespace maintenance
