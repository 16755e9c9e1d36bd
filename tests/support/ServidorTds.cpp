#include "support/ServidorTds.h"

#include <csignal>

namespace soporte {

ServidorTds::ServidorTds(const QString &carpeta, int puerto)
    : m_carpeta(carpeta)
    , m_puerto(puerto)
{
    arrancar();
}

ServidorTds::~ServidorTds() { matar(); }

bool ServidorTds::pedido() { return qEnvironmentVariableIsSet("VASTELO_POR_LA_RED"); }

QString ServidorTds::servidor() const { return QStringLiteral("127.0.0.1,%1").arg(m_puerto); }

QString ServidorTds::cadena(const QString &base) const
{
    return QStringLiteral("Provider=SQLOLEDB; Initial Catalog=%1; Data Source=%2; User Id=%3; Password=%4")
        .arg(base, servidor(), usuario(), clave());
}

void ServidorTds::matar()
{
    m_proceso.kill();
    m_proceso.waitForFinished();
}

void ServidorTds::detener() const { ::kill(pid_t(m_proceso.processId()), SIGSTOP); }

void ServidorTds::seguir() const { ::kill(pid_t(m_proceso.processId()), SIGCONT); }

void ServidorTds::arrancar()
{
    const QString programa = qEnvironmentVariable("VASTELO_SERVIDOR_TDS");
    m_proceso.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_proceso.start(
        programa,
        {QStringLiteral("--carpeta"),
         m_carpeta,
         QStringLiteral("--clave"),
         clave(),
         QStringLiteral("--puerto"),
         QString::number(m_puerto)});
    if (!m_proceso.waitForReadyRead(10000))
        qFatal("the test server did not start: \"%s\"", qPrintable(programa));
    m_puerto = m_proceso.readLine().trimmed().toInt();
}

} // namespace soporte
