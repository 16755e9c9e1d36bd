#include "db/Connection.h"
#include "db/Error.h"
#include "db/Upgrade.h"
#include "db/engine/EmbeddedEngine.h"
#include "db/migracion/Sentencias.h"
#include "db/migracion/Trabajo.h"

#include <algorithm>

namespace db::migracion {

namespace {

const QString catalogo = QStringLiteral("Datos");
const QString intercalacion = QStringLiteral("Modern_Spanish_CI_AS");
/// "Database 'Datos' already exists", for whoever may not see it in the list.
constexpr int errorYaExiste = 1801;

/// The failure in words that hold no password, whatever the driver says.
[[noreturn]] void relanzar(const Error &error, const Servidor &servidor, const QString &principio)
{
    QString texto = error.description();
    if (!servidor.clave.isEmpty())
        texto.replace(servidor.clave, QStringLiteral("***"));
    throw Error(error.kind(), error.number(), principio + texto);
}

QString yaExiste(const Servidor &servidor)
{
    return QStringLiteral(
               "En el servidor '%1' ya existe una base de datos 'Datos': no se copió nada, para no mezclar ni "
               "pisar lo que contiene.\n\nSi es de este programa, elija el servidor en la ventana 'Red' y "
               "presione Guardar. Si quedó de una copia que se cortó, pida a quien administra el servidor "
               "que la elimine.")
        .arg(servidor.nombre);
}

/// The server's `master` database, opened for one errand at a time.
class Maestra
{
public:
    Maestra(const PedidoAlServidor &pedido)
        : m_servidor(pedido.servidor)
        , m_conexion(abrir(pedido))
    {
    }

    void controlar()
    {
        const Rows filas = m_conexion->query(
            QStringLiteral("SELECT name FROM sys.databases WHERE name = ") + m_conexion->dialect().text(catalogo));
        if (filas->rowCount() > 0)
            throw Negado{yaExiste(m_servidor)};
    }

    void crear()
    {
        try {
            m_conexion->execute(QStringLiteral("CREATE DATABASE Datos"));
        } catch (const Error &error) {
            if (error.number() == errorYaExiste)
                throw Negado{yaExiste(m_servidor)};
            relanzar(
                error,
                m_servidor,
                QStringLiteral(
                    "El servidor no pudo crear la base de datos 'Datos'. Verifique que el usuario '%1' tenga "
                    "permiso para crear bases de datos.\n\n")
                    .arg(m_servidor.usuario));
        }
    }

    /// What the practice's base is better off with than what the server gives to every new one. Not without it, but
    /// less well: whoever looks at a list waits for whoever saves, the log grows until the disk is full unless somebody
    /// copies it, and the free edition closes the base whenever nobody is in it.
    void ajustar()
    {
        for (const char *ajuste :
             {"AUTO_CLOSE OFF", "RECOVERY SIMPLE", "READ_COMMITTED_SNAPSHOT ON WITH ROLLBACK IMMEDIATE"}) {
            try {
                m_conexion->execute(QStringLiteral("ALTER DATABASE Datos SET ") + QLatin1String(ajuste));
            } catch (const Error &error) {
                if (error.kind() == Error::Kind::Lost)
                    relanzar(error, m_servidor, {});
            }
        }
    }

    /// Lists and searches expect that letter case does not matter and accents do; the server may have been installed
    /// otherwise, and the base takes after it. It can be changed as long as the base is empty.
    void intercalar(QStringList &avisos)
    {
        // A base that nobody has open may tell nothing of itself; it takes after its server.
        const QString propia
            = m_conexion
                  ->query(QStringLiteral("SELECT isnull(CONVERT(nvarchar(128),DATABASEPROPERTYEX('Datos','Collation')),"
                                         "CONVERT(nvarchar(128),SERVERPROPERTY('Collation')))"))
                  ->text(0, 0);
        if (propia.contains(QLatin1String("Spanish"), Qt::CaseInsensitive) && sirve(propia))
            return;
        try {
            m_conexion->execute(QStringLiteral("ALTER DATABASE Datos COLLATE ") + intercalacion);
        } catch (const Error &error) {
            if (!sirve(propia))
                relanzar(
                    error,
                    m_servidor,
                    QStringLiteral(
                        "El servidor ordena los textos de un modo que el programa no admite (%1) y no permitió "
                        "cambiarlo.\n\n")
                        .arg(propia));
            avisos << QStringLiteral("El servidor ordena los textos con '%1': la Ñ puede aparecer mezclada con la N.")
                          .arg(propia);
        }
    }

    void eliminar()
    {
        try {
            m_conexion->execute(QStringLiteral("ALTER DATABASE Datos SET SINGLE_USER WITH ROLLBACK IMMEDIATE"));
        } catch (const Error &) {
            // Only in the way when somebody looked in.
        }
        m_conexion->execute(QStringLiteral("DROP DATABASE Datos"));
    }

private:
    static bool sirve(const QString &propia) { return propia.contains(QLatin1String("_CI_AS"), Qt::CaseInsensitive); }
    static std::unique_ptr<Connection> abrir(const PedidoAlServidor &pedido)
    {
        if (!pedido.motores.has(QStringLiteral("SQLOLEDB")))
            throw Negado{QStringLiteral("Esta versión del programa todavía no se conecta a SQL Server.")};
        try {
            return Connection::open(pedido.servidor.cadena(QStringLiteral("master")), pedido.motores);
        } catch (const Error &error) {
            relanzar(
                error,
                pedido.servidor,
                QStringLiteral("No se pudo entrar al servidor '%1' con el usuario '%2'.\n\n")
                    .arg(pedido.servidor.nombre, pedido.servidor.usuario));
        }
    }

    const Servidor &m_servidor;
    std::unique_ptr<Connection> m_conexion;
};

/// The base that this run has made: gone again unless the run came to its end.
class BaseNueva
{
public:
    explicit BaseNueva(const PedidoAlServidor &pedido)
        : m_pedido(pedido)
    {
    }
    ~BaseNueva() { (void)deshacer(); }
    BaseNueva(const BaseNueva &) = delete;
    BaseNueva &operator=(const BaseNueva &) = delete;

    void crear(QStringList &avisos)
    {
        Maestra maestra(m_pedido);
        maestra.crear();
        m_hecha = true;
        maestra.ajustar();
        maestra.intercalar(avisos);
    }
    Connection &abrir()
    {
        m_conexion = Connection::open(m_pedido.servidor.cadena(catalogo), m_pedido.motores);
        return *m_conexion;
    }
    void conservar() { m_hecha = false; }
    /// Removes it; yields what the person has to know when the server does not let it.
    [[nodiscard]] QString deshacer()
    {
        m_conexion.reset();
        if (!m_hecha)
            return {};
        m_hecha = false;
        try {
            Maestra(m_pedido).eliminar();
            return {};
        } catch (const Error &) {
            return QStringLiteral("\n\nNo se pudo eliminar del servidor la base de datos 'Datos', que quedó a medio "
                                  "hacer: pida a quien administra el servidor que la elimine antes de intentar "
                                  "nuevamente.");
        }
    }

private:
    const PedidoAlServidor &m_pedido;
    std::unique_ptr<Connection> m_conexion;
    bool m_hecha = false;
};

/// Only listens: the upgrade's words are for the person, and she is not in this thread.
class Oyente final : public base::Mensajes
{
public:
    explicit Oyente(QStringList &oido)
        : m_oido(oido)
    {
    }
    void mensaje(const QString &, const QString &texto, base::Icono) override { m_oido << texto; }
    bool pregunta(const QString &, const QString &, bool) override { return false; }
    std::optional<QString> pedirTexto(const QString &, const QString &, const QString &) override { return {}; }
    std::optional<QString> pedirClave(const QString &, const QString &) override { return {}; }
    std::optional<QString> elegirArchivo(const QString &, const QString &, const QString &) override { return {}; }
    std::optional<QString> elegirDestino(const QString &, const QString &, const QString &) override { return {}; }
    std::optional<QString> elegirCarpeta(const QString &, const QString &) override { return {}; }

private:
    QStringList &m_oido;
};

void limitarFechas(Connection &origen)
{
    Transaction transaccion(origen);
    for (const FechaLimitada &fecha : fechasLimitadas()) {
        const QVector<Column> columnas = origen.columns(fecha.tabla);
        const bool esta = std::any_of(columnas.begin(), columnas.end(), [&](const Column &columna) {
            return columna.name.compare(fecha.columna, Qt::CaseInsensitive) == 0;
        });
        if (esta) // an old database need not have it yet
            origen.execute(fecha.sentencia());
    }
    transaccion.commit();
}

/// The embedded source, held against writing.
class Origen
{
public:
    explicit Origen(const PedidoAlServidor &pedido)
        : m_conexion(Connection::open(pedido.cadenaOrigen, pedido.motores))
        , m_motor(dynamic_cast<EmbeddedEngine *>(&m_conexion->engine()))
    {
        if (!m_motor)
            throw Negado{QStringLiteral("La base de datos que se quiere copiar ya está en un servidor.")};
        if (!pedido.datosActuales) {
            m_motor->executeNative("BEGIN", {}); // nobody writes to the template
            return;
        }
        try {
            const ShortWait breve(*m_conexion, 2000);
            limitarFechas(*m_conexion);
            m_permiso.emplace(*m_conexion);
        } catch (const Error &error) {
            if (error.kind() == Error::Kind::Busy)
                throw Negado{
                    QStringLiteral("Otra computadora está guardando datos en este momento. Cierre el programa en "
                                   "las demás computadoras e intente nuevamente.")};
            throw;
        }
    }

    [[nodiscard]] EmbeddedEngine &motor() { return *m_motor; }

private:
    std::unique_ptr<Connection> m_conexion;
    EmbeddedEngine *m_motor;
    std::optional<Transaction> m_permiso; ///< never committed: nothing is written under it
};

void copiarTablas(Trabajo &trabajo, EmbeddedEngine &origen, Connection &destino)
{
    int numero = 0;
    for (const TablaPlano &plano : trabajo.plano().tablas) {
        destino.execute(crearTabla(plano));
        const QString citada = destino.dialect().identifier(plano.tabla.name);
        const bool cuenta = !plano.columnaContador().isEmpty() && plano.filas > 0;
        if (cuenta)
            destino.execute(QStringLiteral("SET IDENTITY_INSERT %1 ON").arg(citada));
        trabajo.copiar(++numero, *lectorDeArchivo(origen, plano, true), destino, insertar(plano));
        if (!cuenta)
            continue;
        destino.execute(QStringLiteral("SET IDENTITY_INSERT %1 OFF").arg(citada));
        // Numbers of rows that were removed are not given again.
        destino.execute(QStringLiteral("DBCC CHECKIDENT ('%1', RESEED, %2)")
                            .arg(QString(citada).replace(u'\'', QLatin1String("''")))
                            .arg(plano.contador));
    }
}

void completarTablas(Trabajo &trabajo, Connection &destino, QStringList &avisos)
{
    int numero = 0, deValor = 0;
    for (const TablaPlano &plano : trabajo.plano().tablas) {
        trabajo.etapa(QStringLiteral("Preparando los índices"), plano.tabla.name, ++numero);
        for (const QString &sentencia : valoresIniciales(plano.tabla, deValor))
            destino.execute(sentencia);
        for (const Clave &clave : claves(plano)) {
            try {
                destino.execute(clave.sentencia);
            } catch (const Error &error) {
                if (clave.alternativa.isEmpty() || error.kind() == Error::Kind::Lost)
                    throw;
                destino.execute(clave.alternativa);
                avisos << QStringLiteral("Tabla '%1': hay registros con el mismo valor donde no debería haberlos; su "
                                         "índice se creó sin exigirlo.")
                              .arg(plano.tabla.name);
            }
        }
    }
}

} // namespace

Desenlace alServidor(const PedidoAlServidor &pedido, Seguimiento &seguimiento, const Pasos &pasos)
{
    return concluir([&]() -> Desenlace {
        Trabajo trabajo(seguimiento, pasos);
        trabajo.etapa(QStringLiteral("Conectando con el servidor"));
        Maestra(pedido).controlar();

        trabajo.etapa(QStringLiteral("Leyendo la base de datos"));
        Origen origen(pedido);
        trabajo.setPlano(planoDeArchivo(
            origen.motor(), [&](const QString &) { trabajo.etapa(QStringLiteral("Leyendo la base de datos")); }));

        Desenlace hecho{Desenlace::Tipo::Hecha};
        hecho.avisos = trabajo.plano().avisos;
        BaseNueva nueva(pedido);
        try {
            trabajo.etapa(QStringLiteral("Creando la base de datos"));
            nueva.crear(hecho.avisos);
            Connection &destino = nueva.abrir();
            copiarTablas(trabajo, origen.motor(), destino);
            completarTablas(trabajo, destino, hecho.avisos);
            int numero = 0;
            for (const TablaPlano &plano : trabajo.plano().tablas)
                trabajo.comparar(++numero, *lectorDeServidor(destino, plano));
            hecho.tablas = trabajo.comparadas();
            if (trabajo.iguales()) {
                trabajo.etapa(QStringLiteral("Terminando"));
                Oyente oyente(hecho.mensajes);
                actualizarServidor(pedido.esquema, destino, oyente);
                nueva.conservar();
                return hecho;
            }
        } catch (const Cancelado &) {
            return {Desenlace::Tipo::Cancelada, nueva.deshacer().trimmed()};
        } catch (const Error &error) {
            const QString resto = nueva.deshacer();
            relanzar(Error(error.kind(), error.number(), error.description() + resto), pedido.servidor, {});
        }
        hecho.tipo = Desenlace::Tipo::NoCoincide;
        hecho.motivo = trabajo.diferencias() + nueva.deshacer();
        return hecho;
    });
}

} // namespace db::migracion
