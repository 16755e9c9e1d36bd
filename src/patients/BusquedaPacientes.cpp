#include "patients/BusquedaPacientes.h"

#include "base/Clock.h"
#include "base/Fechas.h"
#include "db/Config.h"
#include "db/Entorno.h"

#include <algorithm>

namespace patients {

namespace {

using Operador = db::Condition::Operator;

bool identificaPorHistoria(db::Connection &conexion) { return db::Config(conexion).bandera(u"nuidhc"); }

/// Gathers the conditions of a filter; a blank text makes none.
class Armado
{
public:
    explicit Armado(const db::Dialect &dialecto)
        : m_dialecto(dialecto)
    {
    }

    void texto(const char *columna, const QString &valor)
    {
        if (const QString v = valor.trimmed(); !v.isEmpty())
            agregar(db::Condition::contains(m_dialecto, QLatin1String(columna), v));
    }
    void numero(const char *columna, qint64 valor, Operador operador = Operador::Equal)
    {
        agregar(db::Condition::number(QLatin1String(columna), operador, valor));
    }
    void documento(const QString &valor)
    {
        texto("dni", valor);
        // Copied from a card, with its points: most are stored without.
        const QString cifras = valor.trimmed().remove(u'.');
        if (cifras.isEmpty() || cifras == valor.trimmed())
            return;
        const auto conPuntos = condiciones.back();
        condiciones.back()
            = db::Condition::either(conPuntos, db::Condition::contains(m_dialecto, conPuntos.column, cifras));
    }
    void agregar(const db::Condition &condicion) { condiciones.push_back(condicion); }

    db::Conditions condiciones;

private:
    const db::Dialect &m_dialecto;
};

void porIdentificacion(db::Connection &conexion, const QString &valor, Armado &armado)
{
    if (identificaPorHistoria(conexion))
        return armado.texto("numehistoria", valor);
    if (const QString v = valor.trimmed(); !v.isEmpty()) {
        // What is no number is nobody's number.
        bool esNumero = false;
        const int nrohc = v.toInt(&esNumero);
        armado.numero("NroHC", esNumero ? nrohc : 0);
    }
}

void porCobertura(const FiltroPacientes &filtro, Armado &armado)
{
    using Cobertura = FiltroPacientes::Cobertura;
    switch (filtro.cobertura) {
    case Cobertura::Todas: return;
    case Cobertura::Con:
        armado.numero("cobertura", 1);
        if (filtro.idcobertura != 0)
            armado.numero("idcobertura", filtro.idcobertura);
        return;
    case Cobertura::Sin: return armado.numero("cobertura", 2);
    case Cobertura::NoSabe: return armado.numero("cobertura", 0);
    }
}

// The part of an account that counts: this year's only, where the practice says so.
QString desdeCuando(db::Entorno &entorno)
{
    db::Connection &conexion = entorno.conexion();
    if (!db::Config(conexion).bandera(u"versaldoanioactual"))
        return {};
    return QStringLiteral(" and fecha >= ") + conexion.dialect().dayStart(QDate(entorno.clock().today().year(), 1, 1));
}

QString columnaIdentificacion(db::Connection &conexion)
{
    return identificaPorHistoria(conexion) ? QStringLiteral("numehistoria") : QStringLiteral("NroHC");
}

QString seleccion(db::Connection &conexion)
{
    const QString nombre = conexion.dialect().concat(
        {QStringLiteral("Apellido"),
         QStringLiteral("' '"),
         QStringLiteral("apellido2"),
         QStringLiteral("', '"),
         QStringLiteral("Nombres")});
    return QStringLiteral("SELECT NroHC,%1 AS identificacion,%2 AS paciente,DNI,NroOS,'' AS saldo FROM [Pacientes]"
                          " WHERE ")
        .arg(columnaIdentificacion(conexion), nombre);
}

// Always the same number of parameters: one prepared statement serves every page.
QString unoDe(const QString &columna)
{
    return columna + QStringLiteral(" IN (?") + QStringLiteral(",?").repeated(Saldos::pagina - 1) + u')';
}

db::Params parametros(const std::vector<qint64> &pacientes, size_t inicio)
{
    db::Params valores;
    for (size_t i = inicio; i < inicio + Saldos::pagina; ++i)
        valores << pacientes[std::min(i, pacientes.size() - 1)];
    return valores;
}

} // namespace

base::Resultado<db::Conditions> condiciones(db::Entorno &entorno, const FiltroPacientes &filtro)
{
    db::Connection &conexion = entorno.conexion();
    const db::Dialect &dialecto = conexion.dialect();
    Armado armado(dialecto);
    if (filtro.reducido) {
        armado.texto("Apellido", filtro.apellido);
        armado.texto("nombres", filtro.nombres);
        return armado.condiciones;
    }
    if (filtro.actividad != FiltroPacientes::Actividad::Todos)
        armado.numero(
            "pacienteinactivo",
            0,
            filtro.actividad == FiltroPacientes::Actividad::Activos ? Operador::Equal : Operador::Different);
    porIdentificacion(conexion, filtro.numehistoria, armado);
    armado.texto("apellido", filtro.apellido);
    armado.texto("apellido2", filtro.apellido2);
    armado.texto("nombres", filtro.nombres);
    armado.documento(filtro.dni);
    armado.texto("Tel", filtro.telefono);
    armado.texto("NroOs", filtro.nroos);
    if (!filtro.fecnac.trimmed().isEmpty()) {
        const auto nacimiento = base::leerFecha(filtro.fecnac);
        if (!nacimiento)
            return base::Rechazo{
                QStringLiteral("Error..."),
                QStringLiteral("La fecha de nacimiento ingresada es incorrecta, debe ser del tipo ' dd/mm/aaaa'."),
                QStringLiteral("fecnac")};
        armado.agregar(db::Condition::date(dialecto, QStringLiteral("FeNac"), *nacimiento));
    }
    if (filtro.sexo)
        armado.numero("sexo", *filtro.sexo);
    porCobertura(filtro, armado);
    if (filtro.idciudad != 0)
        armado.numero("idciudad", filtro.idciudad);
    if (filtro.idprovincia != 0)
        armado.numero("idprovincia", filtro.idprovincia);
    const auto edad = [&](std::optional<int> anios, Operador operador) {
        if (anios)
            armado.agregar(
                db::Condition::years(dialecto, QStringLiteral("FeNac"), entorno.clock().today(), operador, *anios));
    };
    edad(filtro.edadDesde, Operador::AtLeast);
    edad(filtro.edadHasta, Operador::AtMost);
    return armado.condiciones;
}

base::Resultado<db::Rows> buscarPacientes(db::Entorno &entorno, const FiltroPacientes &filtro)
{
    const auto deFiltro = condiciones(entorno, filtro);
    if (!deFiltro)
        return deFiltro.rechazo();
    db::Connection &conexion = entorno.conexion();
    return conexion.query(
        seleccion(conexion) + QStringLiteral("NroHC <> 0") + db::clauses(*deFiltro)
        + QStringLiteral(" ORDER BY Apellido,apellido2,Nombres"));
}

base::Resultado<db::Rows> buscarNumeros(db::Entorno &entorno, const FiltroPacientes &filtro, ColumnaPaciente columna)
{
    const auto deFiltro = condiciones(entorno, filtro);
    if (!deFiltro)
        return deFiltro.rechazo();
    db::Connection &conexion = entorno.conexion();
    QStringList tambien;
    switch (columna) {
    case ColIdentificacion: tambien << columnaIdentificacion(conexion); break;
    case ColDni: tambien << QStringLiteral("DNI"); break;
    case ColNroOs: tambien << QStringLiteral("NroOS"); break;
    default: break;
    }
    db::Conditions todas{db::Condition::number(QStringLiteral("NroHC"), Operador::Different, 0)};
    todas.insert(todas.end(), deFiltro->begin(), deFiltro->end());
    return conexion.search(QStringLiteral("Pacientes"), todas, tambien);
}

db::Rows leerTodosLosPacientes(db::Entorno &entorno)
{
    return entorno.conexion().query(seleccion(entorno.conexion()) + QStringLiteral("NroHC <> 0"));
}

db::Rows leerPacientes(db::Entorno &entorno, const std::vector<qint64> &pacientes)
{
    Q_ASSERT(!pacientes.empty() && pacientes.size() <= size_t(Saldos::pagina));
    return entorno.conexion().query(
        seleccion(entorno.conexion()) + unoDe(QStringLiteral("NroHC")), parametros(pacientes, 0));
}

std::optional<QString> nombrePaciente(db::Connection &conexion, qint64 nrohc)
{
    const auto fila
        = conexion.query(QStringLiteral("SELECT Apellido,apellido2,Nombres FROM [Pacientes] WHERE NroHC = ?"), {nrohc});
    if (fila->rowCount() == 0)
        return std::nullopt;
    const QString apellidos = fila->text(0, 0) + u' ' + fila->text(0, 1);
    return apellidos.trimmed() + QStringLiteral(", ") + fila->text(0, 2);
}

Saldos::Saldos(db::Entorno &entorno)
    : m_conexion(entorno.conexion())
    , m_desde(desdeCuando(entorno))
{
}

std::vector<double> Saldos::calcular(const std::vector<qint64> &pacientes)
{
    constexpr size_t muchos = 1000; // from here on reading both tables from end to end is cheaper
    std::vector<double> valores;
    valores.reserve(pacientes.size());
    const size_t porVez = pacientes.size() > muchos ? pacientes.size() : pagina;
    for (size_t inicio = 0; inicio < pacientes.size(); inicio += porVez) {
        const PorPaciente saldos = porVez == pagina ? deEllos(pacientes, inicio) : deTodos();
        for (size_t i = inicio; i < std::min(pacientes.size(), inicio + porVez); ++i)
            valores.push_back(saldos.value(pacientes[i]));
    }
    return valores;
}

Saldos::PorPaciente Saldos::deEllos(const std::vector<qint64> &pacientes, size_t inicio)
{
    return sumar(
        QStringLiteral("NroPaci"),
        QStringLiteral(" and ") + unoDe(QStringLiteral("NroPaci")),
        parametros(pacientes, inicio));
}

Saldos::PorPaciente Saldos::deTodos()
{
    // Grouped by an expression, the embedded engine does not walk along an index from one distant row to the next.
    return sumar(QStringLiteral("NroPaci + 0"), {}, {});
}

Saldos::PorPaciente Saldos::sumar(const QString &grupo, const QString &condicion, const db::Params &parametros)
{
    PorPaciente saldos;
    const auto agregar = [&](const char16_t *columna, const char16_t *tabla, const char16_t *cuales, int signo) {
        const auto filas = m_conexion.query(
            QStringLiteral("SELECT %1 AS paciente,SUM(%2) AS total FROM [%3] WHERE %4%5%6 GROUP BY %1")
                .arg(grupo, QStringView(columna), QStringView(tabla), QStringView(cuales), condicion, m_desde),
            parametros);
        for (int i = 0; i < filas->rowCount(); ++i)
            saldos[filas->integer(i, 0)] += signo * filas->real(i, 1);
    };
    agregar(u"costo", u"Pacientes Ordenes", u"NroPaci <> 0", 1);
    agregar(u"importe", u"Pacientes Pagos", u"quien = 'P'", -1);
    return saldos;
}

} // namespace patients
