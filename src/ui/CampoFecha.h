#pragma once

#include <QDate>
#include <QLineEdit>

namespace ui {

/// A date, typed in any form that base::leerFecha() reads ("5/3/80") or picked from a calendar (the button at its end,
/// F4, Alt+Down). A date typed is written out in full when the field is left; anything else stays as typed and is
/// marked.
class CampoFecha : public QLineEdit
{
    Q_OBJECT
    Q_PROPERTY(QDate fecha READ fecha WRITE setFecha NOTIFY fechaCambiada USER true)

public:
    explicit CampoFecha(QWidget *parent = nullptr);

    /// Invalid when the field is empty or holds no date.
    [[nodiscard]] QDate fecha() const;
    /// An invalid date empties the field.
    void setFecha(QDate fecha);
    /// Nothing but blanks.
    [[nodiscard]] bool isNull() const;
    /// What is typed is a date; an empty field holds none.
    [[nodiscard]] bool esValida() const;

    /// The day the calendar opens on while the field is empty; the computer's own without one.
    void setHoy(QDate hoy) { m_hoy = hoy; }

public slots:
    void mostrarCalendario();

signals:
    /// The date is another one, typed, picked or set. Half typed, "5/3/19" is a date on the way to "5/3/1980": what
    /// costs time or writes waits for editingFinished().
    void fechaCambiada(QDate fecha);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void avisar();
    void completar();
    void marcar(bool mala);

    QDate m_avisada;
    QDate m_hoy;
};

} // namespace ui
