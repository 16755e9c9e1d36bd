#pragma once

#include "ui/Ventana.h"

#include <optional>

class QCheckBox;
class QComboBox;
class QFormLayout;
class QListWidget;
class QPushButton;
class QStackedWidget;
class QTabWidget;
class QToolButton;

namespace ui {
class CampoClave;
class Campos;
struct Campo;
} // namespace ui

namespace users {

struct FichaUsuario;

/// Professionals and users: their list, and of the chosen one the data, the password, the rights and the way of
/// working. Opened for the user "id", or for the one who works.
class medicos : public ui::Ventana
{
    Q_OBJECT

public:
    medicos(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;
    void refrescar() override;
    [[nodiscard]] bool hayCambios() const override;
    [[nodiscard]] QString ayuda() const override;

    QListWidget *lisusuarios;
    QPushButton *nuevo;
    QPushButton *eliminar;
    QTabWidget *solapas;
    ui::CampoClave *claveusuario; ///< never shows what is stored
    QPushButton *quitarclave;
    QComboBox *copiarde;
    QPushButton *copiar;
    QPushButton *todos;
    QPushButton *ninguno;
    QPushButton *guardar;
    QPushButton *cerrar;

    /// The fields, each named as its column.
    [[nodiscard]] ui::Campos &campos() { return *m_campos; }

private:
    /// `id` of the administrator whose password opened the settings; 0 for none.
    [[nodiscard]] int administrador() const;
    void construir();
    QWidget *panelUsuarios();
    QWidget *panelNadie();
    QWidget *solapaDatos();
    QWidget *solapaAcceso();
    QWidget *solapaPermisos();
    QWidget *solapaOpciones();
    void agregarFila(QFormLayout &formulario, const ui::Campo &campo, QWidget *alLado = nullptr);
    QToolButton *botonAyuda(const QString &nombre, const QString &titulo, const QString &texto);

    /// Fills the list and shows the user of that `id`; of one who is not listed, nobody.
    void listar(int id);
    void elegirRenglon(int id);
    void alElegir();
    void mostrarElegido();
    void mostrar(const FichaUsuario &ficha);
    void mostrarClave();
    void alCambiarTipo();
    /// True when nothing typed would be lost, or the person lets it go.
    [[nodiscard]] bool descartar();
    /// What is to become of the password; see UsuarioEditado.
    [[nodiscard]] std::optional<QString> claveNueva() const;
    void marcarDerechos(bool si);
    void copiarPermisos();
    void save();

    ui::Campos *m_campos;
    QStackedWidget *m_paginas; ///< nobody, or the user
    int m_id = 0; ///< shown user; 0: a new one, or nobody
    bool m_nadie = true;
    bool m_tieneClave = false;
    bool m_quitarClave = false;
};

} // namespace users
