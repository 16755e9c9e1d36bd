#include "db/access/Fuente.h"

#include "db/access/Fechas.h"

namespace db::access {

int TablaVieja::columna(QStringView buscada) const
{
    for (int c = 0; c < columnas.size(); ++c)
        if (buscada.compare(columnas[c].nombre, Qt::CaseInsensitive) == 0)
            return c;
    return -1;
}

QString Valor::descripcion() const
{
    switch (clase) {
    case Clase::Nulo: return {};
    case Clase::Entero: return QString::number(entero);
    case Clase::Logico: return entero ? QStringLiteral("Sí") : QStringLiteral("No");
    case Clase::Simple:
    case Clase::Doble:
    case Clase::FechaRota: return QString::number(real, 'g', 17);
    case Clase::Moneda: {
        const quint64 sinSigno = entero < 0 ? 0 - quint64(entero) : quint64(entero);
        return QStringLiteral("%1%2.%3")
            .arg(entero < 0 ? QStringLiteral("-") : QString())
            .arg(sinSigno / 10000)
            .arg(sinSigno % 10000, 4, 10, QLatin1Char('0'));
    }
    case Clase::Fecha: return textoDeFecha(entero);
    case Clase::Texto:
    case Clase::Decimal: return QString::fromUtf8(datos);
    case Clase::TextoRoto: return QStringLiteral("hex:") + QString::fromLatin1(crudo.toHex());
    case Clase::Bytes: return QStringLiteral("hex:") + QString::fromLatin1(datos.toHex());
    }
    return {};
}

} // namespace db::access
