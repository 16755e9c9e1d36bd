#pragma once

#include <QString>

#include <optional>

namespace base {

enum class Icono { Ninguno, Informacion, Advertencia, Critico, Pregunta };

/// Everything the system says to the person and asks her. Rules and windows speak only through this interface, so that
/// tests can script the answers. All calls block until answered.
class Mensajes
{
public:
    virtual ~Mensajes() = default;

    virtual void mensaje(const QString &titulo, const QString &texto, Icono icono) = 0;

    /// A Sí/No question; true for Sí. Closing the box counts as No. `porDefecto` is the button that Enter presses.
    [[nodiscard]] virtual bool pregunta(const QString &titulo, const QString &texto, bool porDefecto = true) = 0;

    /// An Aceptar/Cancelar question before something long begins; true for Aceptar. Closing the box counts as Cancelar.
    [[nodiscard]] virtual bool confirmar(const QString &titulo, const QString &texto)
    {
        return pregunta(titulo, texto);
    }

    /// A line of text; empty optional when cancelled.
    [[nodiscard]] virtual std::optional<QString>
    pedirTexto(const QString &titulo, const QString &texto, const QString &inicial = {}) = 0;

    /// The same with the typed text hidden.
    [[nodiscard]] virtual std::optional<QString> pedirClave(const QString &titulo, const QString &texto) = 0;

    /// An existing file; `filtro` in Qt's form ("Imagen (*.jpg);;Todas (*)"). Empty optional when cancelled.
    [[nodiscard]] virtual std::optional<QString>
    elegirArchivo(const QString &titulo, const QString &carpeta, const QString &filtro) = 0;

    /// A file to write; the person has confirmed that an existing one may be replaced.
    [[nodiscard]] virtual std::optional<QString>
    elegirDestino(const QString &titulo, const QString &propuesto, const QString &filtro) = 0;

    [[nodiscard]] virtual std::optional<QString> elegirCarpeta(const QString &titulo, const QString &carpeta) = 0;

    void informar(const QString &titulo, const QString &texto) { mensaje(titulo, texto, Icono::Informacion); }
    void advertir(const QString &titulo, const QString &texto) { mensaje(titulo, texto, Icono::Advertencia); }
    void fallar(const QString &titulo, const QString &texto) { mensaje(titulo, texto, Icono::Critico); }
};

} // namespace base
