#pragma once

#include "db/engine/EmbeddedEngine.h"
#include "support/BaseDePrueba.h"

/// A practice with users: "Juan Pérez" (20) without password, and those that a test adds.
class Usuarios : public soporte::BaseDePrueba
{
public:
    using BaseDePrueba::BaseDePrueba;

    int agregar(const QString &nombre, const QString &clave = {}, bool administrador = false, int prioridad = 0)
    {
        conexion().execute(
            "INSERT INTO [Lista Doctores] (NomDoc,claveusuario,administrador,Prioridad,tipo) VALUES (?,?,?,?,1)",
            {nombre, clave, administrador, prioridad});
        return int(conexion().insertedId());
    }
    [[nodiscard]] QString columna(int id, const QString &nombre)
    {
        return valor("SELECT " + nombre + " FROM [Lista Doctores] WHERE id = ?", {id});
    }
    [[nodiscard]] QString clave(int id) { return columna(id, "claveusuario"); }
    /// From here on the file is one that the system does not let write.
    void cerrarParaEscribir()
    {
        m_cerrada = std::make_unique<db::Connection>(
            std::make_unique<db::EmbeddedEngine>(archivo(), "kestrel428", db::EmbeddedEngine::Opening::ReadOnly));
    }
    db::Connection &conexion() override { return m_cerrada ? *m_cerrada : BaseDePrueba::conexion(); }
    /// "user|window|action", oldest first.
    [[nodiscard]] QStringList historial()
    {
        const db::Rows rows = conexion().query("SELECT iddoctor,ventana,accion FROM [Historial]");
        QStringList todas;
        for (int i = 0; i < rows->rowCount(); ++i)
            todas << QStringList{rows->text(i, 0), rows->text(i, 1), rows->text(i, 2)}.join('|');
        return todas;
    }

private:
    std::unique_ptr<db::Connection> m_cerrada;
};
