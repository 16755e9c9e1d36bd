#pragma once

#include <QString>

#include <memory>

class QProgressDialog;
class QWidget;

namespace ui {

/// How far a long work is, with a button that cancels it. Shown only when the work takes more than a moment; meanwhile
/// its window takes no input, and timers go on.
class Avance
{
public:
    Avance(QWidget *padre, const QString &texto, int total);
    ~Avance();

    /// One more is done; false: cancelled.
    bool paso();
    [[nodiscard]] bool cancelado() const;

private:
    std::unique_ptr<QProgressDialog> m_caja;
    int m_hechos = 0;
};

} // namespace ui
