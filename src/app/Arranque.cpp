#include "app/Arranque.h"

#include "app/Modulo.h"
#include "app/Setup.h"
#include "db/Config.h"
#include "db/Connection.h"
#include "db/Error.h"
#include "db/Verificacion.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>

namespace app {

Arranque::Arranque(Modulo &modulo, Lanzador lanzador)
    : m_modulo(modulo)
    , m_lanzador(std::move(lanzador))
{
}

void Arranque::lanzar(const QString &programa)
{
    if (QFileInfo::exists(programa))
        QProcess::startDetached(programa, {}, QFileInfo(programa).path());
}

void Arranque::crearSetup()
{
    if (QFileInfo::exists(m_modulo.archivoSetup()))
        return;
    try {
        Setup().guardar(m_modulo.archivoSetup());
    } catch (const db::Error &) {
        // Every reader takes the defaults when there is no file.
    }
}

void Arranque::copiarPlantilla()
{
    const QString carpeta = m_modulo.carpetaPrograma();
    const QString datos = carpeta + QStringLiteral("/Datos.mdb");
    const QString plantilla = carpeta + QStringLiteral("/Datos_Vacio.mdb");
    if (QFileInfo::exists(datos) || !QFileInfo::exists(plantilla))
        return;
    // Copied beside and renamed: a computer switched off half way leaves no half database in place.
    const QString nuevo = datos + QStringLiteral(".nuevo");
    QFile::remove(nuevo);
    if (!QFile::copy(plantilla, nuevo))
        return;
    QFile::setPermissions(nuevo, QFile::permissions(nuevo) | QFile::ReadOwner | QFile::WriteOwner);
    QFile::rename(nuevo, datos);
}

void Arranque::lanzarCompaniero()
{
    // Only the computer that is not a network client serves the web agenda.
    if (m_modulo.esClienteDeRed())
        return;
    const db::Rows rows = m_modulo.conexion().query(
        QStringLiteral("SELECT id FROM [Lista Doctores] WHERE tipo = 0 and moduloweb <> 0"));
    if (rows->rowCount() > 0)
        m_lanzador(m_modulo.carpetaPrograma() + QStringLiteral("/Turnex.exe"));
}

Arranque::Destino Arranque::iniciar()
{
    crearSetup();
    copiarPlantilla();
    m_modulo.leerRuta();
    try {
        m_modulo.conectar();
    } catch (const db::Error &) {
        // The check says what is wrong.
    }
    const bool valida = m_modulo.verificarBase();
    m_modulo.m_iniciada = true;
    if (!valida)
        return Destino::Sistema;
    try {
        m_modulo.prepararBase();
        lanzarCompaniero();
        return db::Config(m_modulo.conexion()).bandera(u"selecusuario") ? Destino::Acceso : Destino::Sistema;
    } catch (const db::Error &error) {
        db::avisarBaseDaniada(m_modulo.mensajes(), error);
        m_modulo.m_valida = false;
        return Destino::Sistema;
    }
}

} // namespace app
