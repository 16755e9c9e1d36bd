#pragma once

#include "db/VerificadorHistorial.h"
#include "maintenance/ExportacionHistorial.h"
#include "maintenance/Historial.h"
#include "ui/Ventana.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QTimer;

namespace ui {
class CampoFecha;
class Grilla;
} // namespace ui

namespace maintenance {

/// "Historial de Accesos": the activity log, newest first, and whether somebody changed it from outside. Searching,
/// exporting and verifying go on in small pieces between what the person does. Needs the right `accesohistorial`.
class historial : public ui::Ventana
{
    Q_OBJECT

public:
    historial(db::Entorno &entorno, ui::Ventanas &ventanas);
    ~historial() override;

    bool preparar(const ui::Pedido &pedido) override;
    void refrescar() override;
    [[nodiscard]] QString ayuda() const override;
    /// All rows of the filter, not only those read so far.
    void exportar(const ui::Grilla &grilla) override;

    /// True while it is searching, exporting or verifying.
    [[nodiscard]] bool ocupada() const;

    ui::CampoFecha *fechadesde;
    ui::CampoFecha *fechahasta;
    QComboBox *usuario;
    QComboBox *ventana;
    QLineEdit *texto;
    QPushButton *quitarfiltros;
    ui::Grilla *lista;
    QPlainTextEdit *detalle;
    QLabel *icono;
    QLabel *estado;
    QWidget *diferencias;
    ui::Grilla *hallazgos;
    QLabel *cantidad;
    QProgressBar *avance;
    QPushButton *detener;
    QPushButton *verificar;
    QPushButton *exportarlista;
    QPushButton *cerrar;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void construir();
    QWidget *filaDeFiltros();
    QWidget *panelDeDiferencias();
    QWidget *filaDeBotones();
    void conectar();

    void cargarListas();
    [[nodiscard]] std::optional<FiltroHistorial> filtroPedido();
    void filtrar();
    void limpiarFiltros();
    void buscar();
    void pedirMas();
    void seguirBuscando();
    void elegirDestino();
    void seguirExportando();
    void empezarVerificacion(db::VerificadorHistorial::Alcance alcance);
    void seguirVerificando();
    void irAlHallazgo(int fila);
    /// What is under way, for a moment; the rest when the person has had her turn.
    void trabajar();
    void dejarTodo();

    void mostrarDetalle();
    void mostrarCantidad();
    void mostrarInforme();
    void mostrarAvance();
    [[nodiscard]] bool buscando() const;

    QTimer *m_pausa; ///< while a filter is being typed
    QTimer *m_tarea;
    const db::Connection *m_base = nullptr; ///< whose rows the work under way reads
    std::optional<UsuariosHistorial> m_usuarios;
    QStringList m_ventanas; ///< of the list, whose ids count from 1
    FiltroHistorial m_filtro;
    std::optional<BusquedaHistorial> m_busqueda;
    int m_faltan = 0; ///< rows asked for and not found yet
    bool m_detenida = false; ///< by the person, in the middle of a search
    std::unique_ptr<ExportacionHistorial> m_exportacion;
    std::unique_ptr<db::VerificadorHistorial> m_verificador;
    bool m_pedida = false; ///< the person asked for the verification under way
    db::InformeHistorial m_informe;
};

} // namespace maintenance
