// How the window "agendahorarios" is laid out.

#include "agenda/SemanaPlantilla.h"
#include "agenda/forms/CampoHora.h"
#include "agenda/forms/VistaSemana.h"
#include "agenda/forms/agendahorarios.h"
#include "base/Fechas.h"
#include "ui/Botones.h"
#include "ui/CampoFecha.h"
#include "ui/Estilo.h"
#include "ui/ListaCombo.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace agenda {

namespace {

QSpinBox *limite(QWidget *padre, const QString &nombre)
{
    auto *caja = new QSpinBox(padre);
    caja->setObjectName(nombre);
    caja->setRange(-1, 999);
    caja->setSpecialValueText(QStringLiteral("Sin límite"));
    return caja;
}

} // namespace

void agendahorarios::construir()
{
    auto *izquierda = new QVBoxLayout;
    izquierda->addWidget(panelPlantillas());
    izquierda->addWidget(panelSemana(), 1);

    auto *derecha = new QVBoxLayout;
    derecha->addWidget(panelPlantilla());
    derecha->addWidget(panelNoLaborables(), 1);
    guardar = ui::boton(this, QStringLiteral("guardar"), tr("&Guardar"), QStringLiteral("document-save"));
    cerrar = ui::boton(this, QStringLiteral("cerrar"), tr("&Cerrar"), QStringLiteral("window-close"));
    auto *botones = new QHBoxLayout;
    botones->addStretch(1);
    botones->addWidget(guardar);
    botones->addWidget(cerrar);
    derecha->addLayout(botones);

    auto *todo = new QHBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->setSpacing(ui::margen);
    todo->addLayout(izquierda, 1);
    todo->addLayout(derecha);
}

QWidget *agendahorarios::panelPlantillas()
{
    auto *grupo = new QGroupBox(tr("Plantillas"), this);
    m_grupoPlantillas = grupo;
    listaplantillas = new QListWidget(grupo);
    listaplantillas->setObjectName(QStringLiteral("listaplantillas"));
    listaplantillas->setMinimumWidth(
        listaplantillas->fontMetrics().horizontalAdvance(
            QStringLiteral("Plantilla Nº 1 (abarca desde el 00/00/0000 hasta el 00/00/0000)"))
        + 30);
    // A few lines: there are seldom more than one or two.
    listaplantillas->setFixedHeight(5 * listaplantillas->fontMetrics().height() + 6);
    nuevo = ui::boton(grupo, QStringLiteral("nuevo"), tr("&Nueva"), QStringLiteral("list-add"));
    eliminar = ui::boton(grupo, QStringLiteral("eliminar"), tr("&Eliminar"), QStringLiteral("edit-delete"));
    auto *botones = new QHBoxLayout;
    botones->addWidget(nuevo);
    botones->addWidget(eliminar);
    botones->addStretch(1);
    auto *columna = new QVBoxLayout(grupo);
    columna->addWidget(listaplantillas, 1);
    columna->addLayout(botones);
    return grupo;
}

QWidget *agendahorarios::panelPlantilla()
{
    auto *grupo = new QGroupBox(tr("Días y horarios"), this);
    fechadesde = new ui::CampoFecha(grupo);
    fechadesde->setObjectName(QStringLiteral("fechadesde"));
    fechahasta = new ui::CampoFecha(grupo);
    fechahasta->setObjectName(QStringLiteral("fechahasta"));
    auto *desde = new QLabel(tr("Abarca &desde el:"), grupo);
    desde->setBuddy(fechadesde);
    auto *hasta = new QLabel(tr("&hasta el:"), grupo);
    hasta->setBuddy(fechahasta);
    auto *fechas = new QHBoxLayout;
    fechas->addWidget(desde);
    fechas->addWidget(fechadesde);
    fechas->addWidget(hasta);
    fechas->addWidget(fechahasta);
    fechas->addStretch(1);

    auto *columna = new QVBoxLayout(grupo);
    columna->setSpacing(ui::margen);
    columna->addLayout(fechas);
    columna->addWidget(panelDias());

    cantidadsobreturnoshora = limite(grupo, QStringLiteral("cantidadsobreturnoshora"));
    cantidadsobreturnos = limite(grupo, QStringLiteral("cantidadsobreturnos"));
    auto *limites = new QGridLayout;
    limites->setColumnStretch(2, 1);
    auto *porHora = new QLabel(tr("&Sobreturnos en un mismo horario:"), grupo);
    porHora->setBuddy(cantidadsobreturnoshora);
    auto *porDia = new QLabel(tr("Horas extra por día, &fuera de la plantilla:"), grupo);
    porDia->setBuddy(cantidadsobreturnos);
    limites->addWidget(porHora, 0, 0);
    limites->addWidget(cantidadsobreturnoshora, 0, 1);
    limites->addWidget(porDia, 1, 0);
    limites->addWidget(cantidadsobreturnos, 1, 1);
    columna->addLayout(limites);

    sobreturnoshoraresaltar = new QCheckBox(tr("&Resaltar los horarios que tienen sobreturnos"), grupo);
    sobreturnoshoraresaltar->setObjectName(QStringLiteral("sobreturnoshoraresaltar"));
    solosobreturnoshoraplanilla
        = new QCheckBox(tr("En la &planilla del día, imprimir sólo los sobreturnos de cada horario"), grupo);
    solosobreturnoshoraplanilla->setObjectName(QStringLiteral("solosobreturnoshoraplanilla"));
    columna->addWidget(sobreturnoshoraresaltar);
    columna->addWidget(solosobreturnoshoraplanilla);
    return grupo;
}

QWidget *agendahorarios::panelDias()
{
    auto *panel = new QWidget(this);
    auto *grilla = new QGridLayout(panel);
    grilla->setContentsMargins(0, 0, 0, 0);
    grilla->setHorizontalSpacing(ui::espacio);
    grilla->setVerticalSpacing(4);
    grilla->addWidget(new QLabel(tr("Mañana, de / a"), panel), 0, 1, 1, 2);
    grilla->addWidget(new QLabel(tr("Tarde, de / a"), panel), 0, 3, 1, 2);
    grilla->addWidget(new QLabel(tr("Duración"), panel), 0, 5);
    grilla->setColumnStretch(6, 1);

    m_grillaDias = grilla;
    const std::array<const char *, 7> prefijos{"Do", "Lu", "Ma", "Mi", "Ju", "Vi", "Sa"};
    for (size_t d = 0; d < dias.size(); ++d) {
        const QString nombre = nombreDia(int(d));
        const auto hora = [&](const char *sufijo, const QString &cual) {
            auto *campo = new CampoHora(panel);
            campo->setObjectName(QLatin1String(prefijos[d]) + QLatin1String(sufijo));
            campo->setAccessibleName(nombre + u' ' + cual);
            return campo;
        };
        Renglon &renglon = dias[d];
        renglon.nombre = new QLabel(nombre, panel);
        renglon.maDesde = hora("MaDesde", tr("mañana desde"));
        renglon.maHasta = hora("MaHasta", tr("mañana hasta"));
        renglon.taDesde = hora("TaDesde", tr("tarde desde"));
        renglon.taHasta = hora("TaHasta", tr("tarde hasta"));
        renglon.duracion = new QComboBox(panel);
        renglon.duracion->setObjectName(QStringLiteral("durtur%1").arg(d + 1));
        renglon.duracion->setAccessibleName(tr("%1, duración de un turno").arg(nombre));
        for (int minutos = 5; minutos <= 60; minutos += 5)
            renglon.duracion->addItem(tr("%1 min").arg(minutos), minutos);
    }
    return panel;
}

void agendahorarios::ordenarDias(int primerDia)
{
    semana->setPrimerDia(primerDia);
    QWidget *anterior = fechahasta;
    int fila = 1;
    for (const int d : ordenSemana(primerDia)) {
        const Renglon &renglon = dias[size_t(d)];
        int columna = 0;
        for (QWidget *campo :
             {static_cast<QWidget *>(renglon.nombre),
              static_cast<QWidget *>(renglon.maDesde),
              static_cast<QWidget *>(renglon.maHasta),
              static_cast<QWidget *>(renglon.taDesde),
              static_cast<QWidget *>(renglon.taHasta),
              static_cast<QWidget *>(renglon.duracion)}) {
            m_grillaDias->removeWidget(campo);
            m_grillaDias->addWidget(campo, fila, columna++);
            if (campo != renglon.nombre) {
                setTabOrder(anterior, campo);
                anterior = campo;
            }
        }
        ++fila;
    }
}

QWidget *agendahorarios::panelSemana()
{
    auto *grupo = new QGroupBox(tr("La semana con estas horas"), this);
    semana = new VistaSemana(grupo);
    semana->setObjectName(QStringLiteral("semana"));
    total = new QLabel(grupo);
    total->setObjectName(QStringLiteral("total"));
    const auto renglones = [grupo](const QString &nombre) {
        auto *texto = new QLabel(grupo);
        texto->setObjectName(nombre);
        texto->setTextFormat(Qt::PlainText);
        texto->setWordWrap(true);
        return texto;
    };
    fechascompartidas = renglones(QStringLiteral("fechascompartidas"));
    avisos = renglones(QStringLiteral("avisos"));
    QPalette colores = avisos->palette();
    colores.setColor(QPalette::WindowText, ui::color::error());
    avisos->setPalette(colores);
    auto *columna = new QVBoxLayout(grupo);
    columna->addWidget(semana, 1);
    columna->addWidget(total);
    columna->addWidget(fechascompartidas);
    columna->addWidget(avisos);
    return grupo;
}

QWidget *agendahorarios::panelNoLaborables()
{
    auto *grupo = new QGroupBox(tr("Días en que no se atiende"), this);
    listadias = new QListWidget(grupo);
    listadias->setObjectName(QStringLiteral("listadias"));
    // It takes the height that is left, and asks for none of its own: the window has to fit a low screen.
    listadias->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    listadias->setMinimumHeight(6 * listadias->fontMetrics().height());
    dia = new QComboBox(grupo);
    dia->setObjectName(QStringLiteral("dia"));
    std::vector<std::pair<QString, int>> numeros{{QStringLiteral("<Todos los días>"), 0}};
    for (int i = 1; i <= 31; ++i)
        numeros.emplace_back(QString::number(i), i);
    mes = new QComboBox(grupo);
    mes->setObjectName(QStringLiteral("mes"));
    std::vector<std::pair<QString, int>> meses{{QStringLiteral("<De cada mes>"), 0}};
    for (int i = 1; i <= 12; ++i)
        meses.emplace_back(base::nombreMes(i), i);
    anio = new QComboBox(grupo);
    anio->setObjectName(QStringLiteral("anio"));
    ui::ponerEntradas(*dia, numeros);
    ui::ponerEntradas(*mes, meses);
    dia->setCurrentIndex(0);
    mes->setCurrentIndex(0);
    agregardia = ui::boton(grupo, QStringLiteral("agregardia"), tr("&Agregar"), QStringLiteral("list-add"));
    eliminardia = ui::boton(grupo, QStringLiteral("eliminardia"), tr("&Quitar"), QStringLiteral("list-remove"));
    auto *elegida = new QHBoxLayout;
    elegida->setSpacing(4);
    elegida->addWidget(dia, 1);
    elegida->addWidget(mes, 1);
    elegida->addWidget(anio, 1);
    auto *botones = new QHBoxLayout;
    botones->addWidget(agregardia);
    botones->addWidget(eliminardia);
    nolabo = ui::boton(
        grupo, QStringLiteral("nolabo"), tr("&Varias fechas o feriados..."), QStringLiteral("view-calendar"));
    botones->addWidget(nolabo);
    botones->addStretch(1);
    auto *columna = new QVBoxLayout(grupo);
    columna->addLayout(elegida);
    columna->addLayout(botones);
    columna->addWidget(listadias, 1);
    return grupo;
}

} // namespace agenda
