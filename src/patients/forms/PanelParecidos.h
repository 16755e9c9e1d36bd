#pragma once

#include "patients/Parecidos.h"

#include <QFrame>

class QPushButton;

namespace ui {
class Grilla;
}

namespace patients {

/// The likely duplicates of the patient being entered, beside the form; out of sight while there are none.
class PanelParecidos : public QFrame
{
    Q_OBJECT

public:
    explicit PanelParecidos(QWidget *parent = nullptr);

    void mostrar(const std::vector<Parecido> &parecidos);
    /// Looks for them and shows them; none where the search fails, as a hint is not worth a message while somebody
    /// types. True when the panel came or went.
    bool buscar(db::Connection &conexion, const Conocido &conocido);

    ui::Grilla *parecidos;
    QPushButton *usarparecido;

signals:
    /// The person chose the patient that exists already.
    void elegido(int nrohc, const QString &nombre);

private:
    void elegir();
};

} // namespace patients
