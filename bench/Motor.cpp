#include "Motor.h"

#include "db/Connection.h"
#include "db/engine/EmbeddedEngine.h"
#include "db/sql/Translate.h"

#include <sqlite3.h>

namespace medicion {

namespace {

void exigir(bool bien, sqlite3 *base)
{
    if (!bien)
        qFatal("motor: %s", sqlite3_errmsg(base));
}

} // namespace

Motor::Motor(db::Connection &conexion)
    : m_base(dynamic_cast<db::EmbeddedEngine &>(conexion.engine()).handle())
{
}

int Motor::ejecutar(const QByteArray &sql, const std::vector<qint64> &valores)
{
    sqlite3_stmt *sentencia = nullptr;
    exigir(sqlite3_prepare_v2(m_base, sql.constData(), int(sql.size()), &sentencia, nullptr) == SQLITE_OK, m_base);
    for (size_t i = 0; i < valores.size(); ++i)
        exigir(sqlite3_bind_int64(sentencia, int(i) + 1, valores[i]) == SQLITE_OK, m_base);
    int filas = 0, codigo = 0;
    quint64 leidos = 0;
    const int columnas = sqlite3_column_count(sentencia);
    while ((codigo = sqlite3_step(sentencia)) == SQLITE_ROW) {
        ++filas;
        for (int c = 0; c < columnas; ++c)
            if (const unsigned char *texto = sqlite3_column_text(sentencia, c))
                leidos += *texto;
    }
    exigir(codigo == SQLITE_DONE, m_base);
    sqlite3_finalize(sentencia);
    [[maybe_unused]] static volatile quint64 sumidero;
    sumidero = leidos; // what was read counts as used
    return filas;
}

QByteArray Motor::traducida(const QString &sql) { return db::sql::fromAccess(sql).text; }

void Motor::abrirYCerrar(const QString &archivo, const QString &clave)
{
    sqlite3 *base = nullptr;
    exigir(sqlite3_open_v2(archivo.toUtf8().constData(), &base, SQLITE_OPEN_READWRITE, nullptr) == SQLITE_OK, base);
    const QByteArray llave = "PRAGMA cipher='sqlcipher'; PRAGMA legacy=4; PRAGMA key='" + clave.toUtf8() + "'";
    exigir(sqlite3_exec(base, llave.constData(), nullptr, nullptr, nullptr) == SQLITE_OK, base);
    exigir(sqlite3_exec(base, "SELECT count(*) FROM sqlite_master", nullptr, nullptr, nullptr) == SQLITE_OK, base);
    sqlite3_close(base);
}

} // namespace medicion
