#pragma once

#include "demo/Azar.h"
#include "demo/Demo.h"
#include "demo/Lote.h"

#include <QHash>
#include <QTime>

#include <array>
#include <vector>

namespace demo {

enum class Especialidad { Clinica, Pediatria, Ginecologia, Traumatologia, Kinesiologia, Odontologia };

/// Minutes of the day; `desde` equal to `hasta`: does not attend.
struct Turno {
    int desde = 0;
    int hasta = 0;
};

struct Profesional {
    int id = 0;
    QString nombre;
    Especialidad especialidad = Especialidad::Clinica;
    int duracion = 20; ///< minutes of a slot
    /// Morning and afternoon by weekday, Sunday 0.
    std::array<std::array<Turno, 2>, 7> horas = {};
    int mesDeVacaciones = 1;
};

/// What the later steps need to know of a patient; its NroHC is its place in the list plus one.
struct Paciente {
    QDate nacimiento; ///< invalid: unknown
    bool mujer = false;
    int cobertura = 0; ///< id of [Lista Coberturas], 0 none
    QDate ultimaConsulta = {};
};

/// A visit that took place.
struct Atencion {
    int paciente = 0; ///< NroHC
    int profesional = 0; ///< place in the list
    QDateTime momento;
};

/// Rows of a catalogue: id and name, in the order in which lists show them.
using Catalogo = std::vector<std::pair<int, QString>>;

/// The practice while it is being made.
struct Practica {
    Practica(db::Connection &conexion, const Medida &m)
        : medida(m)
        , azar(m.semilla)
        , lote(conexion)
    {
    }

    Medida medida;
    Azar azar;
    Lote lote;
    std::vector<Profesional> profesionales;
    QString secretaria;
    int idParticular = 0;
    std::vector<std::pair<int, int>> coberturas; ///< id and weight, without PARTICULAR
    int idPami = 0;
    std::vector<Paciente> pacientes;
    std::vector<int> ninos, adultos, mujeres; ///< NroHC; women from 13 years on
    std::vector<Atencion> atenciones;

    [[nodiscard]] db::Connection &conexion() { return lote.conexion(); }
    [[nodiscard]] Paciente &paciente(int nrohc) { return pacientes[size_t(nrohc) - 1]; }
    /// A patient whom a professional of that kind sees, born by then; 0 when there is none.
    [[nodiscard]] int alguien(Especialidad especialidad, QDate dia);
    [[nodiscard]] bool esFeriado(QDate dia) const;
    [[nodiscard]] bool atiende(const Profesional &profesional, QDate dia) const;
};

/// Rows of a catalogue table; empty when it holds none.
[[nodiscard]] Catalogo
catalogo(db::Connection &conexion, const QString &tabla, const QString &nombre = QStringLiteral("nombre"));
/// The id of the row of that name, which is added when it is missing.
[[nodiscard]] int
idDe(Lote &lote, const QString &tabla, const QString &valor, const QString &nombre = QStringLiteral("nombre"));

// The steps, in their order. Each writes its rows and remembers in `practica` what the following ones build on.
void crearProfesionales(Practica &practica);
void crearCoberturas(Practica &practica);
void crearPacientes(Practica &practica, const Avance &avance);
void crearAgenda(Practica &practica, const Avance &avance);
void crearCuentas(Practica &practica, const Avance &avance);
void crearConsultas(Practica &practica, const Avance &avance);
void crearEmbarazos(Practica &practica);
void crearControlesDeNinos(Practica &practica);
void crearTelefonos(Practica &practica);
void crearHistorial(Practica &practica);

} // namespace demo
