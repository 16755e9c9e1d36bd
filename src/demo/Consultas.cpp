#include "demo/Perfil.h"

#include <algorithm>

namespace demo {

namespace {

/// Rows of the classification for one kind of professional: id and text.
Catalogo diagnosticos(db::Connection &conexion, const QStringList &codigos)
{
    Catalogo lista;
    for (const QString &codigo : codigos) {
        const auto filas = conexion.query(
            QStringLiteral("SELECT id,iddiagnostico,diagnostico FROM [CIE10] WHERE nivel = ? ORDER BY iddiagnostico"),
            {codigo});
        for (int i = 0; i < std::min(4, filas->rowCount()); ++i)
            lista.emplace_back(
                int(filas->integer(i, 0)), filas->text(i, 1) + QStringLiteral(" - ") + filas->text(i, 2));
    }
    return lista;
}

const QString relatos[]
    = {QStringLiteral("Comenzó hace tres días. Sin fiebre. No se automedicó."),
       QStringLiteral("Refiere mejoría desde la última consulta."),
       QStringLiteral("Cuadro de una semana de evolución, con dolor que cede con analgésicos."),
       QStringLiteral("Asintomático. Viene a control y a mostrar estudios."),
       QStringLiteral("Dolor que aumenta con el esfuerzo y calma con el reposo."),
       QStringLiteral("Fiebre de 38,5 ºC las últimas 24 horas, con decaimiento."),
       QStringLiteral("Sin cambios. Cumple con la medicación indicada.")};

const QString observaciones[]
    = {QStringLiteral("Se explican pautas de alarma."),
       QStringLiteral("Se solicita traer carnet de vacunas."),
       QStringLiteral("Se entrega receta por dos meses."),
       QStringLiteral("Pendiente autorización de la cobertura.")};

const QString tratamientosMinimos[] = {
    QStringLiteral("Reposo relativo"), QStringLiteral("Abundante hidratación"), QStringLiteral("Paracetamol 500 mg")};

class Fichero
{
public:
    explicit Fichero(Practica &practica)
        : p(practica)
        , m_consulta(practica.lote.insertar(
              QStringLiteral("Consultas"),
              QStringLiteral("NroPaci iddoctor Fecha histoenferactu control controldias observaciones detallemotivo")))
        , m_item(practica.lote.insertar(
              QStringLiteral("Consultas Items"),
              QStringLiteral("NroPaci idconsulta tipoconsulta tipoitem iditem item cie10 fami")))
    {
        for (const Profesional &profesional : p.profesionales)
            m_diagnosticos.push_back(diagnosticos(p.conexion(), perfil(profesional.especialidad).diagnosticos));
        const Catalogo motivos
            = catalogo(p.conexion(), QStringLiteral("Lista Motivos Consulta"), QStringLiteral("Motivo"));
        for (const Profesional &profesional : p.profesionales)
            m_motivos.push_back(idsDe(motivos, perfil(profesional.especialidad).motivos));
        m_estudios = catalogo(p.conexion(), QStringLiteral("Lista Estudios"));
        for (const auto &[id, nombre] : catalogo(p.conexion(), QStringLiteral("Lista Tratamientos")))
            m_tratamientos << nombre;
        if (m_tratamientos.isEmpty())
            m_tratamientos = QStringList(std::begin(tratamientosMinimos), std::end(tratamientosMinimos));
    }

    void agregar(const Atencion &a)
    {
        Azar &azar = p.azar;
        const bool conControl = azar.porCiento(35), conObservacion = azar.porCiento(15);
        const int dias = azar.entre(1, 6) * 15;
        db::Params v;
        v << a.paciente << p.profesionales[size_t(a.profesional)].id << a.momento << azar.uno(relatos)
          << (conControl ? 0 : 1) << (conControl ? QVariant(dias) : QVariant());
        v << (conObservacion ? azar.uno(observaciones) : QString());
        const std::vector<int> &motivos = m_motivos[size_t(a.profesional)];
        v << (motivos.empty() ? QStringLiteral("Control") : QString());
        const qint64 consulta = p.lote.escribirConId(m_consulta, v);

        if (!motivos.empty())
            item(a, consulta, 1, azar.uno(motivos), {}, 0);
        const Catalogo &diagnostico = m_diagnosticos[size_t(a.profesional)];
        if (!diagnostico.empty() && azar.porCiento(85)) {
            const auto &[id, nombre] = azar.uno(diagnostico);
            item(a, consulta, 4, id, nombre, 1);
        }
        if (azar.porCiento(45))
            item(a, consulta, 3, 0, azar.uno(m_tratamientos), 0);
        if (!m_estudios.empty() && azar.porCiento(22))
            item(a, consulta, 5, azar.uno(m_estudios).first, {}, 0);

        QDate &ultima = p.paciente(a.paciente).ultimaConsulta;
        if (!ultima.isValid() || ultima < a.momento.date())
            ultima = a.momento.date();
    }

private:
    void item(const Atencion &a, qint64 consulta, int lista, int id, const QString &nombre, int cie10)
    {
        p.lote.escribir(m_item, {a.paciente, consulta, lista, 0, id, nombre, cie10, 0});
    }

    Practica &p;
    QString m_consulta;
    QString m_item;
    std::vector<Catalogo> m_diagnosticos; ///< by professional
    std::vector<std::vector<int>> m_motivos; ///< by professional
    Catalogo m_estudios;
    QStringList m_tratamientos;
};

// Before the agenda was kept here: any office hour of the last years.
Atencion anterior(Practica &p, QDate hasta)
{
    Azar &azar = p.azar;
    const int profesional = azar.entre(0, int(p.profesionales.size()) - 1);
    QDate dia = hasta.addDays(-azar.entre(1, 8 * 365));
    while (dia.dayOfWeek() > 5 || p.esFeriado(dia))
        dia = dia.addDays(-1);
    const int hora = azar.entre(8, 18), minuto = azar.entre(0, 2) * 20;
    const int quien = p.alguien(p.profesionales[size_t(profesional)].especialidad, dia);
    return {quien, profesional, QDateTime(dia, QTime(hora, minuto))};
}

} // namespace

void crearConsultas(Practica &p, const Avance &avance)
{
    if (p.pacientes.empty())
        return;
    const size_t total = size_t(p.medida.consultas), vistas = p.atenciones.size();
    const QDate primera = vistas > 0 ? p.atenciones.front().momento.date() : p.medida.hoy;
    std::vector<Atencion> consultas;
    consultas.reserve(total);
    for (size_t i = vistas; i < total; ++i)
        if (const Atencion a = anterior(p, primera); a.paciente != 0)
            consultas.push_back(a);
    std::stable_sort(
        consultas.begin(), consultas.end(), [](const Atencion &a, const Atencion &b) { return a.momento < b.momento; });
    // Of the visits in the agenda as many as are wanted, evenly, the latest one among them.
    const size_t delLibro = std::min(total, vistas);
    for (size_t i = 1; i <= delLibro; ++i)
        consultas.push_back(p.atenciones[i * vistas / delLibro - 1]);

    Fichero fichero(p);
    for (size_t i = 0; i < consultas.size(); ++i) {
        if (i % 5000 == 0)
            avance(int(100 * i / consultas.size()), QStringLiteral("Consultas"));
        fichero.agregar(consultas[i]);
    }
}

} // namespace demo
