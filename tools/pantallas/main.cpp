#include "Pantallas.h"

#include "db/Error.h"
#include "ui/PrepararAplicacion.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>

namespace {

int decir(const QString &texto)
{
    std::fprintf(stderr, "%s\n", qUtf8Printable(texto));
    return 1;
}

/// What the offscreen platform says that it cannot do is no matter here.
void callarPlataforma(QtMsgType, const QMessageLogContext &, const QString &texto)
{
    if (!texto.startsWith(QLatin1String("This plugin does not support")))
        decir(texto);
}

/// The offscreen platform's own screen is smaller than the frame.
void pedirPantalla(const QString &archivo)
{
    QFile datos(archivo);
    if (!datos.open(QFile::WriteOnly))
        return;
    datos.write(R"({"screens": [{"name": "pantalla", "x": 0, "y": 0, "width": 1280, "height": 800,
                    "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + QFile::encodeName(archivo));
}

} // namespace

int main(int argc, char *argv[])
{
    const QTemporaryDir carpeta;
    pedirPantalla(carpeta.filePath(QStringLiteral("pantalla.json")));
    // Equal pictures whatever the person's own desktop looks like.
    qputenv("QT_QPA_PLATFORMTHEME", "");
    qputenv("QT_SCALE_FACTOR", "1");
    qInstallMessageHandler(callarPlataforma);

    QApplication application(argc, argv);
    QStringList argumentos = QApplication::arguments().mid(1);
    if (argumentos.removeAll(QStringLiteral("--oscuro")) > 0) {
        QPalette noche;
        noche.setColor(QPalette::Window, Qt::black);
        noche.setColor(QPalette::WindowText, Qt::white);
        QApplication::setPalette(noche);
    }
    if (argumentos.size() > 1 || argumentos.value(0).startsWith(u'-'))
        return decir(QStringLiteral("Uso: pantallas [--oscuro] [carpeta]\n\n"
                                    "Escribe una imagen de cada ventana en la carpeta (docs/pantallas)."));
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans")));
    ui::prepararAplicacion(application);

    try {
        const pantallas::Resultado resultado
            = pantallas::retratar(argumentos.value(0, QStringLiteral("docs/pantallas")));
        for (const QString &problema : resultado.problemas)
            decir(problema);
        for (const QString &nombre : resultado.faltan)
            decir(QStringLiteral("ninguna imagen muestra la ventana %1").arg(nombre));
        return resultado.problemas.isEmpty() && resultado.faltan.isEmpty() ? 0 : 1;
    } catch (const db::Error &error) {
        return decir(error.description());
    }
}
