#include "db/Upgrade.h"

#include "base/Mensajes.h"
#include "db/Error.h"
#include "db/HorariosViejos.h"
#include "db/SentenciasServidor.h"

#include <QHash>

#include <algorithm>
#include <vector>

namespace db {

namespace {

const QString tablaHorarios = QStringLiteral("Agenda Turnos Horarios");
const QString tablaDoctores = QStringLiteral("Lista Doctores");

/// Names of the tables and columns that exist.
struct Catalogo {
    struct Entry {
        QString name;
        QStringList columns;
    };
    QHash<QString, Entry> tables; ///< by lower-case name

    [[nodiscard]] const Entry *table(const QString &name) const
    {
        const auto found = tables.constFind(name.toLower());
        return found == tables.constEnd() ? nullptr : &*found;
    }
};

/// Something to bring up to date, done whole or not at all.
struct Paso {
    std::function<void()> hacer;
    bool agrega = true; ///< whether the person is told of it
    std::vector<Paso> alternativas = {}; ///< tried one by one when the whole fails
};

/// Yields whether something was added.
bool intentar(Connection &connection, const Paso &paso)
{
    try {
        Transaction transaction(connection);
        paso.hacer();
        transaction.commit();
        return paso.agrega;
    } catch (const Error &) {
        bool added = false;
        for (const Paso &part : paso.alternativas)
            added |= intentar(connection, part);
        return added;
    }
}

/// All the steps in one, or else each by itself: one journey to the disk instead of a hundred.
Paso juntar(const std::vector<Paso> &steps)
{
    const bool adds = std::any_of(steps.begin(), steps.end(), [](const Paso &step) { return step.agrega; });
    return {
        [steps] {
            for (const Paso &step : steps)
                step.hacer();
        },
        adds,
        steps};
}

/// What the two back ends do differently.
class Motor
{
public:
    explicit Motor(Connection &connection)
        : m_connection(connection)
    {
    }
    virtual ~Motor() = default;

    virtual Catalogo catalogo() = 0;
    virtual void crear(const Table &table) = 0;
    virtual void agregar(const QString &table, const Column &column) = 0;
    virtual void quitarHorario(const QString &column) = 0;

    [[nodiscard]] Connection &connection() { return m_connection; }

protected:
    Connection &m_connection;
};

class MotorAccess final : public Motor
{
public:
    using Motor::Motor;

    Catalogo catalogo() override
    {
        Catalogo result;
        for (const QString &name : m_connection.tableNames()) {
            Catalogo::Entry entry{name, {}};
            for (const Column &column : m_connection.columns(name))
                entry.columns << column.name;
            result.tables.insert(name.toLower(), entry);
        }
        return result;
    }
    void crear(const Table &table) override { m_connection.createTable(table); }
    void agregar(const QString &table, const Column &column) override
    {
        m_connection.addColumn(table, column);
        if (const QString update = sentenciaValorInicial(table, column); !update.isEmpty())
            m_connection.execute(update);
    }
    void quitarHorario(const QString &column) override
    {
        m_connection.execute(horariosviejos::sentenciaQuitar(column));
    }
};

class MotorServidor final : public Motor
{
public:
    using Motor::Motor;

    Catalogo catalogo() override
    {
        // One journey for all tables: a start over a slow network would feel a question per column.
        const Rows rows = m_connection.query(
            QStringLiteral("SELECT TABLE_NAME, COLUMN_NAME FROM INFORMATION_SCHEMA.COLUMNS ORDER BY TABLE_NAME"));
        Catalogo result;
        for (int r = 0; r < rows->rowCount(); ++r) {
            Catalogo::Entry &entry = result.tables[rows->text(r, 0).toLower()];
            entry.name = rows->text(r, 0);
            entry.columns << rows->text(r, 1);
        }
        return result;
    }
    void crear(const Table &table) override
    {
        for (const QString &statement : servidor::crearTabla(table))
            m_connection.execute(statement);
    }
    void agregar(const QString &table, const Column &column) override
    {
        // Asked again now that the others wait: one that added it meanwhile already writes into it, which the starting
        // value must not undo.
        if (m_connection.query(servidor::buscarColumna(table, column.name))->rowCount() > 0)
            return;
        if (table == tablaDoctores && column.name == QLatin1String("moduloweb"))
            m_connection.execute(QStringLiteral("ALTER TABLE [Lista Doctores] ADD moduloweb BIT DEFAULT 0"));
        else
            m_connection.execute(servidor::agregarColumna(table, column));
        if (const QString update = sentenciaValorInicial(table, column); !update.isEmpty())
            m_connection.execute(update);
    }
    void quitarHorario(const QString &column) override
    {
        // The server keeps a column as long as it has a default value, which is a thing of its own there.
        const Rows defaults = m_connection.query(servidor::buscarRestriccion(tablaDoctores, column));
        for (int r = 0; r < defaults->rowCount(); ++r)
            m_connection.execute(servidor::quitarRestriccion(tablaDoctores, defaults->text(r, 0)));
        m_connection.execute(servidor::quitarColumna(tablaDoctores, column));
    }
};

/// Adds the missing columns of a table that exists.
void completarTabla(Motor &motor, const Table &declared, const Catalogo::Entry &present, std::vector<Paso> &steps)
{
    std::vector<Paso> missing;
    for (const Column &column : declared.columns)
        // A key cannot be added to rows that have none.
        if (column.type != Type::Counter && !present.columns.contains(column.name, Qt::CaseInsensitive))
            missing.push_back({[&motor, name = declared.name, column] { motor.agregar(name, column); }});
    if (!missing.empty())
        steps.push_back(juntar(missing));
}

/// Moves the old hours and then drops their columns; nothing is dropped when the move fails.
void moverHorarios(Motor &motor, const QStringList &doctorColumns, bool tableIsNew)
{
    Connection &connection = motor.connection();
    connection.execute(horariosviejos::sentenciaMover(connection.dialect(), doctorColumns, tableIsNew));
    for (const QString &column : horariosviejos::presentes(doctorColumns)) {
        try {
            motor.quitarHorario(column);
        } catch (const Error &) {
            // A column that stays does no harm: its hours are already moved.
        }
    }
}

/// Makes `Agenda Turnos Horarios` when it is missing, filled with the hours that `Lista Doctores` still holds. Hours
/// that cannot be moved stay where they are until the next start; the agenda gets its table all the same.
void actualizarHorarios(
    Motor &motor, const Table &table, bool tableIsNew, const QStringList &doctorColumns, std::vector<Paso> &steps)
{
    const Paso create{[&motor, table] { motor.crear(table); }};
    if (horariosviejos::presentes(doctorColumns).isEmpty()) {
        if (tableIsNew)
            steps.push_back(create);
        return;
    }
    steps.push_back(
        {[&motor, create, doctorColumns, tableIsNew] {
             if (tableIsNew)
                 create.hacer();
             moverHorarios(motor, doctorColumns, tableIsNew);
         },
         tableIsNew,
         tableIsNew ? std::vector<Paso>{create} : std::vector<Paso>{}});
}

bool actualizarTablas(Motor &motor, const Schema &schema)
{
    const Catalogo catalogo = motor.catalogo();
    const Catalogo::Entry *doctors = catalogo.table(tablaDoctores);
    std::vector<Paso> steps;
    for (const Table &table : schema.tables) {
        const Catalogo::Entry *present = catalogo.table(table.name);
        if (present)
            completarTabla(motor, table, *present, steps);
        if (table.name == tablaHorarios)
            actualizarHorarios(motor, table, !present, doctors ? doctors->columns : QStringList(), steps);
        else if (!present)
            steps.push_back({[&motor, table] { motor.crear(table); }});
    }
    return !steps.empty() && intentar(motor.connection(), juntar(steps));
}

void prepararBusquedas(Connection &connection, const Schema &schema)
{
    for (const Table &table : schema.tables) {
        if (!table.search)
            continue;
        try {
            connection.prepareSearch(table);
        } catch (const Error &) {
            // Searches are slower until the next start.
        }
    }
}

void avisar(base::Mensajes &mensajes)
{
    mensajes.informar(
        QStringLiteral("Atención"),
        QStringLiteral("El sistema actualizó la base de datos a una versión más reciente, verifique en la ventana "
                       "CONFIGURACIÓN si debe configurar alguna opción nueva."));
}

} // namespace

bool actualizarAccess(const QVector<Schema> &routines, const AbrirConexion &open, base::Mensajes &mensajes)
{
    bool added = false;
    for (const Schema &schema : routines) {
        const std::unique_ptr<Connection> connection = open();
        MotorAccess motor(*connection);
        added |= actualizarTablas(motor, schema);
        prepararBusquedas(*connection, schema);
    }
    if (added)
        avisar(mensajes);
    return added;
}

bool actualizarServidor(const Schema &schema, Connection &connection, base::Mensajes &mensajes)
{
    MotorServidor motor(connection);
    const bool added = actualizarTablas(motor, schema);
    if (added)
        avisar(mensajes);
    return added;
}

} // namespace db
