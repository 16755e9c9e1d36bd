#include "agenda/Feriados.h"

#include "agenda/DiasNoLaborables.h"
#include "agenda/Textos.h"
#include "base/Fechas.h"
#include "db/Entorno.h"
#include "db/Historial.h"
#include "db/ListaDoctores.h"
#include "db/Recordset.h"

#include <algorithm>

namespace agenda {

namespace {

struct Fecha {
    int dia;
    int mes;
    const char16_t *nombre;
};

constexpr Fecha inamovibles[] = {
    {1, 1, u"Año Nuevo"},
    {24, 3, u"Día Nacional de la Memoria por la Verdad y la Justicia"},
    {2, 4, u"Día del Veterano y de los Caídos en la Guerra de Malvinas"},
    {1, 5, u"Día del Trabajo"},
    {25, 5, u"Día de la Revolución de Mayo"},
    {20, 6, u"Paso a la Inmortalidad del Gral. Manuel Belgrano"},
    {9, 7, u"Día de la Independencia"},
    {8, 12, u"Día de la Inmaculada Concepción de María"},
    {25, 12, u"Navidad"},
};

constexpr Fecha trasladables[] = {
    {17, 6, u"Paso a la Inmortalidad del Gral. Martín Miguel de Güemes"},
    {17, 8, u"Paso a la Inmortalidad del Gral. José de San Martín"},
    {12, 10, u"Día del Respeto a la Diversidad Cultural"},
    {20, 11, u"Día de la Soberanía Nacional"},
};

QDate trasladado(QDate fecha)
{
    switch (fecha.dayOfWeek()) {
    case Qt::Tuesday:
    case Qt::Wednesday: return fecha.addDays(Qt::Monday - fecha.dayOfWeek());
    case Qt::Thursday:
    case Qt::Friday: return fecha.addDays(Qt::Monday + 7 - fecha.dayOfWeek());
    default: return fecha;
    }
}

QString claseTexto(const Feriado &feriado)
{
    if (feriado.clase == Feriado::Clase::Inamovible)
        return QStringLiteral("Inamovible");
    if (feriado.original == feriado.fecha)
        return QStringLiteral("Trasladable");
    return QStringLiteral("Trasladado del %1").arg(feriado.original.toString(QStringLiteral("dd/MM")));
}

bool abarcada(const QVector<DiaNoLaborable> &libres, QDate fecha)
{
    return std::any_of(libres.begin(), libres.end(), [fecha](const DiaNoLaborable &d) { return d.abarca(fecha); });
}

QString deQuienes(db::Connection &conexion, const QVector<int> &doctores)
{
    const QVector<db::Doctor> todos = db::profesionales(conexion);
    if (doctores.size() == 1)
        for (const db::Doctor &doctor : todos)
            if (doctor.id == doctores.first())
                return doctor.nombre;
    return doctores.size() >= todos.size() ? QStringLiteral("todos los profesionales")
                                           : QStringLiteral("%1 profesionales").arg(doctores.size());
}

} // namespace

QDate domingoDePascua(int anio)
{
    const int a = anio % 19;
    const int b = anio / 100, c = anio % 100;
    const int d = b / 4, e = b % 4;
    const int f = (b + 8) / 25;
    const int g = (b - f + 1) / 3;
    const int h = (19 * a + b - d - g + 15) % 30;
    const int i = c / 4, k = c % 4;
    const int l = (32 + 2 * e + 2 * i - h - k) % 7;
    const int m = (a + 11 * h + 22 * l) / 451;
    const int n = h + l - 7 * m + 114;
    return {anio, n / 31, n % 31 + 1};
}

QVector<Feriado> feriadosNacionales(int anio)
{
    QVector<Feriado> lista;
    if (anio < primerAnioFeriados)
        return lista;
    const auto agregar = [&lista](QDate fecha, const QString &nombre, Feriado::Clase clase, QDate original) {
        lista.append({fecha, nombre, clase, original});
    };
    for (const Fecha &f : inamovibles) {
        const QDate fecha(anio, f.mes, f.dia);
        agregar(fecha, QString::fromUtf16(f.nombre), Feriado::Clase::Inamovible, fecha);
    }
    for (const Fecha &f : trasladables) {
        const QDate original(anio, f.mes, f.dia);
        agregar(trasladado(original), QString::fromUtf16(f.nombre), Feriado::Clase::Trasladable, original);
    }
    const QDate pascua = domingoDePascua(anio);
    const std::pair<int, const char16_t *> dePascua[]
        = {{-48, u"Lunes de Carnaval"}, {-47, u"Martes de Carnaval"}, {-2, u"Viernes Santo"}};
    for (const auto &[dias, nombre] : dePascua) {
        const QDate fecha = pascua.addDays(dias);
        agregar(fecha, QString::fromUtf16(nombre), Feriado::Clase::Inamovible, fecha);
    }
    std::stable_sort(lista.begin(), lista.end(), [](const Feriado &a, const Feriado &b) { return a.fecha < b.fecha; });
    return lista;
}

QVector<PropuestaFeriado> proponerFeriados(db::Connection &conexion, const QVector<int> &doctores, int anio)
{
    QVector<PropuestaFeriado> propuestas;
    for (const Feriado &feriado : feriadosNacionales(anio)) {
        if (!propuestas.isEmpty() && propuestas.last().fecha == feriado.fecha) {
            propuestas.last().nombre += QStringLiteral("; ") + feriado.nombre;
            continue;
        }
        propuestas.append({feriado.fecha, feriado.nombre, claseTexto(feriado), 0});
    }
    for (const int doctor : doctores) {
        const auto libres = listarDiasNoLaborables(conexion, doctor);
        for (PropuestaFeriado &propuesta : propuestas)
            propuesta.yaEstan += abarcada(libres, propuesta.fecha) ? 1 : 0;
    }
    return propuestas;
}

base::Resultado<int>
agregarFeriados(db::Entorno &entorno, const QVector<int> &doctores, int anio, const std::set<QDate> &fechas)
{
    if (auto sinDerecho = db::controlarDerecho(entorno, derechoAgendas))
        return *sinDerecho;
    if (fechas.empty() || doctores.isEmpty())
        return sinFechasElegidas();
    db::Connection &conexion = entorno.conexion();
    db::Transaction transaccion(conexion);
    int agregados = 0;
    for (const int doctor : doctores) {
        const auto libres = listarDiasNoLaborables(conexion, doctor);
        QVector<DiaNoLaborable> faltan;
        for (const QDate &fecha : fechas)
            if (!abarcada(libres, fecha))
                faltan.append(DiaNoLaborable::de(fecha));
        if (faltan.isEmpty())
            continue;
        if (auto rechazo = agregarDiasNoLaborables(conexion, doctor, faltan))
            return *rechazo;
        agregados += int(faltan.size());
    }
    if (agregados > 0)
        db::registrarHistorial(
            entorno,
            QStringLiteral("Días en que no se atiende"),
            QStringLiteral("Se agregaron feriados nacionales del año %1 (%2 fechas) a los días en que no atiende: %3.")
                .arg(QString::number(anio), QString::number(fechas.size()), deQuienes(conexion, doctores)));
    transaccion.commit();
    return agregados;
}

} // namespace agenda
