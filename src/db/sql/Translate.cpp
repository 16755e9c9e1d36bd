#include "db/sql/Translate.h"

#include "db/sql/AccessParser.h"

namespace db::sql {

Translated fromAccess(QStringView statement) { return AccessParser(statement).translate(); }

} // namespace db::sql
