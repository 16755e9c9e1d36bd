#include "lector/Archivo.h"

#include "jet/Protocolo.h"

#include <filesystem>
#include <set>

namespace lector {

using jet::Danio;

namespace {

constexpr std::uint32_t paginaDelCatalogo = 2;

template <typename T>
T *elemento(GPtrArray *lista, unsigned cual)
{
    return lista && cual < lista->len ? static_cast<T *>(g_ptr_array_index(lista, cual)) : nullptr;
}

} // namespace

Archivo::Archivo(const char *nombre)
    : m_mdb(mdb_open(nombre, MDB_NOFLAGS))
{
    if (!m_mdb || !m_mdb->f)
        throw Danio("no se pudo abrir");
    if (!IS_JET3(m_mdb) && !IS_JET4(m_mdb))
        throw Danio("es de una versión de Access que no se puede leer");
    m_version = IS_JET3(m_mdb) ? jet::Version::Jet3 : jet::Version::Jet4;
    m_tamano = std::filesystem::file_size(nombre);
    elegirPagina();
}

void Archivo::elegirPagina()
{
    m_tabla = jet::windows1252();
    const unsigned numero = m_mdb->f->code_page;
    if (m_version == jet::Version::Jet4 || numero == 0 || numero == 1252)
        return;
    const iconv_t cambio = iconv_open("UTF-16LE", ("CP" + std::to_string(numero)).c_str());
    if (cambio == iconv_t(-1))
        throw Danio("está escrita con un juego de letras que no se conoce");
    for (unsigned i = 0; i < m_tabla.size(); ++i) {
        char origen = char(i);
        unsigned char destino[4]{};
        char *desde = &origen;
        auto *hacia = reinterpret_cast<char *>(destino);
        std::size_t hay = 1, queda = sizeof destino;
        iconv(cambio, nullptr, nullptr, nullptr, nullptr);
        const bool entero = iconv(cambio, &desde, &hay, &hacia, &queda) != std::size_t(-1) && queda == 2;
        m_tabla[i] = entero ? char16_t(destino[0] | destino[1] << 8) : char16_t(0xFFFD);
    }
    iconv_close(cambio);
}

jet::Bytes Archivo::pagina(std::uint32_t numero)
{
    const auto tamano = m_mdb->fmt->pg_size;
    if (numero == 0 || mdb_read_alt_pg(m_mdb.get(), numero) != tamano)
        throw Danio("falta una parte del archivo");
    m_pagina.assign(m_mdb->alt_pg_buf, m_mdb->alt_pg_buf + tamano);
    return m_pagina;
}

jet::Texto Archivo::texto(jet::Bytes crudo) const
{
    return m_version == jet::Version::Jet4 ? jet::textoUnicode(crudo) : jet::textoDePagina(crudo, m_tabla);
}

MdbCatalogEntry Archivo::entradaDe(std::uint32_t pagina) const
{
    MdbCatalogEntry entrada{};
    entrada.mdb = m_mdb.get();
    entrada.object_type = MDB_TABLE;
    entrada.table_pg = pagina;
    return entrada;
}

Archivo::Definicion Archivo::leerDefinicion(MdbCatalogEntry &entrada)
{
    Definicion tabla(mdb_read_table(&entrada));
    if (!tabla || tabla->num_cols > MDB_MAX_COLS || !mdb_read_columns(tabla.get()) || !tabla->columns
        || tabla->columns->len != tabla->num_cols)
        throw Danio("no se pudo leer la definición de una tabla");
    return tabla;
}

jet::Tabla Archivo::definicion(const Entrada &entrada)
{
    MdbCatalogEntry deCatalogo = entradaDe(entrada.pagina);
    const Definicion leida = leerDefinicion(deCatalogo);
    jet::Tabla tabla;
    tabla.nombre = entrada.nombre;
    tabla.filas = leida->num_rows;
    tabla.hayVariables = leida->num_var_cols > 0;
    for (unsigned i = 0; i < leida->columns->len; ++i) {
        const auto *c = elemento<MdbColumn>(leida->columns, i);
        jet::Columna columna;
        columna.nombre = c->name;
        columna.tipo = jet::Tipo(c->col_type);
        columna.tamano = c->col_size;
        columna.fija = c->is_fixed;
        columna.lugarFijo = c->fixed_offset;
        columna.variable = int(c->var_col_num);
        columna.numero = c->row_col_num;
        columna.escala = c->col_scale;
        columna.autonumerica = c->is_long_auto && columna.tipo == jet::Tipo::Largo;
        if (columna.nombre.empty() || columna.tamano < 0 || columna.lugarFijo < 0 || columna.numero < 0)
            throw Danio("no se pudo leer la definición de una tabla");
        tabla.columnas.push_back(columna);
    }
    const bool jet4 = m_version == jet::Version::Jet4;
    tabla.ultimoNumero = jet::u32(pagina(entrada.pagina), jet4 ? 20 : 16);

    (void)mdb_read_indices(leida.get());
    std::set<std::vector<std::uint16_t>> vistos;
    for (unsigned i = 0; leida->indices && i < leida->indices->len; ++i) {
        const auto *x = elemento<MdbIndex>(leida->indices, i);
        if (!x || x->index_type == 2) // a relation's
            continue;
        jet::Indice indice;
        indice.primario = x->index_type == 1;
        indice.unico = indice.primario || (x->flags & MDB_IDX_UNIQUE);
        for (unsigned k = 0; k < x->num_keys && k < MDB_MAX_IDX_COLS; ++k)
            for (unsigned c = 0; c < leida->columns->len; ++c)
                // Keys name a column by its number, which is not its place when one before it was deleted.
                if (elemento<MdbColumn>(leida->columns, c)->col_num + 1 == x->key_col_num[k])
                    indice.columnas.push_back(std::uint16_t(c));
        if (!indice.columnas.empty() && indice.columnas.size() == x->num_keys && vistos.insert(indice.columnas).second)
            tabla.indices.push_back(indice);
    }
    return tabla;
}

void Archivo::recorrer(const Entrada &entrada, const std::function<void(jet::Bytes fila)> &cada)
{
    MdbCatalogEntry deCatalogo = entradaDe(entrada.pagina);
    const Definicion leida(mdb_read_table(&deCatalogo));
    if (!leida)
        throw Danio("no se pudo leer la definición de una tabla");
    // A kind, a page number and the bits of at least no page: the library takes them without looking at the length.
    if (constexpr std::size_t minimo = 5; !leida->usage_map || leida->map_sz < minimo)
        throw Danio("está dañada la lista de páginas de una tabla");
    std::vector<std::uint8_t> propia, ajena;
    std::int64_t actual = 0;
    for (;;) {
        const std::int64_t proxima
            = mdb_map_find_next(m_mdb.get(), leida->usage_map, unsigned(leida->map_sz), guint32(actual));
        if (proxima == 0)
            return;
        if (proxima <= actual)
            throw Danio("está dañada la lista de páginas de una tabla");
        actual = proxima;
        const jet::Bytes leidaPagina = pagina(std::uint32_t(actual));
        if (!jet::esPaginaDeDatos(leidaPagina, entrada.pagina))
            continue; // the map may name pages of old; the number of rows tells if it should not
        propia.assign(leidaPagina.begin(), leidaPagina.end());
        const int cantidad = jet::cantidadRanuras(propia, m_version);
        for (int i = 0; i < cantidad; ++i) {
            const jet::Ranura r = jet::ranura(propia, i, m_version);
            if (r.oculta)
                continue;
            if (!r.movida) {
                cada(r.fila);
                continue;
            }
            const jet::Puntero donde = jet::puntero(r.fila, 0);
            const jet::Bytes otra = pagina(donde.pagina);
            if (!jet::esPaginaDeDatos(otra, entrada.pagina))
                throw Danio("una fila no está en su página");
            ajena.assign(otra.begin(), otra.end());
            const jet::Ranura real = jet::ranura(ajena, donde.ranura, m_version);
            if (real.movida)
                throw Danio("una fila no está en su página");
            contar(real.fila.size());
            cada(real.fila);
        }
    }
}

std::vector<Entrada> Archivo::catalogo()
{
    const Entrada sistema{"MSysObjects", paginaDelCatalogo};
    const jet::Tabla tabla = definicion(sistema);
    const auto lugar = [&](const char *nombre) {
        for (std::size_t i = 0; i < tabla.columnas.size(); ++i)
            if (tabla.columnas[i].nombre == nombre)
                return i;
        throw Danio("no se pudo leer la lista de tablas");
    };
    const std::size_t id = lugar("Id"), nombre = lugar("Name"), tipo = lugar("Type"), marcas = lugar("Flags");
    std::vector<Entrada> entradas;
    std::set<std::uint32_t> paginas;
    recorrer(sistema, [&](jet::Bytes fila) {
        const std::vector<jet::Celda> celdas = jet::partirFila(fila, tabla, m_version);
        if (!celdas[id].crudo || !celdas[nombre].crudo || !celdas[tipo].crudo)
            return;
        const std::uint16_t clase = jet::u16(*celdas[tipo].crudo, 0);
        const std::uint32_t bits = celdas[marcas].crudo ? jet::u32(*celdas[marcas].crudo, 0) : 0;
        Entrada entrada{texto(*celdas[nombre].crudo).utf8, jet::u32(*celdas[id].crudo, 0) & 0xFFFFFF};
        entrada.vinculada = clase == 4 || clase == 6;
        const bool deSistema = bits & 0x80000002u || entrada.nombre.starts_with("MSys");
        // "~TMPCLP...": tables deleted since the file was last compacted.
        const bool propia = clase == 1 && !deSistema && !entrada.nombre.starts_with("~");
        if (entradas.size() >= jet::protocolo::tablasMaximas || (propia && !paginas.insert(entrada.pagina).second))
            throw Danio("la lista de tablas está dañada");
        if (propia || entrada.vinculada)
            entradas.push_back(entrada);
    });
    return entradas;
}

} // namespace lector
