#include "Practica.h"
#include "db/Error.h"
#include "db/Upgrade.h"
#include "db/migracion/Lectores.h"
#include "support/Prueba.h"

using db::migracion::Estado;
using Tipo = db::migracion::Desenlace::Tipo;
using namespace Qt::StringLiterals;

/// From the server back to a file.
class PruebaAlArchivo : public QObject
{
    Q_OBJECT

    static QStringList archivos(const QString &carpeta) { return QDir(carpeta).entryList(QDir::Files, QDir::Name); }

private slots:
    void idaYVuelta()
    {
        Practica practica;
        // a log without a key, longer than what is read at once: days of many rows, and rows without a date
        {
            const auto local = practica.local();
            std::vector<db::Params> filas;
            for (int i = 0; i < 9000; ++i)
                filas.push_back(
                    {i % 50 == 0 ? QVariant()
                                 : QVariant(QDateTime(QDate(2026, 1, 1).addDays(i / 700), QTime(8, i % 60), Qt::UTC)),
                     i % 7,
                     u"acción %1"_qs.arg(i)});
            db::Transaction transaccion(*local);
            local->executeBatch(u"INSERT INTO [Historial] (fecha,iddoctor,accion) VALUES (?,?,?)"_qs, filas);
            transaccion.commit();
        }
        const auto ida = practica.alServidor();
        QVERIFY2(ida.tipo == Tipo::Hecha, qPrintable(ida.motivo));
        const QString nuevo = practica.carpeta() + u"/nuevo.mdb"_qs;
        const auto vuelta = db::migracion::alArchivo(practica.vuelta(nuevo), practica.seguimiento);
        QVERIFY2(vuelta.tipo == Tipo::Hecha, qPrintable(vuelta.motivo));

        // every value came back that had gone
        QHash<QString, db::Huella> idas;
        for (const auto &tabla : ida.tablas)
            idas.insert(tabla.tabla, tabla.sumaOrigen);
        QCOMPARE(vuelta.tablas.size(), ida.tablas.size());
        for (const auto &tabla : vuelta.tablas)
            QVERIFY2(tabla.igual() && idas.value(tabla.tabla) == tabla.sumaDestino, qPrintable(tabla.tabla));

        const auto viejo = practica.local(), base = Practica::abrir(nuevo);
        auto &motorViejo = static_cast<db::EmbeddedEngine &>(viejo->engine());
        auto &motor = static_cast<db::EmbeddedEngine &>(base->engine());
        const auto planoViejo = db::migracion::planoDeArchivo(motorViejo), plano = db::migracion::planoDeArchivo(motor);
        for (const auto &vieja : planoViejo.tablas) {
            const auto suya = std::find_if(plano.tablas.begin(), plano.tablas.end(), [&](const auto &tabla) {
                return tabla.tabla.name == vieja.tabla.name;
            });
            QVERIFY2(suya != plano.tablas.end(), qPrintable(vieja.tabla.name));
            QCOMPARE(suya->contador, vieja.contador);
            QCOMPARE(suya->tabla.key, vieja.tabla.key);
            QCOMPARE(suya->tabla.columns.size(), vieja.tabla.columns.size());
            for (const db::Column &columna : vieja.tabla.columns) {
                const db::Column *otra = suya->tabla.column(columna.name);
                QVERIFY2(otra && otra->type == columna.type, qPrintable(vieja.tabla.name + u'.' + columna.name));
                QCOMPARE(otra->size, columna.size);
                QCOMPARE(
                    otra->initial.value_or(QVariant()).toString(), columna.initial.value_or(QVariant()).toString());
            }
            for (const db::Index &indice : vieja.tabla.indexes)
                QVERIFY2(
                    std::any_of(
                        suya->tabla.indexes.begin(),
                        suya->tabla.indexes.end(),
                        [&](const db::Index &otro) {
                            return otro.unique == indice.unique
                                && otro.columns.join(u',').toLower() == indice.columns.join(u',').toLower();
                        }),
                    qPrintable(vieja.tabla.name + u": "_qs + indice.columns.join(u',')));
        }
        // a start finds nothing left to do, and the chooser its columns
        soporte::MensajesGuionados guion;
        QVERIFY(!db::actualizarAccess(
            {app::esquemaCompleto()}, [&] { return Practica::abrir(nuevo); }, guion));
        QVERIFY(base->search(u"Pacientes"_qs, {}));
        // a file of ours, not one that anybody can read
        QFile file(nuevo);
        QVERIFY(file.open(QFile::ReadOnly) && !file.read(16).startsWith("SQLite"));
    }

    void noPisaNada_data()
    {
        QTest::addColumn<bool>("aparta");
        QTest::newRow("no se dijo nada") << false;
        QTest::newRow("se aparta") << true;
    }
    void noPisaNada()
    {
        QFETCH(bool, aparta);
        Practica practica(true);
        QVERIFY(practica.alServidor().tipo == Tipo::Hecha);
        const QByteArray antes = [&] {
            QFile file(practica.archivo());
            return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
        }();
        auto pedido = practica.vuelta(practica.archivo());
        const QString otro = practica.carpeta() + u"/Datos (202611220900).mdb"_qs;
        if (aparta)
            pedido.apartar = otro;
        const auto hecho = db::migracion::alArchivo(pedido, practica.seguimiento);
        QFile file(aparta ? otro : practica.archivo());
        QVERIFY(file.open(QFile::ReadOnly));
        QCOMPARE(file.readAll(), antes);
        QCOMPARE(hecho.tipo, aparta ? Tipo::Hecha : Tipo::Rechazada);
        QCOMPARE(hecho.apartado, aparta ? otro : QString());
        if (aparta) // twice would lose the first
            QCOMPARE(db::migracion::alArchivo(pedido, practica.seguimiento).tipo, Tipo::Rechazada);
        QCOMPARE(practica.local()->query(u"SELECT id FROM [CIE10] WHERE id = 2"_qs)->rowCount(), 1);
    }

    void seCorta_data()
    {
        QTest::addColumn<QString>("como");
        QTest::addColumn<int>("tipo");
        QTest::newRow("cancela leyendo") << "Leyendo la base de datos" << int(Tipo::Cancelada);
        QTest::newRow("cancela copiando") << "Copiando" << int(Tipo::Cancelada);
        QTest::newRow("cancela indices") << "Preparando los índices" << int(Tipo::Cancelada);
        QTest::newRow("cancela comprobando") << "Comprobando" << int(Tipo::Cancelada);
        QTest::newRow("cancela al final") << "Terminando" << int(Tipo::Cancelada);
        QTest::newRow("se va el servidor") << "servidor" << int(Tipo::Fallada);
        QTest::newRow("otra guarda") << "cerrojo" << int(Tipo::Rechazada);
        QTest::newRow("no coincide") << "otra cosa" << int(Tipo::NoCoincide);
    }
    void seCorta()
    {
        QFETCH(QString, como);
        QFETCH(int, tipo);
        Practica practica(true);
        QVERIFY(practica.alServidor().tipo == Tipo::Hecha);
        QTemporaryDir carpeta;
        practica.servidor.antes = [&](const QString &sentencia) {
            if (como == u"servidor" && sentencia.startsWith(u"SELECT TOP"_qs))
                throw db::Error(db::Error::Kind::Lost, 10054, u"Se fue."_qs);
            if (como == u"cerrojo" && sentencia.contains(u"TABLOCK"_qs))
                throw db::Error(db::Error::Kind::General, 1222, u"Lock request time out period exceeded."_qs);
        };
        practica.pasos.alAvanzar = [&](const Estado &e) {
            if (e.que == como)
                practica.seguimiento.cancelar();
            if (como == u"otra cosa" && e.que == u"Comprobando" && e.tabla == u"CIE10" && e.filas == 0)
                QCOMPARE(
                    Practica::abrir(carpeta.filePath(u"Datos.mdb.parcial"_qs))
                        ->execute(u"UPDATE [CIE10] SET nivel = 'x' WHERE id = 2"_qs),
                    1);
        };
        const auto hecho = db::migracion::alArchivo(
            practica.vuelta(carpeta.filePath(u"Datos.mdb"_qs)), practica.seguimiento, practica.pasos);
        QCOMPARE(int(hecho.tipo), tipo);
        QCOMPARE(archivos(carpeta.path()), QStringList());
        QVERIFY(practica.servidor.tiene(u"Datos"_qs));
        // the server's own stations go on
        practica.servidor.antes = {};
        practica.remota()->execute(u"INSERT INTO [Lista Doctores] (NomDoc) VALUES ('x')"_qs);
    }
};

PRUEBA(PruebaAlArchivo)
#include "PruebaAlArchivo.moc"
