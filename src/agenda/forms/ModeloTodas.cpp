#include "agenda/forms/ModeloTodas.h"

namespace agenda {

namespace {

QString textoCelda(const FilaDia &fila)
{
    switch (fila.clase) {
    case FilaDia::Clase::Libre: return {};
    case FilaDia::Clase::Bloqueado: return QStringLiteral("== NO SE ATIENDE ==");
    case FilaDia::Clase::Turno: break;
    }
    // Beside the colour, so that the states are told apart without it.
    const QString marca = fila.atendido ? QStringLiteral("✓✓ ") : fila.llegado ? QStringLiteral("✓ ") : QString();
    return marca + fila.paciente;
}

QString ayudaCelda(const AgendaDelDia &agenda, const FilaDia &fila)
{
    QStringList lineas{horaTexto(fila.hora) + QStringLiteral("  ") + agenda.nombre};
    const auto poner = [&](const QString &rotulo, const QString &texto) {
        if (!texto.trimmed().isEmpty())
            lineas << rotulo + texto.trimmed();
    };
    switch (fila.clase) {
    case FilaDia::Clase::Libre:
        lineas
            << (agenda.dia.noLaborable ? QStringLiteral("Libre, pero ese día no se atiende")
                                       : QStringLiteral("Libre: Enter asigna un turno"));
        break;
    case FilaDia::Clase::Bloqueado: lineas << QStringLiteral("No se atiende"); break;
    case FilaDia::Clase::Turno:
        poner(QString(), fila.paciente);
        poner(QString(), fila.telefono);
        poner(QStringLiteral("Cobertura: "), fila.cobertura);
        poner(QStringLiteral("Motivo: "), fila.motivo);
        poner(QStringLiteral("Saldo $ "), fila.saldo);
        lineas
            << (fila.atendido      ? QStringLiteral("Fue atendido")
                    : fila.llegado ? QStringLiteral("Llegó: está en la sala de espera")
                                   : QStringLiteral("Todavía no llegó"));
        if (!fila.deGrilla)
            lineas << QStringLiteral("Fuera de los horarios de la plantilla");
        if (fila.turnosDeLaHora > 1)
            lineas << QStringLiteral("Sobreturno: %1 turnos a esa hora").arg(fila.turnosDeLaHora);
        if (!fila.observaciones.trimmed().isEmpty())
            lineas << QStringLiteral("OBSERVACIONES DEL TURNO DE LA HORA ") + horaTexto(fila.hora)
                   << fila.observaciones.trimmed();
        break;
    }
    // What a patient wrote may look like markup.
    return QStringLiteral("<qt>") + lineas.join(u'\n').toHtmlEscaped().replace(u'\n', QStringLiteral("<br>"))
        + QStringLiteral("</qt>");
}

} // namespace

void ModeloTodas::setTodas(std::shared_ptr<const TodasAgendas> todas, const std::set<int> &ocultos)
{
    beginResetModel();
    m_todas = std::move(todas);
    m_agendas.clear();
    if (m_todas)
        for (const AgendaDelDia &agenda : m_todas->agendas)
            if (agenda.tieneAlgo() && ocultos.count(agenda.dia.doctor) == 0)
                m_agendas.push_back(&agenda);
    m_cuadro = armarCuadro(m_agendas);
    endResetModel();
}

const AgendaDelDia *ModeloTodas::agenda(int columna) const
{
    return columna >= 0 && columna < int(m_agendas.size()) ? m_agendas[size_t(columna)] : nullptr;
}

ModeloTodas::Lugar ModeloTodas::lugar(int renglon, int columna) const
{
    Lugar lugar;
    lugar.agenda = agenda(columna);
    if (!lugar.agenda || renglon < 0)
        return lugar;
    if (const CuadroDia::Celda *celda = m_cuadro.celda(columna, renglon)) {
        lugar.fila = &lugar.agenda->dia.filas[size_t(celda->fila)];
        lugar.alto = celda->alto;
    }
    return lugar;
}

int ModeloTodas::columnaDe(int doctor) const
{
    for (size_t i = 0; i < m_agendas.size(); ++i)
        if (m_agendas[i]->dia.doctor == doctor)
            return int(i);
    return -1;
}

int ModeloTodas::rowCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : int(m_cuadro.horas.size()); }

int ModeloTodas::columnCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : int(m_agendas.size()); }

Qt::ItemFlags ModeloTodas::flags(const QModelIndex &index) const
{
    const CuadroDia::Celda *celda = index.isValid() ? m_cuadro.celda(index.column(), index.row()) : nullptr;
    const bool propia = celda && celda->renglon == index.row();
    return propia ? Qt::ItemIsSelectable | Qt::ItemIsEnabled : Qt::NoItemFlags;
}

QVariant ModeloTodas::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const Lugar aqui = lugar(index.row(), index.column());
    if (!aqui.fila)
        return {};
    switch (role) {
    case Qt::DisplayRole: return textoCelda(*aqui.fila);
    case Qt::ToolTipRole: return ayudaCelda(*aqui.agenda, *aqui.fila);
    case Qt::AccessibleTextRole:
        return QStringLiteral("%1, %2: %3")
            .arg(
                aqui.agenda->nombre,
                horaTexto(aqui.fila->hora),
                aqui.libre() ? QStringLiteral("libre") : textoCelda(*aqui.fila));
    default: return {};
    }
}

QVariant ModeloTodas::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical) {
        if (role != Qt::DisplayRole || section < 0 || section >= rowCount())
            return {};
        const auto &horas = m_cuadro.horas;
        const bool repetida = section > 0 && horas[size_t(section) - 1] == horas[size_t(section)];
        return repetida ? QString() : horaTexto(horas[size_t(section)]);
    }
    const AgendaDelDia *suya = agenda(section);
    if (!suya)
        return {};
    switch (role) {
    case Qt::DisplayRole: return suya->nombre;
    case Resumen: return suya->resumen();
    case NoAtiende: return suya->dia.noLaborable;
    case Qt::ToolTipRole: return QString(suya->nombre + u'\n' + suya->resumen());
    default: return {};
    }
}

} // namespace agenda
