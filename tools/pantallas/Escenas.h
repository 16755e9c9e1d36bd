#pragma once

#include "Escena.h"

namespace pantallas {

// The pictures by subject, in the order of the documents.
[[nodiscard]] std::vector<Pantalla> escenasDeSistema();
[[nodiscard]] std::vector<Pantalla> escenasDeUsuarios();
[[nodiscard]] std::vector<Pantalla> escenasDeAgenda();
[[nodiscard]] std::vector<Pantalla> escenasDeTodasLasAgendas();
[[nodiscard]] std::vector<Pantalla> escenasDeReservas();
[[nodiscard]] std::vector<Pantalla> escenasDePacientes();
[[nodiscard]] std::vector<Pantalla> escenasDeFichas();
[[nodiscard]] std::vector<Pantalla> escenasDeMantenimiento();

/// On the way to a new patient, the reduced form filled in.
void darDeAlta(Escena &escena);

} // namespace pantallas
