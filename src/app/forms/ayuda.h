#pragma once

#include "app/Manual.h"
#include "ui/Ventana.h"

class QLineEdit;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace app {

class PaginaAyuda;

/// The user's guide inside the program: contents, pages, search. `datos`: "ventana" opens it at the page that explains
/// that window.
class ayuda : public ui::Ventana
{
    Q_OBJECT

public:
    ayuda(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;
    [[nodiscard]] QSize sizeHint() const override { return {1000, 680}; }

    QLineEdit *buscar;
    QTreeWidget *indice; ///< the contents, or what was found
    PaginaAyuda *pagina;
    QPushButton *atras;
    QPushButton *adelante;
    QPushButton *inicio;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void mostrarIndice();
    void mostrarHallazgos();
    void abrirElegida();
    void elegirEnIndice();

    Manual m_manual;
};

} // namespace app
