#include "Practica.h"
#include "db/Error.h"
#include "support/Prueba.h"

using Tipo = db::migracion::Desenlace::Tipo;
using namespace Qt::StringLiterals;

class PruebaAlServidor : public QObject
{
    Q_OBJECT

private slots:
    void todoLlega()
    {
        Practica practica;
        const auto hecho = practica.alServidor();
        QVERIFY2(hecho.tipo == Tipo::Hecha, qPrintable(hecho.motivo));
        for (const auto &t : hecho.tablas)
            QVERIFY2(t.igual(), qPrintable(t.tabla));
        qDebug() << hecho.avisos;
        for (const QString &s : practica.servidor.sentencias())
            qDebug().noquote() << s.left(200);
        const QString nuevo = practica.carpeta() + u"/nuevo.mdb"_qs;
        const auto vuelto = db::migracion::alArchivo(practica.vuelta(nuevo), practica.seguimiento, practica.pasos);
        QVERIFY2(vuelto.tipo == Tipo::Hecha, qPrintable(vuelto.motivo));
    }
};

PRUEBA(PruebaAlServidor)
#include "PruebaAlServidor.moc"
