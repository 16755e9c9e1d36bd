#pragma once

#include "base/Clock.h"
#include "db/Connection.h"
#include "db/Entorno.h"
#include "support/MensajesGuionados.h"

#include <QTemporaryDir>

namespace soporte {

class ServidorTds;

/// A clock that stands where the test puts it: Sunday 22/11/2026, 09:00, at first.
class RelojFijo final : public base::Clock
{
public:
    [[nodiscard]] QDateTime now() const override { return m_now; }
    void set(const QDateTime &now) { m_now = now; }

private:
    QDateTime m_now{QDate(2026, 11, 22), QTime(9, 0)};
};

/// A practice's database of its own, copied from the template, with the professional "Juan Pérez" (`id` 20) as current
/// user, spoken to in either dialect: the server's through an engine that takes nothing but the server's SQL, or, where
/// ServidorTds::pedido() says so, through the real driver and a server that has that engine behind it.
class BaseDePrueba : public db::Entorno
{
public:
    explicit BaseDePrueba(db::Dialect::Kind dialecto = db::Dialect::Kind::Access);
    ~BaseDePrueba() override;

    MensajesGuionados guion;
    RelojFijo reloj;
    int usuario = 20;
    bool clienteDeRed = false;
    db::AjustesEquipo delEquipo;

    [[nodiscard]] QString archivo() const { return m_carpeta.filePath(QStringLiteral("Datos.mdb")); }
    /// A second connection to the same file, as another station has it; Access dialect.
    [[nodiscard]] std::unique_ptr<db::Connection> otraTerminal() const;
    /// The first cell of a SELECT, as text; a statement of this base's dialect.
    [[nodiscard]] QString valor(const QString &sql, const db::Params &params = {});

    db::Connection &conexion() override { return *m_conexion; }
    base::Mensajes &mensajes() override { return guion; }
    const base::Clock &clock() const override { return reloj; }
    int usuarioActual() const override { return usuario; }
    void setUsuarioActual(int id) override { usuario = id; }
    QString equipo() const override { return QStringLiteral("PC-PRUEBA"); }
    QString carpetaPrograma() const override { return m_carpeta.path(); }
    QString carpetaDatos() const override { return m_carpeta.path(); }
    bool esClienteDeRed() const override { return clienteDeRed; }
    int segundosAgenda() const override { return delEquipo.segundosAgenda; }
    int segundosMensajes() const override { return delEquipo.segundosMensajes; }
    bool modoTurno() const override { return delEquipo.modoTurno; }
    void setAjustesEquipo(const db::AjustesEquipo &ajustes) override { delEquipo = ajustes; }

private:
    QTemporaryDir m_carpeta;
    std::unique_ptr<ServidorTds> m_servidor;
    std::unique_ptr<db::Connection> m_conexion;
};

/// Rows for a test that runs in both dialects: a column "dialecto" with "Access" and "servidor".
void filasDeDialecto();
/// The dialect of the current row; with columns of its own the test adds one named "dialecto" of this type.
[[nodiscard]] db::Dialect::Kind dialectoActual();

/// Path of the template that the build made.
[[nodiscard]] QString plantilla();
/// How the embedded file at `archivo` is described to the database door.
[[nodiscard]] QString cadenaAccess(const QString &archivo);

} // namespace soporte

Q_DECLARE_METATYPE(db::Dialect::Kind)
