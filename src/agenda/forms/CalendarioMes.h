#pragma once

#include "agenda/Calendario.h"

#include <QWidget>

namespace agenda {

class ReceptorDeTurnos;

/// One month to choose a day from: the month's title, weekday names and the days. Days with appointments are bold with
/// a bar below the number, days off are struck through, today is framed. Arrows move by day and week, PageUp/PageDown
/// by month (with Shift by year), Home goes to today.
class CalendarioMes : public QWidget
{
    Q_OBJECT

public:
    explicit CalendarioMes(QWidget *parent = nullptr);

    [[nodiscard]] QDate fecha() const { return m_fecha; }
    /// Shows the date's month with the date chosen; tells fechaElegida() when it is another date than before.
    void setFecha(QDate fecha);
    void setHoy(QDate hoy);
    void setPrimerDia(int dia);
    /// "Do" ... "Sá" above the days instead of "Dom" ... "Sáb".
    void setEncabezadosCortos(bool cortos);
    /// Days of the shown month that have appointments, and those on which the professional does not attend.
    void setMarcas(std::set<QDate> conTurnos, std::set<QDate> noLaborables);
    [[nodiscard]] const std::set<QDate> &conTurnos() const { return m_conTurnos; }

    /// Lets appointments of the day's grid be dropped on a day; turnoSoltado() tells of it.
    void setAceptaTurnos();

    /// Centre of a shown day, for those who click on it; a null point when it is in another month.
    [[nodiscard]] QPoint lugarDe(QDate fecha) const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

signals:
    void fechaElegida(QDate fecha);
    /// Comes after the drop is over.
    void turnoSoltado(qint64 id, QDate fecha);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool event(QEvent *event) override;

private:
    void disponer();
    [[nodiscard]] QRectF celda(int fila, int columna) const;
    [[nodiscard]] QDate fechaEn(QPointF lugar) const;
    void pintarDia(QPainter &pintor, QRectF lugar, QDate dia) const;

    QDate m_fecha;
    QDate m_hoy;
    int m_primerDia = 0;
    bool m_encabezadosCortos = false;
    MesCalendario m_mes;
    std::set<QDate> m_conTurnos;
    std::set<QDate> m_noLaborables;
    ReceptorDeTurnos *m_receptor = nullptr; ///< only where appointments can be dropped
    int m_rueda = 0;
};

} // namespace agenda
