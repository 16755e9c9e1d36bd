#include "db/access/FuenteOdbc.h"

#include "db/access/ControladorAccess.h"
#include "db/access/Fechas.h"
#include "db/access/Tramos.h"
#include "db/odbc/Cell.h"
#include "jet/Valor.h"

#include <QRegularExpression>

#include <cmath>
#include <limits>

namespace db::access {

namespace {

using odbc::Cell;
using odbc::Failed;
using odbc::Handle;

QString entero(const SQLWCHAR *texto) { return QString::fromUtf16(reinterpret_cast<const char16_t *>(texto)); }

/// The driver's own words may hold the folder, the password or what a cell says: only its numbers are repeated.
QString numeros(const Failed &falla)
{
    if (falla.diagnostics.isEmpty())
        return QStringLiteral("el controlador de Access no dice por qué");
    const odbc::Diagnostic &primera = falla.diagnostics.constFirst();
    return QStringLiteral("el controlador de Access informa %1, %2").arg(primera.state).arg(primera.number);
}

Error noAbre(const Failed &falla)
{
    // As Access's driver numbers them.
    constexpr int claveIncorrecta = -1905, enUso = -1024, bloqueada = -1032, exclusiva = -1303;
    for (const odbc::Diagnostic &una : falla.diagnostics) {
        // The manager does not get at the driver; unixODBC tells it as a warning.
        if (una.state.startsWith(u"IM00") || una.state == u"01000")
            return sinControladorAccess();
        if (una.number == claveIncorrecta)
            return {Error::Kind::CannotOpen, 0, QStringLiteral("El controlador de Access no aceptó la clave.")};
        if (una.number == enUso || una.number == bloqueada || una.number == exclusiva)
            return {
                Error::Kind::CannotOpen,
                0,
                QStringLiteral("Otro programa tiene abierto el archivo. Ciérrelo y vuelva a intentar.")};
    }
    return Tramos::danio(numeros(falla));
}

/// A column that is being read.
struct Lectura {
    jet::Tipo tipo = jet::Tipo::Texto;
    SQLSMALLINT sqlTipo = 0;
};

jet::Tipo tipoDe(SQLSMALLINT sqlTipo, const QString &nombre)
{
    using jet::Tipo;
    switch (sqlTipo) {
    case SQL_BIT: return Tipo::Logico;
    case SQL_TINYINT: return Tipo::Byte;
    case SQL_SMALLINT: return Tipo::Entero;
    case SQL_INTEGER: return Tipo::Largo;
    case SQL_REAL: return Tipo::Simple;
    case SQL_FLOAT:
    case SQL_DOUBLE: return Tipo::Doble;
    case SQL_BIGINT:
    case SQL_DECIMAL:
    case SQL_NUMERIC: return nombre.compare(u"CURRENCY", Qt::CaseInsensitive) == 0 ? Tipo::Moneda : Tipo::Decimal;
    case SQL_DATE:
    case SQL_TIMESTAMP:
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIMESTAMP: return Tipo::Fecha;
    case SQL_BINARY:
    case SQL_VARBINARY: return Tipo::Binario;
    case SQL_LONGVARBINARY: return Tipo::Ole;
    case SQL_GUID: return Tipo::Guid;
    case SQL_CHAR:
    case SQL_VARCHAR:
    case SQL_WCHAR:
    case SQL_WVARCHAR: return Tipo::Texto;
    default: return Tipo::Memo; // every driver can write anything as a text
    }
}

/// "-1234.5" as ten-thousandths, when it is an amount with four decimals at most.
std::optional<qint64> diezmilesimos(QByteArray texto)
{
    static const QRegularExpression forma(QStringLiteral("^(-?)(\\d{0,15})[.,]?(\\d{0,4})0*$"));
    const auto partes = forma.match(QString::fromLatin1(texto.trimmed()));
    if (!partes.hasMatch() || partes.captured(2).size() + partes.captured(3).size() == 0)
        return {};
    const QString cifras = partes.captured(2) + partes.captured(3).leftJustified(4, u'0');
    bool ok = false;
    const qint64 valor = (partes.captured(1) + cifras).toLongLong(&ok);
    return ok ? std::optional(valor) : std::nullopt;
}

void ponerTexto(Valor &valor, const QByteArray &utf16)
{
    const QString texto(reinterpret_cast<const QChar *>(utf16.constData()), utf16.size() / qsizetype(sizeof(QChar)));
    valor.clase = texto.isValidUtf16() ? Valor::Clase::Texto : Valor::Clase::TextoRoto;
    valor.datos = texto.toUtf8();
    if (valor.clase == Valor::Clase::TextoRoto)
        valor.crudo = utf16;
}

void ponerFecha(Valor &valor, const SQL_TIMESTAMP_STRUCT &leida)
{
    const QDate dia(leida.year, leida.month, leida.day);
    constexpr SQLUINTEGER medioSegundo = 500'000'000; // the fraction counts billionths
    const qint64 segundos = QDate(1899, 12, 30).daysTo(dia) * 86400 + leida.hour * 3600 + leida.minute * 60
        + leida.second + (leida.fraction >= medioSegundo);
    const bool posible = dia.isValid() && esFechaPosible(segundos);
    valor.clase = posible ? Valor::Clase::Fecha : Valor::Clase::FechaRota;
    valor.entero = posible ? segundos : 0;
    valor.real = std::numeric_limits<double>::quiet_NaN();
}

class Base
{
public:
    explicit Base(const QString &texto);
    ~Base();
    Base(const Base &) = delete;
    Base &operator=(const Base &) = delete;

    struct Entrada {
        QString nombre;
        bool vinculada = false;
    };
    [[nodiscard]] QVector<Entrada> tablas() const;
    /// False when the receiver wants no more.
    [[nodiscard]] bool leer(const QString &tabla, Receptor &receptor) const;

private:
    using Columnas = std::vector<Lectura>;
    struct Indice {
        QString nombre;
        QStringList columnas;
        bool unico = false;
    };
    [[nodiscard]] Handle sentencia() const { return {SQL_HANDLE_STMT, SQL_HANDLE_DBC, m_conexion.get()}; }
    [[nodiscard]] Handle ejecutar(const QString &sql) const;
    [[nodiscard]] QString citada(const QString &nombre) const;
    [[nodiscard]] qint64 contar(const QString &tabla) const;
    [[nodiscard]] std::vector<Indice> indices(const QString &tabla) const;
    static void ubicar(const std::vector<Indice> &indices, TablaVieja &tabla);
    static Columnas describir(const Handle &consulta, TablaVieja &tabla);
    static void leerCelda(Cell &celda, SQLUSMALLINT numero, const Lectura &columna, Valor &valor);

    Handle m_entorno;
    Handle m_conexion;
    QChar m_comilla; ///< around a name; null when the driver does not say
};

Base::Base(const QString &texto)
    : m_entorno(SQL_HANDLE_ENV, 0, SQL_NULL_HANDLE)
{
    m_entorno.check(SQLSetEnvAttr(m_entorno.get(), SQL_ATTR_ODBC_VERSION, SQLPOINTER(SQL_OV_ODBC3), 0));
    m_conexion = Handle(SQL_HANDLE_DBC, SQL_HANDLE_ENV, m_entorno.get());
    m_conexion.check(SQLDriverConnectW(
        m_conexion.get(),
        nullptr,
        odbc::wide(texto),
        SQLSMALLINT(texto.size()),
        nullptr,
        0,
        nullptr,
        SQL_DRIVER_NOPROMPT));
    SQLWCHAR comilla[32] = {};
    SQLSMALLINT largo = 0;
    if (SQL_SUCCEEDED(
            SQLGetInfoW(m_conexion.get(), SQL_IDENTIFIER_QUOTE_CHAR, comilla, SQLSMALLINT(sizeof comilla), &largo))
        && (comilla[0] == u'`' || comilla[0] == u'"') && comilla[1] == 0)
        m_comilla = comilla[0];
}

Base::~Base()
{
    if (m_conexion.get() != SQL_NULL_HANDLE)
        SQLDisconnect(m_conexion.get());
}

QString Base::citada(const QString &nombre) const
{
    // Access takes brackets too, and its names hold none.
    if (m_comilla.isNull())
        return u'[' + nombre + u']';
    return m_comilla + QString(nombre).replace(m_comilla, QString(2, m_comilla)) + m_comilla;
}

Handle Base::ejecutar(const QString &sql) const
{
    Handle consulta = sentencia();
    consulta.check(SQLExecDirectW(consulta.get(), odbc::wide(sql), SQLINTEGER(sql.size())));
    return consulta;
}

/// A text of the current row of a catalogue's answer; empty for NULL.
QString textoDe(Cell &celda, SQLUSMALLINT columna)
{
    if (!celda.pieces(columna, SQL_C_WCHAR))
        return {};
    return QString(
        reinterpret_cast<const QChar *>(celda.data().constData()), celda.data().size() / qsizetype(sizeof(QChar)));
}

/// Whether there is one more row.
bool avanzar(const Handle &consulta)
{
    const SQLRETURN codigo = SQLFetch(consulta.get());
    if (codigo != SQL_NO_DATA)
        consulta.check(codigo);
    return codigo != SQL_NO_DATA;
}

QVector<Base::Entrada> Base::tablas() const
{
    const Handle consulta = sentencia();
    consulta.check(SQLTablesW(consulta.get(), nullptr, 0, nullptr, 0, nullptr, 0, nullptr, 0));
    Cell celda(consulta);
    QVector<Entrada> todas;
    while (avanzar(consulta)) {
        const QString nombre = textoDe(celda, 3);
        const QString clase = textoDe(celda, 4);
        const bool vinculada = clase == u"SYNONYM" || clase == u"LINK";
        // "~TMPCLP...": tables deleted since the file was last compacted.
        if ((clase == u"TABLE" || vinculada) && !nombre.startsWith(u"MSys") && !nombre.startsWith(u'~'))
            todas << Entrada{nombre, vinculada};
    }
    return todas;
}

qint64 Base::contar(const QString &tabla) const
{
    const Handle consulta = ejecutar(QStringLiteral("SELECT COUNT(*) FROM %1").arg(citada(tabla)));
    Cell celda(consulta);
    // As a text: some drivers write a count so, whatever they are asked for.
    bool ok = false;
    const qint64 filas = avanzar(consulta) && celda.pieces(1, SQL_C_CHAR) ? celda.data().toLongLong(&ok) : 0;
    if (!ok)
        throw Failed{};
    return filas;
}

std::vector<Base::Indice> Base::indices(const QString &tabla) const
{
    // Not every driver knows them, and some that do not say that all went well.
    constexpr SQLSMALLINT columnaDelNombre = 9;
    SQLSMALLINT columnas = 0;
    const Handle consulta = sentencia();
    if (!SQL_SUCCEEDED(SQLStatisticsW(
            consulta.get(), nullptr, 0, nullptr, 0, odbc::wide(tabla), SQL_NTS, SQL_INDEX_ALL, SQL_QUICK))
        || !SQL_SUCCEEDED(SQLNumResultCols(consulta.get(), &columnas)) || columnas < columnaDelNombre)
        return {}; // they only make searches faster, and the tables that the program knows have theirs
    Cell celda(consulta);
    std::vector<Indice> todos;
    while (avanzar(consulta)) {
        SQLSMALLINT repite = SQL_TRUE;
        const bool dice = celda.fixed(4, SQL_C_SSHORT, &repite, sizeof repite);
        const QString nombre = textoDe(celda, 6);
        const QString columna = textoDe(celda, columnaDelNombre);
        if (!dice || nombre.isEmpty()) // the row that tells of the table itself
            continue;
        // The rows of one come together, in the order of its columns.
        if (todos.empty() || todos.back().nombre != nombre)
            todos.push_back({nombre, {}, repite == SQL_FALSE});
        todos.back().columnas << columna;
    }
    return todos;
}

/// With the places of their columns, each set of columns once.
void Base::ubicar(const std::vector<Indice> &indices, TablaVieja &tabla)
{
    for (const Indice &indice : indices) {
        IndiceViejo viejo{{}, indice.unico, indice.nombre.compare(u"PrimaryKey", Qt::CaseInsensitive) == 0};
        for (const QString &columna : indice.columnas)
            viejo.columnas << tabla.columna(columna);
        const bool visto = std::any_of(tabla.indices.cbegin(), tabla.indices.cend(), [&](const IndiceViejo &otro) {
            return otro.columnas == viejo.columnas;
        });
        if (!visto && !viejo.columnas.contains(-1))
            tabla.indices << viejo;
    }
}

Base::Columnas Base::describir(const Handle &consulta, TablaVieja &tabla)
{
    SQLSMALLINT cantidad = 0;
    consulta.check(SQLNumResultCols(consulta.get(), &cantidad));
    Columnas columnas;
    for (SQLUSMALLINT c = 1; c <= SQLUSMALLINT(cantidad); ++c) {
        SQLWCHAR nombre[256] = {}, clase[128] = {};
        SQLSMALLINT largo = 0, decimales = 0, nula = 0;
        SQLULEN tamano = 0;
        SQLLEN sola = SQL_FALSE;
        Lectura columna;
        consulta.check(
            SQLDescribeColW(consulta.get(), c, nombre, 256, &largo, &columna.sqlTipo, &tamano, &decimales, &nula));
        (void)SQLColAttributeW(
            consulta.get(), c, SQL_DESC_TYPE_NAME, clase, SQLSMALLINT(sizeof clase), &largo, nullptr);
        (void)SQLColAttributeW(consulta.get(), c, SQL_DESC_AUTO_UNIQUE_VALUE, nullptr, 0, nullptr, &sola);
        columna.tipo = tipoDe(columna.sqlTipo, entero(clase));
        columnas.push_back(columna);
        tabla.columnas << ColumnaVieja{
            entero(nombre),
            columna.tipo,
            columna.tipo == jet::Tipo::Texto ? int(qMin(tamano, SQLULEN(0xFFFF))) : 0,
            sola == SQL_TRUE && columna.tipo == jet::Tipo::Largo};
    }
    return columnas;
}

void Base::leerCelda(Cell &celda, SQLUSMALLINT numero, const Lectura &columna, Valor &valor)
{
    using Clase = Valor::Clase;
    valor = {};
    const auto fijo = [&](SQLSMALLINT tipo, auto leido, const auto &poner) {
        if (celda.fixed(numero, tipo, &leido, sizeof leido))
            poner(leido);
    };
    const auto real = [&](Clase clase) {
        return [&valor, clase](auto leido) {
            valor.clase = clase;
            valor.real = double(leido);
        };
    };
    switch (columna.tipo) {
    case jet::Tipo::Logico:
        valor.clase = Clase::Logico; // Access knows no Null there
        fijo(SQL_C_BIT, SQLCHAR(0), [&](SQLCHAR leido) { valor.entero = leido != 0; });
        return;
    case jet::Tipo::Byte:
    case jet::Tipo::Entero:
    case jet::Tipo::Largo:
        fijo(SQL_C_SLONG, SQLINTEGER(0), [&](SQLINTEGER leido) {
            valor.clase = Clase::Entero;
            valor.entero = leido;
        });
        return;
    case jet::Tipo::Simple: fijo(SQL_C_FLOAT, SQLREAL(0), real(Clase::Simple)); return;
    case jet::Tipo::Doble: fijo(SQL_C_DOUBLE, SQLDOUBLE(0), real(Clase::Doble)); return;
    case jet::Tipo::Fecha:
        try {
            fijo(SQL_C_TYPE_TIMESTAMP, SQL_TIMESTAMP_STRUCT{}, [&](const SQL_TIMESTAMP_STRUCT &leida) {
                ponerFecha(valor, leida);
            });
        } catch (const Failed &falla) {
            // 22xxx: what the cell holds is no date.
            if (falla.diagnostics.isEmpty() || !falla.diagnostics.constFirst().state.startsWith(u"22"))
                throw;
            ponerFecha(valor, {});
        }
        return;
    case jet::Tipo::Guid:
        fijo(SQL_C_GUID, SQLGUID{}, [&](const SQLGUID &leido) {
            valor.clase = Clase::Texto;
            valor.datos = QByteArray::fromStdString(
                jet::textoDeGuid({reinterpret_cast<const std::uint8_t *>(&leido), sizeof leido}));
        });
        return;
    case jet::Tipo::Moneda:
    case jet::Tipo::Decimal: {
        if (!celda.pieces(numero, SQL_C_CHAR))
            return;
        const auto monto = columna.tipo == jet::Tipo::Moneda ? diezmilesimos(celda.data()) : std::nullopt;
        valor.clase = monto ? Clase::Moneda : Clase::Decimal;
        valor.entero = monto.value_or(0);
        if (!monto)
            valor.datos = QByteArray(celda.data()).replace(',', '.').trimmed();
        return;
    }
    case jet::Tipo::Binario:
    case jet::Tipo::Ole:
        if (celda.pieces(numero, SQL_C_BINARY)) {
            valor.clase = Clase::Bytes;
            valor.datos = celda.data();
        }
        return;
    case jet::Tipo::Texto:
    case jet::Tipo::Memo: break;
    }
    if (celda.pieces(numero, SQL_C_WCHAR))
        ponerTexto(valor, celda.data());
}

bool Base::leer(const QString &nombre, Receptor &receptor) const
{
    TablaVieja tabla;
    tabla.nombre = nombre;
    tabla.filas = contar(nombre);
    // One question after another: not every driver goes on with a second while the first is being read.
    const std::vector<Indice> hallados = indices(nombre);
    const Handle consulta = ejecutar(QStringLiteral("SELECT * FROM %1").arg(citada(nombre)));
    const Columnas columnas = describir(consulta, tabla);
    ubicar(hallados, tabla);
    receptor.empezar(tabla);
    Cell celda(consulta);
    std::vector<Valor> fila(columnas.size());
    while (avanzar(consulta)) {
        for (std::size_t c = 0; c < columnas.size(); ++c)
            leerCelda(celda, SQLUSMALLINT(c + 1), columnas[c], fila[c]);
        receptor.fila(fila);
        if (!receptor.sigue())
            return false;
    }
    receptor.terminar();
    return true;
}

} // namespace

FuenteOdbc::FuenteOdbc(const QString &conexion)
    : m_conexion(conexion)
{
}

bool FuenteOdbc::leer(Receptor &receptor, const QString &solo)
{
    std::unique_ptr<Base> base;
    try {
        base = std::make_unique<Base>(m_conexion);
    } catch (const Failed &falla) {
        throw noAbre(falla);
    }
    QString tabla;
    try {
        for (const Base::Entrada &entrada : base->tablas()) {
            tabla = entrada.nombre;
            if (entrada.vinculada)
                receptor.vinculada(tabla);
            else if ((solo.isEmpty() || solo.compare(tabla, Qt::CaseInsensitive) == 0) && !base->leer(tabla, receptor))
                return false;
        }
    } catch (const Failed &falla) {
        throw Tramos::danio(
            tabla.isEmpty() ? numeros(falla) : QStringLiteral("%1 (tabla '%2')").arg(numeros(falla), tabla));
    }
    return true;
}

} // namespace db::access
