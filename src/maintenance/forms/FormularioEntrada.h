#pragma once

#include "maintenance/Entradas.h"

#include <QWidget>

class QGridLayout;
class QLineEdit;
class QSpinBox;

namespace maintenance {

/// The fields of one entry: `nombre`, one for each field of the list, named as its column, and `prioridad`.
class FormularioEntrada : public QWidget
{
    Q_OBJECT

public:
    explicit FormularioEntrada(QWidget *parent = nullptr);

    /// Makes the fields of another list, empty.
    void preparar(db::Connection &conexion, const Lista &lista);
    void mostrar(const Entrada &entrada);
    /// The entry shown, with what the fields say.
    [[nodiscard]] Entrada leer() const;

    QLineEdit *nombre;
    QSpinBox *prioridad;

private:
    struct Campo {
        QWidget *editor;
        QWidget *lugar; ///< the editor, or what holds it and its explanation
    };
    [[nodiscard]] Campo campoDe(db::Connection &conexion, const Lista &lista, const CampoLista &campo);

    QGridLayout *m_rejilla;
    QVector<Campo> m_campos;
    QVector<QWidget *> m_pasajeros; ///< what goes when another list comes
    qint64 m_id = 0;
};

} // namespace maintenance
