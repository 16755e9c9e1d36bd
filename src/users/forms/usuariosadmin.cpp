#include "users/forms/usuariosadmin.h"

#include "db/Entorno.h"
#include "ui/CampoClave.h"
#include "users/Claves.h"
#include "users/Puerta.h"
#include "users/forms/DialogoDeClave.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace users {

usuariosadmin::usuariosadmin(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("usuariosadmin"), tr("Clave de Administrador"))
{
    QLabel *pedido = nullptr;
    QVBoxLayout *todo = dialogoDeClave(*this, pedido);
    pedido->setText(tr("La configuración se abre con la clave de un usuario administrador."));
    claveactual = new ui::CampoClave(this);
    claveactual->setObjectName(QStringLiteral("claveactual"));
    claveactual->setMaxLength(claves::ancho);
    auto *clave = new QLabel(tr("C&lave"), this);
    clave->setBuddy(claveactual);
    todo->addWidget(clave);
    todo->addWidget(claveactual);
    todo->addWidget(claveactual->avisoMayusculas());
    todo->addStretch(1);
    const Botones botones = botonesDeClave(*this);
    aceptar = botones.aceptar;
    cancelar = botones.cancelar;
    todo->addLayout(botones.fila);
    setMinimumSize(360, 200);

    setEnter(aceptar);
    alPulsar(aceptar, [this] { pasar(); });
    connect(cancelar, &QPushButton::clicked, this, &QWidget::close);
}

bool usuariosadmin::preparar(const ui::Pedido &)
{
    claveactual->clear();
    claveactual->setFocus();
    return true;
}

void usuariosadmin::pasar()
{
    const auto administrador = puerta::pasar(conexion(), claveactual->text());
    if (administrador)
        terminar({{QStringLiteral("administrador"), *administrador}});
    else
        aceptado(administrador.rechazo());
}

} // namespace users
