#include "db/access/EscrituraTramos.h"

#include <limits>

namespace db::access {

namespace {

using jet::TramoDeSalida;
using Tramo = jet::protocolo::Tramo;

void escribir(TramoDeSalida &tramo, const QByteArray &bytes)
{
    tramo.bytes({reinterpret_cast<const std::uint8_t *>(bytes.constData()), std::size_t(bytes.size())});
}

void escribir(TramoDeSalida &tramo, const Valor &valor)
{
    using Clase = Valor::Clase;
    tramo.celda(valor.clase);
    switch (valor.clase) {
    case Clase::Nulo: return;
    case Clase::Entero:
    case Clase::Moneda:
    case Clase::Fecha: tramo.u64(quint64(valor.entero)); return;
    case Clase::Logico: tramo.u8(valor.entero != 0); return;
    case Clase::Simple:
    case Clase::Doble:
    case Clase::FechaRota: tramo.doble(valor.real); return;
    case Clase::TextoRoto:
        escribir(tramo, valor.datos);
        escribir(tramo, valor.crudo);
        return;
    case Clase::Texto:
    case Clase::Decimal:
    case Clase::Bytes: escribir(tramo, valor.datos); return;
    }
}

} // namespace

EscrituraTramos::EscrituraTramos()
    : m_tramo(Tramo::Filas)
{
    TramoDeSalida saludo(Tramo::Saludo);
    saludo.u32(jet::protocolo::numero);
    saludo.enviar();
}

void EscrituraTramos::vinculada(const QString &nombre)
{
    TramoDeSalida tramo(Tramo::Ajena);
    tramo.texto(nombre.toStdString());
    tramo.enviar();
}

void EscrituraTramos::empezar(const TablaVieja &tabla)
{
    TramoDeSalida tramo(Tramo::Tabla);
    tramo.texto(tabla.nombre.toStdString());
    tramo.u32(quint32(qBound(qint64(0), tabla.filas, qint64(std::numeric_limits<quint32>::max()))));
    tramo.u32(quint32(tabla.ultimoNumero));
    tramo.u32(quint32(tabla.columnas.size()));
    for (const ColumnaVieja &columna : tabla.columnas) {
        tramo.texto(columna.nombre.toStdString());
        tramo.u8(quint8(columna.tipo));
        tramo.u32(quint32(columna.tamano));
        tramo.u8(columna.autonumerica);
    }
    tramo.u32(quint32(tabla.indices.size()));
    for (const IndiceViejo &indice : tabla.indices) {
        tramo.u8(indice.unico);
        tramo.u8(indice.primario);
        tramo.u32(quint32(indice.columnas.size()));
        for (const int columna : indice.columnas)
            tramo.u16(quint16(columna));
    }
    tramo.enviar();
    m_filas = 0;
}

void EscrituraTramos::fila(const std::vector<Valor> &celdas)
{
    for (const Valor &valor : celdas)
        escribir(m_tramo, valor);
    ++m_filas;
    if (m_tramo.size() >= jet::protocolo::tramoUsual)
        enviarFilas();
}

void EscrituraTramos::enviarFilas()
{
    m_tramo.enviar();
    m_tramo = TramoDeSalida(Tramo::Filas);
}

void EscrituraTramos::terminar()
{
    enviarFilas();
    TramoDeSalida fin(Tramo::FinTabla);
    fin.u32(m_filas);
    fin.enviar();
}

void EscrituraTramos::cerrar() { TramoDeSalida(Tramo::Fin).enviar(); }

void EscrituraTramos::fallar(const Error &error)
{
    TramoDeSalida tramo(Tramo::Dicho);
    tramo.u8(error.kind() == Error::Kind::Corrupt);
    tramo.texto(error.description().toStdString());
    tramo.enviar();
}

} // namespace db::access
