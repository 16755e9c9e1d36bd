#pragma once

#include "base/Rechazo.h"

#include <QDateTime>
#include <QStringList>
#include <QVector>

#include <optional>

namespace db {
class Connection;
}

namespace maintenance {

/// The window name that everything about copies is logged under.
inline const QString ventanaBackup = QStringLiteral("Back-up (Copia de Seguridad)");

/// What the practice chose for its automatic copies: columns of `Config`.
struct AjustesRespaldo {
    static constexpr int cantidadInicial = 14, horasInicial = 4;
    static constexpr int cantidadMaxima = 999, horasMaxima = 168;

    bool activo = false; ///< `hacerbackupautomatico`
    QString carpeta = {}; ///< `backupcarpeta`; empty: "Backup" of the program folder
    int cantidad = cantidadInicial; ///< `backupcantidad`: how many copies are kept
    int horas = horasInicial; ///< `backuphoras`: from one copy to the next

    bool operator==(const AjustesRespaldo &) const = default;
};

/// Values outside their limits read as the initial ones. Throws db::Error.
[[nodiscard]] AjustesRespaldo leerAjustes(db::Connection &conexion);
/// The folder of the copies, without a trailing separator.
[[nodiscard]] QString carpetaRespaldo(const AjustesRespaldo &ajustes, const QString &carpetaPrograma);

/// "Backup Datos (yyyymmddHhNn).mdb".
[[nodiscard]] QString nombreCopia(const QDateTime &cuando);
/// Empty optional for any other name.
[[nodiscard]] std::optional<QDateTime> fechaDeCopia(const QString &nombre);

struct CopiaAutomatica {
    QString nombre; ///< without its folder
    QDateTime cuando; ///< to the minute
};
/// The automatic copies in a folder, newest first.
[[nodiscard]] QVector<CopiaAutomatica> copiasEn(const QString &carpeta);

/// The names that go when only `cantidad` may stay. First go copies of former days that were followed by another one of
/// their day, then the oldest, so that the same number reaches further back. A copy dated after `ahora` (the clock was
/// wrong) counts as oldest; the newest of the others never goes.
[[nodiscard]] QStringList sobrantes(QVector<CopiaAutomatica> copias, int cantidad, const QDateTime &ahora);

} // namespace maintenance
