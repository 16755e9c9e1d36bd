#include "patients/HistoriaClinica.h"

#include "db/Entorno.h"
#include "patients/Ficha.h"
#include "patients/RegistrosPaciente.h"
#include "texto/TextoRico.h"

namespace patients {

namespace {

using namespace Qt::StringLiterals;

const QString columnaHistoria = u"HC"_s;
const QString columnaGrupo = u"GrupoSanguineo"_s;
const QString columnaFactor = u"FactorSanguineo"_s;
const QString columnaAlertas = u"alergias"_s;

QString renglon(const QString &rotulo, const QString &texto)
{
    const QString limpio = texto.trimmed();
    return limpio.isEmpty() ? QString()
                            : u"<p><b>%1</b> %2</p>"_s.arg(rotulo, limpio.toHtmlEscaped().replace(u'\n', u"<br>"_s));
}

} // namespace

const QStringList &columnasHistoria()
{
    static const QStringList columnas{columnaGrupo, columnaFactor, columnaAlertas, columnaHistoria};
    return columnas;
}

base::Control controlarHistoria(db::Entorno &entorno)
{
    for (const BotonRegistro &boton : registrosPaciente())
        if (boton.ventana == u"histoclinica"_s)
            return controlarRegistro(entorno, boton);
    return std::nullopt;
}

base::Control guardarHistoria(db::Entorno &entorno, const PacienteAbierto &paciente, const QVariantMap &cambios)
{
    if (auto control = controlarHistoria(entorno))
        return control;
    db::Connection &conexion = entorno.conexion();
    db::Transaction transaccion(conexion);
    if (!paciente.existe(conexion))
        return pacienteAusente();
    db::Recordset fila = paciente.fila(conexion);
    for (const QString &columna : columnasHistoria())
        if (const auto it = cambios.constFind(columna); it != cambios.cend())
            fila.set(columna, columna == columnaHistoria ? *it : QVariant(it->toString().trimmed()));
    fila.update();
    transaccion.commit();
    return std::nullopt;
}

QString historiaHtml(const QVariantMap &valores)
{
    QString cabeza = renglon(u"Grupo Sanguíneo:"_s, valores.value(columnaGrupo).toString())
        + renglon(u"Factor Sanguíneo:"_s, valores.value(columnaFactor).toString())
        + renglon(u"Alertas:"_s, valores.value(columnaAlertas).toString());
    const QString historia = texto::comoHtml(valores.value(columnaHistoria).toString());
    const QString cuerpo = u"<body>"_s;
    const qsizetype lugar = historia.indexOf(cuerpo);
    if (lugar < 0)
        return u"<html><body>"_s + cabeza + u"</body></html>"_s;
    if (!cabeza.isEmpty())
        cabeza += u"<p><br></p>"_s;
    return QString(historia).insert(lugar + cuerpo.size(), cabeza);
}

} // namespace patients
