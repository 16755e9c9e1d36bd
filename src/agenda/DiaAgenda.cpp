#include "agenda/DiaAgenda.h"

#include "agenda/DiasNoLaborables.h"
#include "agenda/LecturaDia.h"
#include "agenda/Textos.h"
#include "db/Config.h"

#include <algorithm>
#include <map>

namespace agenda {

namespace {

enum Columna {
    ColId,
    ColNroHC,
    ColFecha,
    ColObservaciones,
    ColPaciente,
    ColTel,
    ColTelCelular,
    ColCobertura,
    ColMotivo,
    ColImporte,
    ColSaldo,
    ColLlegado,
    ColAtendido,
    ColDoctor
};

/// A column of the appointment's patient.
QString delPaciente(const QString &expresion)
{
    return QStringLiteral("(SELECT ") + expresion
        + QStringLiteral(" FROM [Pacientes] WHERE [Pacientes].NroHC = [Agenda Turnos].NroHC)");
}

/// What the patient owes: cost of the orders less what the patient paid.
QString saldo(const db::Dialect &d, const QString &desdeFecha)
{
    const QString costo = QStringLiteral("(SELECT SUM(costo) FROM [Pacientes Ordenes]"
                                         " WHERE [Pacientes Ordenes].NroPaci = [Agenda Turnos].NroHC")
        + desdeFecha + u')';
    const QString pagado = QStringLiteral("(SELECT SUM(importe) FROM [Pacientes Pagos]"
                                          " WHERE [Pacientes Pagos].NroPaci = [Agenda Turnos].NroHC and quien = 'P'")
        + desdeFecha + u')';
    return d.formatMoney(
        d.ifNull(costo, QStringLiteral("0")) + QStringLiteral(" - ") + d.ifNull(pagado, QStringLiteral("0")));
}

/// The appointments of a day that meet `condicion` (" And ...", or empty for everybody's).
QString consultaDia(const db::Dialect &d, QDate fecha, bool soloAnioActual, QDate hoy, const QString &condicion)
{
    const QString desde
        = soloAnioActual ? QStringLiteral(" and fecha >= ") + d.dayStart(QDate(hoy.year(), 1, 1)) : QString();
    const QStringList columnas{
        QStringLiteral("id"),
        QStringLiteral("NroHC"),
        QStringLiteral("Fecha"),
        QStringLiteral("observacionestur"),
        delPaciente(d.concat({QStringLiteral("Apellido"), QStringLiteral("', '"), QStringLiteral("Nombres")}))
            + QStringLiteral(" AS Paciente"),
        delPaciente(QStringLiteral("Tel")) + QStringLiteral(" AS Tel"),
        delPaciente(QStringLiteral("TelCelular")) + QStringLiteral(" AS TelCelular"),
        QStringLiteral("(SELECT nombre FROM [Lista Coberturas] WHERE [Lista Coberturas].id = ")
            + delPaciente(QStringLiteral("idcobertura")) + QStringLiteral(") AS nomcobertura"),
        QStringLiteral("(SELECT Motivo FROM [Lista Motivos Consulta]"
                       " WHERE [Lista Motivos Consulta].id = [Agenda Turnos].motivo) AS moticonsul"),
        d.formatMoney(QStringLiteral("(SELECT importe FROM [Caja] WHERE [Caja].id = [Agenda Turnos].idcaja)"))
            + QStringLiteral(" AS importecaja"),
        saldo(d, desde) + QStringLiteral(" AS saldo"),
        QStringLiteral("llegado"),
        QStringLiteral("Atendido"),
        QStringLiteral("Doctor"),
    };
    return QStringLiteral("SELECT ") + columnas.join(u',') + QStringLiteral(" FROM [Agenda Turnos] WHERE ")
        + d.dayRange(QStringLiteral("Fecha"), fecha, fecha) + condicion + QStringLiteral(" ORDER BY id");
}

QString textoTelefonos(const QString &tel, const QString &celular)
{
    if (tel.isEmpty())
        return celular.isEmpty() ? QString() : QStringLiteral("    Cel. ") + celular;
    const QString texto = QStringLiteral("    Tel. ") + tel;
    return celular.isEmpty() ? texto : texto + QStringLiteral("  /  Cel. ") + celular;
}

void rellenarBloqueada(FilaDia &fila)
{
    const QString corta = QStringLiteral("---------------------");
    fila.paciente = QStringLiteral("========= NO SE ATIENDE ==========");
    fila.cobertura = corta;
    fila.telefono = QStringLiteral("-----------------------------------------");
    fila.motivo = corta;
    fila.importe = corta;
    fila.saldo = corta;
    fila.observaciones = QStringLiteral("-----------------------------------------");
}

FilaDia leerFila(const db::ResultSet &filas, int i)
{
    FilaDia fila;
    fila.id = filas.integer(i, ColId);
    fila.nrohc = int(filas.integer(i, ColNroHC));
    fila.hora = alMinuto(filas.dateTime(i, ColFecha).time());
    fila.llegado = filas.flag(i, ColLlegado);
    fila.atendido = filas.flag(i, ColAtendido);
    if (fila.nrohc == nroBloqueado) {
        fila.clase = FilaDia::Clase::Bloqueado;
        rellenarBloqueada(fila);
        return fila;
    }
    fila.clase = FilaDia::Clase::Turno;
    fila.pacienteEliminado = filas.isNull(i, ColPaciente);
    fila.paciente = fila.pacienteEliminado ? textoPacienteEliminado : filas.text(i, ColPaciente).trimmed();
    fila.cobertura = filas.text(i, ColCobertura);
    fila.telefono = textoTelefonos(filas.text(i, ColTel).trimmed(), filas.text(i, ColTelCelular).trimmed());
    fila.motivo = filas.text(i, ColMotivo);
    fila.importe = filas.text(i, ColImporte);
    fila.saldo = filas.text(i, ColSaldo);
    fila.observaciones = filas.text(i, ColObservaciones);
    return fila;
}

} // namespace

qint64 FilaDia::clave() const { return id != 0 ? id : -1 - qint64(hora.msecsSinceStartOfDay() / 60000); }

QStringList FilaDia::textos() const
{
    QString siLlego, siAtendido;
    if (clase == Clase::Bloqueado) {
        siLlego = siAtendido = QStringLiteral("---");
    } else if (clase == Clase::Turno) {
        siLlego = llegado ? QStringLiteral("SI") : QStringLiteral("NO");
        siAtendido = atendido ? QStringLiteral("SI") : QStringLiteral("NO");
    }
    return {horaTexto(hora), paciente, cobertura, telefono, motivo, importe, saldo, siLlego, siAtendido, observaciones};
}

Tono DiaAgenda::tono(const FilaDia &fila, const QDateTime &ahora) const
{
    if (fila.atendido)
        return Tono::Atendido;
    if (ajustes.sobreturnoshoraresaltar && fila.clase == FilaDia::Clase::Turno && fila.turnosDeLaHora > 1)
        return Tono::Sobreturno;
    if (fila.clase == FilaDia::Clase::Libre && momento(fila) < ahora)
        return Tono::Pasado;
    return Tono::Ninguno;
}

std::vector<HoraOcupada> DiaAgenda::ocupacion() const
{
    std::vector<HoraOcupada> horas;
    horas.reserve(size_t(grilla.cantidad()));
    for (const QTime &hora : grilla.horas()) {
        bool bloqueado = false;
        int cuenta = 0;
        for (const FilaDia &fila : filas) {
            if (fila.hora != hora)
                continue;
            bloqueado = bloqueado || fila.clase == FilaDia::Clase::Bloqueado;
            cuenta += fila.clase == FilaDia::Clase::Turno;
        }
        horas.push_back({hora, horaTexto(hora) + textoOcupacion(bloqueado, cuenta)});
    }
    return horas;
}

QStringList DiaAgenda::resumen() const
{
    QStringList lineas;
    if (!hayPlantilla)
        lineas << QStringLiteral("  No hay plantilla");
    for (const HoraOcupada &hora : ocupacion())
        lineas << hora.texto;
    lineas << QStringLiteral("  >>>>> TOTAL: %1  de turnos.").arg(turnos);
    return lineas;
}

QString textoOcupacion(bool bloqueado, int turnos)
{
    if (bloqueado)
        return QStringLiteral("  ========");
    if (turnos > 1)
        return QStringLiteral("  Ocupado !!");
    return turnos == 1 ? QStringLiteral("  Ocupado") : QString();
}

DiaAgenda cargarDia(db::Connection &conexion, int doctor, QDate fecha, QDate hoy)
{
    DiaAgenda dia;
    dia.doctor = doctor;
    dia.fecha = fecha;
    const auto plantilla = elegirPlantilla(conexion, doctor, fecha);
    dia.hayPlantilla = plantilla.has_value();
    dia.grilla = grillaDe(plantilla, fecha);
    if (plantilla)
        dia.ajustes = plantilla->sobreturnos;

    const bool soloAnioActual = db::Config(conexion).bandera(u"versaldoanioactual");
    const db::Rows filas = conexion.query(
        consultaDia(conexion.dialect(), fecha, soloAnioActual, hoy, QStringLiteral(" And Doctor = ?")), {doctor});
    std::vector<FilaDia> leidas;
    leidas.reserve(size_t(filas->rowCount()));
    for (int i = 0; i < filas->rowCount(); ++i)
        leidas.push_back(leerFila(*filas, i));
    acomodar(dia, std::move(leidas));
    dia.noLaborable = esNoLaborable(conexion, doctor, fecha);
    return dia;
}

std::map<int, std::vector<FilaDia>> leerTurnosDeTodos(db::Connection &conexion, QDate fecha, QDate hoy)
{
    const bool soloAnioActual = db::Config(conexion).bandera(u"versaldoanioactual");
    const db::Rows filas = conexion.query(consultaDia(conexion.dialect(), fecha, soloAnioActual, hoy, QString()));
    std::map<int, std::vector<FilaDia>> porDoctor;
    for (int i = 0; i < filas->rowCount(); ++i)
        porDoctor[int(filas->integer(i, ColDoctor))].push_back(leerFila(*filas, i));
    return porDoctor;
}

void acomodar(DiaAgenda &dia, std::vector<FilaDia> leidas)
{
    // Appointments outside the slots are rows of their own between them; overlapping halves of the day name a start
    // time twice, which is shown once.
    std::map<QTime, std::vector<FilaDia>> porHora;
    for (const QTime &hora : dia.grilla.horas())
        porHora[hora];
    for (FilaDia &fila : leidas) {
        dia.turnos += fila.clase == FilaDia::Clase::Turno;
        porHora[fila.hora].push_back(std::move(fila));
    }
    dia.filas.reserve(leidas.size() + size_t(dia.grilla.cantidad()));
    for (auto &[hora, suyas] : porHora) {
        const bool deGrilla = dia.grilla.contiene(hora);
        const auto cuenta = std::count_if(
            suyas.begin(), suyas.end(), [](const FilaDia &f) { return f.clase == FilaDia::Clase::Turno; });
        if (suyas.empty())
            suyas.emplace_back().hora = hora;
        for (FilaDia &fila : suyas) {
            fila.deGrilla = deGrilla;
            fila.turnosDeLaHora = int(cuenta);
            dia.filas.push_back(std::move(fila));
        }
    }
}

void quitarFilaTemporal(db::Connection &conexion)
{
    // Looked for first: a statement that changes nothing would still make the other stations wait for the file.
    if (conexion.query(QStringLiteral("SELECT id FROM [Agenda Turnos] WHERE id = -99"))->rowCount() > 0)
        conexion.execute(QStringLiteral("DELETE FROM [Agenda Turnos] WHERE id = -99"));
}

} // namespace agenda
