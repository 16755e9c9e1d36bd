#include "db/access/Tramos.h"

#include "db/access/Fechas.h"

#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace db::access {

namespace protocolo = jet::protocolo;

Error Tramos::danio(const QString &detalle)
{
    return {
        Error::Kind::Corrupt, 0, QStringLiteral("El archivo está dañado y no se pudo leer entero: %1.").arg(detalle)};
}

namespace {
Error incomprensible() { return Tramos::danio(QStringLiteral("lo leído no tiene sentido")); }
} // namespace

/// The body of a frame, read from its beginning.
class Tramos::Lectura
{
public:
    explicit Lectura(QByteArrayView cuerpo)
        : m_cuerpo(cuerpo)
    {
    }
    [[nodiscard]] bool fin() const { return m_cuerpo.isEmpty(); }
    QByteArrayView bytes(quint32 cuantos)
    {
        if (cuantos > quint64(m_cuerpo.size()))
            throw incomprensible();
        const QByteArrayView tomados = m_cuerpo.first(cuantos);
        m_cuerpo = m_cuerpo.sliced(cuantos);
        return tomados;
    }
    template <typename Numero>
    Numero numero()
    {
        return qFromLittleEndian<Numero>(bytes(sizeof(Numero)).data());
    }
    double doble()
    {
        const auto bits = numero<quint64>();
        double valor = 0;
        std::memcpy(&valor, &bits, sizeof valor);
        return valor;
    }
    QByteArray datos() { return bytes(numero<quint32>()).toByteArray(); }
    QString texto() { return QString::fromUtf8(bytes(numero<quint32>())); }
    /// Of a table or column: neither empty nor with characters that no name has.
    QString nombre()
    {
        const QString leido = texto();
        if (leido.isEmpty() || std::any_of(leido.cbegin(), leido.cend(), [](QChar c) { return c < u' '; }))
            throw incomprensible();
        return leido;
    }
    /// How many of something follow.
    int cantidad(quint32 maxima)
    {
        const auto leida = numero<quint32>();
        if (leida > maxima)
            throw incomprensible();
        return int(leida);
    }

private:
    QByteArrayView m_cuerpo;
};

Tramos::Tramos(Receptor &receptor)
    : m_receptor(receptor)
{
}

bool Tramos::tomar(const QByteArray &bytes)
{
    m_pendiente += bytes;
    qsizetype tomado = 0;
    while (m_sigue && !m_completo && m_pendiente.size() - tomado >= 5) {
        const auto largo = qFromLittleEndian<quint32>(m_pendiente.constData() + tomado);
        if (largo == 0 || largo > protocolo::tramoMaximo)
            throw incomprensible();
        if (m_pendiente.size() - tomado - 4 < qsizetype(largo))
            break;
        tramo(m_pendiente[tomado + 4], QByteArrayView(m_pendiente).sliced(tomado + 5, largo - 1));
        tomado += 4 + qsizetype(largo);
    }
    m_pendiente.remove(0, tomado);
    return m_sigue;
}

void Tramos::tramo(char clase, QByteArrayView cuerpo)
{
    using Tramo = protocolo::Tramo;
    Lectura lectura(cuerpo);
    const auto cual = Tramo(clase);
    const bool deTabla = cual == Tramo::Filas || cual == Tramo::FinTabla;
    if (cual != Tramo::Falla && cual != Tramo::Dicho && ((cual == Tramo::Saludo) == m_saludado || deTabla != m_enTabla))
        throw incomprensible();
    switch (cual) {
    case Tramo::Saludo:
        if (lectura.numero<quint32>() != protocolo::numero)
            throw Error(Error::Kind::CannotOpen, 0, QStringLiteral("El lector de bases de Access es de otra versión."));
        m_saludado = true;
        break;
    case Tramo::Ajena: m_receptor.vinculada(lectura.texto()); break;
    case Tramo::Tabla: tabla(lectura); break;
    case Tramo::Filas: m_sigue = filas(lectura); break;
    case Tramo::FinTabla:
        if (lectura.numero<quint32>() != m_filas)
            throw incomprensible();
        m_enTabla = false;
        m_receptor.terminar();
        break;
    case Tramo::Falla: {
        const QString detalle = m_tabla.nombre.isEmpty() || !m_enTabla
            ? lectura.texto()
            : QStringLiteral("%1 (tabla '%2')").arg(lectura.texto(), m_tabla.nombre);
        throw danio(detalle);
    }
    case Tramo::Dicho: {
        const bool daniado = lectura.numero<quint8>() != 0;
        throw Error(daniado ? Error::Kind::Corrupt : Error::Kind::CannotOpen, 0, lectura.texto());
    }
    case Tramo::Fin: m_completo = true; break;
    default: throw incomprensible();
    }
    if (m_sigue && !lectura.fin())
        throw incomprensible();
}

void Tramos::tabla(Lectura &lectura)
{
    const auto antes = m_nombres.size();
    m_tabla = {};
    m_tabla.nombre = lectura.nombre();
    m_nombres << m_tabla.nombre.toCaseFolded();
    if (m_nombres.size() > int(protocolo::tablasMaximas) || m_nombres.size() == antes)
        throw incomprensible();
    m_tabla.filas = lectura.numero<quint32>();
    m_tabla.ultimoNumero = lectura.numero<qint32>();
    const int columnas = lectura.cantidad(protocolo::columnasMaximas);
    for (int c = 0; c < columnas; ++c) {
        ColumnaVieja columna;
        columna.nombre = lectura.nombre();
        columna.tipo = jet::Tipo(lectura.numero<quint8>());
        columna.tamano = lectura.cantidad(0xFFFF);
        columna.autonumerica = lectura.numero<quint8>() != 0;
        if (m_tabla.columna(columna.nombre) >= 0)
            throw incomprensible();
        m_tabla.columnas << columna;
    }
    const int indices = lectura.cantidad(protocolo::columnasMaximas);
    for (int i = 0; i < indices; ++i) {
        IndiceViejo indice;
        indice.unico = lectura.numero<quint8>() != 0;
        indice.primario = lectura.numero<quint8>() != 0;
        for (int quedan = lectura.cantidad(16); quedan > 0; --quedan) {
            indice.columnas << lectura.numero<quint16>();
            if (indice.columnas.last() >= columnas)
                throw incomprensible();
        }
        m_tabla.indices << indice;
    }
    if (columnas == 0)
        throw incomprensible();
    m_enTabla = true;
    m_filas = 0;
    m_fila.assign(size_t(columnas), {});
    m_receptor.empezar(m_tabla);
}

bool Tramos::filas(Lectura &lectura)
{
    using Clase = Valor::Clase;
    while (!lectura.fin()) {
        for (Valor &valor : m_fila) {
            valor = {};
            valor.clase = Clase(lectura.numero<quint8>());
            switch (valor.clase) {
            case Clase::Nulo: break;
            case Clase::Entero:
                valor.entero = lectura.numero<qint64>();
                if (valor.entero != qint32(valor.entero)) // no whole number of such a file is wider
                    throw incomprensible();
                break;
            case Clase::Moneda: valor.entero = lectura.numero<qint64>(); break;
            case Clase::Fecha:
                valor.entero = lectura.numero<qint64>();
                if (!esFechaPosible(valor.entero))
                    throw incomprensible();
                break;
            case Clase::Simple:
            case Clase::Doble:
            case Clase::FechaRota: valor.real = lectura.doble(); break;
            case Clase::Logico: valor.entero = lectura.numero<quint8>() != 0; break;
            case Clase::TextoRoto:
                valor.datos = lectura.datos();
                valor.crudo = lectura.datos();
                break;
            case Clase::Texto:
            case Clase::Decimal:
            case Clase::Bytes: valor.datos = lectura.datos(); break;
            default: throw incomprensible();
            }
        }
        ++m_filas;
        m_receptor.fila(m_fila);
        if (!m_receptor.sigue())
            return false;
    }
    return true;
}

} // namespace db::access
