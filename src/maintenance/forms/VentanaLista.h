#pragma once

#include "maintenance/Entradas.h"
#include "ui/Ventana.h"

class QGroupBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QVBoxLayout;

namespace ui {
class Grilla;
}

namespace maintenance {

class FormularioEntrada;

/// What the windows over a lookup list share: its entries with a filter, and one of them, or a new one, in a form.
/// What is typed goes only when it is saved, or when the person lets it go.
class VentanaLista : public ui::Ventana
{
    Q_OBJECT

public:
    void refrescar() override;
    [[nodiscard]] bool hayCambios() const override;
    [[nodiscard]] QString ayuda() const override;
    bool eventFilter(QObject *objeto, QEvent *event) override;

    QLabel *titulolista;
    QLineEdit *filtro;
    QLabel *cantidad;
    ui::Grilla *entradas = nullptr; ///< another one for each list
    FormularioEntrada *formulario;
    QPushButton *nuevo;
    QPushButton *guardar;
    QPushButton *eliminar;
    QPushButton *reemplazar;
    QPushButton *usos;
    QPushButton *exportacion;
    QPushButton *cerrar;

protected:
    VentanaLista(db::Entorno &entorno, ui::Ventanas &ventanas, const QString &nombre, const QString &titulo);

    /// The whole of it; `botones` is the row below, which ends in `cerrar`.
    [[nodiscard]] QVBoxLayout *columna() const { return m_columna; }
    [[nodiscard]] QHBoxLayout *botones() const { return m_botones; }

    [[nodiscard]] const Lista *listaActual() const { return m_lista; }
    [[nodiscard]] const Entrada &mostrada() const { return m_mostrada; }
    /// Shows the entries of a list, and a new one in the form.
    void abrirLista(const Lista &lista);
    /// Chooses the entry in the list and shows it; a new one for 0 or one that is gone.
    void mostrarEntrada(qint64 id);
    /// A new entry in the form, its name proposed.
    void proponer(const QString &nombre);
    /// True when nothing typed would be lost, or the person lets it go.
    [[nodiscard]] bool descartar();

    /// An entry was saved and is shown.
    virtual void alGuardar(bool nueva);
    /// Enter or double click on an entry.
    virtual void alActivar();
    /// Another entry, or a new one, is in the form.
    virtual void alMostrar(bool nueva);

private:
    void construir();
    void ponerGrilla();
    void cargar();
    void alCambiarFila();
    void mostrar(const Entrada &entrada);
    void save();
    void borrar();
    void abrirReemplazo();
    void informarUsos();

    QVBoxLayout *m_columna;
    QHBoxLayout *m_botones;
    QVBoxLayout *m_lugarGrilla;
    QGroupBox *m_grupo;
    const Lista *m_lista = nullptr;
    Entrada m_mostrada; ///< as stored; `id` 0: a new one
    Entrada m_inicial; ///< what stood in the fields before the person typed
};

} // namespace maintenance
