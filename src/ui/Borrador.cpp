#include "ui/Borrador.h"

#include "base/Fechas.h"
#include "base/Mensajes.h"
#include "base/Rechazo.h"
#include "db/Connection.h"
#include "db/Entorno.h"
#include "db/Error.h"
#include "ui/Campos.h"

#include <QTabWidget>

namespace ui {

namespace {

const QString antes = QStringLiteral("antes");
const QString ahora = QStringLiteral("ahora");
const QString escrito = QStringLiteral("escrito");
constexpr qsizetype renglonesMostrados = 12;
constexpr qsizetype largoMostrado = 60;

QJsonValue aJson(const Campo &campo, const QVariant &valor)
{
    if (valor.isNull())
        return QJsonValue::Null;
    if (campo.tipo == Campo::Tipo::Fecha)
        return valor.toDate().toString(Qt::ISODate);
    return QJsonValue::fromVariant(valor);
}

QVariant desdeJson(const Campo &campo, const QJsonValue &valor)
{
    if (valor.isNull() || valor.isUndefined())
        return {};
    switch (campo.tipo) {
    case Campo::Tipo::Fecha: return QDate::fromString(valor.toString(), Qt::ISODate);
    case Campo::Tipo::Entero:
    case Campo::Tipo::Eleccion:
    case Campo::Tipo::Lista: return valor.toInt();
    default: return valor.toVariant();
    }
}

QString sinTecla(QString texto)
{
    texto.remove(u'&');
    while (texto.endsWith(u':') || texto.endsWith(u' '))
        texto.chop(1);
    return texto;
}

/// The field's label, after the title of the page that it stands on: there is an "Apellido" on several.
QString rotulo(const Campo &campo, QWidget *control)
{
    const QString etiqueta = sinTecla(campo.etiqueta);
    for (QWidget *padre = control; padre; padre = padre->parentWidget())
        if (const auto *solapas = qobject_cast<QTabWidget *>(padre))
            for (int i = 0; i < solapas->count(); ++i)
                if (solapas->widget(i)->isAncestorOf(control))
                    return sinTecla(solapas->tabText(i)) + QStringLiteral(", ") + etiqueta;
    return etiqueta;
}

/// On one line, in quotes; what is long is cut.
QString citado(const QString &texto)
{
    const QString corto = texto.simplified();
    if (corto.isEmpty())
        return QStringLiteral("(vacío)");
    return u'"' + (corto.size() > largoMostrado ? corto.left(largoMostrado - 1) + u'…' : corto) + u'"';
}

} // namespace

Borrador::Borrador(Campos &campos, db::Entorno &entorno, const QString &ventana, std::function<QString()> titulo)
    : QObject(&campos)
    , m_campos(campos)
    , m_entorno(entorno)
    , m_titulo(std::move(titulo))
{
    m_borrador.ventana = ventana;
    m_pausa.setSingleShot(true);
    m_pausa.setInterval(pausa);
    m_limite.setSingleShot(true);
    m_limite.setInterval(demoraMaxima);
    connect(&m_pausa, &QTimer::timeout, this, &Borrador::escribir);
    connect(&m_limite, &QTimer::timeout, this, &Borrador::escribir);
    connect(&campos, &Campos::cambiado, this, [this] {
        if (!m_sigue)
            return;
        m_pausa.start();
        if (!m_limite.isActive())
            m_limite.start();
    });
}

void Borrador::seguir(qint64 registro, int nropaci)
{
    m_pausa.stop();
    m_limite.stop();
    m_borrador.id = 0;
    m_borrador.registro = registro;
    m_borrador.nropaci = nropaci;
    m_borrador.datos = {};
    m_sigue = true;
}

void Borrador::ofrecer()
{
    db::Borradores borradores(m_entorno);
    const auto anterior = borradores.leer(m_borrador.ventana, m_borrador.registro);
    if (!anterior)
        return;
    QStringList renglones = diferencias(anterior->datos);
    if (renglones.isEmpty()) {
        borradores.borrar(anterior->id); // saved meanwhile, or of fields that the form no longer has
        return;
    }
    if (renglones.size() > renglonesMostrados) {
        const qsizetype mas = renglones.size() - renglonesMostrados + 1;
        renglones = renglones.mid(0, renglonesMostrados - 1) << tr("... y %1 más").arg(mas);
    }
    base::Mensajes &mensajes = m_entorno.mensajes();
    if (mensajes.pregunta(
            base::titulo::atencion,
            tr("El %1 quedaron datos sin guardar (%2):\n\n%3\n\n¿Desea recuperarlos?")
                .arg(base::fechaHoraTexto(anterior->fecha), anterior->titulo, renglones.join(u'\n')))) {
        m_borrador.id = anterior->id;
        m_borrador.datos = anterior->datos;
        reponer(anterior->datos);
    } else if (mensajes.pregunta(
                   base::titulo::confirmacion,
                   tr("¿Desea descartar esos datos? Si responde No, la próxima vez se le ofrecerán de nuevo."),
                   false)) {
        borradores.borrar(anterior->id);
    }
}

QJsonObject Borrador::cambios() const
{
    QJsonObject todos;
    const QVariantMap distintos = m_campos.cambios();
    for (const Campo &campo : m_campos.campos()) {
        if (!distintos.contains(campo.columna))
            continue;
        QJsonObject suyo{
            {antes, aJson(campo, m_campos.original(campo.columna))},
            {ahora, aJson(campo, distintos.value(campo.columna))}};
        if (const QString texto = m_campos.ilegible(campo.columna); !texto.isEmpty())
            suyo.insert(escrito, texto);
        todos.insert(campo.columna, suyo);
    }
    return todos;
}

QStringList Borrador::diferencias(const QJsonObject &datos) const
{
    QStringList renglones;
    for (const Campo &campo : m_campos.campos()) {
        const QJsonObject suyo = datos.value(campo.columna).toObject();
        if (suyo.isEmpty())
            continue;
        const QVariant guardado = m_campos.original(campo.columna);
        const QJsonValue actual = aJson(campo, guardado);
        if (actual == suyo.value(ahora) && !suyo.contains(escrito))
            continue;
        const QString nuevo = suyo.contains(escrito)
            ? suyo.value(escrito).toString()
            : m_campos.comoTexto(campo.columna, desdeJson(campo, suyo.value(ahora)));
        QString renglon = rotulo(campo, m_campos.control(campo.columna)) + QStringLiteral(": ") + citado(nuevo);
        const QString leido = citado(m_campos.comoTexto(campo.columna, guardado));
        if (actual != suyo.value(antes))
            renglon += tr("  ¡Atención! Después se guardó %1.").arg(leido);
        else if (!guardado.isNull())
            renglon += tr("  (guardado: %1)").arg(leido);
        renglones << renglon;
    }
    return renglones;
}

void Borrador::reponer(const QJsonObject &datos)
{
    for (const Campo &campo : m_campos.campos()) {
        const QJsonObject suyo = datos.value(campo.columna).toObject();
        if (suyo.contains(escrito))
            m_campos.escribir(campo.columna, suyo.value(escrito).toString());
        else if (!suyo.isEmpty())
            m_campos.setValor(campo.columna, desdeJson(campo, suyo.value(ahora)));
    }
}

void Borrador::escribir()
{
    m_pausa.stop();
    m_limite.stop();
    if (!m_sigue)
        return;
    try {
        if (m_entorno.conexion().readOnly())
            return;
        const QJsonObject datos = cambios();
        if (datos == m_borrador.datos && datos.isEmpty() == (m_borrador.id == 0))
            return;
        const db::ShortWait espera(m_entorno.conexion());
        db::Borradores borradores(m_entorno);
        if (datos.isEmpty()) {
            borradores.borrar(m_borrador.id);
            m_borrador.id = 0;
        } else {
            m_borrador.datos = datos;
            m_borrador.titulo = m_titulo();
            m_borrador.id = borradores.guardar(m_borrador);
        }
        m_borrador.datos = datos;
    } catch (const db::Error &) {
        m_borrador.datos = {};
        m_pausa.start(); // another station writes, or the like
    }
}

void Borrador::quitar()
{
    m_pausa.stop();
    m_limite.stop();
    m_borrador.datos = {};
    const qint64 id = std::exchange(m_borrador.id, 0);
    if (id == 0)
        return;
    try {
        db::Borradores(m_entorno).borrar(id);
    } catch (const db::Error &) {
        // It will be offered once more, and tell that nothing differs.
    }
}

} // namespace ui
