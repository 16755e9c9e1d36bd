#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace users {

/// A right as the person who gives it sees it: a flag of `Lista Doctores`.
struct Derecho {
    QString columna;
    QString texto;
    QString ayuda = {}; ///< what it reaches, where the text alone does not tell
    bool limita = false; ///< takes something away from who has it
};

struct GrupoDerechos {
    QString titulo;
    std::vector<Derecho> derechos;
};

/// The thirty rights and `aplicaraturnos`, by the part of the practice's work that they belong to.
[[nodiscard]] const std::vector<GrupoDerechos> &derechos();

/// Their columns, in that order.
[[nodiscard]] const QStringList &columnasDeDerechos();

} // namespace users
