#pragma once

#include <QString>

#include <utility>

namespace demo {

class Azar;

/// A town with what addresses and telephones there look like.
struct Localidad {
    QString nombre;
    QString provincia;
    QString caracteristica; ///< area code of telephones, "0341"
    QString cp;
};

/// Surname in capitals, as the practice writes them.
[[nodiscard]] QString apellido(Azar &azar);
/// One or two given names in capitals, of those usual at that year of birth.
[[nodiscard]] QString nombres(Azar &azar, bool mujer, int anio);
[[nodiscard]] QString domicilio(Azar &azar);
[[nodiscard]] const Localidad &localidad(Azar &azar);
/// "0341 4551234"
[[nodiscard]] QString telefonoFijo(Azar &azar, const Localidad &localidad);
/// "0341 156551234"
[[nodiscard]] QString telefonoCelular(Azar &azar, const Localidad &localidad);
/// A document number such as those given to people born that year.
[[nodiscard]] int documento(Azar &azar, int anio);
/// Letters without accents, for addresses of e-mail.
[[nodiscard]] QString sinAcentos(const QString &texto);

} // namespace demo
