#pragma once

#include "app/MenuPrincipal.h"

#include <QScrollArea>

class QToolButton;

namespace app {

/// The column of picture buttons at the left of the main window. Up and Down walk through it; the underlined letter
/// presses a button while the column has the focus, and together with Alt while setTeclas() is on.
class ColumnaMenu : public QScrollArea
{
    Q_OBJECT

public:
    explicit ColumnaMenu(QWidget *parent = nullptr);

    /// Whether Alt and a letter press a button from anywhere. Off while a window is open: the letters are the window's.
    void setTeclas(bool activas);
    /// Gives the focus to the button that was used last.
    void enfocar();

signals:
    void pulsado(const app::BotonMenu &boton);

protected:
    bool eventFilter(QObject *objeto, QEvent *event) override;

private:
    std::vector<QToolButton *> m_botones; ///< as in menuPrincipal()
    size_t m_ultimo = 0;
};

} // namespace app
