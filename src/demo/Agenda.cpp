#include "agenda/Textos.h"
#include "demo/Perfil.h"

#include <algorithm>

namespace demo {

namespace {

constexpr int bloqueado = agenda::nroBloqueado;
constexpr int minutoDeHoy = 11 * 60; ///< how far the day that is shown has got
constexpr int diasFuturos = 75;

struct Reserva {
    QDate dia;
    int minuto = 0;
    int profesional = 0; ///< place in the list
    int nrohc = 0;
};

/// Which appointments there are: from the day that is shown forwards, ever fewer, then backwards until there are
/// enough.
class Reparto
{
public:
    explicit Reparto(Practica &practica)
        : p(practica)
    {
    }

    std::vector<Reserva> hacer()
    {
        const auto total = size_t(p.medida.turnos);
        m_reservas.reserve(total + 8);
        for (int d = 0; d <= diasFuturos && m_reservas.size() < total / 4; ++d)
            llenarDia(p.medida.hoy.addDays(d), std::max(5, 92 - d * 5 / 4), total);
        for (int d = 1; m_reservas.size() < total && d < 40 * 365; ++d)
            llenarDia(p.medida.hoy.addDays(-d), 87, total);
        std::stable_sort(m_reservas.begin(), m_reservas.end(), [](const Reserva &a, const Reserva &b) {
            return std::tie(a.dia, a.minuto, a.profesional) < std::tie(b.dia, b.minuto, b.profesional);
        });
        return std::move(m_reservas);
    }

private:
    void llenarDia(QDate dia, int ocupacion, size_t total)
    {
        const auto semana = size_t(dia.dayOfWeek() % 7);
        for (size_t i = 0; i < p.profesionales.size(); ++i) {
            const Profesional &profesional = p.profesionales[i];
            if (!p.atiende(profesional, dia))
                continue;
            for (const Turno &mitad : profesional.horas[semana])
                for (int minuto = mitad.desde; minuto < mitad.hasta; minuto += profesional.duracion)
                    llenarHora(dia, minuto, int(i), ocupacion, total);
        }
    }

    void llenarHora(QDate dia, int minuto, int profesional, int ocupacion, size_t total)
    {
        if (m_reservas.size() >= total)
            return;
        if (p.azar.porMil(12)) {
            m_reservas.push_back({dia, minuto, profesional, bloqueado});
            return;
        }
        if (!p.azar.porCiento(ocupacion))
            return;
        agregar(dia, minuto, profesional);
        // Overbooked: now and then at the same time, or between two times.
        if (p.azar.porMil(30) && m_reservas.size() < total)
            agregar(dia, minuto, profesional);
        if (p.azar.porMil(8) && m_reservas.size() < total)
            agregar(dia, minuto + 5, profesional);
    }

    void agregar(QDate dia, int minuto, int profesional)
    {
        const int nrohc = p.alguien(p.profesionales[size_t(profesional)].especialidad, dia);
        if (nrohc != 0)
            m_reservas.push_back({dia, minuto, profesional, nrohc});
    }

    Practica &p;
    std::vector<Reserva> m_reservas;
};

struct Estado {
    bool llegado = false;
    bool atendido = false;
};

Estado estado(Azar &azar, const Reserva &reserva, QDate hoy)
{
    if (reserva.nrohc == bloqueado || reserva.dia > hoy)
        return {};
    const int suerte = azar.entre(0, 99);
    if (reserva.dia == hoy && reserva.minuto > minutoDeHoy - 40) {
        // In the waiting room, or not yet there.
        return {.llegado = reserva.minuto <= minutoDeHoy + 30 && suerte < 70, .atendido = false};
    }
    return {.llegado = suerte < 91, .atendido = suerte < 88};
}

/// Somewhat before the hour, or just now.
QDateTime llegada(const Reserva &reserva, QDate hoy)
{
    int minuto = reserva.minuto - 2 - reserva.nrohc % 28;
    if (reserva.dia == hoy)
        minuto = std::min(minuto, minutoDeHoy - 1 - reserva.nrohc % 9);
    minuto = std::max(0, minuto);
    return {reserva.dia, QTime(minuto / 60, minuto % 60)};
}

class Libro
{
public:
    explicit Libro(Practica &practica)
        : p(practica)
        , m_turno(practica.lote.insertar(
              QStringLiteral("Agenda Turnos"),
              QStringLiteral("NroHC Fecha Doctor motivo llegado Atendido pagado idcaja observacionestur "
                             "fechahoraasignado usuarioasigtur fechahorallegada")))
        , m_caja(practica.lote.insertar(
              QStringLiteral("Caja"), QStringLiteral("fecha doctor detalle importe modopago detallepago")))
    {
        const QString tabla = QStringLiteral("Lista Motivos Consulta"), columna = QStringLiteral("Motivo");
        // A general list knows nothing of teeth.
        for (const QString &dental : perfil(Especialidad::Odontologia).motivos)
            (void)idDe(p.lote, tabla, dental, columna);
        const Catalogo todos = catalogo(p.conexion(), tabla, columna);
        for (const Profesional &profesional : p.profesionales)
            m_motivos.push_back(idsDe(todos, perfil(profesional.especialidad).motivos));
    }

    void anotar(const Reserva &r)
    {
        static const QString observaciones[]
            = {QStringLiteral("Trae estudios."),
               QStringLiteral("Avisar por teléfono si se desocupa antes."),
               QStringLiteral("Pide el último turno."),
               QStringLiteral("Primera vez."),
               QStringLiteral("Control posoperatorio."),
               QStringLiteral("Viene con silla de ruedas.")};
        Azar &azar = p.azar;
        const Profesional &profesional = p.profesionales[size_t(r.profesional)];
        const QDateTime momento(r.dia, QTime(r.minuto / 60, r.minuto % 60));
        const bool bloqueo = r.nrohc == bloqueado;
        const Estado suyo = estado(azar, r, p.medida.hoy);
        const qint64 pago = suyo.atendido ? cobrar(r, profesional) : 0;
        const std::vector<int> &motivos = m_motivos[size_t(r.profesional)];
        const int motivo = bloqueo || motivos.empty() || azar.porCiento(10) ? 0 : azar.uno(motivos);
        const bool conObservacion = !bloqueo && azar.porMil(60);

        db::Params v;
        v << r.nrohc << momento << profesional.id << motivo << suyo.llegado << suyo.atendido << (pago != 0) << pago;
        v << (conObservacion ? QVariant(azar.uno(observaciones)) : QVariant());
        // Asked for some days before, and before now.
        const QDate pedido = std::min(r.dia, p.medida.hoy).addDays(-azar.entre(1, 30));
        const int hora = azar.entre(8, 19), minuto = azar.entre(0, 59);
        v << (bloqueo ? QVariant() : QVariant(QDateTime(pedido, QTime(hora, minuto))))
          << (bloqueo ? QVariant() : QVariant(azar.porCiento(80) ? p.secretaria : profesional.nombre));
        v << (suyo.llegado ? QVariant(llegada(r, p.medida.hoy)) : QVariant());
        p.lote.escribir(m_turno, v);
        if (suyo.atendido)
            p.atenciones.push_back({r.nrohc, r.profesional, momento});
    }

    // Rent, supplies, services: what leaves the cash in a month.
    void gastosDelMes(QDate dia)
    {
        static const std::pair<QString, int> gastos[]
            = {{QStringLiteral("Alquiler del consultorio"), 380000},
               {QStringLiteral("Energía eléctrica"), 64000},
               {QStringLiteral("Artículos de librería"), 18500},
               {QStringLiteral("Insumos descartables"), 92000},
               {QStringLiteral("Internet y teléfono"), 41000},
               {QStringLiteral("Limpieza"), 75000}};
        for (const auto &[detalle, importe] : gastos) {
            const int dias = p.azar.entre(0, 9), redondo = importe + p.azar.entre(-30, 60) * 100;
            if (dia.addDays(dias) <= p.medida.hoy)
                p.lote.escribir(
                    m_caja,
                    {dia.addDays(dias), p.profesionales.front().id, detalle, -double(redondo), 0, QVariant(QString())});
        }
    }

private:
    // Those without coverage pay at the desk.
    qint64 cobrar(const Reserva &r, const Profesional &profesional)
    {
        if (p.paciente(r.nrohc).cobertura != 0 || !p.azar.porCiento(85))
            return 0;
        const int forma = p.azar.entre(0, 9) < 7 ? 0 : 1;
        const double importe = 12000 + p.azar.entre(0, 16) * 500;
        return p.lote.escribirConId(
            m_caja,
            {r.dia,
             profesional.id,
             QStringLiteral("Consulta, paciente Nº %1").arg(r.nrohc),
             importe,
             forma,
             forma == 1 ? QStringLiteral("Débito") : QString()});
    }

    Practica &p;
    QString m_turno;
    QString m_caja;
    std::vector<std::vector<int>> m_motivos; ///< by professional
};

} // namespace

void crearAgenda(Practica &p, const Avance &avance)
{
    if (p.pacientes.empty())
        return;
    const std::vector<Reserva> reservas = Reparto(p).hacer();
    Libro libro(p);
    QDate mes;
    for (size_t i = 0; i < reservas.size(); ++i) {
        if (i % 5000 == 0)
            avance(int(100 * i / reservas.size()), QStringLiteral("Agenda de turnos"));
        const QDate primero(reservas[i].dia.year(), reservas[i].dia.month(), 1);
        if (primero != mes) {
            mes = primero;
            if (mes <= p.medida.hoy)
                libro.gastosDelMes(mes);
        }
        libro.anotar(reservas[i]);
    }
}

} // namespace demo
