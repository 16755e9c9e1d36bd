#include "Usuarios.h"
#include "db/Error.h"
#include "db/Recordset.h"
#include "support/Prueba.h"
#include "users/Claves.h"
#include "users/Derechos.h"
#include "users/Ingreso.h"
#include "users/Profesionales.h"

using namespace users;

namespace {

const QString sinClave = "Si el usuario será Administrador del sistema, entonces debe asignarle una Clave de Usuario.";
const QString repetida
    = "Ya existe un Usuario con la misma Clave de Usuario que desea ingresar. Seleccione una distinta";
const QString ultimoCambia = "No puede cambiarle el atributo de 'Médico' al usuario ya que en el sistema debe haber al "
                             "menos un Médico cargado.";
const QString ultimoSeVa
    = "No se puede proceder con la acción ya que en el sistema debe haber al menos un Médico cargado.";
const QString yaNo = "Este Registro ya No existe, debe haber sido eliminado por otro usuario.";
const QString seguro = "¿Seguro que desea eliminar a este Usuario del sistema?";

/// A user as the window hands it over after these changes.
UsuarioEditado editar(db::Connection &conexion, int id, const QVariantMap &cambios, std::optional<QString> clave = {})
{
    UsuarioEditado usuario{id, id == 0 ? usuarioNuevo().columnas : leerUsuario(conexion, id)->columnas, cambios, clave};
    for (auto it = cambios.cbegin(); it != cambios.cend(); ++it)
        usuario.columnas.insert(it.key(), it.value());
    return usuario;
}

} // namespace

/// The rules of the window of professionals and users.
class PruebaProfesionales : public QObject
{
    Q_OBJECT

private slots:
    void columnas()
    {
        // what the window edits, and not a column more
        QStringList todas = QString("tipo administrador NomDoc Especialidad Matricula Domi Locali Tel Prioridad "
                                    "Descripcion tipoespecialidadactiva ventanainicio cie10 verotrasconsultas "
                                    "verfichareducida verestadisticareducida medisecre aplicaraturnos moduloweb")
                                .split(u' ');
        Usuarios base;
        int derechos = 0;
        for (const db::Column &columna : base.conexion().columns("Lista Doctores"))
            if (columna.name.startsWith("acceso") && !columna.name.startsWith("accesodirecto")) {
                todas << columna.name;
                ++derechos;
            }
        QCOMPARE(derechos, 30);
        QStringList propias = columnasDeUsuario();
        propias.sort();
        todas.sort();
        QCOMPARE(propias, todas);
        QCOMPARE(columnasDeDerechos().size(), 31);
    }

    void nuevoYCambio_data() { soporte::filasDeDialecto(); }
    void nuevoYCambio()
    {
        Usuarios base(soporte::dialectoActual());
        db::Connection &c = base.conexion();
        // it begins with the values that a new row begins with
        const FichaUsuario nueva = usuarioNuevo();
        QVERIFY(nueva.columnas.value("accesocaja").toBool() && !nueva.columnas.value("aplicaraturnos").toBool());
        QVERIFY(!nueva.columnas.value("administrador").toBool());
        const auto id = guardarUsuario(
            base,
            editar(
                c,
                0,
                {{"NomDoc", " Ana O'Higgins "}, {"tipo", 1}, {"medisecre", 20}, {"accesocaja", false}},
                " Rosa "));
        QVERIFY(id);
        const auto leida = leerUsuario(c, *id);
        QVERIFY(leida && leida->tieneClave);
        QCOMPARE(leida->columnas.value("NomDoc").toString(), QString("Ana O'Higgins"));
        QCOMPARE(leida->columnas.value("medisecre").toInt(), 20);
        QVERIFY(!leida->columnas.value("accesocaja").toBool() && leida->columnas.value("accesored").toBool());
        QVERIFY(identificar(base, *id, "Rosa"));

        // a change writes what was changed and nothing else, least of all the password
        c.execute("UPDATE [Lista Doctores] SET Teltempo = 'x', Tel = 'de otra terminal' WHERE id = ?", {*id});
        const QString huella = base.clave(*id);
        QCOMPARE(*guardarUsuario(base, editar(c, *id, {{"Locali", "Rosario"}, {"accesocaja", true}})), *id);
        QCOMPARE(base.clave(*id), huella);
        QCOMPARE(
            base.columna(*id, "Locali") + base.columna(*id, "Teltempo") + base.columna(*id, "Tel"),
            QString("Rosarioxde otra terminal"));
        // taken away
        QVERIFY(guardarUsuario(base, editar(c, *id, {}, QString())));
        QVERIFY(!leerUsuario(c, *id)->tieneClave && identificar(base, *id, ""));
    }

    void controles_data()
    {
        QTest::addColumn<int>("quien"); // 0 new, 1 the only professional, 2 the administrator, 3 one who is gone
        QTest::addColumn<QVariantMap>("cambios");
        QTest::addColumn<QString>("clave"); // "-": as it was
        QTest::addColumn<QString>("texto");
        QTest::addColumn<QString>("campo");
        const auto fila = [](const char *nombre,
                             int quien,
                             const QVariantMap &cambios,
                             const char *clave,
                             const QString &texto,
                             const char *campo) {
            QTest::newRow(nombre) << quien << cambios << QString(clave) << texto << QString(campo);
        };
        const QVariantMap todoMal{{"NomDoc", "  "}, {"administrador", true}, {"tipo", 1}};
        fila("el nombre, antes que nada", 1, todoMal, "rosa", "Debe ingresar el nombre del Usuario.", "NomDoc");
        fila("después la clave", 1, {{"administrador", true}, {"tipo", 1}}, "-", sinClave, "claveusuario");
        fila("después el último médico", 1, {{"tipo", 1}}, "rosa", ultimoCambia, "tipo");
        fila("después la clave de otro", 3, {{"Tel", "1"}}, "rosa", repetida, "claveusuario");
        fila("al final, si está", 3, {{"Tel", "1"}, {"administrador", true}}, "-", yaNo, "");
        fila("clave de otro, con huella", 0, {{"NomDoc", "x"}}, " LOBO ", repetida, "claveusuario");
        fila(
            "administrador nuevo sin clave",
            0,
            {{"NomDoc", "x"}, {"administrador", true}},
            " ",
            sinClave,
            "claveusuario");
        fila("le quitan la clave", 2, {}, "", sinClave, "claveusuario");
        fila("la que tenía cuenta", 2, {{"Tel", "1"}}, "-", "", "");
        fila("la suya propia", 2, {}, "Rosa", "", "");
        fila("deja de ser administrador", 2, {{"administrador", false}}, "", "", "");
        fila("nuevo, todo bien", 0, {{"NomDoc", "x"}, {"tipo", 1}}, "otra", "", "");
        fila("nuevo sin clave", 0, {{"NomDoc", "x"}}, "-", "", "");
    }
    void controles()
    {
        QFETCH(int, quien);
        QFETCH(QVariantMap, cambios);
        QFETCH(QString, clave);
        QFETCH(QString, texto);
        QFETCH(QString, campo);
        for (const auto dialecto : {db::Dialect::Kind::Access, db::Dialect::Kind::SqlServer}) {
            Usuarios base(dialecto);
            db::Connection &c = base.conexion();
            const int administrador = base.agregar("Admin", "Rosa", true);
            base.agregar("Otro", claves::huella("Lobo"));
            const int otraIda = base.agregar("Ida");
            const int id = quien == 0 ? 0 : quien == 1 ? 20 : quien == 2 ? administrador : otraIda;
            const UsuarioEditado usuario = editar(c, id, cambios, clave == "-" ? std::nullopt : std::optional(clave));
            c.execute("DELETE FROM [Lista Doctores] WHERE id = ?", {otraIda});
            const QString antes = base.valor("SELECT COUNT(*) FROM [Lista Doctores]");
            const auto guardado = guardarUsuario(base, usuario);
            QCOMPARE(bool(guardado), texto.isEmpty());
            if (!guardado) {
                const QString titulo = texto == repetida ? base::titulo::atencion : base::titulo::aviso;
                QCOMPARE(guardado.rechazo(), (base::Rechazo{titulo, texto, campo}));
                QCOMPARE(base.valor("SELECT COUNT(*) FROM [Lista Doctores]"), antes);
            } else if (clave != "-" && !clave.isEmpty()) {
                QVERIFY(claves::esHuella(base.clave(*guardado)));
            }
        }
    }

    void elimina_data() { soporte::filasDeDialecto(); }
    void elimina()
    {
        Usuarios base(soporte::dialectoActual());
        const int ana = base.agregar("Ana O'Higgins");
        base.guion.esperarMensaje(base::titulo::aviso, ultimoSeVa);
        QVERIFY(!eliminarUsuario(base, 20));
        base.guion.esperarPregunta(base::titulo::confirmacion, seguro, false);
        QVERIFY(!eliminarUsuario(base, ana));
        base.guion.esperarPregunta(base::titulo::confirmacion, seguro, true);
        QVERIFY(eliminarUsuario(base, ana));
        QCOMPARE(base.historial(), QStringList{"20|Configuración del Sistema|Se eliminó el Usuario Ana O'Higgins"});
        base.guion.esperarMensaje(base::titulo::aviso, yaNo);
        QVERIFY(!eliminarUsuario(base, ana));
        // with another professional the first one may go
        base.conexion().execute("UPDATE [Lista Doctores] SET tipo = 0 WHERE id = ?", {base.agregar("Eva")});
        base.guion.esperarPregunta(base::titulo::confirmacion, seguro, true);
        QVERIFY(eliminarUsuario(base, 20));
        QVERIFY(!leerUsuario(base.conexion(), 20));
        QVERIFY(base.guion.terminar());
    }

    void elOtroMedicoSeFueMientrasPreguntaba()
    {
        Usuarios base;
        const int eva = base.agregar("Eva");
        base.conexion().execute("UPDATE [Lista Doctores] SET tipo = 0");
        base.guion.esperarPregunta(base::titulo::confirmacion, seguro, true, [&] {
            base.otraTerminal()->execute("DELETE FROM [Lista Doctores] WHERE id = ?", {eva});
        });
        base.guion.esperarMensaje(base::titulo::aviso, ultimoSeVa);
        QVERIFY(!eliminarUsuario(base, 20));
        QVERIFY(leerUsuario(base.conexion(), 20));
        QCOMPARE(base.historial(), QStringList());
    }

    void permisosDeOtro()
    {
        Usuarios base;
        const int ana = base.agregar("Ana", "Rosa", true);
        base.conexion().execute(
            "UPDATE [Lista Doctores] SET accesocaja = 0, cie10 = -1, moduloweb = -1 WHERE id = ?", {ana});
        const auto permisos = permisosDe(base.conexion(), ana);
        QVERIFY(permisos);
        QCOMPARE(permisos->size(), 35);
        QVERIFY(!permisos->value("accesocaja").toBool() && permisos->value("cie10").toBool());
        QVERIFY(!permisos->contains("administrador") && !permisos->contains("moduloweb"));
        QVERIFY(!permisosDe(base.conexion(), 9999));
    }
};

PRUEBA(PruebaProfesionales)
#include "PruebaProfesionales.moc"
