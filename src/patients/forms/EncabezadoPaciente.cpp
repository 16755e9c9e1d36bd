#include "patients/forms/EncabezadoPaciente.h"

#include "ui/Estilo.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

namespace patients {

namespace {

// The same by day and by night: what warns must look alike everywhere.
constexpr QRgb rojo = qRgb(0xb3, 0x1b, 0x1b);
constexpr QRgb ambar = qRgb(0xff, 0xd9, 0x66);
constexpr QRgb tinta = qRgb(0x33, 0x28, 0x00);
constexpr QRgb gris = qRgb(0x5f, 0x6a, 0x75);

constexpr int letrasALaVista = 220;
constexpr int renglonesALaVista = 2;

QLabel *rotulo(const char *nombre, QWidget *parent)
{
    auto *nuevo = new QLabel(parent);
    nuevo->setObjectName(QLatin1String(nombre));
    nuevo->setTextFormat(Qt::PlainText);
    nuevo->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return nuevo;
}

/// The beginning of a text that is too long for a band.
QString comienzo(const QString &texto)
{
    const QString renglones = texto.section(u'\n', 0, renglonesALaVista - 1);
    return renglones.size() > letrasALaVista ? renglones.left(letrasALaVista) : renglones;
}

} // namespace

EncabezadoPaciente::EncabezadoPaciente(QWidget *parent)
    : QFrame(parent)
    , nombre(new RotuloCorto(QStringLiteral("nombre"), Qt::ElideRight, this))
    , datos(rotulo("datos", this))
    // The number of the affiliate stands at the end: what is long is the name before it.
    , cobertura(new RotuloCorto(QStringLiteral("coberturapaciente"), Qt::ElideMiddle, this))
    , inactivo(rotulo("inactivo", this))
    , alertas(new BandaAviso(QStringLiteral("bandaalertas"), tr("ALERTAS:"), rojo, Qt::white, this))
    , notas(new BandaAviso(QStringLiteral("bandanotas"), tr("Notas:"), ambar, tinta, this))
    , eliminado(new BandaAviso(QStringLiteral("bandaeliminado"), QString(), rojo, Qt::white, this))
{
    QFont grande = nombre->font();
    grande.setPointSizeF(grande.pointSizeF() + 4);
    grande.setBold(true);
    nombre->setFont(grande);
    inactivo->setStyleSheet(QStringLiteral("background:%1; color:white; font-weight:bold; padding:2px 8px;"
                                           " border-radius:3px;")
                                .arg(QColor(gris).name()));
    inactivo->hide();

    auto *fila = new QHBoxLayout;
    fila->setSpacing(10);
    fila->addWidget(nombre);
    fila->addWidget(datos);
    fila->addWidget(cobertura);
    fila->addStretch(1);
    fila->addWidget(inactivo);
    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(0, 0, 0, 0);
    todo->setSpacing(4);
    todo->addLayout(fila);
    for (BandaAviso *banda : {eliminado, alertas, notas})
        todo->addWidget(banda);
}

void EncabezadoPaciente::mostrar(const ResumenPaciente &resumen)
{
    nombre->setText(resumen.nombre);
    QStringList partes{resumen.edad};
    if (!resumen.identificador.isEmpty())
        partes << resumen.etiqueta + resumen.identificador;
    partes.removeAll(QString());
    datos->setText(partes.join(QStringLiteral("  ·  ")));
    cobertura->setText(resumen.cobertura);
    inactivo->setText(
        tr("PACIENTE INACTIVO")
        + (resumen.motivoInactividad.isEmpty() ? QString()
                                               : QStringLiteral(" - ") + resumen.motivoInactividad.left(60)));
    inactivo->setToolTip(resumen.motivoInactividad);
    inactivo->setVisible(resumen.inactivo);
    alertas->setTexto(resumen.alertas);
    notas->setTexto(resumen.notas);
    eliminado->setTexto({});
}

void EncabezadoPaciente::mostrarNadie(const QString &texto)
{
    mostrar({});
    nombre->setText(texto);
}

void EncabezadoPaciente::mostrarEliminado(const QString &texto) { eliminado->setTexto(texto); }

RotuloCorto::RotuloCorto(const QString &nombre, Qt::TextElideMode donde, QWidget *parent)
    : QLabel(parent)
    , m_donde(donde)
{
    setObjectName(nombre);
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QSize RotuloCorto::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(text()) + 4, QLabel::sizeHint().height()};
}

QSize RotuloCorto::minimumSizeHint() const
{
    return {qMin(sizeHint().width(), fontMetrics().averageCharWidth() * 14), QLabel::minimumSizeHint().height()};
}

void RotuloCorto::paintEvent(QPaintEvent *)
{
    const QString corto = fontMetrics().elidedText(text(), m_donde, width());
    setToolTip(corto == text() ? QString() : text());
    QPainter pintor(this);
    style()->drawItemText(
        &pintor, rect(), Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(), corto, foregroundRole());
}

BandaAviso::BandaAviso(
    const QString &nombre, const QString &titulo, const QColor &fondo, const QColor &letra, QWidget *parent)
    : QFrame(parent)
    , m_titulo(titulo)
    , m_rotulo(new QLabel(this))
    , m_mas(new QToolButton(this))
{
    setObjectName(nombre);
    m_rotulo->setWordWrap(true);
    m_rotulo->setTextFormat(Qt::PlainText);
    m_rotulo->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_mas->setAutoRaise(true);
    m_mas->hide();
    setStyleSheet(QStringLiteral("QFrame#%1 { background:%2; border-radius:3px; }"
                                 " QFrame#%1 QLabel { color:%3; font-weight:bold; }"
                                 " QFrame#%1 QToolButton { color:%3; text-decoration:underline; }")
                      .arg(nombre, fondo.name(), letra.name()));
    auto *fila = new QHBoxLayout(this);
    fila->setContentsMargins(8, 3, 8, 3);
    fila->addWidget(m_rotulo, 1);
    fila->addWidget(m_mas, 0, Qt::AlignBottom);
    connect(m_mas, &QToolButton::clicked, this, [this] {
        m_abierta = !m_abierta;
        mostrar();
    });
    hide();
}

void BandaAviso::setTexto(const QString &texto)
{
    if (texto != m_texto)
        m_abierta = false;
    m_texto = texto;
    mostrar();
}

void BandaAviso::mostrar()
{
    const QString corto = comienzo(m_texto);
    const bool larga = corto.size() < m_texto.size();
    m_mas->setVisible(larga);
    m_mas->setText(m_abierta ? tr("ver menos") : tr("ver todo"));
    const QString texto = larga && !m_abierta ? corto + QStringLiteral(" ...") : m_texto;
    m_rotulo->setText(m_titulo.isEmpty() ? texto : m_titulo + u' ' + texto);
    setVisible(!m_texto.isEmpty());
}

} // namespace patients
