#pragma once

#include <QDateTime>
#include <QStringList>
#include <QVector>

namespace db::access {

/// What a conversion carried and what it did not, for the person.
struct Informe {
    struct Tabla {
        QString nombre;
        qint64 filas = 0;
        int columnas = 0;
        bool delSistema = false;
        QStringList conservadas = {}; ///< columns that the system does not have
        QStringList avisos = {};
    };
    QVector<Tabla> tablas;
    QStringList salteadas; ///< stayed behind because the system does not use them
    QStringList vinculadas; ///< stayed behind because their rows are in another file
    QStringList avisos; ///< of the whole
    qint64 apartados = 0; ///< values also kept in tablaApartados
    qint64 horarios = 0; ///< weekly templates made of the old hours
    QString original; ///< path of the untouched file
    QString archivo; ///< path of this report; empty when it could not be written

    [[nodiscard]] qint64 filas() const;
    /// The whole report, for a file.
    [[nodiscard]] QString texto(const QDateTime &cuando) const;
    /// The few lines for a message.
    [[nodiscard]] QString resumen() const;
    /// One line, for the activity log.
    [[nodiscard]] QString renglon() const;
};

/// Where values lie that their column cannot hold exactly: table, row, column, value, why.
inline const QString tablaApartados = QStringLiteral("Importacion de Access");

} // namespace db::access
