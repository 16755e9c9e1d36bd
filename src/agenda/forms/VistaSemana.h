#pragma once

#include "agenda/SemanaPlantilla.h"

#include <QWidget>

namespace agenda {

/// The picture of a template's week: a column per weekday with its number of slots, hours downwards, a bar per stretch
/// cut into its slots. What two stretches claim is hatched; the part of a last slot beyond the typed end is paler.
class VistaSemana : public QWidget
{
    Q_OBJECT

public:
    explicit VistaSemana(QWidget *parent = nullptr);

    void setSemana(const SemanaPlantilla &semana);
    [[nodiscard]] const SemanaPlantilla &semana() const { return m_semana; }
    /// Weekday of the first column: 0 Sunday ... 6 Saturday.
    void setPrimerDia(int dia);

    /// Where a stretch is drawn.
    [[nodiscard]] QRectF lugarDe(const Franja &franja) const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private:
    [[nodiscard]] int altoEncabezado() const;
    [[nodiscard]] int anchoHoras() const;
    [[nodiscard]] double altoDe(int minutos) const;
    [[nodiscard]] QRectF tramo(int dia, int desde, int hasta) const;
    void pintarRenglones(QPainter &pintor) const;
    void pintarColumnas(QPainter &pintor) const;
    void pintarFranja(QPainter &pintor, const Franja &franja) const;

    SemanaPlantilla m_semana;
    std::array<int, 7> m_orden = ordenSemana(0);
};

} // namespace agenda
