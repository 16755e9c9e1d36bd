#include "db/EsquemaNucleo.h"

#include "db/Declarar.h"

namespace db {

using namespace declarar;

namespace {

// One row; the last one counts when an old file holds more. It has no counter: nothing refers to it.
Table config()
{
    return tabla(
        "Config",
        textos(100, "NomDoc") + con(0, largos("UltimoPaci")) + memos("encabezadogeneral encabezadopaciente")
            + banderas("encabezadoimagen hacerbackupautomatico fondoaplicacion")
            // Number of days added to the last period to reach the probable delivery date.
            + con(280, enteros("sumfpp"))
            // forzarguardarpaci: 1 makes the strict rules of the patient file apply. tipoformunewpaci: 0 the reduced
            // form of a new patient, 1 the expanded one. tipohojarecibo: receipts on 0 an A4 sheet, 1 half of one (A5).
            + con(0, enteros("forzarguardarpaci tipoformunewpaci tipohojarecibo"))
            + banderas("forzarcantidadsesiones forzarpractica forzarderivador forzarusuario forzarusuarioclave "
                       "forzarmotivo forzarnumeorden pagocaja versaldoanioactual bloquearcostos actualizarstock "
                       "nuidhc selecusuario")
            // primerdiaagendaturnos: first day of the week in the agenda's calendars, 0 Sunday. imprimirturnos: the day
            // sheet lists 0 every time of the day, 1 those with an appointment. plantillaagenda: text at its foot.
            + con(0, enteros("primerdiaagendaturnos imprimirturnos"))
            + memos("plantillaagenda")
            // Minutes of a slot that a new hour template proposes, Monday to Saturday.
            + con(20, enteros(serie("durtur", 2, 7))) + textos(20, "versionprograma") + textos(50, "reemplazoid")
            + textos(20, "prefijohc numerohc")
            // Automatic copies: folder (empty: "Backup" of the program folder), how many are kept, every how many
            // hours.
            + textos(250, "backupcarpeta") + con(14, enteros("backupcantidad")) + con(4, enteros("backuphoras")));
}

Table listaDoctores()
{
    Table table = tabla(
        "Lista Doctores",
        contador() + textos(100, "NomDoc Especialidad") + textos(50, "Matricula") + textos(100, "Domi Locali")
            + textos(50, "Tel Teltempo TelSinUso") + con(0, largos("Prioridad")) + memos("Descripcion")
            + con(0, enteros("tipo") + largos("medisecre") + enteros("tipoespecialidadactiva ventanainicio"))
            + banderas("cie10")
            // Whoever worked before the column existed saw every consultation.
            + con(-1, banderas("verotrasconsultas")) + banderas("verfichareducida verestadisticareducida")
            + memos("encabezadocli anuncio") + textos(50, "claveusuario")
            + banderas("administrador accesoparcialpaciente aplicaraturnos moduloweb")
            + con(
                -1,
                banderas("accesocrearpaciente accesomodificarpaciente accesoeliminarpaciente accesopediatria "
                         "accesoginecologia accesoagregarconsulta accesoeliminarconsulta accesolistados "
                         "accesoagendas accesorecursos accesocaja accesoestadisticas accesoconfiguracion "
                         "accesobackup accesored accesoeliminarturnos accesooftalmologia accesoodontologia "
                         "accesoasignarturno accesomodificarturno accesoestudios accesocirugias accesoordenes "
                         "accesocertificados accesocontable accesopagos accesohistorial accesolistaordenes "
                         "accesocambiarusuario"))
            + con(0, enteros(serie("accesodirecto", 1, 10, 2))));
    // A new computer begins with user 20: the first professional of a new database.
    table.counterStart = 19;
    return table;
}

Table historial()
{
    return tabla(
        "Historial",
        fechas("fecha") + textos(100, "equipo") + largos("iddoctor") + textos(150, "ventana") + memos("accion"),
        {indice("fecha")});
}

// What was typed and not yet saved, one row per open record; see Borradores.
Table borradores()
{
    return tabla(
        "Borradores",
        contador() + largos("usuario") + textos(100, "equipo") + textos(50, "ventana")
            + con(0, largos("registro NroPaci")) + textos(255, "titulo") + fechas("fecha") + memos("datos"),
        {indice("usuario")});
}

// One link per row of the log, see CadenaHistorial. The number is the key: no two stations hang theirs on the same
// link.
Table cadenaHistorial()
{
    Table table = tabla(
        "Historial Cadena",
        largos("orden") + enteros("clase") + fechas("fecha") + binarios("huella sello") + largos("cantidad")
            + fechas("desde hasta") + binarios("suma") + fechas("pendiente") + binarios("sal"));
    table.key = QStringList{"orden"};
    return table;
}

// Who was ever active in which window, for the lists of the log's viewer.
Table usosHistorial()
{
    return tabla("Historial Usos", largos("iddoctor") + textos(150, "ventana"), {indice("iddoctor")});
}

} // namespace

Schema esquemaNucleo()
{
    return {
        {config(),
         listaDoctores(),
         lista("Lista Especialidades"),
         historial(),
         cadenaHistorial(),
         usosHistorial(),
         borradores()}};
}

} // namespace db
