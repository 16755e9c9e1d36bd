#pragma once

#include "maintenance/Listas.h"
#include "ui/Ventana.h"

class QComboBox;
class QLabel;
class QPushButton;

namespace maintenance {

/// Chooses the entry that takes the place of the entry "id" of the table "lista" in every record, and does it. Finishes
/// with the "id" of that entry.
class listareemplazo : public ui::Ventana
{
    Q_OBJECT

public:
    listareemplazo(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;

    QLabel *entrada;
    QLabel *usos;
    QComboBox *destino;
    QPushButton *guardar;
    QPushButton *cancelar;

private:
    void reemplazar();

    const Lista *m_lista = nullptr;
    qint64 m_id = 0;
};

} // namespace maintenance
