// How the window "agendas" is laid out.

#include "agenda/forms/Atajos.h"
#include "agenda/forms/CalendarioMes.h"
#include "agenda/forms/FlechasMes.h"
#include "agenda/forms/GrillaTurnos.h"
#include "agenda/forms/agendas.h"
#include "base/Clock.h"
#include "db/Entorno.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"
#include "ui/Iconos.h"
#include "ui/Rotulos.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QShortcut>
#include <QTimer>
#include <QToolButton>

namespace agenda {

void agendas::construir()
{
    auto *filas = new QHBoxLayout(this);
    filas->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    filas->setSpacing(ui::margen);
    QWidget *izquierda = panelIzquierdo();
    izquierda->setFixedWidth(qMax(240, fechadia->sizeHint().width()));
    filas->addWidget(izquierda);

    auto *derecha = new QVBoxLayout;
    derecha->setSpacing(ui::espacio);
    derecha->addLayout(renglonTitulo());
    derecha->addWidget(barraOperaciones());

    avisocorte = new QLabel(this);
    avisocorte->setObjectName(QStringLiteral("avisocorte"));
    avisocorte->setTextFormat(Qt::PlainText);
    avisocorte->setMargin(ui::espacio);
    avisocorte->setAutoFillBackground(true);
    QPalette deAviso = avisocorte->palette();
    deAviso.setColor(QPalette::Window, QColor(0xCF, 0xE2, 0xF7));
    deAviso.setColor(QPalette::WindowText, Qt::black);
    avisocorte->setPalette(deAviso);
    avisocorte->hide();
    derecha->addWidget(avisocorte);

    lista = new GrillaTurnos(
        QStringLiteral("lista"),
        // At 1280 pixels arrival and attendance are seen without scrolling, also with a wide letter.
        QStringLiteral("|^Hora|<Paciente                 |<Cobertura|<Teléfonos           |<Motivo "
                       "|>Caja $  |>Saldo $  |^Llegó|^Atend.|<Observaciones"),
        this);
    lista->setElasticas({{1, 2}, {2, 3}, {3, 4}, {4, 3}, {9, 4}});
    derecha->addWidget(lista, 1);
    derecha->addLayout(panelDetalle());
    filas->addLayout(derecha, 1);
    crearMenu();

    tiempo = new QTimer(this);
    tiempo->setObjectName(QStringLiteral("tiempo"));
    resize(1090, 680);
}

QLayout *agendas::renglonTitulo()
{
    fechaactiva = ui::rotuloFuerte(this, QStringLiteral("fechaactiva"), 1.2);
    // A long date makes room for the buttons, not the other way round.
    fechaactiva->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    buscar = ui::boton(
        this,
        QStringLiteral("buscar"),
        tr("Bu&scar"),
        QStringLiteral("edit-find"),
        tr("Buscar los turnos de un paciente (Ctrl+F)"));
    botagentodas = ui::boton(
        this,
        QStringLiteral("botagentodas"),
        tr("&Todas"),
        QStringLiteral("view-calendar-list"),
        tr("Las agendas de todos los profesionales al mismo tiempo (Ctrl+T)"));
    telefonos = ui::boton(
        this,
        QStringLiteral("telefonos"),
        tr("Teléfonos"),
        QStringLiteral("view-pim-contacts"),
        tr("Lista de teléfonos del consultorio, los profesionales y los pacientes (F4)"));
    horarios = ui::boton(
        this,
        QStringLiteral("horarios"),
        tr("&Horarios"),
        QStringLiteral("view-calendar-week"),
        tr("Días y horarios de atención del profesional (Ctrl+H)"));
    auto *fila = new QHBoxLayout;
    fila->setSpacing(4);
    fila->addWidget(fechaactiva, 1);
    fila->addWidget(buscar);
    fila->addWidget(botagentodas);
    fila->addWidget(telefonos);
    fila->addWidget(horarios);
    return fila;
}

QLayout *agendas::panelDetalle()
{
    detalle = new QLabel(this);
    detalle->setObjectName(QStringLiteral("detalle"));
    detalle->setTextInteractionFlags(Qt::TextSelectableByMouse);
    detalle->setTextFormat(Qt::PlainText);
    detalle->setWordWrap(true);
    detalle->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    detalle->setMargin(ui::espacio);
    detalleordenes = new QPlainTextEdit(this);
    detalleordenes->setObjectName(QStringLiteral("detalleordenes"));
    detalleordenes->setAccessibleName(tr("Órdenes del paciente"));
    detalleordenes->setReadOnly(true);
    detalleordenes->setTabChangesFocus(true);
    detalleordenes->hide();
    auto *marco = new QScrollArea(this);
    marco->setWidget(detalle);
    marco->setWidgetResizable(true);
    marco->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    marco->setFocusPolicy(Qt::NoFocus);
    // An order whole, and the patient's facts with two of them in two lines.
    const int alto = 7 * detalle->fontMetrics().lineSpacing() + 2 * ui::espacio + 4;
    marco->setFixedHeight(alto);
    detalleordenes->setFixedHeight(alto);
    auto *fila = new QHBoxLayout;
    fila->setSpacing(ui::espacio);
    fila->addWidget(marco, 5);
    fila->addWidget(detalleordenes, 4);
    return fila;
}

void agendas::crearMenu()
{
    const auto crear = [this](QAction *&accion, const QString &nombre) {
        accion = new QAction(this);
        accion->setObjectName(nombre);
        lista->addAction(accion);
    };
    // Without a text of its own it carries the button's, which changes with the row.
    const auto deBoton = [&](QAction *&accion,
                             const QString &nombre,
                             QPushButton *boton,
                             const QString &tecla,
                             const QString &texto = {}) {
        crear(accion, nombre);
        accion->setIcon(boton->icon());
        connect(accion, &QAction::triggered, boton, &QPushButton::click);
        m_acciones.push_back({accion, boton, texto, tecla});
    };
    const auto separar = [this] {
        auto *raya = new QAction(this);
        raya->setSeparator(true);
        lista->addAction(raya);
    };
    deBoton(menuasignar, QStringLiteral("menuasignar"), nuevo, tr("Ctrl+N"), tr("&Nuevo turno"));
    deBoton(menuficha, QStringLiteral("menuficha"), atender, tr("F2"), tr("&Ficha del paciente"));
    separar();
    deBoton(menullego, QStringLiteral("menullego"), sinollego, tr("Ctrl+L"));
    deBoton(menuatendido, QStringLiteral("menuatendido"), sinoatendido, tr("Ctrl+A"));
    deBoton(menupagar, QStringLiteral("menupagar"), pagar, tr("Ctrl+G"), tr("Pa&gar el turno"));
    separar();
    deBoton(menuobser, QStringLiteral("menuobser"), modifobservacion, tr("F7"), tr("&Observaciones"));
    deBoton(menumotivo, QStringLiteral("menumotivo"), modifmoticonsul, tr("F8"), tr("&Motivo de la consulta"));
    deBoton(menuhora, QStringLiteral("menuhora"), modifhora, tr("F9"), tr("&Cambiar el día o la hora"));
    crear(menucortar, QStringLiteral("menucortar"));
    menucortar->setText(tr("Cor&tar el turno, para pasarlo") + QStringLiteral("\tCtrl+X"));
    menucortar->setIcon(ui::icono(QStringLiteral("edit-cut")));
    crear(menupegar, QStringLiteral("menupegar"));
    menupegar->setText(tr("&Pegar el turno cortado") + QStringLiteral("\tCtrl+V"));
    menupegar->setIcon(ui::icono(QStringLiteral("edit-paste")));
    separar();
    deBoton(menubloquear, QStringLiteral("menubloquear"), bloquear, tr("F6"));
    deBoton(menueliminar, QStringLiteral("menueliminar"), liberar, tr("Supr"));
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

    fechadia = new CalendarioMes(panel);
    fechadia->setObjectName(QStringLiteral("fechadia"));
    fechadia->setAceptaTurnos();
    auto *flechas = new FlechasMes(
        *fechadia, [this] { return entorno().clock().today(); }, panel);
    fechaaniomenos = flechas->fechaaniomenos;
    fechamesmenos = flechas->fechamesmenos;
    hoy = flechas->hoy;
    fechamesmas = flechas->fechamesmas;
    fechaaniomas = flechas->fechaaniomas;
    columna->addWidget(flechas);
    columna->addWidget(fechadia);
    proximolibre = ui::boton(
        panel,
        QStringLiteral("proximolibre"),
        tr("Pró&ximo libre"),
        QStringLiteral("go-next"),
        tr("Los próximos días con horarios libres (F3)"));
    columna->addWidget(proximolibre);

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
    auto *renglones = new QVBoxLayout(barra);
    renglones->setContentsMargins(0, 0, 0, 0);
    renglones->setSpacing(4);
    QHBoxLayout *fila = nullptr;
    const auto renglon = [&] {
        fila = new QHBoxLayout;
        fila->setSpacing(4);
        renglones->addLayout(fila);
    };
    const auto poner = [&](QPushButton *&boton,
                           const QString &nombre,
                           const QString &texto,
                           const char *icono,
                           const QString &ayuda,
                           const QKeySequence &tecla = {}) {
        boton = ui::boton(barra, nombre, texto, QLatin1String(icono), ayuda);
        fila->addWidget(boton);
        if (!tecla.isEmpty())
            atajoDeBoton(*this, tecla, *boton);
    };
    // What is done with the appointment of a patient.
    renglon();
    poner(
        nuevo,
        QStringLiteral("nuevo"),
        tr("&Nuevo"),
        "appointment-new",
        tr("Asignar un turno en los horarios seleccionados (Enter o Ctrl+N)"));
    poner(
        sinollego,
        QStringLiteral("sinollego"),
        tr("&Llegó"),
        "checkmark",
        tr("El paciente llegó, o no (Ctrl+L)"),
        QKeySequence(Qt::CTRL | Qt::Key_L));
    poner(
        sinoatendido,
        QStringLiteral("sinoatendido"),
        tr("&Atendido"),
        "task-complete",
        tr("El paciente fue atendido, o no (Ctrl+A)"),
        QKeySequence(Qt::CTRL | Qt::Key_A));
    poner(
        atender,
        QStringLiteral("atender"),
        tr("&Ficha"),
        "user-identity",
        tr("Abrir la ficha del paciente (Enter o F2)"),
        QKeySequence(Qt::Key_F2));
    poner(
        pagar,
        QStringLiteral("pagar"),
        tr("Pa&gar"),
        "wallet-open",
        tr("Registrar el pago del turno (Ctrl+G)"),
        QKeySequence(Qt::CTRL | Qt::Key_G));
    poner(
        modifobservacion,
        QStringLiteral("modifobservacion"),
        tr("&Observ."),
        "draw-text",
        tr("Observaciones del turno (F7)"),
        QKeySequence(Qt::Key_F7));
    poner(
        modifmoticonsul,
        QStringLiteral("modifmoticonsul"),
        tr("&Motivo"),
        "tag",
        tr("Motivo de la consulta (F8)"),
        QKeySequence(Qt::Key_F8));
    poner(
        modifhora,
        QStringLiteral("modifhora"),
        tr("&Cambiar"),
        "view-calendar-day",
        tr("Pasar el turno a otro día u horario (F9)"),
        QKeySequence(Qt::Key_F9));
    fila->addStretch(1);
    // Their texts change with the row: the buttons beside them must not move below the pointer.
    for (const auto &[boton, largo] :
         {std::pair(sinollego, tr("No &llegó")), std::pair(sinoatendido, tr("No &atendido"))}) {
        const QString corto = boton->text();
        boton->setText(largo);
        boton->setMinimumWidth(boton->sizeHint().width());
        boton->setText(corto);
    }
    // What is done with hours, and with the whole day.
    renglon();
    poner(
        bloquear,
        QStringLiteral("bloquear"),
        tr("&Bloquear"),
        "object-locked",
        tr("No atender en los horarios libres seleccionados (F6)"),
        QKeySequence(Qt::Key_F6));
    poner(
        liberar,
        QStringLiteral("liberar"),
        tr("&Eliminar"),
        "edit-delete",
        tr("Eliminar los turnos seleccionados (Supr)"),
        QKeySequence(Qt::Key_Delete));
    fila->addStretch(1);
    fila->addWidget(barraSalidas());

    for (const auto &[tecla, boton] :
         {std::pair(QKeySequence(Qt::CTRL | Qt::Key_H), horarios),
          {Qt::CTRL | Qt::Key_F, buscar},
          {Qt::CTRL | Qt::Key_T, botagentodas},
          {Qt::Key_F3, proximolibre},
          {Qt::Key_F4, telefonos},
          {Qt::CTRL | Qt::Key_Home, hoy}})
        atajoDeBoton(*this, tecla, *boton);
    atajo(QKeySequence(Qt::CTRL | Qt::Key_X), [this] { menucortar->trigger(); });
    atajo(QKeySequence(Qt::CTRL | Qt::Key_V), [this] { intentar([this] { pegar(); }); });
    atajo(QKeySequence(Qt::CTRL | Qt::Key_Left), [this] { irA(fechadia->fecha().addDays(-1)); });
    atajo(QKeySequence(Qt::CTRL | Qt::Key_Right), [this] { irA(fechadia->fecha().addDays(1)); });
    atajo(QKeySequence(Qt::CTRL | Qt::Key_Down), [this] { irALibre(1); });
    atajo(QKeySequence(Qt::CTRL | Qt::Key_Up), [this] { irALibre(-1); });
    return barra;
}

void agendas::atajo(const QKeySequence &tecla, const std::function<void()> &accion)
{
    auto *suyo = new QShortcut(tecla, this);
    suyo->setContext(Qt::WidgetWithChildrenShortcut);
    connect(suyo, &QShortcut::activated, this, accion);
}

} // namespace agenda
