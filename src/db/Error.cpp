#include "db/Error.h"

namespace db {

Error::Error(Kind kind, int number, QString description)
    : m_kind(kind)
    , m_number(number)
    , m_description(std::move(description))
    , m_what(m_description.toUtf8())
{
}

} // namespace db
