#include "ui/Botones.h"

#include "ui/Iconos.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QToolButton>

namespace ui {

QPushButton *
boton(QWidget *padre, const QString &nombre, const QString &texto, const QString &nombreIcono, const QString &ayuda)
{
    auto *nuevo = new QPushButton(icono(nombreIcono), texto, padre);
    nuevo->setObjectName(nombre);
    nuevo->setToolTip(ayuda);
    // Enter moves on in a form: it is the window that says which button it presses.
    nuevo->setAutoDefault(false);
    return nuevo;
}

QToolButton *flecha(QWidget *padre, const QString &nombre, const QString &signo, const QString &ayuda)
{
    auto *boton = new QToolButton(padre);
    boton->setObjectName(nombre);
    boton->setText(signo);
    boton->setToolTip(ayuda);
    boton->setAccessibleName(ayuda);
    boton->setAutoRaise(true);
    return boton;
}

FinDeFormulario finDeFormulario(QWidget *padre)
{
    FinDeFormulario fin{
        boton(padre, QStringLiteral("guardar"), QStringLiteral("&Guardar"), QStringLiteral("document-save")),
        boton(padre, QStringLiteral("cancelar"), QStringLiteral("&Cancelar"), QStringLiteral("dialog-cancel")),
        new QHBoxLayout};
    fin.fila->addStretch(1);
    fin.fila->addWidget(fin.guardar);
    fin.fila->addWidget(fin.cancelar);
    return fin;
}

} // namespace ui
