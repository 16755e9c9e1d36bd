#pragma once

#include "base/Rechazo.h"

#include <QDateTime>
#include <QWidget>

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QSpinBox;

namespace db {
class Connection;
}

namespace agenda {

class CalendarioMes;

/// Chooses a day and an hour of a professional: a month calendar with the days off marked, the day's start times with
/// their occupation, and a field for any other hour.
class SelectorHora : public QWidget
{
    Q_OBJECT

public:
    explicit SelectorHora(QWidget *parent = nullptr);

    /// Throws db::Error.
    void preparar(db::Connection &conexion, int doctor, QDate hoy, const QDateTime &momento);
    /// Loads the chosen day; call it when diaCambiado() was sent. The chosen hour stays. Throws db::Error.
    void cargar(db::Connection &conexion, QDate hoy);

    /// The chosen day and hour; refused when what is typed is no hour, and on a day off. Fields: `hora`, `fechadia`.
    [[nodiscard]] base::Resultado<QDateTime> elegido(db::Connection &conexion) const;
    /// As far as it is one, whatever the day.
    [[nodiscard]] std::optional<QDateTime> momento() const;

    QComboBox *mes;
    QSpinBox *anio;
    CalendarioMes *fechadia;
    QLabel *estadodia; ///< the day in words, and why it has no start times
    QListWidget *listahoras;
    QLineEdit *hora;

signals:
    void diaCambiado();
    /// The hour is another one, chosen or typed.
    void horaCambiada();
    /// Enter or double click on a start time.
    void aceptada();

private:
    void construir();
    void marcarHora();

    int m_doctor = 0;
};

} // namespace agenda
