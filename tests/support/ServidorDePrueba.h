#pragma once

#include "db/Engine.h"

#include <QMutex>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>

namespace soporte {

/// A whole server for tests: a folder of databases behind the provider "SQLOLEDB", each spoken to through a
/// ServerTestEngine. Connections may be made in any thread, one at a time.
class ServidorDePrueba
{
public:
    ServidorDePrueba();

    static constexpr auto nombre = "SERVIDOR\\CONSULTORIO";
    static constexpr auto usuario = "sa";
    static constexpr auto clave = "s3creta";

    /// The program's engines and this server's.
    [[nodiscard]] db::Engines motores();
    /// "Provider=SQLOLEDB; Initial Catalog=Datos; ..." as the program connects to it.
    [[nodiscard]] QString cadena() const;
    [[nodiscard]] bool tiene(const QString &base) const;
    [[nodiscard]] QString archivo(const QString &base) const
    {
        return m_carpeta.filePath(base + QStringLiteral(".mdb"));
    }
    void setIntercalacion(const QString &nombre);
    [[nodiscard]] QString intercalacion(const QString &base) const;

    /// Everything it was told, oldest first; a statement for many rows once.
    [[nodiscard]] QStringList sentencias() const;
    void olvidar();
    /// Called before each statement is carried out, with its text; what it throws, the server answers.
    std::function<void(const QString &sentencia)> antes = {};

    void anotar(const QString &sentencia);

private:
    QTemporaryDir m_carpeta;
    mutable QMutex m_candado;
    QStringList m_sentencias;
};

} // namespace soporte
