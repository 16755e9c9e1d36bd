#pragma once

#include "demo/Practica.h"

#include <QStringList>

namespace demo {

/// What a kind of professional is consulted for, does and finds. Reasons and practices are parts of names in the
/// catalogues, diagnoses are categories of the classification.
struct Perfil {
    QStringList motivos;
    QStringList practicas;
    QStringList diagnosticos;
};

[[nodiscard]] const Perfil &perfil(Especialidad especialidad);

/// Rows whose name holds one of the texts, without regard to case; all rows when none does.
[[nodiscard]] std::vector<int> idsDe(const Catalogo &catalogo, const QStringList &partes);

} // namespace demo
