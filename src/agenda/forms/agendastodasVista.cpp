// How the window "agendastodas" is laid out.

#include "agenda/forms/Atajos.h"
#include "agenda/forms/CalendarioMes.h"
#include "agenda/forms/FlechasMes.h"
#include "agenda/forms/agendastodas.h"
#include "base/Clock.h"
#include "db/Entorno.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"
#include "ui/Grilla.h"
#include "ui/Rotulos.h"

#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSplitter>
#include <QTimer>
#include <QToolButton>

namespace agenda {

void agendastodas::construir()
{
    auto *filas = new QHBoxLayout(this);
    filas->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    filas->setSpacing(ui::margen);
    QWidget *izquierda = panelIzquierdo();
    izquierda->setFixedWidth(qMax(236, izquierda->sizeHint().width()));
    filas->addWidget(izquierda);

    auto *derecha = new QVBoxLayout;
    derecha->setSpacing(ui::espacio);
    diaanterior
        = ui::flecha(this, QStringLiteral("diaanterior"), QStringLiteral("‹"), tr("Día anterior (Ctrl+Izquierda)"));
    diasiguiente
        = ui::flecha(this, QStringLiteral("diasiguiente"), QStringLiteral("›"), tr("Día siguiente (Ctrl+Derecha)"));
    fechaactiva = ui::rotuloFuerte(this, QStringLiteral("fechaactiva"), 1.2);
    auto *titulo = new QHBoxLayout;
    titulo->setSpacing(2);
    titulo->addWidget(diaanterior);
    titulo->addWidget(diasiguiente);
    titulo->addSpacing(ui::espacio);
    titulo->addWidget(fechaactiva, 1);
    derecha->addLayout(titulo);
    derecha->addWidget(barraOperaciones(*titulo));

    auto *partes = new QSplitter(Qt::Vertical, this);
    partes->setChildrenCollapsible(false);
    lista = new GrillaTodas(QStringLiteral("lista"), partes);
    partes->addWidget(lista);
    partes->addWidget(panelSala());
    partes->setStretchFactor(0, 1);
    partes->setSizes({430, 170});
    derecha->addWidget(partes, 1);
    filas->addLayout(derecha, 1);

    tiempo = new QTimer(this);
    tiempo->setObjectName(QStringLiteral("tiempo"));
    setTabOrder(izquierda, lista);
    resize(1090, 680);
}

QWidget *agendastodas::panelIzquierdo()
{
    auto *panel = new QWidget(this);
    auto *columna = new QVBoxLayout(panel);
    columna->setContentsMargins(0, 0, 0, 0);
    columna->setSpacing(ui::espacio);

    fechadia = new CalendarioMes(panel);
    fechadia->setObjectName(QStringLiteral("fechadia"));
    auto *flechas = new FlechasMes(
        *fechadia, [this] { return entorno().clock().today(); }, panel);
    fechaaniomenos = flechas->fechaaniomenos;
    fechamesmenos = flechas->fechamesmenos;
    hoy = flechas->hoy;
    fechamesmas = flechas->fechamesmas;
    fechaaniomas = flechas->fechaaniomas;
    columna->addWidget(flechas);
    columna->addWidget(fechadia);

    auto *titulo = new QLabel(tr("&Profesionales que se muestran:"), panel);
    listaprofesionales = new QListWidget(panel);
    listaprofesionales->setObjectName(QStringLiteral("listaprofesionales"));
    listaprofesionales->setTextElideMode(Qt::ElideRight);
    listaprofesionales->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    titulo->setBuddy(listaprofesionales);
    columna->addWidget(titulo);
    columna->addWidget(listaprofesionales, 1);

    todos = ui::boton(panel, QStringLiteral("todos"), tr("T&odos"), QStringLiteral("edit-select-all"));
    todos->setToolTip(tr("Mostrar a todos los profesionales"));
    ninguno = ui::boton(panel, QStringLiteral("ninguno"), tr("N&inguno"), QStringLiteral("edit-clear"));
    ninguno->setToolTip(tr("Quitar todas las marcas, para elegir unos pocos"));
    auto *marcas = new QHBoxLayout;
    marcas->setSpacing(ui::espacio);
    marcas->addWidget(todos);
    marcas->addWidget(ninguno);
    columna->addLayout(marcas);
    return panel;
}

QWidget *agendastodas::panelSala()
{
    auto *panel = new QWidget(this);
    auto *fila = new QHBoxLayout(panel);
    fila->setContentsMargins(0, 0, 0, 0);
    fila->setSpacing(ui::margen);
    auto *columna = new QVBoxLayout;
    columna->setSpacing(2);
    titulosala = new QLabel(panel);
    titulosala->setObjectName(QStringLiteral("titulosala"));
    QFont negrita = titulosala->font();
    negrita.setBold(true);
    titulosala->setFont(negrita);
    sala = new ui::Grilla(
        QStringLiteral("sala"),
        QStringLiteral("|>Espera   |<Paciente           |<Profesional      |^Turno|^Llegó"),
        panel);
    sala->setSelectionMode(QAbstractItemView::SingleSelection);
    sala->setElasticas({{1, 3}, {2, 2}});
    sala->setSortingEnabled(false); // the longest waiting stays on top
    sala->setMinimumHeight(4 * sala->verticalHeader()->defaultSectionSize());
    titulosala->setBuddy(sala);
    columna->addWidget(titulosala);
    columna->addWidget(sala, 1);
    fila->addLayout(columna, 5);

    detalle = new QLabel(panel);
    detalle->setObjectName(QStringLiteral("detalle"));
    detalle->setFrameShape(QFrame::StyledPanel);
    detalle->setTextInteractionFlags(Qt::TextSelectableByMouse);
    detalle->setTextFormat(Qt::PlainText);
    detalle->setWordWrap(true);
    detalle->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    detalle->setMargin(ui::espacio);
    // Its text must not push the window about.
    detalle->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    fila->addWidget(detalle, 3);
    return panel;
}

QWidget *agendastodas::barraOperaciones(QHBoxLayout &titulo)
{
    auto *barra = new QWidget(this);
    auto *fila = new QHBoxLayout(barra);
    fila->setContentsMargins(0, 0, 0, 0);
    fila->setSpacing(4);
    struct Operacion {
        QPushButton *agendastodas::*boton;
        const char *nombre;
        QString texto;
        const char *icono;
        QString ayuda;
        QKeySequence tecla;
        bool delTurno = true; ///< false: stands beside the date
    };
    const Operacion operaciones[] = {
        {&agendastodas::nuevo,
         "nuevo",
         tr("&Nuevo"),
         "appointment-new",
         tr("Asignar un turno en los horarios elegidos (Enter o Ctrl+N)"),
         {}},
        {&agendastodas::sinollego,
         "sinollego",
         tr("&Llegó"),
         "checkmark",
         tr("El paciente llegó, o no (Ctrl+L)"),
         Qt::CTRL | Qt::Key_L},
        {&agendastodas::sinoatendido,
         "sinoatendido",
         tr("&Atendido"),
         "task-complete",
         tr("El paciente fue atendido, o no (Ctrl+A)"),
         Qt::CTRL | Qt::Key_A},
        {&agendastodas::bloquear,
         "bloquear",
         tr("&Bloquear"),
         "object-locked",
         tr("No atender en los horarios libres elegidos (F6)"),
         Qt::Key_F6},
        {&agendastodas::liberar,
         "liberar",
         tr("&Eliminar"),
         "edit-delete",
         tr("Eliminar los turnos elegidos (Supr)"),
         Qt::Key_Delete},
        {&agendastodas::veragenda,
         "veragenda",
         tr("A&genda"),
         "view-calendar-day",
         tr("La agenda del profesional, en ese turno (Enter o Ctrl+G)"),
         Qt::CTRL | Qt::Key_G},
        {&agendastodas::atender,
         "atender",
         tr("&Ficha"),
         "user-identity",
         tr("Abrir la ficha del paciente (F2)"),
         Qt::Key_F2},
        {&agendastodas::horarios,
         "horarios",
         tr("&Horarios"),
         "view-calendar-week",
         tr("Días y horarios de atención del profesional (Ctrl+H)"),
         Qt::CTRL | Qt::Key_H,
         false},
        {&agendastodas::nolabo,
         "nolabo",
         tr("&Días libres"),
         "view-calendar-month",
         tr("Días en que el profesional no atiende (Ctrl+D)"),
         Qt::CTRL | Qt::Key_D,
         false},
        {&agendastodas::botontelefonos,
         "botontelefonos",
         tr("&Teléfonos"),
         "view-pim-contacts",
         tr("Lista de teléfonos del consultorio, los profesionales y los pacientes (F4)"),
         Qt::Key_F4,
         false},
    };
    for (const Operacion &una : operaciones) {
        QPushButton *boton
            = ui::boton(barra, QLatin1String(una.nombre), una.texto, QLatin1String(una.icono), una.ayuda);
        this->*una.boton = boton;
        (una.delTurno ? fila : &titulo)->addWidget(boton);
        if (!una.tecla.isEmpty())
            atajoDeBoton(*this, una.tecla, *boton);
    }
    fila->addStretch(1);
    atajoDeBoton(*this, Qt::CTRL | Qt::Key_Left, *diaanterior, true);
    atajoDeBoton(*this, Qt::CTRL | Qt::Key_Right, *diasiguiente, true);
    atajoDeBoton(*this, Qt::CTRL | Qt::Key_Home, *hoy);
    return barra;
}

} // namespace agenda
