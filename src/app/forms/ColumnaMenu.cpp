#include "app/forms/ColumnaMenu.h"

#include "ui/Iconos.h"

#include <QKeyEvent>
#include <QScrollBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace app {

namespace {

QString conTecla(const BotonMenu &boton)
{
    QString texto = boton.titulo;
    const qsizetype lugar = texto.indexOf(boton.tecla, 0, Qt::CaseInsensitive);
    return lugar < 0 ? texto : texto.insert(lugar, u'&');
}

} // namespace

ColumnaMenu::ColumnaMenu(QWidget *parent)
    : QScrollArea(parent)
{
    setObjectName(QStringLiteral("menu"));
    setFrameShape(NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);

    auto *columna = new QWidget;
    auto *caja = new QVBoxLayout(columna);
    caja->setContentsMargins(4, 4, 4, 4);
    caja->setSpacing(1);
    for (const BotonMenu &boton : menuPrincipal()) {
        auto *pieza = new QToolButton(columna);
        pieza->setObjectName(boton.nombre);
        pieza->setText(conTecla(boton));
        pieza->setShortcut({}); // see setTeclas()
        pieza->setAccessibleName(boton.titulo);
        pieza->setToolTip(boton.ayuda);
        pieza->setIcon(ui::icono(boton.icono));
        pieza->setIconSize(QSize(24, 24));
        pieza->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        pieza->setAutoRaise(true);
        pieza->setFocusPolicy(Qt::TabFocus);
        pieza->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
        pieza->setMinimumHeight(34);
        pieza->installEventFilter(this);
        connect(pieza, &QToolButton::clicked, this, [this, &boton, este = m_botones.size()] {
            m_ultimo = este;
            emit pulsado(boton);
        });
        caja->addWidget(pieza);
        m_botones.push_back(pieza);
    }
    caja->addStretch();
    setWidget(columna);
    setFixedWidth(columna->sizeHint().width() + verticalScrollBar()->sizeHint().width());
}

void ColumnaMenu::setTeclas(bool activas)
{
    for (QToolButton *boton : m_botones)
        boton->setShortcut(activas ? QKeySequence::mnemonic(boton->text()) : QKeySequence());
}

void ColumnaMenu::enfocar() { m_botones[m_ultimo]->setFocus(Qt::ShortcutFocusReason); }

bool ColumnaMenu::eventFilter(QObject *objeto, QEvent *event)
{
    const auto suyo = std::find(m_botones.begin(), m_botones.end(), objeto);
    if (suyo == m_botones.end())
        return QScrollArea::eventFilter(objeto, event);
    if (event->type() == QEvent::FocusIn) {
        m_ultimo = size_t(suyo - m_botones.begin());
        ensureWidgetVisible(*suyo, 0, 4);
        return false;
    }
    if (event->type() != QEvent::KeyPress)
        return false;

    const auto *tecla = static_cast<QKeyEvent *>(event);
    const auto n = m_botones.size();
    const size_t actual = size_t(suyo - m_botones.begin());
    switch (tecla->key()) {
    case Qt::Key_Down: m_botones[(actual + 1) % n]->setFocus(Qt::TabFocusReason); return true;
    case Qt::Key_Up: m_botones[(actual + n - 1) % n]->setFocus(Qt::BacktabFocusReason); return true;
    case Qt::Key_Home: m_botones.front()->setFocus(Qt::TabFocusReason); return true;
    case Qt::Key_End: m_botones.back()->setFocus(Qt::BacktabFocusReason); return true;
    case Qt::Key_Return:
    case Qt::Key_Enter: m_botones[actual]->click(); return true;
    default: break;
    }
    if (tecla->modifiers() != Qt::NoModifier || tecla->text().size() != 1)
        return false;
    const QChar letra = tecla->text().front().toUpper();
    for (size_t i = 0; i < n; ++i)
        if (menuPrincipal()[i].tecla == letra) {
            m_botones[i]->setFocus(Qt::ShortcutFocusReason);
            m_botones[i]->click();
            return true;
        }
    return false;
}

} // namespace app
