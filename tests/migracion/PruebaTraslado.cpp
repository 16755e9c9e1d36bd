#include "Practica.h"
#include "app/Arranque.h"
#include "app/Modulo.h"
#include "app/forms/accesored.h"
#include "app/forms/migracion.h"
#include "db/ListaDoctores.h"
#include "support/Prueba.h"
#include "ui/Grilla.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>

#include <QSemaphore>

using Clase = app::PedidoTraslado::Clase;
using namespace Qt::StringLiterals;

/// The window 'Red' moving a whole station over and back, over a server of its own.
class PruebaTraslado : public QObject
{
    Q_OBJECT

    std::unique_ptr<Practica> practica;
    std::unique_ptr<soporte::MensajesGuionados> guion;
    std::unique_ptr<app::Modulo> modulo;
    std::unique_ptr<ui::Ventanas> ventanas;
    soporte::RelojFijo reloj;
    app::accesored *red = nullptr;

    const QString comienza
        = u"Este proceso puede demorar varios minutos, haga clic en el botón Aceptar para comenzar y aguarde por favor."_qs;

    void abrirRed()
    {
        red = static_cast<app::accesored *>(ventanas->abrir(u"accesored"_qs));
        QVERIFY(red);
    }
    void escribirServidor(const QString &clave = QLatin1String(soporte::ServidorDePrueba::clave))
    {
        QTest::mouseClick(red->modoservidor, Qt::LeftButton);
        const QStringList partes = QString::fromLatin1(soporte::ServidorDePrueba::nombre).split(u'\\');
        red->servidor->setText(partes[0]);
        red->instancia->setText(partes[1]);
        red->usuario->setText(QLatin1String(soporte::ServidorDePrueba::usuario));
        red->clave->setText(clave);
    }
    app::migracion *trasladar(QPushButton *boton)
    {
        QTest::mouseClick(boton, Qt::LeftButton);
        return static_cast<app::migracion *>(ventanas->buscar(u"migracion"_qs));
    }
    static QString ultimaAccion(db::Connection &conexion)
    {
        const db::Rows filas = conexion.query(u"SELECT accion FROM [Historial]"_qs);
        return filas->text(filas->rowCount() - 1, 0);
    }
    QStringList informes() { return QDir(practica->carpeta()).entryList({u"Traslado (*).txt"_qs}); }

    /// "103 tablas, 45.300 registros"
    static QString cuenta(db::Connection &conexion)
    {
        qint64 tablas = 0, filas = 0;
        for (const QString &tabla : conexion.tableNames()) {
            if (db::migracion::seExcluye(tabla))
                continue;
            ++tablas;
            filas += conexion.query(u"SELECT COUNT(*) FROM [%1]"_qs.arg(tabla))->integer(0, 0);
        }
        return u"%1 tablas, %2 registros"_qs.arg(QLocale().toString(tablas), QLocale().toString(filas));
    }
    void esperarExito(const QString &cuantos, const QString &destino, bool cambia)
    {
        guion->esperarPregunta(u"Atención!!"_qs, comienza, true);
        guion->esperarMensaje(
            u"Información"_qs,
            u"La operación finalizó con éxito!\n\n%1, comprobados uno por uno."_qs.arg(cuantos),
            base::Icono::Informacion);
        guion->esperarPregunta(
            base::titulo::confirmacion,
            u"¿Desea que esta computadora trabaje desde ahora con %1?\nDespués haga el mismo cambio en 'Red' en las "
            u"demás "
            "computadoras: lo que se guarde en la base anterior ya no llegará a la nueva."_qs.arg(destino),
            cambia);
        if (cambia)
            guion->esperarMensaje(
                u"Información"_qs,
                u"El programa trabaja ahora con la base de datos indicada."_qs,
                base::Icono::Informacion);
    }

private slots:
    void init()
    {
        practica = std::make_unique<Practica>();
        QVERIFY(QFile::copy(soporte::plantilla(), practica->carpeta() + u"/Datos_Vacio.mdb"_qs));
        guion = std::make_unique<soporte::MensajesGuionados>();
        modulo = std::make_unique<app::Modulo>(practica->carpeta(), *guion, reloj, practica->servidor.motores());
        (void)app::Arranque(*modulo, [](const QString &) {}).iniciar();
        QVERIFY(modulo->baseLista());
        ventanas = std::make_unique<ui::Ventanas>();
        ventanas->registrar(
            u"accesored"_qs, ui::Modo::Marco, [this] { return new app::accesored(*modulo, *ventanas, modulo.get()); });
        ventanas->registrar(u"migracion"_qs, ui::Modo::Dialogo, [this] {
            return new app::migracion(*modulo, *ventanas, modulo.get());
        });
    }
    void cleanup()
    {
        ventanas.reset();
        QVERIFY(guion->terminar());
    }

    void idaYVuelta()
    {
        abrirRed();
        QVERIFY(!red->migrardatos->isEnabled() && !red->migrarvacia->isEnabled() && !red->volverarchivo->isEnabled());
        escribirServidor();
        QVERIFY(red->migrardatos->isEnabled() && red->migrarvacia->isEnabled() && !red->volverarchivo->isEnabled());

        const QString cuantos = cuenta(*practica->local());
        esperarExito(cuantos, u"el servidor '%1'"_qs.arg(QLatin1String(soporte::ServidorDePrueba::nombre)), true);
        QVERIFY(trasladar(red->migrardatos));
        QTRY_VERIFY_WITH_TIMEOUT(!ventanas->buscar(u"migracion"_qs) && !ventanas->buscar(u"accesored"_qs), 60000);
        QVERIFY(modulo->baseLista() && modulo->destino().servidor);
        QCOMPARE(modulo->conexion().dialect().kind(), db::Dialect::Kind::SqlServer);
        QVERIFY(ultimaAccion(modulo->conexion()).startsWith(u"Se cambió la ubicación"_qs));
        const QString copiada = u"Los datos actuales se copian en el servidor '%1'. %2, comprobados."_qs.arg(
            QLatin1String(soporte::ServidorDePrueba::nombre), cuantos);
        QCOMPARE(ultimaAccion(*practica->local()), copiada);
        QCOMPARE(informes().size(), 1);
        QFile informe(practica->carpeta() + u'/' + informes().constFirst());
        QVERIFY(informe.open(QFile::ReadOnly));
        const QString texto = QString::fromUtf8(informe.readAll());
        QVERIFY(texto.contains(u"completo y comprobado"_qs) && texto.contains(u"8888 (sin fecha)"_qs));
        QCOMPARE(texto.count(u"   igual\r\n"_qs), practica->local()->tableNames().size() - 2);
        QVERIFY(!texto.contains(QLatin1String(soporte::ServidorDePrueba::clave)));

        // and back, into the folder where the old file still lies
        abrirRed();
        QVERIFY(!red->migrardatos->isEnabled() && !red->volverarchivo->isEnabled());
        QTest::mouseClick(red->modoaccess, Qt::LeftButton);
        QVERIFY(red->volverarchivo->isEnabled());
        guion->esperarPregunta(
            base::titulo::atencion,
            u"En '%1' ya hay un archivo Datos.mdb. No se pierde: cuando el nuevo esté completo y comprobado, el que "
            u"está "
            "ahora pasará a llamarse 'Datos (202611220900).mdb'.\n¿Desea continuar?"_qs.arg(practica->carpeta()),
            true);
        esperarExito(cuenta(modulo->conexion()), u"el archivo '%1'"_qs.arg(practica->archivo()), true);
        QVERIFY(trasladar(red->volverarchivo));
        QTRY_VERIFY_WITH_TIMEOUT(!ventanas->buscar(u"accesored"_qs), 60000);
        QVERIFY(modulo->baseLista() && !modulo->destino().servidor);
        QCOMPARE(ultimaAccion(*Practica::abrir(practica->carpeta() + u"/Datos (202611220900).mdb"_qs)), copiada);
        QVERIFY(ultimaAccion(modulo->conexion()).startsWith(u"Se cambió la ubicación"_qs));
    }

    void seQuedaDondeEsta()
    {
        abrirRed();
        escribirServidor();
        esperarExito(
            cuenta(*practica->local()),
            u"el servidor '%1'"_qs.arg(QLatin1String(soporte::ServidorDePrueba::nombre)),
            false);
        const QPointer<app::migracion> ventana = trasladar(red->migrardatos);
        QTRY_VERIFY_WITH_TIMEOUT(!ventana->enMarcha() && !guion->dichos().last().startsWith(u"Información"_qs), 60000);
        // what was found stays to be read
        QCOMPARE(ventana->tablas->modelo().rowCount(), practica->local()->tableNames().size() - 2);
        QVERIFY(ventana->notas->text().contains(informes().constFirst()));
        QCOMPARE(ventana->cancelar->text(), u"&Cerrar"_qs);
        QVERIFY(!modulo->destino().servidor && practica->servidor.tiene(u"Datos"_qs));
        QTest::keyClick(ventana, Qt::Key_Escape);
        QVERIFY(!ventanas->buscar(u"migracion"_qs));
        // the second time there is something there
        guion->esperarPregunta(u"Atención!!"_qs, comienza, true);
        guion->esperarMensaje(
            base::titulo::atencion,
            u"En el servidor '%1' ya existe una base de datos 'Datos': no se copió nada, para no mezclar ni pisar lo "
            u"que "
            "contiene.\n\nSi es de este programa, elija el servidor en la ventana 'Red' y presione Guardar. Si quedó "
            "de "
            "una copia que se cortó, pida a quien administra el servidor que la elimine."_qs.arg(
                QLatin1String(soporte::ServidorDePrueba::nombre)),
            base::Icono::Advertencia);
        QVERIFY(trasladar(red->migrardatos));
        QTRY_VERIFY_WITH_TIMEOUT(!ventanas->buscar(u"migracion"_qs), 60000);
    }

    void noEmpieza()
    {
        abrirRed();
        escribirServidor(u"equivocada"_qs);
        guion->esperarPregunta(u"Atención!!"_qs, comienza, false);
        QVERIFY(!trasladar(red->migrarvacia));
        guion->esperarPregunta(u"Atención!!"_qs, comienza, true);
        guion->esperarMensaje(
            base::titulo::error,
            u"La operación no se pudo completar. Los datos siguen donde estaban y se puede intentar nuevamente.\n\nNo "
            u"se "
            "pudo entrar al servidor '%1' con el usuario 'sa'.\n\nLogin failed for user with password '***'."_qs.arg(
                QLatin1String(soporte::ServidorDePrueba::nombre)));
        QVERIFY(trasladar(red->migrarvacia));
        QTRY_VERIFY_WITH_TIMEOUT(!ventanas->buscar(u"migracion"_qs), 60000);
        modulo->conexion().execute(u"UPDATE [Lista Doctores] SET accesored = 0"_qs);
        const base::Rechazo rechazo = db::sinPermiso();
        guion->esperarMensaje(rechazo.titulo, rechazo.texto, rechazo.icono);
        QVERIFY(!trasladar(red->migrardatos));
        QVERIFY(informes().isEmpty() && !modulo->destino().servidor);
    }

    void cancelar()
    {
        abrirRed();
        escribirServidor();
        QSemaphore copiando, sigue;
        practica->servidor.antes = [&](const QString &sentencia) {
            if (!sentencia.startsWith(u"INSERT INTO [Pacientes] "_qs))
                return;
            copiando.release();
            sigue.acquire();
        };
        guion->esperarPregunta(u"Atención!!"_qs, comienza, true);
        const QPointer<app::migracion> ventana = trasladar(red->migrardatos);
        QVERIFY(copiando.tryAcquire(1, 60000));
        QTRY_VERIFY(ventana->estado->text().startsWith(u"Copiando 'Pacientes' (tabla "_qs));
        const QString pregunta
            = u"¿Desea cancelar la operación?\nLo copiado hasta ahora se descarta; los datos siguen donde estaban."_qs;
        guion->esperarPregunta(base::titulo::confirmacion, pregunta, false);
        QTest::keyClick(ventana, Qt::Key_Escape);
        QVERIFY(ventana->isVisible() && ventana->enMarcha());
        guion->esperarPregunta(base::titulo::confirmacion, pregunta, true);
        QTest::mouseClick(ventana->cancelar, Qt::LeftButton);
        QTest::keyClick(ventana, Qt::Key_Escape); // asked once
        QVERIFY(ventana->estado->text().startsWith(u"Cancelando"_qs));
        guion->esperarMensaje(
            u"Información"_qs,
            u"La operación se canceló. No se copió nada y los datos siguen donde estaban."_qs,
            base::Icono::Informacion);
        sigue.release();
        QTRY_VERIFY_WITH_TIMEOUT(!ventanas->buscar(u"migracion"_qs), 60000);
        QVERIFY(!practica->servidor.tiene(u"Datos"_qs) && ventanas->buscar(u"accesored"_qs));
        QVERIFY(informes().isEmpty());
    }

    /// The program ends in the middle of it.
    void seCierra()
    {
        abrirRed();
        escribirServidor();
        QSemaphore copiando;
        practica->servidor.antes = [&](const QString &sentencia) {
            if (sentencia.startsWith(u"INSERT INTO"_qs))
                copiando.release();
        };
        guion->esperarPregunta(u"Atención!!"_qs, comienza, true);
        QVERIFY(trasladar(red->migrardatos));
        QVERIFY(copiando.tryAcquire(1, 60000));
        ventanas.reset();
        QVERIFY(!practica->servidor.tiene(u"Datos"_qs));
        modulo->conexion().execute(u"UPDATE [Pacientes] SET Apellido = 'x' WHERE id = 1"_qs);
    }
};

PRUEBA(PruebaTraslado)
#include "PruebaTraslado.moc"
