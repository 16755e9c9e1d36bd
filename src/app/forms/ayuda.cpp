#include "app/forms/ayuda.h"

#include "app/forms/PaginaAyuda.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>

// A static library's resources are registered by hand, outside any namespace.
static void registrarManual() { Q_INIT_RESOURCE(manual); }

namespace app {

namespace {

constexpr int papelDireccion = Qt::UserRole; ///< page and heading of an item

Manual manualDelPrograma()
{
    registrarManual();
    return Manual(QStringLiteral(":/manual"));
}

QTreeWidgetItem *renglon(const QString &texto, const QString &direccion)
{
    auto *item = new QTreeWidgetItem({texto});
    item->setData(0, papelDireccion, direccion);
    item->setToolTip(0, texto);
    return item;
}

} // namespace

ayuda::ayuda(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("ayuda"), tr("Ayuda"))
    , buscar(new QLineEdit)
    , indice(new QTreeWidget)
    , pagina(new PaginaAyuda)
    , atras(ui::boton(this, QStringLiteral("atras"), tr("&Anterior"), QStringLiteral("go-previous")))
    , adelante(ui::boton(this, QStringLiteral("adelante"), tr("&Siguiente"), QStringLiteral("go-next")))
    , inicio(ui::boton(this, QStringLiteral("inicio"), tr("&Inicio"), QStringLiteral("help-contents")))
    , m_manual(manualDelPrograma())
{
    buscar->setObjectName(QStringLiteral("buscar"));
    buscar->setPlaceholderText(tr("Buscar en la ayuda"));
    buscar->setClearButtonEnabled(true);
    auto *etiqueta = new QLabel(tr("&Buscar:"));
    etiqueta->setBuddy(buscar);
    indice->setObjectName(QStringLiteral("indice"));
    indice->setHeaderHidden(true);
    indice->setWordWrap(true);
    indice->setTextElideMode(Qt::ElideNone);
    indice->setAccessibleName(tr("Índice"));
    pagina->setObjectName(QStringLiteral("pagina"));

    auto *arriba = new QHBoxLayout;
    for (QPushButton *boton : {atras, adelante, inicio})
        arriba->addWidget(boton);
    arriba->addStretch(1);
    arriba->addWidget(etiqueta);
    buscar->setMinimumWidth(240);
    arriba->addWidget(buscar);
    auto *partes = new QSplitter;
    partes->addWidget(indice);
    partes->addWidget(pagina);
    partes->setStretchFactor(0, 0);
    partes->setStretchFactor(1, 1);
    partes->setSizes({270, 720});
    partes->setChildrenCollapsible(false);
    auto *caja = new QVBoxLayout(this);
    caja->setSpacing(ui::espacio);
    caja->addLayout(arriba);
    caja->addWidget(partes, 1);
    indice->setMinimumWidth(200);
    pagina->setMinimumWidth(400);
    setTabOrder(buscar, indice);
    setTabOrder(indice, pagina);
    setTabOrder(pagina, atras);

    atras->setEnabled(false);
    adelante->setEnabled(false);
    connect(pagina, &QTextBrowser::backwardAvailable, atras, &QWidget::setEnabled);
    connect(pagina, &QTextBrowser::forwardAvailable, adelante, &QWidget::setEnabled);
    connect(pagina, &PaginaAyuda::mostrada, this, &ayuda::elegirEnIndice);
    connect(atras, &QPushButton::clicked, pagina, &QTextBrowser::backward);
    connect(adelante, &QPushButton::clicked, pagina, &QTextBrowser::forward);
    connect(inicio, &QPushButton::clicked, this, [this] {
        buscar->clear();
        pagina->irA(m_manual.paginas().value(0).archivo);
    });
    connect(indice, &QTreeWidget::currentItemChanged, this, &ayuda::abrirElegida);
    connect(indice, &QTreeWidget::itemClicked, this, &ayuda::abrirElegida);
    connect(buscar, &QLineEdit::textChanged, this, &ayuda::mostrarHallazgos);
    for (const auto &[tecla, boton] :
         {std::pair(QKeySequence::Back, atras), std::pair(QKeySequence::Forward, adelante)}) {
        auto *atajo = new QShortcut(tecla, this, boton, &QPushButton::click);
        atajo->setContext(Qt::WidgetWithChildrenShortcut);
    }
    auto *irABuscar = new QShortcut(QKeySequence::Find, this, buscar, [this] { buscar->setFocus(); });
    irABuscar->setContext(Qt::WidgetWithChildrenShortcut);
    mostrarIndice();
}

bool ayuda::preparar(const ui::Pedido &pedido)
{
    const QString deVentana = m_manual.paginaDeVentana(pedido.datos.value(QStringLiteral("ventana")).toString());
    if (!deVentana.isEmpty())
        pagina->irA(deVentana);
    else if (pagina->archivo().isEmpty())
        pagina->irA(m_manual.paginas().value(0).archivo);
    indice->setFocus();
    return true;
}

void ayuda::mostrarIndice()
{
    const QSignalBlocker quieto(indice);
    indice->clear();
    indice->setRootIsDecorated(true);
    for (const PaginaManual &una : m_manual.paginas()) {
        auto *item = renglon(una.titulo, una.archivo);
        if (una.archivo != m_manual.paginas().constFirst().archivo)
            for (const QString &seccion : una.secciones)
                item->addChild(renglon(seccion, una.archivo + u'#' + anclaDe(seccion)));
        indice->addTopLevelItem(item);
    }
    elegirEnIndice();
}

void ayuda::mostrarHallazgos()
{
    const QString texto = buscar->text().simplified();
    if (texto.isEmpty()) {
        pagina->marcar({});
        mostrarIndice();
        return;
    }
    {
        const QSignalBlocker quieto(indice);
        indice->clear();
        indice->setRootIsDecorated(false);
        for (const HallazgoManual &hallazgo : m_manual.buscar(texto)) {
            const PaginaManual &una = m_manual.paginas()[hallazgo.pagina];
            auto *item = renglon(una.titulo + u'\n' + hallazgo.fragmento, una.archivo);
            indice->addTopLevelItem(item);
        }
        if (indice->topLevelItemCount() == 0) {
            auto *nada = renglon(tr("No se encontró nada."), {});
            nada->setFlags(Qt::NoItemFlags);
            indice->addTopLevelItem(nada);
        }
    }
    elegirEnIndice();
    pagina->marcar(texto);
}

void ayuda::abrirElegida()
{
    const QTreeWidgetItem *item = indice->currentItem();
    const QString direccion = item ? item->data(0, papelDireccion).toString() : QString();
    if (direccion.isEmpty())
        return;
    pagina->irA(direccion);
    if (!buscar->text().isEmpty())
        pagina->marcar(buscar->text());
}

void ayuda::elegirEnIndice()
{
    const QString archivo = pagina->archivo();
    const QTreeWidgetItem *actual = indice->currentItem();
    if (actual && actual->data(0, papelDireccion).toString().section(u'#', 0, 0) == archivo)
        return; // one of its headings
    const QSignalBlocker quieto(indice);
    indice->setCurrentItem(nullptr);
    for (int i = 0; i < indice->topLevelItemCount(); ++i)
        if (QTreeWidgetItem *item = indice->topLevelItem(i); item->data(0, papelDireccion).toString() == archivo) {
            indice->setCurrentItem(item);
            item->setExpanded(true);
        }
}

void ayuda::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && !buscar->text().isEmpty()) {
        buscar->clear();
        event->accept();
        return;
    }
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && focusWidget() == buscar && indice->topLevelItemCount() > 0) {
        indice->setCurrentItem(indice->topLevelItem(0));
        indice->setFocus();
        abrirElegida();
        event->accept();
        return;
    }
    Ventana::keyPressEvent(event);
}

} // namespace app
