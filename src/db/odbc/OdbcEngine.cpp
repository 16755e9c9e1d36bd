#include "db/odbc/OdbcEngine.h"

#include "db/Error.h"
#include "db/SentenciasServidor.h"
#include "db/odbc/Catalog.h"
#include "db/odbc/Flavour.h"
#include "db/odbc/Literals.h"
#include "db/odbc/SingleTable.h"
#include "db/odbc/Statement.h"
#include "db/odbc/Watched.h"

#include <algorithm>

namespace db {

namespace {

using namespace odbc;

constexpr int busyMilliseconds = 10000;
constexpr int openingSeconds = 10;
// How long the driver lets a server work that is there; one that hangs is given up long before (Watch).
constexpr int readingSeconds = 120; // a search through everything
constexpr int changingSeconds = 600; // a column filled in a million rows
constexpr int definitionSeconds = 3600; // an index over them
constexpr int probeSeconds = 3;
constexpr size_t batchRows = 500;
constexpr qsizetype batchCharacters = 200000;

const QString lostReading
    = QStringLiteral("Se perdió la conexión con el servidor. El programa volverá a conectarse con la próxima acción.");
const QString lostChanging = QStringLiteral(
    "Se perdió la conexión con el servidor mientras se guardaba: no se sabe si el último cambio quedó guardado. "
    "Verifíquelo antes de repetirlo; el programa volverá a conectarse con la próxima acción.");
const QString lostTransaction = QStringLiteral(
    "Se perdió la conexión con el servidor. Lo que se estaba guardando no se guardó; vuelva a intentarlo: el programa "
    "se conectará con la próxima acción.");
const QString lostCommitting = QStringLiteral(
    "Se perdió la conexión con el servidor justo al terminar de guardar: no se sabe si quedó guardado. Verifíquelo "
    "antes de repetirlo; el programa volverá a conectarse con la próxima acción.");
const QString unconfirmedText = QStringLiteral("El servidor no confirmó lo que se estaba guardando: no se sabe si "
                                               "quedó guardado. Verifíquelo antes de repetirlo.");
const QString undoneText
    = QStringLiteral("Lo que se estaba guardando se deshizo en el servidor: no se guardó nada. Vuelva a intentarlo.");

/// Statements after which what is remembered of the tables may be wrong, and that may take their time.
bool changesTables(const QString &verb)
{
    static const QStringList verbs{
        QStringLiteral("CREATE"),
        QStringLiteral("ALTER"),
        QStringLiteral("DROP"),
        QStringLiteral("IF"),
        QStringLiteral("EXEC"),
        QStringLiteral("BACKUP"),
        QStringLiteral("DBCC"),
        QStringLiteral("TRUNCATE")};
    return verbs.contains(verb);
}

std::optional<Driver> bestDriver()
{
    QStringList installed;
    try {
        installed = installedDrivers();
    } catch (const Failed &) {
        // None are known by name then.
    }
    return chooseDriver(installed, freeTdsLibraries());
}

/// What the person is told when the driver itself is missing or does not load.
bool isAboutDriver(const Diagnostics &diagnostics)
{
    return std::any_of(diagnostics.begin(), diagnostics.end(), [](const Diagnostic &d) {
        return d.state.startsWith(QLatin1String("IM")) || d.text.contains(QLatin1String("Can't open lib"));
    });
}

} // namespace

/// The handles of a connection; they go with the last one that uses them, which may be a statement that was given up.
struct OdbcEngine::Link {
    Link(const Target &target, int seconds)
        : environment(SQL_HANDLE_ENV, 0, SQL_NULL_HANDLE)
    {
        environment.check(SQLSetEnvAttr(environment.get(), SQL_ATTR_ODBC_VERSION, SQLPOINTER(SQL_OV_ODBC3), 0));
        connection = Handle(SQL_HANDLE_DBC, SQL_HANDLE_ENV, environment.get());
        SQLSetConnectAttr(connection.get(), SQL_ATTR_LOGIN_TIMEOUT, SQLPOINTER(quintptr(seconds)), 0);
        connection.check(SQLDriverConnectW(
            connection.get(),
            nullptr,
            wide(target.text),
            SQLSMALLINT(target.text.size()),
            nullptr,
            0,
            nullptr,
            SQL_DRIVER_NOPROMPT));
        connected = true;
    }
    ~Link()
    {
        if (connected)
            SQLDisconnect(connection.get());
    }
    Link(const Link &) = delete;
    Link &operator=(const Link &) = delete;

    /// Whether somebody there answers, to another connection than the one that waits. A refusal is an answer too.
    [[nodiscard]] static bool answers(const Target &target, std::chrono::seconds within)
    {
        const auto ask = [target, within] {
            try {
                const Link other(target, int(within.count()));
                return true;
            } catch (const Failed &failed) {
                return tellsAnswer(failed.diagnostics);
            }
        };
        // The driver keeps to its limit, unless it was told to do one thing after the other.
        const Watch once{.first = 2 * within, .silences = 1};
        const auto nobody = [] { return false; };
        return untilSilent<bool>(ask, nobody, once).value_or(false);
    }

    Handle environment;
    Handle connection;
    bool connected = false;
};

struct OdbcEngine::Session {
    Session(const Target &target, const Watch &whileWaiting)
        : link(std::make_shared<Link>(target, openingSeconds))
        , answers([target, whileWaiting] { return Link::answers(target, whileWaiting.answer); })
        , watch(whileWaiting)
    {
        const Handle &connection = link->connection;
        SQLWCHAR name[64] = {};
        SQLSMALLINT bytes = 0;
        connection.check(SQLGetInfoW(connection.get(), SQL_DBMS_NAME, name, sizeof name, &bytes));
        if (QString::fromUtf16(reinterpret_cast<const char16_t *>(name)).startsWith(QLatin1String("PostgreSQL")))
            flavour = &postgres();
        setOptions();
        findManner(target.passing);
    }

    [[nodiscard]] Outcome run(const QString &sql, const Params &params, int seconds) const
    {
        const auto work = [link = link, flavour = flavour, manner = manner, sql, params, seconds] {
            return Statement(link->connection, *flavour, manner, seconds).run(sql, params);
        };
        std::optional<Outcome> outcome = untilSilent<Outcome>(work, answers, watch);
        if (!outcome)
            throw Failed{{{QStringLiteral("08S01"), 0, {}}}};
        return std::move(*outcome);
    }

    /// All in one journey, or one by one where one of them is refused: a server that does not know it keeps its own.
    void setOptions() const
    {
        try {
            (void)run(flavour->options.join(QLatin1String("; ")), {}, readingSeconds);
        } catch (const Failed &all) {
            if (tellsLost(all.diagnostics))
                throw;
            for (const QString &option : flavour->options) {
                try {
                    (void)run(option, {}, readingSeconds);
                } catch (const Failed &failed) {
                    if (tellsLost(failed.diagnostics))
                        throw;
                }
            }
        }
    }

    /// The way of passing and reading texts in which none is lost between this driver and this server: tried with what
    /// has been seen to go wrong. A text that came back as Null, or with "?" in it, would be stored so the next time
    /// its row is saved.
    void findManner(Passing wanted)
    {
        // Longer in UTF-8 than the column's characters by more than ten; outside CP1252; beyond 16 bits; empty.
        const Params texts{
            QString(20, u'ñ'), QStringLiteral("≥ 5 «ñ» \u5E78"), QStringLiteral("\U0001F600"), QStringLiteral("")};
        for (const Passing passing : {wanted, Passing::Written}) {
            for (const TextAs textAs : {TextAs::Wide, TextAs::Utf8}) {
                manner = {passing, textAs};
                if (survives(texts))
                    return;
            }
        }
        throw Error(
            Error::Kind::CannotOpen,
            0,
            QStringLiteral(
                "El controlador para SQL Server instalado en esta computadora altera los textos: no se usará "
                "para no dañar los datos. ")
                + missingDriverText());
    }

    [[nodiscard]] bool survives(const Params &texts) const
    {
        try {
            const Outcome outcome = run(QStringLiteral("SELECT ?,?,?,?"), texts, probeSeconds);
            const Rows &rows = outcome.results.at(0);
            for (int c = 0; c < texts.size(); ++c)
                if (rows->isNull(0, c) || rows->text(0, c) != texts[c].toString())
                    return false;
            return true;
        } catch (const Failed &failed) {
            if (tellsLost(failed.diagnostics))
                throw;
            return false;
        }
    }

    /// Asks the server something, to know whether it is there.
    [[nodiscard]] bool alive() const
    {
        SQLUINTEGER dead = SQL_CD_FALSE;
        if (SQL_SUCCEEDED(SQLGetConnectAttrW(link->connection.get(), SQL_ATTR_CONNECTION_DEAD, &dead, 0, nullptr))
            && dead == SQL_CD_TRUE)
            return false;
        try {
            (void)run(QStringLiteral("SELECT 1"), {}, probeSeconds);
            return true;
        } catch (const Failed &failed) {
            // A refusal is an answer too; what explains nothing is not.
            return !tellsLost(failed.diagnostics)
                && std::any_of(failed.diagnostics.begin(), failed.diagnostics.end(), [](const Diagnostic &d) {
                       return !d.state.startsWith(QLatin1String("HY")) && !d.state.startsWith(QLatin1String("01"));
                   });
        }
    }

    std::shared_ptr<const Link> link;
    std::function<bool()> answers;
    Watch watch;
    const Flavour *flavour = &sqlServer();
    Manner manner;
    int wait = -1; ///< the server's own so far
};

OdbcEngine::OdbcEngine(Target target, Watch watch)
    : m_target(std::move(target))
    , m_watch(watch)
{
    connect();
}

OdbcEngine::~OdbcEngine() = default;

bool OdbcEngine::available() { return bestDriver().has_value(); }

std::unique_ptr<Engine> OdbcEngine::open(const ConnectionString &text, Watch watch)
{
    const std::optional<Driver> driver = bestDriver();
    if (!driver)
        throw Error(Error::Kind::CannotOpen, 0, missingDriverText());
    return std::make_unique<OdbcEngine>(targetOf(text, *driver), watch);
}

void OdbcEngine::connect()
{
    try {
        m_columns.clear();
        m_session = std::make_unique<Session>(m_target, m_watch);
        m_used.start();
    } catch (const Failed &failed) {
        if (isAboutDriver(failed.diagnostics))
            throw Error(Error::Kind::CannotOpen, 0, missingDriverText());
        throw errorOf(failed.diagnostics, During::Opening);
    }
}

OdbcEngine::Session &OdbcEngine::ready()
{
    if (m_transaction == InTransaction::Lost)
        throw Error(Error::Kind::Lost, 0, lostTransaction);
    if (m_transaction == InTransaction::Undone)
        throw Error(Error::Kind::General, 0, undoneText);
    if (m_session && m_transaction == InTransaction::No && m_used.hasExpired(m_idleSeconds * 1000LL)
        && !m_session->alive())
        m_session.reset();
    if (!m_session) {
        // Work that nobody asked for does not make anybody wait for a server that may be off.
        if (m_wait > 0)
            throw Error(Error::Kind::Lost, 0, lostReading);
        connect();
    }
    m_used.start();
    return *m_session;
}

int OdbcEngine::patience(int seconds) const { return m_wait > 0 ? probeSeconds : seconds; }

void OdbcEngine::applyWait(Session &session)
{
    const int wait = m_wait > 0 ? m_wait : busyMilliseconds;
    if (session.wait == wait)
        return;
    (void)session.run(session.flavour->waits.arg(wait), {}, probeSeconds);
    session.wait = wait;
}

template <typename Work>
auto OdbcEngine::guarded(Action action, const Work &work)
{
    Session &session = ready();
    try {
        applyWait(session);
        return work(session);
    } catch (const Failed &failed) {
        fail(failed, action);
    }
}

void OdbcEngine::fail(const Failed &failed, Action action)
{
    const Diagnostics &diagnostics = failed.diagnostics;
    const int number = diagnostics.isEmpty() ? 0 : diagnostics.first().number;
    if (tellsLost(diagnostics) || (tellsNothing(diagnostics) && !m_session->alive())) {
        m_session.reset();
        const bool cut = m_transaction == InTransaction::Yes;
        if (cut)
            m_transaction = InTransaction::Lost;
        throw Error(
            Error::Kind::Lost,
            number,
            action == Action::Committing    ? lostCommitting
                : cut                       ? lostTransaction
                : action == Action::Reading ? lostReading
                                            : lostChanging);
    }
    if (action == Action::Committing && tellsNothing(diagnostics)) {
        m_session.reset();
        throw Error(Error::Kind::General, number, unconfirmedText);
    }
    if (m_transaction == InTransaction::Yes) {
        // Some failures undo the whole transaction (a deadlock's victim): what would follow must not be stored alone.
        const QString &question = m_session->flavour->openQuery;
        bool open = false;
        try {
            open = !question.isEmpty() && m_session->run(question, {}, probeSeconds).results.at(0)->integer(0, 0) > 0;
        } catch (const Failed &) {
        }
        if (!open)
            m_transaction = InTransaction::Undone;
    }
    throw errorOf(diagnostics, During::Statement);
}

Rows OdbcEngine::query(const QString &sql, const Params &params)
{
    return guarded(Action::Reading, [&](Session &session) {
        Outcome outcome = session.run(sql, params, patience(readingSeconds));
        if (outcome.results.empty())
            throw Error(Error::Kind::Syntax, 0, QStringLiteral("La sentencia no es una consulta."));
        return std::move(outcome.results.front());
    });
}

void OdbcEngine::checkStored(const QString &sql, qint64 changed, qint64 expected) const
{
    // A driver that says that all went well when nothing was stored is not believed.
    if (outlineOf(sql).values && changed < expected)
        throw Error(Error::Kind::General, 0, QStringLiteral("El servidor no guardó el registro. Intente nuevamente."));
}

int OdbcEngine::execute(const QString &sql, const Params &params)
{
    const QString verb = outlineOf(sql).verb;
    const bool definition = changesTables(verb);
    if (definition)
        m_columns.clear();
    return guarded(Action::Changing, [&](Session &session) {
        const bool asks = verb == u"INSERT" && !session.flavour->insertedSuffix.isEmpty();
        // The number has to be asked for in the same batch: another one is another scope, where it is not known.
        const Outcome outcome = session.run(
            asks ? sql + session.flavour->insertedSuffix : sql,
            params,
            definition ? definitionSeconds : patience(changingSeconds));
        if (asks)
            m_insertedId = outcome.results.empty() ? 0 : outcome.results.back()->integer(0, 0);
        checkStored(sql, outcome.changed, 1);
        return int(outcome.changed);
    });
}

int OdbcEngine::executeBatch(const QString &sql, const std::vector<Params> &rows)
{
    const int expected = outlineOf(sql).parameters;
    return guarded(Action::Changing, [&](Session &session) {
        const Flavour &flavour = *session.flavour;
        qint64 changed = 0;
        for (size_t from = 0; from < rows.size();) {
            // Many statements in one journey, with their values in them: a journey per row is what makes it slow.
            QString text = flavour.batchBegin;
            size_t to = from;
            for (; to < rows.size() && to - from < batchRows && (to == from || text.size() < batchCharacters); ++to) {
                if (rows[to].size() != expected)
                    throw Error(Error::Kind::Syntax, 0, QStringLiteral("La sentencia no recibió todos sus valores."));
                if (!text.isEmpty())
                    text += QLatin1String("; ");
                text += replaceParameters(sql, [&](int i) { return literal(rows[to][i], flavour); });
            }
            if (!flavour.batchEnd.isEmpty())
                text += QLatin1String("; ") + flavour.batchEnd;
            try {
                const qint64 now = session.run(text, {}, definitionSeconds).changed;
                checkStored(sql, now, qint64(to - from));
                changed += now;
            } catch (const Failed &) {
                try {
                    if (!flavour.batchEnd.isEmpty())
                        (void)session.run(flavour.batchEnd, {}, probeSeconds);
                } catch (const Failed &) {
                    // The failure that came first is the one to tell.
                }
                throw;
            }
            from = to;
        }
        return int(changed);
    });
}

qint64 OdbcEngine::insertedId()
{
    if (!m_session || m_session->flavour->insertedQuery.isEmpty())
        return m_insertedId;
    return guarded(Action::Reading, [](Session &session) {
        return session.run(session.flavour->insertedQuery, {}, readingSeconds).results.at(0)->integer(0, 0);
    });
}

void OdbcEngine::begin()
{
    guarded(Action::Reading, [&](Session &session) {
        const int wait = m_wait > 0 ? m_wait : busyMilliseconds;
        const Outcome outcome
            = session.run(session.flavour->begin.arg(wait), {}, wait / 1000 + patience(readingSeconds));
        if (outcome.results.empty() || outcome.results.back()->integer(0, 0) < 0) {
            (void)session.run(session.flavour->rollback, {}, changingSeconds);
            throw Error(
                Error::Kind::Busy,
                0,
                QStringLiteral("Otra terminal está guardando. Espere un momento e intente nuevamente."));
        }
    });
    m_transaction = InTransaction::Yes;
}

void OdbcEngine::commit()
{
    guarded(Action::Committing, [&](Session &session) {
        (void)session.run(QStringLiteral("COMMIT"), {}, changingSeconds);
    });
    m_transaction = InTransaction::No;
}

void OdbcEngine::rollback()
{
    m_transaction = InTransaction::No;
    if (!m_session)
        return;
    try {
        (void)m_session->run(m_session->flavour->rollback, {}, changingSeconds);
    } catch (const Failed &) {
        // Without its connection the server undoes it; nothing may go on inside it.
        m_session.reset();
    }
}

QString OdbcEngine::singleTable(const QString &sql) { return odbc::singleTable(sql); }

QStringList OdbcEngine::tableNames()
{
    const Rows rows = guarded(Action::Reading, [&](Session &session) {
        return session.run(session.flavour->tables, {}, readingSeconds).results.at(0);
    });
    QStringList names;
    for (int r = 0; r < rows->rowCount(); ++r)
        names << rows->text(r, 0);
    return names;
}

QVector<Column> OdbcEngine::columns(const QString &table)
{
    if (const auto known = m_columns.constFind(table); known != m_columns.constEnd())
        return *known;
    const Rows rows = guarded(Action::Reading, [&](Session &session) {
        return session.run(session.flavour->columns, {table}, readingSeconds).results.at(0);
    });
    const QVector<Column> columns = columnsOf(*rows);
    if (!columns.isEmpty())
        m_columns.insert(table, columns);
    return columns;
}

void OdbcEngine::createTable(const Table &table)
{
    for (const QString &statement : servidor::crearTabla(table))
        execute(statement, {});
}

void OdbcEngine::addColumn(const QString &table, const Column &column)
{
    execute(servidor::agregarColumna(table, column), {});
}

} // namespace db
