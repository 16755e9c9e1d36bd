#pragma once

#include "patients/ListaPacientes.h"
#include "ui/Ventana.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTimer;

namespace ui {
class CampoFecha;
class Grilla;
} // namespace ui

namespace patients {

/// Finds a patient for whoever needs one. Opened with {"modo": 1..4} and, as first filters, "apellido" and "nombres":
/// mode 1 shows the patient's file, 2 gives it to the booking, 3 shows its appointments (window `resulbusque`), 4 gives
/// it to a payment. Finishes with {"nrohc": int, "nombre": "Apellido, Nombres"}.
class elecpaci : public ui::Ventana
{
    Q_OBJECT

public:
    elecpaci(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;
    void refrescar() override;
    [[nodiscard]] QString ayuda() const override;

    QLabel *etiqueta; ///< what the patient is wanted for
    QRadioButton *opcionredu;
    QRadioButton *opcionampli;

    QWidget *panelredu;
    QLineEdit *apellidoredu;
    QLineEdit *nombresredu;

    QWidget *panelampli;
    QLineEdit *numehistoria;
    QLineEdit *apellido;
    QLineEdit *apellido2;
    QLineEdit *nombres;
    QLineEdit *dni;
    QLineEdit *telpar;
    QLineEdit *nroos;
    ui::CampoFecha *fecnac;
    QComboBox *sexo;
    QLineEdit *edad1;
    QLineEdit *edad2;
    QComboBox *ciudad;
    QComboBox *provincia;
    QRadioButton *todascober;
    QRadioButton *sicober;
    QRadioButton *nocober;
    QRadioButton *nosabecober;
    QComboBox *coberfiltro;
    QRadioButton *activos;
    QRadioButton *inactivos;
    QRadioButton *todos;

    ui::Grilla *listapaci;
    QLabel *cantidad;
    QPushButton *limpiar;
    QPushButton *exportarlista;
    QPushButton *nuevo;
    QPushButton *eliminar;
    QPushButton *aceptar;
    QPushButton *cancelar;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *objeto, QEvent *event) override;

private:
    void construir();
    QWidget *panelReducido();
    QWidget *panelAmplio();
    void conectar();
    void prepararLista();
    void cargarListas();

    [[nodiscard]] FiltroPacientes filtro() const;
    void vaciar();
    void cambiarForma();
    void buscar();
    void buscarAlEscribir();
    void ordenarPor(int columna);
    void elegir();
    void crear();
    void borrar();
    void irALista();
    [[nodiscard]] bool enFiltro() const;
    bool teclaDeFiltro(int tecla);
    bool teclaDeLista(const QKeyEvent &event);

    int m_modo = 1;
    ListaPacientes m_lista;
    FiltroPacientes m_buscado; ///< the list's
    ColumnaPaciente m_orden = ColNombre; ///< what the person chose to order by
    bool m_vaciando = false;
    QTimer *m_pausa;
    QPointer<QLineEdit> m_ultimo; ///< the field typed in last
};

} // namespace patients
