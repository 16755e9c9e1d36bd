#include "ui/BarraFormato.h"

#include "ui/Iconos.h"

#include <QColorDialog>
#include <QComboBox>
#include <QEvent>
#include <QFontDialog>
#include <QFrame>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLineEdit>
#include <QPainter>
#include <QShortcut>
#include <QTextEdit>
#include <QTextList>
#include <QToolButton>

namespace ui {

namespace {

constexpr int menorTamano = 4, mayorTamano = 96;

QIcon mancha(const QColor &color)
{
    QPixmap dibujo(32, 32);
    dibujo.fill(Qt::transparent);
    QPainter pintor(&dibujo);
    pintor.setRenderHint(QPainter::Antialiasing);
    pintor.setPen(QPen(QColor(0x80, 0x80, 0x80), 2));
    pintor.setBrush(color);
    pintor.drawEllipse(5, 5, 22, 22);
    return dibujo;
}

std::optional<QColor> preguntarColor(const QColor &actual, QWidget *sobre)
{
    const QColor elegido
        = QColorDialog::getColor(actual, sobre, QStringLiteral("Color"), QColorDialog::DontUseNativeDialog);
    return elegido.isValid() ? std::optional(elegido) : std::nullopt;
}

std::optional<QFont> preguntarLetra(const QFont &actual, QWidget *sobre)
{
    bool aceptada = false;
    const QFont elegida
        = QFontDialog::getFont(&aceptada, actual, sobre, QStringLiteral("Letra"), QFontDialog::DontUseNativeDialog);
    return aceptada ? std::optional(elegida) : std::nullopt;
}

} // namespace

BarraFormato::BarraFormato(QWidget *parent)
    : QWidget(parent)
    , m_elegirColor(preguntarColor)
    , m_elegirLetra(preguntarLetra)
{
    auto *fila = new QHBoxLayout(this);
    fila->setContentsMargins(0, 0, 0, 0);
    fila->setSpacing(1);

    const auto marca = [this](void (QTextCharFormat::*poner)(bool), QToolButton *BarraFormato::*boton) {
        return [this, poner, boton] {
            QTextCharFormat formato;
            (formato.*poner)((this->*boton)->isChecked());
            aplicar(formato);
        };
    };
    negrita
        = agregar(QStringLiteral("negrita"), icono(QStringLiteral("format-text-bold")), tr("Negrita (Ctrl+B)"), [this] {
              QTextCharFormat formato;
              formato.setFontWeight(negrita->isChecked() ? QFont::Bold : QFont::Normal);
              aplicar(formato);
          });
    cursiva = agregar(
        QStringLiteral("cursiva"),
        icono(QStringLiteral("format-text-italic")),
        tr("Cursiva (Ctrl+I)"),
        marca(&QTextCharFormat::setFontItalic, &BarraFormato::cursiva));
    subrayado = agregar(
        QStringLiteral("subrayado"),
        icono(QStringLiteral("format-text-underline")),
        tr("Subrayado (Ctrl+U)"),
        marca(&QTextCharFormat::setFontUnderline, &BarraFormato::subrayado));
    separar();
    izquierda = agregar(
        QStringLiteral("izquierda"),
        icono(QStringLiteral("format-justify-left")),
        tr("A la izquierda (Ctrl+L)"),
        [this] { alinear(Qt::AlignLeft); });
    centrado = agregar(
        QStringLiteral("centrado"), icono(QStringLiteral("format-justify-center")), tr("Centrado (Ctrl+E)"), [this] {
            alinear(Qt::AlignHCenter);
        });
    derecha = agregar(
        QStringLiteral("derecha"), icono(QStringLiteral("format-justify-right")), tr("A la derecha (Ctrl+R)"), [this] {
            alinear(Qt::AlignRight);
        });
    vinetas = agregar(QStringLiteral("vinetas"), icono(QStringLiteral("format-list-unordered")), tr("Viñetas"), [this] {
        ponerVinetas(vinetas->isChecked());
    });
    for (QToolButton *boton : {negrita, cursiva, subrayado, izquierda, centrado, derecha, vinetas})
        boton->setCheckable(true);
    separar();
    negro = color(QStringLiteral("negro"), Qt::black, tr("Negro"));
    rojo = color(QStringLiteral("rojo"), QColor(0xC0, 0, 0), tr("Rojo"));
    verde = color(QStringLiteral("verde"), QColor(0, 0x80, 0), tr("Verde"));
    azul = color(QStringLiteral("azul"), QColor(0, 0, 0xC0), tr("Azul"));
    mascolores
        = agregar(QStringLiteral("mascolores"), icono(QStringLiteral("color-picker")), tr("Más colores..."), [this] {
              pedirColor();
          });
    separar();
    letra = agregar(QStringLiteral("letra"), icono(QStringLiteral("font")), tr("Letra..."), [this] { pedirLetra(); });
    tama = new QComboBox(this);
    tama->setObjectName(QStringLiteral("tama"));
    tama->setToolTip(tr("Tamaño de la letra, en puntos"));
    tama->setAccessibleName(tama->toolTip());
    tama->setEditable(true);
    tama->setInsertPolicy(QComboBox::NoInsert);
    tama->setValidator(new QIntValidator(menorTamano, mayorTamano, tama));
    for (const int puntos : {8, 9, 10, 11, 12, 14, 16, 18, 20, 24, 28, 36, 48})
        tama->addItem(QString::number(puntos));
    tama->setCurrentText(QStringLiteral("10"));
    fila->addWidget(tama);
    fila->addStretch(1);
    connect(tama, &QComboBox::activated, this, &BarraFormato::ponerTamano);
    connect(tama->lineEdit(), &QLineEdit::returnPressed, this, &BarraFormato::ponerTamano);
}

QToolButton *BarraFormato::agregar(
    const QString &nombre, const QIcon &dibujo, const QString &ayuda, const std::function<void()> &accion)
{
    auto *boton = new QToolButton(this);
    boton->setObjectName(nombre);
    boton->setIcon(dibujo);
    boton->setToolTip(ayuda);
    boton->setAccessibleName(ayuda);
    boton->setAutoRaise(true);
    // A click leaves the cursor in the sheet.
    boton->setFocusPolicy(Qt::TabFocus);
    layout()->addWidget(boton);
    connect(boton, &QToolButton::clicked, this, [this, accion] {
        if (m_hoja && !m_hoja->isReadOnly())
            accion();
        actualizar();
    });
    return boton;
}

QToolButton *BarraFormato::color(const QString &nombre, const QColor &suyo, const QString &ayuda)
{
    return agregar(nombre, mancha(suyo), ayuda, [this, suyo] {
        QTextCharFormat formato;
        formato.setForeground(suyo);
        aplicar(formato);
    });
}

void BarraFormato::separar()
{
    auto *raya = new QFrame(this);
    raya->setFrameShape(QFrame::VLine);
    raya->setFrameShadow(QFrame::Sunken);
    layout()->addWidget(raya);
}

void BarraFormato::servir(QTextEdit *hoja)
{
    hoja->installEventFilter(this);
    const auto mirar = [this, hoja] {
        if (hoja == m_hoja)
            actualizar();
    };
    connect(hoja, &QTextEdit::currentCharFormatChanged, this, mirar);
    connect(hoja, &QTextEdit::cursorPositionChanged, this, mirar);
    atajo(hoja, QKeySequence::Bold, negrita);
    atajo(hoja, QKeySequence::Italic, cursiva);
    atajo(hoja, QKeySequence::Underline, subrayado);
    atajo(hoja, Qt::CTRL | Qt::Key_L, izquierda);
    atajo(hoja, Qt::CTRL | Qt::Key_E, centrado);
    atajo(hoja, Qt::CTRL | Qt::Key_R, derecha);
    if (!m_hoja) {
        m_hoja = hoja;
        actualizar();
    }
}

void BarraFormato::atajo(QTextEdit *hoja, const QKeySequence &tecla, QToolButton *boton)
{
    auto *suyo = new QShortcut(tecla, hoja);
    suyo->setContext(Qt::WidgetShortcut);
    connect(suyo, &QShortcut::activated, boton, [boton] { boton->click(); });
}

bool BarraFormato::eventFilter(QObject *objeto, QEvent *event)
{
    if (event->type() == QEvent::FocusIn)
        if (auto *hoja = qobject_cast<QTextEdit *>(objeto); hoja && hoja != m_hoja) {
            m_hoja = hoja;
            actualizar();
        }
    return QWidget::eventFilter(objeto, event);
}

void BarraFormato::aplicar(const QTextCharFormat &formato) { m_hoja->mergeCurrentCharFormat(formato); }

void BarraFormato::alinear(Qt::Alignment alineacion) { m_hoja->setAlignment(alineacion); }

void BarraFormato::ponerVinetas(bool si)
{
    QTextCursor cursor = m_hoja->textCursor();
    if (si) {
        cursor.createList(QTextListFormat::ListDisc);
        return;
    }
    cursor.beginEditBlock();
    const int fin = cursor.selectionEnd();
    for (QTextBlock bloque = m_hoja->document()->findBlock(cursor.selectionStart());
         bloque.isValid() && bloque.position() <= fin;
         bloque = bloque.next())
        if (QTextList *lista = bloque.textList()) {
            lista->remove(bloque);
            QTextBlockFormat sinSangria = bloque.blockFormat();
            sinSangria.setIndent(0);
            QTextCursor(bloque).setBlockFormat(sinSangria);
        }
    cursor.endEditBlock();
}

void BarraFormato::pedirColor()
{
    const QTextCharFormat actual = m_hoja->currentCharFormat();
    const QColor tinta = actual.hasProperty(QTextFormat::ForegroundBrush) ? actual.foreground().color() : Qt::black;
    const QPointer<QTextEdit> hoja(m_hoja);
    const auto elegido = m_elegirColor(tinta, window());
    if (!elegido || !hoja)
        return;
    QTextCharFormat formato;
    formato.setForeground(*elegido);
    hoja->mergeCurrentCharFormat(formato);
}

void BarraFormato::pedirLetra()
{
    const QPointer<QTextEdit> hoja(m_hoja);
    QFont actual = hoja->currentFont();
    actual.setLetterSpacing(QFont::PercentageSpacing, 100);
    const auto elegida = m_elegirLetra(actual, window());
    if (!elegida || !hoja)
        return;
    QTextCharFormat formato;
    formato.setFontFamilies({elegida->family()});
    formato.setFontPointSize(qBound(double(menorTamano), elegida->pointSizeF(), double(mayorTamano)));
    formato.setFontWeight(elegida->weight() >= QFont::DemiBold ? QFont::Bold : QFont::Normal);
    formato.setFontItalic(elegida->italic());
    formato.setFontUnderline(elegida->underline());
    formato.setFontStrikeOut(elegida->strikeOut());
    hoja->mergeCurrentCharFormat(formato);
}

void BarraFormato::ponerTamano()
{
    const int puntos = tama->currentText().toInt();
    if (!m_hoja || m_hoja->isReadOnly() || puntos < menorTamano || puntos > mayorTamano)
        return;
    QTextCharFormat formato;
    formato.setFontPointSize(puntos);
    aplicar(formato);
    m_hoja->setFocus(Qt::OtherFocusReason);
}

void BarraFormato::actualizar()
{
    if (!m_hoja)
        return;
    const QTextCharFormat formato = m_hoja->currentCharFormat();
    const Qt::Alignment lado = m_hoja->alignment();
    negrita->setChecked(formato.fontWeight() >= QFont::DemiBold);
    cursiva->setChecked(formato.fontItalic());
    subrayado->setChecked(formato.fontUnderline());
    centrado->setChecked(lado & Qt::AlignHCenter);
    derecha->setChecked(lado & Qt::AlignRight);
    izquierda->setChecked(!(lado & (Qt::AlignHCenter | Qt::AlignRight | Qt::AlignJustify)));
    vinetas->setChecked(m_hoja->textCursor().currentList() != nullptr);
    if (!tama->hasFocus())
        tama->setCurrentText(QString::number(qRound(m_hoja->currentFont().pointSizeF())));
}

} // namespace ui
