#pragma once

#include <QtGlobal>

class QMimeData;

namespace agenda {

/// An appointment on its way between the day's grid and the calendar. It means something to this very program only:
/// another one may look at another database.
[[nodiscard]] QMimeData *mimeDeTurno(qint64 id);
/// The `id` it carries; 0 for anything else.
[[nodiscard]] qint64 turnoDe(const QMimeData *mime);

} // namespace agenda
