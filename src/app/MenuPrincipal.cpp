#include "app/MenuPrincipal.h"

#include "app/Comprobador.h"
#include "base/Mensajes.h"
#include "base/Rechazo.h"
#include "db/Entorno.h"
#include "db/Historial.h"
#include "db/ListaDoctores.h"

namespace app {

const std::vector<BotonMenu> &menuPrincipal()
{
    using Accion = BotonMenu::Accion;
    // clang-format off
    static const std::vector<BotonMenu> botones{
        {.nombre = u"menusuario"_qs, .titulo = u"Cambiar Usuario"_qs,
         .ayuda = u"Permite cambiar al usuario activo por otro."_qs,
         .derecho = u"accesocambiarusuario"_qs, .ventana = u"acceso2"_qs, .accion = {},
         .icono = u"system-switch-user"_qs, .tecla = u'U'},
        {.nombre = u"menhistorial"_qs, .titulo = u"Accesos"_qs,
         .ayuda = u"Muestra el historial de accesos al sistema y a sus respectivas funciones."_qs,
         .derecho = u"accesohistorial"_qs, .ventana = u"historial"_qs, .accion = {},
         .icono = u"view-history"_qs, .tecla = u'A'},
        {.nombre = u"mencontab"_qs, .titulo = u"Pagos"_qs,
         .ayuda = u"Registra y Factura los Pagos que realizan los Pacientes y las Coberturas Médicas"_qs,
         .derecho = u"accesopagos"_qs, .ventana = u"contables"_qs,
         .accion = u"Se ingresó a la ventana Pagos de Pacientes y Coberturas Médicas."_qs,
         .icono = u"wallet-open"_qs, .tecla = u'P'},
        {.nombre = u"mensaldos"_qs, .titulo = u"Saldos"_qs,
         .ayuda = u"Calcula el Saldo total de cada paciente"_qs,
         .derecho = u"accesocontable"_qs, .ventana = u"saldosfiltro"_qs,
         .accion = u"Se ingresó a la ventana Saldo de Pacientes y Coberturas Médicas."_qs,
         .icono = u"taxes-finances"_qs, .tecla = u'D'},
        {.nombre = u"menchat"_qs, .titulo = u"Chat"_qs,
         .ayuda = u"Permite comunicarse entre los usuarios del sistema."_qs,
         .derecho = {}, .ventana = u"chat"_qs, .accion = {},
         .icono = u"dialog-messages"_qs, .tecla = u'H'},
        {.nombre = u"menconfiguracion"_qs, .titulo = u"Configuración"_qs,
         .ayuda = u"Define la configuración del sistema (encabezados de impresiones, cuentas de usuarios, etc.)"_qs,
         .derecho = {}, .ventana = u"configuracion"_qs,
         .accion = u"Se ingresó a la ventana Configuración del Sistema."_qs,
         .icono = u"configure"_qs, .tecla = u'F'},
        {.nombre = u"menaccesored"_qs, .titulo = u"Red"_qs,
         .ayuda = u"Configura la ubicación de la Ruta de la Base de datos."_qs,
         .derecho = u"accesored"_qs, .ventana = u"accesored"_qs,
         .accion = u"Se ingresó a la ventana Red (Modo de Acceso - Ubicación de la Base de Datos)."_qs,
         .icono = u"network-connect"_qs, .tecla = u'R'},
        {.nombre = u"menayuda"_qs, .titulo = u"Ayuda"_qs, .ayuda = u"Ayuda"_qs,
         .derecho = {}, .ventana = u"ayuda"_qs, .accion = {},
         .icono = u"help-contents"_qs, .tecla = u'Y', .hace = Accion::Ayuda},
        {.nombre = u"mencaja"_qs, .titulo = u"Caja"_qs,
         .ayuda = u"Control de Ingresos y Egresos de la clínica"_qs,
         .derecho = u"accesocaja"_qs, .ventana = u"caja"_qs, .accion = u"Se ingresó a la ventana Caja."_qs,
         .icono = u"view-financial-account"_qs, .tecla = u'J'},
        {.nombre = u"mencopia"_qs, .titulo = u"Backup"_qs,
         .ayuda = u"Permite Crear y/o Restaurar una Copia de la Base de Datos del Sistema."_qs,
         .derecho = u"accesobackup"_qs, .ventana = u"copia"_qs, .accion = u"Se ingresó a la ventana Back-up."_qs,
         .icono = u"drive-harddisk"_qs, .tecla = u'B', .soloServidor = true},
        {.nombre = u"menacerca"_qs, .titulo = u"Acerca de"_qs, .ayuda = {},
         .derecho = {}, .ventana = u"acerca"_qs, .accion = {},
         .icono = u"help-about"_qs, .tecla = u'E'},
        {.nombre = u"menmantenimiento"_qs, .titulo = u"Mantenimiento"_qs,
         .ayuda = u"Actualiza los Datos necesarios del programa"_qs,
         .derecho = u"accesoconfiguracion"_qs, .ventana = u"mantenimiento"_qs,
         .accion = u"Se ingresó a la ventana Mantenimiento del Sistema."_qs,
         .icono = u"tools"_qs, .tecla = u'M'},
        {.nombre = u"menagendas"_qs, .titulo = u"Agendas"_qs,
         .ayuda = u"Permite agendar turnos y teléfonos"_qs,
         .derecho = u"accesoagendas"_qs, .ventana = u"agendas"_qs, .accion = u"Se ingresó a la ventana Agendas."_qs,
         .icono = u"view-calendar"_qs, .tecla = u'G'},
        {.nombre = u"menlistados"_qs, .titulo = u"Listados"_qs,
         .ayuda = u"Permite ver un Listado por Pantalla y/o Impresora de los Pacientes"_qs,
         .derecho = u"accesolistados"_qs, .ventana = u"listados"_qs,
         .accion = u"Se ingresó a la ventana Listado de Pacientes."_qs,
         .icono = u"view-list-details"_qs, .tecla = u'L'},
        {.nombre = u"menpacientes"_qs, .titulo = u"Pacientes"_qs,
         .ayuda = u"Da de Alta y/o Carga la ficha de un Paciente"_qs,
         .derecho = {}, .ventana = u"elecpaci"_qs,
         .accion = u"Se ingresó a la ventana Elección del Paciente."_qs,
         .icono = u"view-pim-contacts"_qs, .tecla = u'C'},
        {.nombre = u"mensalir"_qs, .titulo = u"Salir"_qs, .ayuda = u"Cierra el Programa"_qs,
         .derecho = {}, .ventana = {}, .accion = {},
         .icono = u"application-exit"_qs, .tecla = u'S', .hace = Accion::Salir},
        {.nombre = u"mengraficos"_qs, .titulo = u"Recursos"_qs,
         .ayuda = u"Muestra Gráficos de utilidad para el Profesional"_qs,
         .derecho = u"accesorecursos"_qs, .ventana = u"graficos"_qs,
         .accion = u"Se ingresó a la ventana Recursos Adicionales."_qs,
         .icono = u"folder-pictures"_qs, .tecla = u'O'},
        {.nombre = u"menestadisticas"_qs, .titulo = u"Estadísticas"_qs,
         .ayuda = u"Permite ver Estadísticas de las Consultas Realizadas"_qs,
         .derecho = {}, .ventana = u"estadisticas"_qs, .accion = {},
         .icono = u"office-chart-bar"_qs, .tecla = u'T'},
        {.nombre = u"menordenes"_qs, .titulo = u"Ordenes"_qs,
         .ayuda = u"Listado de órdenes emitidas a los pacientes"_qs,
         .derecho = u"accesolistaordenes"_qs, .ventana = u"contable"_qs,
         .accion = u"Se ingresó a la ventana Ordenes de los Pacientes."_qs,
         .icono = u"view-financial-list"_qs, .tecla = u'N'},
    };
    // clang-format on
    return botones;
}

Apertura
abrirDesdeMenu(db::Entorno &entorno, Comprobador &comprobador, const VentanasDelMenu &ventanas, const BotonMenu &boton)
{
    if (!comprobador.verificarBase())
        return Apertura::SinBase;
    if (ventanas.activar(boton.ventana))
        return Apertura::Activada;
    if (const base::Control rechazo = db::controlarDerecho(entorno, boton.derecho)) {
        entorno.mensajes().mensaje(rechazo->titulo, rechazo->texto, rechazo->icono);
        return Apertura::Rechazada;
    }
    if (boton.soloServidor && entorno.esClienteDeRed()) {
        entorno.mensajes().advertir(
            base::titulo::atencion, u"Esta opción sólo está disponible desde la PC servidor."_qs);
        return Apertura::Rechazada;
    }
    if (!ventanas.existe(boton.ventana)) {
        avisarNoDisponible(entorno);
        return Apertura::NoDisponible;
    }
    if (!ventanas.abrir(boton.ventana))
        return Apertura::Declinada;
    if (!boton.accion.isEmpty())
        db::registrarHistorial(entorno, u"Menú General"_qs, boton.accion);
    return Apertura::Abierta;
}

void avisarNoDisponible(db::Entorno &entorno) { base::avisarNoDisponible(entorno.mensajes()); }

} // namespace app
