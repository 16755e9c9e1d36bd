#include "maintenance/forms/listamantenimiento.h"

#include "db/Entorno.h"
#include "db/ListaDoctores.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"
#include "ui/Grilla.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace maintenance {

listamantenimiento::listamantenimiento(db::Entorno &entorno, ui::Ventanas &ventanas)
    : VentanaLista(entorno, ventanas, QStringLiteral("listamantenimiento"), tr("Mantenimiento"))
    , elegir(ui::boton(this, QStringLiteral("elegir"), tr("&Seleccionar"), QStringLiteral("dialog-ok-apply")))
{
    titulolista->hide(); // the window's title says it
    botones()->insertWidget(botones()->count() - 1, elegir);
    setTabOrder(guardar, elegir);
    setTabOrder(elegir, cerrar);
    setLayout(columna());
    columna()->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    setMinimumSize(640, 520);
    alPulsar(elegir, [this] { devolver(); });
}

bool listamantenimiento::preparar(const ui::Pedido &pedido)
{
    const Lista *pedida = maintenance::lista(pedido.datos.value(QStringLiteral("lista")).toString());
    if (!pedida || !aceptado(db::controlarDerecho(entorno(), u"accesoconfiguracion")) || !descartar())
        return false;
    abrirLista(*pedida);
    setWindowTitle(pedido.datos.value(QStringLiteral("titulo"), pedida->titulo).toString());
    const QString texto = pedido.datos.value(QStringLiteral("texto")).toString().simplified();
    qint64 id = pedido.datos.value(QStringLiteral("id")).toLongLong();
    if (id <= 0 && !texto.isEmpty())
        id = buscarEntrada(conexion(), *pedida, texto);
    if (id <= 0 && !texto.isEmpty()) {
        proponer(texto);
        return true;
    }
    mostrarEntrada(id);
    if (mostrada().id != 0)
        entradas->setFocus();
    else
        filtro->setFocus();
    return true;
}

void listamantenimiento::alGuardar(bool nueva)
{
    // Who adds an entry from here wants it in her form.
    if (nueva)
        devolver();
    else
        VentanaLista::alGuardar(nueva);
}

void listamantenimiento::alActivar() { devolver(); }

void listamantenimiento::alMostrar(bool nueva)
{
    elegir->setEnabled(!nueva);
    guardar->setText(nueva ? tr("&Guardar y seleccionar") : tr("&Guardar"));
}

void listamantenimiento::devolver()
{
    if (mostrada().id == 0 || !descartar())
        return;
    terminar({{QStringLiteral("id"), mostrada().id}, {QStringLiteral("nombre"), mostrada().nombre}});
}

} // namespace maintenance
