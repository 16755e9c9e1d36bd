#include "Pantallas.h"

#include "app/forms/Composicion.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"
#include "ui/Ventanas.h"

#include <QImage>

/// The pictures of the documents: a window that is added must be added there too.
class PruebaPantallas : public QObject
{
    Q_OBJECT

private slots:
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
            QVERIFY2(imagen == QImage(segunda.filePath(archivo)), qPrintable(archivo));
            QVERIFY2(std::find(vistas.begin(), vistas.end(), imagen) == vistas.end(), qPrintable(archivo));
            vistas.push_back(imagen);
        }
    }
};

PRUEBA(PruebaPantallas)
#include "PruebaPantallas.moc"
