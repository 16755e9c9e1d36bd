#include "Escenas.h"

#include "app/forms/PaginaAyuda.h"
#include "db/Error.h"
#include "db/Verificacion.h"
#include "maintenance/RespaldoAutomatico.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QLabel>
#include <QListWidget>

namespace pantallas {

namespace {

/// A page of the settings by its place in the list of groups.
std::function<void(Escena &)> deConfiguracion(int grupo)
{
    return [grupo](Escena &e) {
        e.pulsar({}, QStringLiteral("menconfiguracion"));
        if (auto *grupos = e.control<QListWidget>(QStringLiteral("configuracion"), QStringLiteral("grupos"))) {
            grupos->setCurrentRow(grupo);
            grupos->setFocus();
        }
    };
}

/// Until the window shows what its thread is doing.
void trasladoEnMarcha(Escena &e)
{
    const QString red = QStringLiteral("accesored");
    e.pulsar({}, QStringLiteral("menaccesored"));
    e.pulsar(red, QStringLiteral("modoservidor"));
    e.escribir(red, QStringLiteral("servidor"), QStringLiteral("SERVIDOR"));
    e.escribir(red, QStringLiteral("usuario"), QStringLiteral("sa"));
    e.pulsar(red, QStringLiteral("migrardatos"));
    const auto *estado = e.control<QLabel>(QStringLiteral("migracion"), QStringLiteral("estado"));
    const QDeadlineTimer limite(5000);
    while (estado && !estado->text().startsWith(QLatin1String("Copiando")) && !limite.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
}

} // namespace

std::vector<Pantalla> escenasDeSistema()
{
    return {
        {QStringLiteral("sistema"), [](Escena &) {}},
        {QStringLiteral("acceso"), sobreElMarco(QStringLiteral("acceso"))},
        {QStringLiteral("acceso2"), [](Escena &e) { e.pulsar({}, QStringLiteral("menusuario")); }},
        {QStringLiteral("usuariosadmin"), sobreElMarco(QStringLiteral("usuariosadmin"))},
        {QStringLiteral("configuracion"), deConfiguracion(0)},
        {QStringLiteral("configuracion-numeracion"), deConfiguracion(1)},
        {QStringLiteral("configuracion-agenda"), deConfiguracion(2)},
        {QStringLiteral("configuracion-sistema"), deConfiguracion(6)},
        {QStringLiteral("configuracion-copias"), deConfiguracion(7)},
        {QStringLiteral("configuracion-usuarios"), deConfiguracion(9)},
        {QStringLiteral("accesored"),
         [](Escena &e) {
             e.pulsar({}, QStringLiteral("menaccesored"));
             e.pulsar(QStringLiteral("accesored"), QStringLiteral("probar"));
         }},
        {QStringLiteral("migracion"), trasladoEnMarcha},
        {QStringLiteral("ayuda"),
         [](Escena &e) {
             e.pulsar({}, QStringLiteral("menayuda"));
             if (auto *pagina = e.control<app::PaginaAyuda>(QStringLiteral("ayuda"), QStringLiteral("pagina")))
                 pagina->irA(QStringLiteral("guia/turnos.md"));
         }},
        {QStringLiteral("acerca"), [](Escena &e) { e.pulsar({}, QStringLiteral("menacerca")); }},
        {QStringLiteral("mensaje-respaldo"),
         [](Escena &) {},
         [](Escena &, base::Mensajes &mensajes) {
             mensajes.advertir(
                 base::titulo::atencion,
                 maintenance::textoSinRespaldo(
                     QStringLiteral("No se puede crear la carpeta '/media/disco/copias'."),
                     QDateTime(QDate(2026, 11, 23), QTime(16, 20))));
         }},
        {QStringLiteral("encabezados"), [](Escena &e) { e.ventanas().abrir(QStringLiteral("encabezados")); }},
        {QStringLiteral("vistaprevia"),
         [](Escena &e) {
             e.abrirAgenda(QStringLiteral("11:20"));
             if (auto *lista = e.control<ui::Grilla>(QStringLiteral("agendas"), QStringLiteral("lista")))
                 e.ventanas().buscar(QStringLiteral("agendas"))->imprimirLista(*lista);
         }},
        {QStringLiteral("mensaje-sin-base"),
         [](Escena &) {},
         [](Escena &e, base::Mensajes &) { e.pulsar({}, QStringLiteral("menagendas")); },
         false},
        {QStringLiteral("mensaje-base-daniada"),
         [](Escena &) {},
         [](Escena &, base::Mensajes &mensajes) {
             db::avisarBaseDaniada(
                 mensajes,
                 db::Error(
                     db::Error::Kind::Corrupt, 11, QStringLiteral("El archivo de la base de datos está dañado.")));
         },
         false},
    };
}

} // namespace pantallas
