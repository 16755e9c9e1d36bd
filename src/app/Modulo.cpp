#include "app/Modulo.h"

#include "agenda/PlantillaInicial.h"
#include "app/Esquema.h"
#include "app/Setup.h"
#include "base/Mensajes.h"
#include "db/Connection.h"
#include "db/Error.h"
#include "db/ProfesionalInicial.h"
#include "db/Upgrade.h"
#include "db/Verificacion.h"
#include "db/odbc/OdbcEngine.h"

#include <QFileInfo>
#include <QSysInfo>

namespace app {

Modulo::Modulo(const QString &carpetaPrograma, base::Mensajes &mensajes, const base::Clock &clock, db::Engines engines)
    : m_carpetaPrograma(carpetaPrograma)
    , m_mensajes(mensajes)
    , m_clock(clock)
    , m_engines(std::move(engines))
    , m_importacion(mensajes, clock)
{
    while (m_carpetaPrograma.size() > 1 && (m_carpetaPrograma.endsWith(u'/') || m_carpetaPrograma.endsWith(u'\\')))
        m_carpetaPrograma.chop(1);
    m_destino = destinoDe({}, m_carpetaPrograma);
}

Modulo::~Modulo() = default;

QString Modulo::archivoRuta() const { return m_carpetaPrograma + QStringLiteral("/ruta.dat"); }

QString Modulo::archivoSetup() const { return m_carpetaPrograma + QStringLiteral("/setup.dat"); }

db::Connection &Modulo::conexion()
{
    if (!m_conexion)
        throw db::Error(db::Error::Kind::Closed, 0, QStringLiteral("No hay una base de datos abierta."));
    return *m_conexion;
}

int Modulo::usuarioActual() const { return Setup::leer(archivoSetup()).usuarioActual; }

void Modulo::setUsuarioActual(int id)
{
    Setup setup = Setup::leer(archivoSetup());
    setup.usuarioActual = id;
    setup.guardar(archivoSetup());
}

QString Modulo::equipo() const
{
    const QString nombre = QSysInfo::machineHostName();
    return nombre.isEmpty() ? QStringLiteral("Desconocido") : nombre;
}

int Modulo::segundosAgenda() const { return Setup::segundos(Setup::leer(archivoSetup()).refrescoAgenda); }

int Modulo::segundosMensajes() const { return Setup::segundos(Setup::leer(archivoSetup()).controlMensajes); }

bool Modulo::modoTurno() const { return Setup::leer(archivoSetup()).modoTurno == 1; }

void Modulo::setAjustesEquipo(const db::AjustesEquipo &ajustes)
{
    Setup setup = Setup::leer(archivoSetup());
    setup.refrescoAgenda = qint16(ajustes.segundosAgenda);
    setup.controlMensajes = qint16(ajustes.segundosMensajes);
    setup.modoTurno = ajustes.modoTurno ? 1 : 0;
    setup.guardar(archivoSetup());
}

void Modulo::leerRuta()
{
    m_ruta = Ruta::leer(archivoRuta());
    m_destino = destinoDe(m_ruta, m_carpetaPrograma);
}

void Modulo::conectar()
{
    desconectar();
    m_conexion = db::Connection::open(m_destino.cadenaConexion(), m_engines);
    m_conectado = m_destino;
}

void Modulo::conectarOConvertir()
{
    try {
        conectar();
    } catch (const db::Error &error) {
        if (error.kind() != db::Error::Kind::OldAccess || !m_importacion.ofrecer(m_destino.archivo))
            throw;
        conectar();
    }
}

void Modulo::desconectar()
{
    m_conexion.reset();
    m_preparada = false;
}

bool Modulo::verificarBase()
{
    m_valida = comprobar();
    if (m_valida && m_iniciada && !m_preparada) {
        try {
            prepararBase();
        } catch (const db::Error &error) {
            db::avisarBaseDaniada(m_mensajes, error);
            m_valida = false;
        }
    }
    return m_valida;
}

bool Modulo::comprobar()
{
    leerRuta();
    if (!m_destino.servidor && !QFileInfo::exists(m_destino.archivo)) {
        db::avisarBaseAusente(m_mensajes);
        return false;
    }
    try {
        if (!m_conexion || m_conexion->moved() || m_destino != m_conectado)
            conectarOConvertir();
    } catch (const db::Error &error) {
        if (error.kind() != db::Error::Kind::OldAccess) // the person has been told and asked
            db::avisarBaseDaniada(m_mensajes, error);
        return false;
    }
    return db::verificarCatalogo(*m_conexion, m_mensajes);
}

bool Modulo::cambiarRuta(const Ruta &ruta)
{
    ruta.guardar(archivoRuta());
    desconectar();
    m_importacion.preguntarDeNuevo();
    const bool lista = verificarBase();
    if (m_alCambiarBase)
        m_alCambiarBase();
    return lista;
}

Hallazgo Modulo::examinarRuta(const Ruta &ruta) const
{
    const Destino destino = destinoDe(ruta, m_carpetaPrograma);
    if (!destino.servidor && !QFileInfo::exists(destino.archivo))
        return {false, QStringLiteral("No está el archivo Datos.mdb en esa carpeta.")};
    try {
        return examinarBase(*db::Connection::open(destino.cadenaConexion(), m_engines));
    } catch (const db::Error &error) {
        return {
            false,
            error.kind() == db::Error::Kind::OldAccess
                ? error.description() + QStringLiteral(" Al guardar, el programa ofrecerá convertirlo.")
                : error.description()};
    }
}

bool Modulo::admiteServidor() const { return m_engines.has(QStringLiteral("SQLOLEDB")) && db::OdbcEngine::available(); }

TrabajoTraslado Modulo::traslado(const PedidoTraslado &pedido) const
{
    const Destino nuevo = destinoDe(pedido.ruta, m_carpetaPrograma);
    if (pedido.clase == PedidoTraslado::Clase::AlArchivo) {
        const db::ConnectionString cadena(nuevo.cadenaConexion());
        const db::migracion::PedidoAlArchivo suyo{
            .cadenaOrigen = m_destino.cadenaConexion(),
            .destino = {nuevo.archivo, cadena.value(u"Jet OLEDB:Database Password")},
            .apartar = pedido.apartar,
            .esquema = esquemaCompleto(),
            .motores = m_engines};
        return [suyo](db::migracion::Seguimiento &seguimiento) { return db::migracion::alArchivo(suyo, seguimiento); };
    }
    Destino origen = m_destino;
    if (pedido.clase == PedidoTraslado::Clase::BaseVacia) {
        origen = {};
        origen.archivo = m_carpetaPrograma + QStringLiteral("/Datos_Vacio.mdb");
    }
    const db::migracion::PedidoAlServidor suyo{
        .cadenaOrigen = origen.cadenaConexion(),
        .datosActuales = pedido.clase == PedidoTraslado::Clase::DatosActuales,
        .servidor = {nuevo.nombreServidor, nuevo.usuarioServidor, nuevo.claveServidor},
        .esquema = esquemaCompleto(),
        .motores = m_engines};
    return [suyo](db::migracion::Seguimiento &seguimiento) { return db::migracion::alServidor(suyo, seguimiento); };
}

void Modulo::prepararBase()
{
    if (m_conexion->readOnly()) {
        m_mensajes.fallar(
            QStringLiteral("Error..."),
            QStringLiteral("La Base de Datos es de sólo lectura: podrá consultarla, pero no guardar cambios. Verifique "
                           "los permisos del archivo Datos.mdb y de su carpeta."));
    } else {
        if (m_destino.servidor) {
            db::actualizarServidor(esquemaCompleto(), *m_conexion, m_mensajes);
        } else {
            desconectar();
            const QString cadena = m_destino.cadenaConexion();
            db::actualizarAccess(
                esquemaPorRutinas(), [this, cadena] { return db::Connection::open(cadena, m_engines); }, m_mensajes);
            conectar();
        }
        if (const auto nuevo = db::asegurarProfesional(*m_conexion, m_mensajes))
            agenda::asegurarPlantillaInicial(*m_conexion, *nuevo);
    }
    m_preparada = true;
    m_importacion.registrar(*this);
}

} // namespace app
