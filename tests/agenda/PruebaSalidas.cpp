#include "Consultorio.h"
#include "agenda/AvisosTurno.h"
#include "agenda/CalendarioIcs.h"
#include "agenda/DiasNoLaborables.h"
#include "agenda/PlanillaDia.h"
#include "agenda/Textos.h"
#include "printing/Pdf.h"
#include "support/Prueba.h"

#include <QUrl>

using namespace agenda;

namespace {

using Propiedades = QMap<QString, QString>;

/// Reads a calendar file as a calendar does: unfolds, splits and takes the escapes away.
struct IcsLeido {
    QByteArray bytes;
    QList<Propiedades> eventos;
    QStringList cabecera;

    explicit IcsLeido(const QByteArray &archivo)
        : bytes(archivo)
    {
        QVERIFY(archivo.endsWith("END:VCALENDAR\r\n"));
        QByteArray desplegado = archivo;
        for (const QByteArray &linea : archivo.split('\n')) {
            QVERIFY2(linea.isEmpty() || linea.endsWith('\r'), linea.constData());
            QVERIFY2(linea.size() <= 76, linea.constData()); // 75 and the CR
            // Not cut within a character.
            QVERIFY2(!QString::fromUtf8(linea).contains(QChar::ReplacementCharacter), linea.constData());
        }
        desplegado.replace("\r\n ", "");
        bool dentro = false;
        for (const QString &linea : QString::fromUtf8(desplegado).split(QStringLiteral("\r\n"))) {
            if (linea == "BEGIN:VEVENT") {
                eventos << Propiedades();
                dentro = true;
            } else if (linea == "END:VEVENT") {
                dentro = false;
            } else if (dentro) {
                const QString nombre = linea.section(u':', 0, 0);
                QVERIFY2(!eventos.last().contains(nombre), qPrintable(nombre));
                eventos.last()[nombre] = sinEscapes(linea.section(u':', 1));
            } else {
                cabecera << linea;
            }
        }
    }

    static QString sinEscapes(const QString &texto)
    {
        QString salida;
        for (qsizetype i = 0; i < texto.size(); ++i) {
            if (texto[i] == u'\\' && ++i < texto.size())
                salida += texto[i] == u'n' ? u'\n' : texto[i];
            else
                salida += texto[i];
        }
        return salida;
    }
};

const QString inicio = QStringLiteral("DTSTART;TZID=America/Argentina/Buenos_Aires");
const QString fin = QStringLiteral("DTEND;TZID=America/Argentina/Buenos_Aires");

} // namespace

/// What leaves the book by its rules: day sheet, attended list, calendar file, list of who to remind.
class PruebaSalidas : public QObject
{
    Q_OBJECT

    std::unique_ptr<Consultorio> base;

    PedidoIcs pedido() const { return {base->usuario, base->lunes(), base->lunes().addDays(30), true, true}; }
    IcsLeido exportado(const PedidoIcs &p)
    {
        const auto calendario = prepararIcs(*base, p);
        return IcsLeido(calendario ? calendario->bytes : QByteArray());
    }
    /// Cells of the day sheet's rows: hour, patient...
    QVector<printing::Fila> filas(const printing::Documento &d)
    {
        for (const printing::Bloque &bloque : d.cuerpo)
            if (const auto *tabla = std::get_if<printing::Tabla>(&bloque))
                return tabla->filas;
        return {};
    }
    QStringList renglones(QDate fecha = Consultorio::lunes())
    {
        QStringList textos;
        for (const printing::Fila &fila : filas(planillaDia(*base, base->usuario, fecha)))
            textos << QStringList(fila.celdas.mid(0, 2)).join(u' ').replace(QChar::Nbsp, u' ').trimmed();
        return textos;
    }

private slots:
    void initTestCase_data() { soporte::filasDeDialecto(); }
    void init()
    {
        QFETCH_GLOBAL(db::Dialect::Kind, dialecto);
        base = std::make_unique<Consultorio>(dialecto);
        base->paciente(
            7,
            "O'Higgins",
            "Eva",
            {{"Tel", "0341 4123456"}, {"TelCelular", "0341 156123456"}, {"NroOS", "0012/3"}, {"idcobertura", 1}});
        base->paciente(8, "Paz", "Ana");
    }
    void cleanup()
    {
        QVERIFY(base->guion.terminar());
        base.reset();
    }

    void planillaConTodosLosHorarios()
    {
        base->plantilla(Consultorio::maniana());
        const QString observaciones = QStringLiteral("Trae estudios <b>de</b> sangre.\nAvisar al ") + "5 piso";
        base->turno(7, base->a("09:20"), {{"llegado", true}, {"observacionestur", observaciones}});
        base->turno(8, base->a("09:20"));
        base->turno(999, base->a("09:50")); // deleted, and at an hour between the start times
        base->turno(nroBloqueado, base->a("10:00"));
        base->turno(7, base->a(base->lunes().addDays(1), "09:00"));
        base->configurar("plantillaagenda", "Traer el carnet & la orden.\nGracias.");

        QCOMPARE(
            renglones(),
            QStringList(
                {"09:00",
                 "09:20 O'Higgins, Eva",
                 "09:20 Paz, Ana",
                 "09:40",
                 "09:50 PACIENTE ELIMINADO DEL SISTEMA",
                 "10:00 ========= NO SE ATIENDE ==========",
                 "10:20",
                 "10:40",
                 "TOTAL: 3 turnos."}));
        const printing::Documento d = planillaDia(*base, base->usuario, base->lunes());
        QCOMPARE(d.titulo, "Turnos del 23/11/2026 - Juan Pérez");
        QStringList eva = filas(d).at(1).celdas;
        eva.replaceInStrings(QString(QChar::Nbsp), QStringLiteral(" "));
        QVERIFY(eva.at(2).endsWith("\nNº 0012/3"));
        QCOMPARE(eva.mid(3), QStringList({"Tel. 0341 4123456\nCel. 0341 156123456", "", observaciones, "SI"}));

        const QString papel = textoImpreso(d).join(u'\n').simplified();
        for (const char *parte :
             {"Juan Pérez",
              "Lunes 23 de noviembre de 2026",
              "O'Higgins, Eva",
              "<b>de</b>",
              "Traer el carnet & la orden."})
            QVERIFY2(papel.contains(QString::fromUtf8(parte)), qPrintable(papel));
    }

    void planillaConSusAjustes()
    {
        base->configurar("imprimirturnos", 1);
        base->plantilla(Consultorio::maniana(), {.solosobreturnoshoraplanilla = true});
        base->turno(7, base->a("09:20")); // the regular one of an hour with an extra one
        base->turno(nroBloqueado, base->a("09:20"));
        base->turno(8, base->a("09:20"));
        base->turno(7, base->a("10:00"));
        base->turno(7, base->a("10:05")); // between the start times all are extra ones
        base->turno(8, base->a("10:05"));
        QCOMPARE(
            renglones(),
            QStringList(
                {"09:20 Paz, Ana",
                 "10:00 O'Higgins, Eva",
                 "10:05 O'Higgins, Eva",
                 "10:05 Paz, Ana",
                 "TOTAL: 5 turnos."}));
        // The one that is missing must not be missed.
        QVERIFY(planillaDia(*base, base->usuario, base->lunes()).subtitulo.contains("sólo los sobreturnos"));
    }

    void planillaVacia()
    {
        base->fila("Agenda Turnos No Se Atiende", {{"iddoctor", base->usuario}, {"dia", 23}, {"mes", 0}, {"anio", 0}});
        const printing::Documento d = planillaDia(*base, base->usuario, base->lunes());
        QCOMPARE(renglones(), QStringList{"TOTAL: 0 turnos."});
        QVERIFY(d.subtitulo.contains("No se atiende"));
        QVERIFY(d.subtitulo.contains("No hay plantilla"));
        QCOMPARE(textoImpreso(d).size(), 1);
    }

    void planillaDeVariasHojas()
    {
        base->plantilla({QTime(8, 0), QTime(20, 0), {}, {}, 5});
        base->paciente(
            9, QStringLiteral("Apellidomuylargo ").repeated(5).trimmed(), QStringLiteral("Nombre ").repeated(6));
        for (int i = 0; i < 60; ++i)
            base->turno(9, base->a("08:00").addSecs(i * 300), {{"observacionestur", QString(300, u'x')}});
        const QStringList hojas = textoImpreso(planillaDia(*base, base->usuario, base->lunes()));
        QVERIFY(hojas.size() > 2);
        for (const QString &hoja : hojas) {
            QVERIFY2(hoja.contains("Paciente") && hoja.contains("Hora"), qPrintable(hoja));
            QVERIFY2(hoja.contains("23/11/2026"), qPrintable(hoja));
        }
        // Wrapped, not cut.
        QCOMPARE(hojas.join(QString()).count(u'x'), 60 * 300);
    }

    void atendidos()
    {
        QVERIFY(!plantillaAtendidos(base->conexion(), base->usuario, base->lunes()));
        base->paciente(9, "=1+1", "\"Pepe\"");
        base->turno(8, base->a("09:00")); // not attended
        const qint64 caja = base->fila("Caja", {{"importe", 1234.5}});
        base->turno(
            7, base->a("09:20"), {{"Atendido", true}, {"idcaja", caja}, {"observacionestur", "con\ttab\ny línea"}});
        base->turno(9, base->a("09:40"), {{"Atendido", true}, {"observacionestur", "\"sin cerrar"}});
        base->turno(nroBloqueado, base->a("10:00"), {{"Atendido", true}});
        const QStringList lineas = plantillaAtendidos(base->conexion(), base->usuario, base->lunes())->split(u'\n');
        QCOMPARE(lineas.size(), 3);
        for (const QString &linea : lineas)
            QCOMPARE(linea.count(u'\t'), 7);
        QVERIFY(lineas.at(0).startsWith("Fecha\tHora\tPaciente\t"));
        QVERIFY2(lineas.at(1).startsWith("23/11/2026\t09:20\tO'Higgins, Eva\t"), qPrintable(lineas.at(1)));
        QVERIFY2(lineas.at(1).endsWith("\t0012/3\t\t1.234,50\tcon tab y línea"), qPrintable(lineas.at(1)));
        QVERIFY2(lineas.at(2).contains("\t'=1+1, \"Pepe\"\t"), qPrintable(lineas.at(2)));
        QVERIFY2(lineas.at(2).endsWith("\t\"\"\"sin cerrar\""), qPrintable(lineas.at(2)));
    }

    void calendario()
    {
        base->plantilla({QTime(9, 0), QTime(11, 0), {}, {}, 15});
        const QString largo = QStringLiteral("Ñandú;çé, \\ ").repeated(7).trimmed();
        base->paciente(9, largo, "Año\nNuevo");
        const QDateTime dado(QDate(2026, 11, 1), QTime(10, 30));
        const qint64 movido = base->turno(7, base->a("09:00"), {{"fechahoraasignado", dado}, {"motivo", 1}});
        base->turno(9, base->a("09:15"), {{"observacionestur", "secreto"}});
        base->turno(nroBloqueado, base->a("09:30"));
        base->turno(999, base->a(base->lunes().addDays(30), "09:00"));
        base->turno(7, base->a(base->lunes().addDays(31), "09:00")); // after the range
        base->turno(7, base->a("09:00"), {{"Doctor", base->usuario + 1}});

        const IcsLeido antes = exportado(pedido());
        for (const char *linea : {"VERSION:2.0", "TZID:America/Argentina/Buenos_Aires", "TZOFFSETTO:-0300"})
            QVERIFY2(antes.cabecera.contains(QLatin1String(linea)), linea);
        QCOMPARE(antes.eventos.size(), 4);
        QCOMPARE(antes.eventos[0].value(inicio), "20261123T090000");
        QCOMPARE(antes.eventos[0].value(fin), "20261123T091500");
        QCOMPARE(antes.eventos[0].value("SUMMARY"), "O'Higgins, Eva");
        QCOMPARE(antes.eventos[0].value("DTSTAMP"), base->reloj.now().toUTC().toString("yyyyMMdd'T'HHmmss'Z'"));
        QCOMPARE(antes.eventos[1].value("SUMMARY"), largo + ", Año\nNuevo");
        QCOMPARE(antes.eventos[2].value("SUMMARY"), "No se atiende");
        QCOMPARE(antes.eventos[3].value("SUMMARY"), "PACIENTE ELIMINADO DEL SISTEMA");
        QVERIFY(!antes.bytes.contains("secreto"));

        // Moved, and written again later: the same event, a newer state of it.
        base->conexion().execute(
            QStringLiteral("UPDATE [Agenda Turnos] SET Fecha = ? WHERE id = ?"), {base->a("10:30"), movido});
        base->reloj.set(base->reloj.now().addSecs(3600));
        const IcsLeido despues = exportado(pedido());
        QCOMPARE(despues.eventos[2].value("UID"), antes.eventos[0].value("UID"));
        QCOMPARE(despues.eventos[2].value(inicio), "20261123T103000");
        QVERIFY(despues.eventos[2].value("SEQUENCE").toInt() > antes.eventos[0].value("SEQUENCE").toInt());
        QSet<QString> uids;
        for (const Propiedades &evento : antes.eventos)
            uids << evento.value("UID");
        QCOMPARE(uids.size(), 4);

        PedidoIcs discreto = pedido();
        discreto.conNombres = discreto.conBloqueados = false;
        const IcsLeido sinNombres = exportado(discreto);
        QCOMPARE(sinNombres.eventos.size(), 3);
        QVERIFY(!sinNombres.bytes.contains("Higgins"));
        QCOMPARE(sinNombres.eventos[0].value("SUMMARY"), "Turno");
    }

    void calendarioSinPlantillaYRechazos()
    {
        PedidoIcs p = pedido();
        QCOMPARE(prepararIcs(*base, p).rechazo().texto, "No hay turnos entre esas fechas.");
        base->turno(7, base->a("23:50"));
        QCOMPARE(exportado(p).eventos[0].value(fin), "20261124T001000"); // 20 minutes where no template says
        p.hasta = p.desde.addDays(-1);
        QCOMPARE(prepararIcs(*base, p).rechazo().campo, "hasta");
        p.desde = QDate();
        QCOMPARE(prepararIcs(*base, p).rechazo().campo, "desde");

        const auto bueno = prepararIcs(*base, pedido());
        QVERIFY(bueno);
        const QString archivo = base->carpetaPrograma() + "/turnos.ics";
        QVERIFY(guardarIcs(*base, *bueno, base->carpetaPrograma() + "/no/existe.ics"));
        QCOMPARE(base->valor("SELECT COUNT(*) FROM [Historial] WHERE ventana = 'Agenda de Turnos'"), "0");
        QCOMPARE(guardarIcs(*base, *bueno, archivo), std::nullopt);
        QFile escrito(archivo);
        QVERIFY(escrito.open(QFile::ReadOnly));
        QCOMPARE(escrito.readAll(), bueno->bytes);
        const QString accion = base->valor("SELECT accion FROM [Historial] WHERE ventana = 'Agenda de Turnos'");
        QVERIFY2(accion.contains("1 turno de Juan Pérez") && accion.contains("23/11/2026"), qPrintable(accion));

        base->quitarDerecho("accesoagendas");
        QCOMPARE(prepararIcs(*base, pedido()).rechazo().texto, sinPermiso);
        QCOMPARE(guardarIcs(*base, *bueno, archivo)->texto, sinPermiso);
        QCOMPARE(turnosAAvisar(*base, 0, base->lunes()).rechazo().texto, sinPermiso);
    }

    void avisos()
    {
        const QDate hoy = base->lunes();
        QCOMPARE(proximoDiaConTurnos(base->conexion(), base->usuario, hoy), hoy.addDays(1));
        base->turno(7, base->a("23:00")); // today
        base->turno(nroBloqueado, base->a(hoy.addDays(1), "09:00"));
        base->turno(8, base->a(hoy.addDays(2), "09:00"), {{"Doctor", base->usuario + 1}});
        base->turno(999, base->a(hoy.addDays(3), "08:00"));
        base->turno(7, base->a(hoy.addDays(3), "10:20"));
        QCOMPARE(proximoDiaConTurnos(base->conexion(), base->usuario, hoy), hoy.addDays(3));
        QCOMPARE(proximoDiaConTurnos(base->conexion(), 0, hoy), hoy.addDays(2));

        const auto turnos = turnosAAvisar(*base, 0, hoy.addDays(3));
        QCOMPARE(turnos->size(), 2U);
        QCOMPARE(turnosAAvisar(*base, base->usuario, hoy.addDays(1))->size(), 0U);
        const TurnoListado &eva = turnos->at(1);
        QCOMPARE(
            textoAviso("<Paciente>, <nombre>: <fecha>, <hora>. <medico> <otro> <hora>", eva),
            "Eva O'Higgins, Eva: jueves 26 de noviembre, 10:20. Juan Pérez <otro> 10:20");
        TurnoListado raro = eva;
        raro.nombres = QStringLiteral("<hora>");
        QCOMPARE(textoAviso("<nombre>", raro), "<hora>");
        raro.nombres = QStringLiteral("MARÍA DEL CARMEN");
        raro.apellido = QStringLiteral("O'HIGGINS");
        QCOMPARE(textoAviso("<paciente>", raro), "María del Carmen O'Higgins");
        QCOMPARE(textoAviso(modeloDeAviso(), turnos->at(0)), QString()); // nobody to write to

        const QString dificil = QStringLiteral("Año 1&2 #3\n+100% ¿sí?");
        const QUrl enlace = enlaceDeMensaje("5493416123456", dificil);
        QCOMPARE(enlace.host() + enlace.path(), "wa.me/5493416123456");
        QVERIFY(!enlace.hasFragment());
        QCOMPARE(QUrl::fromPercentEncoding(enlace.query(QUrl::FullyEncoded).toLatin1()), "text=" + dificil);

        const QString csv = QString::fromUtf8(avisosCsv(*turnos, "Hola;\n<nombre>"));
        QVERIFY2(
            csv.endsWith("26/11/2026;10:20;Juan Pérez;O'Higgins, Eva;0341 4123456;0341 156123456;+5493416123456;"
                         "\"Hola;\nEva\"\r\n"),
            qPrintable(csv));
    }
};

PRUEBA(PruebaSalidas)
#include "PruebaSalidas.moc"
