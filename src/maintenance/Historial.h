#pragma once

#include "base/Rechazo.h"
#include "db/Connection.h"

#include <QDate>
#include <QHash>

#include <optional>

namespace db {
class Entorno;
}

/// Reading the activity log: it may hold a million rows, so nothing here walks through it at once.
namespace maintenance {

/// The right to see the log.
[[nodiscard]] base::Control controlarHistorial(db::Entorno &entorno);

/// Every user that the log may name: those of the system, the one without identity and those who are gone.
class UsuariosHistorial
{
public:
    explicit UsuariosHistorial(db::Connection &conexion);

    /// "<Usuario sin Identificar>" for 0, "<Usuario eliminado (Nº 35)>" for an unknown one.
    [[nodiscard]] QString nombre(int id) const;
    /// Names with their ids, in the order of the system's lists, those who are gone last.
    [[nodiscard]] const std::vector<std::pair<QString, int>> &lista() const { return m_lista; }

private:
    std::vector<std::pair<QString, int>> m_lista;
    QHash<int, QString> m_nombres;
};

/// Names of the windows in which something was ever logged, by name.
[[nodiscard]] QStringList ventanasHistorial(db::Connection &conexion);

/// What a person wants to see of the log; everything by default.
struct FiltroHistorial {
    QDate desde = {}; ///< whole days, both included
    QDate hasta = {};
    std::optional<int> usuario = {};
    QString ventana = {};
    QString texto = {}; ///< in the action, any case and accents

    bool operator==(const FiltroHistorial &) const = default;
};

/// Goes through the log from the newest row to the oldest, a page or a slice of time at once: what can be read over the
/// index by date comes page by page, anything else in slices that take some hundredths of a second each.
class BusquedaHistorial
{
public:
    /// Columns of what it yields.
    enum Columna { Fecha, Equipo, Usuario, Ventana, Accion };
    /// The first `cantidad` rows of a result, newest first.
    struct Tanda {
        db::Rows filas;
        int cantidad = 0;
    };

    BusquedaHistorial(db::Connection &conexion, const FiltroHistorial &filtro, int pagina = 200);

    /// The next piece of work, which may find nothing. The rows follow those of the calls before.
    [[nodiscard]] Tanda seguir();
    [[nodiscard]] bool terminada() const { return m_estado == Estado::Terminada; }
    /// How far back in time it has come; invalid before the first call and of an empty log.
    [[nodiscard]] QDateTime llegoA() const { return m_llegoA; }
    /// Of the time to be gone through.
    [[nodiscard]] int porciento() const;

private:
    enum class Estado { PorEmpezar, ConFecha, SinFecha, Terminada };

    void empezar();
    [[nodiscard]] db::Rows consultar(QStringList condiciones, db::Params valores, bool todas = false);
    [[nodiscard]] Tanda paginaCompleta(const db::Rows &filas);

    db::Connection &m_conexion;
    QDateTime m_desde, m_hasta; ///< the filter's; invalid for no bound
    QStringList m_condiciones; ///< those that no index helps with
    db::Params m_valores;
    int m_pagina;
    Estado m_estado = Estado::PorEmpezar;
    QVariant m_tope; ///< date from which to go on; invalid: from the newest
    bool m_conTope = true; ///< whether rows of m_tope itself are still to come
    QDateTime m_primera, m_ultima; ///< oldest and newest moment to be looked at
    QDateTime m_llegoA;
    qint64 m_tramo = 86'400; ///< seconds
};

} // namespace maintenance
