#pragma once

#include <QObject>
#include <QPoint>

#include <functional>

class QDropEvent;
class QMimeData;
class QWidget;

namespace agenda {

/// An appointment on its way between the day's grid and the calendar. It means something to this very program only:
/// another one may look at another database.
[[nodiscard]] QMimeData *mimeDeTurno(qint64 id);
/// The `id` it carries; 0 for anything else.
[[nodiscard]] qint64 turnoDe(const QMimeData *mime);

/// Lets appointments be dropped on a widget, and only says so; what becomes of them is its window's business.
class ReceptorDeTurnos : public QObject
{
    Q_OBJECT

public:
    /// What lies at a place of the widget, by a number of the widget's own; 0 where nothing can be dropped.
    using DestinoEn = std::function<qint64(QPoint lugar)>;
    ReceptorDeTurnos(QWidget &widget, DestinoEn destinoEn);

    /// What lies below the appointment being dragged; the widget is painted anew when it changes.
    [[nodiscard]] qint64 destino() const { return m_destino; }

    bool eventFilter(QObject *objeto, QEvent *event) override;

signals:
    /// Comes after the drop is over: a question must not be asked while the pointer still holds what it dragged.
    void soltado(qint64 id, qint64 destino);

private:
    void setDestino(qint64 destino);
    void alPasar(QDropEvent &event, bool suelta);

    QWidget &m_widget;
    DestinoEn m_destinoEn;
    qint64 m_destino = 0;
};

} // namespace agenda
