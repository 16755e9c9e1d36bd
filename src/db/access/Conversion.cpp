#include "db/access/Conversion.h"

#include "base/Mensajes.h"
#include "db/Connection.h"
#include "db/Error.h"
#include "db/HorariosViejos.h"
#include "db/Upgrade.h"
#include "db/access/Carga.h"
#include "db/access/Reemplazo.h"
#include "db/engine/Ddl.h"
#include "db/engine/EmbeddedEngine.h"
#include "db/engine/OnlineCopy.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>
#include <QStorageInfo>

#include <sqlite3.h>

namespace db::access {

namespace {

const QString tablaDoctores = QStringLiteral("Lista Doctores");

/// The person wants no more of it.
struct Cancelacion {
};

[[noreturn]] void fallar(const QString &motivo) { throw Error(Error::Kind::General, 0, motivo); }

/// Nothing that the upgrade says is news here: the report tells the whole.
class Mudo final : public base::Mensajes
{
public:
    void mensaje(const QString &, const QString &, base::Icono) override { }
    bool pregunta(const QString &, const QString &, bool) override { return false; }
    std::optional<QString> pedirTexto(const QString &, const QString &, const QString &) override { return {}; }
    std::optional<QString> pedirClave(const QString &, const QString &) override { return {}; }
    std::optional<QString> elegirArchivo(const QString &, const QString &, const QString &) override { return {}; }
    std::optional<QString> elegirDestino(const QString &, const QString &, const QString &) override { return {}; }
    std::optional<QString> elegirCarpeta(const QString &, const QString &) override { return {}; }
};

/// The unfinished new file: goes with this, unless it has taken its place.
class Provisorio
{
public:
    explicit Provisorio(const QString &archivo)
        : m_archivo(archivo)
    {
        borrar();
    }
    ~Provisorio() { borrar(); }
    Provisorio(const Provisorio &) = delete;
    Provisorio &operator=(const Provisorio &) = delete;

    [[nodiscard]] const QString &archivo() const { return m_archivo; }

private:
    void borrar() const
    {
        QFile::remove(m_archivo);
        QFile::remove(m_archivo + QStringLiteral("-journal"));
    }
    QString m_archivo;
};

class Conversion
{
public:
    Conversion(const Pedido &pedido, Seguimiento &seguimiento)
        : m_pedido(pedido)
        , m_seguimiento(seguimiento)
        , m_info(pedido.archivo)
    {
        for (const Schema &rutina : pedido.rutinas)
            m_schema += rutina;
    }

    Informe hacer();

private:
    void controlarLugar() const;
    void controlarUso() const;
    [[nodiscard]] Plan planear();
    void crearTablas(EmbeddedEngine &motor, const Plan &plan) const;
    void cargar(const QString &archivo, Plan &plan);
    void actualizar(const QString &archivo);
    void indexar(EmbeddedEngine &motor, Plan &plan);
    void probar(EmbeddedEngine &motor, const Plan &plan) const;
    void probarHorarios(EmbeddedEngine &motor, const TablaDelPlan &doctores, const QVector<int> &quitadas) const;
    void informar(const Plan &plan);
    void avanzar(const QString &que, qint64 hechas = 0, qint64 total = 0) const
    {
        if (!m_seguimiento.avanzar(que, hechas, total))
            throw Cancelacion();
    }

    const Pedido &m_pedido;
    Seguimiento &m_seguimiento;
    QFileInfo m_info;
    Schema m_schema;
    QHash<const TablaDelPlan *, std::vector<Suma>> m_sumas;
    Informe m_informe;
};

void Conversion::controlarUso() const
{
    const QString marca = m_info.completeBaseName() + QStringLiteral(".ldb");
    for (const QString &archivo : m_info.dir().entryList(QDir::Files | QDir::Hidden))
        if (archivo.compare(marca, Qt::CaseInsensitive) == 0)
            fallar(QStringLiteral("Otra computadora u otro programa tiene abierta la base de datos (está el archivo "
                                  "'%1'). Ciérrela en todas y vuelva a intentar. Si ya está cerrada en todas, elimine "
                                  "ese archivo, que quedó de un corte.")
                       .arg(archivo));
}

void Conversion::controlarLugar() const
{
    const QString carpeta = m_info.path();
    const qint64 libre = m_pedido.lugarLibre ? m_pedido.lugarLibre(carpeta) : QStorageInfo(carpeta).bytesAvailable();
    // The new file and its journal; and a copy of the original, on disks where one file cannot have two names.
    const qint64 hacenFalta = m_info.size() * 3 + (16 << 20);
    if (libre >= 0 && libre < hacenFalta)
        fallar(QStringLiteral("No hay lugar en el disco: hacen falta %1 y quedan %2.")
                   .arg(
                       QLocale().formattedDataSize(hacenFalta, 0, QLocale::DataSizeTraditionalFormat),
                       QLocale().formattedDataSize(libre, 0, QLocale::DataSizeTraditionalFormat)));
}

Plan Conversion::planear()
{
    Censo censo(m_schema, [this](const QString &tabla) {
        return m_seguimiento.avanzar(QStringLiteral("Leyendo el archivo: %1").arg(tabla), 0, 0);
    });
    if (!m_pedido.abrir(m_pedido.archivo)->leer(censo))
        throw Cancelacion();
    Plan &plan = censo.plan();
    if (!plan.cuentasDistintas.isEmpty()) {
        const QString lista = plan.cuentasDistintas.join(QStringLiteral("; "));
        if (!m_pedido.continuarConDiferencias)
            fallar(QStringLiteral("Al archivo le faltan registros: %1.").arg(lista));
        if (!m_pedido.continuarConDiferencias(lista))
            throw Cancelacion();
        m_informe.avisos << QStringLiteral("ATENCIÓN: el archivo original tiene diferencias: %1.").arg(lista);
    }
    return std::move(plan);
}

void Conversion::crearTablas(EmbeddedEngine &motor, const Plan &plan) const
{
    for (const TablaDelPlan &tabla : plan.tablas)
        for (const QByteArray &sentencia : ddl::createTable(tabla.nueva))
            motor.executeNative(sentencia, {});
}

void Conversion::cargar(const QString &archivo, Plan &plan)
{
    createDatabaseFile(archivo, m_pedido.clave);
    EmbeddedEngine motor(archivo, m_pedido.clave);
    // Nobody needs half of it: what a power cut spoils is begun anew.
    motor.executeNative("PRAGMA synchronous=OFF", {});
    motor.begin();
    crearTablas(motor, plan);
    qint64 dichas = -1;
    Carga carga(motor, plan, [&](const QString &tabla, qint64 filas) {
        constexpr qint64 cadaTantas = 50;
        if (filas / cadaTantas == dichas)
            return true;
        dichas = filas / cadaTantas;
        return m_seguimiento.avanzar(QStringLiteral("Pasando los datos: %1").arg(tabla), filas, plan.filas);
    });
    if (!m_pedido.abrir(m_pedido.archivo)->leer(carga))
        throw Cancelacion();
    for (const TablaDelPlan &tabla : plan.tablas)
        if (!carga.sumas().contains(&tabla))
            fallar(QStringLiteral("El archivo cambió mientras se lo leía: ¿está en uso?"));
    motor.commit();
    m_sumas = carga.sumas();
    m_informe.apartados = carga.apartados();
}

void Conversion::actualizar(const QString &archivo)
{
    Mudo mudo;
    actualizarAccess(
        m_pedido.rutinas,
        [&] { return std::make_unique<Connection>(std::make_unique<EmbeddedEngine>(archivo, m_pedido.clave)); },
        mudo);
}

void Conversion::indexar(EmbeddedEngine &motor, Plan &plan)
{
    const auto agregar = [&motor](const QString &tabla, const Index &indice) {
        motor.executeNative(ddl::createIndex(tabla, indice), {});
    };
    motor.begin();
    for (TablaDelPlan &tabla : plan.tablas) {
        if (tabla.declarada) {
            for (Index indice : tabla.declarada->indexes) {
                try {
                    agregar(tabla.nueva.name, indice);
                } catch (const Error &error) {
                    if (!indice.unique || error.kind() != Error::Kind::Constraint)
                        throw;
                    indice.unique = false;
                    agregar(tabla.nueva.name, indice);
                    tabla.avisos << QStringLiteral(
                                        "Hay valores repetidos en '%1', que no debería tenerlos: pasan todos.")
                                        .arg(indice.columns.join(QStringLiteral(", ")));
                }
            }
            continue;
        }
        QSet<QStringList> hechos;
        for (const IndiceViejo &viejo : tabla.vieja.indices) {
            // Of numbers and dates only: text would be ordered in a way that no outside tool knows.
            Index indice;
            bool sirve = viejo.columnas != QVector<int>{tabla.contador};
            for (const int c : viejo.columnas) {
                const Column &columna = tabla.nueva.columns[tabla.destino[c]];
                sirve &= columna.type != Type::Text && columna.type != Type::Memo && columna.type != Type::Binary;
                indice.columns << columna.name;
            }
            if (!sirve || hechos.contains(indice.columns))
                continue;
            hechos.insert(indice.columns);
            agregar(tabla.nueva.name, indice);
        }
    }
    motor.commit();
}

void Conversion::probar(EmbeddedEngine &motor, const Plan &plan) const
{
    qint64 hechas = 0;
    for (const TablaDelPlan &tabla : plan.tablas) {
        avanzar(QStringLiteral("Comparando con el original: %1").arg(tabla.vieja.nombre), hechas, plan.filas);
        const QVector<Column> presentes = motor.columns(tabla.nueva.name);
        QVector<int> probadas, quitadas;
        QByteArray columnas;
        for (const int destino : tabla.destino) {
            const QString &nombre = tabla.nueva.columns[destino].name;
            const bool esta = std::any_of(
                presentes.cbegin(), presentes.cend(), [&](const Column &columna) { return columna.name == nombre; });
            (esta ? probadas : quitadas) << destino;
            if (esta)
                columnas += ", " + citado(nombre);
        }
        std::vector<Suma> sumas(size_t(tabla.nueva.columns.size()));
        qint64 filas = 0;
        motor.walkNative(
            "SELECT _rowid_" + columnas + " FROM " + citado(tabla.nueva.name), {}, [&](sqlite3_stmt *sentencia) {
                const qint64 numero = sqlite3_column_int64(sentencia, 0);
                for (int c = 0; c < probadas.size(); ++c)
                    sumas[size_t(probadas[c])].agregar(numero, sentencia, c + 1);
                if (++filas % 1000 == 0)
                    avanzar(
                        QStringLiteral("Comparando con el original: %1").arg(tabla.vieja.nombre),
                        hechas + filas,
                        plan.filas);
            });
        if (filas != tabla.filas)
            fallar(QStringLiteral("Lo que pasó no es igual al original: faltan o sobran registros en '%1'.")
                       .arg(tabla.vieja.nombre));
        for (const int c : probadas)
            if (!(sumas[size_t(c)] == m_sumas[&tabla][size_t(c)]))
                fallar(QStringLiteral("Lo que pasó no es igual al original: hay diferencias en '%1' de '%2'.")
                           .arg(tabla.nueva.columns[c].name, tabla.vieja.nombre));
        if (!quitadas.isEmpty())
            probarHorarios(motor, tabla, quitadas);
        hechas += filas;
    }
}

void Conversion::probarHorarios(EmbeddedEngine &motor, const TablaDelPlan &doctores, const QVector<int> &quitadas) const
{
    const bool esDoctores = doctores.nueva.name == tablaDoctores;
    QByteArray columnas;
    for (const int c : quitadas) {
        const QString &nombre = doctores.nueva.columns[c].name;
        if (!esDoctores || !horariosviejos::columnas().contains(nombre, Qt::CaseInsensitive))
            fallar(QStringLiteral("Lo que pasó no es igual al original: falta '%1' en '%2'.")
                       .arg(nombre, doctores.vieja.nombre));
        columnas += ", " + citado(nombre);
    }
    // Templates that the old file had already say more than the old hours: those made now are as many as the rest.
    if (m_informe.horarios == 0)
        return;
    std::vector<Suma> sumas(size_t(doctores.nueva.columns.size()));
    motor.walkNative(
        "SELECT iddoctor" + columnas + " FROM \"Agenda Turnos Horarios\"", {}, [&](sqlite3_stmt *sentencia) {
            for (int c = 0; c < quitadas.size(); ++c)
                sumas[size_t(quitadas[c])].agregar(sqlite3_column_int64(sentencia, 0), sentencia, c + 1);
        });
    for (const int c : quitadas)
        if (!(sumas[size_t(c)] == m_sumas[&doctores][size_t(c)]))
            fallar(QStringLiteral("Los horarios de los profesionales no pasaron bien a sus plantillas (%1).")
                       .arg(doctores.nueva.columns[c].name));
}

void Conversion::informar(const Plan &plan)
{
    for (const TablaDelPlan &tabla : plan.tablas) {
        QStringList conservadas;
        for (const QString &columna : tabla.conservadas)
            if (tabla.nueva.name != tablaDoctores || !horariosviejos::columnas().contains(columna, Qt::CaseInsensitive))
                conservadas << columna;
        m_informe.tablas.push_back(
            {tabla.nueva.name,
             tabla.filas,
             int(tabla.vieja.columnas.size()),
             tabla.declarada != nullptr,
             conservadas,
             tabla.avisos});
    }
    m_informe.salteadas = plan.salteadas;
    m_informe.vinculadas = plan.vinculadas;
    const QString archivo
        = QStringLiteral("%1/%2 (importación de Access).txt").arg(m_info.path(), m_info.completeBaseName());
    QSaveFile salida(archivo);
    if (salida.open(QIODevice::WriteOnly)) {
        salida.write(QByteArray("\xEF\xBB\xBF") + m_informe.texto(m_pedido.ahora).toUtf8());
        if (salida.commit())
            m_informe.archivo = archivo;
    }
}

Informe Conversion::hacer()
{
    controlarUso();
    controlarLugar();
    // One station at a time; the lock of one that died is taken over.
    QLockFile turno(m_pedido.archivo + QStringLiteral(".conversion"));
    turno.setStaleLockTime(0);
    if (!turno.tryLock(0))
        fallar(
            turno.error() == QLockFile::LockFailedError
                ? QStringLiteral("Otra computadora está convirtiendo esta base de datos. Espere a que termine.")
                : QStringLiteral(
                      "No se puede escribir en la carpeta de la base de datos: '%1'. Verifique sus permisos.")
                      .arg(QDir::toNativeSeparators(m_info.path())));
    const QByteArray huella = huellaDeArchivo(m_pedido.archivo);
    Plan plan = planear();
    const Provisorio nuevo(m_pedido.archivo + QStringLiteral(".convirtiendo"));
    cargar(nuevo.archivo(), plan);
    avanzar(QStringLiteral("Actualizando la base de datos..."), plan.filas, plan.filas);
    actualizar(nuevo.archivo());
    {
        EmbeddedEngine motor(nuevo.archivo(), m_pedido.clave);
        if (!plan.tabla(u"Agenda Turnos Horarios"))
            m_informe.horarios
                = motor.queryNative("SELECT count(*) FROM \"Agenda Turnos Horarios\"", {})->integer(0, 0);
        indexar(motor, plan);
        probar(motor, plan);
        const std::atomic<bool> nunca = false;
        if (const QString falla = proveCopy({nuevo.archivo(), m_pedido.clave}, rowCounts(motor), nunca);
            !falla.isEmpty())
            fallar(QStringLiteral("La base nueva %1.").arg(falla));
        sqlite3_file *file = nullptr;
        if (sqlite3_file_control(motor.handle(), "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK
            || file->pMethods->xSync(file, SQLITE_SYNC_FULL) != SQLITE_OK)
            fallar(QStringLiteral("El disco falló al guardar la base nueva."));
    }
    avanzar(QStringLiteral("Terminando..."), plan.filas, plan.filas);
    controlarUso();
    // Whoever could write the old one, in a shared folder too, can write the new one.
    QFile::setPermissions(nuevo.archivo(), QFile::permissions(m_pedido.archivo) | QFile::ReadOwner | QFile::WriteOwner);
    m_informe.original = reemplazar(m_pedido.archivo, nuevo.archivo(), huella);
    informar(plan);
    return m_informe;
}

/// Looks only for the row that every database of the system has.
class BuscaCatalogo final : public Receptor
{
public:
    void empezar(const TablaVieja &tabla) override { m_id = tabla.columna(u"id"); }
    void fila(const std::vector<Valor> &celdas) override
    {
        if (m_id >= 0 && celdas[size_t(m_id)].clase == Valor::Clase::Entero && celdas[size_t(m_id)].entero == 2)
            ++m_encontradas;
    }
    [[nodiscard]] bool esPropia() const { return m_encontradas == 1; }

private:
    int m_id = -1;
    int m_encontradas = 0;
};

} // namespace

Examen examinar(Fuente &fuente)
{
    BuscaCatalogo catalogo;
    (void)fuente.leer(catalogo, QStringLiteral("CIE10"));
    return catalogo.esPropia() ? Examen::Propia : Examen::Incompatible;
}

Desenlace convertir(const Pedido &pedido, Seguimiento &seguimiento) noexcept
{
    using Tipo = Desenlace::Tipo;
    try {
        return {Tipo::Hecha, {}, Conversion(pedido, seguimiento).hacer()};
    } catch (const Cancelacion &) {
        return {Tipo::Cancelada};
    } catch (const Error &error) {
        return {Tipo::Fallada, error.description()};
    } catch (const std::exception &) {
        return {Tipo::Fallada, QStringLiteral("No alcanzó la memoria de esta computadora.")};
    }
}

} // namespace db::access
