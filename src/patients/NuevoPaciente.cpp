#include "patients/NuevoPaciente.h"

#include "base/Fechas.h"
#include "db/Config.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"
#include "db/Recordset.h"
#include "patients/Numeracion.h"

namespace patients {

namespace {

base::Rechazo rechazo(const QString &texto, const QString &campo) { return {base::titulo::aviso, texto, campo}; }

QString mayusculas(const QString &texto) { return texto.trimmed().toUpper(); }

bool existe(db::Connection &conexion, const QString &condicion, const db::Params &valores)
{
    return conexion.query(QStringLiteral("SELECT TOP 1 NroHC FROM [Pacientes] WHERE ") + condicion, valores)->rowCount()
        > 0;
}

base::Control controlarDocumento(db::Connection &conexion, const QString &dni)
{
    if (!documentoEnUso(conexion, dni))
        return {};
    return rechazo(
        QStringLiteral("Ya existe otro paciente con el Nº de Documento que le quiere ingresar al paciente actual."),
        QStringLiteral("dnir"));
}

base::Control controlarObligatorios(const DatosReducidos &datos, bool estricta)
{
    struct Exigencia {
        bool falta;
        const char16_t *texto;
        const char16_t *campo;
    };
    const Exigencia exigencias[] = {
        {datos.apellido.trimmed().isEmpty(), u"Debe ingresar el Apellido del Paciente", u"apellidor"},
        {datos.nombres.trimmed().isEmpty(), u"Debe ingresar el Nombre del Paciente", u"nombresr"},
        {estricta && datos.dni.trimmed().isEmpty(), u"Debe ingresar el Documento de Identidad del Paciente", u"dnir"},
        {estricta && datos.telefono.trimmed().isEmpty(), u"Debe ingresar el Teléfono del Paciente", u"telparr"},
        {datos.idcobertura < 0 || (estricta && datos.idcobertura == 0),
         u"Debe seleccionar la Cobertura Médica del Paciente",
         u"coberturar"},
    };
    for (const Exigencia &e : exigencias)
        if (e.falta)
            return rechazo(QString::fromUtf16(e.texto), QString::fromUtf16(e.campo));
    return {};
}

QVariantMap columnas(const DatosReducidos &datos)
{
    QVariantMap fila{
        {QStringLiteral("Apellido"), mayusculas(datos.apellido)},
        {QStringLiteral("Nombres"), mayusculas(datos.nombres)},
        {QStringLiteral("DNI"), mayusculas(datos.dni)},
        {QStringLiteral("FeNac"), base::fechaDesconocida()},
        {QStringLiteral("Tel"), datos.telefono.trimmed()},
        {QStringLiteral("Domicilio"), datos.domicilio.trimmed()},
        {QStringLiteral("Email"), datos.email.trimmed()},
        {QStringLiteral("cobertura"), datos.idcobertura != 0 ? 1 : 0},
    };
    if (datos.idcobertura != 0)
        fila.insert(QStringLiteral("idcobertura"), datos.idcobertura);
    return fila;
}

QString numeroHistoriaLibre(db::Connection &conexion)
{
    QString numero = numeroHistoriaGenerado(conexion);
    // A number typed by hand may lie ahead of the counter. Without a counter every patient gets the bare prefix.
    while (numeroHistoriaEnUso(conexion, numero) && avanzarNumeroHistoria(conexion))
        numero = numeroHistoriaGenerado(conexion);
    return numero;
}

} // namespace

base::Control controlarAlta(db::Entorno &entorno) { return db::controlarDerecho(entorno, u"accesocrearpaciente"); }

base::Control controlarReducido(db::Connection &conexion, const DatosReducidos &datos)
{
    return controlarObligatorios(datos, altaEstricta(conexion));
}

Alta guardarReducido(db::Entorno &entorno, const DatosReducidos &datos, const ConElPaciente &ademas)
{
    db::Connection &conexion = entorno.conexion();
    if (auto control = controlarReducido(conexion, datos))
        return *control;
    if (!aceptaMismoNombre(entorno, datos.apellido, datos.nombres))
        return std::optional<PacienteCreado>();
    if (auto control = controlarDocumento(conexion, datos.dni))
        return *control;

    db::Transaction transaccion(conexion);
    // Again, now that no other station can write: while the question stood there, one may have saved the document.
    if (auto control = controlarDocumento(conexion, datos.dni))
        return *control;
    const PacienteCreado creado = insertarPaciente(conexion, columnas(datos));
    if (ademas)
        if (auto control = ademas(creado))
            return *control;
    transaccion.commit();
    return std::optional(creado);
}

QString nombreCompleto(const QString &apellido, const QString &nombres)
{
    return apellido + QStringLiteral(", ") + nombres;
}

bool altaEstricta(db::Connection &conexion) { return db::Config(conexion).numero(u"forzarguardarpaci") == 1; }

bool documentoEnUso(db::Connection &conexion, const QString &dni, int nrohc)
{
    const QString valor = mayusculas(dni);
    return !valor.isEmpty() && existe(conexion, QStringLiteral("DNI = ? and NroHC <> ?"), {valor, nrohc});
}

bool numeroHistoriaEnUso(db::Connection &conexion, const QString &numehistoria, int nrohc)
{
    const QString valor = mayusculas(numehistoria);
    return !valor.isEmpty() && existe(conexion, QStringLiteral("numehistoria = ? and NroHC <> ?"), {valor, nrohc});
}

bool mismoNombre(db::Connection &conexion, const QString &apellido, const QString &nombres)
{
    const db::Dialect &dialecto = conexion.dialect();
    return existe(
        conexion,
        dialecto.upper(QStringLiteral("Apellido")) + QStringLiteral(" = ? and ")
            + dialecto.upper(QStringLiteral("Nombres")) + QStringLiteral(" = ?"),
        {mayusculas(apellido), mayusculas(nombres)});
}

bool aceptaMismoNombre(db::Entorno &entorno, const QString &apellido, const QString &nombres)
{
    return !mismoNombre(entorno.conexion(), apellido, nombres)
        || entorno.mensajes().pregunta(
            base::titulo::atencion,
            QStringLiteral("Ya existe un paciente con el mismo nombre y apellido. ¿Desea igualmente continuar dando de "
                           "alta al paciente?"),
            false);
}

PacienteCreado insertarPaciente(db::Connection &conexion, QVariantMap columnas)
{
    static const QString columnaHistoria = QStringLiteral("numehistoria");
    db::Transaction transaccion(conexion);

    PacienteCreado creado;
    creado.nrohc = tomarNroHC(conexion);
    if (!columnas.contains(columnaHistoria))
        columnas.insert(columnaHistoria, numeroHistoriaLibre(conexion));
    creado.numehistoria = columnas.value(columnaHistoria).toString();
    creado.nombre = nombreCompleto(
        columnas.value(QStringLiteral("Apellido")).toString(), columnas.value(QStringLiteral("Nombres")).toString());

    db::Recordset paciente(conexion, QStringLiteral("SELECT * FROM [Pacientes] WHERE id = 0"));
    paciente.addNew();
    paciente.set(u"NroHC", creado.nrohc);
    for (auto it = columnas.cbegin(); it != columnas.cend(); ++it)
        paciente.set(it.key(), it.value());
    paciente.update();

    db::Recordset perinatal(conexion, QStringLiteral("SELECT * FROM [Antecedentes Perinatologicos] WHERE id = 0"));
    perinatal.addNew();
    perinatal.set(u"NroPaci", creado.nrohc);
    perinatal.set(u"semgesta", QVariant()); // not known yet
    perinatal.update();

    avanzarNumeroHistoria(conexion);
    transaccion.commit();
    return creado;
}

} // namespace patients
