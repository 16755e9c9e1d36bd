#include "db/engine/EmbeddedEngine.h"

#include "db/Error.h"
#include "db/access/Cabecera.h"
#include "db/engine/Ddl.h"
#include "db/engine/Key.h"
#include "db/engine/SearchIndex.h"
#include "db/engine/SearchTables.h"
#include "db/sql/Functions.h"

#include <QFile>
#include <QFileInfo>
#include <QTime>

#include <sqlite3.h>

namespace db {

namespace {

constexpr int busyMilliseconds = 10000;
constexpr size_t cachedStatements = 256;

void useCipher(sqlite3 *database, const QByteArray &key)
{
    sqlite3mc_config(database, "cipher", sqlite3mc_cipher_index("sqlcipher"));
    sqlite3mc_config_cipher(database, "sqlcipher", "legacy", 4);
    sqlite3_key(database, key.constData(), int(key.size()));
}

Type declaredType(const char *declaration)
{
    return declaration ? ddl::typeOf(QByteArrayView(declaration)) : Type::Memo;
}

} // namespace

void createDatabaseFile(const QString &path, const QString &password)
{
    if (QFileInfo::exists(path))
        throw Error(Error::Kind::CannotOpen, 0, QStringLiteral("El archivo de la base de datos ya existe."));
    sqlite3 *database = nullptr;
    int code = sqlite3_open_v2(
        QFile::encodeName(path).constData(), &database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    if (code == SQLITE_OK) {
        useCipher(database, password.toUtf8());
        // The file has no header, and so no salt, before something is written.
        code = sqlite3_exec(database, "PRAGMA page_size=4096; PRAGMA user_version=1;", nullptr, nullptr, nullptr);
    }
    sqlite3_close(database);
    if (code != SQLITE_OK)
        throw Error(Error::Kind::CannotOpen, code, QStringLiteral("No se puede crear el archivo de la base de datos."));
}

QString embeddedEngineVersion()
{
    return QStringLiteral("%1 (SQLite %2)")
        .arg(QLatin1String(sqlite3mc_version()), QLatin1String(sqlite3_libversion()));
}

EmbeddedEngine::EmbeddedEngine(const QString &path, const QString &password, Opening opening)
    : m_file{path, password}
{
    const int flags = opening == Opening::ReadWrite ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY;
    const int code = sqlite3_open_v2(QFile::encodeName(path).constData(), &m_database, flags, nullptr);
    try {
        if (code != SQLITE_OK)
            fail(code);
        const QByteArray primeros = salt();
        // Before anything looks for a journal beside it: what an older version left there must not be touched.
        if (access::empiezaComoAccess(primeros))
            throw Error(
                Error::Kind::OldAccess,
                SQLITE_NOTADB,
                QStringLiteral("El archivo es una base de datos de Access, de una versión anterior del programa, que "
                               "todavía no se convirtió."));
        useCipher(m_database, derivedKey(password, primeros));
        sqlite3_extended_result_codes(m_database, 1);
        sqlite3_busy_timeout(m_database, busyMilliseconds);
        sql::registerFunctions(m_database);
        // The file may lie in a shared folder: never WAL, and every commit on the disk before it counts.
        executeNative("PRAGMA cache_size=-65536", {});
        executeNative("PRAGMA temp_store=MEMORY", {});
        executeNative("PRAGMA synchronous=FULL", {});
        executeNative("PRAGMA trusted_schema=OFF", {});
        (void)queryNative("SELECT count(*) FROM sqlite_master", {});
    } catch (const Error &) {
        finalizeAll();
        sqlite3_close(m_database);
        throw;
    }
}

EmbeddedEngine::~EmbeddedEngine()
{
    finalizeAll();
    sqlite3_close(m_database);
}

QByteArray EmbeddedEngine::salt() const
{
    // Through the engine's own file and not a second one: on Unix, closing a file that this process has locked through
    // another connection would drop the locks.
    QByteArray bytes(saltSize, '\0');
    sqlite3_file *file = nullptr;
    if (sqlite3_file_control(m_database, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK
        || file->pMethods->xRead(file, bytes.data(), saltSize, 0) != SQLITE_OK)
        throw Error(Error::Kind::NotADatabase, SQLITE_NOTADB, QStringLiteral("El archivo está vacío o incompleto."));
    return bytes;
}

void EmbeddedEngine::finalizeAll()
{
    for (const Prepared &prepared : m_statements)
        sqlite3_finalize(prepared.statement);
    m_statements.clear();
    m_byText.clear();
}

const sql::Translated &EmbeddedEngine::translated(const QString &sql)
{
    const auto known = m_translations.constFind(sql);
    if (known != m_translations.constEnd())
        return *known;
    // Statements with values written into them differ each time: the table is kept small.
    if (m_translations.size() > 1000)
        m_translations.clear();
    return *m_translations.insert(sql, sql::fromAccess(sql));
}

Rows EmbeddedEngine::query(const QString &sql, const Params &params)
{
    return queryNative(translated(sql).text, params);
}

int EmbeddedEngine::execute(const QString &sql, const Params &params)
{
    return executeNative(translated(sql).text, params);
}

QString EmbeddedEngine::singleTable(const QString &sql) { return translated(sql).singleTable; }

sqlite3_stmt *EmbeddedEngine::prepare(const QByteArray &sql)
{
    if (const auto found = m_byText.constFind(sql); found != m_byText.constEnd()) {
        // A statement still being read (a query inside the walk of another) is prepared a second time.
        if (!sqlite3_stmt_busy((*found)->statement)) {
            m_statements.splice(m_statements.begin(), m_statements, *found);
            return (*found)->statement;
        }
    }
    sqlite3_stmt *statement = nullptr;
    const char *tail = nullptr;
    const int code = sqlite3_prepare_v3(
        m_database, sql.constData(), int(sql.size() + 1), SQLITE_PREPARE_PERSISTENT, &statement, &tail);
    if (code != SQLITE_OK)
        fail(code, sql);
    if (tail && *tail) {
        sqlite3_finalize(statement);
        throw Error(Error::Kind::Syntax, SQLITE_ERROR, QStringLiteral("Sólo se admite una sentencia por vez."));
    }
    m_statements.push_front({sql, statement});
    m_byText.insert(sql, m_statements.begin());
    if (m_statements.size() > cachedStatements) {
        // One that is still being read, with others run in between, is spared.
        auto last = std::prev(m_statements.end());
        while (last != m_statements.begin() && sqlite3_stmt_busy(last->statement))
            --last;
        if (last == m_statements.begin())
            return statement;
        sqlite3_finalize(last->statement);
        if (const auto entry = m_byText.constFind(last->text); entry != m_byText.constEnd() && *entry == last)
            m_byText.erase(entry);
        m_statements.erase(last);
    }
    return statement;
}

void EmbeddedEngine::bind(sqlite3_stmt *statement, const Params &params)
{
    if (sqlite3_bind_parameter_count(statement) != params.size())
        throw Error(Error::Kind::Syntax, SQLITE_RANGE, QStringLiteral("La sentencia no recibió todos sus valores."));
    int i = 0;
    for (const QVariant &value : params) {
        ++i;
        int code = SQLITE_OK;
        const auto bindText = [&](const QString &text) {
            const QByteArray utf8 = text.toUtf8();
            code = sqlite3_bind_text(statement, i, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
        };
        if (value.isNull() && value.typeId() != QMetaType::QString && value.typeId() != QMetaType::QByteArray) {
            code = sqlite3_bind_null(statement, i);
            continue;
        }
        switch (value.typeId()) {
        case QMetaType::UnknownType: code = sqlite3_bind_null(statement, i); break;
        case QMetaType::Bool: code = sqlite3_bind_int(statement, i, value.toBool() ? -1 : 0); break;
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::Short:
        case QMetaType::Long:
        case QMetaType::LongLong:
        case QMetaType::ULongLong: code = sqlite3_bind_int64(statement, i, value.toLongLong()); break;
        case QMetaType::Float:
        case QMetaType::Double: code = sqlite3_bind_double(statement, i, value.toDouble()); break;
        case QMetaType::QDate: bindText(storedDateTime(QDateTime(value.toDate(), QTime(0, 0)))); break;
        case QMetaType::QTime: bindText(storedDateTime(QDateTime(QDate(1899, 12, 30), value.toTime()))); break;
        case QMetaType::QDateTime: bindText(storedDateTime(value.toDateTime())); break;
        case QMetaType::QByteArray: {
            const QByteArray bytes = value.toByteArray();
            code = sqlite3_bind_blob(statement, i, bytes.constData(), int(bytes.size()), SQLITE_TRANSIENT);
            break;
        }
        default: bindText(value.toString());
        }
        if (code != SQLITE_OK)
            fail(code);
    }
}

namespace {

/// Gives a statement back to the cache: reset, and without the values of the person it was about.
class InUse
{
public:
    explicit InUse(sqlite3_stmt *statement)
        : m_statement(statement)
    {
    }
    ~InUse()
    {
        sqlite3_reset(m_statement);
        sqlite3_clear_bindings(m_statement);
    }
    InUse(const InUse &) = delete;
    InUse &operator=(const InUse &) = delete;

private:
    sqlite3_stmt *m_statement;
};

Type typeOfValue(int storage)
{
    return storage == SQLITE_INTEGER ? Type::Long : storage == SQLITE_FLOAT ? Type::Double : Type::Memo;
}

} // namespace

Rows EmbeddedEngine::queryNative(const QByteArray &sql, const Params &params)
{
    sqlite3_stmt *statement = prepare(sql);
    const InUse guard(statement);
    bind(statement, params);

    // The first step comes before the fields: it also renews a statement whose table has changed since.
    int code = sqlite3_step(statement);
    const int count = sqlite3_column_count(statement);
    std::vector<ResultSet::Field> fields;
    fields.reserve(size_t(count));
    for (int c = 0; c < count; ++c) {
        ResultSet::Field field;
        field.name = QString::fromUtf8(sqlite3_column_name(statement, c));
        const char *declared = sqlite3_column_decltype(statement, c);
        field.type = declared    ? declaredType(declared)
            : code == SQLITE_ROW ? typeOfValue(sqlite3_column_type(statement, c))
                                 : Type::Memo;
        fields.push_back(std::move(field));
    }

    ResultSet::Builder builder(std::move(fields));
    for (; code == SQLITE_ROW; code = sqlite3_step(statement)) {
        for (int c = 0; c < count; ++c) {
            switch (sqlite3_column_type(statement, c)) {
            case SQLITE_NULL: builder.addNull(); break;
            case SQLITE_INTEGER: builder.addInteger(sqlite3_column_int64(statement, c)); break;
            case SQLITE_FLOAT: builder.addReal(sqlite3_column_double(statement, c)); break;
            case SQLITE_TEXT: {
                const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, c));
                builder.addText(QByteArrayView(text, sqlite3_column_bytes(statement, c)));
                break;
            }
            default: {
                const auto *bytes = static_cast<const char *>(sqlite3_column_blob(statement, c));
                builder.addBytes(QByteArrayView(bytes, sqlite3_column_bytes(statement, c)));
            }
            }
        }
        builder.endRow();
    }
    if (code != SQLITE_DONE)
        fail(code, sql);
    return builder.finish();
}

int EmbeddedEngine::executeNative(const QByteArray &sql, const Params &params)
{
    sqlite3_stmt *statement = prepare(sql);
    const InUse guard(statement);
    bind(statement, params);
    const qint64 before = sqlite3_total_changes64(m_database);
    int code = SQLITE_ROW;
    while (code == SQLITE_ROW)
        code = sqlite3_step(statement);
    if (code != SQLITE_DONE)
        fail(code, sql);
    // The total tells whether this statement changed anything, but counts what triggers wrote too.
    return sqlite3_total_changes64(m_database) == before ? 0 : int(sqlite3_changes64(m_database));
}

void EmbeddedEngine::walkNative(
    const QByteArray &sql, const Params &params, const std::function<void(sqlite3_stmt *)> &row)
{
    sqlite3_stmt *statement = prepare(sql);
    const InUse guard(statement);
    bind(statement, params);
    int code = SQLITE_ROW;
    while ((code = sqlite3_step(statement)) == SQLITE_ROW)
        row(statement);
    if (code != SQLITE_DONE)
        fail(code, sql);
}

bool EmbeddedEngine::inTransaction() const { return !sqlite3_get_autocommit(m_database); }

qint64 EmbeddedEngine::insertedId() { return sqlite3_last_insert_rowid(m_database); }

void EmbeddedEngine::begin()
{
    // The write lock at once: two stations that both read first could otherwise never both write.
    executeNative("BEGIN IMMEDIATE", {});
}

void EmbeddedEngine::commit() { executeNative("COMMIT", {}); }

void EmbeddedEngine::rollback()
{
    // After a failure the engine may have rolled back by itself.
    if (!sqlite3_get_autocommit(m_database))
        executeNative("ROLLBACK", {});
}

QStringList EmbeddedEngine::tableNames()
{
    const Rows rows = queryNative(
        "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite[_]%'"
        " AND name NOT LIKE 'motor[_]%' ORDER BY rowid",
        {});
    QStringList names;
    for (int r = 0; r < rows->rowCount(); ++r)
        names << rows->text(r, 0);
    return names;
}

QVector<Column> EmbeddedEngine::columns(const QString &table)
{
    const Rows rows = queryNative("SELECT name, type, dflt_value, pk FROM pragma_table_info(?)", {table});
    QVector<Column> columns;
    for (int r = 0; r < rows->rowCount(); ++r)
        columns << ddl::columnOf(
            rows->text(r, 0), rows->text(r, 1), rows->isNull(r, 2) ? QString() : rows->text(r, 2), rows->flag(r, 3));
    return columns;
}

void EmbeddedEngine::createTable(const Table &table)
{
    for (const QByteArray &statement : ddl::createTable(table))
        executeNative(statement, {});
    prepareSearch(table);
}

void EmbeddedEngine::addColumn(const QString &table, const Column &column)
{
    executeNative(ddl::addColumn(table, column), {});
}

Rows EmbeddedEngine::search(const QString &table, const Conditions &conditions, const QStringList &columns)
{
    std::unique_ptr<SearchIndex> &index = m_searches[table];
    if (!index)
        index = std::make_unique<SearchIndex>(*this, table);
    return index->search(conditions, columns);
}

void EmbeddedEngine::prepareSearch(const Table &table)
{
    if (!table.search || readOnly() || searchtables::current(*this, table.name, *table.search))
        return;
    // The caller's transaction, or one of its own.
    const bool own = !inTransaction();
    if (own)
        begin();
    try {
        // Another station may have been quicker.
        if (!own || !searchtables::current(*this, table.name, *table.search))
            searchtables::build(*this, table.name, *table.search);
        if (own)
            commit();
    } catch (const Error &) {
        if (own)
            rollback();
        throw;
    }
}

bool EmbeddedEngine::moved() const
{
    int flag = 0;
    return sqlite3_file_control(m_database, "main", SQLITE_FCNTL_HAS_MOVED, &flag) == SQLITE_OK && flag != 0;
}

void EmbeddedEngine::setBusyWait(int milliseconds)
{
    sqlite3_busy_timeout(m_database, milliseconds > 0 ? milliseconds : busyMilliseconds);
}

bool EmbeddedEngine::readOnly() const { return sqlite3_db_readonly(m_database, "main") == 1; }

void EmbeddedEngine::fail(int code, const QByteArray &sql) const
{
    using Kind = Error::Kind;
    const QString detail = QString::fromUtf8(sqlite3_errmsg(m_database));
    switch (code & 0xff) {
    case SQLITE_NOTADB:
        throw Error(
            Kind::NotADatabase,
            code,
            QStringLiteral("El archivo no es una base de datos de este programa, tiene otra clave o está dañado."));
    case SQLITE_CORRUPT:
        throw Error(Kind::Corrupt, code, QStringLiteral("El archivo de la base de datos está dañado."));
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        throw Error(
            Kind::Busy,
            code,
            QStringLiteral("Otra terminal está ocupando la base de datos. Espere un momento e intente nuevamente."));
    case SQLITE_READONLY:
        if (code == SQLITE_READONLY_DBMOVED)
            throw Error(
                Kind::Moved,
                code,
                QStringLiteral("El archivo de la base de datos fue movido o eliminado: no se guardó ningún cambio."));
        throw Error(
            Kind::ReadOnly,
            code,
            QStringLiteral("La base de datos es de sólo lectura: no se puede guardar. Verifique los permisos del "
                           "archivo y de su carpeta."));
    case SQLITE_FULL: throw Error(Kind::Full, code, QStringLiteral("El disco está lleno: no se pudo guardar."));
    case SQLITE_CANTOPEN:
        throw Error(Kind::CannotOpen, code, QStringLiteral("No se puede abrir el archivo de la base de datos."));
    case SQLITE_IOERR:
        throw Error(
            Kind::General, code, QStringLiteral("El disco o la red fallaron al leer o escribir la base de datos."));
    case SQLITE_CONSTRAINT:
        throw Error(Kind::Constraint, code, QStringLiteral("Ya existe un registro con la misma clave."));
    default: break;
    }
    if (detail.startsWith(QLatin1String("no such table: ")))
        throw Error(
            Kind::NoSuchTable, code, QStringLiteral("La base de datos no tiene la tabla '%1'.").arg(detail.mid(15)));
    if (detail.startsWith(QLatin1String("no such column: ")) || detail.contains(QLatin1String("has no column named")))
        throw Error(Kind::NoSuchColumn, code, QStringLiteral("Columna desconocida (%1).").arg(detail));
    if ((code & 0xff) == SQLITE_ERROR && !sql.isEmpty() && detail.contains(QLatin1String("syntax error")))
        throw Error(Kind::Syntax, code, QStringLiteral("Sentencia no válida (%1).").arg(detail));
    throw Error(Kind::General, code, detail);
}

} // namespace db
