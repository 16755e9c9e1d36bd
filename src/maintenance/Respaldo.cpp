#include "maintenance/Respaldo.h"

#include "db/Config.h"

#include <QDir>

#include <algorithm>

namespace maintenance {

namespace {

const QString formato = QStringLiteral("yyyyMMddHHmm");
const QString principio = QStringLiteral("Backup Datos (");
const QString fin = QStringLiteral(").mdb");

int enLimites(int valor, int maximo, int inicial) { return valor >= 1 && valor <= maximo ? valor : inicial; }

/// Also as another system writes it: the folder belongs to the computer that makes the copies.
} // namespace

AjustesRespaldo leerAjustes(db::Connection &conexion)
{
    using A = AjustesRespaldo;
    const db::Config config(conexion);
    return {
        config.bandera(u"hacerbackupautomatico"),
        config.texto(u"backupcarpeta").trimmed(),
        enLimites(config.numero(u"backupcantidad"), A::cantidadMaxima, A::cantidadInicial),
        enLimites(config.numero(u"backuphoras"), A::horasMaxima, A::horasInicial)};
}

QString carpetaRespaldo(const AjustesRespaldo &ajustes, const QString &carpetaPrograma)
{
    return QDir::cleanPath(
        ajustes.carpeta.isEmpty() ? carpetaPrograma + QStringLiteral("/Backup")
                                  : QDir::fromNativeSeparators(ajustes.carpeta));
}

QString nombreCopia(const QDateTime &cuando) { return principio + cuando.toString(formato) + fin; }

std::optional<QDateTime> fechaDeCopia(const QString &nombre)
{
    if (!nombre.startsWith(principio, Qt::CaseInsensitive) || !nombre.endsWith(fin, Qt::CaseInsensitive))
        return std::nullopt;
    const QString hora = nombre.mid(principio.size()).chopped(fin.size());
    const QDateTime cuando = QDateTime::fromString(hora, formato);
    return cuando.isValid() ? std::optional(cuando) : std::nullopt;
}

QVector<CopiaAutomatica> copiasEn(const QString &carpeta)
{
    QVector<CopiaAutomatica> copias;
    for (const QString &nombre : QDir(carpeta).entryList(QDir::Files | QDir::Hidden))
        if (const auto cuando = fechaDeCopia(nombre))
            copias.push_back({nombre, *cuando});
    std::sort(copias.begin(), copias.end(), [](const auto &a, const auto &b) { return a.cuando > b.cuando; });
    return copias;
}

QStringList sobrantes(QVector<CopiaAutomatica> copias, int cantidad, const QDateTime &ahora)
{
    const auto futura = [&](const CopiaAutomatica &copia) { return copia.cuando > ahora; };
    std::sort(copias.begin(), copias.end(), [&](const auto &a, const auto &b) {
        return futura(a) != futura(b) ? futura(b) : a.cuando > b.cuando;
    });

    QStringList van;
    while (copias.size() > qMax(cantidad, 1)) {
        qsizetype cual = copias.size() - 1;
        // From the oldest on: one that has a later neighbour of the same day.
        for (qsizetype i = cual; i > 0; --i)
            if (copias[i].cuando.date() == copias[i - 1].cuando.date() && copias[i].cuando.date() != ahora.date()
                && !futura(copias[i])) {
                cual = i;
                break;
            }
        van << copias.takeAt(cual).nombre;
    }
    return van;
}

} // namespace maintenance
