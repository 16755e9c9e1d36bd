#include "db/migracion/Plano.h"

#include "db/Connection.h"
#include "db/Error.h"
#include "db/engine/EmbeddedEngine.h"

#include <QHash>
#include <QLocale>

#include <algorithm>
#include <limits>
#include <sqlite3.h>

namespace db::migracion {

namespace {

constexpr int mayorTexto = 4000; // of the server's nvarchar

QByteArray citado(const QString &nombre) { return '"' + nombre.toUtf8().replace('"', "\"\"") + '"'; }

[[noreturn]] void fallar(const QString &tabla, const QString &columna, const QString &que)
{
    throw Error(
        Error::Kind::General,
        0,
        QStringLiteral("La columna '%1' de la tabla '%2' %3 y no se puede copiar.").arg(columna, tabla, que));
}

bool esEntero(Type tipo)
{
    return tipo == Type::Counter || tipo == Type::Integer || tipo == Type::Long || tipo == Type::Flag;
}

/// What the rows of one column of an embedded table hold.
struct Contenido {
    enum { NoNulos, Ajenos, Medida, Menor, Mayor, ConCero = Menor, Cuantos = Mayor + 1 };
    qint64 numeros[Cuantos] = {};
};

/// The expressions whose values make a Contenido, by the declared type.
QByteArrayList expresiones(const Column &columna)
{
    const QByteArray c = citado(columna.name);
    const auto cuantos = [](const QByteArray &condicion) { return "total(" + condicion + ')'; };
    QByteArrayList lista{"count(" + c + ')', "0", "0", "0", "0"};
    switch (columna.type) {
    case Type::Counter:
    case Type::Integer:
    case Type::Long:
    case Type::Flag:
        lista[Contenido::Medida] = cuantos("typeof(" + c + ") = 'real'");
        lista[Contenido::Menor] = "min(" + c + ')';
        lista[Contenido::Mayor] = "max(" + c + ')';
        [[fallthrough]];
    case Type::Single:
    case Type::Double: lista[Contenido::Ajenos] = cuantos("typeof(" + c + ") IN ('text', 'blob')"); break;
    case Type::DateTime:
        lista[Contenido::Ajenos] = cuantos(
            c + " IS NOT NULL AND (typeof(" + c + ") <> 'text' OR length(" + c + ") NOT IN (10, 19) OR julianday(" + c
            + ") IS NULL)");
        lista[Contenido::Medida] = cuantos("CAST(" + c + " AS TEXT) < '1753'");
        break;
    case Type::Text: lista[Contenido::Medida] = "max(length(CAST(" + c + " AS BLOB)))"; [[fallthrough]];
    case Type::Memo:
        lista[Contenido::Ajenos] = cuantos("typeof(" + c + ") = 'blob'");
        lista[Contenido::ConCero] = cuantos("typeof(" + c + ") = 'text' AND instr(CAST(" + c + " AS BLOB), x'00') > 0");
        break;
    case Type::Binary: lista[Contenido::Ajenos] = cuantos("typeof(" + c + ") IN ('integer', 'real')"); break;
    }
    return lista;
}

/// UTF-16 units of the longest text, as the server counts them.
int masLargo(EmbeddedEngine &motor, const QString &tabla, const Column &columna)
{
    int largo = 0;
    motor.walkNative(
        "SELECT " + citado(columna.name) + " FROM " + citado(tabla) + " WHERE length(CAST(" + citado(columna.name)
            + " AS BLOB)) > " + QByteArray::number(columna.size),
        {},
        [&](sqlite3_stmt *fila) {
            const auto *texto = reinterpret_cast<const char *>(sqlite3_column_text(fila, 0));
            largo = std::max(largo, int(QString::fromUtf8(texto, sqlite3_column_bytes(fila, 0)).size()));
        });
    return largo;
}

/// Makes the column hold what was found in it.
void ajustar(EmbeddedEngine &motor, TablaPlano &plano, Column &columna, const Contenido &hay, QStringList &avisos)
{
    const QString &tabla = plano.tabla.name;
    const qint64 ajenos = hay.numeros[Contenido::Ajenos], medida = hay.numeros[Contenido::Medida];
    switch (columna.type) {
    case Type::Counter:
    case Type::Integer:
    case Type::Long:
    case Type::Flag:
    case Type::Single:
    case Type::Double: {
        if (ajenos > 0)
            fallar(tabla, columna.name, QStringLiteral("tiene textos donde van números"));
        if (!esEntero(columna.type) || columna.type == Type::Counter)
            return;
        const qint64 menor = hay.numeros[Contenido::Menor], mayor = hay.numeros[Contenido::Mayor];
        const bool cabeLargo
            = menor >= std::numeric_limits<qint32>::min() && mayor <= std::numeric_limits<qint32>::max();
        if (medida > 0 || !cabeLargo)
            columna.type = Type::Double;
        else if (
            columna.type == Type::Integer
            && (menor < std::numeric_limits<qint16>::min() || mayor > std::numeric_limits<qint16>::max()))
            columna.type = Type::Long;
        else
            return;
        avisos << QStringLiteral(
                      "Tabla '%1': la columna '%2' tiene números que no entran en su tipo; se creó más grande.")
                      .arg(tabla, columna.name);
        return;
    }
    case Type::DateTime:
        if (ajenos > 0)
            fallar(tabla, columna.name, QStringLiteral("tiene valores que no son fechas"));
        if (medida > 0)
            avisos << QStringLiteral("Tabla '%1', columna '%2': fechas anteriores a 1753, que el servidor no admite: "
                                     "%3. Quedaron allí como 31/12/8888 (sin fecha).")
                          .arg(tabla, columna.name)
                          .arg(medida);
        return;
    case Type::Text:
    case Type::Memo:
        if (ajenos > 0) {
            if (ajenos < hay.numeros[Contenido::NoNulos])
                fallar(tabla, columna.name, QStringLiteral("tiene textos y bytes mezclados"));
            columna.type = Type::Binary;
            columna.initial.reset();
            return;
        }
        if (const qint64 conCero = hay.numeros[Contenido::ConCero]; conCero > 0)
            avisos << QStringLiteral(
                          "Tabla '%1', columna '%2': textos con un carácter nulo, que el servidor no admite: "
                          "%3. Quedaron allí sin él.")
                          .arg(tabla, columna.name)
                          .arg(conCero);
        if (columna.type == Type::Text && medida > columna.size) {
            if (const int largo = masLargo(motor, tabla, columna); largo > columna.size) {
                avisos << QStringLiteral(
                              "Tabla '%1': la columna '%2' tiene textos de %3 caracteres; se creó más ancha.")
                              .arg(tabla, columna.name)
                              .arg(largo);
                columna.size = largo;
            }
        }
        if (columna.type == Type::Text && (columna.size <= 0 || columna.size > mayorTexto))
            columna.type = Type::Memo;
        return;
    case Type::Binary:
        if (ajenos > 0)
            fallar(tabla, columna.name, QStringLiteral("tiene números donde van bytes"));
    }
}

void mirarFilas(EmbeddedEngine &motor, TablaPlano &plano, QStringList &avisos)
{
    // A few columns at a time: the engine takes two thousand expressions at most.
    constexpr qsizetype porVez = 100;
    plano.filas = motor.queryNative("SELECT count(*) FROM " + citado(plano.tabla.name), {})->integer(0, 0);
    for (qsizetype desde = 0; desde < plano.tabla.columns.size(); desde += porVez) {
        const qsizetype hasta = std::min(desde + porVez, plano.tabla.columns.size());
        QByteArrayList todas;
        for (qsizetype c = desde; c < hasta; ++c)
            todas += expresiones(plano.tabla.columns[c]);
        const Rows fila = motor.queryNative("SELECT " + todas.join(", ") + " FROM " + citado(plano.tabla.name), {});
        for (qsizetype c = desde; c < hasta; ++c) {
            Contenido hay;
            for (int n = 0; n < Contenido::Cuantos; ++n)
                hay.numeros[n] = fila->integer(0, int(c - desde) * Contenido::Cuantos + n);
            if (hay.numeros[Contenido::NoNulos] == plano.filas)
                plano.completas << plano.tabla.columns[c].name;
            ajustar(motor, plano, plano.tabla.columns[c], hay, avisos);
        }
    }
}

void leerIndices(EmbeddedEngine &motor, Table &tabla)
{
    const Rows filas = motor.queryNative(
        "SELECT l.name, l.\"unique\", l.origin, x.name, x.coll FROM pragma_index_list(?) AS l, "
        "pragma_index_xinfo(l.name) AS x WHERE x.key = 1 AND l.partial = 0 ORDER BY l.seq DESC, x.seqno",
        {tabla.name});
    QString actual;
    for (int f = 0; f < filas->rowCount(); ++f) {
        const bool clave = filas->text(f, 2) == QLatin1String("pk");
        if (filas->text(f, 0) != actual) {
            actual = filas->text(f, 0);
            if (!clave)
                tabla.indexes.append({{}, filas->flag(f, 1)});
        }
        const QString columna = filas->text(f, 3);
        if (clave) {
            tabla.key << columna;
            continue;
        }
        Index &indice = tabla.indexes.last();
        indice.columns << columna;
        const Column *declarada = tabla.column(columna);
        const bool texto = declarada && (declarada->type == Type::Text || declarada->type == Type::Memo);
        // Ordered by bytes: one of the file's own lists. An expression has no column at all.
        if (!declarada || (texto && filas->text(f, 4).compare(QLatin1String("BINARY"), Qt::CaseInsensitive) == 0))
            indice.ofList = true;
    }
    tabla.indexes.removeIf([](const Index &indice) { return indice.ofList; });
}

qint64 contadorDe(EmbeddedEngine &motor, const TablaPlano &plano)
{
    const QString columna = plano.columnaContador();
    if (columna.isEmpty())
        return 0;
    const qint64 mayor
        = motor.queryNative("SELECT max(" + citado(columna) + ") FROM " + citado(plano.tabla.name), {})->integer(0, 0);
    // A table made by another tool may count without remembering.
    if (motor.queryNative("SELECT name FROM sqlite_master WHERE name = 'sqlite_sequence'", {})->rowCount() == 0)
        return mayor;
    const Rows dado = motor.queryNative("SELECT seq FROM sqlite_sequence WHERE name = ?", {plano.tabla.name});
    return dado->rowCount() > 0 ? std::max(mayor, dado->integer(0, 0)) : mayor;
}

/// The indexes of a server database, its keys among them, by lower-case table.
struct IndiceServidor {
    QString nombre;
    QStringList columnas;
    bool unico = false;
    bool clave = false;
};
QHash<QString, QVector<IndiceServidor>> indicesDelServidor(Connection &conexion)
{
    const Rows filas = conexion.query(
        QStringLiteral("SELECT t.name, i.name, c.name, i.is_unique, i.is_primary_key FROM sys.indexes i "
                       "INNER JOIN sys.tables t ON t.object_id = i.object_id "
                       "INNER JOIN sys.index_columns x ON x.object_id = i.object_id AND x.index_id = i.index_id "
                       "INNER JOIN sys.columns c ON c.object_id = x.object_id AND c.column_id = x.column_id "
                       "WHERE x.key_ordinal > 0 ORDER BY t.name, i.name, x.key_ordinal"));
    QHash<QString, QVector<IndiceServidor>> indices;
    for (int f = 0; f < filas->rowCount(); ++f) {
        QVector<IndiceServidor> &suyos = indices[filas->text(f, 0).toLower()];
        if (suyos.isEmpty() || suyos.last().nombre != filas->text(f, 1))
            suyos.append({filas->text(f, 1), {}, filas->flag(f, 3), filas->flag(f, 4)});
        suyos.last().columnas << filas->text(f, 2);
    }
    return indices;
}

bool mismas(const QStringList &unas, const QStringList &otras)
{
    return std::equal(
        unas.begin(), unas.end(), otras.begin(), otras.end(), [](const QString &una, const QString &otra) {
            return una.compare(otra, Qt::CaseInsensitive) == 0;
        });
}

/// What the file has beside the values: the declared table's, and the server's own indexes.
void completar(TablaPlano &plano, const Table *declarada, const QVector<IndiceServidor> &hallados)
{
    Table &tabla = plano.tabla;
    for (Column &columna : tabla.columns) {
        const Column *suya = declarada ? declarada->column(columna.name) : nullptr;
        if (suya && !columna.initial)
            columna.initial = suya->initial;
        if (suya && suya->type == Type::Counter && columna.type == Type::Long)
            columna.type = Type::Counter;
        if (columna.type == Type::Flag && columna.initial)
            columna.initial = columna.initial->toInt() != 0 ? -1 : 0;
    }
    const QString contador = plano.columnaContador();
    for (const IndiceServidor &indice : hallados) {
        const bool esContador = mismas(indice.columnas, {contador});
        if (indice.clave && contador.isEmpty())
            tabla.key = indice.columnas;
        else if (!esContador)
            tabla.indexes.append({indice.columnas, indice.unico});
    }
    if (!declarada)
        return;
    tabla.search = declarada->search;
    tabla.counterStart = declarada->counterStart;
    for (const Index &indice : declarada->indexes) {
        const bool estan = std::all_of(indice.columns.begin(), indice.columns.end(), [&](const QString &nombre) {
            return tabla.column(nombre) != nullptr;
        });
        const bool esta = std::any_of(tabla.indexes.begin(), tabla.indexes.end(), [&](const Index &otro) {
            return otro.ofList == indice.ofList && mismas(otro.columns, indice.columns);
        });
        if (estan && !esta)
            tabla.indexes.append(indice);
    }
}

} // namespace

QString TablaPlano::columnaContador() const
{
    for (const Column &columna : tabla.columns)
        if (columna.type == Type::Counter)
            return columna.name;
    return {};
}

qint64 Plano::filas() const
{
    qint64 total = 0;
    for (const TablaPlano &tabla : tablas)
        total += tabla.filas;
    return total;
}

bool seExcluye(const QString &tabla)
{
    return tabla.compare(QLatin1String("Usuarios"), Qt::CaseInsensitive) == 0
        || tabla.compare(QLatin1String("Estadisticas"), Qt::CaseInsensitive) == 0;
}

Plano planoDeArchivo(EmbeddedEngine &origen, const AlMirar &alMirar)
{
    Plano plano;
    for (const QString &nombre : origen.tableNames()) {
        if (seExcluye(nombre))
            continue;
        if (alMirar)
            alMirar(nombre);
        TablaPlano tabla;
        tabla.tabla.name = nombre;
        tabla.tabla.columns = origen.columns(nombre);
        leerIndices(origen, tabla.tabla);
        mirarFilas(origen, tabla, plano.avisos);
        tabla.contador = contadorDe(origen, tabla);
        plano.tablas << tabla;
    }
    // The table that every check looks for comes last: a copy that was cut off is never taken for a database.
    std::stable_partition(plano.tablas.begin(), plano.tablas.end(), [](const TablaPlano &tabla) {
        return tabla.tabla.name.compare(QLatin1String("CIE10"), Qt::CaseInsensitive) != 0;
    });
    return plano;
}

Plano planoDeServidor(Connection &origen, const Schema &esquema, const AlMirar &alMirar)
{
    Plano plano;
    const auto indices = indicesDelServidor(origen);
    for (const QString &nombre : origen.tableNames()) {
        if (alMirar)
            alMirar(nombre);
        TablaPlano tabla;
        tabla.tabla.name = nombre;
        tabla.tabla.columns = origen.columns(nombre);
        completar(tabla, esquema.table(nombre), indices.value(nombre.toLower()));
        const QString citada = origen.dialect().identifier(nombre);
        // The lock lasts as long as the transaction: the others may read meanwhile, and not write.
        tabla.filas = origen.query(QStringLiteral("SELECT COUNT(*) FROM %1 WITH (TABLOCK, HOLDLOCK)").arg(citada))
                          ->integer(0, 0);
        if (!tabla.columnaContador().isEmpty()) {
            const qint64 dado
                = origen
                      .query(QStringLiteral("SELECT IDENT_CURRENT(%1)")
                                 .arg(u'\'' + QString(citada).replace(u'\'', QLatin1String("''")) + u'\''))
                      ->integer(0, 0);
            // A table that never had a row tells the first number instead of the last.
            const bool sinUsar = tabla.filas == 0 && dado == tabla.tabla.counterStart + 1;
            tabla.contador = sinUsar ? tabla.tabla.counterStart : dado;
        }
        plano.tablas << tabla;
    }
    return plano;
}

} // namespace db::migracion
