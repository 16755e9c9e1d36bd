#include "app/Arranque.h"
#include "app/Modulo.h"
#include "app/forms/Composicion.h"
#include "app/forms/sistema.h"
#include "db/Connection.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"
#include "ui/Grilla.h"
#include "ui/Ventana.h"
#include "ui/Ventanas.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QPlainTextEdit>

using namespace Qt::StringLiterals;

namespace {

/// The program as main() puts it together, in a folder of the test's.
struct Programa {
    Programa(const QString &carpeta, base::Mensajes &mensajes, const base::Clock &clock)
        : modulo(carpeta, mensajes, clock, db::Engines::standard())
    {
        app::registrarVentanas(modulo, ventanas);
        (void)app::Arranque(modulo, [](const QString &) {}).iniciar();
        marco = std::make_unique<app::sistema>(modulo, modulo, ventanas);
        marco->resize(1280, 800);
        marco->show();
    }

    app::Modulo modulo;
    ui::Ventanas ventanas;
    std::unique_ptr<app::sistema> marco;
};

/// Presses a button that a person could press.
void pulsar(const QWidget &ventana, const char *nombre)
{
    auto *boton = ventana.findChild<QAbstractButton *>(QLatin1String(nombre));
    QVERIFY2(boton, nombre);
    QVERIFY2(boton->isVisible() && boton->isEnabled(), nombre);
    QTest::mouseClick(boton, Qt::LeftButton);
}

void escribir(const QWidget &ventana, const char *nombre, const QString &texto)
{
    auto *campo = ventana.findChild<QLineEdit *>(QLatin1String(nombre));
    QVERIFY2(campo && campo->isVisible(), nombre);
    campo->setFocus();
    // QTest::keyClicks() takes ASCII only.
    for (const QChar letra : texto)
        QTest::sendKeyEvent(QTest::Click, campo, Qt::Key_unknown, QString(letra), Qt::NoModifier);
}

int filaDeHora(const ui::Grilla &lista, const QString &hora)
{
    for (int fila = 0; fila < lista.modelo().rowCount(); ++fila)
        if (lista.modelo().index(fila, 0).data().toString() == hora)
            return fila;
    return -1;
}

QStringList celdas(const ui::Grilla &lista, int fila)
{
    QStringList textos;
    for (int c = 0; c < lista.modelo().columnCount(); ++c)
        textos << lista.modelo().index(fila, c).data().toString();
    return textos;
}

} // namespace

/// The first day of a practice, lived through its windows.
class PruebaPrimerDia : public QObject
{
    Q_OBJECT

private slots:
    void firstDay()
    {
        QTemporaryDir carpeta;
        QVERIFY(QFile::copy(soporte::plantilla(), carpeta.filePath(u"Datos_Vacio.mdb"_s)));
        soporte::MensajesGuionados guion;
        soporte::RelojFijo reloj;

        guion.esperarMensaje(
            u"Atención"_s,
            u"Como el sistema detectó que No existe ningún Médico cargado, se procedió a crear uno de prueba. Al "
            u"iniciar el "
            "sistema diríjase a la ventana 'Configuración', opción 'Médicos y Usuarios', para cargar los datos del "
            "Médico "
            "real."_s,
            base::Icono::Informacion);
        {
            Programa programa(carpeta.path(), guion, reloj);
            QVERIFY(programa.modulo.baseLista());
            pulsar(*programa.marco, "menagendas");
            ui::Ventana *agendas = programa.ventanas.buscar(u"agendas"_s);
            QVERIFY(agendas);
            auto *lista = agendas->findChild<ui::Grilla *>(u"lista"_s);
            QVERIFY(lista);
            const int fila = filaDeHora(*lista, u"10:20"_s);
            QVERIFY(fila >= 0);
            lista->elegirFila(fila);
            QTest::keyClick(lista, Qt::Key_Return);

            ui::Ventana *reserva = programa.ventanas.buscar(u"agendanuevoturno"_s);
            QVERIFY(reserva);
            pulsar(*reserva, "nuevopaciente");
            ui::Ventana *alta = programa.ventanas.buscar(u"agendanuevoturnoctrln"_s);
            QVERIFY(alta);
            escribir(*alta, "apellidor", u"O'Higgins"_s);
            // Refused: what was typed stays.
            guion.esperarMensaje(u"Aviso..."_s, u"Debe ingresar el Nombre del Paciente"_s);
            pulsar(*alta, "guardar");
            escribir(*alta, "nombresr", u"Begoña"_s);
            escribir(*alta, "dnir", u"28456789"_s);
            alta->findChild<QPlainTextEdit *>(u"observacionestur"_s)->setPlainText(u"Trae estudios d'Amico"_s);
            pulsar(*alta, "guardar");
            QTRY_VERIFY(!programa.ventanas.buscar(u"agendanuevoturnoctrln"_s));
            QTRY_VERIFY(!programa.ventanas.buscar(u"agendanuevoturno"_s));

            QCOMPARE(celdas(*lista, fila)[1], u"O'HIGGINS, BEGOÑA"_s);
            QCOMPARE(lista->filaActual(), fila);
            pulsar(*agendas, "sinollego");
            pulsar(*agendas, "sinoatendido");
            guion.esperarMensaje(
                u"Importante!!"_s,
                u"IMPORTANTE: Recuerde que el programa de esta PC (servidor) debe cerrarse después que el programa de "
                u"todas "
                "las terminales."_s,
                base::Icono::Advertencia);
            QVERIFY(programa.marco->close());
        }
        QVERIFY(guion.terminar());

        // The next start shows it all.
        Programa programa(carpeta.path(), guion, reloj);
        pulsar(*programa.marco, "menagendas");
        auto *lista = programa.ventanas.buscar(u"agendas"_s)->findChild<ui::Grilla *>(u"lista"_s);
        const QStringList fila = celdas(*lista, filaDeHora(*lista, u"10:20"_s));
        QCOMPARE(fila[1], u"O'HIGGINS, BEGOÑA"_s);
        QCOMPARE(fila[7], u"SI"_s);
        QCOMPARE(fila[8], u"SI"_s);
        QVERIFY(fila[9].contains(u"d'Amico"_s));

        db::Connection &conexion = programa.modulo.conexion();
        const db::Rows historial = conexion.query(u"SELECT ventana, accion, iddoctor FROM [Historial]"_s);
        QStringList acciones;
        for (int r = 0; r < historial->rowCount(); ++r)
            acciones << historial->text(r, 0) + u'|' + historial->text(r, 1);
        QCOMPARE(
            acciones,
            (QStringList{
                u"Sistema General|Se ingresó al sistema."_s,
                u"Menú General|Se ingresó a la ventana Agendas."_s,
                u"Sistema General|Se cerró el sistema."_s,
                u"Sistema General|Se ingresó al sistema."_s,
                u"Menú General|Se ingresó a la ventana Agendas."_s}));
        guion.esperarMensaje(
            u"Importante!!"_s,
            u"IMPORTANTE: Recuerde que el programa de esta PC (servidor) debe cerrarse después que el programa de "
            u"todas las "
            "terminales."_s,
            base::Icono::Advertencia);
        QVERIFY(programa.marco->close());
        QVERIFY(guion.terminar());
    }
};

PRUEBA(PruebaPrimerDia)
#include "PruebaPrimerDia.moc"
