#include "Pantallas.h"

#include "Camara.h"
#include "Escenas.h"
#include "ui/MensajesQt.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QTimer>

namespace pantallas {

namespace {

std::vector<Pantalla> lista()
{
    std::vector<Pantalla> todas;
    for (const auto &escenas :
         {escenasDeSistema,
          escenasDeUsuarios,
          escenasDeAgenda,
          escenasDeTodasLasAgendas,
          escenasDeReservas,
          escenasDePlanilla,
          escenasDePacientes,
          escenasDeFichas,
          escenasDeMantenimiento,
          escenasDeAccess})
        for (Pantalla &pantalla : escenas())
            todas.push_back(std::move(pantalla));
    return todas;
}

/// Runs something that ends up in a message box, and takes the picture while it waits for its answer.
QImage retratoDelMensaje(Escena &escena, const Pantalla &pantalla)
{
    QImage imagen;
    ui::MensajesQt cajas;
    escena.consultorio().setMensajes(&cajas);
    QTimer::singleShot(0, &escena.marco(), [&] {
        auto *caja = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!caja)
            return;
        imagen = retrato(escena.marco());
        caja->reject();
    });
    pantalla.decir(escena, cajas);
    escena.consultorio().setMensajes(nullptr);
    return imagen;
}

} // namespace

Resultado retratar(const QString &carpeta)
{
    // A cursor that blinks would be in the picture or not, as it happens.
    QApplication::setCursorFlashTime(0);
    Resultado resultado;
    Consultorio consultorio;
    if (!QDir().mkpath(carpeta))
        resultado.problemas << QStringLiteral("no se puede escribir en %1").arg(carpeta);

    QStringList registradas;
    for (const Pantalla &pantalla : lista()) {
        consultorio.hayBase = pantalla.conBase;
        Escena escena(consultorio);
        registradas = escena.ventanas().nombres();
        pantalla.preparar(escena);
        asentar();
        const QImage imagen = pantalla.decir ? retratoDelMensaje(escena, pantalla) : retrato(escena.marco());
        for (const QString &nombre : registradas) {
            const ui::Ventana *abierta = escena.ventanas().buscar(nombre);
            if (abierta && abierta->isVisible() && !resultado.ventanas.contains(nombre))
                resultado.ventanas << nombre;
        }
        const QString archivo = pantalla.archivo + QStringLiteral(".png");
        if (!imagen.isNull() && guardar(imagen, carpeta + u'/' + archivo))
            resultado.archivos << archivo;
        else
            resultado.problemas << QStringLiteral("no se pudo hacer %1").arg(archivo);
        for (const QString &problema : escena.problemas())
            resultado.problemas << archivo + QStringLiteral(": ") + problema;
    }
    resultado.ventanas.sort();
    for (const QString &nombre : registradas)
        if (!resultado.ventanas.contains(nombre))
            resultado.faltan << nombre;
    resultado.problemas << consultorio.escritos.dichos();
    return resultado;
}

} // namespace pantallas
