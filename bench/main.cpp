#include "Agenda.h"
#include "Historial.h"
#include "Motor.h"
#include "Pintado.h"
#include "Tabla.h"
#include "agenda/DiaAgenda.h"
#include "agenda/Reserva.h"
#include "agenda/forms/Registro.h"
#include "app/Arranque.h"
#include "app/Modulo.h"
#include "app/forms/sistema.h"
#include "base/Clock.h"
#include "base/Mensajes.h"
#include "db/Config.h"
#include "db/Connection.h"
#include "db/Engine.h"
#include "db/Error.h"
#include "demo/Demo.h"
#include "maintenance/forms/Registro.h"
#include "patients/NuevoPaciente.h"
#include "patients/forms/Registro.h"
#include "patients/forms/elecpaci.h"
#include "ui/Grilla.h"
#include "ui/PrepararAplicacion.h"
#include "ui/Ventanas.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPixmap>
#include <QProcess>
#include <QRadioButton>

#include <cstdio>

namespace {

using medicion::Motor;
using medicion::Tabla;

const QString clave = QStringLiteral("kestrel428");
// Appointments of the made-up practices lie around this Wednesday.
const QDate hoy(2026, 11, 18);

class RelojDeMedicion final : public base::Clock
{
public:
    [[nodiscard]] QDateTime now() const override { return {hoy, QTime(9, 0)}; }
};

/// Nothing should need saying while things are measured: what is said ends the run.
class NadaQueDecir final : public base::Mensajes
{
public:
    void mensaje(const QString &titulo, const QString &texto, base::Icono) override { terminar(titulo, texto); }
    bool pregunta(const QString &titulo, const QString &texto, bool) override { return terminar(titulo, texto), false; }
    std::optional<QString> pedirTexto(const QString &t, const QString &x, const QString &) override
    {
        return nada(t, x);
    }
    std::optional<QString> pedirClave(const QString &t, const QString &x) override { return nada(t, x); }
    std::optional<QString> elegirArchivo(const QString &t, const QString &x, const QString &) override
    {
        return nada(t, x);
    }
    std::optional<QString> elegirDestino(const QString &t, const QString &x, const QString &) override
    {
        return nada(t, x);
    }
    std::optional<QString> elegirCarpeta(const QString &t, const QString &x) override { return nada(t, x); }

private:
    static void terminar(const QString &titulo, const QString &texto)
    {
        qFatal("%s %s", qUtf8Printable(titulo), qUtf8Printable(texto));
    }
    static std::optional<QString> nada(const QString &titulo, const QString &texto)
    {
        terminar(titulo, texto);
        return {};
    }
};

QString carpetaDe(const QString &carpeta, const demo::Medida &medida)
{
    return QStringLiteral("%1/p%2-t%3-a%4").arg(carpeta).arg(medida.pacientes).arg(medida.turnos).arg(medida.acciones);
}

/// Makes a practice in its folder, which then is as a program's; kept for the next run.
void llenarConsultorio(const QString &carpeta, const demo::Medida &medida)
{
    QDir().mkpath(carpeta);
    const QString aMedias = carpeta + QStringLiteral("/nuevo.mdb");
    QFile::remove(aMedias);
    if (!QFile::copy(QStringLiteral(VASTELO_PLANTILLA), aMedias))
        qFatal("no se pudo copiar %s", VASTELO_PLANTILLA);
    QFile::setPermissions(aMedias, QFile::ReadOwner | QFile::WriteOwner);
    const double tiempo = medicion::cronometrar([&] {
        const auto conexion = db::Connection::open(
            QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0; Jet OLEDB:Database Password=") + clave
                + QStringLiteral(";Data Source=") + aMedias,
            db::Engines::standard());
        demo::llenar(*conexion, medida);
    });
    std::fprintf(stderr, "%d pacientes, hechos en %.0f s\n", medida.pacientes, tiempo / 1000);
    QFile::rename(aMedias, carpeta + QStringLiteral("/Datos.mdb"));
}

/// A practice that is open, with its windows.
class Consultorio
{
public:
    explicit Consultorio(const QString &carpeta)
        : modulo(carpeta, m_mensajes, m_reloj, db::Engines::standard())
    {
        // The program first: the engine alone then finds the file in the system's memory, if anything its advantage.
        const double arranque = medicion::cronometrar([&] {
            patients::registrarVentanas(modulo, ventanas);
            agenda::registrarVentanas(modulo, ventanas);
            maintenance::registrarVentanas(modulo, ventanas);
            (void)app::Arranque(modulo, [](const QString &) {}).iniciar();
            m_marco = std::make_unique<app::sistema>(modulo, modulo, ventanas);
            m_marco->resize(1280, 800);
            (void)m_marco->grab();
        });
        const double motorSolo
            = medicion::cronometrar([&] { Motor::abrirYCerrar(carpeta + QStringLiteral("/Datos.mdb"), clave); });
        tabla.agregar(QStringLiteral("arranque hasta la ventana principal (con la clave)"), arranque, motorSolo);
        db::Config(modulo.conexion()).guardar(u"nuidhc", false);
    }

    void medirEleccion(int veces);
    void medirAgenda(int veces)
    {
        medicion::medirAgenda(tabla, modulo, ventanas, hoy, veces);
        medicion::medirPintado(tabla, modulo, ventanas, *m_marco, hoy, veces * 3);
    }
    void medirReserva(int veces);
    void medirAlta(int veces);
    void medirHistorial(int encadenadas, int veces)
    {
        medicion::medirHistorial(tabla, modulo, ventanas, encadenadas, veces);
    }

    Tabla tabla;

private:
    NadaQueDecir m_mensajes;
    RelojDeMedicion m_reloj;
    app::Modulo modulo;
    ui::Ventanas ventanas;
    std::unique_ptr<app::sistema> m_marco;

    // The list of patients as one statement, without balances.
    static QByteArray listado(const QString &filtro)
    {
        return Motor::traducida(
            QStringLiteral("SELECT NroHC,NroHC,Apellido & ' ' & apellido2 & ', ' & Nombres,DNI,NroOS"
                           " FROM [Pacientes] WHERE NroHC <> 0%1 ORDER BY Apellido,apellido2,Nombres")
                .arg(filtro));
    }
};

void Consultorio::medirEleccion(int veces)
{
    Motor motor(modulo.conexion());
    const db::Dialect &dialecto = modulo.conexion().dialect();
    const auto abrir = [this] {
        auto *ventana = ventanas.abrir(QStringLiteral("elecpaci"), {.datos = {{QStringLiteral("modo"), 2}}});
        (void)ventana->grab();
        return static_cast<patients::elecpaci *>(ventana);
    };
    const auto cerrar = [](QWidget *ventana) {
        ventana->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    // Once a process: what the list needs is read from the file.
    tabla.agregar(
        QStringLiteral("elección de paciente, la primera vez"),
        medicion::cronometrar([&] { cerrar(abrir()); }),
        medicion::cronometrar([&] { (void)motor.ejecutar(listado({})); }));
    tabla.comparar(
        QStringLiteral("elección de paciente abierta, todo el padrón"),
        [&] { cerrar(abrir()); },
        [&] { (void)motor.ejecutar(listado({})); },
        veces);

    patients::elecpaci *ventana = abrir();
    const auto tecla = [](QWidget *campo, int cual) {
        QKeyEvent evento(QEvent::KeyPress, cual, Qt::NoModifier);
        campo->setFocus();
        QApplication::sendEvent(campo, &evento);
    };
    struct Caso {
        QLineEdit *campo;
        const char16_t *columna;
        const char16_t *texto;
        const char16_t *activos;
    };
    const auto filtrar = [&](const Caso &caso) {
        const QString texto = QString::fromUtf16(caso.texto);
        tabla.comparar(
            QStringLiteral("filtrada por %1 '%2', pintada").arg(caso.campo->objectName(), texto),
            [&] {
                caso.campo->setText(texto);
                tecla(caso.campo, Qt::Key_Return);
                (void)ventana->grab();
                // Where it found only one, another Enter would accept it.
                caso.campo->clear();
            },
            [&] {
                (void)motor.ejecutar(listado(
                    QString::fromUtf16(caso.activos) + QStringLiteral(" And ")
                    + dialecto.contains(QString::fromUtf16(caso.columna), texto)));
            },
            veces);
    };
    for (const char16_t *texto : {u"g", u"gom", u"quis", u"zx"})
        filtrar({ventana->apellidoredu, u"Apellido", texto, u""});
    filtrar({ventana->nombresredu, u"Nombres", u"mar", u""});
    ventana->opcionampli->click();
    filtrar({ventana->dni, u"DNI", u"30111", u" And pacienteinactivo = 0"});
    filtrar({ventana->telpar, u"Tel", u"4551", u" And pacienteinactivo = 0"});
    ventana->opcionredu->click();

    tecla(ventana->apellidoredu, Qt::Key_Return);
    ventana->listapaci->elegirFila(0);
    tabla.comparar(
        QStringLiteral("una página más abajo, pintada con sus saldos"),
        [&] {
            QKeyEvent abajo(QEvent::KeyPress, Qt::Key_PageDown, Qt::NoModifier);
            QApplication::sendEvent(ventana->listapaci, &abajo);
            (void)ventana->grab();
        },
        [&] { (void)ventana->grab(); },
        veces * 3);
    tabla.comparar(
        QStringLiteral("ordenada por documento"),
        [&] {
            ventana->listapaci->sortByColumn(2, Qt::AscendingOrder);
            (void)ventana->grab();
            ventana->listapaci->sortByColumn(-1, Qt::AscendingOrder);
            tecla(ventana->apellidoredu, Qt::Key_Return);
        },
        [&] { (void)motor.ejecutar(listado({})); },
        std::min(veces, 3));
    tabla.comparar(
        QStringLiteral("toda la lista con sus saldos, como se exporta"),
        [&] { (void)ventana->listapaci->comoCsv(); },
        [&] {
            (void)motor.ejecutar(Motor::traducida(
                QStringLiteral("SELECT NroHC,Apellido & ' ' & apellido2 & ', ' & Nombres,DNI,NroOS,"
                               "(SELECT SUM(costo) FROM [Pacientes Ordenes] WHERE NroPaci = [Pacientes].NroHC),"
                               "(SELECT SUM(importe) FROM [Pacientes Pagos] WHERE NroPaci = [Pacientes].NroHC and quien"
                               " = 'P') FROM [Pacientes] ORDER BY Apellido,apellido2,Nombres")));
        },
        1);
    cerrar(ventana);
}

void Consultorio::medirReserva(int veces)
{
    db::Connection &conexion = modulo.conexion();
    Motor motor(conexion);
    const auto profesional = int(
        conexion.query(QStringLiteral("SELECT id FROM [Lista Doctores] WHERE tipo = 0 ORDER BY id"))->integer(0, 0));
    // Free times well after what is booked.
    std::vector<QDateTime> libres;
    for (QDate dia = hoy.addDays(120); int(libres.size()) <= veces; dia = dia.addDays(1)) {
        const agenda::DiaAgenda d = agenda::cargarDia(conexion, profesional, dia, hoy);
        for (const agenda::FilaDia &fila : d.filas)
            if (!d.noLaborable && fila.clase == agenda::FilaDia::Clase::Libre)
                libres.push_back(d.momento(fila));
    }
    const qint64 ultimo = conexion.query(QStringLiteral("SELECT MAX(id) FROM [Agenda Turnos]"))->integer(0, 0);
    size_t siguiente = 0;
    tabla.comparar(
        QStringLiteral("turno guardado"),
        [&] {
            agenda::Reserva reserva;
            reserva.nrohc = 1;
            reserva.doctor = profesional;
            reserva.turnos = {libres[siguiente++]};
            const auto hecha = agenda::reservar(modulo, reserva);
            if (!hecha || hecha->ids.size() != 1)
                qFatal("no se guardó el turno");
        },
        [&] {
            (void)motor.ejecutar("BEGIN IMMEDIATE");
            (void)motor.ejecutar(
                "INSERT INTO \"Agenda Turnos\" (NroHC,Fecha,motivo,Atendido,Doctor,observacionestur,fechahoraasignado,"
                "usuarioasigtur) VALUES (1,'2031-01-01 10:00:00',0,0,?,'','2026-11-18 09:00:00','Silvia')",
                {profesional});
            (void)motor.ejecutar("COMMIT");
        },
        veces);
    conexion.execute(QStringLiteral("DELETE FROM [Agenda Turnos] WHERE id > ?"), {ultimo});
}

void Consultorio::medirAlta(int veces)
{
    db::Connection &conexion = modulo.conexion();
    Motor motor(conexion);
    db::Config config(conexion);
    const int ultimo = config.numero(u"UltimoPaci");
    const QString numero = config.texto(u"numerohc");
    int n = 0;
    tabla.comparar(
        QStringLiteral("paciente nuevo guardado"),
        [&] {
            const auto alta = patients::guardarReducido(
                modulo,
                {.apellido = QStringLiteral("Medición"), .nombres = QString::number(++n), .dni = QString::number(n)});
            if (!alta || !*alta)
                qFatal("no se guardó el paciente");
        },
        [&] {
            (void)motor.ejecutar("BEGIN IMMEDIATE");
            (void)motor.ejecutar(
                "INSERT INTO Pacientes (NroHC,numehistoria,Apellido,Nombres,DNI,FeNac,cobertura) VALUES "
                "(?,'HC-X','MEDICION','X','X','9999-12-31 00:00:00',0)",
                {100000000 + n});
            (void)motor.ejecutar("INSERT INTO \"Antecedentes Perinatologicos\" (NroPaci) VALUES (?)", {100000000 + n});
            (void)motor.ejecutar("UPDATE Config SET UltimoPaci = UltimoPaci, numerohc = numerohc");
            (void)motor.ejecutar("COMMIT");
        },
        veces);
    conexion.execute(QStringLiteral("DELETE FROM [Pacientes] WHERE NroHC > ?"), {ultimo});
    conexion.execute(QStringLiteral("DELETE FROM [Antecedentes Perinatologicos] WHERE NroPaci > ?"), {ultimo});
    config.guardar(u"UltimoPaci", ultimo);
    config.guardar(u"numerohc", numero);
}

} // namespace

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    ui::prepararAplicacion(application);
    QCommandLineParser opciones;
    opciones.setApplicationDescription(QStringLiteral("Mide lo que la persona espera, al lado del motor solo."));
    opciones.addHelpOption();
    const QCommandLineOption pacientes(
        QStringLiteral("pacientes"),
        QStringLiteral("Tamaños del padrón."),
        QStringLiteral("N,N"),
        QStringLiteral("10000,100000"));
    const QCommandLineOption turnos(
        QStringLiteral("turnos"),
        QStringLiteral("Turnos de cada consultorio."),
        QStringLiteral("N"),
        QStringLiteral("1000000"));
    const QCommandLineOption acciones(
        QStringLiteral("acciones"),
        QStringLiteral("Acciones del historial: la mitad, de antes del registro."),
        QStringLiteral("N"),
        QStringLiteral("1000000"));
    const QCommandLineOption soloHistorial(QStringLiteral("historial"), QStringLiteral("Sólo mide el historial."));
    const QCommandLineOption soloAgenda(QStringLiteral("agenda"), QStringLiteral("Sólo mide la agenda."));
    const QCommandLineOption veces(
        QStringLiteral("veces"), QStringLiteral("Mediciones de cada cosa."), QStringLiteral("N"), QStringLiteral("9"));
    const QCommandLineOption carpeta(
        QStringLiteral("carpeta"),
        QStringLiteral("Donde se guardan los consultorios hechos."),
        QStringLiteral("carpeta"),
        QDir::temp().filePath(QStringLiteral("vastelo-medicion")));
    const QCommandLineOption soloLlenar(QStringLiteral("llenar"), QStringLiteral("Sólo hace los consultorios."));
    opciones.addOptions({pacientes, turnos, acciones, soloHistorial, soloAgenda, veces, carpeta, soloLlenar});
    opciones.process(application);

    try {
        const int cuantas = std::max(1, opciones.value(veces).toInt());
        for (const QString &tamano : opciones.value(pacientes).split(u',')) {
            const int n = std::max(1, tamano.toInt());
            const demo::Medida medida{
                .pacientes = n,
                .turnos = std::max(1, opciones.value(turnos).toInt()),
                .ordenes = std::min(n, 100'000) * 3,
                .consultas = std::min(n, 100'000) * 5,
                .acciones = std::max(1, opciones.value(acciones).toInt() / 2),
                .hoy = hoy};
            const QString lugar = carpetaDe(opciones.value(carpeta), medida);
            const bool hecho = QFile::exists(lugar + QStringLiteral("/Datos.mdb"));
            if (opciones.isSet(soloLlenar)) {
                if (!hecho)
                    llenarConsultorio(lugar, medida);
                continue;
            }
            // By another process: this one is to meet the file, and its key, for the first time.
            if (!hecho
                && QProcess::execute(
                       QCoreApplication::applicationFilePath(),
                       {QStringLiteral("--llenar"),
                        QStringLiteral("--pacientes"),
                        tamano,
                        QStringLiteral("--turnos"),
                        opciones.value(turnos),
                        QStringLiteral("--acciones"),
                        opciones.value(acciones),
                        QStringLiteral("--carpeta"),
                        opciones.value(carpeta)})
                    != 0)
                return 1;
            Consultorio consultorio(lugar);
            if (opciones.isSet(soloAgenda)) {
                consultorio.medirAgenda(cuantas);
                consultorio.tabla.imprimir(
                    QStringLiteral("%1 pacientes, %2 turnos").arg(medida.pacientes).arg(medida.turnos));
                continue;
            }
            if (!opciones.isSet(soloHistorial)) {
                consultorio.medirEleccion(cuantas);
                consultorio.medirAgenda(cuantas);
                consultorio.medirReserva(cuantas);
                consultorio.medirAlta(cuantas);
            }
            consultorio.medirHistorial(medida.acciones, cuantas);
            consultorio.tabla.imprimir(QStringLiteral("%1 pacientes, %2 turnos, %3 acciones")
                                           .arg(medida.pacientes)
                                           .arg(medida.turnos)
                                           .arg(2 * medida.acciones));
        }
    } catch (const db::Error &error) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(error.description()));
        return 1;
    }
    return 0;
}
