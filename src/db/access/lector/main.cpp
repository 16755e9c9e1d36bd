// Reads an old Access database through its ODBC driver in a process of its own: what damage does to the driver stays
// here. vastelo-access-odbc FILE [TABLE]

#include "db/Error.h"
#include "db/access/Cabecera.h"
#include "db/access/ControladorAccess.h"
#include "db/access/EscrituraTramos.h"
#include "db/access/FuenteOdbc.h"
#include "db/access/Tramos.h"
#include "db/odbc/Odbc.h"

#include <QCoreApplication>

#include <cstdlib>
#include <new>

#ifdef Q_OS_WIN
#include <cstdio>
#include <fcntl.h>
#include <io.h>
#endif

namespace {

using db::access::EscrituraTramos;

/// Throws db::Error.
void leer(const QString &archivo, const QString &tabla)
{
    EscrituraTramos escritura;
    const auto controlador = db::access::elegirControladorAccess(db::odbc::installedDrivers());
    if (!controlador)
        throw db::access::sinControladorAccess();
    // The file says its own password: whoever asked for the reading was asked for it before.
    const QString clave = db::access::leerCabecera(archivo).clave;
    db::access::FuenteOdbc fuente(db::access::conexionAccess(*controlador, archivo, clave));
    (void)fuente.leer(escritura, tabla);
    EscrituraTramos::cerrar();
}

bool seLee(const QString &archivo, const QString &tabla)
{
    try {
        leer(archivo, tabla);
        return true;
    } catch (const db::Error &error) {
        EscrituraTramos::fallar(error);
    } catch (const db::odbc::Failed &) {
        EscrituraTramos::fallar(db::access::sinControladorAccess());
    } catch (const std::bad_alloc &) {
        EscrituraTramos::fallar(db::access::Tramos::danio(QStringLiteral("pide más memoria de la que hay")));
    }
    return false;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication programa(argc, argv);
    const QStringList argumentos = QCoreApplication::arguments();
    if (argumentos.size() < 2 || argumentos.size() > 3)
        return 2;
#ifdef Q_OS_WIN
    if (_setmode(_fileno(stdout), _O_BINARY) == -1)
        return 2;
#endif
    // Nothing more of what a damaged file may have left behind in the driver.
    std::_Exit(seLee(argumentos.at(1), argumentos.value(2)) ? 0 : 1);
}
