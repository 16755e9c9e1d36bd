#pragma once

#include "jet/Protocolo.h"
#include "jet/Tabla.h"

#include <QByteArray>
#include <QString>
#include <QVector>

#include <functional>
#include <memory>
#include <vector>

namespace db::access {

/// A cell as the old file holds it, nothing rounded but the parts of a second.
struct Valor {
    using Clase = jet::protocolo::Celda;
    Clase clase = Clase::Nulo;
    qint64 entero = 0; ///< Entero; Logico 1 or 0; Fecha: seconds since 30/12/1899; Moneda: ten-thousandths
    double real = 0; ///< Simple, Doble, FechaRota
    QByteArray datos = {}; ///< UTF-8 of a text or Decimal, or bytes
    QByteArray crudo = {}; ///< of a TextoRoto

    [[nodiscard]] bool esNulo() const { return clase == Clase::Nulo; }
    [[nodiscard]] bool esTexto() const { return clase == Clase::Texto || clase == Clase::TextoRoto; }
    /// For a person, exact.
    [[nodiscard]] QString descripcion() const;
};

struct ColumnaVieja {
    QString nombre;
    jet::Tipo tipo = jet::Tipo::Texto;
    int tamano = 0; ///< characters of a text
    bool autonumerica = false;
};

struct IndiceViejo {
    QVector<int> columnas; ///< positions in TablaVieja::columnas
    bool unico = false;
    bool primario = false;
};

struct TablaVieja {
    QString nombre;
    QVector<ColumnaVieja> columnas;
    QVector<IndiceViejo> indices;
    qint64 filas = 0; ///< as its definition says
    qint64 ultimoNumero = 0; ///< last value of its autonumber

    /// Without regard to case; -1 when there is none.
    [[nodiscard]] int columna(QStringView nombre) const;
};

/// Who takes what is read, table by table and row by row.
class Receptor
{
public:
    virtual ~Receptor() = default;
    /// A table that the file only links to: its rows are elsewhere.
    virtual void vinculada(const QString &nombre) { Q_UNUSED(nombre) }
    virtual void empezar(const TablaVieja &tabla) = 0;
    virtual void fila(const std::vector<Valor> &celdas) = 0;
    virtual void terminar() { }
    /// Asked every moment, also while nothing comes; false ends the reading.
    [[nodiscard]] virtual bool sigue() { return true; }
};

/// An old Access database that is being read. A process of its own does it (LectorProceso), from the file's pages or
/// through an ODBC driver (FuenteOdbc).
class Fuente
{
public:
    virtual ~Fuente() = default;
    /// All tables of the user, or only the one called `solo` (plain letters). False when the receiver ended it. Throws
    /// db::Error: Corrupt when the file cannot be read, CannotOpen when there is nothing to read it with.
    virtual bool leer(Receptor &receptor, const QString &solo = {}) = 0;
};

using AbrirFuente = std::function<std::unique_ptr<Fuente>(const QString &archivo)>;

} // namespace db::access
