// How the window "elecpaci" is laid out.

#include "patients/forms/elecpaci.h"
#include "ui/Botones.h"
#include "ui/CampoFecha.h"
#include "ui/Estilo.h"
#include "ui/Grilla.h"
#include "ui/ListaCombo.h"

#include <QButtonGroup>
#include <QHeaderView>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace patients {

namespace {

// The narrow first column holds the patient's number and is not shown.
const QString encabezado = QStringLiteral(
    "|^Nº Hist. Clínica|<Pacientes                               |^Nº Doc. Identidad|^Nº Afiliado   |>Saldo $      ");

template <typename Control>
Control *llamado(const char *nombre, Control *control)
{
    control->setObjectName(QLatin1String(nombre));
    return control;
}

QLineEdit *texto(const char *nombre)
{
    auto *campo = llamado(nombre, new QLineEdit);
    campo->setClearButtonEnabled(true);
    return campo;
}

QLineEdit *edad(const char *nombre)
{
    auto *campo = llamado(nombre, new QLineEdit);
    campo->setValidator(new QIntValidator(0, 999, campo));
    campo->setMaximumWidth(campo->fontMetrics().horizontalAdvance(u'0') * 4 + 16);
    return campo;
}

void poner(QGridLayout *grilla, int fila, int columna, const QString &rotulo, QWidget *campo)
{
    auto *suyo = new QLabel(rotulo);
    suyo->setBuddy(campo);
    suyo->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    grilla->addWidget(suyo, fila, columna * 2);
    grilla->addWidget(campo, fila, columna * 2 + 1);
}

/// Choices of which one holds, in a row behind their label.
QHBoxLayout *opciones(QWidget *padre, const QString &rotulo, const std::vector<QRadioButton *> &botones)
{
    auto *grupo = new QButtonGroup(padre);
    auto *fila = new QHBoxLayout;
    fila->addWidget(new QLabel(rotulo));
    for (QRadioButton *boton : botones) {
        grupo->addButton(boton);
        fila->addWidget(boton);
    }
    botones.front()->setChecked(true);
    return fila;
}

} // namespace

void elecpaci::construir()
{
    etiqueta = llamado("etiqueta", new QLabel);
    QFont destacada = etiqueta->font();
    destacada.setBold(true);
    etiqueta->setFont(destacada);
    opcionredu = llamado("opcionredu", new QRadioButton(tr("&Reducida")));
    opcionampli = llamado("opcionampli", new QRadioButton(tr("&Amplia")));
    auto *arriba = new QHBoxLayout;
    arriba->addWidget(etiqueta);
    arriba->addStretch(1);
    arriba->addLayout(opciones(this, tr("Búsqueda:"), {opcionredu, opcionampli}));

    panelredu = panelReducido();
    panelampli = panelAmplio();
    panelampli->hide();
    listapaci = new ui::Grilla(QStringLiteral("listapaci"), encabezado);
    // The names get the room that is left over.
    listapaci->horizontalHeader()->setStretchLastSection(false);
    listapaci->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);

    cantidad = llamado("cantidad", new QLabel);
    limpiar = ui::boton(this, QStringLiteral("limpiar"), tr("&Limpiar"), QStringLiteral("edit-clear"));
    exportarlista
        = ui::boton(this, QStringLiteral("exportarlista"), tr("E&xportar..."), QStringLiteral("document-export"));
    nuevo = ui::boton(this, QStringLiteral("nuevo"), tr("&Nuevo Paciente"), QStringLiteral("contact-new"));
    eliminar = ui::boton(this, QStringLiteral("eliminar"), tr("Eliminar"), QStringLiteral("edit-delete"));
    eliminar->setToolTip(tr("Elimina al paciente elegido con toda su historia (Supr)"));
    aceptar = ui::boton(this, QStringLiteral("aceptar"), {}, QStringLiteral("dialog-ok"));
    cancelar = ui::boton(this, QStringLiteral("cancelar"), tr("&Cancelar"), QStringLiteral("dialog-cancel"));
    auto *botones = new QHBoxLayout;
    botones->addWidget(cantidad);
    botones->addStretch(1);
    for (QPushButton *boton : {limpiar, exportarlista, nuevo, eliminar})
        botones->addWidget(boton);
    botones->addSpacing(ui::margen * 2);
    botones->addWidget(aceptar);
    botones->addWidget(cancelar);

    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->addLayout(arriba);
    todo->addWidget(panelredu);
    todo->addWidget(panelampli);
    todo->addWidget(listapaci, 1);
    todo->addLayout(botones);
    setMinimumSize(1000, 560);
}

QWidget *elecpaci::panelReducido()
{
    apellidoredu = texto("apellidoredu");
    nombresredu = texto("nombresredu");
    auto *panel = new QWidget;
    auto *grilla = new QGridLayout(panel);
    grilla->setContentsMargins({});
    poner(grilla, 0, 0, tr("A&pellido:"), apellidoredu);
    poner(grilla, 0, 1, tr("No&mbres:"), nombresredu);
    return panel;
}

QWidget *elecpaci::panelAmplio()
{
    auto *panel = new QWidget;
    auto *grilla = new QGridLayout;
    grilla->setContentsMargins({});
    for (const int columna : {1, 3, 5, 7})
        grilla->setColumnStretch(columna, 1);
    poner(grilla, 0, 0, tr("A&pellido:"), apellido = texto("apellido"));
    poner(grilla, 0, 1, tr("&2º Apellido:"), apellido2 = texto("apellido2"));
    poner(grilla, 0, 2, tr("No&mbres:"), nombres = texto("nombres"));
    poner(grilla, 0, 3, tr("Nº &Hist. Clínica:"), numehistoria = texto("numehistoria"));
    poner(grilla, 1, 0, tr("Nº &Doc.:"), dni = texto("dni"));
    poner(grilla, 1, 1, tr("&Teléfono:"), telpar = texto("telpar"));
    poner(grilla, 1, 2, tr("Nº A&filiado:"), nroos = texto("nroos"));
    poner(grilla, 1, 3, tr("Nac&imiento:"), fecnac = llamado("fecnac", new ui::CampoFecha));
    poner(grilla, 2, 0, tr("&Sexo:"), sexo = llamado("sexo", new QComboBox));
    sexo->addItem(tr("<Todos>"), -1);
    sexo->addItem(QStringLiteral("Femenino"), 0);
    sexo->addItem(QStringLiteral("Masculino"), 1);

    edad1 = edad("edad1");
    edad2 = edad("edad2");
    auto *edades = new QWidget;
    auto *entre = new QHBoxLayout(edades);
    entre->setContentsMargins({});
    entre->addWidget(edad1);
    entre->addWidget(new QLabel(tr("hasta")));
    entre->addWidget(edad2);
    entre->addWidget(new QLabel(tr("años")));
    entre->addStretch(1);
    edades->setFocusProxy(edad1);
    poner(grilla, 2, 1, tr("&Edad desde:"), edades);
    poner(grilla, 2, 2, tr("Ci&udad:"), ciudad = llamado("ciudad", new QComboBox));
    poner(grilla, 2, 3, tr("Pro&vincia:"), provincia = llamado("provincia", new QComboBox));

    todascober = llamado("todascober", new QRadioButton(tr("Todas")));
    sicober = llamado("sicober", new QRadioButton(tr("Con c&obertura")));
    nocober = llamado("nocober", new QRadioButton(tr("Sin cobertura")));
    nosabecober = llamado("nosabecober", new QRadioButton(tr("No se sabe")));
    coberfiltro = llamado("coberfiltro", new QComboBox);
    coberfiltro->setMinimumContentsLength(24);
    activos = llamado("activos", new QRadioButton(tr("Activos")));
    inactivos = llamado("inactivos", new QRadioButton(tr("Inactivos")));
    todos = llamado("todos", new QRadioButton(tr("Todos")));
    QHBoxLayout *coberturas = opciones(panel, tr("Cobertura:"), {todascober, sicober, nocober, nosabecober});
    coberturas->insertWidget(3, coberfiltro);
    auto *abajo = new QHBoxLayout;
    abajo->addLayout(coberturas);
    abajo->addStretch(1);
    abajo->addLayout(opciones(panel, tr("Pacientes:"), {activos, inactivos, todos}));

    auto *todo = new QVBoxLayout(panel);
    todo->setContentsMargins({});
    todo->addLayout(grilla);
    todo->addLayout(abajo);
    return panel;
}

} // namespace patients
