#include "Pantallas.h"

#include "app/forms/Composicion.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"
#include "ui/Ventanas.h"

#include <QImage>

namespace {

QtMessageHandler deQTest = nullptr;

/// Hundreds of lines of what the offscreen platform cannot do would hide what failed.
void sinPlataforma(QtMsgType clase, const QMessageLogContext &lugar, const QString &texto)
{
    if (!texto.startsWith(QLatin1String("This plugin does not support")))
        deQTest(clase, lugar, texto);
}

/// Where two pictures of the same size differ; empty when they do not.
QRect diferencia(const QImage &una, const QImage &otra)
{
    QRect donde;
    for (int y = 0; una != otra && y < una.height(); ++y)
        for (int x = 0; x < una.width(); ++x)
            if (una.pixel(x, y) != otra.pixel(x, y))
                donde |= QRect(x, y, 1, 1);
    return donde;
}

} // namespace

/// The pictures of the documents: a window that is added must be added there too.
class PruebaPantallas : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { deQTest = qInstallMessageHandler(sinPlataforma); }
    void cleanupTestCase() { qInstallMessageHandler(deQTest); }

    void todasLasVentanasSiempreIguales()
    {
        const QTemporaryDir primera, segunda;
        const pantallas::Resultado resultado = pantallas::retratar(primera.path());
        QCOMPARE(resultado.problemas, QStringList());

        soporte::BaseDePrueba base;
        ui::Ventanas ventanas;
        app::registrarVentanas(base, ventanas);
        QVERIFY(ventanas.nombres().size() > 1);
        QCOMPARE(resultado.ventanas, ventanas.nombres());
        QCOMPARE(resultado.faltan, QStringList());

        // Two rounds give the same pictures, and no two windows the same one.
        QCOMPARE(pantallas::retratar(segunda.path()).archivos, resultado.archivos);
        std::vector<QImage> vistas;
        for (const QString &archivo : resultado.archivos) {
            const QImage imagen(primera.filePath(archivo));
            QCOMPARE(imagen.size(), QSize(1280, 800));
            const QRect cambiado = diferencia(imagen, QImage(segunda.filePath(archivo)));
            QVERIFY2(
                cambiado.isEmpty(),
                qPrintable(QStringLiteral("%1 changed at %2,%3, %4x%5")
                               .arg(archivo)
                               .arg(cambiado.x())
                               .arg(cambiado.y())
                               .arg(cambiado.width())
                               .arg(cambiado.height())));
            QVERIFY2(std::find(vistas.begin(), vistas.end(), imagen) == vistas.end(), qPrintable(archivo));
            vistas.push_back(imagen);
        }
    }
};

PRUEBA(PruebaPantallas)
#include "PruebaPantallas.moc"
