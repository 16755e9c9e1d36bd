#pragma once

#include "ui/Ventana.h"

class QLabel;
class QListWidget;
class QPushButton;

namespace ui {
class CampoClave;
}

namespace users {

class Identidad;

/// What both login windows are: the list of users with the current one chosen, the password box, and a user who has
/// proved to be one at the end.
class FormularioIngreso : public ui::Ventana
{
    Q_OBJECT

public:
    FormularioIngreso(db::Entorno &entorno, ui::Ventanas &ventanas, const QString &nombre, const QString &titulo);

    bool preparar(const ui::Pedido &pedido) override;
    void refrescar() override;

    QListWidget *lisusuarios;
    ui::CampoClave *claveactual;
    QPushButton *aceptar;
    QPushButton *cancelar;

protected:
    /// The password was right; what happens now is the window's own affair. May throw db::Error.
    virtual void entrar(const Identidad &quien) = 0;
    /// What stands above the list.
    void setPedido(const QString &texto);

    bool eventFilter(QObject *objeto, QEvent *event) override;

private:
    void construir();
    void listar(int elegido);
    [[nodiscard]] int usuarioElegido() const;

    QLabel *m_pedido;
};

} // namespace users
