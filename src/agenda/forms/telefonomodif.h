#pragma once

#include "agenda/Telefonos.h"
#include "ui/Ventana.h"

class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace agenda {

/// An entry of the telephone list, "id"; 0 for a new one, which may begin with a "nombre". Tells the "id" it was stored
/// under.
class telefonomodif : public ui::Ventana
{
    Q_OBJECT

public:
    telefonomodif(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;
    [[nodiscard]] bool hayCambios() const override;

    QLineEdit *nombre;
    QLineEdit *telefono;
    QLineEdit *celular;
    QLineEdit *email;
    QLineEdit *direccion;
    QPlainTextEdit *observaciones;
    QPushButton *guardar;
    QPushButton *cancelar;

private:
    [[nodiscard]] Telefono escrito() const;
    void save();

    Telefono m_leido;
};

} // namespace agenda
