#pragma once

#include "agenda/Plantilla.h"
#include "ui/Ventana.h"

#include <array>

class QCheckBox;
class QComboBox;
class QListWidget;
class QPushButton;
class QSpinBox;

namespace ui {
class CampoFecha;
}

namespace agenda {

class CampoHora;

/// Working-hour templates and days off of the professional "doctor".
class agendahorarios : public ui::Ventana
{
    Q_OBJECT

public:
    agendahorarios(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;
    void refrescar() override;
    [[nodiscard]] bool hayCambios() const override;

    /// The fields of one weekday; their object names are those of the columns ("LuMaDesde", "durtur2").
    struct Renglon {
        CampoHora *maDesde;
        CampoHora *maHasta;
        CampoHora *taDesde;
        CampoHora *taHasta;
        QComboBox *duracion;
    };

    QListWidget *listaplantillas;
    QPushButton *nuevo;
    QPushButton *eliminar;
    ui::CampoFecha *fechadesde;
    ui::CampoFecha *fechahasta;
    std::array<Renglon, 7> dias; ///< Sunday first
    QSpinBox *cantidadsobreturnos;
    QSpinBox *cantidadsobreturnoshora;
    QCheckBox *sobreturnoshoraresaltar;
    QCheckBox *solosobreturnoshoraplanilla;
    QPushButton *guardar;
    QPushButton *cerrar;
    QListWidget *listadias;
    QComboBox *dia;
    QComboBox *mes;
    QComboBox *anio;
    QPushButton *agregardia;
    QPushButton *eliminardia;

private:
    void construir();
    QWidget *panelPlantillas();
    QWidget *panelPlantilla();
    QWidget *panelDias();
    QWidget *panelNoLaborables();

    /// Lists the templates and shows the one of that `id`; 0: an empty one.
    void listar(int elegida);
    void elegirRenglon(int id);
    /// True when nothing typed would be lost, or the person lets it go.
    [[nodiscard]] bool descartar();
    void listarDias();
    void mostrar(const Plantilla &plantilla);
    /// What the fields say; the dates stay as typed in their fields.
    [[nodiscard]] Plantilla leer() const;
    void alElegirPlantilla();
    void cambiarDePlantilla();
    void save();
    void avisarAgenda();

    int m_doctor = 0;
    Plantilla m_mostrada;
    QString m_desde, m_hasta;
};

} // namespace agenda
