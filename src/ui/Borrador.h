#pragma once

#include "db/Borradores.h"

#include <QObject>
#include <QTimer>

#include <functional>

namespace db {
class Entorno;
}

namespace ui {

class Campos;

/// Keeps what is typed into a form and not yet saved: written to the database some seconds after the person pauses, so
/// that a crash or a power cut does not lose it, and offered back when the same record is opened again. A window makes
/// one beside its Campos, calls seguir() for each record that it shows and then ofrecer(), and quitar() once what was
/// typed is saved or thrown away.
///
/// Nobody asked for the writing: a failure (read-only file, another station writing) is not told, and tried again.
class Borrador : public QObject
{
    Q_OBJECT

public:
    /// `ventana` is the window's registered name; `titulo` tells at each writing how the person knows the record.
    Borrador(Campos &campos, db::Entorno &entorno, const QString &ventana, std::function<QString()> titulo);

    /// From now on the form shows this record, freshly loaded; the draft of the former one stays as it is.
    void seguir(qint64 registro, int nropaci);
    /// Asks whether what was left unsaved of it shall come back, telling what differs and what somebody has changed
    /// since; puts it into the fields. Nothing happens when there is nothing. Throws db::Error.
    void ofrecer();
    /// The fields were saved, or thrown away by the person: there is nothing to bring back.
    void quitar();
    /// Writes at once what the pause would write.
    void escribir();

    /// Pause after the last key, and how long it may be put off by typing on.
    static constexpr int pausa = 3000; // ms
    static constexpr int demoraMaxima = 15000; // ms

private:
    [[nodiscard]] QJsonObject cambios() const;
    [[nodiscard]] QStringList diferencias(const QJsonObject &datos) const;
    void reponer(const QJsonObject &datos);

    Campos &m_campos;
    db::Entorno &m_entorno;
    std::function<QString()> m_titulo;
    db::Borrador m_borrador; ///< of the record shown; id 0 while nothing is stored
    bool m_sigue = false; ///< a record is shown whose changes count
    QTimer m_pausa;
    QTimer m_limite;
};

} // namespace ui
