#include "agenda/Calendario.h"

#include "agenda/Textos.h"
#include "base/Fechas.h"
#include "db/Config.h"

namespace agenda {

namespace {

const QStringList &nombresDias()
{
    static const QStringList nombres{
        QStringLiteral("Dom"),
        QStringLiteral("Lun"),
        QStringLiteral("Mar"),
        QStringLiteral("Mié"),
        QStringLiteral("Jue"),
        QStringLiteral("Vie"),
        QStringLiteral("Sáb")};
    return nombres;
}

} // namespace

QString MesCalendario::titulo() const { return base::nombreMes(mes).toUpper() + u' ' + QString::number(anio); }

QStringList MesCalendario::encabezados(bool cortos) const
{
    QStringList lista;
    for (int i = 0; i < 7; ++i)
        lista << nombresDias().at((primerDia + i) % 7).left(cortos ? 2 : 3);
    return lista;
}

MesCalendario mesCalendario(int anio, int mes, int primerDia)
{
    MesCalendario m{anio, mes, primerDia, {}};
    for (QDate dia(anio, mes, 1); dia.isValid() && dia.month() == mes; dia = dia.addDays(1)) {
        const int columna = (base::diaSemana(dia) - 1 - primerDia + 7) % 7;
        if (m.semanas.empty() || columna == 0)
            m.semanas.emplace_back();
        m.semanas.back()[size_t(columna)] = dia;
    }
    return m;
}

int primerDiaSemana(db::Connection &conexion)
{
    return leerDiaSemana(db::Config(conexion).texto(u"primerdiaagendaturnos"));
}

int leerDiaSemana(const QString &texto)
{
    const QString dia = texto.trimmed();
    bool esNumero = false;
    const int numero = dia.toInt(&esNumero);
    if (esNumero)
        return numero >= 0 && numero <= 6 ? numero : 0;
    for (int i = 0; i < 7 && dia.size() >= 3; ++i) {
        // "miercoles" and "sabado" are written without their accents too.
        const QString nombre = nombresDias().at(i);
        QString sinAcento = nombre;
        sinAcento.replace(u'é', u'e').replace(u'á', u'a');
        if (dia.startsWith(nombre, Qt::CaseInsensitive) || dia.startsWith(sinAcento, Qt::CaseInsensitive))
            return i;
    }
    return 0;
}

namespace {

std::set<QDate> dias(const db::Rows &filas)
{
    std::set<QDate> dias;
    for (int i = 0; i < filas->rowCount(); ++i)
        dias.insert(filas->dateTime(i, 0).date());
    return dias;
}

} // namespace

std::set<QDate> diasConTurnos(db::Connection &conexion, int doctor, QDate desde, QDate hasta)
{
    const db::Rows filas = conexion.query(
        QStringLiteral("SELECT Fecha FROM [Agenda Turnos] WHERE ")
            + conexion.dialect().dayRange(QStringLiteral("Fecha"), desde, hasta)
            + QStringLiteral(" And Doctor = ? And NroHC <> ? GROUP BY Fecha"),
        {doctor, nroBloqueado});
    return dias(filas);
}

std::set<QDate> diasConTurnosDeTodos(db::Connection &conexion, QDate desde, QDate hasta)
{
    return dias(conexion.query(
        QStringLiteral("SELECT Fecha FROM [Agenda Turnos] WHERE ")
            + conexion.dialect().dayRange(QStringLiteral("Fecha"), desde, hasta)
            + QStringLiteral(" And NroHC <> ? GROUP BY Fecha"),
        {nroBloqueado}));
}

} // namespace agenda
