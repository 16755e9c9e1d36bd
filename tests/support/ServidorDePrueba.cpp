#include "support/ServidorDePrueba.h"

#include "db/Error.h"
#include "support/ServerTestEngine.h"

#include <QFile>

namespace soporte {

namespace {

const QString claveDeArchivo = QStringLiteral("kestrel428");

class Motor final : public ServerTestEngine
{
public:
    Motor(ServidorDePrueba &servidor, const QString &base)
        : ServerTestEngine(servidor.archivo(base), claveDeArchivo)
        , m_servidor(servidor)
    {
        executeNative("PRAGMA synchronous=OFF", {});
    }

    db::Rows query(const QString &sql, const db::Params &params) override
    {
        m_servidor.anotar(sql);
        return ServerTestEngine::query(sql, params);
    }
    int execute(const QString &sql, const db::Params &params) override
    {
        m_servidor.anotar(sql);
        return ServerTestEngine::execute(sql, params);
    }
    int executeBatch(const QString &sql, const std::vector<db::Params> &rows) override
    {
        m_servidor.anotar(sql);
        return ServerTestEngine::executeBatch(sql, rows);
    }

private:
    ServidorDePrueba &m_servidor;
};

} // namespace

ServidorDePrueba::ServidorDePrueba() { db::createDatabaseFile(archivo(QStringLiteral("master")), claveDeArchivo); }

db::Engines ServidorDePrueba::motores()
{
    // The first one of a provider counts.
    db::Engines motores;
    motores.add(QStringLiteral("SQLOLEDB"), [this](const db::ConnectionString &texto) -> std::unique_ptr<db::Engine> {
        const auto uno = [&](QStringView nombre1, QStringView nombre2) {
            const QString valor = texto.value(nombre1);
            return valor.isEmpty() ? texto.value(nombre2) : valor;
        };
        if (texto.value(u"Data Source") != QLatin1String(nombre))
            throw db::Error(
                db::Error::Kind::CannotOpen, 53, QStringLiteral("El servidor no responde o no se encuentra."));
        // A driver that tells more than it should.
        if (uno(u"UID", u"User Id") != QLatin1String(usuario) || uno(u"PWD", u"Password") != QLatin1String(clave))
            throw db::Error(
                db::Error::Kind::CannotOpen,
                18456,
                QStringLiteral("Login failed for user with password '%1'.").arg(uno(u"PWD", u"Password")));
        const QString base = texto.value(u"Initial Catalog");
        if (!tiene(base))
            throw db::Error(db::Error::Kind::CannotOpen, 4060, QStringLiteral("No existe la base de datos."));
        return std::make_unique<Motor>(*this, base);
    });
    motores.add(QStringLiteral("Microsoft.Jet.OLEDB.4.0"), [](const db::ConnectionString &texto) {
        return std::make_unique<db::EmbeddedEngine>(
            texto.value(u"Data Source"), texto.value(u"Jet OLEDB:Database Password"));
    });
    return motores;
}

QString ServidorDePrueba::cadena() const
{
    return QStringLiteral("Provider=SQLOLEDB; Initial Catalog=Datos; Data Source=%1; User Id=%2; Password=%3")
        .arg(QLatin1String(nombre), QLatin1String(usuario), QLatin1String(clave));
}

bool ServidorDePrueba::tiene(const QString &base) const { return QFile::exists(archivo(base)); }

void ServidorDePrueba::setIntercalacion(const QString &suNombre)
{
    QFile file(m_carpeta.filePath(QStringLiteral("master.intercalacion")));
    if (!file.open(QFile::WriteOnly) || file.write(suNombre.toUtf8()) < 0)
        qFatal("no server");
}

QString ServidorDePrueba::intercalacion(const QString &base) const
{
    QFile file(m_carpeta.filePath(base.toLower() + QStringLiteral(".intercalacion")));
    return file.open(QFile::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QStringList ServidorDePrueba::sentencias() const
{
    const QMutexLocker cerrado(&m_candado);
    return m_sentencias;
}

void ServidorDePrueba::olvidar()
{
    const QMutexLocker cerrado(&m_candado);
    m_sentencias.clear();
}

void ServidorDePrueba::anotar(const QString &sentencia)
{
    {
        const QMutexLocker cerrado(&m_candado);
        m_sentencias << sentencia;
    }
    if (antes)
        antes(sentencia);
}

} // namespace soporte
