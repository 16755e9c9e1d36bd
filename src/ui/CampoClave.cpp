#include "ui/CampoClave.h"

#include "ui/Iconos.h"

#include <QAction>
#include <QKeyEvent>
#include <QLabel>

namespace ui {

CampoClave::CampoClave(QWidget *parent)
    : QLineEdit(parent)
    , m_ojo(addAction(icono(QStringLiteral("password-show-on")), TrailingPosition))
{
    setInputMethodHints(Qt::ImhHiddenText | Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase | Qt::ImhSensitiveData);
    m_ojo->setCheckable(true);
    m_ojo->setShortcut(QKeySequence(Qt::ALT | Qt::Key_V));
    m_ojo->setShortcutContext(Qt::WidgetShortcut);
    connect(m_ojo, &QAction::toggled, this, &CampoClave::mostrarClave);
    mostrarClave(false);
}

void CampoClave::mostrarClave(bool seVe)
{
    setEchoMode(seVe ? Normal : Password);
    m_ojo->setIcon(icono(seVe ? QStringLiteral("password-show-off") : QStringLiteral("password-show-on")));
    m_ojo->setText(seVe ? tr("Ocultar la clave") : tr("Mostrar la clave"));
    m_ojo->setToolTip(tr("%1 (Alt+V)").arg(m_ojo->text()));
}

QLabel *CampoClave::avisoMayusculas()
{
    auto *aviso = new QLabel(tr("Las mayúsculas están fijas (Bloq Mayús)."), this);
    aviso->setObjectName(QStringLiteral("avisomayusculas"));
    QSizePolicy politica = aviso->sizePolicy();
    politica.setRetainSizeWhenHidden(true);
    aviso->setSizePolicy(politica);
    aviso->setVisible(m_mayusculas);
    connect(this, &CampoClave::mayusculasCambiadas, aviso, &QWidget::setVisible);
    return aviso;
}

void CampoClave::keyPressEvent(QKeyEvent *event)
{
    const QString texto = event->text();
    const auto conOtras = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    if (event->key() == Qt::Key_CapsLock) {
        notar(false); // on or off from here: the next letter tells
    } else if (texto.size() == 1 && !conOtras && texto.front().isUpper() != texto.front().isLower()) {
        notar(texto.front().isUpper() != event->modifiers().testFlag(Qt::ShiftModifier));
    }
    QLineEdit::keyPressEvent(event);
    if (text().isEmpty())
        notar(false);
}

void CampoClave::notar(bool fijas)
{
    if (std::exchange(m_mayusculas, fijas) != fijas)
        emit mayusculasCambiadas(fijas);
}

} // namespace ui
