#include "app/Arranque.h"
#include "app/Carpetas.h"
#include "app/Modulo.h"
#include "app/Opciones.h"
#include "app/forms/AvanceImportacion.h"
#include "app/forms/AvisoSonoro.h"
#include "app/forms/Composicion.h"
#include "app/forms/sistema.h"
#include "base/Clock.h"
#include "db/Engine.h"
#include "db/Error.h"
#include "demo/Archivo.h"
#include "maintenance/RespaldoAutomatico.h"
#include "ui/MensajesQt.h"
#include "ui/Preferencias.h"
#include "ui/PrepararAplicacion.h"
#include "ui/Ventanas.h"

#include <QApplication>
#include <QFileInfo>

#include <cstdio>

int main(int argc, char *argv[])
{
    QCoreApplication::setApplicationName(QStringLiteral("Vastelo"));
    QCoreApplication::setApplicationVersion(QString::fromLatin1(app::Modulo::version));

    // Help and version are printed without a screen.
    const app::Opciones opciones = app::leerOpciones(argc, argv);
    if (!opciones.salida.isEmpty()) {
        std::fputs(opciones.salida.toLocal8Bit().constData(), opciones.error ? stderr : stdout);
        return opciones.error ? 2 : 0;
    }

    QApplication application(argc, argv);
    ui::prepararAplicacion(application);

    ui::MensajesQt mensajes;
    const base::SystemClock clock;
    const auto carpeta = app::carpetaDePrograma(opciones, QCoreApplication::applicationDirPath());
    if (!carpeta) {
        mensajes.fallar(carpeta.rechazo().titulo, carpeta.rechazo().texto);
        return 1;
    }
    ui::Preferencias::usarArchivo(*carpeta + QStringLiteral("/ventanas.ini"));

    const auto base = *carpeta + QStringLiteral("/Datos.mdb");
    if (opciones.demo && !QFileInfo::exists(base)) {
        demo::Medida medida;
        medida.hoy = clock.today();
        try {
            demo::crearArchivo(*carpeta + QStringLiteral("/Datos_Vacio.mdb"), base, medida);
        } catch (const db::Error &error) {
            mensajes.fallar(QStringLiteral("Error..."), error.description());
        }
    }

    app::Modulo modulo(*carpeta, mensajes, clock, db::Engines::standard());
    modulo.setAvanceImportacion([] { return std::make_unique<app::AvanceImportacion>(QApplication::activeWindow()); });
    ui::Ventanas ventanas;
    app::registrarVentanas(modulo, ventanas, &modulo);

    app::Arranque arranque(modulo, &app::Arranque::lanzar);
    const bool conIngreso = arranque.iniciar() == app::Arranque::Destino::Acceso;

    app::AvisoSonoro sonido;
    maintenance::RespaldoAutomatico respaldo(modulo);
    app::sistema sistema(modulo, modulo, ventanas);
    sistema.setSonido([&sonido](const QString &archivo) { sonido.tocar(archivo); });
    sistema.setRespaldo(&respaldo);
    modulo.setAlCambiarBase([&sistema] { sistema.cambioDeBase(); });
    QObject::connect(
        &sistema, &app::sistema::ingresoCancelado, &application, &QCoreApplication::quit, Qt::QueuedConnection);
    sistema.empezar(conIngreso);
    return QApplication::exec();
}
