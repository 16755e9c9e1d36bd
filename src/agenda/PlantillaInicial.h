#pragma once

namespace db {
class Connection;
}

namespace agenda {

/// Hours for the sample professional of a fresh installation, so that the first day can be booked before anything is
/// set up: every day 08:00-12:00 and 16:00-20:00 in slots of 20 minutes, without limit of dates or extra appointments.
/// Does nothing when the professional has hours. Throws db::Error.
void asegurarPlantillaInicial(db::Connection &conexion, int iddoctor);

} // namespace agenda
