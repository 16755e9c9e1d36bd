// Reads an old Access file in a process of its own: what damage does to it stays here. vastelo-access FILE [TABLE]

#include "jet/Salida.h"
#include "jet/Valor.h"
#include "lector/Archivo.h"

#include <cstdlib>
#include <new>

#include <strings.h>
#include <sys/resource.h>

namespace {

using jet::TramoDeSalida;
using jet::protocolo::Celda;

void limitar(decltype(RLIMIT_CPU) que, rlim_t cuanto)
{
    const rlimit limite{cuanto, cuanto};
    setrlimit(que, &limite);
}

/// A damaged file may ask for anything: no more memory than a big one needs, no endless work, nothing written.
void limitarse()
{
    limitar(RLIMIT_CORE, 0);
    limitar(RLIMIT_FSIZE, 0);
    limitar(RLIMIT_CPU, 1800);
#if !defined(__SANITIZE_ADDRESS__)
    limitar(RLIMIT_AS, 1u << 30);
#endif
}

void escribirTabla(const jet::Tabla &tabla, jet::Version version)
{
    TramoDeSalida tramo(jet::protocolo::Tramo::Tabla);
    tramo.texto(tabla.nombre);
    tramo.u32(tabla.filas);
    tramo.u32(tabla.ultimoNumero);
    tramo.u32(std::uint32_t(tabla.columnas.size()));
    for (const jet::Columna &columna : tabla.columnas) {
        tramo.texto(columna.nombre);
        tramo.u8(std::uint8_t(columna.tipo));
        // Characters of a text, which takes two bytes each in a Jet 4 file.
        const bool dobles = columna.tipo == jet::Tipo::Texto && version == jet::Version::Jet4;
        tramo.u32(std::uint32_t(dobles ? columna.tamano / 2 : columna.tamano));
        tramo.u8(columna.autonumerica);
    }
    tramo.u32(std::uint32_t(tabla.indices.size()));
    for (const jet::Indice &indice : tabla.indices) {
        tramo.u8(indice.unico);
        tramo.u8(indice.primario);
        tramo.u32(std::uint32_t(indice.columnas.size()));
        for (const std::uint16_t columna : indice.columnas)
            tramo.u16(columna);
    }
    tramo.enviar();
}

void escribirTexto(TramoDeSalida &tramo, const jet::Texto &texto, jet::Bytes crudo)
{
    tramo.celda(texto.exacto ? Celda::Texto : Celda::TextoRoto);
    tramo.texto(texto.utf8);
    if (!texto.exacto)
        tramo.bytes(crudo);
}

void escribirCelda(TramoDeSalida &tramo, lector::Archivo &archivo, const jet::Columna &columna, const jet::Celda &celda)
{
    using jet::Tipo;
    if (columna.tipo == Tipo::Logico) {
        tramo.celda(Celda::Logico);
        tramo.u8(celda.verdadero);
        return;
    }
    if (!celda.crudo) {
        tramo.celda(Celda::Nulo);
        return;
    }
    const jet::Bytes crudo = *celda.crudo;
    const auto entero = [&](std::int64_t numero, Celda clase = Celda::Entero) {
        tramo.celda(clase);
        tramo.u64(std::uint64_t(numero));
    };
    const auto real = [&](double numero, Celda clase) {
        tramo.celda(clase);
        tramo.doble(numero);
    };
    switch (columna.tipo) {
    case Tipo::Byte: entero(jet::u8(crudo, 0)); return;
    case Tipo::Entero: entero(std::int16_t(jet::u16(crudo, 0))); return;
    case Tipo::Largo: entero(std::int32_t(jet::u32(crudo, 0))); return;
    case Tipo::Moneda: entero(std::int64_t(jet::u64(crudo, 0)), Celda::Moneda); return;
    case Tipo::Simple: real(double(jet::simple(crudo, 0)), Celda::Simple); return;
    case Tipo::Doble: real(jet::doble(crudo, 0), Celda::Doble); return;
    case Tipo::Fecha: {
        const double guardada = jet::doble(crudo, 0);
        const auto segundos = jet::segundosDeFecha(guardada);
        segundos ? entero(*segundos, Celda::Fecha) : real(guardada, Celda::FechaRota);
        return;
    }
    case Tipo::Texto: escribirTexto(tramo, archivo.texto(crudo), crudo); return;
    case Tipo::Memo: {
        const auto largo = jet::leerLargo(archivo, crudo);
        escribirTexto(tramo, archivo.texto(largo), largo);
        return;
    }
    case Tipo::Ole:
        tramo.celda(Celda::Bytes);
        tramo.bytes(jet::leerLargo(archivo, crudo));
        return;
    case Tipo::Guid:
        tramo.celda(Celda::Texto);
        tramo.texto(jet::textoDeGuid(crudo));
        return;
    case Tipo::Decimal:
        tramo.celda(Celda::Decimal);
        tramo.texto(jet::textoDeDecimal(crudo, columna.escala));
        return;
    case Tipo::Binario:
    case Tipo::Logico: break;
    }
    tramo.celda(Celda::Bytes); // a binary, or a type that is not known: as it lies there
    tramo.bytes(crudo);
}

void leerTabla(lector::Archivo &archivo, const lector::Entrada &entrada)
{
    const jet::Tabla tabla = archivo.definicion(entrada);
    escribirTabla(tabla, archivo.version());
    std::uint32_t filas = 0;
    TramoDeSalida tramo(jet::protocolo::Tramo::Filas);
    archivo.recorrer(entrada, [&](jet::Bytes fila) {
        const std::vector<jet::Celda> celdas = jet::partirFila(fila, tabla, archivo.version());
        for (std::size_t c = 0; c < celdas.size(); ++c)
            escribirCelda(tramo, archivo, tabla.columnas[c], celdas[c]);
        ++filas;
        if (tramo.size() >= jet::protocolo::tramoUsual) {
            tramo.enviar();
            tramo = TramoDeSalida(jet::protocolo::Tramo::Filas);
        }
    });
    tramo.enviar();
    TramoDeSalida fin(jet::protocolo::Tramo::FinTabla);
    fin.u32(filas);
    fin.enviar();
}

void leer(const char *nombre, const char *solo)
{
    TramoDeSalida saludo(jet::protocolo::Tramo::Saludo);
    saludo.u32(jet::protocolo::numero);
    saludo.enviar();
    lector::Archivo archivo(nombre);
    for (const lector::Entrada &entrada : archivo.catalogo()) {
        if (entrada.vinculada) {
            TramoDeSalida ajena(jet::protocolo::Tramo::Ajena);
            ajena.texto(entrada.nombre);
            ajena.enviar();
        } else if (!solo || strcasecmp(solo, entrada.nombre.c_str()) == 0) {
            leerTabla(archivo, entrada);
        }
    }
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc < 2 || argc > 3)
        return 2;
    limitarse();
    // Whatever the person's own settings of the library say.
    for (const char *ajuste : {"MDBPATH", "MDBICONV", "MDB_JET3_CHARSET", "MDBOPTS"})
        unsetenv(ajuste);
    // The library says what it stumbles over; the frames say what matters.
    if (!std::freopen("/dev/null", "w", stderr))
        return 2;
    std::string falla;
    try {
        leer(argv[1], argc > 2 ? argv[2] : nullptr);
    } catch (const jet::Danio &danio) {
        falla = danio.what();
    } catch (const std::bad_alloc &) {
        falla = "pide más memoria de la que puede hacer falta";
    } catch (const std::exception &) {
        falla = "tiene datos imposibles";
    }
    TramoDeSalida fin(falla.empty() ? jet::protocolo::Tramo::Fin : jet::protocolo::Tramo::Falla);
    if (!falla.empty())
        fin.texto(falla);
    fin.enviar();
    std::_Exit(falla.empty() ? 0 : 1); // nothing more of what a damaged file may have left behind
}
