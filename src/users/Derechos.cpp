#include "users/Derechos.h"

namespace users {

const std::vector<GrupoDerechos> &derechos()
{
    // clang-format off
    static const std::vector<GrupoDerechos> grupos{
        {u"Pacientes"_qs,
         {{u"accesocrearpaciente"_qs, u"Dar de alta pacientes"_qs},
          {u"accesomodificarpaciente"_qs, u"Modificar la ficha"_qs},
          {u"accesoeliminarpaciente"_qs, u"Eliminar pacientes"_qs},
          {u"accesoparcialpaciente"_qs, u"Ver sólo una parte de la ficha"_qs,
           u"Con esta marca el usuario no ve la ficha completa del paciente."_qs, true}}},
        {u"Historia clínica"_qs,
         {{u"accesoagregarconsulta"_qs, u"Agregar consultas"_qs},
          {u"accesoeliminarconsulta"_qs, u"Eliminar consultas"_qs},
          {u"accesopediatria"_qs, u"Pediatría"_qs},
          {u"accesoginecologia"_qs, u"Ginecología y obstetricia"_qs},
          {u"accesooftalmologia"_qs, u"Oftalmología"_qs},
          {u"accesoodontologia"_qs, u"Odontología"_qs},
          {u"accesoestudios"_qs, u"Estudios e imágenes"_qs},
          {u"accesocirugias"_qs, u"Cirugías"_qs},
          {u"accesocertificados"_qs, u"Certificados"_qs}}},
        {u"Agenda de turnos"_qs,
         {{u"accesoagendas"_qs, u"Abrir las agendas"_qs, u"El botón 'Agendas' del menú."_qs},
          {u"accesoasignarturno"_qs, u"Dar turnos"_qs},
          {u"accesomodificarturno"_qs, u"Modificar turnos"_qs,
           u"Pasarlos a otra hora, cambiar el motivo o las observaciones, marcar que llegó o que fue atendido."_qs},
          {u"accesoeliminarturnos"_qs, u"Eliminar turnos"_qs},
          {u"aplicaraturnos"_qs, u"Sólo turnos de hoy en adelante"_qs,
           u"Con esta marca los permisos de modificar y eliminar no alcanzan a los turnos de días anteriores."_qs, true}}},
        {u"Órdenes, pagos y caja"_qs,
         {{u"accesoordenes"_qs, u"Órdenes de un paciente"_qs},
          {u"accesolistaordenes"_qs, u"Lista de órdenes"_qs, u"El botón 'Ordenes' del menú."_qs},
          {u"accesopagos"_qs, u"Pagos"_qs, u"El botón 'Pagos' del menú."_qs},
          {u"accesocontable"_qs, u"Saldos"_qs, u"El botón 'Saldos' del menú."_qs},
          {u"accesocaja"_qs, u"Caja"_qs, u"El botón 'Caja' del menú."_qs}}},
        {u"Listados y recursos"_qs,
         {{u"accesolistados"_qs, u"Listados de pacientes"_qs},
          {u"accesoestadisticas"_qs, u"Estadísticas"_qs},
          {u"accesorecursos"_qs, u"Recursos"_qs, u"El botón 'Recursos' del menú."_qs}}},
        {u"Sistema"_qs,
         {{u"accesocambiarusuario"_qs, u"Cambiar de usuario"_qs},
          {u"accesohistorial"_qs, u"Historial de accesos"_qs, u"El botón 'Accesos' del menú."_qs},
          {u"accesoconfiguracion"_qs, u"Configuración y mantenimiento"_qs,
           u"El botón 'Mantenimiento' del menú; y 'Configuración', mientras ningún administrador tenga clave."_qs},
          {u"accesobackup"_qs, u"Copias de seguridad"_qs, u"El botón 'Backup' del menú."_qs},
          {u"accesored"_qs, u"Ubicación de la base de datos"_qs, u"El botón 'Red' del menú."_qs}}},
    };
    // clang-format on
    return grupos;
}

const QStringList &columnasDeDerechos()
{
    static const QStringList todas = [] {
        QStringList columnas;
        for (const GrupoDerechos &grupo : derechos())
            for (const Derecho &derecho : grupo.derechos)
                columnas << derecho.columna;
        return columnas;
    }();
    return todas;
}

} // namespace users
