#pragma once

#include <QString>
#include <QVector>

namespace db {
class Entorno;
}

namespace app {

/// A line of the about box.
struct DatoTecnico {
    QString nombre;
    QString valor;
};

/// The database in use, its size and this computer. Works without a database too.
[[nodiscard]] QVector<DatoTecnico> datosDelSistema(db::Entorno &entorno);

/// What the program is made with, each with its licence.
[[nodiscard]] QVector<DatoTecnico> bibliotecas();

/// All of it and what else helps whoever is asked for help, as text. Holds nothing of a patient, nor a password.
[[nodiscard]] QString textoTecnico(db::Entorno &entorno);

} // namespace app
