#include "db/access/Informe.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>

#include <algorithm>

namespace db::access {

namespace {

QString cantidad(qint64 cuantos) { return QLocale(QLocale::Spanish, QLocale::Argentina).toString(cuantos); }

QString cuantas(qint64 cuantos, const QString &una, const QString &varias)
{
    return cantidad(cuantos) + u' ' + (cuantos == 1 ? una : varias);
}

QString filasDe(qint64 filas) { return cuantas(filas, QStringLiteral("registro"), QStringLiteral("registros")); }

} // namespace

qint64 Informe::filas() const
{
    qint64 total = 0;
    for (const Tabla &tabla : tablas)
        total += tabla.filas;
    return total;
}

QString Informe::texto(const QDateTime &cuando) const
{
    QStringList r;
    r << QStringLiteral("IMPORTACIÓN DE LA BASE DE DATOS DE ACCESS")
      << cuando.toString(QStringLiteral("dd/MM/yyyy HH:mm")) << QString()
      << QStringLiteral("Archivo original, sin cambios: %1").arg(QDir::toNativeSeparators(original))
      << QStringLiteral("Pasaron %1 y %2. Se compararon con el original la cantidad de registros de cada tabla y todos "
                        "los valores.")
             .arg(cuantas(tablas.size(), QStringLiteral("tabla"), QStringLiteral("tablas")), filasDe(filas()));
    if (horarios > 0)
        r << QStringLiteral("De los horarios semanales de antes se hizo una plantilla horaria por profesional: %1.")
                 .arg(cantidad(horarios));
    if (apartados > 0)
        r << QStringLiteral("%1 exactamente en su columna: además de guardarse lo más parecido, se conserva tal como "
                            "era en la tabla '%2'.")
                 .arg(
                     cuantas(apartados, QStringLiteral("valor no cabe"), QStringLiteral("valores no caben")),
                     tablaApartados);
    for (const QString &aviso : avisos)
        r << aviso;

    r << QString() << QStringLiteral("LO QUE NO PASÓ (queda en el archivo original)");
    for (const QString &nombre : salteadas)
        r << QStringLiteral("- Tabla '%1': es de una versión vieja y el sistema no la usa.").arg(nombre);
    for (const QString &nombre : vinculadas)
        r << QStringLiteral("- Tabla '%1': es un vínculo a otro archivo.").arg(nombre);
    r << QStringLiteral("- Consultas, formularios, informes, macros y módulos de Access, si los había.");

    r << QString() << QStringLiteral("TABLAS");
    for (const Tabla &tabla : tablas) {
        r << QStringLiteral("- %1: %2, %3%4")
                 .arg(
                     tabla.nombre,
                     filasDe(tabla.filas),
                     cuantas(tabla.columnas, QStringLiteral("columna"), QStringLiteral("columnas")),
                     tabla.delSistema ? QString() : QStringLiteral(" (no es del sistema: se conserva)"));
        if (!tabla.conservadas.isEmpty())
            r << QStringLiteral("    Columnas que no son del sistema y se conservan: %1.")
                     .arg(tabla.conservadas.join(QStringLiteral(", ")));
        for (const QString &aviso : tabla.avisos)
            r << QStringLiteral("    ") + aviso;
    }
    return r.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n");
}

QString Informe::resumen() const
{
    QStringList r{
        QStringLiteral("La base de datos de Access se convirtió con éxito: %1 en %2, comparados uno por uno.")
            .arg(filasDe(filas()), cuantas(tablas.size(), QStringLiteral("tabla"), QStringLiteral("tablas")))};
    const qint64 conAvisos
        = std::count_if(tablas.cbegin(), tablas.cend(), [](const Tabla &tabla) { return !tabla.avisos.isEmpty(); });
    if (!salteadas.isEmpty() || !vinculadas.isEmpty())
        r << QStringLiteral("No pasaron: %1.").arg((salteadas + vinculadas).join(QStringLiteral(", ")));
    if (conAvisos > 0)
        r << QStringLiteral("Hay avisos sobre %1.")
                 .arg(cuantas(conAvisos, QStringLiteral("tabla"), QStringLiteral("tablas")));
    if (apartados > 0)
        r << QStringLiteral("%1 exactamente en su columna: se conserva aparte tal como era.")
                 .arg(cuantas(apartados, QStringLiteral("valor no cabe"), QStringLiteral("valores no caben")));
    r += avisos;
    r << QStringLiteral("El archivo original quedó sin cambios, con el nombre '%1'.")
             .arg(QFileInfo(original).fileName());
    if (!archivo.isEmpty())
        r << QStringLiteral("El detalle está en '%1', en la misma carpeta.").arg(QFileInfo(archivo).fileName());
    return r.join(QStringLiteral("\n\n"));
}

QString Informe::renglon() const
{
    QString r = QStringLiteral("Se convirtió la base de datos de Access: %1 en %2.")
                    .arg(filasDe(filas()), cuantas(tablas.size(), QStringLiteral("tabla"), QStringLiteral("tablas")));
    if (!salteadas.isEmpty() || !vinculadas.isEmpty())
        r += QStringLiteral(" No pasaron: %1.").arg((salteadas + vinculadas).join(QStringLiteral(", ")));
    if (apartados > 0)
        r += QStringLiteral(" Valores conservados aparte: %1.").arg(cantidad(apartados));
    return r + QStringLiteral(" Original: %1.").arg(QFileInfo(original).fileName());
}

} // namespace db::access
