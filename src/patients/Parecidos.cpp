#include "patients/Parecidos.h"

#include "base/Fechas.h"
#include "db/Connection.h"

#include <QSet>
#include <QStringList>

#include <algorithm>

namespace patients {

namespace {

QString soloCifras(QString dni)
{
    dni.remove(u'.').remove(u' ').remove(u'-');
    return dni;
}

/// "12345678" as "12.345.678".
QString conPuntos(const QString &cifras)
{
    QString texto = cifras;
    for (qsizetype i = texto.size() - 3; i > 0; i -= 3)
        texto.insert(i, u'.');
    return texto;
}

QString motivoDe(const Conocido &conocido, const QString &dni, const QString &apellido, const QString &nombres)
{
    const auto igual
        = [](const QString &a, const QString &b) { return a.trimmed().compare(b.trimmed(), Qt::CaseInsensitive) == 0; };
    if (!dni.isEmpty() && !conocido.dni.isEmpty()) {
        if (soloCifras(dni) == soloCifras(conocido.dni))
            return QStringLiteral("mismo documento");
        if (documentosCercanos(conocido.dni).contains(soloCifras(dni)))
            return QStringLiteral("documento casi igual");
    }
    if (igual(apellido, conocido.apellido) && igual(nombres, conocido.nombres))
        return QStringLiteral("mismo nombre");
    if (igual(apellido, conocido.nombres) && igual(nombres, conocido.apellido))
        return QStringLiteral("apellido y nombres al revés");
    return QStringLiteral("mismo apellido y fecha de nacimiento");
}

} // namespace

QStringList documentosCercanos(const QString &dni)
{
    const QString cifras = soloCifras(dni.trimmed());
    const bool numero = cifras.size() >= 6 && cifras.size() <= 9
        && std::all_of(cifras.cbegin(), cifras.cend(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    if (!numero)
        return {};
    QSet<QString> cercanos{cifras};
    for (qsizetype i = 0; i < cifras.size(); ++i) {
        QString otro = cifras;
        for (char16_t c = u'0'; c <= u'9'; ++c) {
            otro[i] = c;
            cercanos.insert(otro);
        }
        if (i + 1 < cifras.size()) {
            otro = cifras;
            std::swap(otro[i], otro[i + 1]);
            cercanos.insert(otro);
        }
    }
    return cercanos.values();
}

std::vector<Parecido> buscarParecidos(db::Connection &conexion, const Conocido &conocido, int tope)
{
    const QString apellido = conocido.apellido.trimmed(), nombres = conocido.nombres.trimmed();
    QStringList condiciones;
    db::Params valores;
    // Looked up by the index of documents, in both ways of writing them.
    if (const QStringList cercanos = documentosCercanos(conocido.dni); !cercanos.isEmpty()) {
        QStringList marcas;
        for (const QString &cercano : cercanos)
            for (const QString &escrito : {cercano, conPuntos(cercano)}) {
                marcas << QStringLiteral("?");
                valores << escrito;
            }
        condiciones << QStringLiteral("DNI in (%1)").arg(marcas.join(u','));
    }
    if (!apellido.isEmpty() && conocido.nacimiento.isValid() && conocido.nacimiento != base::fechaDesconocida()) {
        condiciones << QStringLiteral("Apellido = ? and FeNac = ") + conexion.dialect().date(conocido.nacimiento);
        valores << apellido;
    }
    if (!apellido.isEmpty() && !nombres.isEmpty()) {
        for (const auto &[uno, otro] : {std::pair(nombres, apellido), std::pair(apellido, nombres)}) {
            condiciones << QStringLiteral("Apellido = ? and Nombres = ?");
            valores << uno << otro;
        }
    }
    std::vector<Parecido> hallados;
    // One statement by reason, so that each uses its own index.
    qsizetype primero = 0;
    for (const QString &condicion : condiciones) {
        const qsizetype cuantos = condicion.count(u'?');
        const db::Rows rows = conexion.query(
            QStringLiteral("SELECT TOP %1 NroHC,Apellido,apellido2,Nombres,DNI,FeNac FROM [Pacientes] WHERE NroHC <> 0 "
                           "and %2 ORDER BY Apellido,Nombres")
                .arg(tope)
                .arg(condicion),
            valores.mid(primero, cuantos));
        primero += cuantos;
        for (int i = 0; i < rows->rowCount() && int(hallados.size()) < tope; ++i) {
            const int nrohc = int(rows->integer(i, 0));
            if (std::any_of(hallados.cbegin(), hallados.cend(), [&](const Parecido &p) { return p.nrohc == nrohc; }))
                continue;
            const QDate nacio = rows->dateTime(i, 5).date();
            const QString apellidos = (rows->text(i, 1) + u' ' + rows->text(i, 2)).trimmed();
            hallados.push_back(
                {nrohc,
                 apellidos + QStringLiteral(", ") + rows->text(i, 3),
                 rows->text(i, 4),
                 nacio == base::fechaDesconocida() ? QDate() : nacio,
                 motivoDe(conocido, rows->text(i, 4), rows->text(i, 1), rows->text(i, 3))});
        }
    }
    return hallados;
}

} // namespace patients
