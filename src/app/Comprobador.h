#pragma once

namespace app {

/// The database check and its outcome, for windows that run it before they act.
class Comprobador
{
public:
    virtual ~Comprobador() = default;
    /// Runs the check; on failure the person has been told and false comes back.
    [[nodiscard]] virtual bool verificarBase() = 0;
    /// True once check, upgrade and default professional succeeded and no later check failed.
    [[nodiscard]] virtual bool baseLista() const = 0;
};

} // namespace app
