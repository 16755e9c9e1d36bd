#include "db/Engine.h"
#include "db/Error.h"
#include "db/engine/EmbeddedEngine.h"
#include "db/odbc/OdbcEngine.h"

#include <algorithm>

namespace db {

int Engine::executeBatch(const QString &sql, const std::vector<Params> &rows)
{
    int changed = 0;
    for (const Params &row : rows)
        changed += execute(sql, row);
    return changed;
}

ConnectionString::ConnectionString(const QString &text)
{
    for (qsizetype from = 0; from < text.size();) {
        qsizetype end = text.indexOf(u';', from);
        if (end < 0)
            end = text.size();
        const qsizetype equals = text.indexOf(u'=', from);
        if (equals > from && equals < end) {
            const QString key = text.mid(from, equals - from).trimmed();
            // The last part of a server's string, and the only one that may hold any character.
            if (key.compare(u"Password", Qt::CaseInsensitive) == 0 || key.compare(u"PWD", Qt::CaseInsensitive) == 0) {
                m_parts.emplace_back(key, text.mid(equals + 1));
                return;
            }
            m_parts.emplace_back(key, text.mid(equals + 1, end - equals - 1).trimmed());
        }
        from = end + 1;
    }
}

QString ConnectionString::value(QStringView key) const
{
    for (const auto &[name, value] : m_parts)
        if (key.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    return {};
}

Engines Engines::standard()
{
    Engines engines;
    engines.add(QStringLiteral("Microsoft.Jet.OLEDB.4.0"), [](const ConnectionString &text) {
        return std::make_unique<EmbeddedEngine>(text.value(u"Data Source"), text.value(u"Jet OLEDB:Database Password"));
    });
    engines.add(QStringLiteral("SQLOLEDB"), [](const ConnectionString &text) { return OdbcEngine::open(text); });
    return engines;
}

void Engines::add(const QString &provider, Factory factory) { m_factories.emplace_back(provider, std::move(factory)); }

bool Engines::has(const QString &provider) const
{
    return std::any_of(m_factories.begin(), m_factories.end(), [&](const auto &known) {
        return known.first.compare(provider, Qt::CaseInsensitive) == 0;
    });
}

std::unique_ptr<Engine> Engines::open(const ConnectionString &text) const
{
    const QString provider = text.value(u"Provider");
    for (const auto &[name, factory] : m_factories)
        if (name.compare(provider, Qt::CaseInsensitive) == 0)
            return factory(text);
    throw Error(
        Error::Kind::CannotOpen,
        0,
        QStringLiteral("Esta versión del programa todavía no puede conectarse a este tipo de base de datos."));
}

} // namespace db
