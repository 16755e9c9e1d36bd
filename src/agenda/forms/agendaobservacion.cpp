#include "agenda/forms/agendaobservacion.h"

#include "agenda/CambiosTurno.h"
#include "agenda/Textos.h"
#include "agenda/TurnoGuardado.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace agenda {

agendaobservacion::agendaobservacion(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("agendaobservacion"), tr("Observaciones del Turno"))
{
    turno = new QLabel(this);
    turno->setObjectName(QStringLiteral("turno"));
    turno->setTextFormat(Qt::PlainText);
    observacionestur = new QPlainTextEdit(this);
    observacionestur->setObjectName(QStringLiteral("observacionestur"));
    observacionestur->setTabChangesFocus(true);
    const ui::FinDeFormulario fin = ui::finDeFormulario(this);
    guardar = fin.guardar;
    cancelar = fin.cancelar;

    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->addWidget(turno);
    todo->addWidget(observacionestur, 1);
    todo->addLayout(fin.fila);
    setMinimumSize(460, 220);

    alPulsar(guardar, [this] { save(); });
    connect(cancelar, &QPushButton::clicked, this, &QWidget::close);
}

bool agendaobservacion::preparar(const ui::Pedido &pedido)
{
    if (!aceptado(db::controlarDerecho(entorno(), derechoCambios)))
        return false;
    const auto guardado = leerTurnoGuardado(conexion(), pedido.datos.value(QStringLiteral("id")).toLongLong());
    if (!guardado)
        return aceptado(registroEliminado());
    m_id = guardado->id;
    m_guardadas = guardado->observacionestur;
    turno->setText(guardado->titulo());
    observacionestur->setPlainText(m_guardadas);
    observacionestur->moveCursor(QTextCursor::End);
    observacionestur->setFocus();
    return true;
}

bool agendaobservacion::hayCambios() const
{
    return observacionestur->toPlainText().trimmed() != m_guardadas.trimmed();
}

void agendaobservacion::save()
{
    if (aceptado(modificar(entorno(), m_id, {.observacionestur = observacionestur->toPlainText()})))
        terminar({});
}

} // namespace agenda
