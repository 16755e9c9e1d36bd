#pragma once

#include "db/Error.h"
#include "db/access/Fuente.h"

#include <QSet>

namespace db::access {

/// Understands what the reading process writes (jet::protocolo), however it is cut into pieces, and hands it on. Throws
/// db::Error (Corrupt) for anything that should not come.
class Tramos
{
public:
    explicit Tramos(Receptor &receptor);

    /// False when the receiver wants no more.
    [[nodiscard]] bool tomar(const QByteArray &bytes);
    /// The last frame has come.
    [[nodiscard]] bool completo() const { return m_completo; }

    /// "El archivo está dañado y no se pudo leer (...)."
    [[nodiscard]] static Error danio(const QString &detalle);

private:
    class Lectura;
    void tramo(char clase, QByteArrayView cuerpo);
    void tabla(Lectura &lectura);
    [[nodiscard]] bool filas(Lectura &lectura);

    Receptor &m_receptor;
    QByteArray m_pendiente;
    TablaVieja m_tabla;
    std::vector<Valor> m_fila;
    qint64 m_filas = 0;
    bool m_saludado = false;
    bool m_enTabla = false;
    bool m_completo = false;
    bool m_sigue = true;
    QSet<QString> m_nombres; ///< of the tables that have come, without regard to case
};

} // namespace db::access
