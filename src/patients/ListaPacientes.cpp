#include "patients/ListaPacientes.h"

#include "base/Numeros.h"
#include "db/Entorno.h"

#include <algorithm>

namespace patients {

namespace {

/// Pages kept: what a person scrolls over.
constexpr int paginasGuardadas = 200;

} // namespace

ListaPacientes::ListaPacientes(db::Entorno &entorno)
    : m_entorno(entorno)
{
}

base::Control ListaPacientes::buscar(const FiltroPacientes &filtro, ColumnaPaciente orden)
{
    auto filas = buscarNumeros(m_entorno, filtro, orden);
    if (!filas)
        return filas.rechazo();
    if (!*filas)
        filas = buscarPacientes(m_entorno, filtro);
    m_filas = *filas;
    m_orden = orden;
    m_paginas.clear();
    m_falla.reset();
    soltarTodo();
    if (orden == ColSaldo)
        agregarSaldos();
    m_columnaDeOrden = m_filas->columnCount() > ColSaldo ? orden : m_filas->columnCount() - 1;
    return {};
}

void ListaPacientes::agregarSaldos()
{
    const std::vector<qint64> pacientes = numeros(0, cantidad());
    const std::vector<double> saldos = Saldos(m_entorno).calcular(pacientes);
    db::ResultSet::Builder filas(
        {{QStringLiteral("NroHC"), db::Type::Long}, {QStringLiteral("saldo"), db::Type::Double}});
    for (size_t i = 0; i < pacientes.size(); ++i) {
        filas.addInteger(pacientes[i]);
        filas.addReal(saldos[i]);
        filas.endRow();
    }
    m_filas = filas.finish();
}

std::vector<qint64> ListaPacientes::numeros(int desde, int hasta) const
{
    std::vector<qint64> pacientes;
    for (int fila = desde; fila < std::min(cantidad(), hasta); ++fila)
        pacientes.push_back(m_filas->integer(fila, ColNroHC));
    return pacientes;
}

QString ListaPacientes::texto(int fila, ColumnaPaciente columna)
{
    if (m_falla)
        throw db::Error(*m_falla);
    try {
        return leer(fila, columna);
    } catch (const db::Error &error) {
        m_falla = error;
        throw;
    }
}

ListaPacientes::Pagina &ListaPacientes::paginaDe(int fila)
{
    if (m_todo)
        return *m_todo;
    const int numero = fila / Saldos::pagina;
    if (m_paginas.size() > paginasGuardadas && !m_paginas.contains(numero))
        m_paginas.clear();
    return m_paginas[numero];
}

void ListaPacientes::leerDatos(Pagina &pagina, const db::Rows &datos) const
{
    pagina.datos = datos;
    for (int i = 0; i < datos->rowCount(); ++i)
        pagina.lugares.insert(datos->integer(i, ColNroHC), i);
}

void ListaPacientes::leerSaldos(Pagina &pagina, const std::vector<qint64> &pacientes) const
{
    const std::vector<double> saldos = Saldos(m_entorno).calcular(pacientes);
    for (size_t i = 0; i < pacientes.size(); ++i)
        pagina.saldos.insert(pacientes[i], saldos[i]);
}

QString ListaPacientes::leer(int fila, ColumnaPaciente columna)
{
    const auto escrito = [columna](const db::ResultSet &filas, int lugar) {
        // Who has no second surname leaves a blank before the comma.
        const QString texto = filas.text(lugar, columna);
        return columna == ColNombre ? QString(texto).replace(QLatin1String(" , "), QLatin1String(", ")) : texto;
    };
    if (columna == ColSaldo && m_orden == ColSaldo)
        return base::dinero(m_filas->real(fila, m_columnaDeOrden));
    if (columna != ColSaldo && m_filas->columnCount() > ColSaldo)
        return escrito(*m_filas, fila);

    Pagina &pagina = paginaDe(fila);
    const qint64 nrohc = m_filas->integer(fila, ColNroHC);
    const auto deLaPagina = [&] {
        const int desde = fila / Saldos::pagina * Saldos::pagina;
        return numeros(desde, desde + Saldos::pagina);
    };
    if (columna == ColSaldo) {
        if (pagina.saldos.isEmpty())
            leerSaldos(pagina, deLaPagina());
        return base::dinero(pagina.saldos.value(nrohc));
    }
    if (!pagina.datos)
        leerDatos(pagina, leerPacientes(m_entorno, deLaPagina()));
    const auto lugar = pagina.lugares.constFind(nrohc);
    return lugar == pagina.lugares.constEnd() ? QString() : escrito(*pagina.datos, *lugar);
}

void ListaPacientes::leerTodo()
{
    constexpr int muchos = 2000; // fewer are soon read page by page
    if (cantidad() < muchos)
        return;
    Pagina todo;
    if (m_filas->columnCount() <= ColSaldo)
        leerDatos(todo, leerTodosLosPacientes(m_entorno));
    if (m_orden != ColSaldo)
        leerSaldos(todo, numeros(0, cantidad()));
    m_todo = std::move(todo);
}

void ListaPacientes::soltarTodo() { m_todo.reset(); }

} // namespace patients
