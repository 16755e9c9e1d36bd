#include "maintenance/RespaldoAutomatico.h"

#include "base/Clock.h"
#include "base/Fechas.h"
#include "db/Connection.h"
#include "db/Entorno.h"
#include "db/Error.h"
#include "db/Historial.h"

#include <QDir>
#include <QThread>

namespace maintenance {

namespace {

const QString realizando = QStringLiteral("Realizando backup automático...");
const QString noSePudo = QStringLiteral("No se pudo hacer el backup automático: ");

constexpr qint64 minutosTrasFalla = 10;
constexpr qint64 minutosTrasOcupado = 5;
/// Rounds in a row in which the other stations left no moment: more than half an hour of it is a failure.
constexpr int vecesOcupadoMaximas = 6;

constexpr unsigned long esperaAlDetener = 5000; // milliseconds

} // namespace

/// Shared with the thread, which may outlive this object when a disk does not answer.
struct RespaldoAutomatico::Trabajo {
    PedidoRespaldo pedido;
    PasosRespaldo pasos;
    SeguimientoRespaldo seguimiento;
    DesenlaceRespaldo desenlace;
};

RespaldoAutomatico::RespaldoAutomatico(db::Entorno &entorno, QObject *parent)
    : QObject(parent)
    , m_entorno(entorno)
{
    m_avance.setInterval(250);
    connect(&m_avance, &QTimer::timeout, this, &RespaldoAutomatico::mostrarAvance);
}

RespaldoAutomatico::~RespaldoAutomatico() { detener(); }

void RespaldoAutomatico::tic()
{
    db::Connection &conexion = m_entorno.conexion();
    const auto origen = conexion.dialect().kind() == db::Dialect::Kind::Access ? conexion.engine().embeddedFile()
                                                                               : std::optional<db::EmbeddedFile>();
    AjustesRespaldo ajustes = leerAjustes(conexion);
    ajustes.activo = ajustes.activo && origen && !m_entorno.esClienteDeRed();

    const bool otraBase = m_trabajo && origen != m_trabajo->pedido.origen;
    if (ajustes != m_ajustes || otraBase) {
        detener();
        m_ajustes = ajustes;
        m_proximo = {};
        m_vecesOcupado = 0;
        m_trabajo.reset();
        m_aviso.clear();
        if (!m_falla.isEmpty()) {
            m_falla.clear();
            emit terminado();
        }
    }
    if (!ajustes.activo || enMarcha())
        return;
    const QDateTime ahora = m_entorno.clock().now();
    // A next time beyond the interval means that the clock was set back.
    if (m_proximo.isValid() && ahora < m_proximo && m_proximo <= ahora.addSecs(ajustes.horas * 3600LL))
        return;
    empezar({*origen, carpetaRespaldo(ajustes, m_entorno.carpetaPrograma()), ajustes.cantidad, ajustes.horas, ahora});
}

void RespaldoAutomatico::empezar(const PedidoRespaldo &pedido)
{
    m_trabajo = std::make_shared<Trabajo>();
    m_trabajo->pedido = pedido;
    m_trabajo->pasos = m_pasos;
    m_hilo = QThread::create([trabajo = m_trabajo] {
        trabajo->desenlace = hacerRespaldo(trabajo->pedido, trabajo->seguimiento, trabajo->pasos);
    });
    connect(m_hilo, &QThread::finished, this, &RespaldoAutomatico::concluir);
    connect(m_hilo, &QThread::finished, m_hilo, &QObject::deleteLater);
    m_avance.start();
    m_hilo->start(QThread::LowPriority);
}

void RespaldoAutomatico::mostrarAvance()
{
    const SeguimientoRespaldo &seguimiento = m_trabajo->seguimiento;
    if (seguimiento.probando)
        emit avanzado(realizando + QStringLiteral(" comprobando la copia"));
    else if (const int porciento = seguimiento.porciento; porciento > 0)
        emit avanzado(realizando + QStringLiteral(" %1 %").arg(porciento));
    else
        emit avanzado(realizando);
}

void RespaldoAutomatico::detener()
{
    if (!m_hilo)
        return;
    disconnect(m_hilo, nullptr, this, nullptr);
    m_avance.stop();
    m_trabajo->seguimiento.cancelar = true;
    QThread *hilo = std::exchange(m_hilo, nullptr);
    // One that does not come back is left to the end of the process: an object deleted under it would be worse.
    if (hilo->wait(esperaAlDetener))
        delete hilo;
    emit avanzado({});
}

void RespaldoAutomatico::concluir()
{
    m_hilo = nullptr;
    m_avance.stop();
    emit avanzado({});

    const DesenlaceRespaldo desenlace = m_trabajo->desenlace;
    const QDateTime ahora = m_entorno.clock().now();
    using Tipo = DesenlaceRespaldo::Tipo;
    if (desenlace.tipo == Tipo::Ocupado && ++m_vecesOcupado < vecesOcupadoMaximas) {
        m_proximo = ahora.addSecs(60 * minutosTrasOcupado);
        return;
    }
    switch (desenlace.tipo) {
    case Tipo::Hecho:
        anotar(
            QStringLiteral("Se hizo un backup automático en '%1'.").arg(QDir::toNativeSeparators(desenlace.archivo)));
        [[fallthrough]];
    case Tipo::NoHaceFalta:
        m_proximo = desenlace.ultimo.addSecs(m_ajustes.horas * 3600LL);
        m_falla.clear();
        m_aviso.clear();
        m_vecesOcupado = 0;
        break;
    case Tipo::Ocupado:
    case Tipo::Fallado:
        m_proximo = ahora.addSecs(60 * minutosTrasFalla);
        fallar(desenlace);
        break;
    case Tipo::Cancelado: m_proximo = {}; break;
    }
    emit terminado();
}

void RespaldoAutomatico::fallar(const DesenlaceRespaldo &desenlace)
{
    const QString motivo = desenlace.tipo == DesenlaceRespaldo::Tipo::Ocupado
        ? QStringLiteral("Las terminales no dejaron de guardar el tiempo suficiente para copiar la base de datos.")
        : desenlace.motivo;
    const bool primera = m_falla.isEmpty();
    m_falla = motivo;
    if (!primera)
        return;
    m_aviso = textoSinRespaldo(motivo, desenlace.ultimo);
    anotar(noSePudo + motivo);
}

void RespaldoAutomatico::anotar(const QString &accion)
{
    try {
        db::registrarHistorial(m_entorno, ventanaBackup, accion);
    } catch (const db::Error &) {
        // The copy is made, or not, whatever becomes of its entry: the next failure of the base itself will be told.
    }
}

QString RespaldoAutomatico::tomarAviso() { return std::exchange(m_aviso, {}); }

QString textoSinRespaldo(const QString &motivo, const QDateTime &ultimo)
{
    return noSePudo + motivo + QStringLiteral("\n\n")
        + (ultimo.isValid() ? QStringLiteral("El último backup es del %1 hs.").arg(base::fechaHoraTexto(ultimo))
                            : QStringLiteral("Todavía no hay ningún backup en esa carpeta."))
        + QStringLiteral(" El programa seguirá intentándolo; este aviso no se repite.");
}

} // namespace maintenance
