#include "Usuarios.h"
#include "db/Error.h"
#include "db/ListaDoctores.h"
#include "support/Prueba.h"
#include "users/Claves.h"
#include "users/Ingreso.h"
#include "users/Puerta.h"

#include <QFile>

using namespace users;

namespace {

const QString incorrecta = "La Clave de Acceso es Incorrecta.";

/// A computer whose setup.dat cannot be written.
class SinEscritura : public Usuarios
{
public:
    void setUsuarioActual(int) override
    {
        throw db::Error(db::Error::Kind::ReadOnly, 0, "No se puede escribir el archivo setup.dat.");
    }
};

} // namespace

/// Login, change of user and administrator gate.
class PruebaIngreso : public QObject
{
    Q_OBJECT

private slots:
    void identifica_data()
    {
        QTest::addColumn<QString>("guardada");
        QTest::addColumn<QString>("escrita");
        QTest::addColumn<QString>("rechazo");
        const QString falta = "Debe ingresar la Clave de Acceso del Usuario seleccionado.";
        QTest::newRow("correcta") << "Rosa"
                                  << " Rosa "
                                  << "";
        QTest::newRow("guardada con blancos") << " Rosa "
                                              << "Rosa"
                                              << "";
        QTest::newRow("otra letra") << "Rosa"
                                    << "rosa" << incorrecta;
        QTest::newRow("nada escrito") << "Rosa"
                                      << "  " << falta;
        QTest::newRow("sin clave") << ""
                                   << " "
                                   << "";
        QTest::newRow("sin clave, algo escrito") << ""
                                                 << "x" << incorrecta;
        QTest::newRow("comilla") << "O'Higgins"
                                 << "' or '1'='1" << incorrecta;
    }
    void identifica()
    {
        QFETCH(QString, guardada);
        QFETCH(QString, escrita);
        QFETCH(QString, rechazo);
        for (const auto dialecto : {db::Dialect::Kind::Access, db::Dialect::Kind::SqlServer}) {
            Usuarios base(dialecto);
            const int clara = base.agregar("Ana", guardada);
            const int conHuella
                = base.agregar("Eva", guardada.trimmed().isEmpty() ? guardada : claves::huella(guardada));
            for (const int id : {clara, conHuella}) {
                const auto quien = identificar(base, id, escrita);
                if (rechazo.isEmpty()) {
                    QVERIFY(quien);
                    QCOMPARE(quien->id(), id);
                } else {
                    QVERIFY(!quien);
                    QCOMPARE(quien.rechazo(), (base::Rechazo{base::titulo::atencion, rechazo, "claveactual"}));
                }
            }
            QCOMPARE(base.usuario, 20);
            QCOMPARE(base.clave(clara), guardada);
        }
    }

    void ingresa_data() { soporte::filasDeDialecto(); }
    void ingresa()
    {
        Usuarios base(soporte::dialectoActual());
        const int ana = base.agregar("Ana", " Rosa ", true, 7);
        const auto quien = identificar(base, ana, "Rosa");
        QVERIFY(quien);
        ingresar(base, *quien);
        QCOMPARE(base.usuario, ana);
        QCOMPARE(base.historial(), QStringList{QString("%1|Sistema General|Se ingresó al sistema.").arg(ana)});

        // the password is hashed from here on, nothing else of the row has changed, and it still works
        const QString huella = base.clave(ana);
        QVERIFY(claves::esHuella(huella));
        QCOMPARE(base.columna(ana, "NomDoc") + base.columna(ana, "Prioridad"), QString("Ana7"));
        const auto otraVez = identificar(base, ana, "Rosa");
        QVERIFY(otraVez);
        ingresar(base, *otraVez);
        QCOMPARE(base.clave(ana), huella);

        const auto sinClave = identificar(base, 20, "");
        QVERIFY(sinClave);
        cambiarUsuario(base, *sinClave);
        QVERIFY(base.clave(20).isEmpty());
        QCOMPARE(
            base.historial().constLast(),
            QString("20|Cambiar Usuario del Sistema|Se cambió al usuario activo Ana por el usuario Juan Pérez."));
    }

    void claveCambiadaMientrasTanto()
    {
        Usuarios base;
        const int ana = base.agregar("Ana", "Rosa");
        const auto quien = identificar(base, ana, "Rosa");
        QVERIFY(quien);
        base.otraTerminal()->execute("UPDATE [Lista Doctores] SET claveusuario = 'nueva' WHERE id = ?", {ana});
        ingresar(base, *quien);
        QCOMPARE(base.clave(ana), QString("nueva"));
    }

    void usuarioEliminado_data() { soporte::filasDeDialecto(); }
    void usuarioEliminado()
    {
        Usuarios base(soporte::dialectoActual());
        const int ana = base.agregar("Ana");
        base.conexion().execute("DELETE FROM [Lista Doctores] WHERE id = 20");
        const auto quien = identificar(base, 20, "");
        QVERIFY(!quien);
        QCOMPARE(
            quien.rechazo().texto,
            QString("Este usuario ya no se encuentra, seguramente acaba de ser eliminado por el Administrador del "
                    "sistema."));
        QCOMPARE(quien.rechazo().titulo, base::titulo::atencion);
        // and whoever works as one who is gone is named so
        const auto otra = identificar(base, ana, "");
        QVERIFY(otra);
        cambiarUsuario(base, *otra);
        QVERIFY(base.historial().constLast().endsWith(
            "Se cambió al usuario activo <Usuario sin Identificar> por el usuario Ana."));
    }

    void nadieEntraADondeNoSePuedeEscribir()
    {
        SinEscritura base;
        const int ana = base.agregar("Ana", "Rosa");
        const auto quien = identificar(base, ana, "Rosa");
        QVERIFY(quien);
        QVERIFY_THROWS_EXCEPTION(db::Error, ingresar(base, *quien));
        QCOMPARE(base.usuario, 20);
        QCOMPARE(base.clave(ana), QString("Rosa"));
        QCOMPARE(base.historial(), QStringList());
    }

    void baseDeSoloLectura()
    {
        Usuarios base;
        const int ana = base.agregar("Ana", "Rosa");
        base.cerrarParaEscribir();
        QVERIFY(base.conexion().readOnly());
        const auto quien = identificar(base, ana, "Rosa");
        QVERIFY(quien);
        ingresar(base, *quien);
        QCOMPARE(base.usuario, ana);
    }

    void puertaDelAdministrador_data() { soporte::filasDeDialecto(); }
    void puertaDelAdministrador()
    {
        Usuarios base(soporte::dialectoActual());
        const auto intentar = [&base](const QString &escrita) {
            const auto quien = puerta::pasar(base.conexion(), escrita);
            return quien ? *quien : quien.rechazo().texto;
        };
        const QString mal = "La Clave de Acceso de Administrador es Incorrecta.";
        base.agregar("No administra", "abre");
        const int sinClave = base.agregar("Sin clave", " ", true);
        QVERIFY(!puerta::seOfrece(base.conexion()));
        QCOMPARE(intentar("abre"), mal);
        QCOMPARE(intentar(" "), QString("Debe ingresar la Clave de Acceso de Administrador."));

        base.agregar("Primera", claves::huella("abre"), true);
        base.agregar("Segunda", "abre", true);
        QVERIFY(puerta::seOfrece(base.conexion()));
        QCOMPARE(intentar(" abre "), QString("Primera")); // the first one with that password
        QCOMPARE(intentar("Abre"), mal);
        base.conexion().execute("UPDATE [Lista Doctores] SET claveusuario = ' otra' WHERE id = ?", {sinClave});
        QCOMPARE(intentar("otra"), QString("Sin clave"));
    }
};

PRUEBA(PruebaIngreso)
#include "PruebaIngreso.moc"
