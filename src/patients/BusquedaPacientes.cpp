#include "patients/BusquedaPacientes.h"

#include "base/Clock.h"
#include "base/Fechas.h"
#include "db/Config.h"
#include "db/Entorno.h"

#include <algorithm>

namespace patients {

namespace {

const QString y = QStringLiteral(" And ");

bool identificaPorHistoria(db::Connection &conexion) { return db::Config(conexion).numero(u"nuidhc") != 0; }

QString contiene(const db::Dialect &dialecto, const char16_t *columna, const QString &valor)
{
    const QString v = valor.trimmed();
    return v.isEmpty() ? QString() : y + dialecto.contains(QString::fromUtf16(columna), v);
}

QString igual(const char16_t *columna, int valor)
{
    return y + QString::fromUtf16(columna) + QStringLiteral(" = ") + QString::number(valor);
}

QString porIdentificacion(db::Connection &conexion, const QString &valor)
{
    const QString v = valor.trimmed();
    if (v.isEmpty())
        return {};
    if (identificaPorHistoria(conexion))
        return contiene(conexion.dialect(), u"numehistoria", v);
    // What is no number is nobody's number.
    bool esNumero = false;
    const int nrohc = v.toInt(&esNumero);
    return igual(u"NroHC", esNumero ? nrohc : 0);
}

QString porCobertura(const FiltroPacientes &filtro)
{
    using Cobertura = FiltroPacientes::Cobertura;
    switch (filtro.cobertura) {
    case Cobertura::Todas: return {};
    case Cobertura::Con:
        return igual(u"cobertura", 1)
            + (filtro.idcobertura != 0 ? igual(u"idcobertura", filtro.idcobertura) : QString());
    case Cobertura::Sin: return igual(u"cobertura", 2);
    case Cobertura::NoSabe: return igual(u"cobertura", 0);
    }
    return {};
}

QString porEdad(const db::Dialect &dialecto, QDate hoy, const FiltroPacientes &filtro)
{
    const QString edad = y + dialecto.yearDiff(QStringLiteral("FeNac"), dialecto.date(hoy));
    QString sql;
    if (filtro.edadDesde)
        sql += edad + QStringLiteral(" >= ") + QString::number(*filtro.edadDesde);
    if (filtro.edadHasta)
        sql += edad + QStringLiteral(" <= ") + QString::number(*filtro.edadHasta);
    return sql;
}

// The part of an account that counts: this year's only, where the practice says so.
QString desdeCuando(db::Entorno &entorno)
{
    db::Connection &conexion = entorno.conexion();
    if (!db::Config(conexion).bandera(u"versaldoanioactual"))
        return {};
    return QStringLiteral(" and fecha >= ") + conexion.dialect().dayStart(QDate(entorno.clock().today().year(), 1, 1));
}

base::Resultado<db::Rows> listar(db::Entorno &entorno, const FiltroPacientes &filtro, const QString &saldo)
{
    const auto condiciones = clausulas(entorno, filtro);
    if (!condiciones)
        return condiciones.rechazo();
    db::Connection &conexion = entorno.conexion();
    const QString nombre = conexion.dialect().concat(
        {QStringLiteral("Apellido"),
         QStringLiteral("' '"),
         QStringLiteral("apellido2"),
         QStringLiteral("', '"),
         QStringLiteral("Nombres")});
    return conexion.query(
        QStringLiteral("SELECT NroHC,%1 AS identificacion,%2 AS paciente,DNI,NroOS,%3 AS saldo"
                       " FROM [Pacientes] WHERE NroHC <> 0")
            .arg(
                identificaPorHistoria(conexion) ? QStringLiteral("numehistoria") : QStringLiteral("NroHC"),
                nombre,
                saldo)
        + *condiciones + QStringLiteral(" ORDER BY Apellido,apellido2,Nombres"));
}

} // namespace

base::Resultado<QString> clausulas(db::Entorno &entorno, const FiltroPacientes &filtro)
{
    db::Connection &conexion = entorno.conexion();
    const db::Dialect &dialecto = conexion.dialect();
    if (filtro.reducido)
        return contiene(dialecto, u"Apellido", filtro.apellido) + contiene(dialecto, u"nombres", filtro.nombres);

    QString sql;
    if (filtro.actividad == FiltroPacientes::Actividad::Activos)
        sql += QStringLiteral(" And pacienteinactivo = 0");
    else if (filtro.actividad == FiltroPacientes::Actividad::Inactivos)
        sql += QStringLiteral(" And pacienteinactivo <> 0");
    sql += porIdentificacion(conexion, filtro.numehistoria);
    sql += contiene(dialecto, u"apellido", filtro.apellido);
    sql += contiene(dialecto, u"apellido2", filtro.apellido2);
    sql += contiene(dialecto, u"nombres", filtro.nombres);
    sql += contiene(dialecto, u"dni", filtro.dni);
    sql += contiene(dialecto, u"Tel", filtro.telefono);
    sql += contiene(dialecto, u"NroOs", filtro.nroos);
    if (!filtro.fecnac.trimmed().isEmpty()) {
        const auto nacimiento = base::leerFecha(filtro.fecnac);
        if (!nacimiento)
            return base::Rechazo{
                QStringLiteral("Error..."),
                QStringLiteral("La fecha de nacimiento ingresada es incorrecta, debe ser del tipo ' dd/mm/aaaa'."),
                QStringLiteral("fecnac")};
        sql += QStringLiteral(" And FeNac = ") + dialecto.date(*nacimiento);
    }
    if (filtro.sexo)
        sql += igual(u"sexo", *filtro.sexo);
    sql += porCobertura(filtro);
    if (filtro.idciudad != 0)
        sql += igual(u"idciudad", filtro.idciudad);
    if (filtro.idprovincia != 0)
        sql += igual(u"idprovincia", filtro.idprovincia);
    return sql + porEdad(dialecto, entorno.clock().today(), filtro);
}

base::Resultado<db::Rows> buscarPacientes(db::Entorno &entorno, const FiltroPacientes &filtro)
{
    return listar(entorno, filtro, QStringLiteral("''"));
}

base::Resultado<db::Rows> buscarPacientesConSaldo(db::Entorno &entorno, const FiltroPacientes &filtro)
{
    // By patient, not one sum for everybody joined: that one costs the same for ten rows as for the whole register.
    const db::Dialect &dialecto = entorno.conexion().dialect();
    const auto suma = [&](const char16_t *columna, const char16_t *tabla, const QString &condicion) {
        return dialecto.ifNull(
            QStringLiteral("(SELECT SUM(%1) FROM [%2] WHERE NroPaci = [Pacientes].NroHC%3)")
                .arg(QStringView(columna), QStringView(tabla), condicion + desdeCuando(entorno)),
            QStringLiteral("0"));
    };
    return listar(
        entorno,
        filtro,
        suma(u"costo", u"Pacientes Ordenes", {}) + u'-'
            + suma(u"importe", u"Pacientes Pagos", QStringLiteral(" and quien = 'P'")));
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
{
    const QString desde = desdeCuando(entorno);
    // Always the same number of parameters: one prepared statement serves every page.
    const QString quienes
        = QStringLiteral(" and NroPaci IN (?") + QStringLiteral(",?").repeated(pagina - 1) + QStringLiteral(")");
    m_ordenes = QStringLiteral("SELECT NroPaci,SUM(costo) AS total FROM [Pacientes Ordenes] WHERE NroPaci <> 0")
        + quienes + desde + QStringLiteral(" GROUP BY NroPaci");
    m_pagos = QStringLiteral("SELECT NroPaci,SUM(importe) AS total FROM [Pacientes Pagos] WHERE quien = 'P'") + quienes
        + desde + QStringLiteral(" GROUP BY NroPaci");
}

std::vector<double> Saldos::calcular(const std::vector<qint64> &pacientes)
{
    std::vector<double> valores;
    valores.reserve(pacientes.size());
    for (size_t inicio = 0; inicio < pacientes.size(); inicio += pagina) {
        const size_t fin = std::min(pacientes.size(), inicio + pagina);
        db::Params parametros;
        for (size_t i = inicio; i < inicio + pagina; ++i)
            parametros << pacientes[std::min(i, fin - 1)];
        QHash<qint64, double> saldos;
        const auto ordenes = m_conexion.query(m_ordenes, parametros);
        for (int i = 0; i < ordenes->rowCount(); ++i)
            saldos[ordenes->integer(i, 0)] += ordenes->real(i, 1);
        const auto pagos = m_conexion.query(m_pagos, parametros);
        for (int i = 0; i < pagos->rowCount(); ++i)
            saldos[pagos->integer(i, 0)] -= pagos->real(i, 1);
        for (size_t i = inicio; i < fin; ++i)
            valores.push_back(saldos.value(pacientes[i]));
    }
    return valores;
}

} // namespace patients
