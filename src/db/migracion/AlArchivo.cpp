#include "db/Connection.h"
#include "db/Error.h"
#include "db/engine/Ddl.h"
#include "db/engine/EmbeddedEngine.h"
#include "db/migracion/Trabajo.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

namespace db::migracion {

namespace {

/// "Lock request time out period exceeded".
constexpr int errorEsperaCerrojo = 1222;

/// The file under its unfinished name; gone again unless it got its own.
class Parcial
{
public:
    explicit Parcial(const EmbeddedFile &destino)
        : m_archivo{destino.path + QStringLiteral(".parcial"), destino.password}
    {
        quitar();
        createDatabaseFile(m_archivo.path, m_archivo.password);
        m_conexion = std::make_unique<Connection>(std::make_unique<EmbeddedEngine>(m_archivo.path, m_archivo.password));
        // Thrown away when it is cut off: nothing of it needs to be safe on the disk before the end.
        motor().executeNative("PRAGMA synchronous=OFF", {});
    }
    ~Parcial()
    {
        m_conexion.reset();
        if (!m_terminado)
            quitar();
    }
    Parcial(const Parcial &) = delete;
    Parcial &operator=(const Parcial &) = delete;

    [[nodiscard]] Connection &conexion() { return *m_conexion; }
    [[nodiscard]] EmbeddedEngine &motor() { return static_cast<EmbeddedEngine &>(m_conexion->engine()); }

    /// Hands it to the disk and gives it its name; what has that name now gets the other one.
    void terminar(const QString &nombre, const QString &apartar)
    {
        sqlite3_file *archivo = nullptr;
        int codigo = sqlite3_file_control(motor().handle(), "main", SQLITE_FCNTL_FILE_POINTER, &archivo);
        if (codigo == SQLITE_OK)
            codigo = archivo->pMethods->xSync(archivo, SQLITE_SYNC_FULL);
        if (codigo != SQLITE_OK)
            motor().fail(codigo);
        m_conexion.reset();
        bool apartado = false;
        if (QFileInfo::exists(nombre)) {
            if (apartar.isEmpty() || QFileInfo::exists(apartar) || !QFile::rename(nombre, apartar))
                throw Error(
                    Error::Kind::General,
                    0,
                    QStringLiteral("No se pudo apartar el archivo '%1' que ya existe: ciérrelo en todas las "
                                   "computadoras e intente nuevamente.")
                        .arg(QDir::toNativeSeparators(nombre)));
            apartado = true;
        }
        m_terminado = QFile::rename(m_archivo.path, nombre);
        if (m_terminado)
            return;
        if (apartado)
            QFile::rename(apartar, nombre);
        throw Error(
            Error::Kind::General,
            0,
            QStringLiteral("No se pudo dar su nombre al archivo '%1'.").arg(QDir::toNativeSeparators(nombre)));
    }

private:
    void quitar() const
    {
        QFile::remove(m_archivo.path);
        QFile::remove(m_archivo.path + QStringLiteral("-journal"));
    }

    EmbeddedFile m_archivo;
    std::unique_ptr<Connection> m_conexion;
    bool m_terminado = false;
};

QString insertar(const Dialect &dialecto, const Table &tabla)
{
    QStringList valores;
    for (qsizetype c = 0; c < tabla.columns.size(); ++c)
        valores << QStringLiteral("?");
    return QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
        .arg(dialecto.identifier(tabla.name), listaDeColumnas(dialecto, tabla), valores.join(u','));
}

/// The tables, bare: their indexes are made over the rows.
void crearTablas(const Plano &plano, Connection &destino)
{
    Transaction transaccion(destino);
    for (const TablaPlano &tabla : plano.tablas) {
        Table desnuda = tabla.tabla;
        desnuda.indexes.clear();
        desnuda.search.reset();
        desnuda.counterStart = int(tabla.contador);
        destino.createTable(desnuda);
    }
    transaccion.commit();
}

void crearIndices(const Table &tabla, Connection &destino)
{
    Transaction transaccion(destino);
    auto &motor = static_cast<EmbeddedEngine &>(destino.engine());
    for (const QByteArray &sentencia : ddl::createIndexes(tabla))
        motor.executeNative(sentencia, {});
    destino.prepareSearch(tabla);
    transaccion.commit();
}

void sinApartar(const PedidoAlArchivo &pedido)
{
    if (QFileInfo::exists(pedido.destino.path) && (pedido.apartar.isEmpty() || QFileInfo::exists(pedido.apartar)))
        throw Negado{QStringLiteral("Ya existe el archivo '%1': no se reemplaza.")
                         .arg(QDir::toNativeSeparators(pedido.destino.path))};
}

} // namespace

Desenlace alArchivo(const PedidoAlArchivo &pedido, Seguimiento &seguimiento, const Pasos &pasos)
{
    return concluir([&]() -> Desenlace {
        Trabajo trabajo(seguimiento, pasos);
        trabajo.etapa(QStringLiteral("Conectando con el servidor"));
        sinApartar(pedido);
        const std::unique_ptr<Connection> origen = Connection::open(pedido.cadenaOrigen, pedido.motores);
        if (origen->dialect().kind() != Dialect::Kind::SqlServer)
            throw Negado{QStringLiteral("La base de datos que se quiere copiar no está en un servidor.")};

        trabajo.etapa(QStringLiteral("Leyendo la base de datos"));
        std::optional<Transaction> permiso; // never committed: nothing is written under it
        try {
            origen->execute(QStringLiteral("SET LOCK_TIMEOUT 5000"));
            permiso.emplace(*origen);
            trabajo.setPlano(planoDeServidor(*origen, pedido.esquema, [&](const QString &) {
                trabajo.etapa(QStringLiteral("Leyendo la base de datos"));
            }));
        } catch (const Error &error) {
            if (error.kind() == Error::Kind::Busy || error.number() == errorEsperaCerrojo)
                throw Negado{
                    QStringLiteral("Otra computadora está guardando datos en este momento. Cierre el programa en "
                                   "las demás computadoras e intente nuevamente.")};
            throw;
        }

        trabajo.etapa(QStringLiteral("Creando la base de datos"));
        Parcial nuevo(pedido.destino);
        crearTablas(trabajo.plano(), nuevo.conexion());
        int numero = 0;
        for (const TablaPlano &plano : trabajo.plano().tablas)
            trabajo.copiar(
                ++numero,
                *lectorDeServidor(*origen, plano),
                nuevo.conexion(),
                insertar(nuevo.conexion().dialect(), plano.tabla));
        numero = 0;
        for (const TablaPlano &plano : trabajo.plano().tablas) {
            trabajo.etapa(QStringLiteral("Preparando los índices"), plano.tabla.name, ++numero);
            crearIndices(plano.tabla, nuevo.conexion());
        }
        numero = 0;
        for (const TablaPlano &plano : trabajo.plano().tablas)
            trabajo.comparar(++numero, *lectorDeArchivo(nuevo.motor(), plano, false));

        Desenlace hecho{Desenlace::Tipo::Hecha};
        hecho.tablas = trabajo.comparadas();
        if (!trabajo.iguales()) {
            hecho.tipo = Desenlace::Tipo::NoCoincide;
            hecho.motivo = trabajo.diferencias();
            return hecho;
        }
        trabajo.etapa(QStringLiteral("Terminando"));
        if (QFileInfo::exists(pedido.destino.path))
            hecho.apartado = pedido.apartar;
        nuevo.terminar(pedido.destino.path, pedido.apartar);
        return hecho;
    });
}

} // namespace db::migracion
