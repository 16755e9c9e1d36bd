// How the window "vistaprevia" is laid out.

#include "printing/forms/VistaPaginas.h"
#include "printing/forms/vistaprevia.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"
#include "ui/Iconos.h"

#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QToolButton>

namespace printing {

namespace {

/// A sign of its own, or an icon by its name.
QToolButton *flecha(QWidget *padre, const QString &nombre, const QString &nombreIcono, const QString &ayuda)
{
    auto *boton = new QToolButton(padre);
    boton->setObjectName(nombre);
    if (nombreIcono.size() > 1)
        boton->setIcon(ui::icono(nombreIcono));
    else
        boton->setText(nombreIcono);
    boton->setToolTip(ayuda);
    boton->setAccessibleName(ayuda);
    boton->setAutoRaise(true);
    return boton;
}

QFrame *raya(QWidget *padre)
{
    auto *una = new QFrame(padre);
    una->setFrameShape(QFrame::VLine);
    una->setFrameShadow(QFrame::Sunken);
    return una;
}

} // namespace

void vistaprevia::construir()
{
    hojas = new VistaPaginas(this);
    hojas->setObjectName(QStringLiteral("hojas"));
    hojas->setAccessibleName(tr("Hojas del documento"));
    aviso = new QLabel(this);
    aviso->setObjectName(QStringLiteral("aviso"));
    aviso->setTextFormat(Qt::PlainText);
    cerrar = ui::boton(this, QStringLiteral("cerrar"), tr("&Cerrar"), QStringLiteral("window-close"));

    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->setSpacing(ui::espacio);
    todo->addWidget(barra());
    todo->addWidget(hojas, 1);
    auto *fin = new QHBoxLayout;
    fin->addWidget(aviso, 1);
    fin->addWidget(cerrar);
    todo->addLayout(fin);
    setMinimumSize(920, 480);
}

QWidget *vistaprevia::barra()
{
    auto *cinta = new QWidget(this);
    auto *fila = new QHBoxLayout(cinta);
    fila->setContentsMargins(0, 0, 0, 0);
    fila->setSpacing(3);

    imprimir = ui::boton(cinta, QStringLiteral("imprimir"), tr("&Imprimir..."), QStringLiteral("document-print"));
    imprimir->setToolTip(tr("Imprimir (Ctrl+P)"));
    pdf = ui::boton(cinta, QStringLiteral("pdf"), tr("P&DF..."), QStringLiteral("application-pdf"));
    pdf->setToolTip(tr("Guardar como PDF"));
    primera = flecha(cinta, QStringLiteral("primera"), QStringLiteral("go-first"), tr("Primera hoja (Inicio)"));
    anterior = flecha(cinta, QStringLiteral("anterior"), QStringLiteral("go-previous"), tr("Hoja anterior (Re Pág)"));
    pagina = new QSpinBox(cinta);
    pagina->setObjectName(QStringLiteral("pagina"));
    pagina->setAlignment(Qt::AlignCenter);
    pagina->setKeyboardTracking(false);
    pagina->setButtonSymbols(QSpinBox::NoButtons);
    pagina->setAccessibleName(tr("Hoja"));
    pagina->setMinimumWidth(80);
    siguiente = flecha(cinta, QStringLiteral("siguiente"), QStringLiteral("go-next"), tr("Hoja siguiente (Av Pág)"));
    ultima = flecha(cinta, QStringLiteral("ultima"), QStringLiteral("go-last"), tr("Última hoja (Fin)"));
    alejar = flecha(cinta, QStringLiteral("alejar"), QStringLiteral("−"), tr("Más chico (-)"));
    zoom = new QComboBox(cinta);
    zoom->setObjectName(QStringLiteral("zoom"));
    zoom->setAccessibleName(tr("Tamaño con que se ve"));
    zoom->addItem(tr("Ancho de la hoja"));
    zoom->addItem(tr("Hoja entera"));
    for (const int tanto : {50, 75, 100, 125, 150, 200})
        zoom->addItem(QStringLiteral("%1 %").arg(tanto), tanto);
    acercar = flecha(cinta, QStringLiteral("acercar"), QStringLiteral("+"), tr("Más grande (+)"));
    auto *rotulo = new QLabel(tr("&Hoja:"), cinta);
    papel = new QComboBox(cinta);
    papel->setObjectName(QStringLiteral("papel"));
    rotulo->setBuddy(papel);
    orientacion = new QComboBox(cinta);
    orientacion->setObjectName(QStringLiteral("orientacion"));
    orientacion->setAccessibleName(tr("Posición de la hoja"));
    orientacion->addItems({tr("Vertical"), tr("Apaisada")});

    for (QWidget *pieza : std::initializer_list<QWidget *>{imprimir, pdf})
        fila->addWidget(pieza);
    fila->addWidget(raya(cinta));
    for (QWidget *pieza : std::initializer_list<QWidget *>{primera, anterior, pagina, siguiente, ultima})
        fila->addWidget(pieza);
    fila->addWidget(raya(cinta));
    for (QWidget *pieza : std::initializer_list<QWidget *>{alejar, zoom, acercar})
        fila->addWidget(pieza);
    fila->addWidget(raya(cinta));
    for (QWidget *pieza : std::initializer_list<QWidget *>{rotulo, papel, orientacion})
        fila->addWidget(pieza);
    fila->addStretch(1);
    return cinta;
}

} // namespace printing
