#include "base/Csv.h"
#include "db/Error.h"
#include "db/Historial.h"
#include "maintenance/ExportacionHistorial.h"
#include "maintenance/Historial.h"
#include "maintenance/IntegridadHistorial.h"
#include "maintenance/forms/Registro.h"
#include "maintenance/forms/historial.h"
#include "support/BaseDePrueba.h"
#include "support/Falla.h"
#include "support/Prueba.h"
#include "ui/CampoFecha.h"
#include "ui/Grilla.h"
#include "ui/ListaCombo.h"
#include "ui/Ventanas.h"

#include <QClipboard>
#include <QComboBox>
#include <QFile>
#include <QPlainTextEdit>
#include <QProgressBar>

using namespace Qt::StringLiterals;
using namespace maintenance;

/// Reading the activity log: the search in both dialects, and the window as a person uses it.
class PruebaHistorial : public QObject
{
    Q_OBJECT

    std::unique_ptr<soporte::BaseDePrueba> base;
    std::unique_ptr<ui::Ventanas> ventanas;

    void iniciar(db::Dialect::Kind dialecto = db::Dialect::Kind::Access)
    {
        base = std::make_unique<soporte::BaseDePrueba>(dialecto);
        ventanas = std::make_unique<ui::Ventanas>();
        registrarVentanas(*base, *ventanas);
        base->reloj.set({QDate(2026, 3, 20), QTime(9, 0)});
    }

    /// `n` rows of before, one every six hours up to 1/3/2026, of users 20, 7 and 0.
    void llenar(int n)
    {
        static const int usuarios[] = {20, 7, 0};
        db::Transaction transaccion(base->conexion());
        for (int i = 0; i < n; ++i)
            base->conexion().execute(
                u"INSERT INTO [Historial] (fecha,equipo,iddoctor,ventana,accion) VALUES (?,'PC 1',?,?,?)"_s,
                {QDateTime(QDate(2026, 3, 1), QTime(0, 0)).addSecs(-6 * 3600LL * (n - 1 - i)),
                 usuarios[i % 3],
                 i % 10 == 0 ? u"Menú d'General"_s : u"Caja"_s,
                 i % 100 == 0 ? u"Se eliminó el turno de O'Higgins\nA las 10:%1; 100% [x]_"_s.arg(i)
                              : u"Acción %1"_s.arg(i)});
        transaccion.commit();
    }

    historial *abrir()
    {
        auto *ventana = qobject_cast<historial *>(ventanas->abrir(u"historial"_s));
        if (ventana) {
            ventana->activateWindow();
            [&] { QTRY_COMPARE(QApplication::activeWindow(), ventana); }();
            [&] { QTRY_VERIFY(!ventana->ocupada()); }();
        }
        return ventana;
    }
    static void pulsar(QAbstractButton *boton)
    {
        QVERIFY2(boton->isVisible() && boton->isEnabled(), qPrintable(boton->objectName()));
        QTest::mouseClick(boton, Qt::LeftButton);
    }
    static QString celda(const historial *ventana, int fila, int columna)
    {
        return ventana->lista->modelo().textoCelda(fila, columna);
    }

    /// Every action that a filter finds, in its order.
    QStringList acciones(const FiltroHistorial &filtro, int pagina = 7)
    {
        QStringList encontradas;
        BusquedaHistorial busqueda(base->conexion(), filtro, pagina);
        for (int pasos = 0; !busqueda.terminada() && pasos < 10000; ++pasos) {
            const BusquedaHistorial::Tanda tanda = busqueda.seguir();
            for (int f = 0; f < tanda.cantidad; ++f)
                encontradas << tanda.filas->text(f, BusquedaHistorial::Accion);
        }
        return encontradas;
    }

private slots:
    void cleanup()
    {
        const bool bien = !base || base->guion.terminar();
        ventanas.reset();
        base.reset();
        QVERIFY(bien);
    }

    void buscar_data() { soporte::filasDeDialecto(); }
    void buscar()
    {
        iniciar(soporte::dialectoActual());
        QCOMPARE(acciones({}), QStringList());
        llenar(1000);
        base->conexion().execute(u"INSERT INTO [Historial] (iddoctor,accion) VALUES (20,'sin fecha')"_s);
        // A minute fuller than a page.
        for (int i = 0; i < 20; ++i)
            base->conexion().execute(
                u"INSERT INTO [Historial] (fecha,iddoctor,ventana,accion) VALUES (?,20,'Juntas',?)"_s,
                {QDateTime(QDate(2025, 12, 25), QTime(12, 0)), u"Junta"_s});

        for (const int pagina : {7, 200, 5000}) {
            const QStringList todas = acciones({}, pagina);
            QCOMPARE(todas.size(), 1021);
            QCOMPARE(todas.first(), u"Acción 999"_s);
            QCOMPARE(todas.last(), u"sin fecha"_s);
            QCOMPARE(QSet<QString>(todas.begin(), todas.end()).size(), 1002);
        }
        QCOMPARE(acciones({.desde = QDate(2026, 3, 1)}), (QStringList{u"Acción 999"_s}));
        QCOMPARE(acciones({.desde = QDate(2026, 2, 28), .hasta = QDate(2026, 2, 28)}).size(), 4);
        QCOMPARE(acciones({.desde = QDate(2026, 3, 2)}).size(), 0);
        QCOMPARE(acciones({.desde = QDate(2026, 2, 2), .hasta = QDate(2026, 2, 1)}).size(), 0);
        QCOMPARE(acciones({.usuario = 7}).size(), 333);
        QCOMPARE(acciones({.usuario = 0, .ventana = u"Menú d'General"_s}).size(), 33);
        QCOMPARE(acciones({.ventana = u"Juntas"_s}).size(), 20);
        QCOMPARE(acciones({.hasta = QDate(2025, 12, 24), .ventana = u"Juntas"_s}).size(), 0);
        // Any case and accents; signs are themselves.
        QCOMPARE(acciones({.texto = u" ELIMINO el "_s}).size(), 10);
        for (const QString &texto : {u"O'Higgins"_s, u"100%"_s, u"[x]"_s, u"]_"_s})
            QCOMPARE(acciones({.texto = texto}).size(), 10);
        QCOMPARE(acciones({.texto = u"10_"_s}).size(), 0);
        QCOMPARE(acciones({.desde = QDate(2026, 1, 1), .usuario = 20, .texto = u"eliminó"_s}).size(), 1);
    }

    void listas_data() { soporte::filasDeDialecto(); }
    void listas()
    {
        iniciar(soporte::dialectoActual());
        llenar(30);
        QCOMPARE(ventanasHistorial(base->conexion()), QStringList());
        base->usuario = 7;
        db::registrarHistorial(*base, u"Álbum"_s, u"x"_s); // seals the rows of before on its way
        QCOMPARE(ventanasHistorial(base->conexion()), (QStringList{u"Álbum"_s, u"Caja"_s, u"Menú d'General"_s}));
        const UsuariosHistorial usuarios(base->conexion());
        const std::vector<std::pair<QString, int>> esperados{
            {u"Juan Pérez"_s, 20}, {u"<Usuario sin Identificar>"_s, 0}, {u"<Usuario eliminado (Nº 7)>"_s, 7}};
        QCOMPARE(usuarios.lista(), esperados);
        QCOMPARE(usuarios.nombre(99), u"<Usuario eliminado (Nº 99)>"_s);
        base->conexion().execute(u"DROP TABLE [Historial Usos]"_s);
        QCOMPARE(ventanasHistorial(base->conexion()), QStringList());
    }

    void textos()
    {
        using Clase = db::HallazgoHistorial::Clase;
        const QDateTime diez(QDate(2026, 3, 10), QTime(9, 5)), once(QDate(2026, 3, 11), QTime(0, 0));
        db::InformeHistorial informe;
        QCOMPARE(resumenIntegridad(informe), u"El registro todavía no se comenzó a sellar"_s);
        informe.comenzado = informe.completo = true;
        informe.desde = QDate(2026, 3, 12);
        informe.acciones = 1234;
        QCOMPARE(resumenIntegridad(informe), u"Registro íntegro desde 12/03/2026 (1.234 acciones)"_s);
        informe.anteriores = 5000;
        QVERIFY(resumenIntegridad(informe).endsWith(u"; anteriores sin cambios: 5.000"_s));
        informe.completo = false;
        informe.acciones = 1;
        QCOMPARE(resumenIntegridad(informe), u"Lo reciente está íntegro, desde 12/03/2026 (1 acción)"_s);
        informe.hallazgos = {{Clase::Eliminada, diez, diez, 1, {}}};
        QCOMPARE(resumenIntegridad(informe), u"Registro alterado: 1 diferencia, del 10/03/2026 09:05"_s);
        informe.hallazgos.push_back({Clase::Anteriores, {}, once, -2, {}});
        informe.otros = 4;
        QCOMPARE(
            resumenIntegridad(informe), u"Registro alterado: más de 2 diferencias, la última del 11/03/2026 00:00"_s);
        QCOMPARE(momentoHallazgo(informe.hallazgos[0]), u"10/03/2026 09:05"_s);
        QCOMPARE(momentoHallazgo(informe.hallazgos[1]), u"hasta el 11/03/2026"_s);
        QCOMPARE(
            momentoHallazgo({Clase::FaltanEslabones, diez, once, 3, {}}), u"10/03/2026 09:05 a 11/03/2026 00:00"_s);
        QCOMPARE(momentoHallazgo({Clase::Agregada, {}, {}, 1, {}}), QString());
    }

    void exportar_data() { soporte::filasDeDialecto(); }
    void exportar()
    {
        iniciar(soporte::dialectoActual());
        llenar(2500);
        const QString archivo = base->carpetaPrograma() + u"/historial.csv"_s;
        const auto leido = [&] {
            QFile datos(archivo);
            return datos.open(QIODevice::ReadOnly) ? datos.readAll() : QByteArray();
        };
        {
            ExportacionHistorial dejada(base->conexion(), {}, archivo);
            QVERIFY(dejada.seguir());
        }
        QVERIFY(!QFile::exists(archivo));
        ExportacionHistorial exportacion(base->conexion(), {}, archivo);
        while (exportacion.seguir()) { }
        QCOMPARE(exportacion.filas(), 2500);
        const QByteArray texto = leido();
        QVERIFY(texto.startsWith("\xEF\xBB\xBF"
                                 "Fecha;Hora;Equipo;Usuario;Ventana;Acción\r\n"
                                 "01/03/2026;00:00;PC 1;Juan Pérez;Caja;Acción 2499\r\n"));
        QVERIFY(texto.contains("<Usuario eliminado (Nº 7)>;Menú d'General;\"Se eliminó el turno de O'Higgins\nA las "
                               "10:100; 100% [x]_\"\r\n"));
        QCOMPARE(texto.count("\r\n"), 2501);
        QVERIFY(soporte::fallaDe([&] { ExportacionHistorial(base->conexion(), {}, u"/no/hay/tal.csv"_s); }));
    }

    void ventanaFiltros()
    {
        iniciar();
        base->usuario = 7;
        base->guion.esperarMensaje(
            u"Atención..."_s, u"Defina un Usuario Activo válido desde la ventana Configuración."_s);
        QVERIFY(!ventanas->abrir(u"historial"_s));
        base->usuario = 20;
        base->conexion().execute(u"UPDATE [Lista Doctores] SET accesohistorial = 0"_s);
        base->guion.esperarMensaje(
            u"Atención..."_s,
            u"No tiene permiso para ejecutar esta acción. Consulte con el Administrador del sistema para definir sus "
            "permisos de accesos."_s);
        QVERIFY(!ventanas->abrir(u"historial"_s));
        base->conexion().execute(u"UPDATE [Lista Doctores] SET accesohistorial = -1"_s);

        llenar(1000);
        db::registrarHistorial(*base, u"Sistema"_s, u"Hoy"_s);
        historial *v = abrir();
        QVERIFY(v);
        QCOMPARE(celda(v, 0, 0) + celda(v, 0, 1), u"20/03/202609:00"_s);
        QCOMPARE(celda(v, 0, 3), u"Juan Pérez"_s);
        // Not everything at once, but everything in the end.
        QVERIFY(v->lista->modelo().rowCount() < 1000);
        QVERIFY(v->cantidad->text().contains(u"más abajo"_s));
        for (int i = 0; i < 10 && v->lista->modelo().canFetchMore({}); ++i)
            v->lista->scrollToBottom(), QTest::qWait(1), QTest::keyClick(v->lista, Qt::Key_End);
        QCOMPARE(v->lista->modelo().rowCount(), 1001);
        QCOMPARE(v->cantidad->text(), QLocale().toString(1001) + u" acciones"_s);

        // By text: the line break shows below.
        v->texto->setFocus();
        v->texto->setText(u"o'higgins"_s);
        QTest::keyClick(v->texto, Qt::Key_Return);
        QTRY_COMPARE(v->lista->modelo().rowCount(), 10);
        QCOMPARE(
            v->lista->modelo().index(0, 5).data().toString(),
            u"Se eliminó el turno de O'Higgins A las 10:900; 100% [x]_"_s);
        QCOMPARE(QApplication::focusWidget(), v->lista);
        QVERIFY(v->detalle->toPlainText().endsWith(
            u"Menú d'General\nSe eliminó el turno de O'Higgins\nA las 10:900; 100% [x]_"_s));
        QTest::keyClick(v->lista, Qt::Key_C, Qt::ControlModifier);
        QVERIFY(QApplication::clipboard()->text().contains(u"O'Higgins A las"_s));

        // Together with user and window, as chosen from the lists.
        QCOMPARE(v->usuario->itemText(3), u"<Usuario eliminado (Nº 7)>"_s);
        v->usuario->setCurrentIndex(3);
        emit v->usuario->activated(3);
        QTRY_COMPARE(v->lista->modelo().rowCount(), 3);
        QCOMPARE(v->cantidad->text(), u"3 acciones"_s);
        v->fechahasta->setText(u"1/12/25"_s);
        v->fechahasta->setFocus();
        QTest::keyClick(v->fechahasta, Qt::Key_Return);
        QTRY_COMPARE(v->lista->modelo().rowCount(), 2);
        // A date that is none changes nothing.
        v->fechahasta->setText(u"40/1/26"_s);
        QTest::keyClick(v->fechahasta, Qt::Key_Return);
        QCOMPARE(v->lista->modelo().rowCount(), 2);

        // Esc gives back everything, a second one closes.
        QTest::keyClick(v->fechahasta, Qt::Key_Escape);
        QTRY_VERIFY(v->lista->modelo().rowCount() >= 200);
        QVERIFY(v->texto->text().isEmpty() && v->fechahasta->isNull() && v->usuario->currentIndex() == 0);
        QVERIFY(!v->quitarfiltros->isEnabled());
        db::registrarHistorial(*base, u"Sistema"_s, u"Recién"_s);
        QTest::keyClick(v->lista, Qt::Key_F5);
        QCOMPARE(celda(v, 0, 5), u"Recién"_s);
        QTest::keyClick(v->lista, Qt::Key_Escape);
        QVERIFY(!ventanas->buscar(u"historial"_s));
    }

    void ventanaIntegridad()
    {
        iniciar();
        llenar(1000);
        base->reloj.set({QDate(2026, 3, 19), QTime(9, 0)});
        db::registrarHistorial(*base, u"Sistema"_s, u"Ayer"_s);
        base->reloj.set({QDate(2026, 3, 20), QTime(9, 0)});
        db::registrarHistorial(*base, u"Sistema"_s, u"Hoy"_s);
        historial *v = abrir();
        QVERIFY(v);
        QCOMPARE(v->estado->text(), u"Registro íntegro desde 19/03/2026 (2 acciones); anteriores sin cambios: 1.000"_s);
        QVERIFY(!v->diferencias->isVisible());

        base->conexion().execute(
            u"UPDATE [Historial] SET accion = 'Cambiada' WHERE "_s
            + base->conexion().dialect().contains(u"accion"_s, u"Ayer"));
        pulsar(v->verificar);
        QTRY_VERIFY(!v->ocupada());
        QCOMPARE(v->estado->text(), u"Registro alterado: 1 diferencia, del 19/03/2026 09:00"_s);
        QVERIFY(v->diferencias->isVisible());
        QCOMPARE(v->hallazgos->modelo().textoCelda(0, 1), u"Se modificó una acción; ahora dice: Sistema: Cambiada"_s);
        // Whoever asked stands in the log, with what was found.
        QCOMPARE(
            base->valor(u"SELECT accion FROM [Historial] WHERE ventana = 'Historial de Accesos'"_s),
            u"Se verificó el historial. Registro alterado: 1 diferencia, del 19/03/2026 09:00."_s);
        // Enter goes to that day.
        v->hallazgos->elegirFila(0);
        v->hallazgos->setFocus();
        QTest::keyClick(v->hallazgos, Qt::Key_Return);
        QTRY_COMPARE(v->lista->modelo().rowCount(), 1);
        QCOMPARE(celda(v, 0, 5), u"Cambiada"_s);
    }

    void ventanaExporta()
    {
        iniciar();
        llenar(1000);
        historial *v = abrir();
        QVERIFY(v);
        const QString archivo = base->carpetaPrograma() + u"/todo.csv"_s;
        base->guion.esperarDestino(u"Exportar"_s, std::nullopt);
        pulsar(v->exportarlista);
        QVERIFY(!v->ocupada());
        // All rows, though not all are shown; the button gives up while it is being written.
        base->guion.esperarDestino(u"Exportar"_s, archivo);
        pulsar(v->exportarlista);
        QVERIFY(v->ocupada() && v->avance->isVisible());
        pulsar(v->exportarlista);
        QVERIFY(!v->ocupada() && !QFile::exists(archivo));
        base->guion.esperarDestino(u"Exportar"_s, archivo);
        base->guion.esperarMensaje(
            u"Información"_s,
            u"Se exportaron "_s + QLocale().toString(1000) + u" acciones."_s,
            base::Icono::Informacion);
        static_cast<ui::Ventana *>(v)->exportar(*v->lista); // as the list's own menu does
        QTRY_VERIFY(!v->ocupada());
        QVERIFY(QFile::exists(archivo));
        base->guion.esperarDestino(u"Exportar"_s, u"/no/hay/tal.csv"_s);
        base->guion.esperarMensaje(u"ERROR..."_s, u"No se pudo escribir el archivo: No such file or directory"_s);
        pulsar(v->exportarlista);
        QVERIFY(!v->ocupada());
    }

    /// A log without rows, without its chain, on a file that is only read.
    void ventanaVacia()
    {
        iniciar();
        historial *v = abrir();
        QVERIFY(v);
        QCOMPARE(v->cantidad->text(), u"Ninguna acción"_s);
        QCOMPARE(v->estado->text(), u"El registro todavía no se comenzó a sellar"_s);
        QVERIFY(v->detalle->toPlainText().isEmpty());
        base->conexion().execute(u"DROP TABLE [Historial Cadena]"_s);
        base->conexion().execute(u"DROP TABLE [Historial Usos]"_s);
        pulsar(v->verificar);
        QTRY_VERIFY(!v->ocupada());
        QTest::keyClick(v->lista, Qt::Key_F5);
        QCOMPARE(v->estado->text(), u"El registro todavía no se comenzó a sellar"_s);
    }
};

PRUEBA(PruebaHistorial)
#include "PruebaHistorial.moc"
