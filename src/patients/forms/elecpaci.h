#pragma once

#include "patients/BusquedaPacientes.h"
#include "ui/Ventana.h"

#include <QHash>

class QLabel;
class QLineEdit;
class QPushButton;
class QTimer;

namespace ui {
class Grilla;
}

namespace patients {

/// Finds a patient for whoever needs one. Opened with {"modo": 1..4}: 1 shows the patient's file, 2 gives it to the
/// booking, 3 to the search of its appointments, 4 to a payment. Modes 2 to 4 finish with {"nrohc": int, "nombre":
/// "Apellido, Nombres"}.
class elecpaci : public ui::Ventana
{
    Q_OBJECT

public:
    elecpaci(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;
    void refrescar() override;
    [[nodiscard]] QString ayuda() const override;

    QLabel *etiqueta; ///< what the patient is wanted for
    QLineEdit *apellidoredu;
    QLineEdit *nombresredu;
    ui::Grilla *listapaci;
    QLabel *cantidad;
    QPushButton *nuevo;
    QPushButton *aceptar;
    QPushButton *cancelar;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *objeto, QEvent *event) override;

private:
    void buscar();
    void elegir();
    void crear();
    void irALista();
    [[nodiscard]] QString saldo(const db::ResultSet &filas, int fila);

    int m_modo = 1;
    bool m_porSaldo = false; ///< ordered by balance: then all of them are read, not only those looked at
    QTimer *m_pausa;
    QHash<qint64, QString> m_saldos; ///< by patient, of the rows looked at since the last search
};

} // namespace patients
