#include "ui/BotonLista.h"

#include "ui/ListaCombo.h"
#include "ui/Ventana.h"

#include <QComboBox>
#include <QShortcut>
#include <QToolButton>

namespace ui {

QToolButton *
botonLista(Ventana &ventana, Ventanas &ventanas, QComboBox &lista, const QString &tabla, const QString &titulo)
{
    auto *boton = new QToolButton(&ventana);
    boton->setObjectName(QStringLiteral("lista") + lista.objectName());
    boton->setText(QStringLiteral("..."));
    boton->setToolTip(QObject::tr("Mantenimiento de la lista: %1 (F2)").arg(titulo));
    // Tab goes from field to field; F2 opens it from the list.
    boton->setFocusPolicy(Qt::ClickFocus);

    QObject::connect(boton, &QToolButton::clicked, &ventana, [&ventana, &ventanas, &lista, tabla, titulo] {
        const int id = idElegido(lista, -1);
        Pedido pedido;
        pedido.datos
            = {{QStringLiteral("lista"), tabla},
               {QStringLiteral("titulo"), titulo},
               {QStringLiteral("id"), id},
               {QStringLiteral("texto"), id == -1 ? lista.currentText() : QString()}};
        const QPointer<Ventana> abridora(&ventana);
        const QPointer<QComboBox> suya(&lista);
        pedido.alTerminar = [abridora, suya](const QVariantMap &resultado) {
            const int elegido = resultado.value(QStringLiteral("id")).toInt();
            if (abridora && suya && suya->findData(elegido) < 0)
                abridora->actualizar();
            if (suya)
                elegirId(*suya, elegido);
        };
        ventana.intentar([&] { ventanas.abrir(QStringLiteral("listamantenimiento"), pedido, &ventana); });
    });
    auto *atajo = new QShortcut(QKeySequence(Qt::Key_F2), &lista);
    atajo->setContext(Qt::WidgetWithChildrenShortcut);
    QObject::connect(atajo, &QShortcut::activated, boton, &QToolButton::click);
    return boton;
}

} // namespace ui
