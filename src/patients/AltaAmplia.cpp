#include "patients/AltaAmplia.h"

#include "base/Fechas.h"
#include "db/Connection.h"
#include "db/Entorno.h"
#include "patients/Numeracion.h"

namespace patients {

namespace {

base::Rechazo rechazo(const char16_t *texto, const char16_t *campo)
{
    return {base::titulo::aviso, QString::fromUtf16(texto), QString::fromUtf16(campo)};
}

bool vacio(const QString &texto) { return texto.trimmed().isEmpty(); }

base::Control controlarDatos(const DatosAmplios &datos, bool estricta)
{
    if (vacio(datos.apellido))
        return rechazo(u"Debe ingresar el Apellido del Paciente", u"apellido");
    if (vacio(datos.nombres))
        return rechazo(u"Debe ingresar el Nombre del Paciente", u"nombres");
    if (!vacio(datos.fecnac) && !base::leerFecha(datos.fecnac)) {
        base::Rechazo fecha = base::fechaInvalida(QStringLiteral("ERROR en la Fecha de Nacimiento"));
        fecha.campo = QStringLiteral("fecnac");
        return fecha;
    }
    const bool con = datos.cobertura == 1;
    // An entry that was typed and is none would be lost in silence outside strict mode.
    const bool sinEntidad = con && (datos.idcobertura < 0 || (estricta && datos.idcobertura == 0));
    struct Exigencia {
        bool falta;
        const char16_t *texto;
        const char16_t *campo;
    };
    const Exigencia exigencias[] = {
        {estricta && vacio(datos.fecnac), u"Debe ingresar la Fecha de Nacimiento del Paciente", u"fecnac"},
        {estricta && datos.sexo < 0, u"Debe indicar el Sexo del Paciente", u"sexo"},
        {estricta && vacio(datos.dni), u"Debe ingresar el Documento de Identidad del Paciente", u"dni"},
        {estricta && vacio(datos.telpar), u"Debe ingresar el Teléfono del Paciente", u"telpar"},
        {estricta && datos.cobertura == 0, u"Debe indicar si el Paciente tiene Cobertura Médica", u"concobertura"},
        {sinEntidad, u"Debe seleccionar la Cobertura Médica del Paciente", u"cobertura"},
        {estricta && con && vacio(datos.nroos), u"Debe ingresar el Nº de Afiliado del Paciente", u"nroos"},
    };
    for (const Exigencia &e : exigencias)
        if (e.falta)
            return rechazo(e.texto, e.campo);
    return {};
}

base::Control controlarUnicos(db::Connection &conexion, const DatosAmplios &datos)
{
    if (documentoEnUso(conexion, datos.dni))
        return rechazo(
            u"Ya existe otro paciente con el Nº de Documento que le quiere ingresar al paciente actual.", u"dni");
    if (datos.numehistoria && numeroHistoriaEnUso(conexion, *datos.numehistoria))
        return rechazo(
            u"Ya existe otro paciente con el Nº de Historia Clínica que le quiere ingresar al paciente actual.",
            u"numehistoria");
    return {};
}

QVariantMap columnas(const DatosAmplios &datos)
{
    QVariantMap fila;
    for (auto it = datos.demas.cbegin(); it != datos.demas.cend(); ++it)
        fila.insert(it.key(), it->typeId() == QMetaType::QString ? QVariant(it->toString().trimmed()) : it.value());
    if (datos.numehistoria)
        fila.insert(QStringLiteral("numehistoria"), datos.numehistoria->trimmed());
    fila.insert(QStringLiteral("Apellido"), datos.apellido.trimmed());
    fila.insert(QStringLiteral("apellido2"), datos.apellido2.trimmed());
    fila.insert(QStringLiteral("Nombres"), datos.nombres.trimmed());
    fila.insert(QStringLiteral("sexo"), datos.sexo < 0 ? QVariant() : QVariant(datos.sexo));
    fila.insert(QStringLiteral("FeNac"), base::leerFecha(datos.fecnac).value_or(base::fechaDesconocida()));
    fila.insert(QStringLiteral("DNI"), datos.dni.trimmed());
    fila.insert(QStringLiteral("Tel"), datos.telpar.trimmed());
    fila.insert(QStringLiteral("NroOS"), datos.nroos.trimmed());
    fila.insert(QStringLiteral("cobertura"), datos.cobertura);
    if (datos.cobertura == 2)
        fila.insert(QStringLiteral("idcobertura"), -1);
    else if (datos.cobertura == 1)
        fila.insert(QStringLiteral("idcobertura"), datos.idcobertura);
    return fila;
}

} // namespace

Alta guardarAmplio(db::Entorno &entorno, const DatosAmplios &datos)
{
    db::Connection &conexion = entorno.conexion();
    if (auto control = controlarAlta(entorno))
        return *control;
    if (auto control = controlarDatos(datos, altaEstricta(conexion)))
        return *control;
    if (!aceptaMismoNombre(entorno, datos.apellido, datos.nombres))
        return std::optional<PacienteCreado>();
    if (auto control = controlarUnicos(conexion, datos))
        return *control;

    db::Transaction transaccion(conexion);
    // Again, now that no other station can write: one may have saved the same numbers while the question stood there.
    if (auto control = controlarUnicos(conexion, datos))
        return *control;
    const PacienteCreado creado = insertarPaciente(conexion, columnas(datos));
    transaccion.commit();
    return std::optional(creado);
}

} // namespace patients
