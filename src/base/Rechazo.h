#pragma once

#include "base/Mensajes.h"

#include <QString>

#include <optional>

namespace base {

/// Why a rule did not do what was asked: what to show, and the object name of the field that gets the focus
/// (empty: none).
struct Rechazo {
    QString titulo;
    QString texto;
    QString campo = {};
    Icono icono = Icono::Critico;

    bool operator==(const Rechazo &) const = default;
};

/// Nothing to complain about when empty.
using Control = std::optional<Rechazo>;

/// The value a rule hands over, or its refusal.
template <typename T>
class [[nodiscard]] Resultado
{
public:
    Resultado(T valor)
        : m_valor(std::move(valor))
    {
    }
    Resultado(Rechazo rechazo)
        : m_rechazo(std::move(rechazo))
    {
    }

    explicit operator bool() const { return m_valor.has_value(); }
    [[nodiscard]] const T &operator*() const { return *m_valor; }
    [[nodiscard]] const T *operator->() const { return &*m_valor; }
    [[nodiscard]] const Rechazo &rechazo() const { return *m_rechazo; }

private:
    std::optional<T> m_valor;
    std::optional<Rechazo> m_rechazo;
};

/// Titles of the system's message boxes.
namespace titulo {
inline const QString aviso = QStringLiteral("Aviso...");
inline const QString atencion = QStringLiteral("Atención...");
inline const QString error = QStringLiteral("ERROR...");
inline const QString confirmacion = QStringLiteral("Confirmación...");
} // namespace titulo

/// Said where another station deleted the row that was to be changed.
inline const QString textoRegistroEliminado
    = QStringLiteral("Este Registro ya No existe, debe haber sido eliminado por otro usuario.");

[[nodiscard]] inline Rechazo registroEliminado() { return {titulo::atencion, textoRegistroEliminado}; }

/// Tells that a window is not part of this version.
inline void avisarNoDisponible(Mensajes &mensajes)
{
    mensajes.informar(
        titulo::atencion, QStringLiteral("Esta ventana todavía no forma parte de esta versión de Vastelo."));
}

} // namespace base
