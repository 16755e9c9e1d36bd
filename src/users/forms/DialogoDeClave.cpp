#include "users/forms/DialogoDeClave.h"

#include "ui/Botones.h"
#include "ui/Estilo.h"
#include "ui/Iconos.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace users {

QVBoxLayout *dialogoDeClave(QWidget &ventana, QLabel *&pedido)
{
    auto *dibujo = new QLabel(&ventana);
    dibujo->setPixmap(ui::icono(QStringLiteral("dialog-password")).pixmap(40, 40));
    pedido = new QLabel(&ventana);
    pedido->setTextFormat(Qt::PlainText);
    pedido->setWordWrap(true);
    auto *arriba = new QHBoxLayout;
    arriba->setSpacing(2 * ui::espacio);
    arriba->addWidget(dibujo);
    arriba->addWidget(pedido, 1);

    auto *todo = new QVBoxLayout(&ventana);
    todo->setContentsMargins(2 * ui::margen, 2 * ui::margen, 2 * ui::margen, 2 * ui::margen);
    todo->setSpacing(ui::espacio);
    todo->addLayout(arriba);
    todo->addSpacing(ui::espacio);
    return todo;
}

Botones botonesDeClave(QWidget &ventana)
{
    Botones botones{
        ui::boton(&ventana, QStringLiteral("aceptar"), QStringLiteral("&Aceptar"), QStringLiteral("dialog-ok")),
        ui::boton(&ventana, QStringLiteral("cancelar"), QStringLiteral("&Cancelar"), QStringLiteral("dialog-cancel")),
        new QHBoxLayout};
    botones.fila->addStretch(1);
    botones.fila->addWidget(botones.aceptar);
    botones.fila->addWidget(botones.cancelar);
    return botones;
}

} // namespace users
