#pragma once

#include "base/Mensajes.h"

namespace ui {

/// The program's messages: boxes over the active window, texts shown plain, buttons in Spanish whatever translations
/// the machine has.
class MensajesQt final : public base::Mensajes
{
public:
    void mensaje(const QString &titulo, const QString &texto, base::Icono icono) override;
    bool pregunta(const QString &titulo, const QString &texto, bool porDefecto) override;
    bool confirmar(const QString &titulo, const QString &texto) override;
    std::optional<QString> pedirTexto(const QString &titulo, const QString &texto, const QString &inicial) override;
    std::optional<QString> pedirClave(const QString &titulo, const QString &texto) override;
    std::optional<QString> elegirArchivo(const QString &titulo, const QString &carpeta, const QString &filtro) override;
    std::optional<QString>
    elegirDestino(const QString &titulo, const QString &propuesto, const QString &filtro) override;
    std::optional<QString> elegirCarpeta(const QString &titulo, const QString &carpeta) override;
};

} // namespace ui
