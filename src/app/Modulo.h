#pragma once

#include "app/ImportacionAccess.h"
#include "app/Red.h"
#include "db/Engine.h"
#include "db/Entorno.h"

#include <memory>

namespace db {
class Connection;
}

namespace app {

/// The state that all windows share: one instance, made in main() and handed down by reference. Reads the settings
/// files of its program folder and owns the one shared connection.
class Modulo final : public db::Entorno, public CambioDeRuta
{
public:
    static constexpr auto version = "1.60.8";

    Modulo(const QString &carpetaPrograma, base::Mensajes &mensajes, const base::Clock &clock, db::Engines engines);
    ~Modulo() override;

    // db::Entorno
    [[nodiscard]] db::Connection &conexion() override;
    [[nodiscard]] base::Mensajes &mensajes() override { return m_mensajes; }
    [[nodiscard]] const base::Clock &clock() const override { return m_clock; }
    [[nodiscard]] int usuarioActual() const override;
    void setUsuarioActual(int id) override;
    [[nodiscard]] QString equipo() const override;
    [[nodiscard]] QString carpetaPrograma() const override { return m_carpetaPrograma; }
    [[nodiscard]] QString carpetaDatos() const override { return m_destino.carpetaDatos; }
    [[nodiscard]] bool esClienteDeRed() const override { return m_ruta.otraCarpeta; }
    [[nodiscard]] int segundosAgenda() const override;
    [[nodiscard]] int segundosMensajes() const override;
    [[nodiscard]] bool modoTurno() const override;
    void setAjustesEquipo(const db::AjustesEquipo &ajustes) override;

    // Comprobador
    /// Reads ruta.dat again, looks for the file, opens the connection again where there is none or its file was
    /// replaced, and probes the catalogue. Offers to convert an Access database of an older version. A database that
    /// comes back while the program runs is upgraded before it counts as ready.
    [[nodiscard]] bool verificarBase() override;
    [[nodiscard]] bool baseLista() const override { return m_valida && m_preparada; }

    // CambioDeRuta
    [[nodiscard]] Ruta rutaGuardada() const override { return Ruta::leer(archivoRuta()); }
    [[nodiscard]] bool cambiarRuta(const Ruta &ruta) override;
    [[nodiscard]] Hallazgo examinarRuta(const Ruta &ruta) const override;
    [[nodiscard]] bool admiteServidor() const override;
    [[nodiscard]] TrabajoTraslado traslado(const PedidoTraslado &pedido) const override;
    /// Told after cambiarRuta(), whatever came of it.
    void setAlCambiarBase(std::function<void()> aviso) { m_alCambiarBase = std::move(aviso); }

    /// What shows how far the conversion of an old Access database is; without it nothing is shown.
    void setAvanceImportacion(ImportacionAccess::HacerAvance hacer) { m_importacion.setAvance(std::move(hacer)); }
    void setFuenteImportacion(db::access::AbrirFuente abrir) { m_importacion.setFuente(std::move(abrir)); }

    /// Where the database is, as ruta.dat said when it was last read.
    [[nodiscard]] const Destino &destino() const { return m_destino; }
    void leerRuta();

    /// Opens the shared connection to destino(); throws db::Error.
    void conectar();
    void desconectar();
    /// Upgrade and default professional on a valid database, with the person told what was done; throws db::Error.
    void prepararBase();

    [[nodiscard]] QString archivoRuta() const;
    [[nodiscard]] QString archivoSetup() const;

private:
    [[nodiscard]] bool comprobar();
    void conectarOConvertir();

    QString m_carpetaPrograma;
    base::Mensajes &m_mensajes;
    const base::Clock &m_clock;
    db::Engines m_engines;
    Ruta m_ruta;
    Destino m_destino;
    Destino m_conectado; ///< what the open connection leads to
    std::unique_ptr<db::Connection> m_conexion;
    ImportacionAccess m_importacion;
    std::function<void()> m_alCambiarBase;
    bool m_valida = false;
    bool m_preparada = false;
    bool m_iniciada = false; ///< start-up has prepared a database, or given up: from then on a check prepares by itself

    friend class Arranque;
};

} // namespace app
