#pragma once

#include <QMdiArea>
#include <QPixmap>

namespace app {

/// The place of the windows inside the main window, with a picture behind them that fills it without being distorted. A
/// window that fills it goes on doing so when it changes its size.
class AreaFondo : public QMdiArea
{
    Q_OBJECT

public:
    explicit AreaFondo(QWidget *parent = nullptr);

    /// A file that is no picture leaves the plain ground.
    void setFondo(const QString &archivo);
    [[nodiscard]] bool tieneFondo() const { return !m_fondo.isNull(); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QPixmap m_fondo;
    QPixmap m_ajustado; ///< m_fondo in the size last painted
};

} // namespace app
