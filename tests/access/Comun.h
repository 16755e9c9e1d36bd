#pragma once

#include "app/Esquema.h"
#include "db/Connection.h"
#include "db/access/Conversion.h"
#include "db/access/LectorProceso.h"
#include "db/engine/EmbeddedEngine.h"
#include "support/BaseDePrueba.h"
#include "support/Falla.h"
#include "support/Prueba.h"

#include <QTemporaryDir>

namespace prueba {

inline const auto clave = QStringLiteral("kestrel428");

inline QString muestra(const QString &nombre) { return QStringLiteral(VASTELO_ACCESS "/") + nombre; }

inline QByteArray leer(const QString &archivo)
{
    QFile file(archivo);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline void escribir(const QString &archivo, const QByteArray &bytes)
{
    QFile file(archivo);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

inline std::unique_ptr<db::access::Fuente> fuente(const QString &archivo)
{
    return std::make_unique<db::access::LectorProceso>(archivo, QStringLiteral(VASTELO_LECTOR));
}

/// Why a reading ended; empty when it went through.
inline QString fallaAlLeer(db::access::Fuente &fuente)
{
    class Nadie final : public db::access::Receptor
    {
    public:
        void empezar(const db::access::TablaVieja &) override { }
        void fila(const std::vector<db::access::Valor> &) override { }
    } nadie;
    const auto falla = soporte::fallaDe([&] { (void)fuente.leer(nadie); });
    return falla ? falla->description() : QString();
}

/// Rows of a file of tests/access/datos, cell by cell.
inline QVector<QStringList> filasDe(const QString &nombre)
{
    QVector<QStringList> filas;
    for (const QString &linea : QString::fromUtf8(leer(muestra(nombre))).split(u'\n', Qt::SkipEmptyParts))
        filas << linea.split(u'\t');
    return filas;
}

/// Counts how often it is asked, and can say no.
class Seguimiento final : public db::access::Seguimiento
{
public:
    int veces = 0;
    int hasta = -1;
    bool avanzar(const QString &, qint64, qint64) override { return veces++ != hasta; }
};

/// A folder with one of the samples as its Datos.mdb.
struct Carpeta {
    QTemporaryDir dir;
    QByteArray antes;

    explicit Carpeta(const QString &nombre)
        : antes(leer(muestra(nombre)))
    {
        escribir(archivo(), antes);
    }
    [[nodiscard]] QString ruta(const QString &nombre) const { return dir.filePath(nombre); }
    [[nodiscard]] QString archivo() const { return ruta(QStringLiteral("Datos.mdb")); }
    [[nodiscard]] QString original() const { return ruta(QStringLiteral("Datos (Access original).mdb")); }
    [[nodiscard]] QStringList nombres() const { return QDir(dir.path()).entryList(QDir::Files | QDir::Hidden); }
    [[nodiscard]] db::access::Pedido pedido() const
    {
        db::access::Pedido pedido;
        pedido.archivo = archivo();
        pedido.clave = clave;
        pedido.rutinas = app::esquemaPorRutinas();
        pedido.abrir = fuente;
        pedido.ahora = QDateTime(QDate(2026, 11, 22), QTime(9, 0));
        return pedido;
    }
};

} // namespace prueba
