#include "support/Prueba.h"

#include <QApplication>
#include <QLocale>

#include <cstdio>
#include <memory>
#include <utility>
#include <vector>

namespace soporte {

namespace {
std::vector<std::pair<const char *, Fabrica>> &anotadas()
{
    static std::vector<std::pair<const char *, Fabrica>> lista;
    return lista;
}
} // namespace

bool anotar(const char *nombre, Fabrica fabrica)
{
    anotadas().emplace_back(nombre, fabrica);
    return true;
}

} // namespace soporte

/// Runs every registered class; "-clase Name" runs one, further arguments go to Qt Test.
int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QLocale::setDefault(QLocale(QStringLiteral("es_AR")));

    QStringList argumentos = QApplication::arguments();
    QString sola;
    if (const qsizetype i = argumentos.indexOf(QStringLiteral("-clase")); i > 0 && i + 1 < argumentos.size()) {
        sola = argumentos.at(i + 1);
        argumentos.remove(i, 2);
    }
    // Qt's own handler repeats itself without end when a test aborts.
    argumentos << QStringLiteral("-nocrashhandler");
    int fallas = 0, corridas = 0;
    for (const auto &[nombre, fabrica] : soporte::anotadas()) {
        if (!sola.isEmpty() && sola != QLatin1String(nombre))
            continue;
        const std::unique_ptr<QObject> prueba(fabrica());
        fallas += QTest::qExec(prueba.get(), argumentos) != 0;
        ++corridas;
    }
    if (corridas == 0) {
        std::fprintf(stderr, "no test class ran\n");
        return 2;
    }
    return fallas;
}
