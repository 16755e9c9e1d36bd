// How the window "agendasnolabo" is laid out.

#include "agenda/forms/agendasnolabo.h"
#include "ui/Botones.h"
#include "ui/CampoFecha.h"
#include "ui/Estilo.h"
#include "ui/Grilla.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

namespace agenda {

namespace {

QCheckBox *casilla(QWidget *padre, const QString &nombre, const QString &texto)
{
    auto *nueva = new QCheckBox(texto, padre);
    nueva->setObjectName(nombre);
    return nueva;
}

} // namespace

void agendasnolabo::construir()
{
    lisdocto = new QComboBox(this);
    lisdocto->setObjectName(QStringLiteral("lisdocto"));
    auto *profesional = new QLabel(tr("&Profesional:"), this);
    profesional->setBuddy(lisdocto);
    paratodos = casilla(this, QStringLiteral("paratodos"), tr("Para &todos los profesionales"));
    auto *quien = new QHBoxLayout;
    quien->addWidget(profesional);
    quien->addWidget(lisdocto, 1);
    quien->addSpacing(2 * ui::margen);
    quien->addWidget(paratodos);

    auto *paneles = new QHBoxLayout;
    paneles->setSpacing(ui::margen);
    paneles->addWidget(panelAgregar());
    paneles->addWidget(panelLista(), 1);

    aviso = new QLabel(this);
    aviso->setObjectName(QStringLiteral("aviso"));
    aviso->setTextFormat(Qt::PlainText);
    cerrar = ui::boton(this, QStringLiteral("cerrar"), tr("&Cerrar"), QStringLiteral("window-close"));
    auto *fin = new QHBoxLayout;
    fin->addWidget(aviso, 1);
    fin->addWidget(cerrar);

    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->setSpacing(ui::margen);
    todo->addLayout(quien);
    todo->addLayout(paneles, 1);
    todo->addLayout(fin);
    setMinimumSize(900, 540);
}

QWidget *agendasnolabo::panelAgregar()
{
    auto *grupo = new QGroupBox(tr("Agregar"), this);
    desde = new ui::CampoFecha(grupo);
    desde->setObjectName(QStringLiteral("desde"));
    hasta = new ui::CampoFecha(grupo);
    hasta->setObjectName(QStringLiteral("hasta"));
    hasta->setPlaceholderText(tr("un solo día"));
    cadaanio = casilla(grupo, QStringLiteral("cadaanio"), tr("De cada a&ño"));
    agregar = ui::boton(grupo, QStringLiteral("agregar"), tr("&Agregar a la lista"), QStringLiteral("list-add"));
    fechas = new QListWidget(grupo);
    fechas->setObjectName(QStringLiteral("fechas"));
    fechas->setMinimumWidth(
        fechas->fontMetrics().horizontalAdvance(tr("Del 00/00/0000 al 00/00/0000 (000 días), cada año")) + 20);
    quitar = ui::boton(grupo, QStringLiteral("quitar"), tr("&Quitar"), QStringLiteral("list-remove"));
    guardar = ui::boton(grupo, QStringLiteral("guardar"), tr("&Guardar"), QStringLiteral("document-save"));
    feriados
        = ui::boton(grupo, QStringLiteral("feriados"), tr("&Feriados nacionales..."), QStringLiteral("view-calendar"));

    auto *rotuloDesde = new QLabel(tr("&Desde el:"), grupo);
    rotuloDesde->setBuddy(desde);
    auto *rotuloHasta = new QLabel(tr("&Hasta el:"), grupo);
    rotuloHasta->setBuddy(hasta);
    auto *reunidas = new QLabel(tr("Fechas que no se atenderá&n:"), grupo);
    reunidas->setBuddy(fechas);
    auto *campos = new QGridLayout;
    campos->setHorizontalSpacing(ui::espacio);
    campos->addWidget(rotuloDesde, 0, 0);
    campos->addWidget(desde, 0, 1);
    campos->addWidget(rotuloHasta, 1, 0);
    campos->addWidget(hasta, 1, 1);
    campos->addWidget(cadaanio, 2, 1);
    campos->addWidget(agregar, 3, 1);
    auto *botones = new QHBoxLayout;
    botones->addWidget(quitar);
    botones->addStretch(1);
    botones->addWidget(guardar);
    auto *columna = new QVBoxLayout(grupo);
    columna->addLayout(campos);
    columna->addWidget(reunidas);
    columna->addWidget(fechas, 1);
    columna->addLayout(botones);
    columna->addSpacing(ui::margen);
    columna->addWidget(feriados);
    return grupo;
}

QWidget *agendasnolabo::panelLista()
{
    auto *grupo = new QGroupBox(tr("Ya guardadas"), this);
    lista = new ui::Grilla(
        QStringLiteral("lista"),
        QStringLiteral("|<Días en que no se atiende                              |<Día de la semana "),
        grupo);
    lista->setSelectionMode(QAbstractItemView::ExtendedSelection);
    eliminar = ui::boton(grupo, QStringLiteral("eliminar"), tr("&Eliminar"), QStringLiteral("edit-delete"));
    auto *botones = new QHBoxLayout;
    botones->addStretch(1);
    botones->addWidget(eliminar);
    auto *columna = new QVBoxLayout(grupo);
    columna->addWidget(lista, 1);
    columna->addLayout(botones);
    return grupo;
}

} // namespace agenda
