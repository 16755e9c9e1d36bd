#include "Pintado.h"

#include "DiasLlenos.h"
#include "Motor.h"
#include "Tabla.h"
#include "agenda/forms/CalendarioMes.h"
#include "agenda/forms/GrillaTodas.h"
#include "agenda/forms/GrillaTurnos.h"
#include "agenda/forms/agendas.h"
#include "agenda/forms/agendastodas.h"
#include "db/Connection.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"
#include "ui/Ventanas.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QTest>
#include <QTimer>

namespace medicion {

namespace {

/// Counts how often a widget is painted.
class Pinceladas : public QObject
{
public:
    explicit Pinceladas(QWidget *quien) { quien->installEventFilter(this); }
    [[nodiscard]] int tomar() { return std::exchange(m_veces, 0); }
    bool eventFilter(QObject *, QEvent *event) override
    {
        m_veces += event->type() == QEvent::Paint;
        return false;
    }

private:
    int m_veces = 0;
};

/// A practice of ten professionals, while it lives: there are forty. The others are hidden by being no professionals.
class Diez
{
public:
    explicit Diez(db::Connection &conexion)
        : m_conexion(conexion)
    {
        const QVector<db::Doctor> todos = db::profesionales(conexion);
        for (int i = 0; i < todos.size(); ++i)
            if (i < 10)
                suyos << todos[i].id;
            else
                m_otros << QString::number(todos[i].id);
        ponerTipo(99);
    }
    ~Diez() { ponerTipo(0); }
    Diez(const Diez &) = delete;
    Diez &operator=(const Diez &) = delete;

    QVector<int> suyos;

private:
    void ponerTipo(int tipo)
    {
        if (!m_otros.isEmpty())
            m_conexion.execute(
                QStringLiteral("UPDATE [Lista Doctores] SET tipo = ? WHERE id IN (%1)").arg(m_otros.join(u',')),
                {tipo});
    }
    db::Connection &m_conexion;
    QStringList m_otros;
};

class Teclado
{
public:
    Teclado(QWidget &marco, QWidget *mirado)
        : m_marco(marco)
        , m_pinceladas(mirado)
    {
        asentar();
        (void)m_pinceladas.tomar();
    }

    /// Presses a key and comes back when nothing is left to be painted.
    void pulsar(Qt::Key tecla, Qt::KeyboardModifiers modificadores = Qt::NoModifier)
    {
        QTest::keyClick(m_marco.window()->windowHandle(), tecla, modificadores);
        asentar();
        const int veces = m_pinceladas.tomar();
        if (veces != 1)
            qWarning("pintada %d veces: %s", veces, qUtf8Printable(QKeySequence(modificadores | tecla).toString()));
    }

private:
    static void asentar()
    {
        QCoreApplication::sendPostedEvents();
        while (QCoreApplication::eventDispatcher()->processEvents(QEventLoop::AllEvents)) { }
    }
    QWidget &m_marco;
    Pinceladas m_pinceladas;
};

void cerrar(QWidget *ventana)
{
    ventana->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

void medirPintado(Tabla &tabla, db::Entorno &entorno, ui::Ventanas &ventanas, QWidget &marco, QDate hoy, int veces)
{
    db::Connection &conexion = entorno.conexion();
    const Diez diez(conexion);
    // After all that is booked, so that the others have nothing there.
    const QDate dia = hoy.addYears(3), otro = dia.addDays(1);
    std::vector<std::unique_ptr<DiaLleno>> llenos;
    for (const int doctor : diez.suyos)
        for (const QDate cual : {dia, otro})
            llenos.push_back(std::make_unique<DiaLleno>(conexion, doctor, cual));
    Motor motor(conexion);
    marco.show();
    marco.activateWindow();

    const int uno = diez.suyos.front();
    const auto crudo = [&](int doctor, QDate cual) {
        const QDate primero(cual.year(), cual.month(), 1);
        return std::pair(
            diaCrudo(conexion, doctor, cual), mesCrudo(conexion, doctor, primero, primero.addMonths(1).addDays(-1)));
    };
    const auto correr = [&motor](const std::pair<QByteArray, QByteArray> &sentencias) {
        (void)motor.ejecutar(sentencias.first);
        (void)motor.ejecutar(sentencias.second);
    };
    const QVariantMap fecha{{QStringLiteral("doctor"), uno}, {QStringLiteral("fecha"), dia}};
    {
        auto *ventana = qobject_cast<agenda::agendas *>(ventanas.abrir(QStringLiteral("agendas"), {fecha, {}}));
        ventana->tiempo->stop();
        Teclado teclado(marco, ventana->lista->viewport());
        const auto deUno = crudo(uno, dia);
        bool vuelve = false;
        tabla.comparar(
            QStringLiteral("agenda: de la tecla al otro día pintado, 60 turnos"),
            [&] { teclado.pulsar(std::exchange(vuelve, !vuelve) ? Qt::Key_Left : Qt::Key_Right, Qt::ControlModifier); },
            [&] { correr(deUno); },
            veces);
        ventana->fechadia->setFocus();
        const auto deOtroMes = crudo(uno, dia.addMonths(1));
        int paso = 0;
        tabla.comparar(
            QStringLiteral("agenda: de la tecla al otro mes pintado"),
            [&] { teclado.pulsar(paso++ % 2 ? Qt::Key_PageUp : Qt::Key_PageDown); },
            [&] { correr(paso % 2 ? deOtroMes : deUno); },
            veces * 2);
        cerrar(ventana);
    }
    auto *ventana = qobject_cast<agenda::agendastodas *>(ventanas.abrir(QStringLiteral("agendastodas"), {fecha, {}}));
    ventana->tiempo->stop();
    Teclado teclado(marco, ventana->lista->viewport());
    const auto deTodos = crudo(0, dia);
    bool vuelve = false;
    tabla.comparar(
        QStringLiteral("todas las agendas: de la tecla al otro día pintado, %1 profesionales")
            .arg(ventana->lista->modelo().columnCount()),
        [&] { teclado.pulsar(std::exchange(vuelve, !vuelve) ? Qt::Key_Left : Qt::Key_Right, Qt::ControlModifier); },
        [&] { correr(deTodos); },
        veces);
    cerrar(ventana);
    marco.hide();
}

} // namespace medicion
