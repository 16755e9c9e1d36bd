#pragma once

#include "agenda/AvisosTurno.h"
#include "ui/Ventana.h"

class QComboBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace ui {
class CampoFecha;
class Grilla;
} // namespace ui

namespace agenda {

class Enlaces;

/// "Turnos de mañana": whom to remind of the appointments of a day, with their telephones and a message written for
/// each. Facts understood when it is opened: "doctor" (`id`, 0 for all) and "fecha" (QDate; without it the next day
/// with appointments). Sends nothing: the message is copied, or handed to the person's own application.
class agendamanana : public ui::Ventana
{
    Q_OBJECT

public:
    agendamanana(db::Entorno &entorno, ui::Ventanas &ventanas, std::shared_ptr<Enlaces> enlaces);

    bool preparar(const ui::Pedido &pedido) override;
    void refrescar() override;
    void exportar(const ui::Grilla &grilla) override;

    QComboBox *lisdocto;
    ui::CampoFecha *fecha;
    QLabel *estado;
    ui::Grilla *lista;
    QPlainTextEdit *modelo;
    QPushButton *restaurar;
    QPlainTextEdit *mensaje;
    QPushButton *copiarmensaje;
    QPushButton *abrirenlace;
    QPushButton *copiarlista;
    QPushButton *exportarlista;
    QPushButton *imprimir;

private:
    void construir();
    QWidget *panelMensajes();
    void conectar();
    void cargar();
    void mostrarEstado();
    void mostrarMensaje();
    void ponerModelo(const QString &texto);
    void abrirConversacion();
    void print();
    [[nodiscard]] const TurnoListado *turnoActual() const;

    std::shared_ptr<Enlaces> m_enlaces;
    std::vector<TurnoListado> m_turnos;
    QDate m_fecha; ///< of those; the field may hold another one, half typed
};

} // namespace agenda
