#include "Pdf.h"
#include "db/Config.h"
#include "printing/ImagenEncabezado.h"
#include "printing/forms/Impresora.h"
#include "printing/forms/Registro.h"
#include "printing/forms/Ver.h"
#include "printing/forms/VistaPaginas.h"
#include "printing/forms/encabezados.h"
#include "printing/forms/vistaprevia.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"
#include "ui/EditorTexto.h"
#include "ui/Grilla.h"
#include "ui/Ventanas.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QPdfWriter>
#include <QPushButton>
#include <QSpinBox>
#include <QTextEdit>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace printing;

namespace {

/// A printer whose paper is a PDF.
class ImpresoraFalsa final : public Impresora
{
public:
    bool hayAlguna() const override { return hay; }
    std::optional<Impresion> elegir(const Paginas &paginas, QWidget *) override
    {
        ++elegidas;
        if (cancela)
            return std::nullopt;
        return Impresion{std::make_unique<QPdfWriter>(archivo), u"Láser"_s, desde, paginas.cantidad() - 1, 1};
    }
    bool responde(const Impresion &) const override { return presente; }

    bool hay = true, presente = true, cancela = false;
    int elegidas = 0, desde = 0;
    QString archivo;
};

/// A window that has a list and no button to print.
class listado : public ui::Ventana
{
    Q_OBJECT

public:
    listado(db::Entorno &entorno, ui::Ventanas &ventanas)
        : Ventana(entorno, ventanas, u"listado"_s, u"Pacientes: A/B"_s)
        , lista(new ui::Grilla(u"lista"_s, u"|<Paciente          |>Saldo $  ||^Fecha     "_s))
    {
        (new QVBoxLayout(this))->addWidget(lista);
        lista->mostrar(
            {{u"O'Higgins, Ñata"_s, u"1.234,50"_s, u"clave"_s, u"24/11/2026"_s},
             {u"Álvarez, Eva"_s, u"0,00"_s, u"oculta"_s, u"23/11/2026"_s}},
            {1, 2});
    }
    ui::Grilla *lista;
};

} // namespace

/// The windows of printing, driven as a person does.
class PruebaVentanas : public QObject
{
    Q_OBJECT

    std::unique_ptr<soporte::BaseDePrueba> base;
    std::unique_ptr<ui::Ventanas> ventanas;
    std::shared_ptr<ImpresoraFalsa> impresora;
    QTemporaryDir carpeta;

    template <typename Form>
    Form *abierta(const QString &nombre)
    {
        auto *ventana = dynamic_cast<Form *>(ventanas->buscar(nombre));
        if (ventana && !QTest::qWaitForWindowActive(ventana))
            return nullptr;
        return ventana;
    }
    vistaprevia *mostrar(int parrafos)
    {
        Documento documento;
        documento.titulo = u"Recibo: 1/2"_s;
        for (int i = 0; i < parrafos; ++i)
            documento.cuerpo.append(Texto{u"<p>parrafo %1.</p>"_s.arg(i)});
        ver(*ventanas, documento, nullptr);
        return abierta<vistaprevia>(u"vistaprevia"_s);
    }
    encabezados *abrirEncabezados(int administrador = 0)
    {
        ventanas->abrir(u"encabezados"_s, {.datos = {{u"administrador"_s, administrador}}});
        return abierta<encabezados>(u"encabezados"_s);
    }
    static void pulsar(QAbstractButton *boton)
    {
        QVERIFY(boton->isVisible() && boton->isEnabled());
        QTest::mouseClick(boton, Qt::LeftButton);
    }

private slots:
    void init()
    {
        base = std::make_unique<soporte::BaseDePrueba>();
        ventanas = std::make_unique<ui::Ventanas>();
        impresora = std::make_shared<ImpresoraFalsa>();
        impresora->archivo = carpeta.filePath(u"papel.pdf"_s);
        registrarVentanas(*base, *ventanas, impresora);
        ventanas->registrar(u"listado"_s, ui::Modo::Marco, [this] { return new listado(*base, *ventanas); });
    }
    void cleanup()
    {
        ventanas.reset();
        QVERIFY(base->guion.terminar());
        base.reset();
    }

    void recorreElDocumento()
    {
        vistaprevia *v = mostrar(200);
        QVERIFY(v);
        const int paginas = v->pagina->maximum();
        QVERIFY(paginas >= 3);
        QVERIFY(v->hojas->hasFocus() && !v->anterior->isEnabled());
        QTest::keyClick(v->hojas, Qt::Key_PageDown);
        QCOMPARE(v->pagina->value(), 2);
        pulsar(v->siguiente);
        QCOMPARE(v->hojas->pagina(), 2);
        QTest::keyClick(v->hojas, Qt::Key_End);
        QCOMPARE(v->pagina->value(), paginas);
        QVERIFY(!v->siguiente->isEnabled());
        QTest::keyClick(v->hojas, Qt::Key_PageUp);
        QCOMPARE(v->pagina->value(), paginas - 1);
        v->pagina->setValue(1);
        QCOMPARE(v->hojas->pagina(), 0);

        const double antes = v->hojas->zoom();
        QTest::keyClick(v->hojas, Qt::Key_Plus);
        QVERIFY(v->hojas->zoom() > antes);
        QVERIFY(v->zoom->currentText().endsWith(u'%'));
        v->zoom->setCurrentIndex(1);
        QVERIFY(v->hojas->zoom() < antes);
        // On a larger sheet laid on its side there are other pages, and what is shown is one of them.
        v->papel->setCurrentIndex(v->papel->findData(int(Papel::A5)));
        v->orientacion->setCurrentIndex(1);
        QVERIFY(v->pagina->maximum() > paginas);
        QVERIFY(v->hojas->grab().toImage().pixelColor(v->hojas->width() / 2, 30) == QColor(Qt::white));
        QTest::keyClick(v, Qt::Key_Escape);
        QTRY_VERIFY(!ventanas->buscar(u"vistaprevia"_s));
    }

    void imprime()
    {
        vistaprevia *v = mostrar(200);
        const int paginas = v->pagina->maximum();
        impresora->desde = 1;
        QTest::keyClick(v->hojas, Qt::Key_P, Qt::ControlModifier);
        QCOMPARE(impresora->elegidas, 1);
        const QStringList impresas = paginasDelPdf(impresora->archivo);
        QCOMPARE(impresas.size(), paginas - 1);
        QVERIFY(impresas.first().contains(u"Página 2 de %1"_s.arg(paginas)));
        QCOMPARE(v->aviso->text(), u"Se envió a la impresora."_s);
        impresora->cancela = true;
        pulsar(v->imprimir);
        QCOMPARE(impresora->elegidas, 2);
    }

    void sinImpresora()
    {
        vistaprevia *v = mostrar(1);
        impresora->hay = false;
        const QString pregunta
            = u"No hay ninguna impresora instalada en esta computadora. ¿Desea guardar el documento como PDF?"_s;
        base->guion.esperarPregunta(u"Atención..."_s, pregunta, false);
        pulsar(v->imprimir);
        base->guion.esperarPregunta(u"Atención..."_s, pregunta, true);
        base->guion.esperarDestino(u"Guardar como PDF"_s, carpeta.filePath(u"recibo"_s));
        pulsar(v->imprimir);
        QVERIFY(paginasDelPdf(carpeta.filePath(u"recibo.pdf"_s)).first().contains(u"parrafo 0."_s));
        QVERIFY(v->aviso->text().startsWith(u"Se guardó en "_s));
        base->guion.esperarDestino(u"Guardar como PDF"_s, std::nullopt);
        pulsar(v->pdf);
        QFile(carpeta.filePath(u"noes"_s)).open(QIODevice::WriteOnly);
        base->guion.esperarDestino(u"Guardar como PDF"_s, carpeta.filePath(u"noes/x.pdf"_s));
        base->guion.esperarMensaje(u"ERROR..."_s, u"No se pudo escribir el archivo PDF: Not a directory"_s);
        pulsar(v->pdf);
        QCOMPARE(impresora->elegidas, 0);

        // It was there when it was chosen.
        const QString seFue = u"La impresora «Láser» no está disponible. Verifique que esté encendida y conectada, "
                              u"elija otra, o guarde "
                              "el documento como PDF."_s;
        impresora->hay = true;
        impresora->presente = false;
        base->guion.esperarMensaje(u"ERROR..."_s, seFue);
        pulsar(v->imprimir);
        impresora->presente = true;
        impresora->archivo = carpeta.filePath(u"no/hay.pdf"_s);
        base->guion.esperarMensaje(u"ERROR..."_s, seFue);
        pulsar(v->imprimir);
        QVERIFY(v->isVisible());
    }

    void listasDeCualquierVentana()
    {
        db::Config(base->conexion()).guardar(u"encabezadogeneral", u"Consultorio de <medico>"_s);
        ventanas->abrir(u"listado"_s);
        auto *l = abierta<listado>(u"listado"_s);
        QVERIFY(l);
        l->lista->sortByColumn(0, Qt::AscendingOrder);
        QTest::keyClick(l->lista, Qt::Key_P, Qt::ControlModifier);
        auto *v = abierta<vistaprevia>(u"vistaprevia"_s);
        QVERIFY(v);
        QCOMPARE(v->windowTitle(), u"Vista previa: Pacientes: A/B"_s);
        QCOMPARE(v->orientacion->currentIndex(), 0);
        base->guion.esperarDestino(u"Guardar como PDF"_s, carpeta.filePath(u"lista.pdf"_s));
        pulsar(v->pdf);
        const QString hoja = paginasDelPdf(carpeta.filePath(u"lista.pdf"_s)).first();
        QVERIFY(hoja.contains(u"Consultorio de Juan Pérez"_s) && hoja.contains(u"Saldo $"_s));
        QVERIFY(hoja.contains(u"1.234,50"_s) && !hoja.contains(u"oculta"_s));
        QVERIFY(hoja.indexOf(u"Álvarez, Eva"_s) < hoja.indexOf(u"O'Higgins, Ñata"_s));
    }

    void editaLosEncabezados()
    {
        encabezados *e = abrirEncabezados();
        QVERIFY(e && e->encabezadogeneral->hoja()->hasFocus() && !e->hayCambios());
        QTest::keyClicks(e->encabezadogeneral->hoja(), "Prof. ");
        pulsar(e->findChild<QPushButton *>(u"marcador_medico"_s));
        QCOMPARE(e->encabezadogeneral->textoPlano(), u"Prof. <medico>"_s);
        pulsar(e->findChild<QPushButton *>(u"marcador_apellido"_s));
        e->encabezadopaciente->hoja()->selectAll();
        pulsar(e->findChild<QToolButton *>(u"negrita"_s));

        QImage imagen(30, 30, QImage::Format_RGB32);
        imagen.fill(Qt::red);
        QVERIFY(imagen.save(carpeta.filePath(u"logo.bmp"_s)));
        QVERIFY(!e->borrarimagen->isEnabled());
        base->guion.esperarArchivo(u"Insertar Imagen"_s, carpeta.filePath(u"logo.bmp"_s));
        pulsar(e->insertarimagen);
        QVERIFY(e->encabezadoimagen->isChecked() && !e->imagen->pixmap().isNull());

        // A sheet with what is written, before anything is stored.
        pulsar(e->vistaprevia);
        auto *v = abierta<vistaprevia>(u"vistaprevia"_s);
        QVERIFY(v);
        base->guion.esperarDestino(u"Guardar como PDF"_s, carpeta.filePath(u"muestra.pdf"_s));
        pulsar(v->pdf);
        const QString muestra = paginasDelPdf(carpeta.filePath(u"muestra.pdf"_s)).first();
        QVERIFY(muestra.contains(u"Prof. Juan Pérez"_s) && muestra.contains(u"Pérez Ejemplo"_s));
        v->close();
        QCOMPARE(leerPlantillas(base->conexion()), PlantillasEncabezado());

        base->guion.esperarPregunta(
            u"Atención..."_s, u"Hay datos sin guardar. ¿Desea cerrar la ventana de todos modos?"_s, false);
        e->close();
        QVERIFY(e->isVisible());
        QVERIFY(QTest::qWaitForWindowActive(e));
        QTest::keyClick(e->encabezadogeneral->hoja(), Qt::Key_S, Qt::ControlModifier);
        QTRY_VERIFY(!ventanas->buscar(u"encabezados"_s));
        const PlantillasEncabezado guardadas = leerPlantillas(base->conexion());
        QVERIFY(guardadas.imagen && guardadas.general.contains(u"Prof. &lt;medico&gt;"_s));
        QVERIFY(guardadas.paciente.contains(u"<b>&lt;apellido&gt;</b>"_s));

        e = abrirEncabezados();
        QVERIFY(e->encabezadoimagen->isChecked() && !e->hayCambios());
        base->guion.esperarPregunta(
            u"Atención..."_s,
            u"¿Seguro que desea Eliminar la imagen usada como Encabezado de las impresiones?"_s,
            true);
        pulsar(e->borrarimagen);
        QVERIFY(!e->encabezadoimagen->isChecked() && e->imagen->pixmap().isNull());
        QVERIFY(e->hayCambios());
    }

    void sinPermisoNoSeAbre()
    {
        base->conexion().execute(u"UPDATE [Lista Doctores] SET accesoconfiguracion = 0"_s);
        base->guion.esperarMensaje(
            u"Atención..."_s,
            u"No tiene permiso para ejecutar esta acción. Consulte con el Administrador del sistema para definir sus "
            "permisos de accesos."_s);
        QVERIFY(!abrirEncabezados());
        db::Config(base->conexion()).guardar(u"encabezadogeneral", u"{\\rtf1 \\b Dr. <medico>\\par}"_s);
        base->conexion().execute(u"UPDATE [Lista Doctores] SET administrador = -1"_s);
        encabezados *e = abrirEncabezados(20);
        QVERIFY(e);
        QCOMPARE(e->encabezadogeneral->textoPlano(), u"Dr. <medico>"_s);
        // Headers of an older database are read, and are no change.
        QVERIFY(!e->hayCambios());
        pulsar(e->guardar);
        QCOMPARE(base->valor(u"SELECT accion FROM [Historial]"_s), u"Se presionó el botón Guardar."_s);
    }
};

PRUEBA(PruebaVentanas)
#include "PruebaVentanas.moc"
