// What leaves the window "agendas": the day sheet, the attended list, the calendar file, the list of who to remind.

#include "agenda/PlanillaDia.h"
#include "agenda/forms/CalendarioMes.h"
#include "agenda/forms/agendas.h"
#include "base/Mensajes.h"
#include "db/Entorno.h"
#include "printing/forms/Ver.h"
#include "ui/Botones.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QPushButton>

namespace agenda {

QWidget *agendas::barraSalidas()
{
    auto *barra = new QWidget(this);
    auto *fila = new QHBoxLayout(barra);
    fila->setContentsMargins(0, 0, 0, 0);
    fila->setSpacing(4);
    const auto poner = [&](const char *nombre, const QString &texto, const char *icono, const QString &ayuda) {
        QPushButton *boton = ui::boton(barra, QLatin1String(nombre), texto, QLatin1String(icono), ayuda);
        fila->addWidget(boton);
        return boton;
    };
    imprimir = poner(
        "imprimir",
        tr("&Imprimir"),
        "document-print",
        tr("Planilla del día, para imprimirla o guardarla como PDF (Ctrl+P)"));
    plantillatur = poner(
        "plantillatur",
        tr("Aten&didos"),
        "edit-copy",
        tr("Copiar en el portapapeles los turnos atendidos del día, para pegarlos en una planilla"));
    manana = poner(
        "manana", tr("A&visar"), "phone", tr("Turnos de mañana: a quiénes avisar, con sus teléfonos y el mensaje"));
    exportarics = poner(
        "exportarics", tr("Exportar t&urnos"), "view-calendar", tr("Exportar turnos a un archivo de calendario (ICS)"));

    alPulsar(
        imprimir, [this] { printing::ver(ventanas(), planillaDia(entorno(), m_doctor, fechadia->fecha()), this); });
    alPulsar(plantillatur, [this] { copiarAtendidos(); });
    const auto abrir = [this](const QString &ventana) {
        ventanas().abrir(ventana, {{{QStringLiteral("doctor"), m_doctor}}, {}}, this);
    };
    alPulsar(exportarics, [abrir] { abrir(QStringLiteral("agendaexportar")); });
    alPulsar(manana, [abrir] { abrir(QStringLiteral("agendamanana")); });
    return barra;
}

void agendas::copiarAtendidos()
{
    const auto texto = plantillaAtendidos(conexion(), m_doctor, fechadia->fecha());
    // What the clipboard holds is not given up for a line of titles.
    if (texto)
        QApplication::clipboard()->setText(*texto);
    entorno().mensajes().informar(
        QStringLiteral("Aviso"),
        texto ? QStringLiteral("Se copió en el portapapeles la plantilla de 'turnos atendidos' del día seleccionado.")
              : tr("No hay turnos atendidos en el día seleccionado."));
}

} // namespace agenda
