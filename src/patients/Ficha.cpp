#include "patients/Ficha.h"

#include "base/Fechas.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"
#include "patients/NuevoPaciente.h"

namespace patients {

namespace {

using namespace Qt::StringLiterals;

const QString columnaHistoria = u"numehistoria"_s;
const QString columnaDni = u"DNI"_s;
const QString columnaNacimiento = u"FeNac"_s;
const QString columnaCobertura = u"cobertura"_s;
const QString columnaAseguradora = u"idcobertura"_s;
const QString columnaInactivo = u"pacienteinactivo"_s;
const QString columnaMotivo = u"motivoinactividad"_s;

base::Rechazo rechazo(const QString &texto, const QString &campo) { return {base::titulo::aviso, texto, campo}; }

/// The checks of a patient's file, one function for each group that stands together in their order.
class Controles
{
public:
    Controles(const DatosFicha &datos, bool estricta)
        : m_datos(datos)
        , m_estricta(estricta)
    {
    }

    [[nodiscard]] base::Control campos() const
    {
        base::Control control = fecha(u"ultimacons"_s, u"ERROR en la Fecha de la Ultima Consulta del Paciente"_s);
        if (!control)
            control = falta(u"Apellido"_s, u"Debe ingresar el primer Apellido del Paciente"_s);
        if (!control)
            control = falta(u"Nombres"_s, u"Debe ingresar el Nombre del Paciente"_s);
        if (!control)
            control = fecha(columnaNacimiento, u"ERROR en la Fecha de Nacimiento del Paciente"_s);
        if (!control && m_estricta)
            control = obligatorios();
        if (!control)
            control = fecha(u"nacipadre"_s, u"ERROR en la Fecha de Nacimiento del Padre del Paciente"_s);
        if (!control)
            control = fecha(u"nacimadre"_s, u"ERROR en la Fecha de Nacimiento de la Madre del Paciente"_s);
        return control;
    }

    [[nodiscard]] QString texto(const QString &columna) const
    {
        return m_datos.valores.value(columna).toString().trimmed();
    }

private:
    [[nodiscard]] QString escrita(const QString &columna) const
    {
        const auto it = m_datos.escritas.constFind(columna);
        return (it != m_datos.escritas.constEnd() ? *it : base::fechaTexto(m_datos.valores.value(columna).toDate()))
            .trimmed();
    }
    [[nodiscard]] base::Control fecha(const QString &columna, const QString &detalle) const
    {
        const QString suya = escrita(columna);
        if (suya.isEmpty() || base::leerFecha(suya))
            return {};
        base::Rechazo mala = base::fechaInvalida(detalle);
        mala.campo = columna;
        return mala;
    }
    [[nodiscard]] base::Control falta(const QString &columna, const QString &texto) const
    {
        return this->texto(columna).isEmpty() ? base::Control(rechazo(texto, columna)) : std::nullopt;
    }
    [[nodiscard]] base::Control obligatorios() const
    {
        if (escrita(columnaNacimiento).isEmpty())
            return rechazo(u"Debe ingresar la Fecha de Nacimiento del Paciente"_s, columnaNacimiento);
        const int cobertura = m_datos.valores.value(columnaCobertura).toInt();
        if (cobertura != ConCobertura && cobertura != SinCobertura)
            return rechazo(u"Debe indicar si el Paciente tiene Cobertura Médica"_s, columnaCobertura);
        if (cobertura == ConCobertura && m_datos.valores.value(columnaAseguradora).toInt() <= 0)
            return rechazo(u"Debe seleccionar la Cobertura Médica del Paciente"_s, columnaAseguradora);
        base::Control control = falta(u"NroOS"_s, u"Debe ingresar el Nº de Afiliado del Paciente"_s);
        if (!control)
            control = falta(u"Tel"_s, u"Debe ingresar el Teléfono del Paciente"_s);
        if (!control)
            control = falta(columnaDni, u"Debe ingresar el Documento de Identidad del Paciente"_s);
        return control;
    }

    const DatosFicha &m_datos;
    bool m_estricta;
};

base::Control controlarUnicos(db::Connection &conexion, const QString &historia, const QString &dni, int nrohc)
{
    if (numeroHistoriaEnUso(conexion, historia, nrohc))
        return rechazo(
            u"Ya existe otro paciente con el Nº de Historia Clínica que le quiere ingresar al paciente actual."_s,
            columnaHistoria);
    if (documentoEnUso(conexion, dni, nrohc))
        return rechazo(
            u"Ya existe otro paciente con el Nº de Documento que le quiere ingresar al paciente actual."_s, columnaDni);
    return {};
}

/// The columns to write. A new patient gets every value of the form, an old one those that were changed; what belongs
/// together is written together.
QVariantMap columnasAEscribir(const DatosFicha &datos, bool nuevo)
{
    QVariantMap columnas = nuevo ? datos.valores : datos.cambios;
    const auto cambia
        = [&](const QString &una, const QString &otra) { return columnas.contains(una) || columnas.contains(otra); };
    if (cambia(columnaCobertura, columnaAseguradora)) {
        const int cobertura = datos.valores.value(columnaCobertura).toInt();
        columnas.remove(columnaCobertura);
        columnas.remove(columnaAseguradora);
        if (cobertura == ConCobertura || cobertura == SinCobertura) {
            columnas.insert(columnaCobertura, cobertura);
            columnas.insert(
                columnaAseguradora,
                cobertura == ConCobertura ? qMax(0, datos.valores.value(columnaAseguradora).toInt()) : -1);
        }
    }
    if (cambia(columnaInactivo, columnaMotivo)) {
        const bool inactivo = datos.valores.value(columnaInactivo).toBool();
        columnas.insert(columnaInactivo, inactivo);
        columnas.insert(columnaMotivo, inactivo ? datos.valores.value(columnaMotivo).toString() : QString());
    }
    if (!datos.valores.value(columnaNacimiento).toDate().isValid())
        columnas.insert(columnaNacimiento, base::fechaDesconocida());
    for (auto it = columnas.begin(); it != columnas.end(); ++it) {
        if (it->typeId() == QMetaType::QString)
            *it = it->toString().trimmed();
        else if (it->typeId() == QMetaType::QDateTime)
            *it = it->toDateTime().date();
    }
    if (nuevo && !datos.cambios.contains(columnaHistoria))
        columnas.remove(columnaHistoria); // the next generated one
    return columnas;
}

} // namespace

base::Control controlarModificacion(db::Entorno &entorno)
{
    return db::controlarDerecho(entorno, u"accesomodificarpaciente");
}

FichaGuardada
guardarFicha(db::Entorno &entorno, const std::optional<PacienteAbierto> &paciente, const DatosFicha &datos)
{
    db::Connection &conexion = entorno.conexion();
    if (auto control = controlarModificacion(entorno))
        return *control;
    if (auto control = paciente ? base::Control() : controlarAlta(entorno))
        return *control;
    const Controles controles(datos, altaEstricta(conexion));
    if (auto control = controles.campos())
        return *control;
    // A generated number that was not touched is not claimed: the insert takes the next free one.
    const bool historiaPropia = paciente || datos.cambios.contains(columnaHistoria);
    const QString historia = historiaPropia ? controles.texto(columnaHistoria) : QString();
    const QString dni = controles.texto(columnaDni);
    const int nrohc = paciente ? paciente->nrohc() : 0;
    if (auto control = controlarUnicos(conexion, historia, dni, nrohc))
        return *control;
    if (datos.reparo)
        return *datos.reparo;
    if (!paciente && !aceptaMismoNombre(entorno, controles.texto(u"Apellido"_s), controles.texto(u"Nombres"_s)))
        return std::optional<PacienteAbierto>();

    db::Transaction transaccion(conexion);
    // Again, now that no other station can write.
    if (auto control = controlarUnicos(conexion, historia, dni, nrohc))
        return *control;
    QVariantMap columnas = columnasAEscribir(datos, !paciente);
    std::optional<PacienteAbierto> guardado = paciente;
    if (paciente) {
        db::Recordset fila = paciente->fila(conexion);
        for (auto it = columnas.cbegin(); it != columnas.cend(); ++it)
            fila.set(it.key(), it.value());
        fila.update();
    } else {
        guardado = PacienteAbierto::abrir(conexion, insertarPaciente(conexion, std::move(columnas)).nrohc);
    }
    transaccion.commit();
    return guardado;
}

QString edadTexto(QDate nacimiento, QDate hoy)
{
    if (!nacimiento.isValid() || nacimiento.year() > hoy.year())
        return {};
    return QString::number(base::aniosCalendario(nacimiento, hoy)) + u" años"_s;
}

base::Rechazo pacienteAusente()
{
    return {base::titulo::atencion, u"Este paciente no Existe, probablemente a sido eliminado."_s};
}

QString nombreDe(const db::Recordset &fila)
{
    const QString apellidos = fila.text(u"Apellido").trimmed() + u' ' + fila.text(u"apellido2").trimmed();
    return nombreCompleto(apellidos.trimmed(), fila.text(u"Nombres").trimmed());
}

} // namespace patients
