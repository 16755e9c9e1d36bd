#pragma once

#include "printing/Encabezados.h"
#include "ui/Ventana.h"

class QCheckBox;
class QLabel;
class QPushButton;

namespace ui {
class BarraFormato;
class EditorTexto;
} // namespace ui

namespace printing {

/// "Encabezados de las impresiones": the general and the patient header, and the picture beside them. Opened from the
/// configuration, which tells with the fact "autorizado" that an administrator's password opened it; without it the
/// current user must have the right to configure.
class encabezados : public ui::Ventana
{
    Q_OBJECT

public:
    encabezados(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;
    [[nodiscard]] bool hayCambios() const override;
    [[nodiscard]] QString ayuda() const override;

    ui::BarraFormato *barra;
    ui::EditorTexto *encabezadogeneral;
    ui::EditorTexto *encabezadopaciente;
    QCheckBox *encabezadoimagen;
    QLabel *imagen; ///< the picture as it is now
    QPushButton *insertarimagen;
    QPushButton *borrarimagen;
    QPushButton *vistaprevia;
    QPushButton *guardar;
    QPushButton *cancelar;

private:
    void construir();
    QWidget *grupo(const QString &titulo, ui::EditorTexto *editor, const QVector<Marcador> &marcadores);
    QWidget *panelImagen();
    void ponerRotuloId();
    void mostrarImagen();
    void insertarImagen();
    void borrarImagen();
    void mostrarMuestra();
    void save();
    [[nodiscard]] PlantillasEncabezado escritas() const;

    int m_administrador = 0;
    PlantillasEncabezado m_guardadas; ///< as the editors give them back when nothing was typed
    bool m_hayImagen = false;
};

} // namespace printing
