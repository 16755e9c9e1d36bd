#include "db/odbc/Failure.h"

#include <QRegularExpression>

#include <algorithm>

namespace db::odbc {

namespace {

using Kind = Error::Kind;

struct Meaning {
    Kind kind;
    const char *text;
};

// By the server's number: it says more than the class of the failure.
struct ByNumber {
    int number;
    Meaning meaning;
};

constexpr auto busyText = "Otra terminal está ocupando esos datos. Espere un momento e intente nuevamente.";
constexpr auto deadlockText = "Otra terminal estaba cambiando los mismos datos: lo que se estaba guardando se deshizo. "
                              "Intente nuevamente.";
constexpr auto rightsText
    = "El usuario del servidor no tiene permiso para hacer esto. Consulte con quien administra SQL Server.";
constexpr auto loginText = "El servidor no aceptó el usuario o la clave. Verifíquelos en el menú 'Red' del programa.";
constexpr auto databaseText = "El servidor no tiene la base de datos, o el usuario no puede abrirla.";
constexpr auto fullText = "El servidor no tiene más lugar para la base de datos: no se pudo guardar.";
constexpr auto corruptText
    = "El servidor informa que la base de datos está dañada. Avise a quien administra SQL Server.";
constexpr auto duplicateText = "Ya existe un registro con la misma clave.";
constexpr auto constraintText = "El registro no cumple con lo que la base de datos exige.";
constexpr auto longText = "Un texto es demasiado largo para su campo.";
constexpr auto rangeText = "Un número o una fecha está fuera de los límites del campo.";
constexpr auto syntaxText = "El servidor no entendió una sentencia del programa.";
constexpr auto slowText = "El servidor tardó demasiado en responder. Intente nuevamente.";
constexpr auto readOnlyText = "La base de datos del servidor es de sólo lectura: no se puede guardar.";
constexpr auto tableText = "La base de datos no tiene una tabla que el programa necesita.";
constexpr auto columnText = "La base de datos no tiene una columna que el programa necesita.";

constexpr ByNumber numbers[] = {
    {102, {Kind::Syntax, syntaxText}},
    {156, {Kind::Syntax, syntaxText}},
    {207, {Kind::NoSuchColumn, columnText}},
    {208, {Kind::NoSuchTable, tableText}},
    {4902, {Kind::NoSuchTable, tableText}},
    {220, {Kind::General, rangeText}},
    {232, {Kind::General, rangeText}},
    {241, {Kind::General, rangeText}},
    {242, {Kind::General, rangeText}},
    {8115, {Kind::General, rangeText}},
    {2628, {Kind::General, longText}},
    {8152, {Kind::General, longText}},
    {229, {Kind::General, rightsText}},
    {230, {Kind::General, rightsText}},
    {262, {Kind::General, rightsText}},
    {297, {Kind::General, rightsText}},
    {300, {Kind::General, rightsText}},
    {1088, {Kind::General, rightsText}},
    {515, {Kind::Constraint, constraintText}},
    {547, {Kind::Constraint, constraintText}},
    {1505, {Kind::Constraint, duplicateText}},
    {2601, {Kind::Constraint, duplicateText}},
    {2627, {Kind::Constraint, duplicateText}},
    {823, {Kind::Corrupt, corruptText}},
    {824, {Kind::Corrupt, corruptText}},
    {825, {Kind::Corrupt, corruptText}},
    {1101, {Kind::Full, fullText}},
    {1105, {Kind::Full, fullText}},
    {9002, {Kind::Full, fullText}},
    {1205, {Kind::Busy, deadlockText}},
    {1222, {Kind::Busy, busyText}},
    {3906, {Kind::ReadOnly, readOnlyText}},
    {911, {Kind::CannotOpen, databaseText}},
    {916, {Kind::CannotOpen, databaseText}},
    {922, {Kind::CannotOpen, databaseText}}, // recovering, in use by one, restoring, offline
    {924, {Kind::CannotOpen, databaseText}},
    {927, {Kind::CannotOpen, databaseText}},
    {942, {Kind::CannotOpen, databaseText}},
    {4060, {Kind::CannotOpen, databaseText}},
    {4064, {Kind::CannotOpen, databaseText}},
    {18452, {Kind::CannotOpen, loginText}},
    {18456, {Kind::CannotOpen, loginText}},
    {18470, {Kind::CannotOpen, loginText}},
    {18486, {Kind::CannotOpen, loginText}},
    {18487, {Kind::CannotOpen, "La clave del usuario del servidor venció: hay que cambiarla en SQL Server."}},
    {18488, {Kind::CannotOpen, "La clave del usuario del servidor venció: hay que cambiarla en SQL Server."}},
};

// By the SQLSTATE, or its beginning; the longer first.
struct ByState {
    const char *state;
    Meaning meaning;
};

constexpr ByState states[] = {
    {"40001", {Kind::Busy, deadlockText}},       {"40P01", {Kind::Busy, deadlockText}},
    {"55P03", {Kind::Busy, busyText}},           {"57014", {Kind::Busy, slowText}},
    {"HYT00", {Kind::Busy, slowText}},           {"HYT01", {Kind::Busy, slowText}},
    {"S1T00", {Kind::Busy, slowText}},           {"42S02", {Kind::NoSuchTable, tableText}},
    {"42P01", {Kind::NoSuchTable, tableText}},   {"42S22", {Kind::NoSuchColumn, columnText}},
    {"42703", {Kind::NoSuchColumn, columnText}}, {"42501", {Kind::General, rightsText}},
    {"42601", {Kind::Syntax, syntaxText}},       {"22001", {Kind::General, longText}},
    {"22003", {Kind::General, rangeText}},       {"22007", {Kind::General, rangeText}},
    {"22008", {Kind::General, rangeText}},       {"23505", {Kind::Constraint, duplicateText}},
    {"3D000", {Kind::CannotOpen, databaseText}}, {"28", {Kind::CannotOpen, loginText}},
    {"23", {Kind::Constraint, constraintText}},  {"53", {Kind::Full, fullText}},
    {"42", {Kind::Syntax, syntaxText}},          {"25006", {Kind::ReadOnly, readOnlyText}},
};

/// The numbers under which FreeTDS and the server itself tell that the connection ended.
constexpr int lostNumbers[] = {596, 6005, 10053, 10054, 17142, 20002, 20004, 20006, 20009, 20017, 20020, 20047};

const Meaning *meaningOf(const Diagnostic &diagnostic)
{
    for (const ByNumber &known : numbers)
        if (known.number == diagnostic.number)
            return &known.meaning;
    for (const ByState &known : states)
        if (diagnostic.state.startsWith(QLatin1String(known.state)))
            return &known.meaning;
    return nullptr;
}

/// The quoted name in "Invalid object name 'x'." in whatever language, when it looks like a name and nothing else.
QString nameIn(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("['\"]([\\w .#-]{1,128})['\"]"));
    return pattern.match(text).captured(1);
}

} // namespace

bool tellsLost(const Diagnostics &diagnostics)
{
    return std::any_of(diagnostics.begin(), diagnostics.end(), [](const Diagnostic &d) {
        return d.state.startsWith(QLatin1String("08")) || d.state.startsWith(QLatin1String("57P"))
            || std::find(std::begin(lostNumbers), std::end(lostNumbers), d.number) != std::end(lostNumbers);
    });
}

bool tellsAnswer(const Diagnostics &diagnostics)
{
    // The driver's own are 0, those of its library 20000 and on, those of the network 10000 and on.
    return std::any_of(diagnostics.begin(), diagnostics.end(), [](const Diagnostic &d) {
        return d.number > 50 && (d.number < 10000 || d.number > 11999) && (d.number < 20000 || d.number > 20999);
    });
}

bool tellsNothing(const Diagnostics &diagnostics)
{
    // A wait that ran out is explained, but leaves it open whether anybody is there.
    return std::none_of(diagnostics.begin(), diagnostics.end(), [](const Diagnostic &d) {
        const Meaning *meaning = meaningOf(d);
        return meaning && meaning->text != slowText;
    });
}

Error errorOf(const Diagnostics &diagnostics, During during)
{
    const int number = diagnostics.isEmpty() ? 0 : diagnostics.first().number;
    for (const Diagnostic &diagnostic : diagnostics) {
        const Meaning *meaning = meaningOf(diagnostic);
        if (!meaning || (during == During::Opening && meaning->kind != Kind::CannotOpen))
            continue;
        QString text = QString::fromUtf8(meaning->text);
        QString name;
        if (meaning->text == tableText || meaning->text == columnText)
            for (const Diagnostic &other : diagnostics)
                if (name.isEmpty())
                    name = nameIn(other.text);
        if (!name.isEmpty())
            text = (meaning->text == tableText ? QStringLiteral("La base de datos no tiene la tabla '%1'.")
                                               : QStringLiteral("Columna desconocida: '%1'."))
                       .arg(name);
        return Error(meaning->kind, diagnostic.number, text);
    }
    if (during == During::Opening)
        return Error(
            Kind::CannotOpen,
            number,
            QStringLiteral(
                "No se puede conectar con el servidor de base de datos. Verifique que esté encendido, que la "
                "red funcione y que el nombre del servidor y de la instancia sean los del menú 'Red'."));
    const QString state = diagnostics.isEmpty() ? QStringLiteral("-") : diagnostics.first().state;
    return Error(
        Kind::General,
        number,
        QStringLiteral("El servidor no pudo hacer lo pedido (código %1, número %2).").arg(state).arg(number));
}

} // namespace db::odbc
