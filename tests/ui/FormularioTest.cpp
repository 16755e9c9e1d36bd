#include "db/Connection.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"
#include "ui/CampoFecha.h"
#include "ui/Campos.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalSpy>

using namespace ui;

/// One field of every kind over a row, as a form declares them.
class FormularioTest : public QObject
{
    Q_OBJECT

    struct Formulario {
        QWidget ventana;
        Campos campos{&ventana};
        soporte::BaseDePrueba base;

        Formulario()
        {
            (void)campos.grupo(
                QStringLiteral("Datos"),
                {campo::texto("DNI", "&Documento:"),
                 campo::memo("Notas", "&Notas:"),
                 campo::numero("cobertura", "N&úmero:").entre(1, 60),
                 campo::decimal("costo", "&Costo:"),
                 campo::fecha("FeNac", "&Fecha:"),
                 campo::bandera("pacienteinactivo", "&Inactivo"),
                 campo::eleccion("sexo", "&Sexo:", {{"Femenino", 0}, {"Masculino", 1}}),
                 campo::lista("idprovincia", "&Provincia:", "Lista Provincia").llamado("provincia")},
                2);
            campos.cargarListas(base.conexion());
        }
        template <typename Control>
        Control *control(const char *columna)
        {
            return qobject_cast<Control *>(campos.control(QLatin1String(columna)));
        }
    };

private slots:
    void loQueNoSeTocaVuelveIgual()
    {
        Formulario f;
        // A deleted entry, a line break in a line, a Null, a single-precision number: none can be shown as it is.
        const QVariantMap fila{
            {"DNI", "1\n2"},
            {"Notas", QVariant()},
            {"cobertura", 77},
            {"costo", double(0.1f)},
            {"FeNac", QDate(1890, 2, 28)},
            {"pacienteinactivo", true},
            {"sexo", 9},
            {"idprovincia", 99999}};
        QSignalSpy avisos(&f.campos, &Campos::cambiado);
        f.campos.mostrar(fila);
        QCOMPARE(avisos.size(), 0);
        QVERIFY(!f.campos.hayCambios());
        QCOMPARE(f.campos.valores(), fila);
        QVERIFY(!f.campos.controlar());
        QCOMPARE(f.control<QLineEdit>("costo")->text(), QStringLiteral("0,1"));
        f.campos.mostrar({{"sexo", QVariant()}});
        QCOMPARE(f.control<QComboBox>("sexo")->currentIndex(), -1); // nobody said so
        f.campos.mostrar(fila);
        f.campos.cargarListas(f.base.conexion());
        QCOMPARE(f.campos.valores(), fila);
    }

    void sabeQueCambio()
    {
        Formulario f;
        f.campos.mostrar({{"costo", 12.5}, {"sexo", 0}, {"cobertura", 3}});
        QSignalSpy avisos(&f.campos, &Campos::cambiado);
        f.control<QLineEdit>("costo")->setText("1.234,50");
        QCOMPARE(avisos.size(), 1);
        QCOMPARE(avisos[0][0].toString(), QStringLiteral("costo"));
        f.control<QComboBox>("sexo")->setCurrentIndex(1);
        f.control<QLineEdit>("cobertura")->clear();
        f.control<QCheckBox>("pacienteinactivo")->setChecked(true);
        f.control<CampoFecha>("FeNac")->setText("5/3/80");
        const QVariantMap esperado{
            {"costo", 1234.5},
            {"sexo", 1},
            {"cobertura", QVariant()},
            {"pacienteinactivo", true},
            {"FeNac", QDate(1980, 3, 5)}};
        QCOMPARE(f.campos.cambios(), esperado);
        f.campos.darPorGuardado();
        QVERIFY(!f.campos.hayCambios());
        QCOMPARE(f.campos.valor("costo").toDouble(), 1234.5);
        // Back to what was loaded: clean again.
        f.control<QComboBox>("sexo")->setCurrentIndex(0);
        QVERIFY(f.campos.hayCambios());
        f.control<QComboBox>("sexo")->setCurrentIndex(1);
        QVERIFY(!f.campos.hayCambios());
    }

    void listaDeTabla()
    {
        Formulario f;
        auto *lista = f.control<QComboBox>("idprovincia");
        QCOMPARE(lista->objectName(), QStringLiteral("provincia"));
        QVERIFY(lista->count() > 20);
        const QString escrito = lista->itemText(2).toUpper();
        lista->setEditText(escrito);
        QCOMPARE(f.campos.valor("idprovincia"), lista->itemData(2));
        // New entries come while something is half typed.
        lista->setEditText("Nuev");
        f.base.conexion().execute("INSERT INTO [Lista Provincia] (nombre,prioridad) VALUES ('Nueva',0)");
        f.campos.cargarLista(f.base.conexion(), "Lista Provincia");
        QCOMPARE(lista->currentText(), QStringLiteral("Nuev"));
        QCOMPARE(f.campos.controlar()->texto, QStringLiteral("'Nuev' no está en la lista 'Provincia'."));
        lista->setEditText("nueva");
        QVERIFY(!f.campos.controlar());
        QVERIFY(f.campos.valor("idprovincia").toInt() > 0);
        f.campos.darPorGuardado();
        lista->setEditText({});
        QCOMPARE(f.campos.valor("idprovincia"), QVariant(0));
    }

    void rechazos_data()
    {
        QTest::addColumn<QString>("columna");
        QTest::addColumn<QString>("escrito");
        QTest::addColumn<QString>("texto");
        QTest::newRow("fecha") << "FeNac"
                               << "31/2/2024"
                               << "El Formato de Fecha debe ser dd/mm/aaaa\nFecha";
        QTest::newRow("fuera de rango") << "cobertura"
                                        << "61"
                                        << "Ingrese en 'Número' un número entre 1 y 60.";
        QTest::newRow("desmesurado") << "cobertura"
                                     << "9999999999"
                                     << "Ingrese en 'Número' un número entre 1 y 60.";
        QTest::newRow("no es número") << "costo"
                                      << "-,"
                                      << "Ingrese un número válido en 'Costo'.";
    }
    void rechazos()
    {
        QFETCH(QString, columna);
        QFETCH(QString, escrito);
        Formulario f;
        qobject_cast<QLineEdit *>(f.campos.control(columna))->setText(escrito);
        const base::Control rechazo = f.campos.controlar();
        QVERIFY(rechazo.has_value());
        QTEST(rechazo->texto, "texto");
        QCOMPARE(rechazo->campo, columna);
    }

    void largos()
    {
        Formulario f;
        f.campos.limitar(f.base.conexion().columns("Pacientes"));
        QCOMPARE(f.control<QLineEdit>("DNI")->maxLength(), 20);
    }
};

PRUEBA(FormularioTest)
#include "FormularioTest.moc"
