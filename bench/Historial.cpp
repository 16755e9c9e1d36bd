#include "Historial.h"

#include "Motor.h"
#include "Tabla.h"
#include "base/Clock.h"
#include "db/CadenaHistorial.h"
#include "db/Entorno.h"
#include "db/Historial.h"
#include "db/VerificadorHistorial.h"
#include "maintenance/forms/historial.h"
#include "ui/ListaCombo.h"
#include "ui/Ventanas.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPixmap>

namespace medicion {

namespace {

/// A row as the program wrote it before there was a chain; taken away again by its date, or it would be found.
const QByteArray cruda = "INSERT INTO Historial (fecha,equipo,iddoctor,ventana,accion) VALUES ('2099-01-01 10:00:00',"
                         "'PC',20,'Menú General','Se ingresó a la ventana Agendas.')";
const QByteArray quitarCrudas = "DELETE FROM Historial WHERE fecha = '2099-01-01 10:00:00'";
const QByteArray columnas = "SELECT fecha,equipo,iddoctor,ventana,accion FROM Historial ";

QString conCantidad(const QString &texto, qint64 cantidad)
{
    return texto.arg(QLocale(QLocale::Spanish, QLocale::Argentina).toString(cantidad));
}

/// All at once, as the window does it piece by piece.
void verificar(db::Entorno &entorno)
{
    db::VerificadorHistorial verificador(entorno, db::VerificadorHistorial::Alcance::Todo);
    while (verificador.seguir()) { }
    if (!verificador.informe().integro())
        qFatal("el historial no está íntegro");
}

/// The practice at another time.
class OtraEpoca final : public db::Entorno, public base::Clock
{
public:
    explicit OtraEpoca(db::Entorno &entorno)
        : ahora(entorno.clock().now())
        , m_entorno(entorno)
    {
    }
    QDateTime ahora;

    [[nodiscard]] QDateTime now() const override { return ahora; }
    db::Connection &conexion() override { return m_entorno.conexion(); }
    base::Mensajes &mensajes() override { return m_entorno.mensajes(); }
    const base::Clock &clock() const override { return *this; }
    int usuarioActual() const override { return m_entorno.usuarioActual(); }
    void setUsuarioActual(int id) override { m_entorno.setUsuarioActual(id); }
    QString equipo() const override { return m_entorno.equipo(); }
    QString carpetaPrograma() const override { return m_entorno.carpetaPrograma(); }
    QString carpetaDatos() const override { return m_entorno.carpetaDatos(); }
    bool esClienteDeRed() const override { return m_entorno.esClienteDeRed(); }
    int segundosAgenda() const override { return m_entorno.segundosAgenda(); }
    int segundosMensajes() const override { return m_entorno.segundosMensajes(); }
    bool modoTurno() const override { return m_entorno.modoTurno(); }
    void setAjustesEquipo(const db::AjustesEquipo &ajustes) override { m_entorno.setAjustesEquipo(ajustes); }

private:
    db::Entorno &m_entorno;
};

void registrar(db::Entorno &entorno)
{
    db::registrarHistorial(entorno, QStringLiteral("Menú General"), QStringLiteral("Se ingresó a la ventana Agendas."));
}

/// Entries of the days to come, a thousand a day, until there are so many with links of their own.
void encadenar(db::Entorno &entorno, int cuantas)
{
    OtraEpoca epoca(entorno);
    db::CadenaHistorial cadena(entorno.conexion());
    while (cadena.cola()->orden < cuantas) {
        epoca.ahora = epoca.ahora.addDays(1);
        db::Transaction transaccion(entorno.conexion());
        for (int i = 0; i < 1000; ++i) {
            epoca.ahora.setTime(QTime(8 + i / 100, i % 60));
            registrar(epoca);
        }
        transaccion.commit();
    }
}

/// One page on the screen, whatever the window is still doing.
void pintar(QWidget *ventana) { (void)ventana->grab(); }

} // namespace

void medirHistorial(Tabla &tabla, db::Entorno &entorno, ui::Ventanas &ventanas, int encadenadas, int veces)
{
    db::Connection &conexion = entorno.conexion();
    Motor motor(conexion);
    const auto contar
        = [&] { return conexion.query(QStringLiteral("SELECT COUNT(*) FROM [Historial]"))->integer(0, 0); };
    const auto todas = [&] { (void)motor.ejecutar(columnas + "ORDER BY fecha"); };

    // The chain begins with the first entry; what earlier versions left is sealed here once and for all.
    const qint64 anteriores = contar();
    const bool nuevo = !db::CadenaHistorial(conexion).cola();
    registrar(entorno);
    if (nuevo) {
        const double sellado = cronometrar([&] { verificar(entorno); });
        tabla.agregar(
            conCantidad(
                QStringLiteral("historial: %1 acciones anteriores selladas y verificadas, una vez"), anteriores),
            sellado,
            cronometrar(todas));
    }
    encadenar(entorno, encadenadas);
    tabla.comparar(
        conCantidad(QStringLiteral("historial verificado, %1 acciones"), contar()),
        [&] { verificar(entorno); },
        todas,
        std::min(veces, 3));

    tabla.comparar(
        QStringLiteral("acción registrada y encadenada"),
        [&] { registrar(entorno); },
        [&] {
            (void)motor.ejecutar("BEGIN IMMEDIATE");
            (void)motor.ejecutar(cruda);
            (void)motor.ejecutar("COMMIT");
        },
        veces * 3);
    (void)motor.ejecutar(quitarCrudas);
    // Without the disk: many to a transaction.
    constexpr int tanda = 1000;
    tabla.comparar(
        QStringLiteral("1.000 acciones en una transacción"),
        [&] {
            db::Transaction transaccion(conexion);
            for (int i = 0; i < tanda; ++i)
                registrar(entorno);
            transaccion.commit();
        },
        [&] {
            (void)motor.ejecutar("BEGIN IMMEDIATE");
            for (int i = 0; i < tanda; ++i)
                (void)motor.ejecutar(cruda);
            (void)motor.ejecutar("COMMIT");
        },
        veces);
    (void)motor.ejecutar(quitarCrudas);

    const QString nombre = QStringLiteral("historial");
    const auto cerrar = [&] {
        ventanas.buscar(nombre)->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    tabla.comparar(
        QStringLiteral("historial abierto, pintado"),
        [&] {
            pintar(ventanas.abrir(nombre));
            cerrar();
        },
        [&] { (void)motor.ejecutar(columnas + "ORDER BY fecha DESC LIMIT 200"); },
        veces);

    auto *ventana = static_cast<maintenance::historial *>(ventanas.abrir(nombre));
    const auto terminar = [&] {
        while (ventana->ocupada())
            QCoreApplication::processEvents();
    };
    const auto filtrado = [&](const QString &operacion,
                              const std::function<void()> &poner,
                              const QByteArray &donde,
                              bool hastaElFin = false) {
        tabla.comparar(
            operacion,
            [&] {
                ventana->quitarfiltros->click();
                poner();
                ventana->texto->setFocus();
                QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
                QApplication::sendEvent(ventana->texto, &enter);
                if (hastaElFin)
                    terminar();
                pintar(ventana);
            },
            [&] { (void)motor.ejecutar(columnas + "WHERE " + donde + " ORDER BY fecha DESC LIMIT 200"); },
            std::min(veces, 5));
        terminar();
    };
    terminar();
    filtrado(
        QStringLiteral("historial por usuario, pintado"),
        [&] { ventana->usuario->setCurrentIndex(2); },
        "iddoctor = " + QByteArray::number(ventana->usuario->itemData(2).toInt()));
    filtrado(
        QStringLiteral("historial por texto, pintado"),
        [&] { ventana->texto->setText(QStringLiteral("eliminacion")); },
        "accion LIKE '%eliminacion%'");
    filtrado(
        QStringLiteral("historial por un texto que no está, hasta el fin"),
        [&] { ventana->texto->setText(QStringLiteral("inexistente")); },
        "accion LIKE '%inexistente%'",
        true);
    cerrar();
}

} // namespace medicion
