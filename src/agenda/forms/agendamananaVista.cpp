// How the window "agendamanana" is laid out.

#include "agenda/forms/agendamanana.h"
#include "ui/Botones.h"
#include "ui/CampoFecha.h"
#include "ui/Estilo.h"
#include "ui/Grilla.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

namespace agenda {

namespace {

QLabel *rotulo(QWidget *padre, const QString &texto, QWidget *deQuien)
{
    auto *etiqueta = new QLabel(texto, padre);
    etiqueta->setBuddy(deQuien);
    return etiqueta;
}

} // namespace

void agendamanana::construir()
{
    lisdocto = new QComboBox(this);
    lisdocto->setObjectName(QStringLiteral("lisdocto"));
    lisdocto->setMinimumWidth(240);
    fecha = new ui::CampoFecha(this);
    fecha->setObjectName(QStringLiteral("fecha"));
    fecha->setFixedWidth(130);
    estado = new QLabel(this);
    estado->setObjectName(QStringLiteral("estado"));
    estado->setTextFormat(Qt::PlainText);

    auto *arriba = new QHBoxLayout;
    arriba->setSpacing(ui::espacio);
    arriba->addWidget(rotulo(this, tr("&Profesional:"), lisdocto));
    arriba->addWidget(lisdocto);
    arriba->addSpacing(ui::margen);
    arriba->addWidget(rotulo(this, tr("&Fecha:"), fecha));
    arriba->addWidget(fecha);
    arriba->addStretch(1);

    lista = new ui::Grilla(
        QStringLiteral("lista"),
        QStringLiteral("|^Hora |<Profesional           |<Paciente                   |<Teléfonos"
                       "                       |<Número completo   "),
        this);

    imprimir = ui::boton(this, QStringLiteral("imprimir"), tr("&Imprimir"), QStringLiteral("document-print"));
    exportarlista
        = ui::boton(this, QStringLiteral("exportarlista"), tr("E&xportar..."), QStringLiteral("document-export"));
    exportarlista->setToolTip(tr("Escribir la lista, con los mensajes, en una planilla (CSV)"));
    copiarlista = ui::boton(this, QStringLiteral("copiarlista"), tr("Copiar &lista"), QStringLiteral("edit-copy"));
    auto *debajo = new QHBoxLayout;
    debajo->setSpacing(ui::espacio);
    debajo->addWidget(estado, 1);
    debajo->addWidget(copiarlista);
    debajo->addWidget(exportarlista);
    debajo->addWidget(imprimir);

    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->setSpacing(ui::espacio);
    todo->addLayout(arriba);
    todo->addWidget(lista, 1);
    todo->addLayout(debajo);
    todo->addWidget(panelMensajes());
    resize(1000, 640);
}

QWidget *agendamanana::panelMensajes()
{
    auto *panel = new QWidget(this);
    const auto texto = [panel](const char *nombre) {
        auto *campo = new QPlainTextEdit(panel);
        campo->setObjectName(QLatin1String(nombre));
        campo->setTabChangesFocus(true);
        campo->setFixedHeight(6 * campo->fontMetrics().lineSpacing());
        return campo;
    };
    modelo = texto("modelo");
    modelo->setToolTip(tr("Se reemplazan: %1. Queda guardado en esta computadora.")
                           .arg(marcadoresDeAviso().join(QStringLiteral(", "))));
    mensaje = texto("mensaje");
    mensaje->setReadOnly(true);

    restaurar = ui::boton(panel, QStringLiteral("restaurar"), tr("Modelo ori&ginal"), QStringLiteral("edit-undo"));
    copiarmensaje
        = ui::boton(panel, QStringLiteral("copiarmensaje"), tr("&Copiar mensaje"), QStringLiteral("edit-copy"));
    copiarmensaje->setToolTip(tr("Copiar el mensaje en el portapapeles (Enter en la lista)"));
    abrirenlace
        = ui::boton(panel, QStringLiteral("abrirenlace"), tr("Abrir &WhatsApp"), QStringLiteral("dialog-messages"));
    abrirenlace->setToolTip(tr("Abrir la conversación en la aplicación de esta computadora, con el mensaje escrito. No "
                               "se envía nada hasta que usted lo haga."));

    auto *marcadores = new QLabel(tr("Se reemplazan: %1").arg(marcadoresDeAviso().join(QStringLiteral("  "))), panel);
    marcadores->setTextFormat(Qt::PlainText);
    marcadores->setWordWrap(true);
    QPalette tenue = marcadores->palette();
    tenue.setColor(QPalette::WindowText, ui::color::tenue());
    marcadores->setPalette(tenue);

    auto *izquierda = new QHBoxLayout;
    izquierda->addWidget(marcadores, 1);
    izquierda->addWidget(restaurar);
    auto *derecha = new QHBoxLayout;
    derecha->setSpacing(ui::espacio);
    derecha->addStretch(1);
    derecha->addWidget(copiarmensaje);
    derecha->addWidget(abrirenlace);

    auto *grilla = new QGridLayout(panel);
    grilla->setContentsMargins(0, 0, 0, 0);
    grilla->setHorizontalSpacing(ui::margen);
    grilla->setVerticalSpacing(ui::espacio);
    grilla->addWidget(rotulo(panel, tr("&Modelo del mensaje:"), modelo), 0, 0);
    grilla->addWidget(rotulo(panel, tr("Mensaje para el paci&ente elegido:"), mensaje), 0, 1);
    grilla->addWidget(modelo, 1, 0);
    grilla->addWidget(mensaje, 1, 1);
    grilla->addLayout(izquierda, 2, 0);
    grilla->addLayout(derecha, 2, 1);
    grilla->setColumnStretch(0, 1);
    grilla->setColumnStretch(1, 1);
    return panel;
}

} // namespace agenda
