#include "db/Historial.h"

#include "base/Clock.h"
#include "base/Fechas.h"
#include "db/CabezaHistorial.h"
#include "db/CadenaHistorial.h"
#include "db/CeldasHistorial.h"
#include "db/Entorno.h"
#include "db/Error.h"
#include "db/LectorHistorial.h"

#include <QLocale>

namespace db {

namespace {

/// Earlier rows that each new entry seals on its way: a million of them keep nobody waiting at once.
constexpr int filasAnteriores = 500;
/// Each time another station was first; with so many of them something else is wrong.
constexpr int intentos = 25;

QString limpio(QString texto, int largo = -1)
{
    // Engines end a text at a NUL.
    texto.remove(QChar(u'\0'));
    return largo >= 0 ? texto.left(largo) : texto;
}

FilaHistorial filaDe(Entorno &entorno, const QString &ventana, const QString &accion)
{
    QDateTime ahora = entorno.clock().now();
    ahora.setTime(QTime(ahora.time().hour(), ahora.time().minute()));
    return {
        ahora, limpio(entorno.equipo(), 100), entorno.usuarioActual(), limpio(ventana, 150), limpio(accion).trimmed()};
}

void insertar(Connection &conexion, const FilaHistorial &fila)
{
    conexion.execute(
        QStringLiteral("INSERT INTO [Historial] (fecha,equipo,iddoctor,ventana,accion) VALUES (")
            + conexion.dialect().dateTime(fila.fecha) + QStringLiteral(",?,?,?,?)"),
        {fila.equipo, fila.iddoctor, fila.ventana, fila.accion});
}

/// Does it again when another station was first with its link.
void reintentar(const std::function<void()> &enganche)
{
    for (int intento = 1;; ++intento) {
        try {
            enganche();
            return;
        } catch (const Error &error) {
            if (error.kind() != Error::Kind::Constraint || intento == intentos)
                throw;
        }
    }
}

/// Opens the chain, which begins with the first entry, and seals about so many of the rows before it.
void abrir(CadenaHistorial &cadena, const QDateTime &ahora, int anteriores)
{
    if (!cadena.abrir())
        cadena.comenzar(ahora);
    (void)cadena.sellar(anteriores, ahora);
}

/// Hangs the row's link on the chain.
void encadenar(CadenaHistorial &cadena, const FilaHistorial &fila, const QDateTime &ahora, Eslabon &eslabon)
{
    reintentar([&] {
        abrir(cadena, ahora, filasAnteriores);
        eslabon.fecha = storedDateTime(fila.fecha).toUtf8();
        eslabon.huella = cadena.llave().deFila(fila);
        cadena.anexar(eslabon);
    });
    cadena.anotarUso(fila.iddoctor, fila.ventana);
}

/// Keeps the new end of the chain in mind, unless what was kept so far is no part of it any more: that is for the
/// verification to tell.
void recordar(Entorno &entorno, CadenaHistorial &cadena, const Eslabon &ultimo)
{
    try {
        const std::optional<CabezaHistorial> antes = cabezaRecordada(entorno);
        if (!antes || sigueEnCadena(cadena, *antes))
            recordarCabeza(entorno, {cadena.comienzo().sal, ultimo.orden, ultimo.sello, ultimo.fecha});
    } catch (const Error &) {
        // The entry is stored; the next one will be kept in mind.
    }
}

/// What a removal up to a day meets: what is there, and whether that is what the chain says.
struct PorEliminar {
    int cantidad = 0;
    int primerDia = 0;
    Huella suma;
    std::vector<Eslabon> quedan; ///< sealed rows of the stretch in which the day lies, and those without a date
    std::optional<Eslabon> ultimo; ///< up to it every link goes
    bool alterado = false;
};

class Eliminacion
{
public:
    Eliminacion(Connection &conexion, CadenaHistorial &cadena, QDate hasta)
        : m_conexion(conexion)
        , m_cadena(cadena)
        , m_hasta(hasta)
        , m_clave(claveDia(hasta))
    {
    }

    PorEliminar leer(const std::function<void(int)> &filasLeidas)
    {
        leerEslabones();
        leerFilas(filasLeidas);
        m_que.alterado = m_que.alterado || !m_celdas.distintos(1, m_clave).empty();
        for (const CeldasHistorial::Tramo &tramo : m_celdas.tramos(0, m_clave))
            partir(tramo);
        return m_que;
    }

private:
    void leerEslabones()
    {
        RecorridoCadena recorrido(m_cadena, m_cadena.comienzo());
        bool seguido = true;
        for (const auto *pasos = &recorrido.leer(2000); !pasos->empty(); pasos = &recorrido.leer(2000))
            for (const RecorridoCadena::Paso &paso : *pasos) {
                const Eslabon &eslabon = paso.eslabon;
                const bool sellado = eslabon.clase == Eslabon::Clase::Anteriores;
                const bool va = (sellado ? claveDia(eslabon.desde) : eslabon.dia()) <= m_clave;
                seguido = seguido && va;
                if (seguido)
                    m_que.ultimo = eslabon;
                const bool sirve = !paso.alterado && !paso.perdido;
                m_que.alterado = m_que.alterado || (va && (!sirve || paso.faltan > 0));
                if (sirve)
                    m_celdas.agregarEslabon(eslabon);
            }
    }

    void leerFilas(const std::function<void(int)> &filasLeidas)
    {
        LectorHistorial lector(m_conexion, {}, m_hasta);
        while (lector.leer()) {
            for (int f = 0; f < lector.cantidad(); ++f) {
                const int dia = claveDia(lector.filas().utf8(f, 0));
                const Huella huella = m_cadena.llave().deFila(lector.filas(), f);
                m_celdas.agregarFila(dia, huella);
                m_que.alterado = m_que.alterado || dia < 0;
                if (dia == 0) {
                    ++m_sinFecha.cantidad;
                    m_sinFecha.suma += huella;
                    continue;
                }
                ++m_que.cantidad;
                if (m_que.primerDia <= 0)
                    m_que.primerDia = dia;
                m_que.suma += huella;
            }
            filasLeidas(m_que.cantidad);
        }
    }

    /// What is left of a sealed stretch is what it was less what goes. Not what is there: rows that somebody changed
    /// before would pass as good ones.
    void partir(const CeldasHistorial::Tramo &tramo)
    {
        Eslabon resto;
        if (tramo.hasta > m_clave) {
            resto.desde = m_hasta.addDays(1);
            resto.hasta = diaDeClave(tramo.hasta);
            resto.cantidad = tramo.cantidad - tramo.hay;
            resto.suma = tramo.suma;
            resto.suma -= tramo.sumaHay;
        } else {
            m_que.alterado = m_que.alterado || !tramo.igual();
        }
        if (tramo.desde == 0) {
            resto.desde = primerDiaHistorial();
            resto.hasta = std::max(resto.hasta, resto.desde);
            resto.cantidad += m_sinFecha.cantidad;
            resto.suma += m_sinFecha.suma;
        }
        resto.clase = Eslabon::Clase::Anteriores;
        if (resto.cantidad != 0 || resto.suma != Huella())
            m_que.quedan.push_back(resto);
    }

    Connection &m_conexion;
    CadenaHistorial &m_cadena;
    QDate m_hasta;
    int m_clave;
    CeldasHistorial m_celdas;
    Eslabon m_sinFecha; ///< rows without a date, which stay
    PorEliminar m_que;
};

QString textoEliminacion(int cantidad, QDate hasta, bool alterado)
{
    const QString cuantas = cantidad == 1 ? QStringLiteral("Se eliminó 1 acción")
                                          : QStringLiteral("Se eliminaron %1 acciones")
                                                .arg(QLocale(QLocale::Spanish, QLocale::Argentina).toString(cantidad));
    return cuantas + QStringLiteral(" del historial, hasta el %1 inclusive.").arg(base::fechaTexto(hasta))
        + (alterado ? QStringLiteral(" Lo eliminado no estaba íntegro.") : QString());
}

} // namespace

void registrarHistorial(Entorno &entorno, const QString &ventana, const QString &accion)
{
    Connection &conexion = entorno.conexion();
    // What cannot be written is told once at start; a look at the data must not be stopped by its log.
    if (conexion.readOnly())
        return;
    const FilaHistorial fila = filaDe(entorno, ventana, accion);
    const bool definitivo = !conexion.inTransaction();
    CadenaHistorial cadena(conexion);
    Eslabon eslabon;
    Transaction transaccion(conexion);
    try {
        encadenar(cadena, fila, entorno.clock().now(), eslabon);
    } catch (const Error &error) {
        // An upgrade that could not make the tables must not cost the practice its log.
        if (error.kind() != Error::Kind::NoSuchTable)
            throw;
    }
    insertar(conexion, fila);
    transaccion.commit();
    if (definitivo && eslabon.orden > 0)
        recordar(entorno, cadena, eslabon);
}

int eliminarHistorial(Entorno &entorno, QDate hasta, const std::function<void(int)> &avance)
{
    Q_ASSERT(hasta.isValid());
    Connection &conexion = entorno.conexion();
    if (conexion.readOnly())
        throw Error(
            Error::Kind::ReadOnly,
            0,
            QStringLiteral("La base de datos es de sólo lectura: no se puede eliminar el historial."));
    const auto avanzar = [&avance](int porciento) {
        if (avance)
            avance(porciento);
    };
    const QDateTime ahora = entorno.clock().now();
    // To the end of the chosen day: "hasta el 5" is said of the 5th too.
    const QString condicion = QStringLiteral(" WHERE fecha <= ") + conexion.dialect().dayEnd(hasta);

    Transaction transaccion(conexion);
    const qint64 total = conexion.query(QStringLiteral("SELECT COUNT(*) FROM [Historial]") + condicion)->integer(0, 0);
    if (total == 0)
        return 0;
    CadenaHistorial cadena(conexion);
    reintentar([&] { abrir(cadena, ahora, filasAnteriores); });
    while (cadena.cola() && cadena.cola()->pendiente.isValid())
        reintentar([&] { (void)cadena.sellar(20 * filasAnteriores, ahora); });

    const PorEliminar que = Eliminacion(conexion, cadena, hasta).leer([&](int leidas) {
        avanzar(int(std::min<qint64>(80, leidas * qint64(80) / total)));
    });
    const int eliminadas = conexion.execute(QStringLiteral("DELETE FROM [Historial]") + condicion);
    avanzar(95);
    if (que.ultimo)
        cadena.podar(*que.ultimo);

    Eslabon acto;
    acto.clase = Eslabon::Clase::Eliminacion;
    acto.cantidad = eliminadas;
    acto.desde = diaDeClave(que.primerDia);
    acto.hasta = hasta;
    acto.suma = que.suma;
    const FilaHistorial fila = filaDe(
        entorno, QStringLiteral("Configuración del Sistema"), textoEliminacion(eliminadas, hasta, que.alterado));
    encadenar(cadena, fila, ahora, acto);
    insertar(conexion, fila);
    // After the act, which would sweep them away with the rest.
    Eslabon ultimo = acto;
    for (Eslabon resto : que.quedan) {
        resto.fecha = acto.fecha;
        reintentar([&] { cadena.anexar(resto); });
        ultimo = resto;
    }
    transaccion.commit();
    recordar(entorno, cadena, ultimo);
    avanzar(100);
    return eliminadas;
}

} // namespace db
