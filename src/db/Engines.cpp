#include "db/Engine.h"
#include "db/Error.h"
#include "db/engine/EmbeddedEngine.h"

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
    for (const QString &part : text.split(u';')) {
        const qsizetype equals = part.indexOf(u'=');
        if (equals > 0)
            m_parts.emplace_back(part.left(equals).trimmed(), part.mid(equals + 1).trimmed());
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
