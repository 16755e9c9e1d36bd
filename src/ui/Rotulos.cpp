#include "ui/Rotulos.h"

#include <QLabel>

namespace ui {

QLabel *rotuloFuerte(QWidget *padre, const QString &nombre, double escala)
{
    auto *rotulo = new QLabel(padre);
    rotulo->setObjectName(nombre);
    rotulo->setTextFormat(Qt::PlainText);
    QFont letra = rotulo->font();
    letra.setBold(true);
    letra.setPointSizeF(letra.pointSizeF() * escala);
    rotulo->setFont(letra);
    return rotulo;
}

} // namespace ui
