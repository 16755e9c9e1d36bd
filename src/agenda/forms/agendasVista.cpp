// How the window "agendas" is laid out.

#include "agenda/forms/CalendarioMes.h"
#include "agenda/forms/agendas.h"
#include "ui/Estilo.h"
#include "ui/Grilla.h"
#include "ui/Iconos.h"

#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <QTimer>
#include <QToolButton>

namespace agenda {

namespace {

QToolButton *flecha(QWidget *padre, const QString &nombre, const QString &texto, const QString &ayuda)
{
    auto *boton = new QToolButton(padre);
    boton->setObjectName(nombre);
    boton->setText(texto);
    boton->setToolTip(ayuda);
    boton->setAccessibleName(ayuda);
    boton->setAutoRaise(true);
    return boton;
}

QPushButton *
operacion(QWidget *padre, const QString &nombre, const QString &texto, const QString &icono, const QString &ayuda)
{
    auto *boton = new QPushButton(ui::icono(icono), texto, padre);
    boton->setObjectName(nombre);
    boton->setToolTip(ayuda);
    boton->setAutoDefault(false);
    return boton;
}

} // namespace

void agendas::construir()
{
    auto *filas = new QHBoxLayout(this);
    filas->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    filas->setSpacing(ui::margen);
    QWidget *izquierda = panelIzquierdo();
    izquierda->setFixedWidth(qMax(236, izquierda->sizeHint().width()));
    filas->addWidget(izquierda);

    auto *derecha = new QVBoxLayout;
    derecha->setSpacing(ui::espacio);
    fechaactiva = new QLabel(this);
    fechaactiva->setObjectName(QStringLiteral("fechaactiva"));
    QFont letra = fechaactiva->font();
    letra.setBold(true);
    letra.setPointSizeF(letra.pointSizeF() * 1.2);
    fechaactiva->setFont(letra);
    auto *titulo = new QHBoxLayout;
    titulo->addWidget(fechaactiva, 1);
    titulo->addWidget(barraSalidas());
    derecha->addLayout(titulo);
    derecha->addWidget(barraOperaciones());

    lista = new ui::Grilla(
        QStringLiteral("lista"),
        // At 1280 pixels arrival and attendance are seen without scrolling, also with a wide letter.
        QStringLiteral("|^Hora|<Paciente         |<Cobertura|<Teléfonos         |<Motivo "
                       "|>Caja $   |>Saldo $  |^Llegó|^Atend.|<Observaciones"),
        this);
    derecha->addWidget(lista, 1);

    detalle = new QLabel(this);
    detalle->setObjectName(QStringLiteral("detalle"));
    detalle->setFrameShape(QFrame::StyledPanel);
    detalle->setTextInteractionFlags(Qt::TextSelectableByMouse);
    detalle->setTextFormat(Qt::PlainText);
    detalle->setWordWrap(true);
    detalle->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    detalle->setMargin(ui::espacio);
    // Four lines, and one of them may need a second.
    detalle->setFixedHeight(5 * detalle->fontMetrics().lineSpacing() + 2 * ui::espacio + 4);
    derecha->addWidget(detalle);
    filas->addLayout(derecha, 1);

    tiempo = new QTimer(this);
    tiempo->setObjectName(QStringLiteral("tiempo"));
    resize(1090, 680);
}

QWidget *agendas::panelIzquierdo()
{
    auto *panel = new QWidget(this);
    auto *columna = new QVBoxLayout(panel);
    columna->setContentsMargins(0, 0, 0, 0);
    columna->setSpacing(ui::espacio);

    auto *titulo = new QLabel(tr("&Profesional:"), panel);
    lisdocto = new QComboBox(panel);
    lisdocto->setObjectName(QStringLiteral("lisdocto"));
    titulo->setBuddy(lisdocto);
    columna->addWidget(titulo);
    columna->addWidget(lisdocto);

    fechaaniomenos = flecha(panel, QStringLiteral("fechaaniomenos"), QStringLiteral("«"), tr("Año anterior"));
    fechamesmenos = flecha(panel, QStringLiteral("fechamesmenos"), QStringLiteral("‹"), tr("Mes anterior"));
    hoy = operacion(panel, QStringLiteral("hoy"), tr("Ho&y"), QStringLiteral("go-jump-today"), tr("Ir al día de hoy"));
    fechamesmas = flecha(panel, QStringLiteral("fechamesmas"), QStringLiteral("›"), tr("Mes siguiente"));
    fechaaniomas = flecha(panel, QStringLiteral("fechaaniomas"), QStringLiteral("»"), tr("Año siguiente"));
    auto *botones = new QHBoxLayout;
    botones->setSpacing(2);
    botones->addWidget(fechaaniomenos);
    botones->addWidget(fechamesmenos);
    botones->addWidget(hoy, 1);
    botones->addWidget(fechamesmas);
    botones->addWidget(fechaaniomas);
    columna->addLayout(botones);

    fechadia = new CalendarioMes(panel);
    fechadia->setObjectName(QStringLiteral("fechadia"));
    columna->addWidget(fechadia);

    auto *resumen = new QLabel(tr("&Resumen del día:"), panel);
    listatemp = new QListWidget(panel);
    listatemp->setObjectName(QStringLiteral("listatemp"));
    listatemp->setUniformItemSizes(true);
    resumen->setBuddy(listatemp);
    columna->addWidget(resumen);
    columna->addWidget(listatemp, 1);
    return panel;
}

QWidget *agendas::barraOperaciones()
{
    auto *barra = new QWidget(this);
    auto *fila = new QHBoxLayout(barra);
    fila->setContentsMargins(0, 0, 0, 0);
    fila->setSpacing(4);
    const auto poner = [&](QPushButton *&boton, auto &&...argumentos) {
        boton = operacion(barra, argumentos...);
        fila->addWidget(boton);
    };
    poner(
        nuevo,
        QStringLiteral("nuevo"),
        tr("&Nuevo"),
        QStringLiteral("appointment-new"),
        tr("Asignar un turno en los horarios seleccionados (Enter o Ctrl+N)"));
    poner(
        sinollego,
        QStringLiteral("sinollego"),
        tr("&Llegó"),
        QStringLiteral("checkmark"),
        tr("El paciente llegó, o no (Ctrl+L)"));
    poner(
        sinoatendido,
        QStringLiteral("sinoatendido"),
        tr("&Atendido"),
        QStringLiteral("task-complete"),
        tr("El paciente fue atendido, o no (Ctrl+A)"));
    poner(
        bloquear,
        QStringLiteral("bloquear"),
        tr("&Bloquear"),
        QStringLiteral("object-locked"),
        tr("No atender en los horarios libres seleccionados (F6)"));
    poner(
        modifobservacion,
        QStringLiteral("modifobservacion"),
        tr("&Observ."),
        QStringLiteral("draw-text"),
        tr("Observaciones del turno (F7)"));
    poner(
        modifmoticonsul,
        QStringLiteral("modifmoticonsul"),
        tr("&Motivo"),
        QStringLiteral("tag"),
        tr("Motivo de la consulta (F8)"));
    poner(
        modifhora,
        QStringLiteral("modifhora"),
        tr("&Cambiar"),
        QStringLiteral("view-calendar-day"),
        tr("Pasar el turno a otro día u horario (F9)"));
    poner(
        liberar,
        QStringLiteral("liberar"),
        tr("&Eliminar"),
        QStringLiteral("edit-delete"),
        tr("Eliminar los turnos seleccionados (Supr)"));
    fila->addStretch(1);
    poner(
        horarios,
        QStringLiteral("horarios"),
        tr("&Horarios"),
        QStringLiteral("view-calendar-week"),
        tr("Días y horarios de atención del profesional (Ctrl+H)"));

    atajo(QKeySequence(Qt::CTRL | Qt::Key_L), sinollego);
    atajo(QKeySequence(Qt::CTRL | Qt::Key_A), sinoatendido);
    atajo(QKeySequence(Qt::Key_F6), bloquear);
    atajo(QKeySequence(Qt::Key_F7), modifobservacion);
    atajo(QKeySequence(Qt::Key_F8), modifmoticonsul);
    atajo(QKeySequence(Qt::Key_F9), modifhora);
    atajo(QKeySequence(Qt::Key_Delete), liberar);
    atajo(QKeySequence(Qt::CTRL | Qt::Key_H), horarios);
    return barra;
}

void agendas::atajo(const QKeySequence &tecla, QPushButton *boton)
{
    auto *suyo = new QShortcut(tecla, this);
    suyo->setContext(Qt::WidgetWithChildrenShortcut);
    suyo->setAutoRepeat(false);
    connect(suyo, &QShortcut::activated, boton, [boton] { boton->click(); });
}

} // namespace agenda
