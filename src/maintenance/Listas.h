#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>
#include <QVector>

#include <utility>

namespace maintenance {

/// A place where the ids of a list's entries stand.
struct UsoLista {
    /// What becomes of a record that would say the same as another one once its entry is replaced by that one's.
    enum class Repetido {
        Queda, ///< both stay
        SeDescarta, ///< it goes: the other one counts
        SeRechaza ///< the replacement is refused: a record would hide another one
    };

    QString tabla;
    QStringList columnas; ///< a record that names the entry in several of them counts once
    QString uno; ///< "paciente"
    QString varios; ///< "pacientes"
    /// SQL, equal in both dialects, that tells the records which use this list; empty: all of the table.
    QString condicion = {};
    /// Columns whose values a record may hold only once per entry; only where `columnas` is one.
    QStringList clave = {};
    Repetido repetido = Repetido::Queda;
};

/// A column of a list beside its name and priority.
struct CampoLista {
    enum class Clase {
        Texto,
        Porcentaje, ///< a number of 0 or more; empty counts as 0
        Opcion, ///< one of `opciones`
        Entero, ///< from `minimo` to `maximo`
        Meses ///< a whole number of 0 or more, or nothing
    };

    QString columna;
    QString rotulo; ///< beside its field, mnemonic included
    /// Of the grid, in the form that ui::leerEncabezado() reads, without "|". The ages share the first one's column.
    QString encabezado;
    Clase clase = Clase::Texto;
    QVector<std::pair<int, QString>> opciones = {};
    int minimo = 0;
    int maximo = 0;
    /// Two entries of one name may differ in it.
    bool distingue = false;
};

/// A lookup list that the person maintains: a table with `id`, a name column and `prioridad`.
struct Lista {
    QString tabla;
    QString titulo; ///< "Coberturas Médicas"
    QString grupo; ///< heading under which it is shown
    QString columnaNombre;
    QVector<CampoLista> campos;
    QVector<UsoLista> usos;
    /// The records that use it may do without an entry (0).
    bool vaciable = false;
};

/// Every list, in the order in which they are shown; those of one group stand together.
[[nodiscard]] const QVector<Lista> &listas();
/// The list of that table; null when it is none of them.
[[nodiscard]] const Lista *lista(QStringView tabla);

} // namespace maintenance
