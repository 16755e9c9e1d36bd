#pragma once

#include "agenda/GrillaDia.h"
#include "db/Config.h"
#include "db/Recordset.h"
#include "support/BaseDePrueba.h"

/// A practice with a professional, some patients and what the agenda's tests put into its tables.
class Consultorio : public soporte::BaseDePrueba
{
public:
    using BaseDePrueba::BaseDePrueba;

    /// Monday; the clock stands on the Sunday before.
    static QDate lunes() { return {2026, 11, 23}; }
    static QDateTime a(const char *hora) { return a(lunes(), hora); }
    static QDateTime a(QDate fecha, const char *hora)
    {
        return {fecha, QTime::fromString(QLatin1String(hora), QStringLiteral("HH:mm"))};
    }

    qint64 fila(const QString &tabla, const QVariantMap &valores)
    {
        db::Recordset rs(conexion(), QStringLiteral("SELECT * FROM [%1] WHERE id = 0").arg(tabla));
        rs.addNew();
        for (auto it = valores.begin(); it != valores.end(); ++it)
            rs.set(it.key(), it.value());
        return rs.update();
    }

    void paciente(int nrohc, const QString &apellido, const QString &nombres, const QVariantMap &otros = {})
    {
        QVariantMap valores{{"NroHC", nrohc}, {"Apellido", apellido}, {"Nombres", nombres}};
        valores.insert(otros);
        fila(QStringLiteral("Pacientes"), valores);
    }

    qint64 turno(int nrohc, const QDateTime &fecha, const QVariantMap &otros = {})
    {
        QVariantMap valores{{"NroHC", nrohc}, {"Fecha", fecha}, {"Doctor", usuario}};
        valores.insert(otros);
        return fila(QStringLiteral("Agenda Turnos"), valores);
    }

    /// 2026 whole; every weekday with the same hours.
    int plantilla(const agenda::Jornada &jornada, const agenda::AjustesSobreturno &ajustes = {})
    {
        agenda::Plantilla p;
        p.iddoctor = usuario;
        p.dias.fill(jornada);
        p.sobreturnos = ajustes;
        const auto id
            = agenda::guardarPlantilla(conexion(), p, QStringLiteral("1/1/2026"), QStringLiteral("31/12/2026"));
        return id ? *id : 0;
    }

    /// 09:00 to 11:00, every 20 minutes.
    static agenda::Jornada maniana() { return {QTime(9, 0), QTime(11, 0), {}, {}, 20}; }

    int cuenta(const char *condicion = "id <> 0")
    {
        const QString sql = QStringLiteral("SELECT id FROM [Agenda Turnos] WHERE ") + QLatin1String(condicion);
        return conexion().query(sql)->rowCount();
    }

    void configurar(const char *columna, const QVariant &dato)
    {
        db::Config(conexion()).guardar(QString::fromLatin1(columna), dato);
    }

    void quitarDerecho(const char *derecho)
    {
        conexion().execute(
            QStringLiteral("UPDATE [Lista Doctores] SET [%1] = 0 WHERE id = ?").arg(QLatin1String(derecho)), {usuario});
    }
};

inline const QString sinPermiso = QStringLiteral(
    "No tiene permiso para ejecutar esta acción. Consulte con el Administrador del sistema para definir"
    " sus permisos de accesos.");
inline const QString yaNoExiste
    = QStringLiteral("Este Registro ya No existe, debe haber sido eliminado por otro usuario.");
