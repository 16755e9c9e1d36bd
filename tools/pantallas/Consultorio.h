#pragma once

#include "app/Red.h"
#include "base/Clock.h"
#include "base/Mensajes.h"
#include "db/Entorno.h"

#include <QStringList>
#include <QTemporaryDir>

#include <memory>

namespace pantallas {

/// Always the same moment: Tuesday 24/11/2026, 11:05.
class RelojDetenido final : public base::Clock
{
public:
    [[nodiscard]] QDateTime now() const override { return {QDate(2026, 11, 24), QTime(11, 5)}; }
};

/// Answers nothing: writes what is said to the error output and remembers it, as a window that speaks when nobody asked
/// is not the window that was to be shown.
class MensajesEscritos final : public base::Mensajes
{
public:
    [[nodiscard]] const QStringList &dichos() const { return m_dichos; }

    void mensaje(const QString &titulo, const QString &texto, base::Icono icono) override;
    bool pregunta(const QString &titulo, const QString &texto, bool porDefecto) override;
    /// Whoever pressed the button goes on: the picture is of what follows.
    bool confirmar(const QString &, const QString &) override { return true; }
    std::optional<QString> pedirTexto(const QString &titulo, const QString &texto, const QString &inicial) override;
    std::optional<QString> pedirClave(const QString &titulo, const QString &texto) override;
    std::optional<QString> elegirArchivo(const QString &titulo, const QString &carpeta, const QString &filtro) override;
    std::optional<QString>
    elegirDestino(const QString &titulo, const QString &propuesto, const QString &filtro) override;
    std::optional<QString> elegirCarpeta(const QString &titulo, const QString &carpeta) override;

private:
    void decir(const QString &titulo, const QString &texto);

    QStringList m_dichos;
};

/// The made-up practice that the pictures show, in a folder of its own that goes with it; equal in every run and on
/// every computer. Throws db::Error.
class Consultorio final : public db::Entorno, public app::CambioDeRuta
{
public:
    Consultorio();
    ~Consultorio() override;

    /// What speaks instead of `escritos`, for the picture of a message; null for that one again.
    void setMensajes(base::Mensajes *mensajes) { m_mensajes = mensajes ? mensajes : &escritos; }

    MensajesEscritos escritos;
    bool hayBase = true; ///< whether the windows are told that there is one

    db::Connection &conexion() override { return *m_conexion; }
    base::Mensajes &mensajes() override { return *m_mensajes; }
    const base::Clock &clock() const override { return m_reloj; }
    int usuarioActual() const override { return m_usuario; }
    void setUsuarioActual(int id) override { m_usuario = id; }
    QString equipo() const override { return QStringLiteral("RECEPCION"); }
    QString carpetaPrograma() const override { return m_carpeta.path(); }
    /// Where a practice might have it, as the status bar shows it.
    QString carpetaDatos() const override { return QStringLiteral("/home/consultorio/Vastelo"); }
    bool esClienteDeRed() const override { return false; }
    // As on a new computer, and longer than a picture takes: nothing may load again meanwhile.
    int segundosAgenda() const override { return 30; }
    int segundosMensajes() const override { return 30; }
    bool modoTurno() const override { return false; }
    void setAjustesEquipo(const db::AjustesEquipo &) override { }

    /// Tells, as the program does, when there is no database.
    bool verificarBase() override;
    bool baseLista() const override { return hayBase; }

    /// A station whose database lies in the practice's server.
    app::Ruta rutaGuardada() const override;
    bool cambiarRuta(const app::Ruta &) override { return hayBase; }
    app::Hallazgo examinarRuta(const app::Ruta &) const override;
    bool admiteServidor() const override { return true; }
    /// Half way, until it is cancelled.
    app::TrabajoTraslado traslado(const app::PedidoTraslado &) const override;

private:
    void prepararDia();

    QTemporaryDir m_carpeta;
    RelojDetenido m_reloj;
    base::Mensajes *m_mensajes = &escritos;
    std::unique_ptr<db::Connection> m_conexion;
    int m_usuario = 0;
};

} // namespace pantallas
