#include "agenda/forms/Atajos.h"

#include <QAbstractButton>
#include <QShortcut>

namespace agenda {

void atajoDeBoton(QWidget &ventana, const QKeySequence &tecla, QAbstractButton &boton, bool repite)
{
    auto *atajo = new QShortcut(tecla, &ventana);
    atajo->setContext(Qt::WidgetWithChildrenShortcut);
    atajo->setAutoRepeat(repite);
    QObject::connect(atajo, &QShortcut::activated, &boton, [&boton] { boton.click(); });
}

} // namespace agenda
