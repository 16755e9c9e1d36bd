#include "agenda/SalaEspera.h"

#include "agenda/GrillaDia.h"
#include "agenda/Textos.h"
#include "db/Connection.h"

#include <algorithm>
#include <tuple>

namespace agenda {

std::optional<int> EnEspera::minutos(const QDateTime &ahora) const
{
    if (!llegada.isValid() || llegada.date() != ahora.date())
        return std::nullopt;
    return int(std::max<qint64>(0, llegada.secsTo(ahora) / 60));
}

QString EnEspera::espera(const QDateTime &ahora) const
{
    const auto cuanto = minutos(ahora);
    if (!cuanto)
        return QStringLiteral("—");
    if (*cuanto < 60)
        return QStringLiteral("%1 min").arg(*cuanto);
    return QStringLiteral("%1 h %2 min").arg(*cuanto / 60).arg(*cuanto % 60, 2, 10, QChar(u'0'));
}

std::vector<EnEspera> cargarSala(db::Connection &conexion, QDate fecha)
{
    const db::Dialect &d = conexion.dialect();
    const QString paciente = d.concat({QStringLiteral("Apellido"), QStringLiteral("', '"), QStringLiteral("Nombres")});
    const db::Rows filas = conexion.query(
        QStringLiteral("SELECT id,NroHC,Fecha,Doctor,fechahorallegada,"
                       "(SELECT %1 FROM [Pacientes] WHERE [Pacientes].NroHC = [Agenda Turnos].NroHC) AS Paciente,"
                       "(SELECT NomDoc FROM [Lista Doctores] WHERE [Lista Doctores].id = [Agenda Turnos].Doctor)"
                       " AS profesional FROM [Agenda Turnos] WHERE %2 And llegado <> 0 And Atendido = 0"
                       " And NroHC <> ? ORDER BY Fecha,id")
            .arg(paciente, d.dayRange(QStringLiteral("Fecha"), fecha, fecha)),
        {nroBloqueado});
    std::vector<EnEspera> sala;
    sala.reserve(size_t(filas->rowCount()));
    for (int i = 0; i < filas->rowCount(); ++i) {
        EnEspera &uno = sala.emplace_back();
        uno.id = filas->integer(i, 0);
        uno.nrohc = int(filas->integer(i, 1));
        uno.hora = alMinuto(filas->dateTime(i, 2).time());
        uno.doctor = int(filas->integer(i, 3));
        // Of another day: the appointment was moved after he had come, or the column holds the server's "no date".
        if (const QDateTime llegada = filas->dateTime(i, 4); llegada.date() == fecha)
            uno.llegada = llegada;
        uno.paciente = filas->isNull(i, 5) ? textoPacienteEliminado : filas->text(i, 5).trimmed();
        uno.profesional = filas->text(i, 6);
    }
    std::stable_sort(sala.begin(), sala.end(), [](const EnEspera &a, const EnEspera &b) {
        if (a.llegada.isValid() != b.llegada.isValid())
            return a.llegada.isValid();
        return a.llegada.isValid() && a.llegada < b.llegada;
    });
    return sala;
}

} // namespace agenda
