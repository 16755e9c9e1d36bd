#pragma once

#include "db/Schema.h"

namespace clinical {

/// Consultations with their sections, antecedents, pregnancies, ultrasound, vaccines, certificates and the other
/// clinical records of a patient, with the lists they choose from.
[[nodiscard]] db::Schema esquema();

} // namespace clinical
