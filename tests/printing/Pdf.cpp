#include "Pdf.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

QStringList paginasDelPdf(const QString &archivo)
{
    QProcess lector;
    lector.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), archivo, QStringLiteral("-")});
    if (!lector.waitForFinished() || lector.exitCode() != 0) {
        QTest::qFail("pdftotext did not read the file", __FILE__, __LINE__);
        return {};
    }
    QStringList paginas = QString::fromUtf8(lector.readAllStandardOutput()).split(u'\f');
    paginas.removeLast(); // after the last page
    return paginas;
}

QStringList textoImpreso(const printing::Documento &documento)
{
    const QTemporaryDir carpeta;
    const QString archivo = carpeta.filePath(QStringLiteral("prueba.pdf"));
    if (const auto rechazo = printing::escribirPdf(printing::Paginas(documento), archivo)) {
        QTest::qFail(qPrintable(rechazo->texto), __FILE__, __LINE__);
        return {};
    }
    return paginasDelPdf(archivo);
}
