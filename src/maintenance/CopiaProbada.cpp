#include "maintenance/CopiaProbada.h"

#include "db/Error.h"
#include "db/engine/OnlineCopy.h"
#include "maintenance/Respaldo.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QLockFile>
#include <QStorageInfo>
#include <QThread>

namespace maintenance {

namespace {

using Tipo = DesenlaceRespaldo::Tipo;

const QString terminacion = QStringLiteral(".parcial");

// What is left for others: the disk, the second processor, and stations that want to write.
constexpr int pasosSinPausa = 16;
constexpr int pausaTrasEscritura = 150; // a save is several commits, one after the other
constexpr int reiniciosMaximos = 12;
constexpr qint64 esperaMaxima = 30'000;
/// The disk of the copies is often the one of the database, which has to go on growing.
constexpr qint64 lugarDeMas = 64LL << 20;

class Cancelado
{
};

/// A failure in words for the person.
struct Falla {
    QString motivo;
};

QString nativa(const QString &carpeta) { return QDir::toNativeSeparators(carpeta); }

/// Unfinished copies; without a lock only those that nobody can be writing any more.
void quitarRestos(const QString &carpeta, bool todos)
{
    const QDateTime hace = QDateTime::currentDateTime().addSecs(-3600);
    for (const QFileInfo &resto :
         QDir(carpeta).entryInfoList({QStringLiteral("Backup Datos (*).mdb.parcial*")}, QDir::Files))
        if (todos || resto.lastModified() < hace)
            QFile::remove(resto.filePath());
}

/// One program at a time copies into a folder: it is its unfinished file that the next one would take for a leftover.
class Turno
{
public:
    explicit Turno(const QString &carpeta)
        : m_candado(carpeta + QStringLiteral("/.backup.lock"))
    {
        m_candado.setStaleLockTime(0); // only a dead program's lock is stale
        if (!m_candado.tryLock() && m_candado.error() == QLockFile::UnknownError) {
            quitarRestos(carpeta, false); // they may be what the disk is full of
            (void)m_candado.tryLock();
        }
        if (m_candado.error() == QLockFile::LockFailedError)
            m_deOtro = true;
        else if (!m_candado.isLocked())
            throw Falla{QStringLiteral("No se puede escribir en la carpeta '%1'.").arg(nativa(carpeta))};
    }
    [[nodiscard]] bool deOtro() const { return m_deOtro; }

private:
    QLockFile m_candado;
    bool m_deOtro = false;
};

/// The file under its unfinished name; removed unless it got its final one.
class Parcial
{
public:
    explicit Parcial(QString archivo)
        : m_archivo(std::move(archivo))
    {
        quitar();
    }
    ~Parcial()
    {
        if (!m_terminado)
            quitar();
    }
    Parcial(const Parcial &) = delete;
    Parcial &operator=(const Parcial &) = delete;

    [[nodiscard]] const QString &archivo() const { return m_archivo; }
    void terminar(const QString &archivo)
    {
        m_terminado = QFile::rename(m_archivo, archivo);
        if (!m_terminado)
            throw Falla{QStringLiteral("No se pudo dar su nombre a la copia '%1'.").arg(nativa(archivo))};
    }

private:
    void quitar() const
    {
        QFile::remove(m_archivo);
        QFile::remove(m_archivo + QStringLiteral("-journal"));
    }
    QString m_archivo;
    bool m_terminado = false;
};

class Ronda
{
public:
    Ronda(const PedidoRespaldo &pedido, SeguimientoRespaldo &seguimiento, const PasosRespaldo &pasos)
        : m_pedido(pedido)
        , m_seguimiento(seguimiento)
        , m_pasos(pasos)
    {
    }

    DesenlaceRespaldo hacer()
    {
        const QString &carpeta = m_pedido.carpeta;
        if (!QDir().mkpath(carpeta))
            throw Falla{QStringLiteral("No se puede crear la carpeta '%1'.").arg(nativa(carpeta))};
        const Turno turno(carpeta);
        if (turno.deOtro())
            return {Tipo::Ocupado};
        quitarRestos(carpeta, true);
        m_ultimo = ultimo();
        if (m_ultimo.isValid() && m_ultimo.addSecs(m_pedido.horas * 3600LL) > m_pedido.ahora)
            return {.tipo = Tipo::NoHaceFalta, .ultimo = m_ultimo};
        const QString destino = carpeta + u'/' + nombreCopia(m_pedido.ahora);
        if (QFileInfo::exists(destino))
            return {.tipo = Tipo::NoHaceFalta, .ultimo = m_pedido.ahora};
        controlarLugar();

        Parcial parcial(destino + terminacion);
        const auto filas = copiar(parcial.archivo());
        if (!filas)
            return {.tipo = Tipo::Ocupado, .ultimo = m_ultimo};
        probar(parcial.archivo(), *filas);
        parcial.terminar(destino);
        for (const QString &sobra : sobrantes(copiasEn(carpeta), m_pedido.cantidad, m_pedido.ahora))
            QFile::remove(carpeta + u'/' + sobra);
        return {.tipo = Tipo::Hecho, .archivo = destino, .ultimo = m_pedido.ahora};
    }

    [[nodiscard]] QDateTime ultimo() const
    {
        for (const CopiaAutomatica &copia : copiasEn(m_pedido.carpeta))
            if (copia.cuando <= m_pedido.ahora) // one from the future says nothing
                return copia.cuando;
        return {};
    }

private:
    void controlarLugar() const
    {
        const qint64 libre = m_pasos.lugarLibre ? m_pasos.lugarLibre(m_pedido.carpeta)
                                                : QStorageInfo(m_pedido.carpeta).bytesAvailable();
        const qint64 falta = QFileInfo(m_pedido.origen.path).size() + lugarDeMas;
        if (libre >= 0 && libre < falta)
            throw Falla{QStringLiteral("No hay lugar en el disco de la carpeta '%1': hacen falta %2 y quedan %3.")
                            .arg(
                                nativa(m_pedido.carpeta),
                                QLocale().formattedDataSize(falta, 1, QLocale::DataSizeTraditionalFormat),
                                QLocale().formattedDataSize(libre, 1, QLocale::DataSizeTraditionalFormat))};
    }

    /// The rows of every table at the moment copied; empty when the others left no moment.
    std::optional<QVector<db::RowCount>> copiar(const QString &archivo)
    {
        db::OnlineCopy copia(m_pedido.origen, archivo);
        if (m_pasos.alEmpezar)
            m_pasos.alEmpezar(copia);
        int reinicios = 0, pasos = 0;
        QElapsedTimer sinAvanzar;
        sinAvanzar.start();
        while (true) {
            if (m_seguimiento.cancelar)
                throw Cancelado();
            switch (copia.step()) {
            case db::OnlineCopy::State::Done:
                if (copia.sourceMoved())
                    throw Cancelado(); // another database has taken its place
                return copia.counts();
            case db::OnlineCopy::State::Restarted:
                if (++reinicios > reiniciosMaximos)
                    return std::nullopt;
                QThread::msleep(pausaTrasEscritura);
                break;
            case db::OnlineCopy::State::Waiting:
                if (sinAvanzar.elapsed() > esperaMaxima)
                    return std::nullopt;
                QThread::msleep(20);
                continue;
            case db::OnlineCopy::State::Working: break;
            }
            sinAvanzar.restart();
            m_seguimiento.porciento = copia.percent();
            if (m_pasos.entrePasos)
                m_pasos.entrePasos();
            if (++pasos % pasosSinPausa == 0)
                QThread::msleep(1);
        }
    }

    void probar(const QString &archivo, const QVector<db::RowCount> &filas)
    {
        m_seguimiento.probando = true;
        if (m_pasos.antesDeProbar)
            m_pasos.antesDeProbar(archivo);
        QString defecto;
        try {
            defecto = db::proveCopy({archivo, m_pedido.origen.password}, filas, m_seguimiento.cancelar);
        } catch (const db::Error &error) {
            defecto = error.description();
        }
        if (m_seguimiento.cancelar)
            throw Cancelado();
        if (!defecto.isEmpty())
            throw Falla{QStringLiteral("La copia no pasó la prueba y se descartó (%1).").arg(defecto)};
    }

    const PedidoRespaldo &m_pedido;
    SeguimientoRespaldo &m_seguimiento;
    const PasosRespaldo &m_pasos;
    QDateTime m_ultimo;
};

} // namespace

DesenlaceRespaldo
hacerRespaldo(const PedidoRespaldo &pedido, SeguimientoRespaldo &seguimiento, const PasosRespaldo &pasos) noexcept
{
    Ronda ronda(pedido, seguimiento, pasos);
    QString motivo;
    try {
        return ronda.hacer();
    } catch (const Cancelado &) {
        return {Tipo::Cancelado};
    } catch (const Falla &falla) {
        motivo = falla.motivo;
    } catch (const db::Error &error) {
        if (error.kind() == db::Error::Kind::Busy)
            return {Tipo::Ocupado};
        motivo = error.description();
    } catch (const std::exception &) {
        motivo = QStringLiteral("No alcanzó la memoria de la computadora.");
    }
    return {.tipo = Tipo::Fallado, .motivo = motivo, .ultimo = ronda.ultimo()};
}

} // namespace maintenance
