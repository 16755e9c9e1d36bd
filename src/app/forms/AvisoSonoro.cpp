#include "app/forms/AvisoSonoro.h"

#include <QAudioDevice>
#include <QFileInfo>
#include <QMediaDevices>
#include <QSoundEffect>
#include <QThread>
#include <QUrl>

namespace app {

namespace {

thread_local bool callado = false;
QtMessageHandler anterior = nullptr;

/// What the audio libraries have to say about a computer without sound concerns nobody.
void filtrar(QtMsgType tipo, const QMessageLogContext &contexto, const QString &texto)
{
    if (!callado)
        anterior(tipo, contexto, texto);
}

/// Lives in the thread of the sounds.
class Parlante : public QObject
{
public:
    void tocar(const QString &archivo)
    {
        callado = true;
        if (QMediaDevices::audioOutputs().isEmpty())
            return;
        if (!m_efecto)
            m_efecto = new QSoundEffect(this);
        if (const QUrl fuente = QUrl::fromLocalFile(archivo); m_efecto->source() != fuente)
            m_efecto->setSource(fuente);
        m_efecto->play(); // as soon as it is loaded
    }

private:
    QSoundEffect *m_efecto = nullptr;
};

} // namespace

AvisoSonoro::~AvisoSonoro()
{
    if (!m_hilo)
        return;
    m_hilo->quit();
    // One that hangs in the audio service goes with the process.
    if (m_hilo->wait(1000))
        delete m_hilo;
}

void AvisoSonoro::tocar(const QString &archivo)
{
    if (!QFileInfo::exists(archivo))
        return;
    if (!m_hilo) {
        if (!anterior)
            anterior = qInstallMessageHandler(filtrar);
        m_hilo = new QThread;
        auto *parlante = new Parlante;
        m_parlante = parlante;
        parlante->moveToThread(m_hilo);
        QObject::connect(m_hilo, &QThread::finished, parlante, &QObject::deleteLater);
        m_hilo->start();
    }
    auto *parlante = static_cast<Parlante *>(m_parlante.data());
    QMetaObject::invokeMethod(
        parlante, [parlante, archivo] { parlante->tocar(archivo); }, Qt::QueuedConnection);
}

} // namespace app
