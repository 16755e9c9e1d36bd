#pragma once

#include <QDate>
#include <QString>

#include <functional>

namespace db {
class Connection;
}

namespace demo {

/// How much a made-up practice holds, and what it depends on: equal measures give equal practices, on every computer.
struct Medida {
    int pacientes = 400;
    int turnos = 3000; ///< rows of the agenda, blocked slots included
    int ordenes = 900;
    int consultas = 1500;
    int acciones = 1500; ///< rows of the activity log, up to the day before `hoy`
    quint64 semilla = 1;
    QDate hoy; ///< the day around which appointments lie; must be valid
};

/// Told what is being made, with the part that is done (0 to 100).
using Avance = std::function<void(int porciento, const QString &etapa)>;

/// Fills an empty practice: professionals with their hours, a secretary, patients, appointments, orders with sessions
/// and payments, cash, consultations, pregnancies, vaccines. Uses the catalogues that are there and adds what it
/// misses. Throws db::Error, and then leaves a half-filled database behind: meant for files of its own.
void llenar(db::Connection &conexion, const Medida &medida, const Avance &avance = {});

/// Fills a database without patients with a practice of usual size, and leaves any other as it is.
void llenarSiVacia(db::Connection &conexion, QDate hoy);

} // namespace demo
