#include "app/Modulo.h"
#include "db/Config.h"
#include "db/EsquemaNucleo.h"
#include "db/FondoAplicacion.h"
#include "maintenance/Ajustes.h"
#include "maintenance/Configuracion.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"

#include <QDir>
#include <QFile>

using namespace maintenance;

namespace {

const QString ventana = QStringLiteral("Configuración del Sistema");
const QString sinPermiso = QStringLiteral("No tiene permiso para ejecutar esta acción. Consulte con el Administrador "
                                          "del sistema para definir sus permisos de "
                                          "accesos.");

void escribir(const QString &archivo, const QByteArray &bytes)
{
    QFile file(archivo);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

} // namespace

/// The settings: their table, who may change them, and what a save stores.
class PruebaConfiguracion : public QObject
{
    Q_OBJECT

    static QString ultimaEntrada(soporte::BaseDePrueba &base)
    {
        const db::Rows filas
            = base.conexion().query(QStringLiteral("SELECT accion FROM [Historial] WHERE ventana = ?"), {ventana});
        return filas->rowCount() == 0 ? QString() : filas->text(filas->rowCount() - 1, 0);
    }

private slots:
    void cadaColumnaTieneSuLugar()
    {
        const db::Table config = *db::esquemaNucleo().table(u"Config");
        QStringList exentas;
        for (const auto &[columna, motivo] : columnasSinAjuste()) {
            QVERIFY2(config.column(columna) && !motivo.isEmpty(), qPrintable(columna));
            exentas << columna.toLower();
        }
        for (const db::Column &columna : config.columns)
            QVERIFY2(
                (buscarAjuste(columna.name) != nullptr) != exentas.contains(columna.name.toLower()),
                qPrintable(columna.name));

        QStringList vistas;
        for (const GrupoAjustes &grupo : gruposDeAjustes())
            for (const SeccionAjustes &seccion : grupo.secciones)
                for (const Ajuste &ajuste : seccion.ajustes) {
                    const db::Column *columna = config.column(ajuste.columna);
                    QVERIFY2((columna != nullptr) != ajuste.deEquipo, qPrintable(ajuste.columna));
                    QVERIFY2(
                        !vistas.contains(ajuste.columna) && !ajuste.ayuda.isEmpty() && !ajuste.rotulo().isEmpty(),
                        qPrintable(ajuste.columna));
                    // What a new database begins with is something that the person could have chosen.
                    if (columna && columna->initial && ajuste.tipo == Ajuste::Tipo::Entero)
                        QVERIFY2(
                            columna->initial->toInt() >= ajuste.minimo && columna->initial->toInt() <= ajuste.maximo,
                            qPrintable(ajuste.columna));
                    vistas << ajuste.columna;
                }
        QCOMPARE(
            buscarAjuste(u"FORZARGUARDARPACI")->rotulo(),
            QStringLiteral(
                "Forzar el ingreso del Apellido, Nombres, Documento de Identidad, Sexo, Fecha de Nacimiento, "
                "Teléfono, Cobertura Médica y Nº de Afiliado"));
    }

    void guardaSoloLoQueCambio_data() { soporte::filasDeDialecto(); }
    void guardaSoloLoQueCambio()
    {
        soporte::BaseDePrueba base(soporte::dialectoActual());
        base.conexion().execute(QStringLiteral("INSERT INTO [Config] (NomDoc,sumfpp) VALUES ('otra',280)"));
        const QVariantMap antes = leerConfiguracion(base);
        QCOMPARE(antes["sumfpp"], QVariant(280));
        QCOMPARE(antes["forzarguardarpaci"], QVariant(false));
        QCOMPARE(antes["segundosagenda"], QVariant(30));

        // Another station gives a number and turns an option on, meanwhile.
        const auto otra = base.otraTerminal();
        db::Config(*otra).guardar({{"numerohc", "100"}, {"pagocaja", true}});
        QVERIFY(!guardarConfiguracion(
            base,
            0,
            {{"prefijohc", " O'Higgins-"},
             {"forzarguardarpaci", true},
             {"durtur2", 45},
             {"nuidhc", 1},
             {"plantillaagenda", " Traer\nestudios. "},
             {"segundosmensajes", 5}}));
        const QVariantMap despues = leerConfiguracion(base);
        QVariantMap esperado = antes;
        esperado.insert(
            {{"prefijohc", "O'Higgins-"},
             {"numerohc", "100"},
             {"pagocaja", true},
             {"forzarguardarpaci", true},
             {"durtur2", 45},
             {"nuidhc", 1},
             {"plantillaagenda", " Traer\nestudios. "},
             {"segundosmensajes", 5}});
        QCOMPARE(despues, esperado);
        QCOMPARE(db::Config(base.conexion()).numero(u"forzarguardarpaci"), 1);
        QCOMPARE(base.valor("SELECT COUNT(*) FROM [Config] WHERE prefijohc IS NULL"), QStringLiteral("1"));
        QCOMPARE(base.delEquipo, (db::AjustesEquipo{30, 5, false}));
        const QString entrada = ultimaEntrada(base);
        QVERIFY2(
            entrada.startsWith(QStringLiteral("Se presionó el botón Guardar. Se cambió: Datos obligatorios: Forzar"))
                && entrada.contains(QStringLiteral("Duración de los turnos en una plantilla horaria nueva: Lunes"))
                && entrada.contains(QStringLiteral("Numeración automática: Prefijo"))
                && !entrada.contains(QStringLiteral("Número")),
            qPrintable(entrada));
    }

    void rechazos_data()
    {
        QTest::addColumn<QVariantMap>("cambios");
        QTest::addColumn<QString>("texto");
        QTest::addColumn<QString>("campo");
        const QString largo(19, u'X');
        QTest::newRow("fuera de rango") << QVariantMap{{"backupcantidad", 0}, {"pagocaja", true}}
                                        << "Ingrese en 'Cantidad de copias que se conservan' un número entre 1 y 999."
                                        << "backupcantidad";
        QTest::newRow("vacío") << QVariantMap{{"segundosagenda", QVariant()}}
                               << "Ingrese en 'Actualizar la agenda cada (segundos)' un número entre 1 y 60."
                               << "segundosagenda";
        QTest::newRow("opción que no hay")
            << QVariantMap{{"tipohojarecibo", 7}} << "Elija una de las opciones de 'Hoja en que se imprimen'."
            << "tipohojarecibo";
        QTest::newRow("número con letras")
            << QVariantMap{{"numerohc", "12b"}}
            << "El Número de la próxima Historia Clínica debe tener sólo dígitos, o quedar vacío."
            << "numerohc";
        QTest::newRow("número negativo")
            << QVariantMap{{"numerohc", "-5"}}
            << "El Número de la próxima Historia Clínica debe tener sólo dígitos, o quedar vacío."
            << "numerohc";
        QTest::newRow("prefijo demasiado largo con el número que hay") << QVariantMap{{"prefijohc", largo}}
                                                                       << "El Nº de Historia Clínica '" + largo
                + "000007' es demasiado largo: entre el Prefijo y el Número puede tener hasta 20 caracteres."
                                                                       << "prefijohc";
        QTest::newRow("carpeta que no existe")
            << QVariantMap{{"backupcarpeta", "/no/hay"}}
            << "La carpeta para las copias de seguridad no existe:\n/no/hay\nElija otra, o deje el campo vacío para "
               "usar la carpeta 'Backup' del programa."
            << "backupcarpeta";
    }
    void rechazos()
    {
        QFETCH(QVariantMap, cambios);
        soporte::BaseDePrueba base;
        db::Config(base.conexion()).guardar(u"numerohc", "7");
        const QVariantMap antes = leerConfiguracion(base);
        const base::Control rechazo = guardarConfiguracion(base, 0, cambios);
        QVERIFY(rechazo);
        QCOMPARE(rechazo->titulo, base::titulo::aviso);
        QTEST(rechazo->texto, "texto");
        QTEST(rechazo->campo, "campo");
        QCOMPARE(leerConfiguracion(base), antes);
        QCOMPARE(ultimaEntrada(base), QString());
    }

    void laCarpetaEsDeLaComputadoraQueTieneLaBase()
    {
        soporte::BaseDePrueba base;
        QVERIFY(!guardarConfiguracion(base, 0, {{"backupcarpeta", base.carpetaPrograma()}}));
        base.clienteDeRed = true;
        QVERIFY(!guardarConfiguracion(base, 0, {{"backupcarpeta", "E:/Copias"}}));
        QVERIFY(!guardarConfiguracion(base, 0, {{"backupcarpeta", ""}}));
    }

    void quienPuede_data()
    {
        QTest::addColumn<db::Dialect::Kind>("dialecto");
        QTest::addColumn<QString>("antes"); // what becomes of user 20, the current one
        QTest::addColumn<int>("administrador");
        QTest::addColumn<QString>("alAbrir"); // beginning of the refusal; empty: none
        QTest::addColumn<QString>("alGuardar");
        const QString noEs = QStringLiteral("El usuario con cuya clave"), nadie = QStringLiteral("Defina un Usuario"),
                      porLaPuerta = QStringLiteral("A esta ventana se ingresa"),
                      permiso = QStringLiteral("No tiene permiso");
        const struct {
            const char *nombre;
            const char *antes;
            int administrador;
            QString alAbrir, alGuardar;
        } casos[] = {
            {"con el derecho", "administrador = 0", 0, {}, {}},
            {"sin el derecho", "accesoconfiguracion = 0", 0, permiso, permiso},
            {"administrador sin clave: todavía el derecho", "administrador = -1, claveusuario = ' '", 0, {}, {}},
            {"hay puerta y no se pasó", "administrador = -1, claveusuario = 'x'", 0, porLaPuerta, {}},
            {"por la puerta, sin el derecho",
             "administrador = -1, claveusuario = 'x', accesoconfiguracion = 0",
             20,
             {},
             {}},
            {"ya no es administrador", "administrador = 0", 20, noEs, noEs},
            {"sin usuario", "id = 90, administrador = -1", 90, nadie, nadie},
        };
        for (const db::Dialect::Kind dialecto : {db::Dialect::Kind::Access, db::Dialect::Kind::SqlServer})
            for (const auto &c : casos)
                QTest::addRow("%s %d", c.nombre, int(dialecto))
                    << dialecto << QString::fromUtf8(c.antes) << c.administrador << c.alAbrir << c.alGuardar;
    }
    void quienPuede()
    {
        QFETCH(QString, antes);
        QFETCH(int, administrador);
        QFETCH(QString, alAbrir);
        QFETCH(QString, alGuardar);
        soporte::BaseDePrueba base(soporte::dialectoActual());
        base.conexion().execute("INSERT INTO [Lista Doctores] (NomDoc,tipo) VALUES ('Otro',0)");
        base.conexion().execute("UPDATE [Lista Doctores] SET " + antes + " WHERE id = 20");
        const auto comienza = [](const base::Control &control, const QString &texto) {
            return texto.isEmpty() ? !control : control && control->texto.startsWith(texto);
        };
        QVERIFY(comienza(controlarApertura(base, administrador), alAbrir));
        QVERIFY(comienza(guardarConfiguracion(base, administrador, {{"sumfpp", 281}}), alGuardar));
        QCOMPARE(db::Config(base.conexion()).numero(u"sumfpp"), alGuardar.isEmpty() ? 281 : 280);
        const auto borrado = [&] {
            if (alGuardar.isEmpty())
                base.guion.esperarPregunta(
                    "Confirmación...",
                    "¿Seguro que desea eliminar los registros del historial hasta el 01/01/2020?",
                    false);
            return eliminarHistorialHasta(base, administrador, QDate(2020, 1, 1));
        }();
        QCOMPARE(bool(borrado), alGuardar.isEmpty());
        QVERIFY(base.guion.terminar());
    }

    void fondo_data() { soporte::filasDeDialecto(); }
    void fondo()
    {
        soporte::BaseDePrueba base(soporte::dialectoActual());
        base.conexion().execute(QStringLiteral("INSERT INTO [Config] (NomDoc) VALUES ('otra')"));
        const QDir carpeta(base.carpetaPrograma());
        QVERIFY(carpeta.mkpath("Imagenes"));
        escribir(carpeta.filePath("Imagenes/fondoaplicacion.jpg"), "vieja");
        escribir(carpeta.filePath("nueva.png"), "nueva");

        QVERIFY(!guardarConfiguracion(base, 0, {{"fondoaplicacion", carpeta.filePath("nueva.png")}}));
        const QString puesta = db::fondoAplicacion(base); // by the first row
        QCOMPARE(QFileInfo(puesta).fileName(), QStringLiteral("fondoaplicacion"));
        QCOMPARE(QFileInfo(puesta).size(), 5);
        QCOMPARE(leerConfiguracion(base)["fondoaplicacion"].toString(), puesta);
        QVERIFY(db::Config(base.conexion()).bandera(u"fondoaplicacion"));

        const auto fallida = guardarConfiguracion(base, 0, {{"fondoaplicacion", "/no/hay.png"}, {"sumfpp", 270}});
        QCOMPARE(fallida->campo, QStringLiteral("fondoaplicacion"));
        QCOMPARE(db::fondoAplicacion(base), puesta);
        QCOMPARE(db::Config(base.conexion()).numero(u"sumfpp"), 280);

        QVERIFY(!guardarConfiguracion(base, 0, {{"fondoaplicacion", ""}}));
        QVERIFY(db::fondoAplicacion(base).isEmpty());
        QVERIFY(carpeta.entryList({"fondo*"}, QDir::Files).isEmpty() && !QFile::exists(puesta));
    }

    void historialHasta_data() { soporte::filasDeDialecto(); }
    void historialHasta()
    {
        soporte::BaseDePrueba base(soporte::dialectoActual());
        QCOMPARE(resumenHistorial(base.conexion()).cantidad, 0);
        for (const QDate fecha : {QDate(2019, 5, 1), QDate(2020, 12, 31), QDate(2021, 1, 1)})
            base.conexion().execute(
                "INSERT INTO [Historial] (fecha,equipo,iddoctor,ventana,accion) VALUES (?,'PC',20,'V','A')",
                {QDateTime(fecha, QTime(10, 0))});
        QCOMPARE(resumenHistorial(base.conexion()).cantidad, 3);
        QCOMPARE(resumenHistorial(base.conexion()).desde.date(), QDate(2019, 5, 1));

        QCOMPARE(
            eliminarHistorialHasta(base, 0, {}).rechazo().texto,
            QStringLiteral("Debe ingresar la fecha hasta la que desea eliminar el historial."));
        QCOMPARE(
            eliminarHistorialHasta(base, 0, base.reloj.today().addDays(1)).rechazo().texto,
            QStringLiteral("La fecha hasta la que desea eliminar el historial no puede ser posterior a hoy."));
        for (const bool si : {false, true}) {
            base.guion.esperarPregunta(
                "Confirmación...", "¿Seguro que desea eliminar los registros del historial hasta el 31/12/2020?", si);
            const auto borrado = eliminarHistorialHasta(base, 0, QDate(2020, 12, 31));
            QVERIFY(borrado);
            QCOMPARE(borrado->value_or(-1), si ? 2 : -1);
        }
        QCOMPARE(base.valor("SELECT COUNT(*) FROM [Historial] WHERE ventana = 'V'"), QStringLiteral("1"));
        QVERIFY2(ultimaEntrada(base).contains("31/12/2020"), qPrintable(ultimaEntrada(base)));
        QVERIFY(base.guion.terminar());
    }

    void setupDeEsteEquipo()
    {
        QTemporaryDir carpeta;
        soporte::MensajesGuionados guion;
        soporte::RelojFijo reloj;
        app::Modulo modulo(carpeta.path(), guion, reloj, db::Engines::standard());
        modulo.setUsuarioActual(77);
        modulo.setAjustesEquipo({7, 60, true});
        QCOMPARE(modulo.segundosAgenda(), 7);
        QCOMPARE(modulo.segundosMensajes(), 60);
        QVERIFY(modulo.modoTurno());
        QCOMPARE(modulo.usuarioActual(), 77);
    }
};

PRUEBA(PruebaConfiguracion)
#include "PruebaConfiguracion.moc"
