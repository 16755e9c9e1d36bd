// The table of all settings. Texts are given to the person as they stand here.

#include "maintenance/Ajustes.h"

namespace maintenance {

namespace {

using Tipo = Ajuste::Tipo;

Ajuste bandera(const QString &columna, const QString &etiqueta, const QString &ayuda)
{
    return {columna, etiqueta, ayuda};
}

Ajuste texto(const QString &columna, const QString &etiqueta, const QString &ayuda, Tipo tipo = Tipo::Texto)
{
    return {columna, etiqueta, ayuda, tipo};
}

Ajuste entero(const QString &columna, const QString &etiqueta, const QString &ayuda, int minimo, int maximo)
{
    return {columna, etiqueta, ayuda, Tipo::Entero, {}, minimo, maximo};
}

Ajuste eleccion(
    const QString &columna, const QString &etiqueta, const QString &ayuda, const std::vector<Ajuste::Opcion> &opciones)
{
    return {columna, etiqueta, ayuda, Tipo::Eleccion, opciones};
}

Ajuste deEsteEquipo(Ajuste ajuste)
{
    ajuste.deEquipo = true;
    return ajuste;
}

GrupoAjustes fichaDelPaciente()
{
    Ajuste obligatorios = bandera(
        u"forzarguardarpaci"_qs,
        u"&Forzar el ingreso del Apellido, Nombres, Documento de Identidad, Sexo, Fecha de Nacimiento,\n"
        u"Teléfono, Cobertura Médica y Nº de Afiliado."_qs,
        u"Con esta opción no se puede guardar un paciente al que le falte alguno de esos datos. Sin ella alcanza con "
        u"el apellido y los nombres."_qs);
    obligatorios.tipo = Tipo::Uno;
    return {
        u"ficha"_qs,
        u"Ficha del paciente"_qs,
        u"view-pim-contacts"_qs,
        {{u"datosobligatorios"_qs, u"Datos obligatorios"_qs, {obligatorios}},
         {u"pacientenuevo"_qs,
          u"Paciente nuevo"_qs,
          {eleccion(
              u"tipoformunewpaci"_qs,
              u"Formulario en que se abre:"_qs,
              u"Con qué formulario se abre la ventana de paciente nuevo: con todos los datos, o con los pocos que se "
              u"preguntan en el mostrador. En la ventana se puede pasar de uno al otro."_qs,
              {{u"&Amplio"_qs, 1, u"tipoformunewpaciampli"_qs}, {u"&Reducido"_qs, 0, u"tipoformunewpaciredu"_qs}})}},
         {u"embarazo"_qs,
          u"Embarazo"_qs,
          {entero(
              u"sumfpp"_qs,
              u"&Días que se suman a la F.U.M. para obtener la F.P.P.:"_qs,
              u"La fecha probable de parto se calcula sumando estos días a la fecha de la última menstruación. Lo "
              u"usual "
              u"es 280."_qs,
              250,
              310)}}}};
}

GrupoAjustes numeracion()
{
    return {
        u"numeracion"_qs,
        u"Numeración"_qs,
        u"tag"_qs,
        {{u"identificacion"_qs,
          u"Identificación de los pacientes"_qs,
          {eleccion(
               u"nuidhc"_qs,
               u"&Los pacientes se identifican por:"_qs,
               u"Con qué número muestran e imprimen a los pacientes las ventanas, las listas y los informes."_qs,
               {{u"Nº ID (lo asigna el sistema)"_qs, 0}, {u"Nº Historia Clínica (lo carga el usuario)"_qs, 1}}),
           texto(
               u"reemplazoid"_qs,
               u"N&ombre que reemplaza a 'Nº ID':"_qs,
               u"Texto que se muestra en lugar de 'Nº ID' junto al número de cada paciente. Vacío: 'Nº ID'."_qs)}},
         {u"proximonumero"_qs,
          u"Numeración automática"_qs,
          {texto(
               u"prefijohc"_qs,
               u"&Prefijo:"_qs,
               u"Texto que se antepone al número de historia clínica de cada paciente nuevo. Puede quedar vacío."_qs),
           texto(
               u"numerohc"_qs,
               u"&Número:"_qs,
               u"Número que recibirá el próximo paciente nuevo, sólo con dígitos. Vacío: no se generan números."_qs)}}},
        u"vista previa próximo historia clínica"_qs};
}

GrupoAjustes agenda()
{
    std::vector<Ajuste::Opcion> dias, minutos;
    const QStringList nombres{
        u"Domingo"_qs, u"Lunes"_qs, u"Martes"_qs, u"Miércoles"_qs, u"Jueves"_qs, u"Viernes"_qs, u"Sábado"_qs};
    for (int d = 0; d < 7; ++d)
        dias.push_back({nombres.at(d), d});
    for (int m = 5; m <= 60; m += 5)
        minutos.push_back({u"%1 minutos"_qs.arg(m), m});
    std::vector<Ajuste> duraciones;
    const QStringList etiquetas{
        u"&Lunes:"_qs, u"&Martes:"_qs, u"M&iércoles:"_qs, u"&Jueves:"_qs, u"&Viernes:"_qs, u"&Sábado:"_qs};
    for (int d = 2; d <= 7; ++d)
        duraciones.push_back(eleccion(
            u"durtur%1"_qs.arg(d),
            etiquetas.at(d - 2),
            u"Duración de los turnos de ese día que propone una plantilla horaria nueva. Las plantillas guardadas no "
            u"cambian."_qs,
            minutos));
    return {
        u"agenda"_qs,
        u"Agenda"_qs,
        u"view-calendar"_qs,
        {{u"turnos"_qs,
          u"Turnos"_qs,
          {eleccion(
               u"primerdiaagendaturnos"_qs,
               u"La s&emana empieza el:"_qs,
               u"Primer día de la semana en los calendarios de la agenda."_qs,
               dias),
           bandera(
               u"forzarmotivo"_qs,
               u"E&xigir el motivo de la consulta al asignar un turno"_qs,
               u"Con esta opción no se puede asignar un turno sin elegir el motivo de la consulta."_qs)}},
         {u"duracion"_qs, u"Duración de los turnos en una plantilla horaria nueva"_qs, duraciones, 3},
         {u"planilla"_qs,
          u"Planilla del día"_qs,
          {eleccion(
               u"imprimirturnos"_qs,
               u"Al im&primirla se listan:"_qs,
               u"Qué renglones lleva la planilla de turnos del día que se imprime desde la agenda."_qs,
               {{u"Todos los horarios del día"_qs, 0}, {u"Sólo los horarios con turno"_qs, 1}}),
           texto(
               u"plantillaagenda"_qs,
               u"&Texto al pie:"_qs,
               u"Texto que se imprime al pie de la planilla de turnos del día."_qs,
               Tipo::Memo)}}}};
}

GrupoAjustes ordenes()
{
    return {
        u"ordenes"_qs,
        u"Órdenes"_qs,
        u"view-financial-list"_qs,
        {{u"datosorden"_qs,
          u"Datos obligatorios de una orden"_qs,
          {bandera(
               u"forzarnumeorden"_qs,
               u"&Número de la Orden"_qs,
               u"Con esta opción no se puede guardar una orden sin su número."_qs),
           bandera(
               u"forzarcantidadsesiones"_qs,
               u"Cantidad de &sesiones"_qs,
               u"Con esta opción no se puede guardar una orden sin la cantidad de sesiones que se le realizarán al "
               u"paciente."_qs),
           bandera(
               u"forzarpractica"_qs,
               u"&Práctica"_qs,
               u"Con esta opción no se puede guardar una orden sin la práctica que se le realizará al paciente."_qs),
           bandera(
               u"forzarderivador"_qs,
               u"&Médico derivador"_qs,
               u"Con esta opción no se puede guardar una orden sin el médico que derivó al paciente."_qs)},
          2},
         {u"quienregistra"_qs,
          u"Quién registra"_qs,
          {bandera(
               u"forzarusuario"_qs,
               u"E&xigir el usuario que registra una orden o recibe un pago"_qs,
               u"Con esta opción no se puede guardar una orden ni un pago sin elegir el usuario que lo registra."_qs),
           bandera(
               u"forzarusuarioclave"_qs,
               u"Pedir la c&lave de ese usuario"_qs,
               u"Con esta opción, al guardar una orden o un pago, el usuario elegido debe ingresar su Clave de "
               u"Usuario."_qs)}},
         {u"costosystock"_qs,
          u"Costos y stock"_qs,
          {bandera(
               u"bloquearcostos"_qs,
               u"N&o permitir modificar los costos"_qs,
               u"Con esta opción los costos de las órdenes, los turnos y los presupuestos se toman de la lista de "
               u"precios y no se pueden cambiar a mano."_qs),
           bandera(
               u"actualizarstock"_qs,
               u"&Descontar del stock los artículos que se consumen"_qs,
               u"Con esta opción, al registrar lo realizado se descuentan del stock del profesional los artículos que "
               u"consume la prestación."_qs)}}}};
}

GrupoAjustes caja()
{
    return {
        u"caja"_qs,
        u"Caja"_qs,
        u"wallet-open"_qs,
        {{u"pagos"_qs,
          u"Pagos y saldos"_qs,
          {bandera(
               u"pagocaja"_qs,
               u"&Registrar en Caja los pagos de los turnos"_qs,
               u"Con esta opción, al marcar en la agenda que llegó un paciente se puede cobrar el turno, y el pago "
               u"queda "
               u"registrado en Caja."_qs),
           bandera(
               u"versaldoanioactual"_qs,
               u"&Saldo de los pacientes sólo del año actual"_qs,
               u"Con esta opción el saldo de un paciente cuenta las órdenes y los pagos desde el 1 de enero del año en "
               u"curso. Sin ella, todos."_qs)}},
         {u"recibos"_qs,
          u"Recibos"_qs,
          {eleccion(
              u"tipohojarecibo"_qs,
              u"&Hoja en que se imprimen:"_qs,
              u"Tamaño del papel de los recibos de pago."_qs,
              {{u"A4 (una hoja entera)"_qs, 0}, {u"A5 (media hoja)"_qs, 1}})}}}};
}

GrupoAjustes sistema()
{
    return {
        u"sistema"_qs,
        u"Sistema"_qs,
        u"preferences-system"_qs,
        {{u"ingreso"_qs,
          u"Ingreso"_qs,
          {bandera(
              u"selecusuario"_qs,
              u"&Pedir el usuario y su clave al iniciar el sistema"_qs,
              u"Con esta opción el sistema se abre, en todas las computadoras, con la ventana de ingreso. Sin ella "
              u"empieza con el último usuario activo de cada computadora."_qs)}},
         {u"fondo"_qs,
          u"Fondo de la ventana principal"_qs,
          {{u"fondoaplicacion"_qs,
            u"Imagen:"_qs,
            u"Imagen que se ve detrás de las ventanas. Se copia en la carpeta 'Imagenes' del programa de esta "
            u"computadora; en las demás hay que elegirla también."_qs,
            Tipo::Imagen}}},
         {u"estacomputadora"_qs,
          u"Sólo en esta computadora"_qs,
          {deEsteEquipo(entero(
               equipo::segundosAgenda,
               u"&Actualizar la agenda cada (segundos):"_qs,
               u"De 1 a 60 segundos: cada cuánto la agenda abierta muestra lo que cambiaron las demás computadoras. "
               u"Vale desde que se guarda."_qs,
               1,
               60)),
           deEsteEquipo(entero(
               equipo::segundosMensajes,
               u"Buscar &mensajes del Chat cada (segundos):"_qs,
               u"De 1 a 60 segundos: cada cuánto se mira si hay un mensaje nuevo para el usuario activo. Vale desde "
               u"que "
               u"se guarda."_qs,
               1,
               60)),
           deEsteEquipo(eleccion(
               equipo::modoTurno,
               u"Agenda &y elección del paciente:"_qs,
               u"Sobre qué actúan los botones de la agenda y de la elección del paciente en esta computadora. Vale la "
               u"próxima vez que se abran esas ventanas."_qs,
               {{u"Actúan sobre el paciente"_qs, 0}, {u"Actúan sobre el turno seleccionado"_qs, 1}}))}}}};
}

GrupoAjustes copias()
{
    return {
        u"copias"_qs,
        u"Copias automáticas"_qs,
        u"drive-harddisk"_qs,
        {{u"copiaautomatica"_qs,
          u"Copia de seguridad automática"_qs,
          {bandera(
               u"hacerbackupautomatico"_qs,
               u"&Hacer copias de seguridad automáticas"_qs,
               u"La computadora que tiene la base de datos la copia mientras el programa está abierto."_qs),
           entero(
               u"backuphoras"_qs,
               u"&Una copia cada (horas):"_qs,
               u"Horas entre una copia y la siguiente. Lo usual es 4."_qs,
               1,
               168),
           entero(
               u"backupcantidad"_qs,
               u"C&antidad de copias que se conservan:"_qs,
               u"Cuando hay más copias se eliminan las más viejas. Lo usual es 14."_qs,
               1,
               999),
           texto(
               u"backupcarpeta"_qs,
               u"Car&peta:"_qs,
               u"Carpeta de la computadora que tiene la base de datos donde se guardan las copias; conviene que esté "
               u"en "
               u"otro disco. Vacía: la carpeta 'Backup' del programa."_qs,
               Tipo::Carpeta)}}},
        u"backup respaldo"_qs};
}

} // namespace

const std::vector<GrupoAjustes> &gruposDeAjustes()
{
    static const std::vector<GrupoAjustes> grupos{
        fichaDelPaciente(),
        numeracion(),
        agenda(),
        ordenes(),
        caja(),
        {u"impresiones"_qs, u"Impresiones"_qs, u"document-print"_qs, {}, u"encabezados imprimir membrete logo"_qs},
        sistema(),
        copias(),
        {u"historial"_qs, u"Historial"_qs, u"view-history"_qs, {}, u"eliminar registros accesos"_qs},
        {u"usuarios"_qs,
         u"Médicos y Usuarios"_qs,
         u"system-users"_qs,
         {},
         u"médicos profesionales administrador clave permisos"_qs},
    };
    return grupos;
}

const std::vector<std::pair<QString, QString>> &columnasSinAjuste()
{
    static const std::vector<std::pair<QString, QString>> columnas{
        {u"NomDoc"_qs, u"nothing reads it: the column only carries an index of the table"_qs},
        {u"UltimoPaci"_qs, u"the last number given to a patient: the system alone counts it"_qs},
        {u"versionprograma"_qs, u"written by the program"_qs},
        {u"encabezadogeneral"_qs, u"edited in the window `encabezados`"_qs},
        {u"encabezadopaciente"_qs, u"edited in the window `encabezados`"_qs},
        {u"encabezadoimagen"_qs, u"edited in the window `encabezados`"_qs},
    };
    return columnas;
}

} // namespace maintenance
