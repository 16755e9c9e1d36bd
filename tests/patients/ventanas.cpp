#include "ui/Ventanas.h"
#include "db/Config.h"
#include "patients/forms/Registro.h"
#include "patients/forms/elecpaci.h"
#include "patients/forms/nuevopaci.h"
#include "patients/forms/pacientes.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"
#include "ui/CampoFecha.h"
#include "ui/Grilla.h"
#include "ui/ListaCombo.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

using namespace Qt::StringLiterals;
using patients::elecpaci;
using patients::nuevopaci;

namespace {

/// Another window that is open; only its name matters here.
class ficha : public ui::Ventana
{
public:
    ficha(db::Entorno &entorno, ui::Ventanas &ventanas, const QString &nombre = u"pacientes"_s)
        : Ventana(entorno, ventanas, nombre, u"Ficha del Paciente"_s)
    {
    }
    using Ventana::datos;
};

} // namespace

class ventanas : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_base = std::make_unique<soporte::BaseDePrueba>();
        m_ventanas = std::make_unique<ui::Ventanas>();
        m_resultados.clear();
        patients::registrarVentanas(*m_base, *m_ventanas);
        db::Config config(m_base->conexion());
        config.guardar(u"UltimoPaci", 0);
        config.guardar(u"prefijohc", u"HC-"_s);
        config.guardar(u"numerohc", u"1"_s);
        for (const auto &[apellido, nombres] :
             {std::pair(u"PÉREZ"_s, u"ANA"_s), {u"GÓMEZ"_s, u"LUIS"_s}, {u"O'HIGGINS"_s, u"EVA"_s}})
            (void)patients::insertarPaciente(
                m_base->conexion(), {{u"Apellido"_s, apellido}, {u"Nombres"_s, nombres}, {u"DNI"_s, apellido}});
    }

    void cleanup()
    {
        m_ventanas.reset();
        QVERIFY(m_base->guion.terminar());
        m_base.reset();
    }

    void nuevoPorTeclado()
    {
        auto *v = abrir<nuevopaci>(u"nuevopaci"_s);
        QCOMPARE(v->windowTitle(), u"Nuevo Paciente"_s);
        QCOMPARE(v->numehistoriar->text(), u"HC-000004"_s);
        QCOMPARE(v->focusWidget(), v->apellidor);
        teclear(v, u"d'angelo\r"_s);
        teclear(v, u"lucía\r"_s);
        teclear(v, u"30111222\r"_s);
        QCOMPARE(v->focusWidget(), v->telparr);
        teclear(v, u"4551234"_s);
        ui::elegirId(*v->coberturar, 2);
        QTest::keyClick(v->focusWidget(), Qt::Key_S, Qt::ControlModifier);

        QVERIFY(!m_ventanas->buscar(u"nuevopaci"_s));
        QCOMPARE(m_resultados.size(), 1);
        QCOMPARE(m_resultados[0], (QVariantMap{{u"nrohc"_s, 4}, {u"nombre"_s, u"D'ANGELO, LUCÍA"_s}}));
        QCOMPARE(m_base->valor(u"SELECT idcobertura FROM [Pacientes] WHERE NroHC = 4"_s), u"2"_s);
    }

    void loRechazadoQuedaEscrito()
    {
        auto *v = abrir<nuevopaci>(u"nuevopaci"_s);
        teclear(v, u"Paz\r"_s);
        m_base->guion.esperarMensaje(u"Aviso..."_s, u"Debe ingresar el Nombre del Paciente"_s);
        v->guardar->click();
        QCOMPARE(v->focusWidget(), v->nombresr);
        QCOMPARE(v->apellidor->text(), u"Paz"_s);

        v->nombresr->setText(u"Luz"_s);
        v->dnir->setText(u"pérez"_s);
        v->emailr->setText(u"luz@correo.example"_s);
        m_base->guion.esperarMensaje(
            u"Aviso..."_s,
            u"Ya existe otro paciente con el Nº de Documento que le quiere ingresar al paciente actual."_s);
        v->guardar->click();
        QCOMPARE(v->focusWidget(), v->dnir);
        QCOMPARE(v->emailr->text(), u"luz@correo.example"_s);
        QVERIFY(m_ventanas->buscar(u"nuevopaci"_s));
        QVERIFY(m_resultados.isEmpty());

        // Leaving asks first; the button that says so does not.
        m_base->guion.esperarPregunta(
            u"Atención..."_s, u"Hay datos sin guardar. ¿Desea cerrar la ventana de todos modos?"_s, false);
        QTest::keyClick(v, Qt::Key_Escape);
        QVERIFY(m_ventanas->buscar(u"nuevopaci"_s));
        v->cancelar->click();
        QVERIFY(!m_ventanas->buscar(u"nuevopaci"_s));
        QCOMPARE(m_base->valor(u"SELECT UltimoPaci FROM [Config]"_s), u"3"_s);
    }

    void unaCoberturaQueNoExisteSeDice()
    {
        auto *v = abrir<nuevopaci>(u"nuevopaci"_s);
        v->apellidor->setText(u"Paz"_s);
        v->nombresr->setText(u"Luz"_s);
        v->coberturar->setEditText(u"Mutual inventada"_s);
        m_base->guion.esperarMensaje(u"Aviso..."_s, u"Debe seleccionar la Cobertura Médica del Paciente"_s);
        v->guardar->click();
        v->coberturar->setEditText(QString());
        v->guardar->click();
        QCOMPARE(m_resultados.size(), 1);
    }

    void noEscribeMasDeLoQueEntra()
    {
        auto *v = abrir<nuevopaci>(u"nuevopaci"_s);
        teclear(v, QString(300, u'a'));
        v->nombresr->setText(u"Luz"_s);
        v->guardar->click();
        QCOMPARE(m_resultados.size(), 1);
    }

    void formaAmpliaYParecidos()
    {
        m_base->conexion().execute(u"UPDATE [Config] SET tipoformunewpaci = 1"_s);
        m_base->conexion().execute(
            u"INSERT INTO [Pacientes] (NroHC,Apellido,Nombres,DNI) VALUES (900,'Sosa','Mia','12345678')"_s);
        auto *v = abrir<nuevopaci>(u"nuevopaci"_s);
        QVERIFY(v->opcionampli->isChecked());
        QCOMPARE(v->focusWidget()->objectName(), u"apellido"_s);
        const auto linea = [v](const QString &nombre) { return v->findChild<QLineEdit *>(nombre); };
        QCOMPARE(linea(u"numehistoria"_s)->text(), u"HC-000004"_s);
        auto *panel = v->findChild<QWidget *>(u"parecidos"_s)->parentWidget();
        QVERIFY(panel->isHidden());
        linea(u"dni"_s)->setText(u"12345687"_s);
        QTRY_VERIFY(!panel->isHidden());

        // What was typed is there in the other form, and back.
        v->opcionredu->setChecked(true);
        QCOMPARE(v->dnir->text(), u"12345687"_s);
        v->apellidor->setText(u"Rey"_s);
        v->opcionampli->setChecked(true);
        QCOMPARE(linea(u"apellido"_s)->text(), u"Rey"_s);
        linea(u"nombres"_s)->setText(u"Lía"_s);
        linea(u"fecnac"_s)->setText(u"ayer"_s);
        m_base->guion.esperarMensaje(
            u"ERROR en la fecha..."_s, u"El Formato de Fecha debe ser dd/mm/aaaa\nERROR en la Fecha de Nacimiento"_s);
        v->guardar->click();
        QCOMPARE(v->focusWidget()->objectName(), u"fecnac"_s);
        QCOMPARE(linea(u"fecnac"_s)->text(), u"ayer"_s);

        // It was the one who is there already.
        v->findChild<QAbstractButton *>(u"usarparecido"_s)->click();
        QCOMPARE(m_resultados.size(), 1);
        QCOMPARE(m_resultados[0].value(u"nrohc"_s).toInt(), 900);
        QCOMPARE(m_base->valor(u"SELECT COUNT(*) FROM [Pacientes] WHERE Apellido = 'Rey'"_s), u"0"_s);
    }

    void sinDerechoNoAbre()
    {
        m_base->conexion().execute(u"UPDATE [Lista Doctores] SET accesocrearpaciente = 0"_s);
        m_base->guion.esperarMensaje(
            u"Atención..."_s,
            u"No tiene permiso para ejecutar esta acción. Consulte con el Administrador del sistema para definir sus "
            "permisos de accesos."_s);
        QVERIFY(!m_ventanas->abrir(u"nuevopaci"_s));
        m_base->usuario = 999;
        m_base->guion.esperarMensaje(
            u"Atención..."_s, u"Defina un Usuario Activo válido desde la ventana Configuración."_s);
        QVERIFY(!m_ventanas->abrir(u"nuevopaci"_s));
    }

    void rotulosPorModo_data()
    {
        QTest::addColumn<int>("modo");
        QTest::addColumn<QString>("boton");
        QTest::addColumn<QString>("etiqueta");
        QTest::newRow("ficha") << 1 << u"Ver Paciente"_s << u"Mostrar Ficha del Paciente"_s;
        QTest::newRow("turno") << 2 << u"Elegir Paciente"_s << u"Seleccione al paciente que le asignará un turno"_s;
        QTest::newRow("búsqueda") << 3 << u"Buscar Turno"_s << u"Buscar Turno"_s;
        QTest::newRow("pago") << 4 << u"Elegir Paciente"_s << u"Seleccione al paciente que le asignará un pago"_s;
    }

    void rotulosPorModo()
    {
        QFETCH(int, modo);
        auto *v = abrir<elecpaci>(u"elecpaci"_s, {{u"modo"_s, modo}});
        QTEST(v->aceptar->text(), "boton");
        QTEST(v->etiqueta->text(), "etiqueta");
        QCOMPARE(v->windowTitle(), u"Elección del Paciente"_s);
    }

    void eliminaDesdeLaLista()
    {
        auto *v = abrir<elecpaci>(u"elecpaci"_s, {{u"modo"_s, 1}});
        v->listapaci->elegirClave(1);
        v->listapaci->setFocus();
        const QString pregunta = u"¿Seguro que desea eliminar el Paciente PÉREZ, ANA?. Si lo hace, perderá toda la "
                                 "Historia Clínica del Paciente y los registros contables del mismo."_s;
        m_base->guion.esperarPregunta(u"Confirmación..."_s, pregunta, false);
        QTest::keyClick(v->listapaci, Qt::Key_Delete);
        QCOMPARE(v->cantidad->text(), u"3 pacientes"_s);
        m_base->guion.esperarPregunta(u"Confirmación..."_s, pregunta, true);
        QTest::keyClick(v->listapaci, Qt::Key_Delete);
        QCOMPARE(v->cantidad->text(), u"2 pacientes"_s);
        QVERIFY(abrir<elecpaci>(u"elecpaci"_s, {{u"modo"_s, 2}})->eliminar->isHidden());
    }

    void eligePorTeclado()
    {
        auto *v = abrir<elecpaci>(u"elecpaci"_s, {{u"modo"_s, 2}});
        QCOMPARE(v->cantidad->text(), u"3 pacientes"_s);
        QCOMPARE(v->focusWidget(), v->apellidoredu);
        teclear(v, u"ez"_s);
        QTRY_COMPARE(v->cantidad->text(), u"2 pacientes"_s); // by itself, after a pause
        QTest::keyClick(v->focusWidget(), Qt::Key_Down);
        QCOMPARE(v->focusWidget(), v->listapaci);
        QTest::keyClick(v->focusWidget(), Qt::Key_Down);
        QTest::keyClick(v->focusWidget(), Qt::Key_Return);
        QVERIFY(!m_ventanas->buscar(u"elecpaci"_s));
        QCOMPARE(m_resultados.size(), 1);
        QCOMPARE(m_resultados[0], (QVariantMap{{u"nrohc"_s, 1}, {u"nombre"_s, u"PÉREZ, ANA"_s}}));
    }

    void enterBuscaYEscLimpia()
    {
        auto *v = abrir<elecpaci>(u"elecpaci"_s, {{u"modo"_s, 2}});
        teclear(v, u"o'h\r"_s);
        QCOMPARE(v->cantidad->text(), u"1 paciente"_s);
        QCOMPARE(v->listapaci->claveActual(), 3);
        QTest::keyClick(v, Qt::Key_Escape);
        QCOMPARE(v->cantidad->text(), u"3 pacientes"_s);
        QVERIFY(v->apellidoredu->text().isEmpty());
        QTest::keyClick(v, Qt::Key_Escape);
        QVERIFY(!m_ventanas->buscar(u"elecpaci"_s));
        QVERIFY(m_resultados.isEmpty());
    }

    void enterAceptaElUnicoQueSeVio()
    {
        auto *v = abrir<elecpaci>(u"elecpaci"_s, {{u"modo"_s, 4}, {u"apellido"_s, u"ez"_s}});
        QCOMPARE(v->cantidad->text(), u"2 pacientes"_s);
        QTest::keyClick(v->focusWidget(), Qt::Key_Return); // two: neither
        QTest::keyClick(v->focusWidget(), Qt::Key_Home);
        teclear(v, u"r"_s);
        QTest::keyClick(v->focusWidget(), Qt::Key_Return); // searches first
        QCOMPARE(v->cantidad->text(), u"1 paciente"_s);
        QVERIFY(m_resultados.isEmpty());
        QTest::keyClick(v->focusWidget(), Qt::Key_Return);
        QCOMPARE(m_resultados.size(), 1);
        QCOMPARE(m_resultados[0].value(u"nrohc"_s).toInt(), 1);
    }

    void laListaDevuelveLoQueSeEscribe()
    {
        auto *v = abrir<elecpaci>(u"elecpaci"_s);
        teclear(v, u"e"_s);
        QTest::keyClick(v->focusWidget(), Qt::Key_Down);
        QCOMPARE(v->focusWidget(), v->listapaci);
        teclear(v, u"z"_s);
        QCOMPARE(v->focusWidget(), v->apellidoredu);
        QCOMPARE(v->apellidoredu->text(), u"ez"_s);
        QTest::keyClick(v->focusWidget(), Qt::Key_Down);
        QTest::keyClick(v->focusWidget(), Qt::Key_Up);
        QCOMPARE(v->focusWidget(), v->apellidoredu);
    }

    void cadaFiltroLlega()
    {
        db::Connection &c = m_base->conexion();
        c.execute(u"UPDATE [Pacientes] SET apellido2='SOSA', Tel='455', NroOS='7/1', FeNac=#03/05/1980#, sexo=1, "
                  "cobertura=1, idcobertura=2, idciudad=1, idprovincia=1 WHERE NroHC = 2"_s);
        c.execute(u"UPDATE [Pacientes] SET pacienteinactivo = -1, cobertura = 2, sexo = 0 WHERE NroHC = 3"_s);
        db::Config(c).guardar(u"nuidhc", true);
        auto *v = abrir<elecpaci>(u"elecpaci"_s);
        teclear(v, u"e"_s);
        QTest::mouseClick(v->opcionampli, Qt::LeftButton, {}, QPoint(5, 8));
        QCOMPARE(v->focusWidget(), v->apellido);
        QCOMPARE(v->apellido->text(), u"e"_s); // and the inactive one is out
        QCOMPARE(quienes(v), u"GÓMEZ SOSA, PÉREZ"_s);
        v->apellido->clear();

        const auto prueba = [&](QLineEdit *campo, const QString &texto, const QString &esperados) {
            campo->setFocus();
            campo->setText(texto);
            QTest::keyClick(campo, Qt::Key_Return);
            QCOMPARE(quienes(v), esperados);
            QTest::keyClick(v, Qt::Key_Escape);
            QVERIFY(campo->text().isEmpty());
            QCOMPARE(quienes(v), u"GÓMEZ SOSA, PÉREZ"_s);
        };
        prueba(v->apellido2, u"sos"_s, u"GÓMEZ SOSA"_s);
        prueba(v->nombres, u"ana"_s, u"PÉREZ"_s);
        prueba(v->numehistoria, u"02"_s, u"GÓMEZ SOSA"_s);
        prueba(v->dni, u"érez"_s, u"PÉREZ"_s);
        prueba(v->telpar, u"55"_s, u"GÓMEZ SOSA"_s);
        prueba(v->nroos, u"/"_s, u"GÓMEZ SOSA"_s);
        prueba(v->fecnac, u"5/3/80"_s, u"GÓMEZ SOSA"_s);
        prueba(v->edad1, u"46"_s, u"GÓMEZ SOSA"_s);
        prueba(v->edad2, u"46"_s, u"GÓMEZ SOSA"_s);

        const auto elige = [&](const std::function<void()> &eleccion, const QString &esperados) {
            eleccion();
            QCOMPARE(quienes(v), esperados);
            v->limpiar->click();
        };
        elige([&] { v->sexo->setCurrentIndex(2); }, u"GÓMEZ SOSA"_s);
        elige([&] { v->todos->click(), v->sexo->setCurrentIndex(1); }, u"O'HIGGINS"_s);
        elige([&] { v->inactivos->click(); }, u"O'HIGGINS"_s);
        elige([&] { v->inactivos->click(), v->nocober->click(); }, u"O'HIGGINS"_s);
        elige([&] { v->sicober->click(); }, u"GÓMEZ SOSA"_s);
        elige([&] { v->sicober->click(), ui::elegirId(*v->coberfiltro, 3); }, QString());
        elige([&] { v->nosabecober->click(); }, u"PÉREZ"_s);
        elige([&] { ui::elegirId(*v->ciudad, 1), ui::elegirId(*v->provincia, 1); }, u"GÓMEZ SOSA"_s);
        QVERIFY(!v->coberfiltro->isEnabled());

        // Half a date is no mistake while it is being typed, and one when Enter is pressed.
        v->fecnac->setFocus();
        teclear(v, u"31/2/"_s);
        QTest::qWait(300);
        m_base->guion.esperarMensaje(
            u"Error..."_s, u"La fecha de nacimiento ingresada es incorrecta, debe ser del tipo ' dd/mm/aaaa'."_s);
        QTest::keyClick(v->fecnac, Qt::Key_Return);
        QCOMPARE(quienes(v), u"GÓMEZ SOSA, PÉREZ"_s);
    }

    void losAtajosNoSeRepiten()
    {
        auto *v = abrir<elecpaci>(u"elecpaci"_s);
        for (const bool amplia : {false, true}) {
            (amplia ? v->opcionampli : v->opcionredu)->click();
            QStringList letras;
            for (const auto *control : v->findChildren<QWidget *>()) {
                const QString atajo = QKeySequence::mnemonic(control->property("text").toString()).toString();
                if (control->isVisible() && !atajo.isEmpty() && !qobject_cast<const QLineEdit *>(control)) {
                    QVERIFY2(!letras.contains(atajo), qPrintable(atajo));
                    letras << atajo;
                }
            }
            QVERIFY(letras.size() > 6);
        }
    }

    void exportaLaListaConSusSaldos()
    {
        m_base->conexion().execute(u"INSERT INTO [Pacientes Ordenes] (NroPaci,costo) VALUES (1,1234.5)"_s);
        m_base->conexion().execute(u"UPDATE [Pacientes] SET Apellido = '=1+1' WHERE NroHC = 2"_s);
        auto *v = abrir<elecpaci>(u"elecpaci"_s);
        const QString destino = m_base->carpetaPrograma() + u"/lista.csv"_s;
        m_base->guion.esperarDestino(u"Exportar"_s, destino);
        v->exportarlista->click();
        QFile archivo(destino);
        QVERIFY(archivo.open(QIODevice::ReadOnly));
        QCOMPARE(archivo.read(3), QByteArray("\xEF\xBB\xBF"));
        QCOMPARE(
            QString::fromUtf8(archivo.readAll()),
            u"Nº Hist. Clínica;Pacientes;Nº Doc. Identidad;Nº Afiliado;Saldo $\r\n"
            "2;'=1+1, LUIS;GÓMEZ;;0,00\r\n3;O'HIGGINS, EVA;O'HIGGINS;;0,00\r\n1;PÉREZ, ANA;PÉREZ;;1.234,50\r\n"_s);

        // What cannot be read is blank in the window, and told where it would be missed.
        m_base->conexion().execute(u"DROP TABLE [Pacientes Pagos]"_s);
        v->refrescar();
        QCOMPARE(saldos(v), (QStringList{{}, {}, {}}));
        m_base->guion.esperarDestino(u"Exportar"_s, destino);
        m_base->guion.esperarMensaje(u"ERROR..."_s, u"La base de datos no tiene la tabla 'Pacientes Pagos'."_s);
        v->exportarlista->click();
    }

    void muestraSaldosYOrdenaPorEllos()
    {
        m_base->conexion().execute(u"INSERT INTO [Pacientes Ordenes] (NroPaci,costo) VALUES (1,1234.5)"_s);
        m_base->conexion().execute(u"INSERT INTO [Pacientes Ordenes] (NroPaci,costo) VALUES (3,99)"_s);
        auto *v = abrir<elecpaci>(u"elecpaci"_s, {{u"modo"_s, 2}});
        QCOMPARE(saldos(v), (QStringList{u"0,00"_s, u"99,00"_s, u"1.234,50"_s}));
        QCOMPARE(v->listapaci->modelo().index(0, 1).data().toString(), u"GÓMEZ, LUIS"_s);
        v->listapaci->sortByColumn(4, Qt::DescendingOrder);
        QCOMPARE(saldos(v), (QStringList{u"1.234,50"_s, u"99,00"_s, u"0,00"_s}));
        v->listapaci->sortByColumn(2, Qt::DescendingOrder); // by document, which here is the surname
        QCOMPARE(quienes(v), u"PÉREZ, O'HIGGINS, GÓMEZ"_s);
        v->listapaci->sortByColumn(1, Qt::DescendingOrder);
        QCOMPARE(quienes(v), u"PÉREZ, O'HIGGINS, GÓMEZ"_s);
        v->listapaci->sortByColumn(4, Qt::DescendingOrder);
        teclear(v, u"ez\r"_s);
        QCOMPARE(saldos(v), (QStringList{u"1.234,50"_s, u"0,00"_s}));
    }

    void loQueYaNoEstaSeDice()
    {
        auto *v = abrir<elecpaci>(u"elecpaci"_s, {{u"modo"_s, 2}});
        m_base->guion.esperarMensaje(u"Atención..."_s, u"Debe seleccionar un paciente de la lista."_s);
        v->aceptar->click();
        v->listapaci->elegirClave(3);
        m_base->conexion().execute(u"DELETE FROM [Pacientes] WHERE NroHC = 3"_s);
        m_base->guion.esperarMensaje(u"Atención..."_s, u"Este paciente no Existe, probablemente a sido eliminado."_s);
        v->aceptar->click();
        QCOMPARE(v->cantidad->text(), u"2 pacientes"_s);
        QVERIFY(m_resultados.isEmpty());
    }

    void verFicha()
    {
        auto *v = abrir<elecpaci>(u"elecpaci"_s, {{u"modo"_s, 1}});
        v->listapaci->elegirClave(3);
        v->aceptar->click();
        auto *abierta = qobject_cast<patients::pacientes *>(m_ventanas->buscar(u"pacientes"_s));
        QVERIFY(abierta);
        QCOMPARE(abierta->paciente()->nrohc(), 3);
        QVERIFY(!m_ventanas->buscar(u"elecpaci"_s));

        v = abrir<elecpaci>(u"elecpaci"_s, {{u"modo"_s, 1}});
        v->listapaci->elegirClave(1);
        m_base->guion.esperarMensaje(
            u"Atención..."_s, u"Un Paciente está siendo atendido, para seguir debe cerrar la ficha del Paciente"_s);
        v->aceptar->click();
        QCOMPARE(abierta->paciente()->nrohc(), 3);
    }

    void buscaSusTurnos()
    {
        const QString nombre = u"resulbusque"_s;
        m_ventanas->registrar(nombre, ui::Modo::Marco, [&] { return new ficha(*m_base, *m_ventanas, nombre); });
        auto *v = abrir<elecpaci>(u"elecpaci"_s, {{u"modo"_s, 3}});
        v->listapaci->elegirClave(2);
        v->aceptar->click();
        auto *turnos = static_cast<ficha *>(m_ventanas->buscar(nombre));
        QVERIFY(turnos);
        QCOMPARE(turnos->datos(), (QVariantMap{{u"nrohc"_s, 2}, {u"nombre"_s, u"GÓMEZ, LUIS"_s}}));
        QVERIFY(!m_ventanas->buscar(u"elecpaci"_s));
    }

    void elNuevoQuedaElegido()
    {
        auto *v = abrir<elecpaci>(u"elecpaci"_s, {{u"modo"_s, 2}});
        teclear(v, u"ibáñez"_s);
        QTest::keyClick(v->focusWidget(), Qt::Key_N, Qt::ControlModifier);
        auto *alta = qobject_cast<nuevopaci *>(m_ventanas->buscar(u"nuevopaci"_s));
        QVERIFY(alta);
        QCOMPARE(alta->apellidor->text(), u"ibáñez"_s);
        alta->nombresr->setText(u"Inés"_s);
        alta->guardar->click();
        QCOMPARE(v->listapaci->claveActual(), 4);
        QCOMPARE(v->cantidad->text(), u"4 pacientes"_s);
        QTest::keyClick(v->listapaci, Qt::Key_Return);
        QCOMPARE(m_resultados.size(), 1);
        QCOMPARE(m_resultados[0].value(u"nombre"_s).toString(), u"IBÁÑEZ, INÉS"_s);
    }

private:
    template <typename Clase>
    Clase *abrir(const QString &nombre, const QVariantMap &datos = {})
    {
        auto *v = qobject_cast<Clase *>(m_ventanas->abrir(
            nombre, {.datos = datos, .alTerminar = [this](const QVariantMap &r) { m_resultados << r; }}));
        Q_ASSERT(v);
        return v;
    }

    // As a person types: to whichever field has the focus; "\r" is Enter.
    static void teclear(QWidget *ventana, const QString &texto)
    {
        for (const QChar c : texto) {
            if (c == u'\r')
                QTest::keyClick(ventana->focusWidget(), Qt::Key_Return);
            else
                QTest::sendKeyEvent(QTest::Click, ventana->focusWidget(), Qt::Key_unknown, QString(c), Qt::NoModifier);
        }
    }

    // Surnames shown.
    static QString quienes(elecpaci *v)
    {
        QStringList apellidos;
        for (int fila = 0; fila < v->listapaci->modelo().rowCount(); ++fila)
            apellidos << v->listapaci->modelo().index(fila, 1).data().toString().section(u',', 0, 0);
        return apellidos.join(u", "_s);
    }

    static QStringList saldos(elecpaci *v)
    {
        QStringList textos;
        const ui::ModeloGrilla &modelo = v->listapaci->modelo();
        for (int fila = 0; fila < modelo.rowCount(); ++fila)
            textos << modelo.index(fila, 4).data().toString();
        return textos;
    }

    std::unique_ptr<soporte::BaseDePrueba> m_base;
    std::unique_ptr<ui::Ventanas> m_ventanas;
    QList<QVariantMap> m_resultados;
};

PRUEBA(ventanas)
#include "ventanas.moc"
