#pragma once

// The ODBC C API, and what every use of it needs. Included by this folder's sources and by db/access/FuenteOdbc.cpp
// only.

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#endif
#include <sql.h>
#include <sqlext.h>

#include "db/odbc/Failure.h"

#include <QString>

#include <utility>

namespace db::odbc {

static_assert(sizeof(SQLWCHAR) == sizeof(QChar), "texts travel as UTF-16");

/// A driver's report, before it is an error of ours.
struct Failed {
    Diagnostics diagnostics;
};

[[nodiscard]] Diagnostics diagnosticsOf(SQLSMALLINT type, SQLHANDLE handle);

/// An environment, connection or statement, freed at its end.
class Handle
{
public:
    Handle() = default;
    /// Throws Failed.
    Handle(SQLSMALLINT type, SQLSMALLINT parentType, SQLHANDLE parent);
    ~Handle();
    Handle(Handle &&other) noexcept
        : m_type(other.m_type)
        , m_handle(std::exchange(other.m_handle, SQLHANDLE(SQL_NULL_HANDLE)))
    {
    }
    Handle &operator=(Handle &&other) noexcept
    {
        std::swap(m_type, other.m_type);
        std::swap(m_handle, other.m_handle);
        return *this;
    }

    [[nodiscard]] SQLHANDLE get() const { return m_handle; }
    [[nodiscard]] Diagnostics diagnostics() const { return diagnosticsOf(m_type, m_handle); }
    /// Throws Failed unless the call went well.
    void check(SQLRETURN code) const
    {
        if (!SQL_SUCCEEDED(code))
            throw Failed{diagnostics()};
    }

private:
    SQLSMALLINT m_type = 0;
    SQLHANDLE m_handle = SQL_NULL_HANDLE;
};

[[nodiscard]] inline SQLWCHAR *wide(const QString &text)
{
    return const_cast<SQLWCHAR *>(reinterpret_cast<const SQLWCHAR *>(text.utf16()));
}

/// The names under which drivers are installed. Throws Failed.
[[nodiscard]] QStringList installedDrivers();

} // namespace db::odbc
