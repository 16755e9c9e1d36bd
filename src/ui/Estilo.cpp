#include "ui/Estilo.h"

#include "ui/Iconos.h"

#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QWheelEvent>

namespace ui {

namespace {

/// Wheel over a field without focus scrolls the form around it instead.
class RuedaQuieta : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *objeto, QEvent *event) override
    {
        if (event->type() != QEvent::Wheel)
            return false;
        auto *campo = qobject_cast<QWidget *>(objeto);
        const bool cambia = qobject_cast<QComboBox *>(campo) || qobject_cast<QAbstractSpinBox *>(campo);
        if (!cambia || campo->hasFocus())
            return false;
        event->ignore();
        return true;
    }
};

/// The style of all controls, with the program's own icons in message boxes.
class Estilo : public QProxyStyle
{
public:
    Estilo()
        : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion")))
    {
    }

    QIcon standardIcon(StandardPixmap cual, const QStyleOption *opcion, const QWidget *pieza) const override
    {
        switch (cual) {
        case SP_MessageBoxInformation: return icono(QStringLiteral("dialog-information"));
        case SP_MessageBoxWarning: return icono(QStringLiteral("dialog-warning"));
        case SP_MessageBoxCritical: return icono(QStringLiteral("dialog-error"));
        case SP_MessageBoxQuestion: return icono(QStringLiteral("dialog-question"));
        default: return QProxyStyle::standardIcon(cual, opcion, pieza);
        }
    }
};

struct Tonos {
    const char *ventana, *base, *alterno, *texto, *tenue, *boton, *resalte, *textoResalte, *borde, *enlace;
};

constexpr Tonos claro{
    "#f3f5f6", "#ffffff", "#f6f8fa", "#1f2933", "#66727f", "#e9edf0", "#2f7fb5", "#ffffff", "#c3ccd4", "#1c6ca1"};
constexpr Tonos oscuro{
    "#2d343b", "#1d2227", "#22282e", "#e4e8eb", "#a2acb5", "#3b444d", "#3481b8", "#ffffff", "#566270", "#6db3e2"};

QPalette paletaDe(const Tonos &t)
{
    QPalette paleta;
    paleta.setColor(QPalette::Window, QColor(t.ventana));
    paleta.setColor(QPalette::WindowText, QColor(t.texto));
    paleta.setColor(QPalette::Base, QColor(t.base));
    paleta.setColor(QPalette::AlternateBase, QColor(t.alterno));
    paleta.setColor(QPalette::Text, QColor(t.texto));
    paleta.setColor(QPalette::PlaceholderText, QColor(t.tenue));
    paleta.setColor(QPalette::Button, QColor(t.boton));
    paleta.setColor(QPalette::ButtonText, QColor(t.texto));
    paleta.setColor(QPalette::ToolTipBase, QColor(t.base));
    paleta.setColor(QPalette::ToolTipText, QColor(t.texto));
    paleta.setColor(QPalette::Highlight, QColor(t.resalte));
    paleta.setColor(QPalette::HighlightedText, QColor(t.textoResalte));
    paleta.setColor(QPalette::Link, QColor(t.enlace));
    paleta.setColor(QPalette::Mid, QColor(t.borde));
    // The frames of the windows inside are shaded with these.
    paleta.setColor(QPalette::Light, QColor(t.boton).lighter(115));
    paleta.setColor(QPalette::Midlight, QColor(t.boton).lighter(107));
    paleta.setColor(QPalette::Dark, QColor(t.borde).darker(130));
    paleta.setColor(QPalette::Shadow, QColor(t.borde).darker(200));
    for (const QPalette::ColorRole papel : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        paleta.setColor(QPalette::Disabled, papel, QColor(t.tenue));
    paleta.setColor(QPalette::Disabled, QPalette::Base, QColor(t.ventana));
    paleta.setColor(QPalette::Disabled, QPalette::Highlight, QColor(t.borde));
    return paleta;
}

} // namespace

QColor color::error() { return paletaOscura() ? QColor(0xff, 0x8a, 0x80) : QColor(0xb3, 0x26, 0x1e); }

QColor color::tenue() { return QColor((paletaOscura() ? oscuro : claro).tenue); }

void aplicarEstilo(QApplication &aplicacion)
{
    const bool noche = paletaOscura();
    const Tonos &t = noche ? oscuro : claro;
    QApplication::setStyle(new Estilo);
    QApplication::setPalette(paletaDe(t));

    QFont letra = QApplication::font();
    letra.setPointSizeF(10);
    QApplication::setFont(letra);

    // Only what the palette cannot say: the style itself paints all controls.
    aplicacion.setStyleSheet(QStringLiteral(R"(
        QLineEdit[invalido="true"] { border: 1px solid %1; border-radius: 2px; padding: 2px; }
        QToolTip { border: 1px solid %2; padding: 3px; }
        QStatusBar::item { border: none; }
        QGroupBox { font-weight: bold; }
    )")
                                 .arg(color::error().name(), QLatin1String(t.borde)));
    aplicacion.installEventFilter(new RuedaQuieta(&aplicacion));
}

} // namespace ui
