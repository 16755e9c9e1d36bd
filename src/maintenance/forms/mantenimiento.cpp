#include "maintenance/forms/mantenimiento.h"

#include "db/Entorno.h"
#include "db/ListaDoctores.h"
#include "ui/Estilo.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace maintenance {

namespace {

/// Without accents: who types "ocupacion" means "Ocupación" too.
QString plegado(const QString &texto)
{
    QString letras;
    for (const QChar c : texto.normalized(QString::NormalizationForm_D))
        if (c.category() != QChar::Mark_NonSpacing)
            letras += c;
    return letras.toCaseFolded();
}

} // namespace

mantenimiento::mantenimiento(db::Entorno &entorno, ui::Ventanas &ventanas)
    : VentanaLista(entorno, ventanas, QStringLiteral("mantenimiento"), tr("Mantenimiento del Sistema"))
    , buscarlista(new QLineEdit(this))
    , listas(new QTreeWidget(this))
{
    buscarlista->setObjectName(QStringLiteral("buscarlista"));
    buscarlista->setClearButtonEnabled(true);
    buscarlista->installEventFilter(this);
    auto *rotulo = new QLabel(tr("&Buscar lista:"), this);
    rotulo->setBuddy(buscarlista);
    listas->setObjectName(QStringLiteral("listas"));
    listas->setHeaderHidden(true);
    listas->setRootIsDecorated(false);
    listas->setItemsExpandable(false);
    listas->setIndentation(14);
    listas->setFixedWidth(listas->fontMetrics().averageCharWidth() * 45);
    llenar();

    auto *izquierda = new QVBoxLayout;
    izquierda->setSpacing(ui::espacio);
    izquierda->addWidget(rotulo);
    izquierda->addWidget(buscarlista);
    izquierda->addWidget(listas, 1);
    auto *todo = new QHBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->setSpacing(2 * ui::margen);
    todo->addLayout(izquierda);
    todo->addLayout(columna(), 1);
    setMinimumSize(820, 520);
    setTabOrder(buscarlista, listas);
    setTabOrder(listas, filtro);

    connect(buscarlista, &QLineEdit::textChanged, this, [this] { filtrar(); });
    // Once the click is over: the tree would go on choosing the list after a question had taken it back.
    connect(
        listas,
        &QTreeWidget::currentItemChanged,
        this,
        [this] { intentar([this] { alElegirLista(); }); },
        Qt::QueuedConnection);
}

bool mantenimiento::preparar(const ui::Pedido &pedido)
{
    if (!aceptado(db::controlarDerecho(entorno(), u"accesoconfiguracion")))
        return false;
    const Lista *pedida = maintenance::lista(pedido.datos.value(QStringLiteral("lista")).toString());
    if (!pedida)
        pedida = listaActual() ? listaActual() : &maintenance::listas().constFirst();
    if (pedida != listaActual()) {
        if (!descartar())
            return false;
        abrirLista(*pedida);
        setWindowTitle(tr("Mantenimiento - %1").arg(pedida->titulo));
        const QSignalBlocker calla(listas);
        listas->setCurrentItem(renglonDe(pedida));
    }
    listas->setFocus();
    return true;
}

void mantenimiento::llenar()
{
    QTreeWidgetItem *grupo = nullptr;
    const QVector<Lista> &todas = maintenance::listas();
    for (int i = 0; i < todas.size(); ++i) {
        if (!grupo || grupo->text(0) != todas[i].grupo) {
            grupo = new QTreeWidgetItem(listas, {todas[i].grupo});
            grupo->setFlags(Qt::ItemIsEnabled);
            QFont negrita = listas->font();
            negrita.setBold(true);
            grupo->setFont(0, negrita);
            grupo->setExpanded(true);
        }
        auto *renglon = new QTreeWidgetItem(grupo, {todas[i].titulo});
        renglon->setData(0, Qt::UserRole, i);
    }
}

QTreeWidgetItem *mantenimiento::renglonDe(const Lista *lista) const
{
    for (QTreeWidgetItemIterator it(listas); *it; ++it)
        if ((*it)->parent() && &maintenance::listas()[(*it)->data(0, Qt::UserRole).toInt()] == lista)
            return *it;
    return nullptr;
}

void mantenimiento::filtrar()
{
    const QString buscado = plegado(buscarlista->text().trimmed());
    QTreeWidgetItem *primero = nullptr;
    for (int g = 0; g < listas->topLevelItemCount(); ++g) {
        QTreeWidgetItem *grupo = listas->topLevelItem(g);
        bool alguno = false;
        for (int i = 0; i < grupo->childCount(); ++i) {
            QTreeWidgetItem *renglon = grupo->child(i);
            const bool hallado = plegado(renglon->text(0)).contains(buscado);
            renglon->setHidden(!hallado);
            alguno = alguno || hallado;
            if (hallado && !primero)
                primero = renglon;
        }
        grupo->setHidden(!alguno);
    }
    // The search chooses, as long as it takes nothing typed away.
    QTreeWidgetItem *actual = listas->currentItem();
    if (primero && !hayCambios() && (!actual || actual->isHidden()))
        listas->setCurrentItem(primero);
}

void mantenimiento::alElegirLista()
{
    const QTreeWidgetItem *renglon = listas->currentItem();
    if (!renglon || !renglon->parent())
        return;
    const Lista &elegida = maintenance::listas()[renglon->data(0, Qt::UserRole).toInt()];
    if (&elegida == listaActual())
        return;
    if (descartar()) {
        abrirLista(elegida);
        setWindowTitle(tr("Mantenimiento - %1").arg(elegida.titulo));
        return;
    }
    const QSignalBlocker calla(listas);
    listas->setCurrentItem(renglonDe(listaActual()));
}

bool mantenimiento::eventFilter(QObject *objeto, QEvent *event)
{
    if (objeto == buscarlista && event->type() == QEvent::KeyPress) {
        const int tecla = static_cast<QKeyEvent *>(event)->key();
        if (tecla == Qt::Key_Down || tecla == Qt::Key_Return || tecla == Qt::Key_Enter) {
            listas->setFocus();
            return true;
        }
    }
    return VentanaLista::eventFilter(objeto, event);
}

} // namespace maintenance
