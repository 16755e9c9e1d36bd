#include "db/access/Fechas.h"

#include "db/ResultSet.h"

namespace db::access {

namespace {
constexpr qint64 delDia = 86400;
}

bool esFechaPosible(qint64 segundos) { return segundos >= -657434 * delDia && segundos < 2958466 * delDia; }

QString textoDeFecha(qint64 segundos)
{
    const qint64 resto = (segundos % delDia + delDia) % delDia;
    const QDate dia = QDate(1899, 12, 30).addDays((segundos - resto) / delDia);
    return storedDateTime(QDateTime(dia, QTime(0, 0), Qt::UTC).addSecs(resto));
}

} // namespace db::access
