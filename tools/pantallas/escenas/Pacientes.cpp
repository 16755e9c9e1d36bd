#include "Escenas.h"

#include "db/Connection.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>

namespace pantallas {

namespace {

const QString chooser = QStringLiteral("elecpaci");
const QString alta = QStringLiteral("nuevopaci");

void elegirPaciente(Escena &e)
{
    e.pulsar({}, QStringLiteral("menpacientes"));
    e.escribir(chooser, QStringLiteral("apellidoredu"), QStringLiteral("gar"));
    e.tecla(chooser, QStringLiteral("apellidoredu"), Qt::Key_Return);
}

void buscarEnTodo(Escena &e)
{
    e.pulsar({}, QStringLiteral("menpacientes"));
    e.pulsar(chooser, QStringLiteral("opcionampli"));
    e.pulsar(chooser, QStringLiteral("sicober"));
    e.escribir(chooser, QStringLiteral("apellido"), QStringLiteral("gar"));
    e.escribir(chooser, QStringLiteral("edad1"), QStringLiteral("18"));
    e.tecla(chooser, QStringLiteral("edad1"), Qt::Key_Return);
}

/// The expanded form, on the way to entering a second time somebody who is in the register.
void darDeAltaAmplia(Escena &e)
{
    e.pulsar({}, QStringLiteral("menpacientes"));
    e.pulsar(chooser, QStringLiteral("nuevo"));
    if (auto *ampli = e.control<QAbstractButton>(alta, QStringLiteral("opcionampli")))
        ampli->click();
    const db::Rows fila = e.consultorio().conexion().query(
        QStringLiteral("SELECT TOP 1 Apellido,Nombres,DNI FROM [Pacientes] WHERE DNI <> '' ORDER BY NroHC"));
    e.escribir(alta, QStringLiteral("apellido"), fila->text(0, 0));
    e.escribir(alta, QStringLiteral("nombres"), fila->text(0, 1).section(u' ', 0, 0));
    QString dni = fila->text(0, 2);
    dni.chop(1);
    e.escribir(alta, QStringLiteral("dni"), dni + (fila->text(0, 2).endsWith(u'0') ? u'1' : u'0'));
    e.escribir(alta, QStringLiteral("fecnac"), QStringLiteral("05/03/1980"));
    if (auto *con = e.control<QAbstractButton>(alta, QStringLiteral("concobertura")))
        con->click();
    // The likely duplicates come after a short pause in the typing.
    QElapsedTimer espera;
    espera.start();
    auto *parecidos = e.control(alta, QStringLiteral("parecidos"));
    while (parecidos && !parecidos->isVisible() && espera.elapsed() < 5'000)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

} // namespace

void darDeAlta(Escena &e)
{
    e.pulsar({}, QStringLiteral("menpacientes"));
    e.pulsar(chooser, QStringLiteral("nuevo"));
    const std::pair<QString, QString> datos[]
        = {{QStringLiteral("apellidor"), QStringLiteral("Giménez")},
           {QStringLiteral("nombresr"), QStringLiteral("Marta Elena")},
           {QStringLiteral("dnir"), QStringLiteral("24518903")},
           {QStringLiteral("telparr"), QStringLiteral("0341 155512345")},
           {QStringLiteral("domicilior"), QStringLiteral("San Martín 1450")},
           {QStringLiteral("emailr"), QStringLiteral("marta@ejemplo.com.ar")}};
    for (const auto &[campo, texto] : datos)
        e.escribir(alta, campo, texto);
    if (auto *cobertura = e.control<QComboBox>(alta, QStringLiteral("coberturar")))
        cobertura->setCurrentIndex(qMin(2, cobertura->count() - 1));
}

std::vector<Pantalla> escenasDePacientes()
{
    return {
        {chooser, elegirPaciente},
        {QStringLiteral("elecpaci-amplia"), buscarEnTodo},
        {alta, darDeAlta},
        {QStringLiteral("nuevopaci-amplio"), darDeAltaAmplia},
    };
}

} // namespace pantallas
