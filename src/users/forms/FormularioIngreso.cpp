#include "users/forms/FormularioIngreso.h"

#include "db/Entorno.h"
#include "db/ListaDoctores.h"
#include "ui/Botones.h"
#include "ui/CampoClave.h"
#include "users/Claves.h"
#include "users/Ingreso.h"
#include "users/forms/DialogoDeClave.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace users {

FormularioIngreso::FormularioIngreso(
    db::Entorno &entorno, ui::Ventanas &ventanas, const QString &nombre, const QString &titulo)
    : Ventana(entorno, ventanas, nombre, titulo)
{
    construir();
    setEnter(aceptar);
    alPulsar(aceptar, [this] {
        const auto quien = identificar(this->entorno(), usuarioElegido(), claveactual->text());
        if (quien)
            entrar(*quien);
        else
            aceptado(quien.rechazo());
    });
    connect(cancelar, &QPushButton::clicked, this, &QWidget::close);
    connect(lisusuarios, &QListWidget::itemDoubleClicked, claveactual, qOverload<>(&QWidget::setFocus));
}

void FormularioIngreso::construir()
{
    lisusuarios = new QListWidget(this);
    lisusuarios->setObjectName(QStringLiteral("lisusuarios"));
    lisusuarios->setUniformItemSizes(true);
    lisusuarios->setSpacing(2);
    auto *usuario = new QLabel(tr("&Usuario"), this);
    usuario->setBuddy(lisusuarios);
    claveactual = new ui::CampoClave(this);
    claveactual->setObjectName(QStringLiteral("claveactual"));
    claveactual->setMaxLength(claves::ancho);
    claveactual->installEventFilter(this);
    auto *clave = new QLabel(tr("C&lave"), this);
    clave->setBuddy(claveactual);

    QVBoxLayout *todo = dialogoDeClave(*this, m_pedido);
    todo->addWidget(usuario);
    todo->addWidget(lisusuarios, 1);
    todo->addWidget(clave);
    todo->addWidget(claveactual);
    todo->addWidget(claveactual->avisoMayusculas());
    const Botones botones = botonesDeClave(*this);
    aceptar = botones.aceptar;
    cancelar = botones.cancelar;
    todo->addLayout(botones.fila);
    setMinimumSize(360, 400);
}

void FormularioIngreso::setPedido(const QString &texto) { m_pedido->setText(texto); }

bool FormularioIngreso::preparar(const ui::Pedido &)
{
    claveactual->clear();
    listar(entorno().usuarioActual());
    if (lisusuarios->currentRow() >= 0) {
        claveactual->setFocus();
    } else {
        lisusuarios->setCurrentRow(0);
        lisusuarios->setFocus();
    }
    return true;
}

void FormularioIngreso::refrescar() { listar(usuarioElegido()); }

void FormularioIngreso::listar(int elegido)
{
    lisusuarios->clear();
    for (const db::Doctor &usuario : db::usuarios(conexion())) {
        auto *renglon = new QListWidgetItem(usuario.nombre, lisusuarios);
        renglon->setData(Qt::UserRole, usuario.id);
        if (usuario.id == elegido)
            lisusuarios->setCurrentItem(renglon);
    }
}

int FormularioIngreso::usuarioElegido() const
{
    const QListWidgetItem *elegido = lisusuarios->currentItem();
    return elegido ? elegido->data(Qt::UserRole).toInt() : 0;
}

bool FormularioIngreso::eventFilter(QObject *objeto, QEvent *event)
{
    // The arrows choose the user while the password is being typed.
    if (objeto == claveactual && event->type() == QEvent::KeyPress) {
        const int tecla = static_cast<QKeyEvent *>(event)->key();
        if (tecla == Qt::Key_Up || tecla == Qt::Key_Down || tecla == Qt::Key_PageUp || tecla == Qt::Key_PageDown)
            return QCoreApplication::sendEvent(lisusuarios, event);
    }
    return Ventana::eventFilter(objeto, event);
}

} // namespace users
