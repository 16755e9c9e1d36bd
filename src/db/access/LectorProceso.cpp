#include "db/access/LectorProceso.h"

#include "db/Error.h"
#include "db/access/FuenteSobreCopia.h"
#include "db/access/Tramos.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>

namespace db::access {

namespace {

#ifdef Q_OS_WIN
const QString lector = QStringLiteral("vastelo-access-odbc.exe");
#else
const QString lector = QStringLiteral("vastelo-access");
#endif

/// Ends the process when the reading is over, however it ends.
class Proceso
{
public:
    Proceso(const QString &programa, const QStringList &argumentos)
    {
        m_proceso.setStandardErrorFile(QProcess::nullDevice());
        m_proceso.setStandardInputFile(QProcess::nullDevice());
        m_proceso.start(programa, argumentos, QIODevice::ReadOnly);
        if (!m_proceso.waitForStarted())
            throw Error(Error::Kind::CannotOpen, 0, QStringLiteral("No se pudo iniciar el lector de bases de Access."));
    }
    ~Proceso()
    {
        m_proceso.kill();
        m_proceso.waitForFinished();
    }
    Proceso(const Proceso &) = delete;
    Proceso &operator=(const Proceso &) = delete;

    QProcess *operator->() { return &m_proceso; }

private:
    QProcess m_proceso;
};

} // namespace

LectorProceso::LectorProceso(const QString &archivo, const QString &lector, int segundosDeEspera)
    : m_archivo(archivo)
    , m_lector(lector)
    , m_segundosDeEspera(segundosDeEspera)
{
}

QString LectorProceso::rutaDelLector()
{
    const QString ruta = QDir(QCoreApplication::applicationDirPath()).filePath(lector);
    return QFileInfo(ruta).isExecutable() ? ruta : QString();
}

std::unique_ptr<Fuente> fuenteDelSistema(const QString &archivo)
{
    const auto abrir
        = [](const QString &cual) { return std::make_unique<LectorProceso>(cual, LectorProceso::rutaDelLector()); };
#ifdef Q_OS_WIN
    return std::make_unique<FuenteSobreCopia>(archivo, abrir);
#else
    return abrir(archivo);
#endif
}

bool LectorProceso::leer(Receptor &receptor, const QString &solo)
{
    if (m_lector.isEmpty())
        throw Error(
            Error::Kind::CannotOpen,
            0,
            QStringLiteral("Esta instalación no tiene el lector de bases de Access (%1).").arg(lector));
    QStringList argumentos{m_archivo};
    if (!solo.isEmpty())
        argumentos << solo;
    Proceso proceso(m_lector, argumentos);
    Tramos tramos(receptor);
    QElapsedTimer silencio;
    silencio.start();
    constexpr int momento = 100;
    while (!tramos.completo()) {
        if (!receptor.sigue())
            return false;
        const bool sigueVivo = proceso->state() != QProcess::NotRunning;
        if (proceso->bytesAvailable() == 0 && sigueVivo)
            proceso->waitForReadyRead(momento);
        const QByteArray leido = proceso->readAllStandardOutput();
        if (!leido.isEmpty()) {
            if (!tramos.tomar(leido))
                return false;
            silencio.restart();
        } else if (!sigueVivo) {
            throw Tramos::danio(QStringLiteral("la lectura se cortó"));
        } else if (silencio.elapsed() > m_segundosDeEspera * qint64(1000)) {
            throw Tramos::danio(QStringLiteral("la lectura no avanza"));
        }
    }
    return true;
}

} // namespace db::access
