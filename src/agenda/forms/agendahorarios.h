#pragma once

#include "agenda/Plantilla.h"
#include "ui/Ventana.h"

#include <array>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QGroupBox;
class QLabel;
class QListWidget;
class QPushButton;
class QSpinBox;

namespace ui {
class CampoFecha;
}

namespace agenda {

class CampoHora;
class VistaSemana;

/// Working-hour templates and days off of the professional "doctor" (without one: the active professional), with a
/// picture of the week that the hours give as they are typed. "agendahorarios2" is the same window, opened from the
/// view of all agendas.
class agendahorarios : public ui::Ventana
{
    Q_OBJECT

public:
    agendahorarios(
        db::Entorno &entorno, ui::Ventanas &ventanas, const QString &nombre = QStringLiteral("agendahorarios"));

    bool preparar(const ui::Pedido &pedido) override;
    void refrescar() override;
    [[nodiscard]] bool hayCambios() const override;
    [[nodiscard]] QString ayuda() const override;

    /// The fields of one weekday; their object names are those of the columns ("LuMaDesde", "durtur2").
    struct Renglon {
        QLabel *nombre;
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
    QPushButton *nolabo; ///< opens the window of the days off
    VistaSemana *semana;
    QLabel *total; ///< slots of the week
    QLabel *fechascompartidas; ///< which other templates hold days of this one
    QLabel *avisos; ///< what in the hours was hardly meant

private:
    void construir();
    void conectar();
    QWidget *panelPlantillas();
    QWidget *panelPlantilla();
    QWidget *panelDias();
    QWidget *panelNoLaborables();
    QWidget *panelSemana();
    /// Puts the weekdays, and the order in which Tab visits them, as the week begins in this practice.
    void ordenarDias(int primerDia);

    /// Lists the templates and shows the one of that `id`; 0: an empty one.
    void listar(int elegida);
    void elegirRenglon(int id);
    void llenarLista(int elegida);
    /// True when nothing typed would be lost, or the person lets it go.
    [[nodiscard]] bool descartar();
    void listarDias();
    void mostrar(const Plantilla &plantilla);
    /// Draws the week of what the fields say now.
    void dibujar();
    /// What the fields say; the dates stay as typed in their fields.
    [[nodiscard]] Plantilla leer() const;
    void alElegirPlantilla();
    void cambiarDePlantilla();
    void save();
    void avisarAgenda();

    QGroupBox *m_grupoPlantillas;
    QGridLayout *m_grillaDias;
    int m_doctor = 0;
    QVector<PlantillaListada> m_plantillas;
    Plantilla m_mostrada;
    QString m_desde, m_hasta;
};

} // namespace agenda
