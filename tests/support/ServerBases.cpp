#include "db/Error.h"
#include "db/engine/Ddl.h"
#include "support/ServerTestEngine.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace soporte {

using namespace db::sql;
using Errand = ServerErrand::Kind;

namespace {

constexpr auto ending = ".mdb";
/// Of a server installed with its usual answers.
constexpr auto usualCollation = "SQL_Latin1_General_CP1_CI_AS";

[[noreturn]] void refuse(int number, const char *text)
{
    throw db::Error(db::Error::Kind::General, number, QString::fromLatin1(text));
}

QString same(const QString &name) { return name.toLower(); }

} // namespace

void ServerParser::base(ServerErrand::Kind kind)
{
    (void)take();
    expect(u"database");
    m_result.errand.kind = kind;
    m_result.errand.name = identifier();
}

void ServerParser::alterBase()
{
    base(Errand::Collate);
    if (accept(u"collate")) {
        m_result.errand.text = identifier();
        return;
    }
    expect(u"set");
    m_result.errand.kind = Errand::SingleUser; // nothing of it is to be seen here
    const Token option = take();
    if (option.isWord(u"auto_close"))
        return expect(u"off");
    if (option.isWord(u"recovery"))
        return expect(u"simple");
    if (option.isWord(u"read_committed_snapshot"))
        expect(u"on");
    else if (!option.isWord(u"single_user"))
        failSyntax(QStringLiteral("Propiedad desconocida"), option.position);
    // Both wait for everybody else in the base unless they are told to throw them out.
    expect(u"with");
    expect(u"rollback");
    expect(u"immediate");
}

void ServerParser::session()
{
    expect(u"set");
    if (accept(u"lock_timeout")) {
        m_result.errand.kind = Errand::LockTimeout;
        m_result.errand.number = number();
        return;
    }
    expect(u"identity_insert");
    m_result.errand.kind = Errand::IdentityInsert;
    m_result.errand.name = identifier();
    m_result.errand.on = accept(u"on");
    if (!m_result.errand.on)
        expect(u"off");
}

QString ServerParser::firstText()
{
    expectSymbol(u"(");
    const Token token = take();
    if (token.kind != Token::Kind::Text)
        failSyntax(QStringLiteral("Falta un nombre entre comillas"), token.position);
    expectSymbol(u")");
    return token.text;
}

void ServerParser::reseed()
{
    expect(u"dbcc");
    expect(u"checkident");
    expectSymbol(u"(");
    const Token token = take();
    if (token.kind != Token::Kind::Text)
        failSyntax(QStringLiteral("Falta un nombre entre comillas"), token.position);
    expectSymbol(u",");
    expect(u"reseed");
    expectSymbol(u",");
    m_result.errand.kind = Errand::Reseed;
    m_result.errand.name = QString(token.text).remove(u'[').remove(u']');
    m_result.errand.number = number();
    expectSymbol(u")");
}

Translated ServerParser::constraint(const QString &table)
{
    expect(u"add");
    expect(u"constraint");
    ServerErrand &errand = m_result.errand;
    errand.name = table;
    errand.text = identifier();
    if (accept(u"default")) {
        errand.kind = Errand::Default;
        const int at = position();
        const bool negative = acceptSymbol(u"-");
        const Token token = take();
        if (token.kind == Token::Kind::Text && !negative)
            errand.value = token.text;
        else if (token.kind == Token::Kind::Integer)
            errand.value = (negative ? -1 : 1) * token.text.toInt();
        else
            failSyntax(QStringLiteral("Valor inicial inválido"), at);
        expect(u"for");
        errand.columns << identifier();
        return {};
    }
    errand.kind = Errand::PrimaryKey;
    expect(u"primary");
    expect(u"key");
    if (accept(u"nonclustered"))
        errand.on = false;
    else {
        accept(u"clustered");
        errand.on = true;
    }
    expectSymbol(u"(");
    do
        errand.columns << identifier();
    while (acceptSymbol(u","));
    expectSymbol(u")");
    return {};
}

void ServerParser::noteInsert()
{
    m_result.insertInto = peek(2).text;
    if (!peek(3).isSymbol(u"("))
        return;
    for (int ahead = 4; !peek(ahead).isSymbol(u")") && peek(ahead).kind != Token::Kind::End; ++ahead)
        if (!peek(ahead).isSymbol(u","))
            m_result.inserted << peek(ahead).text;
}

void ServerParser::hints()
{
    if (!accept(u"with"))
        return;
    expectSymbol(u"(");
    do {
        if (!accept(u"tablock") && !accept(u"holdlock"))
            unexpected();
    } while (acceptSymbol(u","));
    expectSymbol(u")");
}

QString ServerTestEngine::folder() const { return QFileInfo(embeddedFile()->path).path(); }

QString ServerTestEngine::baseFile(const QString &base) const
{
    for (const QString &file : QDir(folder()).entryList({QStringLiteral("*.mdb")}, QDir::Files))
        if (file.compare(base + QLatin1String(ending), Qt::CaseInsensitive) == 0)
            return folder() + u'/' + file;
    return {};
}

QStringList ServerTestEngine::bases()
{
    QStringList names;
    for (const QString &file : QDir(folder()).entryList({QStringLiteral("*.mdb")}, QDir::Files))
        names << file.chopped(4);
    return names;
}

QString ServerTestEngine::collationOf(const QString &base)
{
    for (const QString &of : {base, QStringLiteral("master")}) {
        QFile file(folder() + u'/' + same(of) + QStringLiteral(".intercalacion"));
        if (file.open(QFile::ReadOnly))
            return QString::fromUtf8(file.readAll());
    }
    return QLatin1String(usualCollation);
}

void ServerTestEngine::carryOut(const ServerErrand &errand)
{
    const bool ofBases = errand.kind == Errand::CreateBase || errand.kind == Errand::DropBase
        || errand.kind == Errand::Collate || errand.kind == Errand::SingleUser;
    if (ofBases && inTransaction())
        refuse(226, "DATABASE statement not allowed within multi-statement transaction.");
    if (ofBases && same(QFileInfo(embeddedFile()->path).completeBaseName()) != QLatin1String("master"))
        refuse(262, "The errand is for the master database.");
    if (errand.kind == Errand::CreateBase && !baseFile(errand.name).isEmpty())
        refuse(1801, "Database already exists. Choose a different database name.");
    if (ofBases && errand.kind != Errand::CreateBase && baseFile(errand.name).isEmpty())
        refuse(3701, "Cannot alter or drop the database, because it does not exist.");
    const QString collation = folder() + u'/' + same(errand.name) + QStringLiteral(".intercalacion");
    switch (errand.kind) {
    case Errand::CreateBase:
        db::createDatabaseFile(folder() + u'/' + errand.name + QLatin1String(ending), embeddedFile()->password);
        return;
    case Errand::DropBase:
        if (!QFile::remove(baseFile(errand.name)))
            refuse(3702, "Cannot drop the database because it is currently in use.");
        QFile::remove(collation);
        return;
    case Errand::Collate: {
        const db::EmbeddedEngine other(baseFile(errand.name), embeddedFile()->password);
        if (!const_cast<db::EmbeddedEngine &>(other).tableNames().isEmpty())
            refuse(5075, "An object depends on the database collation.");
        QFile file(collation);
        if (!file.open(QFile::WriteOnly) || file.write(errand.text.toUtf8()) < 0)
            refuse(5030, "The database could not be exclusively locked.");
        return;
    }
    case Errand::SingleUser:
    case Errand::LockTimeout:
    case Errand::None: return;
    default: break;
    }

    const QVector<db::Column> columns = this->columns(errand.name);
    if (columns.isEmpty())
        throw db::Error(db::Error::Kind::NoSuchTable, 208, QStringLiteral("Invalid object name."));
    const QString table = same(errand.name);
    QString counter;
    for (const db::Column &column : columns)
        if (column.type == db::Type::Counter)
            counter = column.name;
    if (errand.kind == Errand::IdentityInsert) {
        if (counter.isEmpty())
            refuse(8106, "Table does not have the identity property.");
        if (errand.on && !m_identityInsert.isEmpty() && m_identityInsert != table)
            refuse(8107, "IDENTITY_INSERT is already ON for another table.");
        m_identityInsert = errand.on ? table : m_identityInsert == table ? QString() : m_identityInsert;
        return;
    }
    if (errand.kind == Errand::Reseed) {
        if (counter.isEmpty())
            refuse(7997, "Table does not contain an identity column.");
        executeNative("DELETE FROM sqlite_sequence WHERE name = ? COLLATE NOCASE", {errand.name});
        executeNative("INSERT INTO sqlite_sequence (name, seq) VALUES (?, ?)", {errand.name, errand.number});
        return;
    }
    for (const QString &name : errand.columns)
        if (std::none_of(columns.begin(), columns.end(), [&](const db::Column &column) {
                return column.name.compare(name, Qt::CaseInsensitive) == 0;
            }))
            throw db::Error(db::Error::Kind::NoSuchColumn, 207, QStringLiteral("Invalid column name."));
    executeNative("CREATE TABLE IF NOT EXISTS motor_restricciones (nombre TEXT PRIMARY KEY COLLATE NOCASE)", {});
    executeNative("INSERT INTO motor_restricciones VALUES (?)", {errand.text});
    if (errand.kind == Errand::Default) {
        setDefault(errand);
        return;
    }
    if (errand.on)
        orderRows(errand.name);
    if (errand.columns == QStringList{counter} || same(errand.columns.value(0)) == same(counter))
        return; // the engine's own key
    const auto quoted = [](const QString &name) { return '"' + name.toUtf8() + '"'; };
    QByteArray names;
    for (const QString &name : errand.columns) {
        if (queryNative("SELECT 1 FROM " + quoted(errand.name) + " WHERE " + quoted(name) + " IS NULL LIMIT 1", {})
                ->rowCount()
            > 0)
            refuse(8111, "Cannot define PRIMARY KEY constraint on nullable column.");
        names += (names.isEmpty() ? "" : ", ") + quoted(name);
    }
    executeNative(
        "CREATE UNIQUE INDEX " + quoted(errand.name + u'.' + errand.text) + " ON " + quoted(errand.name) + " (" + names
            + ')',
        {});
}

void ServerTestEngine::setDefault(const ServerErrand &errand)
{
    db::Table table;
    table.columns = columns(errand.name);
    for (db::Column &column : table.columns) {
        if (column.name.compare(errand.columns.constFirst(), Qt::CaseInsensitive) != 0)
            continue;
        if (column.initial)
            refuse(1781, "Column already has a DEFAULT bound to it.");
        const bool text
            = column.type == db::Type::Text || column.type == db::Type::Memo || column.type == db::Type::DateTime;
        bool number = true;
        column.initial = text ? QVariant(errand.value.toString()) : QVariant(errand.value.toString().toDouble(&number));
        if (!number)
            refuse(245, "Conversion failed when converting the default.");
    }
    const db::Rows key = queryNative("SELECT name FROM pragma_table_info(?) WHERE pk > 0 ORDER BY pk", {errand.name});
    const bool counted = std::any_of(table.columns.begin(), table.columns.end(), [](const db::Column &column) {
        return column.type == db::Type::Counter;
    });
    for (int r = 0; !counted && r < key->rowCount(); ++r)
        table.key << key->text(r, 0);
    const db::Rows name
        = queryNative("SELECT name FROM sqlite_master WHERE type = 'table' AND name = ? COLLATE NOCASE", {errand.name});
    table.name = name->text(0, 0);
    executeNative("PRAGMA writable_schema=ON", {});
    executeNative(
        "UPDATE sqlite_master SET sql = ? WHERE type = 'table' AND name = ?",
        {QString::fromUtf8(db::ddl::createTable(table).first()), table.name});
    executeNative("PRAGMA writable_schema=RESET", {});
}

void ServerTestEngine::orderRows(const QString &table)
{
    executeNative("CREATE TABLE IF NOT EXISTS motor_agrupadas (tabla TEXT PRIMARY KEY COLLATE NOCASE)", {});
    if (executeNative("INSERT OR IGNORE INTO motor_agrupadas VALUES (?)", {table}) == 0)
        refuse(1902, "Cannot create more than one clustered index on table.");
}

void ServerTestEngine::checkIdentity(const ServerStatement &statement)
{
    // Practices of other tests are filled with numbers of their own; a whole server is as strict as one.
    if (statement.insertInto.isEmpty() || baseFile(QStringLiteral("master")).isEmpty())
        return;
    const bool allowed = same(statement.insertInto) == m_identityInsert;
    for (const db::Column &column : columns(statement.insertInto)) {
        if (column.type != db::Type::Counter)
            continue;
        const bool given = statement.inserted.contains(column.name, Qt::CaseInsensitive);
        if (allowed && !given)
            refuse(545, "Explicit value must be specified for identity column when IDENTITY_INSERT is set to ON.");
        if (!allowed && given)
            refuse(544, "Cannot insert explicit value for identity column when IDENTITY_INSERT is set to OFF.");
    }
}

} // namespace soporte
