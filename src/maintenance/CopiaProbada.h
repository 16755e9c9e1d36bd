#pragma once

#include "db/Engine.h"

#include <QDateTime>

#include <atomic>

namespace db {
class OnlineCopy;
}

namespace maintenance {

/// A round of the automatic copy.
struct PedidoRespaldo {
    db::EmbeddedFile origen;
    QString carpeta;
    int cantidad = 1; ///< copies that stay, see sobrantes()
    int horas = 0; ///< a copy younger than this is enough
    QDateTime ahora; ///< names the copy
};

struct DesenlaceRespaldo {
    enum class Tipo {
        Hecho,
        NoHaceFalta, ///< there is one young enough
        Ocupado, ///< the others did not stop writing long enough, or another program is making one
        Fallado,
        Cancelado
    };
    Tipo tipo = Tipo::Cancelado;
    QString archivo = {}; ///< path of the new copy
    QString motivo = {}; ///< of the failure, for the person
    QDateTime ultimo = {}; ///< the newest copy that is there; invalid when there is none
};

/// How far it is, and how to stop it; read and written from any thread.
struct SeguimientoRespaldo {
    std::atomic<bool> cancelar = false;
    std::atomic<int> porciento = 0;
    std::atomic<bool> probando = false;
};

/// Places where the outer world can be replaced.
struct PasosRespaldo {
    std::function<qint64(const QString &carpeta)> lugarLibre = {}; ///< bytes
    std::function<void(db::OnlineCopy &copia)> alEmpezar = {};
    std::function<void()> entrePasos = {};
    std::function<void(const QString &parcial)> antesDeProbar = {};
};

/// Copies the database into the folder, proves the copy, gives it its name only then, and after that removes the copies
/// that are too many. Whatever a killed run left unfinished is removed first. Blocks for as long as it takes and uses
/// nothing of the program's own connection: meant for a thread of its own. Throws nothing.
[[nodiscard]] DesenlaceRespaldo
hacerRespaldo(const PedidoRespaldo &pedido, SeguimientoRespaldo &seguimiento, const PasosRespaldo &pasos = {}) noexcept;

} // namespace maintenance
