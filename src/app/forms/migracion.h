#pragma once

#include "app/Migracion.h"
#include "ui/Ventana.h"

#include <QDateTime>

class QLabel;
class QProgressBar;
class QPushButton;
class QThread;
class QTimer;

namespace ui {
class Grilla;
}

namespace app {

class CambioDeRuta;

/// Moves the database to a server or back, as asked for with "clase" (PedidoTraslado::Clase) and "ruta" (a record of
/// ruta.dat): shows how far it is, can be cancelled at any moment without loss, and at the end shows every table with
/// what was found on both sides. Its result tells under "usada" whether the program has gone over to the new database.
/// The work is done in a thread of its own.
class migracion : public ui::Ventana
{
    Q_OBJECT

public:
    migracion(db::Entorno &entorno, ui::Ventanas &ventanas, CambioDeRuta *red);
    /// Cancels what is under way and waits for it.
    ~migracion() override;

    bool preparar(const ui::Pedido &pedido) override;
    [[nodiscard]] bool enMarcha() const { return m_hilo != nullptr; }

    QLabel *que = nullptr; ///< what is being moved, and where to
    QLabel *estado = nullptr; ///< "Copiando 'Agenda Turnos' (tabla 12 de 103)"
    QProgressBar *avance = nullptr;
    QLabel *registros = nullptr; ///< "12.000 de 45.300 registros"
    QLabel *tiempo = nullptr; ///< "0:42"
    ui::Grilla *tablas = nullptr;
    QLabel *notas = nullptr;
    QPushButton *cancelar = nullptr; ///< "Cerrar" when it is over

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void armar();
    void empezar();
    void mostrarEstado();
    void preguntarCancelar();
    void concluir();
    void mostrarDesenlace();

    CambioDeRuta *m_red;
    PedidoTraslado m_pedido;
    db::migracion::Desenlace m_desenlace; ///< written by the thread, read after it
    std::unique_ptr<db::migracion::Seguimiento> m_seguimiento;
    QThread *m_hilo = nullptr;
    QTimer *m_reloj;
    QDateTime m_comienzo;
    QString m_archivo; ///< of the report
    bool m_preguntando = false;
};

} // namespace app
