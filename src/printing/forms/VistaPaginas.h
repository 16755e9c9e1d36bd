#pragma once

#include <QAbstractScrollArea>
#include <QPixmap>

#include <deque>
#include <memory>

namespace printing {

class Paginas;

/// The pages of a document one below the other, as they will be on paper. Page Up and Page Down go from page to page,
/// Home and End to the first and last; Ctrl and the wheel, + and - change the size. Only what is in sight is painted.
class VistaPaginas : public QAbstractScrollArea
{
    Q_OBJECT

public:
    enum class Ajuste { Ancho, Entera, Fijo };

    explicit VistaPaginas(QWidget *parent = nullptr);
    ~VistaPaginas() override;

    /// Stays at the page where it was, as far as there is one.
    void mostrar(std::shared_ptr<const Paginas> paginas);
    /// The page in sight, from 0.
    [[nodiscard]] int pagina() const;
    void irA(int pagina);
    /// 1 is the real size.
    [[nodiscard]] double zoom() const { return m_zoom; }
    [[nodiscard]] Ajuste ajuste() const { return m_ajuste; }
    void setAjuste(Ajuste ajuste);
    void setZoom(double zoom);
    /// The next larger or smaller size of a round number.
    void acercar(bool mas);
    /// Room for a good part of a sheet.
    [[nodiscard]] QSize sizeHint() const override { return {1000, 680}; }

signals:
    void paginaCambiada(int pagina);
    void zoomCambiado();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    [[nodiscard]] double pixelesPorMm() const;
    [[nodiscard]] QSize ladosHoja() const;
    [[nodiscard]] int arriba(int pagina) const;
    void acomodar();
    void cambiarZoom(double zoom);
    [[nodiscard]] QPixmap dibujo(int pagina);

    std::shared_ptr<const Paginas> m_paginas;
    Ajuste m_ajuste = Ajuste::Ancho;
    double m_zoom = 1;
    int m_avisada = 0;
    struct Pintada {
        int pagina;
        QPixmap dibujo;
    };
    std::deque<Pintada> m_pintadas; ///< pages in the size shown, the latest first
};

} // namespace printing
