#include "Escena.h"

#include "Camara.h"
#include "app/forms/Composicion.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QLineEdit>

namespace pantallas {

Escena::Escena(Consultorio &consultorio)
    : m_consultorio(consultorio)
{
    app::registrarVentanas(consultorio, m_ventanas);
    m_marco = std::make_unique<app::sistema>(consultorio, consultorio, m_ventanas);
    m_marco->setGeometry(0, 0, 1280, 800);
    QCursor::setPos(700, 799); // over nothing that would light up
    m_marco->show();
    m_marco->activateWindow();
    asentar();
}

void Escena::pulsar(const QString &ventana, const QString &nombre)
{
    auto *boton = control<QAbstractButton>(ventana, nombre);
    if (boton && !boton->isEnabled())
        m_problemas << QStringLiteral("%1 de %2 no se puede pulsar").arg(nombre, ventana);
    else if (boton)
        boton->click();
    asentar();
}

void Escena::escribir(const QString &ventana, const QString &nombre, const QString &texto)
{
    if (auto *campo = control<QLineEdit>(ventana, nombre)) {
        campo->setFocus();
        campo->setText(texto);
    }
}

void Escena::tecla(const QString &ventana, const QString &nombre, Qt::Key cual)
{
    if (auto *campo = control(ventana, nombre)) {
        QKeyEvent abajo(QEvent::KeyPress, cual, Qt::NoModifier);
        QApplication::sendEvent(campo, &abajo);
    }
    asentar();
}

void Escena::elegir(const QString &ventana, const QString &nombre, int columna, const QString &texto)
{
    auto *grilla = control<ui::Grilla>(ventana, nombre);
    if (!grilla)
        return;
    for (int fila = 0; fila < grilla->modelo().rowCount(); ++fila)
        if (grilla->modelo().index(fila, columna).data().toString() == texto) {
            grilla->elegirFila(fila);
            asentar();
            return;
        }
    m_problemas << QStringLiteral("no hay %1 en %2 de %3").arg(texto, nombre, ventana);
}

void Escena::abrirAgenda(const QString &hora)
{
    pulsar({}, QStringLiteral("menagendas"));
    elegir(QStringLiteral("agendas"), QStringLiteral("lista"), 0, hora);
}

std::function<void(Escena &)> sobreElMarco(const QString &nombre)
{
    return [nombre](Escena &e) { e.ventanas().abrir(nombre, {}, &e.marco()); };
}

} // namespace pantallas
