#pragma once

#include <QByteArray>
#include <QDate>

namespace db {
class Connection;
}

namespace medicion {

// What stands beside the windows of the agenda: its statements for the engine alone. Of one professional, or of all
// (0).
[[nodiscard]] QByteArray diaCrudo(db::Connection &conexion, int profesional, QDate dia);
[[nodiscard]] QByteArray mesCrudo(db::Connection &conexion, int profesional, QDate desde, QDate hasta);

/// A day of sixty start times, all taken, while it lives.
class DiaLleno
{
public:
    DiaLleno(db::Connection &conexion, int profesional, QDate dia);
    ~DiaLleno();
    DiaLleno(const DiaLleno &) = delete;
    DiaLleno &operator=(const DiaLleno &) = delete;

private:
    db::Connection &m_conexion;
    qint64 m_ultimo;
    int m_plantilla;
};

} // namespace medicion
