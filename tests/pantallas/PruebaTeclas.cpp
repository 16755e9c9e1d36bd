#include "Camara.h"
#include "Consultorio.h"
#include "app/forms/Composicion.h"
#include "app/forms/sistema.h"
#include "support/Prueba.h"
#include "ui/Grilla.h"
#include "ui/Ventana.h"
#include "ui/Ventanas.h"

#include <QRegularExpression>
#include <QShortcut>
#include <QToolButton>

/// Keys of the frame and of the windows inside it: one that both want reaches neither.
class PruebaTeclas : public QObject
{
    Q_OBJECT

    static int filaDe(const ui::Grilla &lista, const QString &hora)
    {
        for (int fila = 0; fila < lista.modelo().rowCount(); ++fila)
            if (lista.modelo().index(fila, 0).data().toString() == hora)
                return fila;
        return -1;
    }

private slots:
    void marcoYAgenda()
    {
        pantallas::Consultorio consultorio;
        ui::Ventanas ventanas;
        app::registrarVentanas(consultorio, ventanas);
        app::sistema marco(consultorio, consultorio, ventanas);
        marco.show();
        QVERIFY(QTest::qWaitForWindowActive(&marco));
        auto *menu = marco.findChild<QToolButton *>(QStringLiteral("menagendas"));
        QVERIFY(menu);
        QTest::mouseClick(menu, Qt::LeftButton);
        ui::Ventana *agendas = ventanas.buscar(QStringLiteral("agendas"));
        QVERIFY(agendas);
        // The letters of the menu are the window's as long as one is open.
        for (const auto *boton : marco.findChildren<QToolButton *>(QRegularExpression(QStringLiteral("^men"))))
            QVERIFY2(boton->shortcut().isEmpty(), qPrintable(boton->objectName()));
        auto *lista = agendas->findChild<ui::Grilla *>(QStringLiteral("lista"));
        QVERIFY(lista);

        const int libre = filaDe(*lista, QStringLiteral("16:20"));
        QVERIFY(libre >= 0);
        lista->elegirFila(libre);
        lista->setFocus();
        QTest::keyClick(lista, Qt::Key_F6);
        QVERIFY(lista->modelo().index(libre, 1).data().toString().contains(QStringLiteral("NO SE ATIENDE")));
        QTest::keyClick(lista, Qt::Key_F10);
        QVERIFY(qobject_cast<QToolButton *>(QApplication::focusWidget()));

        QStringList delMarco;
        for (const auto *atajo : marco.findChildren<QShortcut *>(QString(), Qt::FindDirectChildrenOnly))
            delMarco << atajo->key().toString();
        QVERIFY(!delMarco.isEmpty());
        for (const auto *atajo : agendas->findChildren<QShortcut *>())
            QVERIFY2(!delMarco.contains(atajo->key().toString()), qPrintable(atajo->key().toString()));
        QCOMPARE(consultorio.escritos.dichos(), QStringList());
    }
};

PRUEBA(PruebaTeclas)
#include "PruebaTeclas.moc"
