#pragma once

#include "ui/Grilla.h"

namespace agenda {

class ReceptorDeTurnos;

/// The day's grid: an appointment can be dragged onto another row, which only says so; what becomes of it is its
/// window's business.
class GrillaTurnos : public ui::Grilla
{
    Q_OBJECT

public:
    GrillaTurnos(const QString &nombre, const QString &encabezado, QWidget *parent = nullptr);

    /// Which rows can be dragged, and which can be dropped on, by their key.
    void setArrastrables(std::function<bool(qint64 clave)> se) { m_arrastrable = std::move(se); }
    void setDestinos(std::function<bool(qint64 clave)> se) { m_esDestino = std::move(se); }
    /// What is said in the middle of it while it has no rows.
    void setAviso(const QString &aviso);
    /// True while something is being dragged out of it: its rows must stay what they are.
    [[nodiscard]] bool arrastrando() const { return m_arrastrando; }

signals:
    /// Appointment `id` was dropped on the row of that key. Comes after the drop is over.
    void soltado(qint64 id, qint64 clave);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void arrastrar(qint64 id);
    [[nodiscard]] qint64 claveEn(QPoint lugar) const;
    [[nodiscard]] qint64 destinoEn(QPoint lugar);

    ReceptorDeTurnos *m_receptor;
    std::function<bool(qint64)> m_arrastrable;
    std::function<bool(qint64)> m_esDestino;
    qint64 m_prensado = 0; ///< key of the row that may be dragged when the mouse moves
    QPoint m_desde;
    bool m_arrastrando = false;
    QString m_aviso;
};

} // namespace agenda
