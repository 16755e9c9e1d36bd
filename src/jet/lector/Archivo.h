#pragma once

#include "jet/Largo.h"
#include "jet/Texto.h"

#include <functional>
#include <memory>

#include <mdbtools.h>

namespace lector {

struct Entrada {
    std::string nombre;
    std::uint32_t pagina = 0; ///< of its definition
    bool vinculada = false; ///< only a link to another file
};

/// A Jet file through libmdb, which knows its pages, definitions and maps; rows and values are taken apart by jet.
class Archivo final : public jet::Libro
{
public:
    /// Throws jet::Danio.
    explicit Archivo(const char *nombre);

    [[nodiscard]] jet::Version version() const override { return m_version; }
    [[nodiscard]] jet::Bytes pagina(std::uint32_t numero) override;
    [[nodiscard]] std::size_t tamano() const override { return m_tamano; }

    /// The tables of the user, in the order in which they were made.
    [[nodiscard]] std::vector<Entrada> catalogo();
    [[nodiscard]] jet::Tabla definicion(const Entrada &entrada);
    /// Every row that was not deleted, in the order of the file; one that was moved comes where it was at first. The
    /// bytes are valid until the next page is asked for.
    void recorrer(const Entrada &entrada, const std::function<void(jet::Bytes fila)> &cada);
    [[nodiscard]] jet::Texto texto(jet::Bytes crudo) const;

private:
    struct Cerrar {
        void operator()(MdbHandle *mdb) const { mdb_close(mdb); }
    };
    struct Liberar {
        void operator()(MdbTableDef *tabla) const { mdb_free_tabledef(tabla); }
    };
    using Definicion = std::unique_ptr<MdbTableDef, Liberar>;
    /// The entry must live as long as what comes back.
    [[nodiscard]] Definicion leerDefinicion(MdbCatalogEntry &entrada);
    [[nodiscard]] MdbCatalogEntry entradaDe(std::uint32_t pagina) const;
    void elegirPagina();

    std::unique_ptr<MdbHandle, Cerrar> m_mdb;
    jet::Version m_version = jet::Version::Jet4;
    std::size_t m_tamano = 0;
    std::vector<std::uint8_t> m_pagina;
    jet::TablaDePagina m_tabla{};
};

} // namespace lector
