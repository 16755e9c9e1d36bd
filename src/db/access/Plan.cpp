#include "db/access/Plan.h"

#include <algorithm>

namespace db::access {

const TablaDelPlan *Plan::tabla(QStringView nombre) const
{
    for (const TablaDelPlan &una : tablas)
        if (nombre.compare(una.vieja.nombre, Qt::CaseInsensitive) == 0)
            return &una;
    return nullptr;
}

const QStringList &tablasQueNoPasan()
{
    static const QStringList nombres{QStringLiteral("Usuarios"), QStringLiteral("Estadisticas")};
    return nombres;
}

Censo::Censo(const Schema &schema, Sigue sigue)
    : m_schema(schema)
    , m_sigue(std::move(sigue))
{
}

void Censo::vinculada(const QString &nombre) { m_plan.vinculadas << nombre; }

void Censo::empezar(const TablaVieja &tabla)
{
    m_nombre = tabla.nombre;
    m_filas = 0;
    m_saltear = tablasQueNoPasan().contains(tabla.nombre, Qt::CaseInsensitive);
    if (m_saltear) {
        m_plan.salteadas << tabla.nombre;
        return;
    }
    TablaDelPlan nueva;
    nueva.vieja = tabla;
    nueva.declarada = m_schema.table(tabla.nombre);
    m_columnas.clear();
    m_clave.clear();
    m_claves.clear();
    m_ids.clear();
    m_claveSirve = m_idsSirven = true;
    for (int c = 0; c < tabla.columnas.size(); ++c) {
        const ColumnaVieja &vieja = tabla.columnas[c];
        const Column *declarada = nueva.declarada ? nueva.declarada->column(vieja.nombre) : nullptr;
        m_columnas.push_back({declarada});
        if (nueva.contador < 0 && (declarada ? declarada->type == Type::Counter : vieja.autonumerica))
            nueva.contador = c;
    }
    if (nueva.declarada)
        for (const QString &columna : nueva.declarada->key)
            m_clave << tabla.columna(columna);
    if (m_clave.contains(-1))
        m_clave.clear();
    m_plan.tablas.push_back(nueva);
}

void Censo::fila(const std::vector<Valor> &celdas)
{
    ++m_filas;
    if (m_saltear)
        return;
    TablaDelPlan &tabla = m_plan.tablas.back();
    for (size_t c = 0; c < m_columnas.size(); ++c) {
        Columna &columna = m_columnas[c];
        if (columna.declarada && columna.entra)
            columna.entra = entra(celdas[c], *columna.declarada);
        if (celdas[c].esTexto())
            columna.ancho = std::max(columna.ancho, int(QString::fromUtf8(celdas[c].datos).size()));
    }
    if (tabla.contador >= 0) {
        const Valor &id = celdas[size_t(tabla.contador)];
        const auto antes = m_ids.size();
        if (id.clase == Valor::Clase::Entero) {
            m_ids.insert(id.entero);
            tabla.mayorId = std::max(tabla.mayorId, id.entero);
        }
        m_idsSirven &= m_ids.size() > antes;
    }
    if (!m_clave.isEmpty()) {
        QByteArray junta;
        for (const int c : m_clave) {
            m_claveSirve &= !celdas[size_t(c)].esNulo();
            junta += celdas[size_t(c)].descripcion().toCaseFolded().toUtf8() + '\0';
        }
        const auto antes = m_claves.size();
        m_claves.insert(junta);
        m_claveSirve &= m_claves.size() > antes;
    }
}

void Censo::terminar()
{
    if (m_saltear)
        return;
    TablaDelPlan &tabla = m_plan.tablas.back();
    tabla.filas = m_filas;
    m_plan.filas += m_filas;
    if (m_filas != tabla.vieja.filas)
        m_plan.cuentasDistintas << QStringLiteral("'%1' dice tener %2 filas y se leyeron %3")
                                       .arg(tabla.vieja.nombre)
                                       .arg(tabla.vieja.filas)
                                       .arg(m_filas);
    elegirColumnas(tabla);
    elegirClave(tabla);
}

void Censo::elegirColumnas(TablaDelPlan &tabla)
{
    tabla.nueva.name = tabla.declarada ? tabla.declarada->name : tabla.vieja.nombre;
    for (int c = 0; c < tabla.vieja.columnas.size(); ++c) {
        const ColumnaVieja &vieja = tabla.vieja.columnas[c];
        const Columna &vista = m_columnas[size_t(c)];
        Column columna = columnaNatural(vieja, vista.ancho);
        if (vista.declarada && vista.entra) {
            columna = *vista.declarada;
        } else if (vista.declarada) {
            // The system's spelling and defaults, with room for what is there.
            Column ancha = columna;
            ancha.name = vista.declarada->name;
            ancha.initial = vista.declarada->initial;
            ancha.existing = vista.declarada->existing;
            columna = ancha;
            tabla.avisos << QStringLiteral(
                                "La columna '%1' queda como %2 (en el sistema es %3): así guarda sus valores "
                                "sin cambiarlos.")
                                .arg(columna.name, nombreDeTipo(columna), nombreDeTipo(*vista.declarada));
        } else if (tabla.declarada) {
            tabla.conservadas << vieja.nombre;
        }
        tabla.destino << int(tabla.nueva.columns.size());
        tabla.nueva.columns << columna;
    }
    if (tabla.contador >= 0) {
        Column &columna = tabla.nueva.columns[tabla.contador];
        const bool delSistema = m_columnas[size_t(tabla.contador)].declarada;
        if (delSistema || m_idsSirven)
            columna = columna::contador(columna.name);
        else
            tabla.contador = -1; // a number that repeats is no key; nobody asks for one here
    }
    if (tabla.declarada && tabla.contador < 0)
        for (const Column &columna : tabla.declarada->columns)
            if (columna.type == Type::Counter)
                tabla.nueva.columns << columna; // rows that had no number get theirs in their order
}

void Censo::elegirClave(TablaDelPlan &tabla)
{
    if (!tabla.declarada || tabla.declarada->key.isEmpty())
        return;
    if (!m_clave.isEmpty() && m_claveSirve)
        tabla.nueva.key = tabla.declarada->key;
    else
        tabla.avisos << QStringLiteral("Hay filas con la misma clave (%1), o sin ella: pasan todas.")
                            .arg(tabla.declarada->key.join(QStringLiteral(", ")));
}

} // namespace db::access
