#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace db {
class Connection;
}

namespace agenda {

/// Somebody's telephones, from wherever they are kept.
struct Contacto {
    enum class Origen { Guia, Profesional, Paciente };

    Origen origen = Origen::Guia;
    int numero = 0; ///< `id` of its row; of a patient his `NroHC`
    QString nombre;
    QString telefono;
    QString celular;
    QString laboral; ///< a patient's third number
    QString email;
    QString direccion;
    QString observaciones;

    /// Tells all contacts apart, whatever their origin; never 0.
    [[nodiscard]] qint64 clave() const { return qint64(numero) * 4 + int(origen) + 1; }
    /// Name, telephone, mobile, e-mail, address, observations, origin.
    [[nodiscard]] QStringList textos() const;
};

struct ContactosHallados {
    std::vector<Contacto> contactos; ///< the own list, the professionals, the patients; each by name
    bool hayMas = false; ///< more patients than are shown
};

/// Most patients of one answer.
inline constexpr int topePacientes = 200;
/// Characters from which on patients are searched too: before, it is nearly everybody.
inline constexpr int minimoPacientes = 2;

/// Who has what was typed: words in the name (in any order, and in the other texts of the own list), or digits in a
/// telephone, whatever dashes and blanks it is written with. Blank text: the own list and the professionals.
[[nodiscard]] ContactosHallados
buscarContactos(db::Connection &conexion, const QString &texto, bool conProfesionales, bool conPacientes);

} // namespace agenda
