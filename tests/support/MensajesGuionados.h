#pragma once

#include "base/Mensajes.h"

#include <QStringList>

#include <deque>
#include <functional>

namespace soporte {

/// Messages that follow a script: each expected one is announced beforehand with its whole title and text; one that
/// nobody expected, or an expected one that never came (see terminar()), fails the running test.
class MensajesGuionados final : public base::Mensajes
{
public:
    void esperarMensaje(const QString &titulo, const QString &texto, base::Icono icono = base::Icono::Critico);
    /// `mientras` is what happens while the question waits, at another station for example.
    void
    esperarPregunta(const QString &titulo, const QString &texto, bool respuesta, std::function<void()> mientras = {});
    void esperarTexto(const QString &titulo, const QString &texto, std::optional<QString> respuesta);
    void esperarClave(const QString &titulo, const QString &texto, std::optional<QString> respuesta);
    void esperarArchivo(const QString &titulo, std::optional<QString> respuesta);
    void esperarDestino(const QString &titulo, std::optional<QString> respuesta);
    void esperarCarpeta(const QString &titulo, std::optional<QString> respuesta);

    /// True when the whole script was used up; otherwise fails the running test. Call in cleanup().
    bool terminar();
    /// What was really said, "title|text", oldest first.
    [[nodiscard]] const QStringList &dichos() const { return m_dichos; }

    void mensaje(const QString &titulo, const QString &texto, base::Icono icono) override;
    bool pregunta(const QString &titulo, const QString &texto, bool porDefecto) override;
    std::optional<QString> pedirTexto(const QString &titulo, const QString &texto, const QString &inicial) override;
    std::optional<QString> pedirClave(const QString &titulo, const QString &texto) override;
    std::optional<QString> elegirArchivo(const QString &titulo, const QString &carpeta, const QString &filtro) override;
    std::optional<QString>
    elegirDestino(const QString &titulo, const QString &propuesto, const QString &filtro) override;
    std::optional<QString> elegirCarpeta(const QString &titulo, const QString &carpeta) override;

private:
    enum class Clase { Mensaje, Pregunta, Texto, Clave, Archivo, Destino, Carpeta };
    struct Paso {
        Clase clase;
        QString titulo;
        QString texto;
        base::Icono icono = base::Icono::Ninguno;
        bool respuesta = false;
        std::optional<QString> valor = {};
        std::function<void()> mientras = {};
    };
    std::optional<Paso> tomar(Clase clase, const QString &titulo, const QString &texto, bool conTexto = true);

    std::deque<Paso> m_guion;
    QStringList m_dichos;
};

} // namespace soporte
