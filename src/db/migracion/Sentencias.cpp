#include "db/migracion/Sentencias.h"

#include "db/Dialect.h"
#include "db/SentenciasServidor.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace db::migracion {

namespace {

const Dialect &delServidor()
{
    static const Dialect dialecto(Dialect::Kind::SqlServer);
    return dialecto;
}

/// The server's own words: an old database may well have a column called "plan" or "user".
const QSet<QString> &reservadas()
{
    static const QStringList palabras
        = QStringLiteral(
              "add all alter and any as asc authorization backup begin between break browse bulk by cascade case check "
              "checkpoint close clustered coalesce collate column commit compute constraint contains containstable "
              "continue convert create cross current current_date current_time current_timestamp current_user cursor "
              "database dbcc deallocate declare default delete deny desc disk distinct distributed double drop dump "
              "else end errlvl escape except exec execute exists exit external fetch file fillfactor for foreign "
              "freetext freetexttable from full function goto grant group having holdlock identity identity_insert "
              "identitycol if in index inner insert intersect into is join key kill left like lineno load merge "
              "national nocheck nonclustered not null nullif of off offsets on open opendatasource openquery "
              "openrowset "
              "openxml option or order outer over percent pivot plan precision primary print proc procedure public "
              "raiserror read readtext reconfigure references replication restore restrict return revert revoke right "
              "rollback rowcount rowguidcol rule save schema select session_user set setuser shutdown some statistics "
              "system_user table tablesample textsize then to top tran transaction trigger truncate union unique "
              "unpivot update updatetext use user values varying view waitfor when where while with writetext")
              .split(u' ');
    static const QSet<QString> todas(palabras.begin(), palabras.end());
    return todas;
}

/// Brackets only where the name needs them.
QString nombre(const QString &texto)
{
    static const QRegularExpression simple(QStringLiteral("^[A-Za-z_][A-Za-z0-9_]*$"));
    return simple.match(texto).hasMatch() && !reservadas().contains(texto.toLower()) ? texto
                                                                                     : delServidor().identifier(texto);
}

QString nombres(const QStringList &columnas)
{
    QStringList lista;
    for (const QString &columna : columnas)
        lista << nombre(columna);
    return lista.join(u',');
}

bool es(const QString &uno, const char *otro) { return uno.compare(QLatin1String(otro), Qt::CaseInsensitive) == 0; }

QString valorInicial(const QVariant &valor)
{
    const QString texto = valor.toString();
    if (es(texto, "True"))
        return QStringLiteral("1");
    if (es(texto, "False") || texto == QLatin1String("0"))
        return QStringLiteral("0");
    if (texto == QLatin1String("-1"))
        return QStringLiteral("-1");
    return u'\'' + QString(texto).replace(u'\'', QLatin1String("''")) + u'\'';
}

/// Collects the statements of one table, none twice for the same columns.
class Armado
{
public:
    explicit Armado(const TablaPlano &plano)
        : m_plano(plano)
        , m_tabla(delServidor().identifier(plano.tabla.name))
    {
    }

    void clave(const QString &restriccion, const QStringList &columnas)
    {
        const bool completa = std::all_of(columnas.begin(), columnas.end(), [this](const QString &columna) {
            return m_plano.completas.contains(columna, Qt::CaseInsensitive);
        });
        const QString comun
            = QStringLiteral("CREATE INDEX %1 ON %2(%3)").arg(nombre(restriccion), m_tabla, nombres(columnas));
        const QString primaria = QStringLiteral("ALTER TABLE %1 ADD CONSTRAINT %2 PRIMARY KEY %3 (%4)")
                                     .arg(
                                         m_tabla,
                                         nombre(restriccion),
                                         m_agrupada ? QStringLiteral("NONCLUSTERED") : QStringLiteral("CLUSTERED"),
                                         nombres(columnas));
        m_claves.append(completa ? Clave{primaria, comun} : Clave{comun});
        m_agrupada |= completa;
        m_hechas.insert(columnas.join(u',').toLower());
    }

    enum class Forma { Comun, Unica, Agrupada };
    void indice(const QString &suNombre, const QStringList &columnas, Forma forma = Forma::Comun)
    {
        if (m_hechas.contains(columnas.join(u',').toLower()))
            return;
        m_hechas.insert(columnas.join(u',').toLower());
        // A table's rows lie in one order only.
        if (forma == Forma::Agrupada && m_agrupada)
            forma = Forma::Comun;
        m_agrupada |= forma == Forma::Agrupada;
        const QString final = QStringLiteral("INDEX %1 ON %2(%3)").arg(nombre(suNombre), m_tabla, nombres(columnas));
        switch (forma) {
        case Forma::Comun: m_claves.append({QStringLiteral("CREATE ") + final}); break;
        case Forma::Agrupada: m_claves.append({QStringLiteral("CREATE CLUSTERED ") + final}); break;
        case Forma::Unica:
            m_claves.append({QStringLiteral("CREATE UNIQUE ") + final, QStringLiteral("CREATE ") + final});
        }
    }

    [[nodiscard]] bool tiene(const char *columna) const { return m_plano.tabla.column(QString::fromLatin1(columna)); }
    [[nodiscard]] const QVector<Clave> &claves() const { return m_claves; }

private:
    const TablaPlano &m_plano;
    QString m_tabla;
    QVector<Clave> m_claves;
    QSet<QString> m_hechas;
    bool m_agrupada = false;
};

} // namespace

QString FechaLimitada::sentencia() const
{
    return QStringLiteral("UPDATE [%1] SET %2 = #31/12/8888# WHERE %2 < #01/01/1753#").arg(tabla, columna);
}

const QVector<FechaLimitada> &fechasLimitadas()
{
    static const QVector<FechaLimitada> lista = [] {
        QVector<FechaLimitada> todas{
            {QStringLiteral("Pacientes"), QStringLiteral("FeNac")},
            {QStringLiteral("Pacientes"), QStringLiteral("UltimaCons")},
            {QStringLiteral("Pacientes Control Feto"), QStringLiteral("Fecha")},
            {QStringLiteral("Pacientes Control Materno"), QStringLiteral("Fecha")}};
        for (const char *columna : {"fum", "papfecha", "infecfecha", "mamasfecha", "densitofecha", "fecha"})
            todas.append({QStringLiteral("Consulta - Ginecologico"), QLatin1String(columna)});
        return todas;
    }();
    return lista;
}

QString crearTabla(const TablaPlano &plano)
{
    QStringList columnas;
    for (Column columna : plano.tabla.columns) {
        columna.initial.reset();
        QString texto = delServidor().identifier(columna.name) + u' ';
        if (columna.type == Type::Counter)
            // An empty table goes on where the other one stood; one with rows is set to it when they are there.
            texto += QStringLiteral("int IDENTITY(%1,1)").arg(plano.filas == 0 ? plano.contador + 1 : 1);
        else
            texto += servidor::tipo(columna);
        const bool deClave = plano.tabla.key.contains(columna.name, Qt::CaseInsensitive) || es(columna.name, "id");
        if (deClave && columna.type != Type::Counter && plano.completas.contains(columna.name))
            texto += QStringLiteral(" NOT NULL");
        columnas << texto;
    }
    return QStringLiteral("CREATE TABLE %1 (%2)")
        .arg(delServidor().identifier(plano.tabla.name), columnas.join(QLatin1String(", ")));
}

QString insertar(const TablaPlano &plano)
{
    QStringList columnas, valores;
    for (const Column &columna : plano.tabla.columns) {
        columnas << delServidor().identifier(columna.name);
        // Bytes are converted to what they are: a Null is bound as a text, which the server would refuse.
        valores << (columna.type == Type::Binary ? QStringLiteral("CONVERT(varbinary(max),?)") : QStringLiteral("?"));
    }
    return QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
        .arg(delServidor().identifier(plano.tabla.name), columnas.join(u','), valores.join(u','));
}

QStringList valoresIniciales(const Table &tabla, int &numero)
{
    static const QRegularExpression otras(QStringLiteral("[^A-Za-z0-9]"));
    QStringList sentencias;
    for (const Column &columna : tabla.columns) {
        if (!columna.initial || columna.initial->isNull() || columna.type == Type::Counter)
            continue;
        sentencias << QStringLiteral("ALTER TABLE %1 ADD CONSTRAINT a%2_%3 DEFAULT %4 FOR %5")
                          .arg(
                              delServidor().identifier(tabla.name),
                              QString::number(++numero),
                              QString(columna.name).remove(otras),
                              valorInicial(*columna.initial),
                              nombre(columna.name));
    }
    return sentencias;
}

QVector<Clave> claves(const TablaPlano &plano)
{
    using Forma = Armado::Forma;
    const QString &tabla = plano.tabla.name;
    Armado armado(plano);
    if (armado.tiene("id"))
        armado.clave(u'a' + tabla + QStringLiteral("_id"), {QStringLiteral("id")});
    if (armado.tiene("nrohc"))
        armado.indice(
            QStringLiteral("nrohc"),
            {QStringLiteral("nrohc")},
            es(tabla, "Pacientes")                                ? Forma::Unica
                : es(tabla, "Imprimir") || es(tabla, "Imprimir2") ? Forma::Agrupada
                                                                  : Forma::Comun);
    if (armado.tiene("nropaci"))
        armado.indice(
            QStringLiteral("nropaci"),
            {QStringLiteral("nropaci")},
            es(tabla, "Pacientes Embarazos") || es(tabla, "Pacientes Embarazos Finalizados") ? Forma::Agrupada
                                                                                             : Forma::Comun);
    if (es(tabla, "Config") && armado.tiene("NomDoc"))
        armado.indice(QStringLiteral("NomDoc"), {QStringLiteral("NomDoc")}, Forma::Agrupada);
    if (es(tabla, "Agenda Turnos"))
        for (const char *columna : {"Doctor", "Fecha"})
            if (armado.tiene(columna))
                armado.indice(QLatin1String(columna), {QLatin1String(columna)});
    if (!plano.tabla.key.isEmpty() && !armado.tiene("id"))
        armado.clave(u'a' + tabla + QStringLiteral("_clave"), plano.tabla.key);
    for (const Index &indice : plano.tabla.indexes) {
        const bool conMemo = std::any_of(indice.columns.begin(), indice.columns.end(), [&](const QString &columna) {
            const Type tipo = plano.tabla.column(columna)->type;
            return tipo == Type::Memo || tipo == Type::Binary;
        });
        if (!conMemo) // the server has no index over a text without end
            armado.indice(indice.columns.join(u'_'), indice.columns, indice.unique ? Forma::Unica : Forma::Comun);
    }
    return armado.claves();
}

} // namespace db::migracion
