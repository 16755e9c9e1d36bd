#include "db/odbc/Flavour.h"

namespace db::odbc {

const Flavour &sqlServer()
{
    // LANGUAGE fixes what dates and numbers inside a statement mean, whatever the login's own; TEXTSIZE lets long data
    // come whole; a failed statement undoes itself (XACT_ABORT OFF), as in the embedded engine.
    static const Flavour flavour{
        .options
        = {QStringLiteral("SET LANGUAGE us_english"),
           QStringLiteral("SET DATEFORMAT mdy"),
           QStringLiteral("SET QUOTED_IDENTIFIER ON"),
           QStringLiteral("SET ANSI_NULLS ON"),
           QStringLiteral("SET ANSI_WARNINGS ON"),
           QStringLiteral("SET ANSI_PADDING ON"),
           QStringLiteral("SET ANSI_NULL_DFLT_ON ON"),
           QStringLiteral("SET ARITHABORT ON"),
           QStringLiteral("SET CONCAT_NULL_YIELDS_NULL ON"),
           QStringLiteral("SET NOCOUNT OFF"),
           QStringLiteral("SET XACT_ABORT OFF"),
           QStringLiteral("SET IMPLICIT_TRANSACTIONS OFF"),
           QStringLiteral("SET ROWCOUNT 0"),
           QStringLiteral("SET TEXTSIZE 2147483647"),
           QStringLiteral("SET TRANSACTION ISOLATION LEVEL READ COMMITTED")},
        .waits = QStringLiteral("SET LOCK_TIMEOUT %1"),
        // The rules read, judge and then write (the limit of extra appointments, the next number of a patient): two
        // stations must not both read before either has written. The embedded engine lets one transaction write at a
        // time; here a named lock does, which ends with its transaction.
        .begin
        = QStringLiteral("BEGIN TRANSACTION; DECLARE @turno int; EXEC @turno = sp_getapplock @Resource = 'Vastelo', "
                         "@LockMode = 'Exclusive', @LockOwner = 'Transaction', @LockTimeout = %1; SELECT @turno"),
        .rollback = QStringLiteral("IF @@TRANCOUNT > 0 ROLLBACK TRANSACTION"),
        .insertedSuffix = QStringLiteral("; SELECT SCOPE_IDENTITY()"),
        .insertedQuery = {},
        .openQuery = QStringLiteral("SELECT @@TRANCOUNT"),
        .batchBegin = QStringLiteral("SET XACT_ABORT ON"),
        .batchEnd = QStringLiteral("SET XACT_ABORT OFF"),
        .tables = QStringLiteral("SELECT TABLE_NAME FROM INFORMATION_SCHEMA.TABLES WHERE TABLE_TYPE = 'BASE TABLE' "
                                 "AND TABLE_NAME <> 'sysdiagrams' ORDER BY TABLE_NAME"),
        .columns = QStringLiteral(
            // COLUMNPROPERTY would be shorter; not every server that speaks this language knows what it is asked.
            "SELECT COLUMN_NAME, DATA_TYPE, CHARACTER_MAXIMUM_LENGTH, COLUMN_DEFAULT, CASE WHEN EXISTS (SELECT * FROM "
            "sys.columns s WHERE s.object_id = OBJECT_ID(QUOTENAME(TABLE_SCHEMA) + '.' + QUOTENAME(TABLE_NAME)) AND "
            "s.name = COLUMN_NAME AND s.is_identity = 1) THEN 1 ELSE 0 END FROM INFORMATION_SCHEMA.COLUMNS "
            "WHERE TABLE_NAME = ? ORDER BY ORDINAL_POSITION"),
        .textPrefix = QStringLiteral("N"),
        .dateType = QStringLiteral("datetime"),
        .bytesPrefix = QStringLiteral("0x"),
        .bytesSuffix = {},
        .backslashJoinsLines = true};
    return flavour;
}

const Flavour &postgres()
{
    static const Flavour flavour{
        .options = {QStringLiteral("SET standard_conforming_strings = on")},
        .waits = QStringLiteral("SET lock_timeout = %1"),
        .begin = QStringLiteral("BEGIN; SET LOCAL lock_timeout = %1; SELECT 0 FROM pg_advisory_xact_lock(1)"),
        .rollback = QStringLiteral("ROLLBACK"),
        .insertedSuffix = {},
        .insertedQuery = QStringLiteral("SELECT lastval()"),
        .openQuery = {},
        .batchBegin = {},
        .batchEnd = {},
        .tables = QStringLiteral("SELECT table_name FROM information_schema.tables WHERE table_type = 'BASE TABLE' "
                                 "AND table_schema = 'public' ORDER BY table_name"),
        .columns
        = QStringLiteral("SELECT column_name, data_type, character_maximum_length, column_default, "
                         "CASE WHEN column_default LIKE 'nextval%' THEN 1 ELSE 0 END FROM information_schema.columns "
                         "WHERE table_name = ? ORDER BY ordinal_position"),
        .textPrefix = {},
        .dateType = QStringLiteral("timestamp"),
        .bytesPrefix = QStringLiteral("'\\x"),
        .bytesSuffix = QStringLiteral("'::bytea"),
        .backslashJoinsLines = false};
    return flavour;
}

} // namespace db::odbc
