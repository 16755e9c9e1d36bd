#pragma once

#include <QDateTime>

namespace base {

/// Today and now, in local time. Nothing else in the program asks the system for them.
class Clock
{
public:
    virtual ~Clock() = default;
    [[nodiscard]] virtual QDateTime now() const = 0;
    [[nodiscard]] QDate today() const { return now().date(); }
};

/// The computer's own clock.
class SystemClock final : public Clock
{
public:
    [[nodiscard]] QDateTime now() const override { return QDateTime::currentDateTime(); }
};

} // namespace base
