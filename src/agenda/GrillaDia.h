#pragma once

#include "agenda/Plantilla.h"

#include <vector>

namespace agenda {

/// The day's slot table: start times in the order of the working hours, morning first. A start time comes before the
/// end of its half of the day; the last slot may run past that end.
class GrillaDia
{
public:
    static constexpr int maximo = 289;
    static constexpr int celdaCantidad = 290;

    /// No slots.
    GrillaDia() = default;
    explicit GrillaDia(const Jornada &jornada);

    [[nodiscard]] int cantidad() const { return int(m_horas.size()); }
    [[nodiscard]] const std::vector<QTime> &horas() const { return m_horas; }
    /// Whether an appointment at this hour (to the minute) is a regular one.
    [[nodiscard]] bool contiene(QTime hora) const;
    /// Cells 1 to cantidad() hold "hh:nn", cell 290 the count, the others nothing.
    [[nodiscard]] QString celda(int numero) const;

private:
    void agregar(const std::optional<QTime> &desde, const std::optional<QTime> &hasta, int duracion);

    std::vector<QTime> m_horas;
};

/// The slots of a date under the template that applies to it; without one there are none.
[[nodiscard]] GrillaDia grillaDe(const std::optional<Plantilla> &plantilla, QDate fecha);

/// "hh:nn".
[[nodiscard]] QString horaTexto(QTime hora);
/// Without seconds: the tables count appointments to the minute.
[[nodiscard]] QTime alMinuto(QTime hora);

} // namespace agenda
