#include "agenda/forms/telefonomodif.h"

#include "agenda/Textos.h"
#include "db/Connection.h"
#include "db/Entorno.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"

#include <QFormLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

namespace agenda {

telefonomodif::telefonomodif(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("telefonomodif"), tr("Teléfono"))
{
    auto *campos = new QFormLayout;
    campos->setSpacing(ui::espacio);
    const auto linea = [&](const char *columna, const QString &rotulo) {
        auto *campo = new QLineEdit(this);
        campo->setObjectName(QLatin1String(columna));
        campos->addRow(rotulo, campo);
        return campo;
    };
    nombre = linea("nombre", tr("&Nombre:"));
    telefono = linea("telefono", tr("&Teléfono:"));
    celular = linea("celular", tr("Ce&lular:"));
    email = linea("email", tr("C&orreo electrónico:"));
    direccion = linea("direccion", tr("&Dirección:"));
    observaciones = new QPlainTextEdit(this);
    observaciones->setObjectName(QStringLiteral("observaciones"));
    observaciones->setTabChangesFocus(true);
    observaciones->setFixedHeight(4 * observaciones->fontMetrics().lineSpacing() + 2 * ui::espacio);
    campos->addRow(tr("O&bservaciones:"), observaciones);
    const ui::FinDeFormulario fin = ui::finDeFormulario(this);
    guardar = fin.guardar;
    cancelar = fin.cancelar;

    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->setSpacing(ui::margen);
    todo->addLayout(campos);
    todo->addLayout(fin.fila);
    setMinimumWidth(480);

    for (const db::Column &columna : conexion().columns(QStringLiteral("Telefonos")))
        if (auto *campo = findChild<QLineEdit *>(columna.name); campo && columna.size > 0)
            campo->setMaxLength(columna.size);
    alPulsar(guardar, [this] { save(); });
    connect(cancelar, &QPushButton::clicked, this, &QWidget::close);
}

bool telefonomodif::preparar(const ui::Pedido &pedido)
{
    const int id = pedido.datos.value(QStringLiteral("id")).toInt();
    m_leido = {};
    if (id != 0) {
        const auto leido = leerTelefono(conexion(), id);
        if (!leido)
            return aceptado(registroEliminado());
        m_leido = *leido;
    }
    nombre->setText(id == 0 ? pedido.datos.value(QStringLiteral("nombre")).toString() : m_leido.nombre);
    telefono->setText(m_leido.telefono);
    celular->setText(m_leido.celular);
    email->setText(m_leido.email);
    direccion->setText(m_leido.direccion);
    observaciones->setPlainText(m_leido.observaciones);
    nombre->setFocus();
    nombre->selectAll();
    return true;
}

Telefono telefonomodif::escrito() const
{
    return {
        m_leido.id,
        nombre->text(),
        telefono->text(),
        celular->text(),
        email->text(),
        direccion->text(),
        observaciones->toPlainText()};
}

bool telefonomodif::hayCambios() const { return escrito() != m_leido; }

void telefonomodif::save()
{
    const auto id = guardarTelefono(entorno(), escrito());
    if (!id) {
        (void)aceptado(id.rechazo());
        return;
    }
    terminar({{QStringLiteral("id"), *id}});
}

} // namespace agenda
