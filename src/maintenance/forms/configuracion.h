#pragma once

#include "maintenance/Ajustes.h"
#include "ui/Ventana.h"

class QFrame;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QStackedWidget;

namespace ui {
class CampoFecha;
class Campos;
class Grilla;
} // namespace ui

namespace maintenance {

class CampoImagen;

/// The settings of the practice and of this computer, a page for each group. Opened with {"administrador": id of the
/// user whose administrator password was typed}; without it under the right `accesoconfiguracion`, as long as there is
/// no such user. What was typed survives another request.
class configuracion : public ui::Ventana
{
    Q_OBJECT

public:
    configuracion(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;
    void refrescar() override;
    [[nodiscard]] bool hayCambios() const override;
    [[nodiscard]] QString ayuda() const override;

    /// Shows a page by its name ("agenda").
    void irA(const QString &grupo);

    QLineEdit *buscar;
    QListWidget *grupos;
    QStackedWidget *paginas;
    QLabel *vistaprevia;
    QPushButton *elegircarpeta;
    QPushButton *abrirencabezados;
    QLabel *resumenhistorial;
    ui::CampoFecha *hastahistorial;
    QPushButton *eliminarhistorial;
    ui::Grilla *lisusuarios;
    QPushButton *abrirmedicos;
    QFrame *avisoadministrador; ///< seen while nobody is an administrator with a password
    QPushButton *nombraradministrador;
    QPushButton *guardar;
    QPushButton *cancelar;

private:
    void construir();
    void conectar();
    QWidget *panelAviso();
    QWidget *pagina(const GrupoAjustes &grupo);
    QWidget *seccion(const SeccionAjustes &seccion);
    QWidget *seccionNumeracion(const SeccionAjustes &seccion);
    QWidget *seccionEncabezados();
    QWidget *seccionHistorial();
    QWidget *seccionUsuarios();

    void cargar();
    /// What an older version stored and no option says is shown as it is, until another one is chosen.
    void completarOpciones(const QVariantMap &valores);
    void cargarUsuarios();
    void cargarPagina();
    void mostrarVistaPrevia();
    void mostrarEstado(const QString &texto = {});
    void filtrar(const QString &texto);
    bool alBuscar(int tecla);
    bool eventFilter(QObject *objeto, QEvent *event) override;
    /// aceptado(), with the page of the refused field in front.
    bool aceptadoEnSuPagina(const base::Control &control);
    void save();
    void elegirFondo();
    void elegirCarpetaDeCopias();
    void eliminarDelHistorial();
    void abrirUsuarios();

    struct Buscable {
        int pagina;
        QString texto; ///< folded
        QWidget *rotulo;
        QWidget *campo;
    };

    ui::Campos *m_campos;
    CampoImagen *m_fondo = nullptr;
    QLabel *m_explicacion; ///< of the field that has the focus
    QLabel *m_estado;
    std::vector<Buscable> m_buscables;
    int m_administrador = 0;
    bool m_cargada = false;
};

} // namespace maintenance
