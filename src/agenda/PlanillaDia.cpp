#include "agenda/PlanillaDia.h"

#include "agenda/TurnosListados.h"
#include "base/Clock.h"
#include "base/Csv.h"
#include "base/Fechas.h"
#include "db/Config.h"
#include "db/Entorno.h"
#include "db/Recordset.h"
#include "printing/AnchosTabla.h"
#include "printing/Armar.h"
#include "texto/TextoRico.h"

#include <QHash>

#include <set>

namespace agenda {

namespace {

constexpr int soloHorariosConTurno = 1; ///< value of `imprimirturnos`

/// A line of dashes fills a cell of the screen; on paper it would only make its column wide.
QString paraPapel(const QString &celda)
{
    const QString texto = celda.simplified();
    return texto.size() > 3 && texto.count(u'-') == texto.size() ? QStringLiteral("---") : texto;
}

/// A telephone in two lines is misread: its blanks do not break. A longer text has remarks in it, which may.
QString sinPartir(QString texto)
{
    constexpr qsizetype masLargo = 35;
    return texto.size() <= masLargo ? texto.replace(u' ', QChar::Nbsp) : texto;
}

QString telefonosParaPapel(const QString &celda)
{
    QStringList renglones;
    for (const QString &uno : paraPapel(celda).replace(QLatin1String(" / Cel."), QLatin1String("\nCel.")).split(u'\n'))
        renglones << sinPartir(uno);
    return renglones.join(u'\n');
}

QString datosProfesional(db::Connection &conexion, int doctor)
{
    const db::Recordset fila(
        conexion, QStringLiteral("SELECT Especialidad,Matricula FROM [Lista Doctores] WHERE id = ?"), {doctor});
    if (fila.isEmpty())
        return {};
    QStringList partes{fila.text(u"Especialidad").trimmed()};
    if (const QString matricula = fila.text(u"Matricula").trimmed(); !matricula.isEmpty())
        partes << QStringLiteral("Matrícula ") + matricula;
    partes.removeAll(QString());
    return partes.join(QStringLiteral(" — "));
}

printing::Tabla
tablaDe(const DiaAgenda &dia, const std::vector<const FilaDia *> &filas, const QHash<qint64, QString> &afiliados)
{
    printing::Tabla tabla;
    tabla.columnas
        = {{QStringLiteral("Hora"), Qt::AlignHCenter},
           {QStringLiteral("Paciente")},
           {QStringLiteral("Cobertura / Nº Afiliado")},
           {QStringLiteral("Teléfonos")},
           {QStringLiteral("Motivo")},
           {QStringLiteral("Observaciones")},
           {QStringLiteral("Llegó"), Qt::AlignHCenter}};
    for (const FilaDia *fila : filas) {
        const QStringList textos = fila->textos();
        QString cobertura = paraPapel(fila->cobertura);
        if (const QString afiliado = afiliados.value(fila->id); !afiliado.isEmpty())
            cobertura += (cobertura.isEmpty() ? QString() : QStringLiteral("\n")) + QStringLiteral("Nº ") + afiliado;
        tabla.filas.append(
            {{textos.at(0),
              fila->clase == FilaDia::Clase::Bloqueado ? sinPartir(fila->paciente) : fila->paciente,
              cobertura,
              telefonosParaPapel(fila->telefono),
              paraPapel(fila->motivo),
              fila->clase == FilaDia::Clase::Bloqueado ? QString() : fila->observaciones.trimmed(),
              textos.at(7)}});
    }
    tabla.filas.append(
        {{QString(),
          dia.turnos == 1 ? QStringLiteral("TOTAL: 1 turno.") : QStringLiteral("TOTAL: %1 turnos.").arg(dia.turnos)},
         printing::Fila::Clase::Total});
    return tabla;
}

} // namespace

std::vector<const FilaDia *> filasDePlanilla(const DiaAgenda &dia, bool soloConTurno)
{
    std::vector<const FilaDia *> filas;
    std::set<QTime> yaRegular;
    for (const FilaDia &fila : dia.filas) {
        const bool turno = fila.clase == FilaDia::Clase::Turno;
        if (soloConTurno && !turno)
            continue;
        const bool regular = turno && fila.deGrilla && yaRegular.insert(fila.hora).second;
        if (regular && dia.ajustes.solosobreturnoshoraplanilla && fila.turnosDeLaHora > 1)
            continue;
        filas.push_back(&fila);
    }
    return filas;
}

printing::Documento planillaDia(db::Entorno &entorno, int doctor, QDate fecha)
{
    db::Connection &conexion = entorno.conexion();
    const db::Config config(conexion);
    const DiaAgenda dia = cargarDia(conexion, doctor, fecha, entorno.clock().today());
    QHash<qint64, QString> afiliados;
    for (const TurnoListado &turno : listarTurnos(conexion, doctor, fecha, fecha))
        afiliados.insert(turno.id, turno.afiliado);
    const auto filas = filasDePlanilla(dia, config.numero(u"imprimirturnos") == soloHorariosConTurno);

    QStringList debajo{datosProfesional(conexion, doctor), fechaLarga(fecha)};
    if (dia.noLaborable)
        debajo << QStringLiteral("No se atiende este día.");
    if (!dia.hayPlantilla)
        debajo << QStringLiteral("No hay plantilla de horarios para este día.");
    if (dia.ajustes.solosobreturnoshoraplanilla)
        debajo << QStringLiteral("En los horarios con sobreturnos se listan sólo los sobreturnos.");
    debajo.removeAll(QString());

    printing::Contenido contenido;
    // Also the name of its PDF.
    contenido.titulo
        = QStringLiteral("Turnos del %1 - %2").arg(base::fechaTexto(fecha), nombreProfesional(conexion, doctor));
    contenido.subtitulo = debajo.join(u'\n');
    contenido.tabla = tablaDe(dia, filas, afiliados);
    contenido.hoja.apaisada = printing::convieneApaisada(*contenido.tabla, contenido.hoja);
    printing::Documento documento = printing::armar(entorno, contenido);
    if (const QString pie = config.texto(u"plantillaagenda"); !texto::comoPlano(pie).isEmpty())
        documento.cuerpo.append(printing::Texto{texto::comoHtml(pie)});
    return documento;
}

std::optional<QString> plantillaAtendidos(db::Connection &conexion, int doctor, QDate fecha)
{
    QStringList lineas;
    const auto agregar = [&lineas](const QStringList &celdas) {
        QStringList campos;
        for (const QString &celda : celdas)
            campos << base::campoTabulado(celda);
        lineas << campos.join(u'\t');
    };
    agregar(
        {QStringLiteral("Fecha"),
         QStringLiteral("Hora"),
         QStringLiteral("Paciente"),
         QStringLiteral("Cobertura"),
         QStringLiteral("Nº Afiliado"),
         QStringLiteral("Motivo"),
         QStringLiteral("Importe"),
         QStringLiteral("Observaciones")});
    for (const TurnoListado &t : listarTurnos(conexion, doctor, fecha, fecha))
        if (t.atendido && !t.bloqueado)
            agregar(
                {base::fechaTexto(fecha),
                 horaTexto(t.momento.time()),
                 t.paciente(),
                 t.cobertura,
                 t.afiliado,
                 t.motivo,
                 t.importe,
                 t.observaciones});
    if (lineas.size() == 1)
        return std::nullopt;
    return lineas.join(u'\n');
}

} // namespace agenda
