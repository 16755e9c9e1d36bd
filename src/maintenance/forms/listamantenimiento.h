#pragma once

#include "maintenance/forms/VentanaLista.h"

namespace maintenance {

/// One lookup list, over the window whose list it is: opened with the table ("lista"), and if wanted a "titulo", the
/// "id" chosen there, or the "texto" typed there, which is proposed as a new entry unless it is one already. Finishes
/// with the entry chosen or just added, {"id", "nombre"}.
class listamantenimiento : public VentanaLista
{
    Q_OBJECT

public:
    listamantenimiento(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;

    QPushButton *elegir;

protected:
    void alGuardar(bool nueva) override;
    void alActivar() override;
    void alMostrar(bool nueva) override;

private:
    void devolver();
};

} // namespace maintenance
