#pragma once

#include "base/Rechazo.h"
#include "db/Connection.h"

#include <QDate>
#include <QHash>

#include <optional>

namespace db {
class Entorno;
}

namespace patients {

/// What the chooser filters by, as typed; texts are trimmed and match anywhere in their column, blank ones do not
/// count.
struct FiltroPacientes {
    enum class Actividad { Activos, Inactivos, Todos };
    enum class Cobertura { Todas, Con, Sin, NoSabe };

    /// Only `apellido` and `nombres` count; active and inactive patients alike.
    bool reducido = true;
    QString apellido = {};
    QString nombres = {};

    Actividad actividad = Actividad::Activos;
    QString numehistoria = {}; ///< or the internal number, where the practice identifies patients by that
    QString apellido2 = {};
    QString dni = {};
    QString telefono = {};
    QString nroos = {};
    QString fecnac = {}; ///< a whole date
    std::optional<int> sexo = {}; ///< position in the list of sexes
    Cobertura cobertura = Cobertura::Todas;
    int idcobertura = 0; ///< with Cobertura::Con; 0: any insurer
    int idciudad = 0; ///< 0: any
    int idprovincia = 0; ///< 0: any
    std::optional<int> edadDesde = {}; ///< in calendar years begun
    std::optional<int> edadHasta = {};

    bool operator==(const FiltroPacientes &) const = default;
};

/// Columns of a list of patients.
enum ColumnaPaciente { ColNroHC, ColIdentificacion, ColNombre, ColDni, ColNroOs, ColSaldo };

/// The conditions of a filter, in the dialect of the connection. Refused when `fecnac` is no date.
[[nodiscard]] base::Resultado<db::Conditions> condiciones(db::Entorno &entorno, const FiltroPacientes &filtro);

/// The patients of a filter by surnames and names, with the columns of ColumnaPaciente. The last one is empty: balances
/// are worth their cost only for the rows that are looked at, see Saldos.
[[nodiscard]] base::Resultado<db::Rows> buscarPacientes(db::Entorno &entorno, const FiltroPacientes &filtro);
/// The same with `NroHC` alone and, where another one is named, that column; null where the engine keeps no list of the
/// register ready.
[[nodiscard]] base::Resultado<db::Rows>
buscarNumeros(db::Entorno &entorno, const FiltroPacientes &filtro, ColumnaPaciente columna = ColNroHC);
/// The columns of ColumnaPaciente of everybody, in no order.
[[nodiscard]] db::Rows leerTodosLosPacientes(db::Entorno &entorno);
/// The columns of ColumnaPaciente, without balance, of up to Saldos::pagina patients, in no order.
[[nodiscard]] db::Rows leerPacientes(db::Entorno &entorno, const std::vector<qint64> &pacientes);

/// "Apellido, Nombres" of a patient; empty when there is none of that number (any more).
[[nodiscard]] std::optional<QString> nombrePaciente(db::Connection &conexion, qint64 nrohc);

/// Balances of patients: cost of their orders less what they paid, of this year only where the practice says so.
class Saldos
{
public:
    explicit Saldos(db::Entorno &entorno);

    /// Patients computed by one call at the same price as one.
    static constexpr int pagina = 64;
    /// One balance per patient, in the order given; any number of patients. Of very many, it is everybody's that is
    /// computed.
    [[nodiscard]] std::vector<double> calcular(const std::vector<qint64> &pacientes);

private:
    using PorPaciente = QHash<qint64, double>;
    [[nodiscard]] PorPaciente deEllos(const std::vector<qint64> &pacientes, size_t inicio);
    [[nodiscard]] PorPaciente deTodos();
    [[nodiscard]] PorPaciente sumar(const QString &grupo, const QString &condicion, const db::Params &parametros);

    db::Connection &m_conexion;
    QString m_desde;
};

} // namespace patients
