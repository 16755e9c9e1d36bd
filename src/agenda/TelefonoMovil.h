#pragma once

#include <QString>

#include <optional>

namespace agenda {

/// A mobile telephone as Argentines write it, in the form in which it is called from anywhere: digits alone, 54, 9,
/// area code and number ("011 15-4321-5678" is "5491143215678"). Nothing unless it is sure: the area code must be
/// there, area code and number must make ten digits without the trunk 0 and the local 15, and a telephone of another
/// country is not touched. Whether ten bare digits are a mobile cannot be seen; they are taken for one.
///
/// Source: Plan Fundamental de Numeración Nacional (1997) and the list of area codes of the Ente Nacional de
/// Comunicaciones: 11 has two digits, those beginning with 2 or 3 have three or four.
[[nodiscard]] std::optional<QString> movilInternacional(const QString &telefono);

/// Whether a telephone is written as a mobile: with a 15 after the area code, or the 9 before it.
[[nodiscard]] bool escritoComoMovil(const QString &telefono);

/// Where a patient's messages go: the mobile, else the home telephone when it is written as a mobile.
[[nodiscard]] std::optional<QString> movilDe(const QString &celular, const QString &fijo);

} // namespace agenda
