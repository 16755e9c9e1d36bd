#include "app/Comprobador.h"
#include "app/forms/sistema.h"
#include "db/Config.h"
#include "db/Entorno.h"
#include "ui/Ventana.h"
#include "ui/Ventanas.h"

#include <QGuiApplication>

namespace app {

namespace {
const QString ventanaIngreso = QStringLiteral("acceso");
}

void sistema::empezar(bool conIngreso)
{
    if (!conIngreso) {
        showMaximized();
        abrirInicio();
        return;
    }
    // Between the login and the frame no window is open, which is not the end of the program.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const ui::Pedido pedido{{}, [this](const QVariantMap &) {
                                showMaximized();
                                QGuiApplication::setQuitOnLastWindowClosed(true);
                                abrirInicio();
                            }};
    ui::Ventana *acceso = nullptr;
    intentar([&] { acceso = m_ventanas.abrir(ventanaIngreso, pedido); });
    if (!acceso) {
        emit ingresoCancelado();
        return;
    }
    // Later: a login that succeeds closes the window first, and then shows this one.
    const auto siNadie = [this] {
        if (!isVisible())
            emit ingresoCancelado();
    };
    connect(acceso, &ui::Ventana::cerrada, this, siNadie, Qt::QueuedConnection);
}

bool sistema::ingresado()
{
    if (!m_faltaIngreso)
        return true;
    m_faltaIngreso = db::Config(m_entorno.conexion()).bandera(u"selecusuario");
    const ui::Pedido pedido{{}, [this](const QVariantMap &) {
                                m_faltaIngreso = false;
                                abrirInicio();
                            }};
    if (m_faltaIngreso)
        m_ventanas.abrir(ventanaIngreso, pedido, this);
    return !m_faltaIngreso;
}

VentanasDelMenu sistema::ventanasDelMenu()
{
    return {
        [this] { return ingresado(); },
        [this](const QString &nombre) { return m_ventanas.existe(nombre); },
        [this](const QString &nombre) { return m_ventanas.activar(nombre); },
        [this](const QString &nombre) { return m_ventanas.abrir(nombre, {}, this) != nullptr; },
        [this](const QString &nombre, const std::function<void(const QString &)> &alPasar) {
            const auto terminar = [alPasar](const QVariantMap &resultado) {
                alPasar(resultado.value(QStringLiteral("administrador")).toString());
            };
            return m_ventanas.abrir(nombre, {{}, terminar}, this) != nullptr;
        },
    };
}

void sistema::abrirInicio()
{
    if (m_comprobador.baseLista())
        intentar([this] { abrirVentanaInicio(m_entorno, m_comprobador, ventanasDelMenu()); });
}

} // namespace app
