#include "app/forms/AvisoBorradores.h"

#include "base/Fechas.h"
#include "base/Mensajes.h"
#include "base/Rechazo.h"
#include "db/Borradores.h"
#include "db/Entorno.h"
#include "db/Error.h"
#include "ui/Iconos.h"
#include "ui/Ventanas.h"

#include <QMenu>

namespace app {

AvisoBorradores::AvisoBorradores(db::Entorno &entorno, ui::Ventanas &ventanas, QWidget *parent)
    : QToolButton(parent)
    , m_entorno(entorno)
    , m_ventanas(ventanas)
{
    setObjectName(QStringLiteral("borradores"));
    setIcon(ui::icono(QStringLiteral("document-edit")));
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setToolTip(tr("Datos que quedaron sin guardar: elija cuáles abrir."));
    setPopupMode(InstantPopup);
    setStyleSheet(QStringLiteral("QToolButton { background:#ffd966; color:#332800; font-weight:bold;"
                                 " border-radius:3px; padding:1px 6px; }"
                                 " QToolButton::menu-indicator { image:none; }"));
    auto *menu = new QMenu(this);
    setMenu(menu);
    connect(menu, &QMenu::aboutToShow, this, &AvisoBorradores::llenarMenu);
    hide();
}

void AvisoBorradores::buscar()
{
    m_deAntes.clear();
    for (const db::Borrador &suyo : db::Borradores(m_entorno).pendientes())
        m_deAntes << suyo.id;
    mostrar();
}

void AvisoBorradores::mostrar()
{
    setText(
        m_deAntes.size() == 1 ? tr("Hay datos sin guardar de antes")
                              : tr("Hay datos sin guardar de antes: %1").arg(m_deAntes.size()));
    setVisible(!m_deAntes.isEmpty());
}

void AvisoBorradores::llenarMenu()
{
    menu()->clear();
    QVector<db::Borrador> quedan;
    try {
        for (db::Borrador &suyo : db::Borradores(m_entorno).pendientes())
            if (m_deAntes.contains(suyo.id))
                quedan << std::move(suyo);
    } catch (const db::Error &error) {
        m_entorno.mensajes().fallar(base::titulo::error, error.description());
        return;
    }
    m_deAntes.clear();
    for (const db::Borrador &suyo : std::as_const(quedan)) {
        m_deAntes << suyo.id;
        QString texto = suyo.titulo + QStringLiteral("  (") + base::fechaHoraTexto(suyo.fecha) + u')';
        menu()->addAction(texto.replace(u'&', QStringLiteral("&&")), this, [this, suyo] {
            if (!m_ventanas.existe(suyo.ventana)) {
                base::avisarNoDisponible(m_entorno.mensajes());
                return;
            }
            QVariantMap datos{{QStringLiteral("registro"), suyo.registro}};
            if (suyo.nropaci != 0)
                datos.insert(QStringLiteral("nrohc"), suyo.nropaci);
            try {
                m_ventanas.abrir(suyo.ventana, {.datos = datos}, window());
            } catch (const db::Error &error) {
                m_entorno.mensajes().fallar(base::titulo::error, error.description());
            }
        });
    }
    if (quedan.isEmpty())
        menu()->addAction(tr("Ya no queda ninguno"))->setEnabled(false);
    mostrar();
}

} // namespace app
