#pragma once

#include "db/access/Conversion.h"

#include <memory>

namespace base {
class Clock;
class Mensajes;
} // namespace base

namespace db {
class Entorno;
}

namespace app {

/// What the person is asked.
[[nodiscard]] QString preguntaDeImportacion(const QString &archivo);
inline const QString tituloImportacion = QStringLiteral("Convertir la Base de Datos");

/// The conversation about a `Datos.mdb` that an older version kept in Access: what it is, whether to convert it, its
/// password, how far it is, what came of it.
class ImportacionAccess
{
public:
    using HacerAvance = std::function<std::unique_ptr<db::access::Seguimiento>()>;

    ImportacionAccess(base::Mensajes &mensajes, const base::Clock &clock);

    void setAvance(HacerAvance hacer) { m_hacerAvance = std::move(hacer); }
    /// What reads the old file; the program's own reader unless told otherwise.
    void setFuente(db::access::AbrirFuente abrir) { m_abrir = std::move(abrir); }

    /// Asks whether to convert the file and does so; true when it is a database of ours now. The person has been told
    /// in any case. Once refused, it only tells until preguntarDeNuevo().
    [[nodiscard]] bool ofrecer(const QString &archivo);
    void preguntarDeNuevo() { m_rechazado.clear(); }

    /// Writes what was converted since into the activity log of the database, which is open by now.
    void registrar(db::Entorno &entorno);

private:
    [[nodiscard]] bool convertir(const QString &archivo);
    [[nodiscard]] bool pedirClave(const QString &archivo);
    void fallar(const QString &texto);

    base::Mensajes &m_mensajes;
    const base::Clock &m_clock;
    HacerAvance m_hacerAvance;
    db::access::AbrirFuente m_abrir;
    QString m_rechazado; ///< file that the person did not want converted
    QString m_renglon; ///< to be logged
    bool m_ocupada = false;
};

} // namespace app
