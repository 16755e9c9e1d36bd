#pragma once

#include "agenda/BusquedaTelefonos.h"
#include "ui/Ventana.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTimer;

namespace ui {
class Grilla;
}

namespace agenda {

/// The telephone list: the practice's own entries, kept here, with the telephones of professionals and patients beside
/// them to be looked up, in one search as one types.
class telefonos : public ui::Ventana
{
    Q_OBJECT

public:
    telefonos(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;
    void refrescar() override;
    [[nodiscard]] QString ayuda() const override;

    QLineEdit *buscado;
    QCheckBox *conpacientes;
    QCheckBox *conprofesionales;
    ui::Grilla *lista;
    QLabel *cantidad;
    QPushButton *nuevo;
    QPushButton *modificar;
    QPushButton *eliminar;
    QPushButton *ficha;

protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override;

private:
    void construir();
    void conectar();
    void buscar();
    void habilitar();
    [[nodiscard]] const Contacto *actual() const;
    void activar();
    void abrirEntrada(int id);
    void eliminarActual();

    ContactosHallados m_hallados;
    QTimer *m_espera; ///< lets a quick typist finish
};

} // namespace agenda
