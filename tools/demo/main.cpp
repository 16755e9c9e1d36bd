#include "base/Clock.h"
#include "db/Connection.h"
#include "db/Engine.h"
#include "db/Error.h"
#include "demo/Demo.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>

#include <cstdio>

namespace {

int decir(const QString &texto)
{
    std::fprintf(stderr, "%s\n", qUtf8Printable(texto));
    return 1;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCommandLineParser opciones;
    opciones.setApplicationDescription(QStringLiteral("Crea una base de datos con un consultorio inventado."));
    opciones.addHelpOption();
    opciones.addPositionalArgument(QStringLiteral("salida"), QStringLiteral("Archivo .mdb que se crea."));
    const demo::Medida usual;
    const struct {
        const char *nombre;
        const char *ayuda;
        int usual;
    } numeros[] = {
        {"pacientes", "Cantidad de pacientes.", usual.pacientes},
        {"turnos", "Cantidad de turnos.", usual.turnos},
        {"ordenes", "Cantidad de órdenes.", usual.ordenes},
        {"consultas", "Cantidad de consultas.", usual.consultas},
        {"semilla", "Otra semilla, otro consultorio.", int(usual.semilla)},
    };
    for (const auto &n : numeros)
        opciones.addOption(QCommandLineOption(
            QString::fromLatin1(n.nombre), QString::fromUtf8(n.ayuda), QStringLiteral("N"), QString::number(n.usual)));
    opciones.addOption(QCommandLineOption(
        QStringLiteral("hoy"), QStringLiteral("Día alrededor del cual hay turnos."), QStringLiteral("aaaa-mm-dd")));
    opciones.process(application);

    if (opciones.positionalArguments().size() != 1)
        return decir(opciones.helpText());
    const QString salida = opciones.positionalArguments().constFirst();
    int valores[std::size(numeros)];
    for (size_t i = 0; i < std::size(numeros); ++i) {
        bool esNumero = false;
        valores[i] = opciones.value(QString::fromLatin1(numeros[i].nombre)).toInt(&esNumero);
        if (!esNumero || valores[i] < 0)
            return decir(QStringLiteral("--%1 lleva un número.").arg(QLatin1String(numeros[i].nombre)));
    }
    const base::SystemClock reloj;
    demo::Medida medida{
        .pacientes = valores[0],
        .turnos = valores[1],
        .ordenes = valores[2],
        .consultas = valores[3],
        .semilla = quint64(valores[4]),
        .hoy = reloj.today()};
    if (opciones.isSet(QStringLiteral("hoy"))) {
        medida.hoy = QDate::fromString(opciones.value(QStringLiteral("hoy")), Qt::ISODate);
        if (!medida.hoy.isValid())
            return decir(QStringLiteral("--hoy lleva una fecha aaaa-mm-dd."));
    }

    if (QFile::exists(salida))
        return decir(QStringLiteral("%1 ya existe.").arg(salida));
    if (!QFile::copy(QStringLiteral(VASTELO_PLANTILLA), salida))
        return decir(QStringLiteral("No se pudo copiar " VASTELO_PLANTILLA "."));
    QFile::setPermissions(salida, QFile::ReadOwner | QFile::WriteOwner);
    try {
        const auto conexion = db::Connection::open(
            QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0; Jet OLEDB:Database Password=kestrel428;Data Source=")
                + salida,
            db::Engines::standard());
        QElapsedTimer tiempo;
        tiempo.start();
        demo::llenar(*conexion, medida, [](int porciento, const QString &etapa) {
            std::fprintf(stderr, "\r%3d %%  %-30s", porciento, qUtf8Printable(etapa));
        });
        std::fprintf(stderr, "\n%.1f s\n", double(tiempo.elapsed()) / 1000);
    } catch (const db::Error &error) {
        QFile::remove(salida);
        return decir(error.description());
    }
    return 0;
}
