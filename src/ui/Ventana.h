#pragma once

#include "base/Rechazo.h"
#include "ui/Ventanas.h"

#include <QWidget>

#include <functional>

class QAbstractButton;

namespace db {
class Connection;
class Entorno;
} // namespace db

namespace ui {

class Grilla;

/// Base of every window: knows the shared state, runs its actions so that a database failure is shown once and leaves
/// the fields as typed, closes on Esc (asking when something would be lost), saves on Ctrl+S by pressing the control
/// named `guardar`, new on Ctrl+N (`nuevo`), print on Ctrl+P (`imprimir`; without such a control, the list that has the
/// focus, or the only one), Del in a list removes (`eliminar`), F5 loads again, F1 shows ayuda(), or else opens the
/// window of that name at this one's page. Enter moves on to the next field, presses the button that has the focus, or
/// the one named by setEnter().
class Ventana : public QWidget
{
    Q_OBJECT

public:
    /// `nombre` is the window's given name: its object name and the name it is registered under.
    Ventana(db::Entorno &entorno, Ventanas &ventanas, const QString &nombre, const QString &titulo);

    /// Called each time the window is asked for, before it is shown. False: nothing to show (it has told the person
    /// why); a new window is then discarded. May throw db::Error, which counts as false once it was shown.
    virtual bool preparar(const Pedido &pedido);
    /// Loads shown data again without losing selection, scroll position or what is being typed.
    virtual void refrescar() { }
    /// True while closing would lose something typed.
    [[nodiscard]] virtual bool hayCambios() const { return false; }
    /// Help text of the window; empty: the guide explains it.
    [[nodiscard]] virtual QString ayuda() const { return {}; }

    /// Takes a request: keeps it as datos() and asks preparar(). A declined one leaves the former in force.
    bool recibir(const Pedido &pedido);
    /// refrescar() with its failures shown.
    void actualizar();
    /// Asks for a file and writes all rows of a grid to it as CSV, with an entry in the activity log. Tells of a
    /// failure; a long one shows how far it is and can be cancelled, which leaves the file as it was.
    virtual void exportar(const Grilla &grilla);
    /// The selected rows of a grid, or all with their titles, to the clipboard; in the same way.
    void copiar(const Grilla &grilla, bool soloElegidas);
    /// Runs an action; a db::Error is shown ("ERROR...") and yields false.
    bool intentar(const std::function<void()> &accion);
    /// Shows all rows of a grid as they are to be printed; see Ventanas::setImprimirLista().
    void imprimirLista(const Grilla &grilla);
    [[nodiscard]] bool puedeImprimirLista() const;

signals:
    void terminada(const QVariantMap &resultado);
    /// The window has agreed to close and is no longer to be used.
    void cerrada();

protected:
    [[nodiscard]] db::Entorno &entorno() const { return m_entorno; }
    [[nodiscard]] Ventanas &ventanas() const { return m_ventanas; }
    [[nodiscard]] db::Connection &conexion() const;
    [[nodiscard]] const QVariantMap &datos() const { return m_pedido.datos; }

    /// Opens another window over this one. Null when it declined, and when it is not part of this version: then the
    /// person was told.
    Ventana *abrirVentana(const QString &nombre, const Pedido &pedido = {});
    /// Connects a button's click to an action run by intentar().
    void alPulsar(QAbstractButton *boton, const std::function<void()> &accion);
    /// Enter in one of those fields (in any field, when none is given) presses this button.
    void setEnter(QAbstractButton *boton, const QList<QWidget *> &campos = {});
    /// Shows a refusal and puts the focus on its field; true when there was nothing to refuse.
    bool aceptado(const base::Control &control);
    /// Fits a dialog's size to its content after parts of it came or went, keeping it whole on the screen.
    void reacomodar();
    /// Closes without asking and hands the result to who asked.
    void terminar(const QVariantMap &resultado);

    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    bool pulsar(const QString &nombre);
    bool alImprimir();
    bool alEnter();
    bool mostrarAyuda();

    db::Entorno &m_entorno;
    Ventanas &m_ventanas;
    Pedido m_pedido;
    QPointer<QAbstractButton> m_botonEnter;
    QList<QWidget *> m_camposEnter;
    bool m_terminando = false;
    bool m_preguntando = false;
};

} // namespace ui
