#include "agenda/TurnosListados.h"

#include "agenda/GrillaDia.h"
#include "agenda/Textos.h"
#include "db/Connection.h"

#include <QLocale>

namespace agenda {

namespace {

enum Columna {
    ColId,
    ColNroHC,
    ColDoctor,
    ColFecha,
    ColAsignado,
    ColAtendido,
    ColObservaciones,
    ColMedico,
    ColApellido,
    ColNombres,
    ColTel,
    ColCelular,
    ColAfiliado,
    ColCobertura,
    ColMotivo,
    ColImporte,
    ColPresente ///< the patient's own number, Null when the row is gone
};

/// A column of the row of another table that an appointment names.
QString ajena(const QString &expresion, const QString &tabla, const QString &clave, const QString &suya)
{
    return QStringLiteral("(SELECT %1 FROM [%2] WHERE [%2].%3 = %4)").arg(expresion, tabla, clave, suya);
}

QString delPaciente(const QString &columna)
{
    return ajena(
        columna, QStringLiteral("Pacientes"), QStringLiteral("NroHC"), QStringLiteral("[Agenda Turnos].NroHC"));
}

QString consulta(const db::Dialect &d, int doctor, QDate desde, QDate hasta)
{
    const QString id = QStringLiteral("id");
    const QStringList columnas{
        id,
        QStringLiteral("NroHC"),
        QStringLiteral("Doctor"),
        QStringLiteral("Fecha"),
        QStringLiteral("fechahoraasignado"),
        QStringLiteral("Atendido"),
        QStringLiteral("observacionestur"),
        ajena(QStringLiteral("NomDoc"), QStringLiteral("Lista Doctores"), id, QStringLiteral("[Agenda Turnos].Doctor")),
        delPaciente(QStringLiteral("Apellido")),
        delPaciente(QStringLiteral("Nombres")),
        delPaciente(QStringLiteral("Tel")),
        delPaciente(QStringLiteral("TelCelular")),
        delPaciente(QStringLiteral("NroOS")),
        ajena(
            QStringLiteral("nombre"),
            QStringLiteral("Lista Coberturas"),
            id,
            delPaciente(QStringLiteral("idcobertura"))),
        ajena(
            QStringLiteral("Motivo"),
            QStringLiteral("Lista Motivos Consulta"),
            id,
            QStringLiteral("[Agenda Turnos].motivo")),
        d.formatMoney(
            ajena(QStringLiteral("importe"), QStringLiteral("Caja"), id, QStringLiteral("[Agenda Turnos].idcaja"))),
        delPaciente(QStringLiteral("NroHC"))};
    // An expression needs a name of its own to be read back under.
    QStringList nombradas;
    for (int i = 0; i < columnas.size(); ++i)
        nombradas << (i < ColMedico ? columnas[i] : columnas[i] + QStringLiteral(" AS c%1").arg(i));
    QString sql = QStringLiteral("SELECT ") + nombradas.join(u',') + QStringLiteral(" FROM [Agenda Turnos] WHERE ")
        + d.dayRange(QStringLiteral("Fecha"), desde, hasta);
    if (doctor != 0)
        sql += QStringLiteral(" And Doctor = ?");
    return sql + QStringLiteral(" ORDER BY Fecha,Doctor,id");
}

} // namespace

QString TurnoListado::paciente() const
{
    if (bloqueado)
        return QStringLiteral("No se atiende");
    if (pacienteEliminado)
        return textoPacienteEliminado;
    return nombres.isEmpty() ? apellido : apellido + QStringLiteral(", ") + nombres;
}

QString TurnoListado::telefonos() const
{
    QStringList partes;
    if (!tel.isEmpty())
        partes << QStringLiteral("Tel. ") + tel;
    if (!celular.isEmpty())
        partes << QStringLiteral("Cel. ") + celular;
    return partes.join(QStringLiteral(" / "));
}

std::vector<TurnoListado> listarTurnos(db::Connection &conexion, int doctor, QDate desde, QDate hasta)
{
    const db::Rows filas = conexion.query(
        consulta(conexion.dialect(), doctor, desde, hasta), doctor != 0 ? db::Params{doctor} : db::Params{});
    std::vector<TurnoListado> turnos;
    turnos.reserve(size_t(filas->rowCount()));
    for (int i = 0; i < filas->rowCount(); ++i) {
        const auto texto = [&](Columna columna) { return filas->text(i, columna).trimmed(); };
        TurnoListado t;
        t.id = filas->integer(i, ColId);
        t.nrohc = int(filas->integer(i, ColNroHC));
        t.doctor = int(filas->integer(i, ColDoctor));
        const QDateTime momento = filas->dateTime(i, ColFecha);
        t.momento = QDateTime(momento.date(), alMinuto(momento.time()));
        t.asignado = filas->dateTime(i, ColAsignado);
        t.bloqueado = t.nrohc == nroBloqueado;
        t.pacienteEliminado = !t.bloqueado && filas->isNull(i, ColPresente);
        t.atendido = filas->flag(i, ColAtendido);
        t.medico = texto(ColMedico);
        t.apellido = texto(ColApellido);
        t.nombres = texto(ColNombres);
        t.tel = texto(ColTel);
        t.celular = texto(ColCelular);
        t.afiliado = texto(ColAfiliado);
        t.cobertura = texto(ColCobertura);
        t.motivo = texto(ColMotivo);
        t.importe = texto(ColImporte);
        t.observaciones = texto(ColObservaciones);
        turnos.push_back(std::move(t));
    }
    return turnos;
}

QString nombreProfesional(db::Connection &conexion, int doctor)
{
    const db::Rows filas = conexion.query(QStringLiteral("SELECT NomDoc FROM [Lista Doctores] WHERE id = ?"), {doctor});
    const QString nombre = filas->rowCount() > 0 ? filas->text(0, 0).trimmed() : QString();
    return nombre.isEmpty() ? textoSinProfesional : nombre;
}

QString fechaLarga(QDate fecha)
{
    static const QLocale castellano(QLocale::Spanish, QLocale::Argentina);
    QString texto = castellano.toString(fecha, QStringLiteral("dddd d 'de' MMMM 'de' yyyy"));
    if (!texto.isEmpty())
        texto[0] = texto.at(0).toUpper();
    return texto;
}

} // namespace agenda
