#include "app/forms/sistema.h"
#include "app/Comprobador.h"
#include "app/MenuPrincipal.h"
#include "app/forms/AreaFondo.h"
#include "db/Borradores.h"
#include "db/Config.h"
#include "db/Error.h"
#include "maintenance/RespaldoAutomatico.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"
#include "ui/Ventana.h"
#include "users/VentanaInicio.h"

#include <QDialog>
#include <QDir>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenu>
#include <QStatusBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

const QString sinUsuario = QStringLiteral("Defina un Usuario Activo válido desde la ventana Configuración.");
const QString sinPermiso = QStringLiteral(
    "No tiene permiso para ejecutar esta acción. Consulte con el Administrador del sistema para definir sus permisos "
    "de accesos.");
const QString noEsta = QStringLiteral("Esta ventana todavía no forma parte de esta versión de Vastelo.");
const QString recordatorio = QStringLiteral(
    "IMPORTANTE: Recuerde que el programa de esta PC (servidor) debe cerrarse después que el programa de todas las "
    "terminales.");
const QString falta
    = QStringLiteral("No se encuentra la Base de Datos, asigne una ruta válida en el menú 'Red' del programa.");

/// A database that is there or not, with the message of its absence.
class comprobador : public app::Comprobador
{
public:
    explicit comprobador(base::Mensajes &mensajes)
        : m_mensajes(mensajes)
    {
    }
    bool verificarBase() override
    {
        ++veces;
        lista = hayBase;
        if (!hayBase)
            m_mensajes.fallar(QStringLiteral("Error..."), falta);
        return hayBase;
    }
    bool baseLista() const override { return lista; }

    bool hayBase = true, lista = true;
    int veces = 0;

private:
    base::Mensajes &m_mensajes;
};

/// A practice whose connection cannot be had: touching it fails the test.
class SinConexion : public soporte::BaseDePrueba
{
public:
    db::Connection &conexion() override
    {
        QTest::qFail("the connection was touched", __FILE__, __LINE__);
        throw db::Error(db::Error::Kind::Closed, 0, QStringLiteral("cerrada"));
    }
};

class caja : public ui::Ventana
{
    Q_OBJECT

public:
    caja(db::Entorno &e, ui::Ventanas &v)
        : Ventana(e, v, QStringLiteral("caja"), QStringLiteral("Caja"))
        , texto(new QLineEdit)
    {
        (new QVBoxLayout(this))->addWidget(texto);
    }
    bool preparar(const ui::Pedido &) override { return !seNiega; }
    bool hayCambios() const override { return texto->isModified(); }

    QLineEdit *texto;
    static inline bool seNiega = false;
};

/// Stands in for a window of another folder.
class otra : public ui::Ventana
{
public:
    using Ventana::datos;
    using Ventana::Ventana;
    /// What it was opened for has been done.
    void hacer(const QVariantMap &resultado) { terminar(resultado); }
};

} // namespace

class SistemaTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<soporte::BaseDePrueba> base;
    std::unique_ptr<comprobador> control;
    std::unique_ptr<ui::Ventanas> ventanas;
    std::unique_ptr<app::sistema> marco;

    void preparar(db::Dialect::Kind dialecto = db::Dialect::Kind::Access)
    {
        usar(std::make_unique<soporte::BaseDePrueba>(dialecto));
    }
    void usar(std::unique_ptr<soporte::BaseDePrueba> nueva, bool hayBase = true)
    {
        base = std::move(nueva);
        base->clienteDeRed = true; // no reminder at closing
        control = std::make_unique<comprobador>(base->guion);
        control->hayBase = control->lista = hayBase;
        ventanas = std::make_unique<ui::Ventanas>();
        ventanas->registrar(QStringLiteral("caja"), ui::Modo::Marco, [this] { return new caja(*base, *ventanas); });
        ventanas->registrar(QStringLiteral("acerca"), ui::Modo::Marco, [this] {
            return new ui::Ventana(*base, *ventanas, QStringLiteral("acerca"), QStringLiteral("Acerca de"));
        });
        marco = std::make_unique<app::sistema>(*base, *control, *ventanas);
        caja::seNiega = false;
    }
    void registrarOtra(const QString &nombre)
    {
        ventanas->registrar(
            nombre, ui::Modo::Dialogo, [this, nombre] { return new otra(*base, *ventanas, nombre, nombre); });
    }
    void pulsar(const QString &nombre)
    {
        auto *boton = marco->findChild<QToolButton *>(nombre);
        QVERIFY2(boton && boton->isVisible() && boton->isEnabled(), qPrintable(nombre));
        QTest::mouseClick(boton, Qt::LeftButton);
    }
    /// Log entries, oldest first, without those that opening and closing write.
    QStringList entradas(const QString &ventana = QStringLiteral("Menú General"))
    {
        const db::Rows rows
            = base->conexion().query(QStringLiteral("SELECT accion FROM [Historial] WHERE ventana = ?"), {ventana});
        QStringList textos;
        for (int i = 0; i < rows->rowCount(); ++i)
            textos << rows->text(i, 0);
        return textos;
    }
    int filas(const QString &tabla) { return base->valor("SELECT COUNT(*) FROM [" + tabla + "]").toInt(); }
    QString panel(const char *nombre) { return marco->findChild<QLabel *>(QLatin1String(nombre))->text(); }
    void latir(QTimer *reloj) { QMetaObject::invokeMethod(reloj, "timeout"); }

private slots:
    void cleanup()
    {
        marco.reset();
        ventanas.reset();
        if (base)
            QVERIFY(base->guion.terminar());
        control.reset();
        base.reset();
    }

    void botones()
    {
        preparar();
        marco->show();
        QCOMPARE(marco->windowTitle(), QStringLiteral("Vastelo"));
        QCOMPARE(marco->objectName(), QStringLiteral("sistema"));
        QStringList nombres;
        QString teclas;
        for (const auto *boton : marco->findChildren<QToolButton *>(QRegularExpression(QStringLiteral("^men")))) {
            nombres << boton->objectName();
            QVERIFY2(!boton->icon().isNull(), qPrintable(boton->objectName()));
        }
        QCOMPARE(
            nombres.join(u' '),
            QStringLiteral("menusuario menhistorial mencontab mensaldos menchat menconfiguracion menaccesored menayuda "
                           "mencaja mencopia menacerca menmantenimiento menagendas menlistados menpacientes mensalir "
                           "mengraficos menestadisticas menordenes"));
        // every right is a column, every letter stands in its caption and for one button alone
        for (const app::BotonMenu &boton : app::menuPrincipal()) {
            if (!boton.derecho.isEmpty())
                QVERIFY2(
                    base->conexion().query("SELECT * FROM [Lista Doctores]")->column(boton.derecho) >= 0,
                    qPrintable(boton.derecho));
            QVERIFY2(boton.titulo.contains(boton.tecla, Qt::CaseInsensitive), qPrintable(boton.titulo));
            QVERIFY2(!teclas.contains(boton.tecla), qPrintable(boton.titulo));
            teclas += boton.tecla;
        }
    }

    // What a program that went away left unsaved is told without a box, and opened by name; this session's is not.
    void datosSinGuardarDeAntes()
    {
        preparar();
        base->conexion().execute(QStringLiteral("INSERT INTO [Pacientes] (NroHC,Apellido) VALUES (7,'Paz')"));
        db::Borradores borradores(*base);
        (void)borradores.guardar(
            {.ventana = QStringLiteral("fichita"), .registro = 3, .nropaci = 7, .titulo = QStringLiteral("Paz & Cía")});
        (void)borradores.guardar({.ventana = QStringLiteral("fichita"), .nropaci = 8}); // its patient is gone
        registrarOtra(QStringLiteral("fichita"));
        marco->show();
        auto *aviso = marco->findChild<QToolButton *>(QStringLiteral("borradores"));
        QVERIFY(aviso && aviso->isVisible());
        QCOMPARE(aviso->text(), QStringLiteral("Hay datos sin guardar de antes"));
        const qint64 deAhora = borradores.guardar({.ventana = QStringLiteral("fichita")});
        emit aviso->menu()->aboutToShow();
        QCOMPARE(aviso->menu()->actions().size(), 1);
        QCOMPARE(aviso->menu()->actions()[0]->text(), QStringLiteral("Paz && Cía  (22/11/2026 09:00)"));
        aviso->menu()->actions()[0]->trigger();
        auto *abierta = static_cast<otra *>(ventanas->buscar(QStringLiteral("fichita")));
        QVERIFY(abierta);
        QCOMPARE(abierta->datos(), (QVariantMap{{"registro", 3}, {"nrohc", 7}}));
        base->conexion().execute(QStringLiteral("DELETE FROM [Borradores] WHERE id <> ?"), {deAhora});
        emit aviso->menu()->aboutToShow();
        QVERIFY(!aviso->isVisible());
    }

    void ordenDeUnaPulsacion_data()
    {
        QTest::addColumn<bool>("hayBase");
        QTest::addColumn<bool>("abierta");
        QTest::addColumn<bool>("hayUsuario");
        QTest::addColumn<bool>("derecho");
        QTest::addColumn<bool>("acepta");
        QTest::addColumn<QString>("mensaje");
        QTest::addColumn<int>("queda"); // windows open, and log entries
        QTest::newRow("todo en orden") << true << false << true << true << true << "" << 11;
        QTest::newRow("sin base, nada más se mira") << false << true << false << false << true << falta << 10;
        QTest::newRow("abierta, sin usuario ni derecho") << true << true << false << false << true << "" << 10;
        QTest::newRow("sin usuario") << true << false << false << false << true << sinUsuario << 0;
        QTest::newRow("sin derecho") << true << false << true << false << true << sinPermiso << 0;
        QTest::newRow("la ventana no quiere") << true << false << true << true << false << "" << 0;
    }
    void ordenDeUnaPulsacion()
    {
        QFETCH(bool, hayBase);
        QFETCH(bool, abierta);
        QFETCH(bool, hayUsuario);
        QFETCH(bool, derecho);
        QFETCH(bool, acepta);
        QFETCH(QString, mensaje);
        QFETCH(int, queda);
        preparar();
        marco->show();
        if (abierta)
            QVERIFY(ventanas->abrir(QStringLiteral("caja")));
        if (!derecho)
            base->conexion().execute(QStringLiteral("UPDATE [Lista Doctores] SET accesocaja = 0"));
        if (!hayUsuario)
            base->usuario = 9999;
        control->hayBase = hayBase;
        caja::seNiega = !acepta;
        if (!mensaje.isEmpty())
            base->guion.esperarMensaje(hayBase ? base::titulo::atencion : QStringLiteral("Error..."), mensaje);
        pulsar(QStringLiteral("mencaja"));
        QCOMPARE(control->veces, 1);
        QCOMPARE((ventanas->buscar(QStringLiteral("caja")) ? 10 : 0) + int(entradas().size()), queda);
    }

    void dosVecesNoAbreOtra_data() { soporte::filasDeDialecto(); }
    void dosVecesNoAbreOtra()
    {
        preparar(soporte::dialectoActual());
        marco->show();
        pulsar(QStringLiteral("mencaja"));
        auto *abierta = ventanas->buscar(QStringLiteral("caja"));
        QVERIFY(abierta);
        pulsar(QStringLiteral("mencaja"));
        QCOMPARE(ventanas->buscar(QStringLiteral("caja")), abierta);
        QCOMPARE(entradas(), QStringList{QStringLiteral("Se ingresó a la ventana Caja.")});
    }

    void losQueNoAbren()
    {
        preparar();
        marco->show();
        base->guion.esperarMensaje(base::titulo::atencion, noEsta, base::Icono::Informacion);
        pulsar(QStringLiteral("mengraficos"));
        // this computer is not the server
        base->guion.esperarMensaje(
            base::titulo::atencion,
            QStringLiteral("Esta opción sólo está disponible desde la PC servidor."),
            base::Icono::Advertencia);
        pulsar(QStringLiteral("mencopia"));
        base->clienteDeRed = false;
        base->guion.esperarMensaje(base::titulo::atencion, noEsta, base::Icono::Informacion);
        pulsar(QStringLiteral("mencopia"));
        base->clienteDeRed = true;
        // help does not need a database
        control->hayBase = false;
        base->guion.esperarMensaje(base::titulo::atencion, noEsta, base::Icono::Informacion);
        pulsar(QStringLiteral("menayuda"));
        QCOMPARE(entradas(), QStringList());
        pulsar(QStringLiteral("mensalir"));
        QVERIFY(!marco->isVisible());
    }

    void teclado()
    {
        preparar();
        marco->show();
        QVERIFY(QTest::qWaitForWindowActive(marco.get()));
        // with no window open, Alt and the letter; within the column, the letter alone
        QTest::keyClick(marco.get(), Qt::Key_J, Qt::AltModifier);
        QTRY_VERIFY(ventanas->buscar(QStringLiteral("caja")));
        auto *boton = marco->findChild<QToolButton *>(QStringLiteral("mencaja"));
        QTRY_VERIFY(boton->shortcut().isEmpty()); // the letters are the open window's now
        ventanas->buscar(QStringLiteral("caja"))->close();
        QTRY_VERIFY(!boton->shortcut().isEmpty());
        QTRY_COMPARE(QApplication::focusWidget(), boton); // where the person came from

        marco->setFocus();
        QTest::keyClick(marco.get(), Qt::Key_F10);
        QCOMPARE(QApplication::focusWidget(), boton);
        QTest::keyClick(boton, Qt::Key_Up);
        QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("menayuda"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_J);
        QVERIFY(ventanas->buscar(QStringLiteral("caja")));
        QCOMPARE(entradas().size(), 2);
    }

    void sesion_data() { soporte::filasDeDialecto(); }
    void sesion()
    {
        preparar(soporte::dialectoActual());
        base->clienteDeRed = false;
        base->conexion().execute(QStringLiteral("INSERT INTO [Imprimir2] (nrohc) VALUES (5)"));
        marco->show();
        marco->hide();
        marco->show(); // opened once
        QCOMPARE(entradas(QStringLiteral("Sistema General")), QStringList{QStringLiteral("Se ingresó al sistema.")});
        QCOMPARE(panel("usuario"), QStringLiteral("Usuario Activo: Juan Pérez"));
        QCOMPARE(panel("fecha"), QStringLiteral("domingo 22/11/2026"));

        // a window that has something to lose holds everything back
        pulsar(QStringLiteral("mencaja"));
        auto *abierta = static_cast<caja *>(ventanas->buscar(QStringLiteral("caja")));
        abierta->texto->setModified(true);
        base->guion.esperarPregunta(
            base::titulo::atencion,
            QStringLiteral("Hay datos sin guardar. ¿Desea cerrar la ventana de todos modos?"),
            false);
        QVERIFY(!marco->close());
        QCOMPARE(filas(QStringLiteral("Imprimir2")), 1);
        QVERIFY(marco->tiempo->isActive());

        abierta->texto->setModified(false);
        base->guion.esperarMensaje(QStringLiteral("Importante!!"), recordatorio, base::Icono::Advertencia);
        QVERIFY(marco->close());
        QCOMPARE(filas(QStringLiteral("Imprimir2")), 0);
        QCOMPARE(
            entradas(QStringLiteral("Sistema General")),
            QStringList({QStringLiteral("Se ingresó al sistema."), QStringLiteral("Se cerró el sistema.")}));
        QVERIFY(!marco->tiempo->isActive());
    }

    void sinBaseNoSeTocaLaConexion()
    {
        usar(std::make_unique<SinConexion>(), false);
        marco->show();
        marco->actualizarUsuario();
        latir(marco->tiempo);
        latir(marco->timerbackup);
        QCOMPARE(control->veces, 0); // start-up has told already
        base->guion.esperarMensaje(QStringLiteral("Error..."), falta);
        pulsar(QStringLiteral("mencaja"));
        // told, and opened all the same: nobody's rights are asked for, nothing is logged
        for (int i = 0; i < 2; ++i) {
            base->guion.esperarMensaje(QStringLiteral("Error..."), falta);
            pulsar(QStringLiteral("menacerca"));
            QVERIFY(ventanas->buscar(QStringLiteral("acerca")));
        }
        QVERIFY(app::menuPrincipal()[6].nombre == QLatin1String("menaccesored") && app::menuPrincipal()[6].sinBase);
        latir(marco->tiempo);
        QCOMPARE(control->veces, 3);
        QVERIFY(marco->close());
        QCOMPARE(panel("usuario"), QStringLiteral("Usuario Activo: "));
    }

    void relojes_data() { soporte::filasDeDialecto(); }
    void relojes()
    {
        preparar(soporte::dialectoActual());
        QStringList sonados;
        marco->setSonido([&](const QString &archivo) { sonados << archivo; });
        marco->show();
        QCOMPARE(marco->tiempo->interval(), 30'000);
        db::Connection &c = base->conexion();
        for (const char *tabla : {"Imprimir", "Imprimir2"})
            for (const int nrohc : {-99, 4})
                c.execute(QStringLiteral("INSERT INTO [%1] (nrohc) VALUES (?)").arg(QLatin1String(tabla)), {nrohc});
        latir(marco->timerbackup);
        QCOMPARE(filas(QStringLiteral("Imprimir")), 1);
        QCOMPARE(filas(QStringLiteral("Imprimir2")), 1);

        auto *aviso = marco->findChild<QLabel *>(QStringLiteral("mensajenuevo"));
        QCOMPARE(aviso->text(), QStringLiteral("Tiene un mensaje nuevo en el Chat."));
        latir(marco->tiempo);
        QVERIFY(sonados.isEmpty() && !aviso->isVisible());
        const auto avisar = [&](const char *texto) {
            c.execute(
                QStringLiteral("UPDATE [Lista Doctores] SET anuncio = ? WHERE id = ?"),
                {QString::fromLatin1(texto), base->usuario});
            latir(marco->tiempo);
            latir(marco->tiempo);
        };
        // one sound for each notice, to be seen until it is read
        avisar("Ana");
        QCOMPARE(sonados, QStringList{base->carpetaPrograma() + QStringLiteral("/chat.wav")});
        QVERIFY(aviso->isVisible());
        avisar("Ana, Luis");
        QCOMPARE(sonados.size(), 2);
        avisar("");
        QVERIFY(!aviso->isVisible());
        avisar("Ana, Luis");
        QCOMPARE(sonados.size(), 3);

        // the database goes: told once, until a button finds it again
        control->hayBase = false;
        base->guion.esperarMensaje(QStringLiteral("Error..."), falta);
        for (int i = 0; i < 3; ++i)
            latir(marco->tiempo);
        control->hayBase = true;
        pulsar(QStringLiteral("mencaja"));
        avisar("Eva");
        QCOMPARE(sonados.size(), 4);
    }

    /// The tick of the copies: a failure is told once in a box and stays in the bar until there is a copy.
    void respaldo()
    {
        preparar();
        base->clienteDeRed = false;
        db::Config config(base->conexion());
        config.guardar(u"hacerbackupautomatico", true);
        const QString mala = base->archivo() + QStringLiteral("/Backup"); // below a file
        config.guardar(u"backupcarpeta", mala);
        maintenance::RespaldoAutomatico copias(*base);
        marco->setRespaldo(&copias);
        marco->show();
        const auto latido = [&] {
            latir(marco->timerbackup);
            QTRY_VERIFY_WITH_TIMEOUT(!copias.enMarcha(), 20'000);
            base->reloj.set(base->reloj.now().addSecs(3600));
        };
        const QString motivo = QStringLiteral("No se puede crear la carpeta '%1'.").arg(mala);
        // not over a box that waits for an answer, but at the next tick
        QDialog caja;
        caja.setModal(true);
        caja.show();
        latido();
        caja.hide();
        auto *panelRespaldo = marco->findChild<QLabel *>(QStringLiteral("sinrespaldo"));
        QVERIFY(panelRespaldo->isVisible());
        QCOMPARE(panelRespaldo->toolTip(), motivo);
        QCOMPARE(base->guion.dichos(), QStringList());
        base->guion.esperarMensaje(
            base::titulo::atencion, maintenance::textoSinRespaldo(motivo, {}), base::Icono::Advertencia);
        latido();
        latido();
        QVERIFY(panelRespaldo->isVisible());

        config.guardar(u"backupcarpeta", {});
        latido();
        QVERIFY(!panelRespaldo->isVisible());
        QCOMPARE(QDir(base->carpetaPrograma() + QStringLiteral("/Backup")).entryList(QDir::Files).size(), 1);
        // closed in the middle of one
        base->reloj.set(base->reloj.now().addDays(1));
        latir(marco->timerbackup);
        QVERIFY(copias.enMarcha());
        base->guion.esperarMensaje(QStringLiteral("Importante!!"), recordatorio, base::Icono::Advertencia);
        marco->close();
        QVERIFY(!copias.enMarcha());
        QCOMPARE(QDir(base->carpetaPrograma() + QStringLiteral("/Backup")).entryList(QDir::Files).size(), 1);
    }

    void configuracion_data() { soporte::filasDeDialecto(); }
    void configuracion()
    {
        preparar(soporte::dialectoActual());
        const auto boton = QStringLiteral("menconfiguracion");
        const auto nombre = QStringLiteral("configuracion");
        const auto puerta = QStringLiteral("usuariosadmin");
        const auto entrada = QStringLiteral("Se ingresó a la ventana Configuración del Sistema.");
        registrarOtra(nombre);
        registrarOtra(puerta);
        marco->show();
        // as long as no administrator has a password, the right guards it
        base->conexion().execute(QStringLiteral("UPDATE [Lista Doctores] SET accesoconfiguracion = 0"));
        base->guion.esperarMensaje(base::titulo::atencion, sinPermiso);
        pulsar(boton);
        base->conexion().execute(
            QStringLiteral("UPDATE [Lista Doctores] SET accesoconfiguracion = -1, administrador = -1"));
        pulsar(boton);
        QVERIFY(ventanas->buscar(nombre));
        QCOMPARE(entradas(), QStringList{entrada});
        pulsar(boton); // already open
        QVERIFY(!ventanas->buscar(puerta));
        ventanas->buscar(nombre)->close();

        // then her password does, whatever the right says
        base->conexion().execute(
            QStringLiteral("UPDATE [Lista Doctores] SET accesoconfiguracion = 0, claveusuario = 'abre'"));
        pulsar(boton);
        auto *gate = static_cast<otra *>(ventanas->buscar(puerta));
        QVERIFY(gate && !ventanas->buscar(nombre));
        gate->close(); // cancelled
        QCOMPARE(entradas().size(), 1);
        pulsar(boton);
        static_cast<otra *>(ventanas->buscar(puerta))
            ->hacer(
                {{QStringLiteral("administrador"), 20}, {QStringLiteral("nombre"), QStringLiteral("Ana O'Higgins")}});
        QVERIFY(ventanas->buscar(nombre));
        QCOMPARE(
            entradas(),
            QStringList(
                {entrada, entrada + QStringLiteral(" Se hizo por medio del usuario administrador Ana O'Higgins")}));
        // who does not exist does not get as far as the gate
        ventanas->buscar(nombre)->close();
        base->usuario = 9999;
        base->guion.esperarMensaje(base::titulo::atencion, sinUsuario);
        pulsar(boton);
        QVERIFY(!ventanas->buscar(puerta));
    }

    void cambiarUsuario()
    {
        preparar();
        const auto nombre = QStringLiteral("acceso2");
        registrarOtra(nombre);
        marco->show();
        base->conexion().execute(QStringLiteral("UPDATE [Lista Doctores] SET accesocambiarusuario = 0"));
        base->guion.esperarMensaje(base::titulo::atencion, sinPermiso);
        pulsar(QStringLiteral("menusuario"));
        // for one who was deleted it is the only way out
        base->usuario = 9999;
        pulsar(QStringLiteral("menusuario"));
        auto *cambio = static_cast<otra *>(ventanas->buscar(nombre));
        QVERIFY(cambio);
        marco->actualizarUsuario();
        QCOMPARE(panel("usuario"), QStringLiteral("Usuario Activo: "));
        base->usuario = 20;
        ventanas->refrescar({QStringLiteral("sistema")});
        QCOMPARE(panel("usuario"), QStringLiteral("Usuario Activo: Juan Pérez"));
        QCOMPARE(entradas(), QStringList()); // the window itself writes it
    }

    void ventanaDeInicio_data()
    {
        QTest::addColumn<int>("numero");
        QTest::addColumn<QString>("derecho");
        QTest::addColumn<bool>("abre");
        QTest::newRow("la suya") << 6 << "" << true;
        QTest::newRow("ninguna") << 0 << "" << false;
        QTest::newRow("de otra versión") << 99 << "" << false;
        QTest::newRow("que no está en esta") << 9 << "" << false;
        QTest::newRow("sin derecho, sin una palabra") << 6 << "accesocaja" << false;
    }
    void ventanaDeInicio()
    {
        QFETCH(int, numero);
        QFETCH(QString, derecho);
        QFETCH(bool, abre);
        preparar();
        base->conexion().execute(QStringLiteral("UPDATE [Lista Doctores] SET ventanainicio = ?"), {numero});
        if (!derecho.isEmpty())
            base->conexion().execute(QStringLiteral("UPDATE [Lista Doctores] SET %1 = 0").arg(derecho));
        marco->empezar(false);
        QVERIFY(marco->isVisible());
        QCOMPARE(ventanas->buscar(QStringLiteral("caja")) != nullptr, abre);
        QCOMPARE(entradas().size(), abre ? 1 : 0);
    }

    void ventanasDeInicioSonDelMenu()
    {
        for (const users::VentanaInicio &inicio : users::ventanasInicio()) {
            const auto &botones = app::menuPrincipal();
            const auto suyo = std::find_if(botones.cbegin(), botones.cend(), [&inicio](const app::BotonMenu &boton) {
                return boton.ventana == inicio.ventana && boton.titulo == inicio.titulo;
            });
            QVERIFY2(inicio.numero == 0 || suyo != botones.cend(), qPrintable(inicio.titulo));
            QCOMPARE(users::ventanaInicio(inicio.numero), inicio.ventana);
        }
    }

    void ingresoAlIniciar_data()
    {
        QTest::addColumn<bool>("entra");
        QTest::newRow("entra") << true;
        QTest::newRow("cancela") << false;
    }
    void ingresoAlIniciar()
    {
        QFETCH(bool, entra);
        preparar();
        registrarOtra(QStringLiteral("acceso"));
        base->conexion().execute(
            QStringLiteral("INSERT INTO [Lista Doctores] (NomDoc,ventanainicio,tipo) VALUES ('Ana',6,1)"));
        const int ana = int(base->conexion().insertedId());
        QSignalSpy cancelado(marco.get(), &app::sistema::ingresoCancelado);
        marco->empezar(true);
        auto *ingreso = static_cast<otra *>(ventanas->buscar(QStringLiteral("acceso")));
        QVERIFY(ingreso && ingreso->isVisible() && ingreso->isWindow());
        QVERIFY(!marco->isVisible());
        QCOMPARE(filas(QStringLiteral("Historial")), 0);
        if (entra) {
            base->usuario = ana;
            ingreso->hacer({});
            QVERIFY(marco->isVisible());
            QCOMPARE(panel("usuario"), QStringLiteral("Usuario Activo: Ana"));
            QVERIFY(ventanas->buscar(QStringLiteral("caja")));
            QCoreApplication::processEvents();
            QCOMPARE(cancelado.size(), 0);
            QVERIFY(QGuiApplication::quitOnLastWindowClosed());
        } else {
            QTest::keyClick(ingreso, Qt::Key_Escape);
            QTRY_COMPARE(cancelado.size(), 1);
            QVERIFY(!marco->isVisible());
        }
    }

    void baseQueApareceDespuesPideElIngreso_data()
    {
        QTest::addColumn<bool>("seleccionar");
        QTest::newRow("sin ingreso") << false;
        QTest::newRow("con ingreso") << true;
    }
    void baseQueApareceDespuesPideElIngreso()
    {
        QFETCH(bool, seleccionar);
        usar(std::make_unique<soporte::BaseDePrueba>(), false);
        registrarOtra(QStringLiteral("acceso"));
        base->conexion().execute(QStringLiteral("UPDATE [Config] SET selecusuario = ?"), {seleccionar});
        marco->empezar(false);
        control->hayBase = true;
        pulsar(QStringLiteral("mencaja"));
        QCOMPARE(ventanas->buscar(QStringLiteral("caja")) == nullptr, seleccionar);
        auto *ingreso = static_cast<otra *>(ventanas->buscar(QStringLiteral("acceso")));
        QCOMPARE(ingreso != nullptr, seleccionar);
        if (!ingreso)
            return;
        ingreso->close(); // nobody: asked again
        pulsar(QStringLiteral("mencaja"));
        ingreso = static_cast<otra *>(ventanas->buscar(QStringLiteral("acceso")));
        QVERIFY(ingreso);
        ingreso->hacer({});
        pulsar(QStringLiteral("mencaja"));
        QVERIFY(ventanas->buscar(QStringLiteral("caja")));
    }

    void laQueLlenaElLugarSigueLlenandolo()
    {
        preparar();
        marco->show();
        pulsar(QStringLiteral("mencaja"));
        auto *area = marco->findChild<QMdiArea *>();
        auto *suya = area->subWindowList().constFirst();
        const QSize propia = suya->size();
        marco->resize(1100, 700);
        QCOMPARE(suya->size(), propia);
        suya->resize(area->viewport()->size());
        marco->resize(1000, 600);
        QCOMPARE(suya->size(), area->viewport()->size());
    }

    void fondo_data()
    {
        QTest::addColumn<QString>("archivo");
        QTest::addColumn<QString>("valor");
        QTest::addColumn<bool>("seVe");
        QTest::newRow("sin terminación") << "fondoaplicacion"
                                         << "1" << true;
        QTest::newRow("con la suya") << "fondoaplicacion.png"
                                     << "fondo" << true;
        QTest::newRow("no se pide") << "fondoaplicacion.png"
                                    << "" << false;
        QTest::newRow("no está") << "otra.png"
                                 << "1" << false;
    }
    void fondo()
    {
        QFETCH(QString, archivo);
        QFETCH(QString, valor);
        QFETCH(bool, seVe);
        preparar();
        QDir carpeta(base->carpetaPrograma());
        QVERIFY(carpeta.mkpath(QStringLiteral("Imagenes")));
        QImage imagen(40, 20, QImage::Format_RGB32);
        imagen.fill(Qt::darkGreen);
        QVERIFY(imagen.save(carpeta.filePath("Imagenes/" + archivo), "PNG"));
        base->conexion().execute(QStringLiteral("DELETE FROM [Config]"));
        for (const QString &fila : {valor, QString()}) // the first row says it
            base->conexion().execute(QStringLiteral("INSERT INTO [Config] (fondoaplicacion) VALUES (?)"), {fila});
        marco->show();
        QCOMPARE(marco->findChild<app::AreaFondo *>()->tieneFondo(), seVe);
    }

    // Made as large as the window it would take gigabytes: only what is seen of it is.
    void fondoAngosto()
    {
        QTemporaryDir dir;
        QImage raya(30'000, 1, QImage::Format_RGB32);
        raya.fill(Qt::darkGreen);
        QVERIFY(raya.save(dir.filePath("raya"), "PNG"));
        app::AreaFondo area;
        area.resize(400, 300);
        area.setFondo(dir.filePath("raya"));
        const QImage pintada = area.grab().toImage();
        for (const QPoint donde : {QPoint(5, 5), QPoint(200, 150), QPoint(390, 290)})
            QCOMPARE(pintada.pixelColor(donde), QColor(Qt::darkGreen));
    }

    void configuracionNueva()
    {
        preparar();
        marco->show();
        QImage imagen(40, 20, QImage::Format_RGB32);
        imagen.fill(Qt::darkGreen);
        QVERIFY(QDir(base->carpetaPrograma()).mkpath(QStringLiteral("Imagenes")));
        QVERIFY(imagen.save(base->carpetaPrograma() + "/Imagenes/fondoaplicacion", "PNG"));
        base->conexion().execute(QStringLiteral("UPDATE [Config] SET fondoaplicacion = -1"));
        base->delEquipo.segundosMensajes = 7;
        ventanas->refrescar({QStringLiteral("caja")});
        QCOMPARE(marco->tiempo->interval(), 30'000);
        ventanas->refrescar();
        QCOMPARE(marco->tiempo->interval(), 7'000);
        QVERIFY(marco->findChild<app::AreaFondo *>()->tieneFondo());
        base->conexion().execute(QStringLiteral("UPDATE [Config] SET fondoaplicacion = 0"));
        ventanas->refrescar({QStringLiteral("sistema")});
        QVERIFY(!marco->findChild<app::AreaFondo *>()->tieneFondo());
    }
};

PRUEBA(SistemaTest)
#include "SistemaTest.moc"
