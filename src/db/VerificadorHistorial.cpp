#include "db/VerificadorHistorial.h"

#include "base/Clock.h"
#include "db/Entorno.h"
#include "db/Error.h"

#include <algorithm>
#include <map>

namespace db {

namespace {

constexpr size_t eslabonesPorPaso = 2000;
constexpr int eslabonesRecientes = 5000;
// Most of a small stretch would be waiting for the disk.
constexpr int filasPorSellar = 8000;
constexpr size_t hallazgosContados = 1000;

QDateTime momentoDe(const Eslabon &eslabon) { return readStoredDateTime(eslabon.fecha); }

QString detalleDe(const ResultSet &filas, int fila)
{
    return filas.text(fila, 3).left(150) + QStringLiteral(": ") + filas.text(fila, 4).left(300).simplified();
}

QDateTime finDe(QDate dia) { return {dia, QTime(23, 59)}; }

} // namespace

QDateTime InformeHistorial::ultimaDiferencia() const
{
    QDateTime ultima;
    for (const HallazgoHistorial &hallazgo : hallazgos)
        if (hallazgo.hasta.isValid() && (!ultima.isValid() || hallazgo.hasta > ultima))
            ultima = hallazgo.hasta;
    return ultima;
}

VerificadorHistorial::VerificadorHistorial(Entorno &entorno, Alcance alcance)
    : m_entorno(entorno)
    , m_conexion(entorno.conexion())
    , m_alcance(alcance)
    , m_cadena(m_conexion)
{
}

int VerificadorHistorial::porciento() const
{
    if (m_fase == Fase::Fin)
        return 100;
    return m_total > 0 ? int(std::min<qint64>(99, m_hecho * 100 / m_total)) : 0;
}

QString VerificadorHistorial::etapa() const
{
    return m_fase == Fase::Sellar ? QStringLiteral("Sellando las acciones anteriores al registro")
                                  : QStringLiteral("Verificando el registro");
}

bool VerificadorHistorial::seguir()
{
    switch (m_fase) {
    case Fase::Abrir: abrir(); break;
    case Fase::Sellar: sellar(); break;
    case Fase::Cadena: recorrerCadena(); break;
    case Fase::Filas: recorrerFilas(); break;
    case Fase::Dias: comparar(); break;
    case Fase::Fin: break;
    }
    return m_fase != Fase::Fin;
}

void VerificadorHistorial::hallar(Clase clase, QDateTime desde, QDateTime hasta, int cantidad, const QString &detalle)
{
    if (m_informe.hallazgos.size() < hallazgosContados)
        m_informe.hallazgos.push_back({clase, desde, hasta, cantidad, detalle});
}

void VerificadorHistorial::abrir()
{
    std::optional<Eslabon> ultimo;
    try {
        const bool abierta = m_cadena.abrir();
        ultimo = m_cadena.cola();
        m_informe.comenzado = ultimo.has_value();
        if (ultimo && !abierta) {
            const Eslabon primero = m_cadena.siguientes(std::numeric_limits<int>::min(), 1).front();
            hallar(Clase::SinComienzo, momentoDe(primero), momentoDe(*ultimo), ultimo->orden - primero.orden + 1);
        }
        if (!abierta)
            ultimo.reset();
    } catch (const Error &error) {
        // A file that cannot be written to was not upgraded either.
        if (error.kind() != Error::Kind::NoSuchTable)
            throw;
    }
    if (!ultimo) {
        terminar();
        return;
    }
    const Eslabon &comienzo = m_cadena.comienzo();
    m_informe.comienzo = momentoDe(comienzo);
    if (m_cadena.firmaDe(comienzo) != comienzo.huella)
        hallar(Clase::ComienzoAlterado, momentoDe(comienzo), momentoDe(comienzo));
    if (!ultimo->pendiente.isValid() || m_conexion.readOnly()) {
        empezarCadena();
        return;
    }
    m_total = m_conexion
                  .query(QStringLiteral("SELECT COUNT(*) FROM [Historial] WHERE fecha >= %1 and fecha < %2")
                             .arg(
                                 m_conexion.dialect().dayStart(ultimo->pendiente),
                                 m_conexion.dialect().dayStart(m_informe.comienzo.date())))
                  ->integer(0, 0);
    m_fase = Fase::Sellar;
}

void VerificadorHistorial::sellar()
{
    try {
        Transaction transaccion(m_conexion);
        m_hecho += m_cadena.sellar(filasPorSellar, m_entorno.clock().now());
        transaccion.commit();
    } catch (const Error &error) {
        // Another station sealed these days at the same moment.
        if (error.kind() != Error::Kind::Constraint)
            throw;
    }
    const std::optional<Eslabon> ultimo = m_cadena.cola();
    if (!ultimo || !ultimo->pendiente.isValid())
        empezarCadena();
}

void VerificadorHistorial::empezarCadena()
{
    m_fase = Fase::Cadena;
    const std::optional<Eslabon> ultimo = m_cadena.cola();
    Eslabon desde = m_cadena.comienzo();
    if (m_alcance == Alcance::Reciente && ultimo)
        // Whole days are compared: there should be one before the last.
        for (const int cuantos : {eslabonesRecientes, 4 * eslabonesRecientes}) {
            const int primero = ultimo->orden - cuantos;
            if (primero <= std::max(m_cadena.comienzo().orden, m_cadena.comienzo().cantidad))
                break;
            const std::vector<Eslabon> suyo = m_cadena.siguientes(primero - 1, 1);
            if (!suyo.empty())
                desde = suyo.front();
            if (desde.dia() < ultimo->dia())
                break;
        }
    const bool entera = desde.orden == m_cadena.comienzo().orden;
    m_desdeDia = entera ? 0 : claveDia(diaDeClave(desde.dia()).addDays(1));
    m_fechaAnterior = desde.fecha;
    m_celdas.emplace();
    m_recorrido.emplace(m_cadena, desde);
    m_hecho = 0;
    m_total = ultimo ? ultimo->orden - desde.orden : 0;
    if (m_alcance == Alcance::Todo)
        m_total += m_conexion.query(QStringLiteral("SELECT COUNT(*) FROM [Historial]"))->integer(0, 0);
}

void VerificadorHistorial::recorrerCadena()
{
    const std::vector<RecorridoCadena::Paso> &pasos = m_recorrido->leer(int(eslabonesPorPaso));
    for (const RecorridoCadena::Paso &paso : pasos)
        anotar(paso);
    m_hecho += qint64(pasos.size());
    // What stations write meanwhile is read later.
    if (pasos.size() < eslabonesPorPaso)
        empezarFilas();
}

void VerificadorHistorial::anotar(const RecorridoCadena::Paso &paso)
{
    const Eslabon &eslabon = paso.eslabon;
    const QByteArray antes = std::exchange(m_fechaAnterior, eslabon.fecha);
    if (paso.faltan > 0 && !paso.perdido)
        hallar(Clase::FaltanEslabones, readStoredDateTime(antes), momentoDe(eslabon), paso.faltan);
    const bool alterado = paso.alterado || eslabon.clase == Eslabon::Clase::Comienzo;
    if (!paso.perdido && !alterado) {
        m_celdas->agregarEslabon(eslabon);
        return;
    }
    // One after the other they are one finding.
    const Clase clase = paso.perdido ? Clase::SinComienzo : Clase::EslabonAlterado;
    const bool sigue = !m_informe.hallazgos.empty() && m_informe.hallazgos.back().clase == clase
        && (paso.perdido || (!m_alterados.empty() && m_alterados.back() == eslabon.orden - 1));
    if (sigue) {
        m_informe.hallazgos.back().hasta = momentoDe(eslabon);
        ++m_informe.hallazgos.back().cantidad;
    } else {
        hallar(clase, momentoDe(eslabon), momentoDe(eslabon));
    }
    m_alterados.push_back(eslabon.orden);
    m_huellasAlteradas.push_back(eslabon.huella);
}

void VerificadorHistorial::ponerAlDia()
{
    for (const auto *pasos = &m_recorrido->leer(int(eslabonesPorPaso)); !pasos->empty();
         pasos = &m_recorrido->leer(int(eslabonesPorPaso)))
        for (const RecorridoCadena::Paso &paso : *pasos)
            anotar(paso);
}

void VerificadorHistorial::empezarFilas()
{
    // Another key, or an end without links of its own: there is nothing to compare rows with.
    if (m_celdas->acciones() == 0 && !m_alterados.empty()) {
        terminar();
        return;
    }
    const QDate pendiente = m_recorrido->ultimo().pendiente;
    m_informe.sinSellar = pendiente.isValid();
    if (pendiente.isValid()) {
        m_pendienteDesde = pendiente == primerDiaHistorial() ? 0 : claveDia(pendiente);
        m_pendienteHasta = claveDia(m_informe.comienzo.date());
    }
    if (m_alcance == Alcance::Reciente && m_desdeDia == 0) {
        qint64 anteriores = 0;
        for (const CeldasHistorial::Tramo &tramo : m_celdas->tramos())
            anteriores += tramo.cantidad;
        if (anteriores > eslabonesRecientes || pendiente.isValid())
            m_desdeDia = claveDia(m_informe.comienzo.date());
    }
    m_informe.completo = m_desdeDia == 0 && !pendiente.isValid();
    std::sort(m_huellasAlteradas.begin(), m_huellasAlteradas.end());
    m_lector.emplace(m_conexion, m_desdeDia > 0 ? diaDeClave(m_desdeDia) : QDate());
    m_fase = Fase::Filas;
}

void VerificadorHistorial::recorrerFilas()
{
    if (!m_lector->leer()) {
        elegirDias();
        return;
    }
    const ResultSet &filas = m_lector->filas();
    for (int f = 0; f < m_lector->cantidad(); ++f) {
        const int dia = claveDia(filas.utf8(f, 0));
        if (dia >= 0)
            m_celdas->agregarFila(dia, m_cadena.llave().deFila(filas, f));
        else
            hallar(Clase::Agregada, {}, {}, 1, detalleDe(filas, f));
    }
    m_hecho += m_lector->cantidad();
}

void VerificadorHistorial::elegirDias()
{
    m_fase = Fase::Dias;
    ponerAlDia();
    for (const CeldasHistorial::Tramo &tramo : m_celdas->tramos(m_desdeDia)) {
        m_informe.anteriores += tramo.cantidad;
        if (!tramo.igual())
            m_tramos.push_back(tramo);
    }
    for (const CeldasHistorial::Dia &dia : m_celdas->distintos(m_desdeDia))
        if (dia.clave < m_pendienteDesde || dia.clave >= m_pendienteHasta)
            m_dias.push_back(dia);
    std::reverse(m_dias.begin(), m_dias.end()); // taken from the end
}

void VerificadorHistorial::comparar()
{
    if (m_informe.hallazgos.size() >= hallazgosContados) {
        m_informe.otros = int(m_dias.size() + m_tramos.size());
        m_dias.clear();
        m_tramos.clear();
    }
    if (m_dias.empty() && m_tramos.empty()) {
        terminar();
        return;
    }
    // Rows and links as they are at one moment.
    std::optional<Transaction> transaccion;
    if (!m_conexion.readOnly())
        transaccion.emplace(m_conexion);
    ponerAlDia();
    if (!m_tramos.empty()) {
        const CeldasHistorial::Tramo tramo = m_tramos.back();
        m_tramos.pop_back();
        compararTramo(tramo);
    } else {
        const int dia = m_dias.back().clave;
        m_dias.pop_back();
        compararDia(dia);
    }
}

void VerificadorHistorial::compararTramo(const CeldasHistorial::Tramo &tramo)
{
    const auto dias = [&](int clave) { return clave == 0 ? QDate() : diaDeClave(clave); };
    CeldasHistorial ahora;
    LectorHistorial lector(m_conexion, dias(tramo.desde), diaDeClave(tramo.hasta));
    int cantidad = 0;
    Huella suma;
    while (lector.leer())
        for (int f = 0; f < lector.cantidad(); ++f) {
            ++cantidad;
            suma += m_cadena.llave().deFila(lector.filas(), f);
        }
    const CeldasHistorial::Lado eslabones = m_celdas->eslabones(tramo.desde, tramo.hasta);
    suma -= eslabones.suma;
    if (cantidad - eslabones.cuantos != tramo.cantidad || suma != tramo.suma)
        hallar(
            Clase::Anteriores,
            QDateTime(dias(tramo.desde), QTime(0, 0)),
            finDe(diaDeClave(tramo.hasta)),
            cantidad - eslabones.cuantos - tramo.cantidad);
}

std::vector<Eslabon> VerificadorHistorial::eslabonesDe(const CeldasHistorial::Dia &dia)
{
    std::vector<Eslabon> suyos;
    for (int desde = dia.primero - 1; desde < dia.ultimo;) {
        const std::vector<Eslabon> tanda = m_cadena.siguientes(desde, int(eslabonesPorPaso));
        if (tanda.empty())
            break;
        desde = tanda.back().orden;
        for (const Eslabon &eslabon : tanda) {
            const bool deFila = eslabon.clase == Eslabon::Clase::Accion || eslabon.clase == Eslabon::Clase::Eliminacion;
            if (deFila && eslabon.orden <= dia.ultimo && eslabon.dia() == dia.clave
                && m_celdas->vive(eslabon.orden, dia.clave)
                && !std::binary_search(m_alterados.begin(), m_alterados.end(), eslabon.orden))
                suyos.push_back(eslabon);
        }
    }
    return suyos;
}

void VerificadorHistorial::recorrerDia(int dia, const std::function<void(const ResultSet &, int, const Huella &)> &fila)
{
    LectorHistorial lector(
        m_conexion, dia > 0 ? diaDeClave(dia) : QDate(), dia > 0 ? diaDeClave(dia) : primerDiaHistorial());
    while (lector.leer())
        for (int f = 0; f < lector.cantidad(); ++f)
            if (claveDia(lector.filas().utf8(f, 0)) == dia)
                fila(lector.filas(), f, m_cadena.llave().deFila(lector.filas(), f));
}

void VerificadorHistorial::compararDia(int dia)
{
    // How many rows of a kind there are more than links.
    std::map<Huella, int> saldo;
    recorrerDia(dia, [&](const ResultSet &, int, const Huella &huella) { ++saldo[huella]; });
    std::vector<QDateTime> faltan;
    for (const CeldasHistorial::Dia &suyo : m_celdas->distintos(dia, dia))
        for (const Eslabon &eslabon : eslabonesDe(suyo)) {
            const auto filas = saldo.find(eslabon.huella);
            if (filas == saldo.end())
                faltan.push_back(momentoDe(eslabon));
            else if (--filas->second == 0)
                saldo.erase(filas);
        }
    // What a link that was changed says is told already.
    std::erase_if(saldo, [this](const auto &filas) {
        return std::binary_search(m_huellasAlteradas.begin(), m_huellasAlteradas.end(), filas.first);
    });
    if (faltan.empty() && saldo.empty())
        return;
    if (m_alcance == Alcance::Reciente && !m_informe.completo) {
        verTodo();
        return;
    }
    std::vector<HallazgoHistorial> sobran;
    recorrerDia(dia, [&](const ResultSet &filas, int fila, const Huella &huella) {
        const auto suyas = saldo.find(huella);
        if (suyas == saldo.end() || suyas->second-- <= 0)
            return;
        const QDateTime momento = filas.dateTime(fila, 0);
        sobran.push_back({Clase::Agregada, momento, momento, 1, detalleDe(filas, fila)});
    });
    // A row that is gone and another one of the same minute are one that was changed.
    for (const QDateTime &momento : faltan) {
        const auto otra = std::find_if(
            sobran.begin(), sobran.end(), [&](const HallazgoHistorial &fila) { return fila.desde == momento; });
        if (otra == sobran.end()) {
            hallar(Clase::Eliminada, momento, momento);
        } else {
            hallar(Clase::Modificada, momento, momento, 1, otra->detalle);
            sobran.erase(otra);
        }
    }
    for (const HallazgoHistorial &agregada : sobran)
        hallar(agregada.clase, agregada.desde, agregada.hasta, 1, agregada.detalle);
}

void VerificadorHistorial::verTodo()
{
    m_alcance = Alcance::Todo;
    m_fase = Fase::Abrir;
    m_informe = {};
    m_alterados.clear();
    m_huellasAlteradas.clear();
    m_tramos.clear();
    m_dias.clear();
    m_desdeDia = m_pendienteDesde = m_pendienteHasta = 0;
    m_hecho = m_total = 0;
}

void VerificadorHistorial::compararFinal()
{
    const std::optional<CabezaHistorial> cabeza = cabezaRecordada(m_entorno);
    if (!cabeza)
        return;
    const QDateTime vista = readStoredDateTime(cabeza->fecha);
    if (!m_recorrido) {
        // There was a chain; what is left of it has been told.
        if (!m_informe.comenzado)
            hallar(Clase::OtroComienzo, vista, vista);
        return;
    }
    if (cabeza->sal != m_cadena.comienzo().sal) {
        hallar(Clase::OtroComienzo, vista, vista);
        return;
    }
    if (sigueEnCadena(m_cadena, *cabeza))
        return;
    // In the middle of the chain it is one of the links found missing or changed.
    const int ultimo = m_recorrido->ultimo().orden;
    const bool contada = cabeza->orden <= ultimo
        && (!m_cadena.eslabon(cabeza->orden)
            || std::binary_search(m_alterados.begin(), m_alterados.end(), cabeza->orden));
    if (!contada)
        hallar(Clase::SinFinal, vista, vista, std::max(0, cabeza->orden - ultimo));
}

void VerificadorHistorial::terminar()
{
    compararFinal();
    if (m_celdas) {
        m_informe.acciones = m_celdas->acciones(m_desdeDia);
        m_informe.desde = m_celdas->primerDia(m_desdeDia);
    }
    std::stable_sort(
        m_informe.hallazgos.begin(),
        m_informe.hallazgos.end(),
        [](const HallazgoHistorial &uno, const HallazgoHistorial &otro) { return uno.desde < otro.desde; });
    m_fase = Fase::Fin;
}

} // namespace db
