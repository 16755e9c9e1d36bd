#include "db/Borradores.h"
#include "db/Config.h"
#include "patients/NuevoPaciente.h"
#include "patients/forms/ColumnaRegistros.h"
#include "patients/forms/EncabezadoPaciente.h"
#include "patients/forms/FotoPaciente.h"
#include "patients/forms/OpcionCobertura.h"
#include "patients/forms/Registro.h"
#include "patients/forms/pacientes.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"
#include "ui/Borrador.h"
#include "ui/ListaCombo.h"
#include "ui/Ventanas.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QToolButton>

using namespace Qt::StringLiterals;
using patients::pacientes;

namespace {

/// A window of the patient's records; only what it was opened for matters here.
class registro : public ui::Ventana
{
public:
    registro(db::Entorno &entorno, ui::Ventanas &ventanas)
        : Ventana(entorno, ventanas, u"listaconsultas"_s, u"Lista de Consultas"_s)
    {
    }
    using Ventana::datos;
};

} // namespace

/// The patient file as a person uses it.
class FichaVentana : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_base = std::make_unique<soporte::BaseDePrueba>();
        reiniciar();
        db::Config config(m_base->conexion());
        config.guardar(u"UltimoPaci", 0);
        config.guardar(u"prefijohc", u"HC-"_s);
        config.guardar(u"numerohc", u"1"_s);
        (void)patients::insertarPaciente(
            m_base->conexion(),
            {{u"Apellido"_s, u"PÉREZ"_s},
             {u"Nombres"_s, u"ANA"_s},
             {u"FeNac"_s, QDate(1980, 3, 5)},
             {u"DNI"_s, u"20111222"_s},
             {u"cobertura"_s, 1},
             {u"idcobertura"_s, 2},
             {u"alergias"_s, u"Penicilina"_s},
             {u"Notas"_s, u"Viene con la hija"_s}});
        (void)patients::insertarPaciente(
            m_base->conexion(), {{u"Apellido"_s, u"O'HIGGINS"_s}, {u"Nombres"_s, u"EVA"_s}});
    }
    void cleanup()
    {
        m_ventanas.reset();
        QVERIFY(m_base->guion.terminar());
        m_base.reset();
    }

    void muestraAlPaciente()
    {
        auto *v = abrir(1);
        QCOMPARE(v->windowTitle(), u"Ficha del Paciente"_s);
        QCOMPARE(v->encabezado->nombre->text(), u"PÉREZ, ANA"_s);
        QVERIFY(v->encabezado->datos->text().contains(u"46 años"_s));
        QVERIFY(v->encabezado->datos->text().contains(u"Nº ID: 1"_s));
        QVERIFY(v->encabezado->alertas->isVisible());
        QCOMPARE(v->encabezado->alertas->texto(), u"Penicilina"_s);
        QCOMPARE(v->encabezado->notas->texto(), u"Viene con la hija"_s);
        QVERIFY(!v->encabezado->inactivo->isVisible());
        QCOMPARE(control<QLabel>(v, "edadFeNac")->text(), u"46 años"_s);
        QVERIFY(!v->hayCambios());

        // Every column has its field, but for the numbers that nobody types and what other windows keep.
        const QStringList deOtros{
            u"id"_s,
            u"NroHC"_s,
            u"idcobertura2"_s,
            u"nuafiliado2"_s,
            u"nusiniestro"_s,
            u"GrupoSanguineo"_s,
            u"FactorSanguineo"_s,
            u"HC"_s,
            u"UltiEmba"_s,
            u"Embarazo"_s};
        for (const db::Column &columna : m_base->conexion().columns(u"Pacientes"_s))
            QVERIFY2(
                deOtros.contains(columna.name) == (v->findChild<QWidget *>(columna.name) == nullptr),
                qPrintable(columna.name));

        // Each key of a mnemonic is there once.
        QMap<QChar, QString> teclas;
        const auto anotar = [&](const QString &texto) {
            const qsizetype i = texto.indexOf(u'&');
            if (i < 0)
                return true;
            const QChar letra = texto.at(i + 1).toUpper();
            return std::exchange(teclas[letra], texto).isEmpty();
        };
        for (auto *boton : v->findChildren<QAbstractButton *>())
            QVERIFY2(anotar(boton->text()), qPrintable(boton->text()));
        for (auto *rotulo : v->findChildren<QLabel *>())
            QVERIFY2(!rotulo->buddy() || anotar(rotulo->text()), qPrintable(rotulo->text()));
        for (int i = 0; i < v->solapas->count(); ++i)
            QVERIFY2(anotar(v->solapas->tabText(i)), qPrintable(v->solapas->tabText(i)));
    }

    void guardaPorTeclado()
    {
        auto *v = abrir(1);
        escribir(v, "Tel", u"455 1234"_s);
        escribir(v, "FeNac", u"31/12/25"_s);
        QCOMPARE(control<QLabel>(v, "edadFeNac")->text(), u"1 años"_s);
        control<QPlainTextEdit>(v, "alergias")->setPlainText(u"Látex"_s);
        QTest::keyClick(v, Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(v->estado->text(), u"Guardado a las 09:00"_s);
        QVERIFY(!v->hayCambios());
        QCOMPARE(v->encabezado->alertas->texto(), u"Látex"_s);
        QCOMPARE(m_base->valor(u"SELECT Tel FROM [Pacientes] WHERE NroHC = 1"_s), u"455 1234"_s);
        // An unknown birth date has no age.
        escribir(v, "FeNac", QString());
        v->guardar->click();
        QCOMPARE(control<QLineEdit>(v, "FeNac")->text(), u"31/12/9999"_s);
        QCOMPARE(control<QLabel>(v, "edadFeNac")->text(), QString());
        v->close();
        QVERIFY(!m_ventanas->buscar(u"pacientes"_s));
    }

    void loRechazadoLlevaAlCampo()
    {
        auto *v = abrir(1);
        v->solapas->setCurrentIndex(0);
        escribir(v, "nacimadre", u"31/2/50"_s);
        m_base->guion.esperarMensaje(
            u"ERROR en la fecha..."_s,
            u"El Formato de Fecha debe ser dd/mm/aaaa\nERROR en la Fecha de Nacimiento de la Madre del Paciente"_s);
        v->guardar->click();
        QCOMPARE(v->focusWidget()->objectName(), u"nacimadre"_s);
        QVERIFY(v->focusWidget()->isVisible());
        escribir(v, "nacimadre", QString());
        control<QComboBox>(v, "idciudad")->setEditText(u"Ciudad Gótica"_s);
        m_base->guion.esperarMensaje(u"Aviso..."_s, u"'Ciudad Gótica' no está en la lista 'Ciudad'."_s);
        v->guardar->click();
        QCOMPARE(v->focusWidget()->objectName(), u"idciudad"_s);
        db::Config(m_base->conexion()).guardar(u"forzarguardarpaci", 1);
        control<QComboBox>(v, "idcobertura")->setEditText(QString());
        m_base->guion.esperarMensaje(u"Aviso..."_s, u"Debe seleccionar la Cobertura Médica del Paciente"_s);
        v->guardar->click();
        QCOMPARE(v->focusWidget()->objectName(), u"idcobertura"_s);
    }

    void coberturaPorOpciones()
    {
        auto *v = abrir(1);
        QVERIFY(v->cobertura->concobertura->isChecked());
        QVERIFY(!v->cobertura->coberturasinindicar->isVisible()); // what was said is not taken back
        v->cobertura->sincobertura->click();
        QVERIFY(!control<QComboBox>(v, "idcobertura")->isEnabled());
        v->guardar->click();
        QCOMPARE(m_base->valor(u"SELECT idcobertura FROM [Pacientes] WHERE NroHC = 1"_s), u"-1"_s);
        v = abrir(2);
        QVERIFY(v->cobertura->coberturasinindicar->isVisible());
        ui::elegirId(*control<QComboBox>(v, "idcobertura"), 3);
        QVERIFY(v->cobertura->concobertura->isChecked()); // who chooses an insurer has one
        v->guardar->click();
        QCOMPARE(m_base->valor(u"SELECT idcobertura FROM [Pacientes] WHERE NroHC = 2"_s), u"3"_s);
        QCOMPARE(m_base->valor(u"SELECT cobertura FROM [Pacientes] WHERE NroHC = 2"_s), u"1"_s);
    }

    // Changes never move over to the patient that is opened next.
    void nadaPasaAOtroPaciente()
    {
        auto *v = abrir(1);
        escribir(v, "Tel", u"de Ana"_s);
        const QString pregunta = u"Hay datos sin guardar (PÉREZ, ANA). ¿Desea dejar esta ficha de todos modos?"_s;
        m_base->guion.esperarPregunta(u"Atención..."_s, pregunta, false);
        QVERIFY(!m_ventanas->abrir(u"pacientes"_s, {.datos = {{u"nrohc"_s, 2}}}));
        QCOMPARE(v->paciente()->nrohc(), 1);
        QCOMPARE(control<QLineEdit>(v, "Tel")->text(), u"de Ana"_s);
        QVERIFY(m_ventanas->abrir(u"pacientes"_s, {.datos = {{u"nrohc"_s, 1}}})); // the same one: typing goes on
        QCOMPARE(control<QLineEdit>(v, "Tel")->text(), u"de Ana"_s);

        borrador(v)->escribir();
        m_base->guion.esperarPregunta(u"Atención..."_s, pregunta, true);
        QVERIFY(m_ventanas->abrir(u"pacientes"_s, {.datos = {{u"nrohc"_s, 2}}}));
        QCOMPARE(v->encabezado->nombre->text(), u"O'HIGGINS, EVA"_s);
        QVERIFY(!v->encabezado->alertas->isVisible());
        QVERIFY(control<QLineEdit>(v, "Tel")->text().isEmpty());
        QVERIFY(pendientes().isEmpty()); // thrown away by the person
        escribir(v, "Tel", u"de Eva"_s);
        v->guardar->click();
        QCOMPARE(m_base->valor(u"SELECT COUNT(*) FROM [Pacientes] WHERE Tel = 'de Eva' and NroHC = 2"_s), u"1"_s);
        QCOMPARE(m_base->valor(u"SELECT COUNT(*) FROM [Pacientes] WHERE Tel <> ''"_s), u"1"_s);

        m_base->guion.esperarMensaje(u"Atención..."_s, u"Este paciente no Existe, probablemente a sido eliminado."_s);
        QVERIFY(!m_ventanas->abrir(u"pacientes"_s, {.datos = {{u"nrohc"_s, 99}}}));
        QCOMPARE(v->paciente()->nrohc(), 2);
    }

    void nuevoYDespuesGuardado()
    {
        auto *v = abrir(1);
        QTest::keyClick(v, Qt::Key_N, Qt::ControlModifier);
        QVERIFY(!v->paciente());
        QCOMPARE(control<QLineEdit>(v, "numehistoria")->text(), u"HC-000003"_s);
        QVERIFY(control<QLineEdit>(v, "DNI")->text().isEmpty());
        QVERIFY(!v->encabezado->alertas->isVisible() && !v->hayCambios());
        QVERIFY(!control<QPushButton>(v, "botconsultas")->isEnabled() && !v->impri->isEnabled());
        QVERIFY(v->ayuda().startsWith(u"IMPRIMIR Y ACTIVAR CONSULTAS"_s));
        escribir(v, "Apellido", u"Paz"_s);
        escribir(v, "Nombres", u"Luz"_s);
        v->guardar->click();
        QCOMPARE(v->paciente()->nrohc(), 3);
        QVERIFY(control<QPushButton>(v, "botconsultas")->isEnabled() && v->impri->isEnabled());
        QCOMPARE(v->encabezado->nombre->text(), u"Paz, Luz"_s);
        // From now on the same row.
        escribir(v, "Tel", u"4"_s);
        v->guardar->click();
        QCOMPARE(m_base->valor(u"SELECT COUNT(*) FROM [Pacientes]"_s), u"3"_s);
        QCOMPARE(m_base->valor(u"SELECT Tel FROM [Pacientes] WHERE NroHC = 3"_s), u"4"_s);

        m_base->conexion().execute(u"UPDATE [Lista Doctores] SET accesocrearpaciente = 0"_s);
        m_base->guion.esperarMensaje(u"Atención..."_s, sinPermiso());
        v->nuevo->click();
        QCOMPARE(v->paciente()->nrohc(), 3);
    }

    void eliminadoPorOtro()
    {
        auto *v = abrir(1);
        escribir(v, "Tel", u"lo escrito"_s);
        m_base->conexion().execute(u"UPDATE [Pacientes] SET Email = 'de@otra' WHERE NroHC = 1"_s);
        QTest::keyClick(v, Qt::Key_F5);
        QCOMPARE(control<QLineEdit>(v, "Email")->text(), u"de@otra"_s); // and what is typed stays
        QCOMPARE(control<QLineEdit>(v, "Tel")->text(), u"lo escrito"_s);
        m_base->conexion().execute(u"DELETE FROM [Pacientes] WHERE NroHC = 1"_s);
        QTest::keyClick(v, Qt::Key_F5);
        QVERIFY(v->encabezado->eliminado->isVisible());
        m_base->guion.esperarMensaje(
            u"ERROR..."_s, u"Este Registro ya No existe, debe haber sido eliminado por otro usuario."_s);
        v->guardar->click();
        QCOMPARE(control<QLineEdit>(v, "Tel")->text(), u"lo escrito"_s);
        m_base->guion.esperarMensaje(u"Atención..."_s, u"Este paciente no Existe, probablemente a sido eliminado."_s);
        control<QPushButton>(v, "botconsultas")->click();
    }

    void abreLosRegistros()
    {
        auto *v = abrir(1);
        m_base->guion.esperarMensaje(
            u"Atención..."_s,
            u"Esta ventana todavía no forma parte de esta versión de Vastelo."_s,
            base::Icono::Informacion);
        control<QPushButton>(v, "botconsultas")->click();
        m_ventanas->registrar(
            u"listaconsultas"_s, ui::Modo::Marco, [this] { return new registro(*m_base, *m_ventanas); });
        control<QPushButton>(v, "botconsultas")->click();
        auto *abierta = static_cast<registro *>(m_ventanas->buscar(u"listaconsultas"_s));
        QVERIFY(abierta);
        QCOMPARE(abierta->datos(), (QVariantMap{{u"nrohc"_s, 1}, {u"nombre"_s, u"PÉREZ, ANA"_s}}));
        m_base->conexion().execute(u"UPDATE [Lista Doctores] SET accesocertificados = 0"_s);
        m_base->guion.esperarMensaje(u"Atención..."_s, sinPermiso());
        control<QPushButton>(v, "botcertificados")->click();
    }

    void fotoDeArchivoYDeCamara()
    {
        auto *v = abrir(1);
        const QString archivo = m_base->carpetaDatos() + u"/cara.png"_s;
        QImage imagen(40, 30, QImage::Format_RGB32);
        imagen.fill(Qt::red);
        QVERIFY(imagen.save(archivo));
        m_base->guion.esperarArchivo(u"Foto del paciente"_s, archivo);
        v->foto->fotoelegir->click();
        QTRY_VERIFY(v->foto->hayFoto());
        m_base->guion.esperarPregunta(
            u"Confirmación..."_s, u"¿Seguro que desea Eliminar la Foto de Perfil actual?"_s, true);
        v->foto->fotoquitar->click();
        QVERIFY(!v->foto->hayFoto() && !v->foto->fotoquitar->isEnabled());
        v->setCamara([](QWidget *) {
            return base::Rechazo{u"Atención..."_s, u"No hay cámara"_s, {}, base::Icono::Informacion};
        });
        m_base->guion.esperarMensaje(u"Atención..."_s, u"No hay cámara"_s, base::Icono::Informacion);
        v->foto->fotocamara->click();
        v->setCamara([&](QWidget *) { return std::optional(imagen); });
        v->foto->fotocamara->click();
        QTRY_VERIFY(v->foto->hayFoto());
        // The next patient has none, however soon the file is read.
        QVERIFY(m_ventanas->abrir(u"pacientes"_s, {.datos = {{u"nrohc"_s, 2}}}));
        QVERIFY(!v->foto->hayFoto());
        QVERIFY(m_ventanas->abrir(u"pacientes"_s, {.datos = {{u"nrohc"_s, 1}}}));
        QVERIFY(m_ventanas->abrir(u"pacientes"_s, {.datos = {{u"nrohc"_s, 2}}}));
        QTest::qWait(100);
        QVERIFY(!v->foto->hayFoto());
    }

    // What was typed and not saved comes back after the program went away.
    void borradorRecuperado()
    {
        auto *v = abrir(1);
        escribir(v, "Tel", u"0341 4551234"_s);
        escribir(v, "nacimadre", u"31/2/50"_s); // no date: comes back as it was typed
        control<QComboBox>(v, "sexo")->setCurrentIndex(1);
        borrador(v)->escribir();
        QCOMPARE(pendientes(), QStringList{u"PÉREZ, ANA"_s});
        reiniciar(); // as after a power cut
        m_base->conexion().execute(u"UPDATE [Pacientes] SET Tel = '999', Email = 'x' WHERE NroHC = 1"_s);

        m_base->guion.esperarPregunta(
            u"Atención..."_s,
            u"El 22/11/2026 09:00 quedaron datos sin guardar (PÉREZ, ANA):\n\n"
            "Sexo: \"Masculino\"\n"
            "Teléfono: \"0341 4551234\"  ¡Atención! Después se guardó \"999\".\n"
            "Familia, Nac. de la madre: \"31/2/50\"\n\n"
            "¿Desea recuperarlos?"_s,
            true);
        v = abrir(1);
        QCOMPARE(control<QLineEdit>(v, "Tel")->text(), u"0341 4551234"_s);
        QCOMPARE(control<QLineEdit>(v, "nacimadre")->text(), u"31/2/50"_s);
        QCOMPARE(control<QLineEdit>(v, "Email")->text(), u"x"_s);
        QVERIFY(v->hayCambios());
        escribir(v, "nacimadre", QString());
        v->guardar->click();
        QCOMPARE(m_base->valor(u"SELECT sexo FROM [Pacientes] WHERE NroHC = 1"_s), u"1"_s);
        QVERIFY(pendientes().isEmpty());

        // Brought back to what is stored: nothing is left to keep.
        escribir(v, "Tel", u"1"_s);
        borrador(v)->escribir();
        QCOMPARE(pendientes().size(), 1);
        escribir(v, "Tel", u"0341 4551234"_s);
        borrador(v)->escribir();
        QVERIFY(pendientes().isEmpty());
    }

    void borradorRechazado()
    {
        auto *v = abrir(0);
        escribir(v, "Apellido", u"Paz"_s);
        borrador(v)->escribir();
        QCOMPARE(pendientes(), QStringList{u"nuevo paciente: Paz, "_s});
        const QString pregunta = u"El 22/11/2026 09:00 quedaron datos sin guardar (nuevo paciente: Paz, ):\n\n"
                                 "Apellido: \"Paz\"\n\n¿Desea recuperarlos?"_s;
        const QString descartar
            = u"¿Desea descartar esos datos? Si responde No, la próxima vez se le ofrecerán de nuevo."_s;
        // Not now: it stays, and what is typed meanwhile is kept apart.
        reiniciar();
        m_base->guion.esperarPregunta(u"Atención..."_s, pregunta, false);
        m_base->guion.esperarPregunta(u"Confirmación..."_s, descartar, false);
        v = abrir(0);
        QVERIFY(!v->hayCambios());
        escribir(v, "Nombres", u"Otro"_s);
        borrador(v)->escribir();
        QCOMPARE(pendientes().size(), 2);
        m_base->guion.esperarPregunta(
            u"Atención..."_s, u"Hay datos sin guardar. ¿Desea cerrar la ventana de todos modos?"_s, true);
        QTest::keyClick(v, Qt::Key_Escape);
        QVERIFY(!m_ventanas->buscar(u"pacientes"_s));
        QCOMPARE(pendientes().size(), 1);

        reiniciar();
        m_base->guion.esperarPregunta(u"Atención..."_s, pregunta, false);
        m_base->guion.esperarPregunta(u"Confirmación..."_s, descartar, true);
        v = abrir(0);
        QVERIFY(pendientes().isEmpty());
    }

    // Another process types, pauses and is killed: nobody closed, nobody saved.
    void borradorDeUnProcesoMuerto()
    {
        QProcess terminal;
        terminal.start(
            QStringLiteral(VASTELO_TERMINAL), {m_base->carpetaPrograma(), u"1"_s, u"Av. O'Higgins 1450, 2º \"B\""_s});
        QVERIFY(terminal.waitForStarted());
        QVERIFY(terminal.waitForReadyRead(20000));
        QCOMPARE(terminal.readAllStandardOutput(), QByteArray("escrito\n"));
        terminal.kill();
        QVERIFY(terminal.waitForFinished());
        QCOMPARE(terminal.exitStatus(), QProcess::CrashExit);
        QCOMPARE(m_base->valor(u"SELECT Domicilio FROM [Pacientes] WHERE NroHC = 1"_s), QString());

        // It ran under this computer's own name and clock.
        m_base->conexion().execute(
            u"UPDATE [Borradores] SET equipo = ?, fecha = ?"_s, {m_base->equipo(), m_base->reloj.now()});
        m_base->guion.esperarPregunta(
            u"Atención..."_s,
            u"El 22/11/2026 09:00 quedaron datos sin guardar (PÉREZ, ANA):\n\n"
            "Domicilio: \"Av. O'Higgins 1450, 2º \"B\"\"\n\n¿Desea recuperarlos?"_s,
            true);
        auto *v = abrir(1);
        v->guardar->click();
        QCOMPARE(
            m_base->valor(u"SELECT Domicilio FROM [Pacientes] WHERE NroHC = 1"_s), u"Av. O'Higgins 1450, 2º \"B\""_s);
        QVERIFY(pendientes().isEmpty());
    }

    void cincoMilCoberturas()
    {
        {
            db::Transaction transaccion(m_base->conexion());
            for (int i = 0; i < 5000; ++i)
                m_base->conexion().execute(
                    u"INSERT INTO [Lista Coberturas] (nombre,prioridad) VALUES (?,0)"_s,
                    {u"Obra Social %1"_s.arg(i, 4)});
            transaccion.commit();
        }
        QElapsedTimer reloj;
        reloj.start();
        auto *v = abrir(1);
        QVERIFY2(reloj.elapsed() < 1500, qPrintable(QString::number(reloj.elapsed())));
        QVERIFY(control<QComboBox>(v, "idcobertura")->count() > 5000);
    }

private:
    void reiniciar()
    {
        m_ventanas = std::make_unique<ui::Ventanas>();
        patients::registrarVentanas(*m_base, *m_ventanas);
    }
    /// 0: a new patient.
    pacientes *abrir(int nrohc)
    {
        QVariantMap datos;
        if (nrohc != 0)
            datos.insert(u"nrohc"_s, nrohc);
        auto *v = qobject_cast<pacientes *>(m_ventanas->abrir(u"pacientes"_s, {.datos = datos}));
        Q_ASSERT(v);
        return v;
    }
    template <typename Control>
    static Control *control(pacientes *v, const char *nombre)
    {
        auto *suyo = v->findChild<Control *>(QLatin1String(nombre));
        Q_ASSERT(suyo);
        return suyo;
    }
    static void escribir(pacientes *v, const char *nombre, const QString &texto)
    {
        control<QLineEdit>(v, nombre)->setText(texto);
    }
    static ui::Borrador *borrador(pacientes *v) { return v->findChild<ui::Borrador *>(); }
    QStringList pendientes()
    {
        QStringList titulos;
        for (const db::Borrador &suyo : db::Borradores(*m_base).pendientes())
            titulos << suyo.titulo;
        return titulos;
    }
    static QString sinPermiso()
    {
        return u"No tiene permiso para ejecutar esta acción. Consulte con el Administrador del sistema para definir "
               "sus permisos de accesos."_s;
    }

    std::unique_ptr<soporte::BaseDePrueba> m_base;
    std::unique_ptr<ui::Ventanas> m_ventanas;
};

PRUEBA(FichaVentana)
#include "fichaVentana.moc"
