#pragma once

class QUrl;

namespace agenda {

/// Who opens an address with the person's own programs; tests have their own.
class Enlaces
{
public:
    virtual ~Enlaces() = default;
    /// False when there is no program for it.
    [[nodiscard]] virtual bool abrir(const QUrl &direccion) = 0;
};

/// As the system does it.
class EnlacesDelSistema final : public Enlaces
{
public:
    bool abrir(const QUrl &direccion) override;
};

} // namespace agenda
