#include "base/Fechas.h"
#include "demo/Practica.h"

#include <algorithm>

namespace demo {

namespace {

struct Accion {
    const char16_t *ventana;
    const char16_t *texto; ///< %1: an hour of that day
};

// What a day at the desk leaves in the log, and how often.
const std::vector<std::pair<Accion, int>> &accionesUsuales()
{
    static const std::vector<std::pair<Accion, int>> todas{
        {{u"Menú General", u"Se ingresó a la ventana Agendas."}, 40},
        {{u"Menú General", u"Se ingresó a la ventana Elección del Paciente."}, 30},
        {{u"Menú General", u"Se ingresó a la ventana Caja."}, 8},
        {{u"Menú General", u"Se ingresó a la ventana Ordenes de los Pacientes."}, 6},
        {{u"Menú General", u"Se ingresó a la ventana Listado de Pacientes."}, 4},
        {{u"Menú General", u"Se ingresó a la ventana Recursos Adicionales."}, 1},
        {{u"Menú General", u"Se ingresó a la ventana Mantenimiento del Sistema."}, 1},
        {{u"Agenda de Turnos", u"Eliminación de turnos. (Fecha/Hora Turno/s: %1)"}, 12},
        {{u"Sistema General", u"Se ingresó al sistema."}, 3},
        {{u"Sistema General", u"Se cerró el sistema."}, 3}};
    return todas;
}

const QStringList &equipos()
{
    static const QStringList todos{
        QStringLiteral("RECEPCION"), QStringLiteral("CONSULTORIO-1"), QStringLiteral("CONSULTORIO-2")};
    return todos;
}

} // namespace

void crearHistorial(Practica &practica)
{
    // Of a small practice the last weeks, of a large one the last years.
    const int porDia = std::max(30, practica.medida.acciones / 1000);
    std::vector<int> usuarios;
    const auto secretaria = practica.conexion().query(
        QStringLiteral("SELECT id FROM [Lista Doctores] WHERE NomDoc = ?"), {practica.secretaria});
    // Most of it is the secretary's.
    if (secretaria->rowCount() > 0)
        usuarios.assign(practica.profesionales.size(), int(secretaria->integer(0, 0)));
    for (const Profesional &profesional : practica.profesionales)
        usuarios.push_back(profesional.id);

    const QString sql
        = practica.lote.insertar(QStringLiteral("Historial"), QStringLiteral("fecha equipo iddoctor ventana accion"));
    std::vector<QDate> dias;
    QDate dia = practica.medida.hoy;
    for (int quedan = practica.medida.acciones; quedan > 0; quedan -= porDia) {
        do
            dia = dia.addDays(-1);
        while (dia.dayOfWeek() == Qt::Sunday || practica.esFeriado(dia));
        dias.push_back(dia);
    }
    std::reverse(dias.begin(), dias.end());
    for (size_t i = 0; i < dias.size(); ++i) {
        // The first day takes what is over.
        const int cuantas = i == 0 ? practica.medida.acciones - porDia * (int(dias.size()) - 1) : porDia;
        for (int n = 0; n < cuantas; ++n) {
            const QDateTime momento(dias[i], QTime(8, 0).addSecs(n * 12 * 3600 / porDia / 60 * 60));
            const Accion &accion = practica.azar.pesado(accionesUsuales());
            QString texto = QString::fromUtf16(accion.texto);
            if (texto.contains(QLatin1String("%1")))
                texto = texto.arg(base::fechaHoraTexto(
                    {dias[i].addDays(practica.azar.entre(1, 20)), QTime(practica.azar.entre(8, 18), 20)}));
            const int usuario = practica.azar.uno(usuarios);
            practica.lote.escribir(
                sql,
                {momento,
                 equipos()[usuario == usuarios.front() ? 0 : practica.azar.entre(1, 2)],
                 usuario,
                 QString::fromUtf16(accion.ventana),
                 texto});
        }
    }
}

} // namespace demo
