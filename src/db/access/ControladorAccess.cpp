#include "db/access/ControladorAccess.h"

#include <QDir>

namespace db::access {

std::optional<QString> elegirControladorAccess(const QStringList &instalados)
{
    std::optional<QString> elegido;
    for (const QString &nombre : instalados) {
        if (!nombre.contains(u"Access", Qt::CaseInsensitive) || !nombre.contains(u"*.mdb", Qt::CaseInsensitive))
            continue;
        if (nombre.contains(u"*.accdb", Qt::CaseInsensitive))
            return nombre;
        elegido = nombre;
    }
#ifndef Q_OS_WIN
    if (!elegido && instalados.contains(u"MDBTools"))
        elegido = QStringLiteral("MDBTools");
#endif
    return elegido;
}

Error sinControladorAccess()
{
    return {
        Error::Kind::CannotOpen,
        0,
        QStringLiteral("Falta el controlador para leer bases de Access. Instale en esta computadora \"Microsoft Access "
                       "Database Engine 2016 Redistributable\" de %1 bits y vuelva a intentar.")
            .arg(sizeof(void *) * 8)};
}

QString conexionAccess(const QString &controlador, const QString &archivo, const QString &clave)
{
    QString texto = QStringLiteral("DRIVER={%1};").arg(controlador);
    const auto agregar = [&texto](QLatin1String cual, const QString &valor) {
        // This driver takes values as they are, parentheses and blanks too; in braces only what would end one.
        const bool encerrar = valor.contains(u';') || valor.startsWith(u'{') || valor != valor.trimmed();
        if (valor.contains(QChar(u'\0')) || (encerrar && valor.contains(u'}')))
            throw Error(
                Error::Kind::CannotOpen,
                0,
                QStringLiteral("La carpeta o la clave de la base de Access tienen caracteres que su controlador no "
                               "admite. Mueva el archivo a otra carpeta, o quítele la clave con Access."));
        texto += cual + u'=' + (encerrar ? u'{' + valor + u'}' : valor) + u';';
    };
    agregar(QLatin1String("DBQ"), QDir::toNativeSeparators(archivo));
    agregar(QLatin1String("UID"), QStringLiteral("admin")); // everybody, in a file without a workgroup of its own
    agregar(QLatin1String("PWD"), clave);
    texto += QLatin1String("ReadOnly=1;");
    return texto;
}

} // namespace db::access
