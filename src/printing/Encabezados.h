#pragma once

#include "base/Rechazo.h"
#include "db/Connection.h"

#include <QHash>
#include <QVector>

namespace db {
class Entorno;
}

namespace printing {

/// A placeholder as it stands in a header's text, without its angle brackets, and what it stands for.
struct Marcador {
    QString clave;
    QString significado;
};
/// Those of the general header, and those of the patient header.
[[nodiscard]] const QVector<Marcador> &marcadoresGenerales();
[[nodiscard]] const QVector<Marcador> &marcadoresPaciente();

/// What the patient header tells of the patient that is printed for, as texts.
struct DatosPaciente {
    QString apellido;
    QString nombre;
    QString sexo;
    QString dni;
    QString fechanac;
    QString id; ///< the internal number
    QString hc; ///< clinical-history number
};
/// As the register has him; nothing for a patient that is not there. An unknown birth date is empty.
[[nodiscard]] std::optional<DatosPaciente> leerDatosPaciente(db::Connection &conexion, int nrohc);

/// The headers as the practice wrote them, in `Config`.
struct PlantillasEncabezado {
    bool imagen = false; ///< whether prints carry the header picture
    QString general; ///< HTML; an older database may hold RTF or plain text
    QString paciente;

    bool operator==(const PlantillasEncabezado &) const = default;
};
[[nodiscard]] PlantillasEncabezado leerPlantillas(db::Connection &conexion);

/// Writes `encabezadoimagen`, `encabezadogeneral` and `encabezadopaciente` and the entry of the activity log, all or
/// nothing. `administrador`: see db::controlarConfiguracion().
[[nodiscard]] base::Control
guardarPlantillas(db::Entorno &entorno, const PlantillasEncabezado &plantillas, int administrador = 0);

/// The general header filled for the active professional, as HTML: with no professional its placeholders are empty.
/// Empty for an empty template.
[[nodiscard]] QString encabezadoGeneral(db::Entorno &entorno, const QString &plantilla);
/// The patient header filled.
[[nodiscard]] QString encabezadoPaciente(const DatosPaciente &paciente, const QString &plantilla);

} // namespace printing
