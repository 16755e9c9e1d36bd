#include "patients/EliminarPaciente.h"
#include "app/Esquema.h"
#include "db/Connection.h"
#include "db/Error.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"

#include <QDir>
#include <QFile>

class EliminarPaciente : public QObject
{
    Q_OBJECT

    static constexpr int ana = 12, bruno = 123;

    /// Some value for a column, so that no table is left out for a column that must not be empty.
    static QVariant algo(const db::Column &columna)
    {
        switch (columna.type) {
        case db::Type::Text:
        case db::Type::Memo: return QStringLiteral("x");
        case db::Type::DateTime: return QDateTime(QDate(2026, 1, 2), QTime(3, 4));
        case db::Type::Binary: return QByteArray("b");
        default: return 1;
        }
    }

    /// Every table that has a row by patient, and the column that says whose.
    static QMap<QString, QString> tablas()
    {
        QMap<QString, QString> halladas;
        const db::Schema esquema = app::esquemaCompleto();
        for (const db::Table &tabla : esquema.tables)
            for (const db::Column &columna : tabla.columns)
                if (columna.name.compare(u"NroPaci", Qt::CaseInsensitive) == 0
                    || columna.name.compare(u"NroHC", Qt::CaseInsensitive) == 0)
                    halladas.insert(tabla.name, columna.name);
        halladas.remove(QStringLiteral("Imprimir"));
        halladas.remove(QStringLiteral("Imprimir2"));
        return halladas;
    }

    static void llenar(soporte::BaseDePrueba &base, int nrohc)
    {
        const db::Schema esquema = app::esquemaCompleto();
        const QMap<QString, QString> todas = tablas();
        for (auto it = todas.cbegin(); it != todas.cend(); ++it) {
            QStringList nombres;
            QStringList marcas;
            db::Params valores;
            for (const db::Column &columna : esquema.table(it.key())->columns) {
                if (columna.type == db::Type::Counter)
                    continue;
                nombres << base.conexion().dialect().identifier(columna.name);
                marcas << QStringLiteral("?");
                valores << (columna.name == it.value() ? QVariant(nrohc) : algo(columna));
            }
            base.conexion().execute(
                QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                    .arg(base.conexion().dialect().identifier(it.key()), nombres.join(u','), marcas.join(u',')),
                valores);
        }
        base.conexion().execute(
            "UPDATE [Pacientes] SET Apellido = 'O''Higgins', apellido2 = 'Paz', Nombres = 'Ana' WHERE NroHC = ?",
            {nrohc});
    }

    static int cuantos(soporte::BaseDePrueba &base, const QString &tabla, const QString &columna, int nrohc)
    {
        return base.valor(QStringLiteral("SELECT COUNT(*) FROM [%1] WHERE %2 = ?").arg(tabla, columna), {nrohc})
            .toInt();
    }

    static QString archivo(const soporte::BaseDePrueba &base, const QString &nombre)
    {
        const QString ruta = base.carpetaDatos() + QStringLiteral("/Imagenes/") + nombre;
        QDir().mkpath(QFileInfo(ruta).path());
        QFile nuevo(ruta);
        if (!nuevo.open(QIODevice::WriteOnly))
            qFatal("no file");
        return ruta;
    }

    static QString pregunta()
    {
        return QStringLiteral("¿Seguro que desea eliminar el Paciente O'Higgins Paz, Ana?. Si lo hace, perderá toda la "
                              "Historia Clínica del Paciente y los registros contables del mismo.");
    }

private slots:
    void unoDesapareceYElOtroQueda_data() { soporte::filasDeDialecto(); }
    void unoDesapareceYElOtroQueda()
    {
        soporte::BaseDePrueba base(soporte::dialectoActual());
        llenar(base, ana);
        llenar(base, bruno);
        base.conexion().execute(
            "UPDATE [Pacientes Estudios Imagenes] SET archivo = 'ana.jpg' WHERE NroPaci = ?", {ana});
        base.conexion().execute(
            "INSERT INTO [Pacientes Estudios Imagenes] (NroPaci,archivo) VALUES (?,?)", {ana, "..\\..\\setup.dat"});
        for (const int de : {ana, bruno})
            base.conexion().execute(
                "INSERT INTO [Pacientes Estudios Imagenes] (NroPaci,archivo) VALUES (?,'comun.jpg')", {de});
        const QString suya = archivo(base, "Estudios/ana.jpg"), comun = archivo(base, "Estudios/comun.jpg");
        const QString foto = archivo(base, "Fotos/Foto12.jpg"), fotoVieja = archivo(base, "Fotos/Foto12");
        const QString otraFoto = archivo(base, "Fotos/Foto123.jpg"), ajeno = archivo(base, "../setup.dat");

        base.guion.esperarPregunta("Confirmación...", pregunta(), true);
        const auto hecho = patients::eliminarPaciente(base, ana, false);
        QVERIFY(hecho && *hecho);

        const QMap<QString, QString> todas = tablas();
        QVERIFY(todas.size() > 60);
        for (auto it = todas.cbegin(); it != todas.cend(); ++it) {
            const bool queda = it.key() == QStringLiteral("Agenda Turnos");
            QVERIFY2(cuantos(base, it.key(), it.value(), ana) == (queda ? 1 : 0), qPrintable(it.key()));
            QVERIFY2(cuantos(base, it.key(), it.value(), bruno) >= 1, qPrintable(it.key()));
        }
        QVERIFY(!QFile::exists(suya) && !QFile::exists(foto) && !QFile::exists(fotoVieja));
        QVERIFY(QFile::exists(comun) && QFile::exists(otraFoto) && QFile::exists(ajeno));
        QCOMPARE(
            base.valor("SELECT accion FROM [Historial] WHERE ventana = ?", {"Elección del Paciente"}),
            QStringLiteral("Se eliminó el paciente 'O'Higgins Paz, Ana'."));
    }

    void rechazos()
    {
        soporte::BaseDePrueba base;
        llenar(base, ana);
        const auto texto = [&](bool abierta) {
            const auto hecho = patients::eliminarPaciente(base, ana, abierta);
            return hecho ? QString() : hecho.rechazo().texto;
        };
        QCOMPARE(
            texto(true),
            QStringLiteral("Un Paciente está siendo atendido, para seguir debe cerrar la ficha del Paciente"));
        base.guion.esperarPregunta("Confirmación...", pregunta(), false);
        QCOMPARE(texto(false), QString());
        QCOMPARE(cuantos(base, "Consultas", "NroPaci", ana), 1);

        // Nothing goes when one table cannot be emptied.
        base.conexion().execute("DROP TABLE [Pacientes Sesiones]");
        base.guion.esperarPregunta("Confirmación...", pregunta(), true);
        QVERIFY_THROWS_EXCEPTION(db::Error, (void)patients::eliminarPaciente(base, ana, false));
        QCOMPARE(cuantos(base, "Consultas", "NroPaci", ana), 1);

        QVERIFY(base.guion.terminar());
        base.conexion().execute("DELETE FROM [Pacientes]");
        QCOMPARE(texto(false), QStringLiteral("Este paciente no Existe, probablemente a sido eliminado."));
        base.conexion().execute("UPDATE [Lista Doctores] SET accesoeliminarpaciente = 0");
        QVERIFY(texto(false).startsWith(QStringLiteral("No tiene permiso")));
    }
};

PRUEBA(EliminarPaciente)
#include "eliminarPaciente.moc"
