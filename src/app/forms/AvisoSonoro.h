#pragma once

#include <QPointer>
#include <QString>

class QThread;

namespace app {

/// Plays a sound file, in a thread of its own that is made at the first one: starting up costs nothing, and an audio
/// service that does not answer holds nobody up. Silent without the file, without an audio device, and when it fails.
class AvisoSonoro
{
public:
    AvisoSonoro() = default;
    ~AvisoSonoro();
    AvisoSonoro(const AvisoSonoro &) = delete;
    AvisoSonoro &operator=(const AvisoSonoro &) = delete;

    /// Returns at once; a sound still being played is begun anew.
    void tocar(const QString &archivo);

private:
    QThread *m_hilo = nullptr;
    QPointer<QObject> m_parlante; ///< lives in the thread
};

} // namespace app
