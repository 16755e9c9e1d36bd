#include "support/BaseDePrueba.h"

#include "support/ServerTestEngine.h"
#include "support/ServidorTds.h"

#include <QFile>
#include <QtTest>

namespace soporte {

QString plantilla() { return QStringLiteral(VASTELO_PLANTILLA); }

QString cadenaAccess(const QString &archivo)
{
    return QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0; Jet OLEDB:Database Password=kestrel428;Data Source=")
        + archivo;
}

BaseDePrueba::BaseDePrueba(db::Dialect::Kind dialecto)
{
    if (!QFile::copy(plantilla(), archivo()))
        qFatal("no template at %s", VASTELO_PLANTILLA);
    QFile::setPermissions(archivo(), QFile::ReadOwner | QFile::WriteOwner);
    if (dialecto == db::Dialect::Kind::Access)
        m_conexion = db::Connection::open(cadenaAccess(archivo()), db::Engines::standard());
    else if (ServidorTds::pedido()) {
        m_servidor = std::make_unique<ServidorTds>(m_carpeta.path());
        m_conexion = db::Connection::open(m_servidor->cadena(), db::Engines::standard());
    } else
        m_conexion = std::make_unique<db::Connection>(
            std::make_unique<ServerTestEngine>(archivo(), QStringLiteral("kestrel428")));
    m_conexion->execute(
        QStringLiteral("INSERT INTO [Lista Doctores] (NomDoc,tipo) VALUES (?,0)"), {QStringLiteral("Juan Pérez")});
    usuario = int(m_conexion->insertedId());
}

BaseDePrueba::~BaseDePrueba() = default;

std::unique_ptr<db::Connection> BaseDePrueba::otraTerminal() const
{
    return db::Connection::open(cadenaAccess(archivo()), db::Engines::standard());
}

QString BaseDePrueba::valor(const QString &sql, const db::Params &params)
{
    const db::Rows rows = m_conexion->query(sql, params);
    return rows->rowCount() > 0 ? rows->text(0, 0) : QString();
}

void filasDeDialecto()
{
    QTest::addColumn<db::Dialect::Kind>("dialecto");
    QTest::newRow("Access") << db::Dialect::Kind::Access;
    QTest::newRow("servidor") << db::Dialect::Kind::SqlServer;
}

db::Dialect::Kind dialectoActual()
{
    return *static_cast<db::Dialect::Kind *>(QTest::qData("dialecto", qMetaTypeId<db::Dialect::Kind>()));
}

} // namespace soporte
