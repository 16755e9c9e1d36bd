#include "patients/forms/PanelParecidos.h"

#include "base/Fechas.h"
#include "db/Error.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"
#include "ui/Grilla.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace patients {

PanelParecidos::PanelParecidos(QWidget *parent)
    : QFrame(parent)
    , parecidos(new ui::Grilla(
          QStringLiteral("parecidos"),
          QStringLiteral(
              "|<Paciente                      |^Documento    |^Nacimiento   |<Por qué se muestra           ")))
    , usarparecido(
          ui::boton(this, QStringLiteral("usarparecido"), tr("Es este pac&iente"), QStringLiteral("checkmark")))
{
    setFrameShape(QFrame::StyledPanel);
    auto *rotulo = new QLabel(tr("¿No será uno de estos pacientes, que ya están cargados?"), this);
    QFont destacada = rotulo->font();
    destacada.setBold(true);
    rotulo->setFont(destacada);
    parecidos->setFixedHeight(parecidos->fontMetrics().lineSpacing() * 6);
    auto *pie = new QHBoxLayout;
    pie->addWidget(rotulo, 1);
    pie->addWidget(usarparecido);
    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::espacio, ui::margen, ui::espacio);
    todo->addLayout(pie);
    todo->addWidget(parecidos);
    connect(parecidos, &ui::Grilla::activada, this, &PanelParecidos::elegir);
    connect(usarparecido, &QPushButton::clicked, this, &PanelParecidos::elegir);
    hide();
}

void PanelParecidos::mostrar(const std::vector<Parecido> &hallados)
{
    std::vector<QStringList> filas;
    std::vector<qint64> claves;
    for (const Parecido &p : hallados) {
        filas.push_back({p.nombre, p.dni, base::fechaTexto(p.nacimiento), p.motivo});
        claves.push_back(p.nrohc);
    }
    parecidos->mostrar(std::move(filas), std::move(claves));
    if (parecidos->filaActual() < 0)
        parecidos->elegirFila(0);
    setVisible(!hallados.empty());
}

bool PanelParecidos::buscar(db::Connection &conexion, const Conocido &conocido)
{
    const bool estaba = !isHidden();
    try {
        mostrar(buscarParecidos(conexion, conocido));
    } catch (const db::Error &) {
        mostrar({});
    }
    return estaba == isHidden();
}

void PanelParecidos::elegir()
{
    const int fila = parecidos->filaActual();
    if (fila >= 0)
        emit elegido(int(parecidos->claveActual()), parecidos->modelo().textoCelda(fila, 0));
}

} // namespace patients
