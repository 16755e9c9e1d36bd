#include "app/Opciones.h"

#include "app/Modulo.h"

#include <QFile>
#include <QStringList>

namespace app {

namespace {

const char *const textoAyuda = "Uso: vastelo [opciones]\n"
                               "\n"
                               "Sistema de gestión de consultorios. Esta versión: agenda de turnos, búsqueda\n"
                               "y alta de pacientes.\n"
                               "\n"
                               "  --carpeta DIR   carpeta de programa: allí están setup.dat, ruta.dat, la\n"
                               "                  plantilla Datos_Vacio.mdb, la base Datos.mdb (salvo que\n"
                               "                  ruta.dat indique otra carpeta) y la carpeta Imagenes.\n"
                               "                  Sin esta opción es la carpeta del ejecutable, si se puede\n"
                               "                  escribir en ella; si no, una en los datos del usuario.\n"
                               "  --demo          abre un consultorio de demostración: si no hay una base,\n"
                               "                  la crea con datos inventados. Sin --carpeta usa\n"
                               "                  la subcarpeta 'demo' de la carpeta de programa.\n"
                               "  --version       muestra la versión\n"
                               "  --help, -h      muestra esta ayuda\n"
                               "\n"
                               "También se aceptan las opciones de Qt, por ejemplo -platform.\n";

} // namespace

Opciones leerOpciones(int argc, char *argv[])
{
    Opciones opciones;
    for (int i = 1; i < argc; ++i) {
        const QString argumento = QFile::decodeName(argv[i]);
        if (argumento == QLatin1String("--help") || argumento == QLatin1String("-h")) {
            opciones.salida = QString::fromUtf8(textoAyuda);
            return opciones;
        }
        if (argumento == QLatin1String("--version")) {
            opciones.salida = QStringLiteral("Vastelo %1\n").arg(QLatin1String(Modulo::version));
            return opciones;
        }
        if (argumento == QLatin1String("--demo")) {
            opciones.demo = true;
        } else if (argumento.startsWith(QLatin1String("--carpeta="))) {
            opciones.carpeta = argumento.mid(10);
        } else if (argumento == QLatin1String("--carpeta") && i + 1 < argc) {
            opciones.carpeta = QFile::decodeName(argv[++i]);
        } else if (argumento.startsWith(QLatin1String("--"))) {
            opciones.salida = QStringLiteral("vastelo: opción desconocida o incompleta: %1\nVea 'vastelo --help'.\n")
                                  .arg(argumento);
            opciones.error = true;
            return opciones;
        }
    }
    return opciones;
}

} // namespace app
