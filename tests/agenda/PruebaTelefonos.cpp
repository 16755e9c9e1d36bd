#include "Consultorio.h"
#include "agenda/BusquedaTelefonos.h"
#include "agenda/Telefonos.h"
#include "support/Prueba.h"

using namespace agenda;

/// The telephone list: its own entries, and one place that answers "what is X's number".
class PruebaTelefonos : public QObject
{
    Q_OBJECT

    static QString nombres(Consultorio &base, const char *texto, bool profesionales = true, bool pacientes = true)
    {
        QStringList hallados;
        const auto todo = buscarContactos(base.conexion(), QString::fromUtf8(texto), profesionales, pacientes);
        for (const Contacto &c : todo.contactos)
            hallados << c.textos().at(0);
        return hallados.join(QStringLiteral("; "));
    }

private slots:
    void guarda_y_elimina_data() { soporte::filasDeDialecto(); }
    void guarda_y_elimina()
    {
        Consultorio base(soporte::dialectoActual());
        const auto falta = guardarTelefono(base, {0, " ", "4711"});
        QCOMPARE(falta.rechazo().campo, QString("nombre"));
        QCOMPARE(guardarTelefono(base, {0, "Luz", " "}).rechazo().campo, QString("telefono"));
        const auto id = guardarTelefono(base, {0, " D'Alessio, gas ", " 0800-555", "", "", "", "urgencias 24 h"});
        QVERIFY(id);
        Telefono leido = leerTelefono(base.conexion(), *id).value();
        QVERIFY(leido == (Telefono{*id, "D'Alessio, gas", "0800-555", "", "", "", "urgencias 24 h"}));
        leido.celular = "155";
        QCOMPARE(*guardarTelefono(base, leido), *id);
        QCOMPARE(listarTelefonos(base.conexion()).size(), size_t(1));

        const QString pregunta = "¿Seguro que desea eliminar a ' D'Alessio, gas ' de la lista de teléfonos?";
        base.guion.esperarPregunta("Confirmación...", pregunta, false);
        QVERIFY(!*eliminarTelefono(base, *id));
        // Another station is faster.
        base.guion.esperarPregunta(
            "Confirmación...", pregunta, true, [&] { base.conexion().execute("DELETE FROM [Telefonos]"); });
        QCOMPARE(eliminarTelefono(base, *id).rechazo().texto, yaNoExiste);
        QCOMPARE(guardarTelefono(base, leido).rechazo().texto, yaNoExiste);
        QCOMPARE(eliminarTelefono(base, *id).rechazo().texto, yaNoExiste);
        leido.id = 0;
        const auto otro = guardarTelefono(base, leido);
        base.guion.esperarPregunta("Confirmación...", pregunta, true);
        QVERIFY(*eliminarTelefono(base, *otro));
        QCOMPARE(
            base.valor("SELECT accion FROM [Historial] WHERE ventana = ?", {"Teléfonos"}),
            QString("Se eliminó a 'D'Alessio, gas' de la lista de teléfonos."));

        base.quitarDerecho("accesoagendas");
        leido.id = 0;
        QCOMPARE(guardarTelefono(base, leido).rechazo().texto, sinPermiso);
        QCOMPARE(eliminarTelefono(base, 1).rechazo().texto, sinPermiso);
        QVERIFY(base.guion.terminar());
    }

    void busca_en_todas_partes_data() { soporte::filasDeDialecto(); }
    void busca_en_todas_partes()
    {
        Consultorio base(soporte::dialectoActual());
        base.conexion().execute("UPDATE [Lista Doctores] SET Tel = '450-1111' WHERE id = ?", {base.usuario});
        base.fila("Telefonos", {{"nombre", "Gasista"}, {"telefono", "471 22-33"}});
        base.fila("Telefonos", {{"nombre", "Ambulancias"}, {"telefono", "107"}, {"observaciones", "guardia"}});
        base.paciente(1, "O'Higgins", "Ana María", {{"Tel", "(0341) 471-2233"}});
        base.paciente(2, "NÚÑEZ", "Luis", {{"apellido2", "GIL"}, {"TelCelular", "0341-15-6123456"}});
        base.paciente(3, "Pérez", "Inés", {{"TelLaboral", "48899"}});
        const std::pair<const char *, const char *> casos[]
            = {{"", "Ambulancias; Gasista; Juan Pérez"}, // without the patients
               {"g", "Ambulancias; Gasista"},
               {"nunez", "NÚÑEZ GIL, Luis"},
               {"gil", "NÚÑEZ GIL, Luis"},
               {"luis nuñez", "NÚÑEZ GIL, Luis"},
               {"O'Higgins, Ana M", "O'Higgins, Ana María"},
               {"guardia", "Ambulancias"},
               {"pérez", "Juan Pérez; Pérez, Inés"},
               {"4712233", "Gasista; O'Higgins, Ana María"},
               {"471-2233", "Gasista; O'Higgins, Ana María"},
               {"15 612 3456", "NÚÑEZ GIL, Luis"},
               {"8899", "Pérez, Inés"},
               {"4233", ""}, // these digits are in a number, but not together
               {"%%", ""},
               {"zzz", ""}};
        for (const auto &[texto, hallados] : casos)
            QCOMPARE(
                QStringLiteral("%1: ").arg(texto) + nombres(base, texto), QStringLiteral("%1: ").arg(texto) + hallados);
    }

    void muchos_pacientes()
    {
        Consultorio base;
        for (int i = 1; i <= topePacientes + 5; ++i)
            base.paciente(i, "Gómez", QStringLiteral("N%1").arg(i));
        const auto todo = buscarContactos(base.conexion(), QStringLiteral("gomez"), true, true);
        QVERIFY(todo.hayMas);
        QCOMPARE(int(todo.contactos.size()), topePacientes);
        QCOMPARE(nombres(base, "gomez n205"), QString("Gómez, N205"));
        QCOMPARE(nombres(base, "gomez n205", true, false), QString());
        QCOMPARE(nombres(base, "pérez", false, true), QString());
    }
};

PRUEBA(PruebaTelefonos)
#include "PruebaTelefonos.moc"
