#include "db/odbc/Odbc.h"

#include <QStringList>

namespace db::odbc {

Diagnostics diagnosticsOf(SQLSMALLINT type, SQLHANDLE handle)
{
    Diagnostics all;
    for (SQLSMALLINT record = 1; record <= 16; ++record) {
        SQLWCHAR state[6] = {};
        SQLINTEGER number = 0;
        SQLWCHAR text[1024] = {};
        SQLSMALLINT length = 0;
        if (!SQL_SUCCEEDED(SQLGetDiagRecW(type, handle, record, state, &number, text, 1024, &length)))
            break;
        all.push_back(
            {QString::fromUtf16(reinterpret_cast<const char16_t *>(state)),
             int(number),
             QString::fromUtf16(reinterpret_cast<const char16_t *>(text))});
    }
    return all;
}

Handle::Handle(SQLSMALLINT type, SQLSMALLINT parentType, SQLHANDLE parent)
    : m_type(type)
{
    if (!SQL_SUCCEEDED(SQLAllocHandle(type, parent, &m_handle)))
        throw Failed{parentType == 0 ? Diagnostics() : diagnosticsOf(parentType, parent)};
}

Handle::~Handle()
{
    if (m_handle != SQL_NULL_HANDLE)
        SQLFreeHandle(m_type, m_handle);
}

QStringList installedDrivers()
{
    const Handle environment(SQL_HANDLE_ENV, 0, SQL_NULL_HANDLE);
    environment.check(SQLSetEnvAttr(environment.get(), SQL_ATTR_ODBC_VERSION, SQLPOINTER(SQL_OV_ODBC3), 0));
    QStringList names;
    SQLWCHAR name[256] = {};
    SQLWCHAR attributes[16] = {};
    SQLSMALLINT length = 0;
    SQLSMALLINT attributesLength = 0;
    SQLUSMALLINT direction = SQL_FETCH_FIRST;
    while (SQL_SUCCEEDED(
        SQLDriversW(environment.get(), direction, name, 256, &length, attributes, 16, &attributesLength))) {
        names << QString::fromUtf16(reinterpret_cast<const char16_t *>(name));
        direction = SQL_FETCH_NEXT;
    }
    return names;
}

} // namespace db::odbc
