#include "ConVentanas.h"
#include "agenda/Calendario.h"
#include "agenda/DiasNoLaborables.h"
#include "agenda/RangoTurnos.h"
#include "agenda/Sobreturnos.h"
#include "agenda/forms/CalendarioMes.h"
#include "agenda/forms/SelectorHora.h"
#include "agenda/forms/agendanuevahora.h"
#include "base/Fechas.h"
#include "ui/CampoFecha.h"

#include <QCheckBox>
#include <QListWidget>

using namespace agenda;

namespace {

Plantilla deLunesAViernes(int doctor, const Jornada &jornada)
{
    Plantilla p;
    p.iddoctor = doctor;
    for (size_t d = 1; d <= 5; ++d)
        p.dias[d] = jornada;
    return p;
}

/// Two templates: 2026 and 2027 in the mornings until 10:10, which the last slot runs past; December 2026, newer, from
/// eight to nine.
void prepararPlantillas(Consultorio &base)
{
    const auto guardar = [&](const Jornada &jornada, const char *desde, const char *hasta) {
        QVERIFY(guardarPlantilla(
            base.conexion(), deLunesAViernes(base.usuario, jornada), QLatin1String(desde), QLatin1String(hasta)));
    };
    guardar({QTime(9, 0), QTime(10, 10), QTime(16, 0), QTime(17, 0), 20}, "1/1/2026", "31/3/2028");
    guardar({QTime(8, 0), QTime(9, 0), {}, {}, 30}, "1/12/2026", "31/12/2026");
}

QString dias(const QVector<QDateTime> &momentos)
{
    QStringList textos;
    for (const QDateTime &momento : momentos)
        textos << base::fechaTexto(momento.date()).left(5);
    return textos.join(' ');
}

} // namespace

/// The time picker: what an hour gives over a range of dates, and its window.
class PruebaNuevaHora : public ConVentanas
{
    Q_OBJECT

    QStringList recibidos;

    agendanuevahora *abrir(const QDateTime &momento)
    {
        recibidos.clear();
        const auto alTerminar
            = [this](const QVariantMap &resultado) { recibidos = resultado.value("turnos").toStringList(); };
        auto *ventana = qobject_cast<agendanuevahora *>(
            ventanas->abrir("agendanuevahora", {{{"doctor", base->usuario}, {"momento", momento}}, alTerminar}));
        (void)QTest::qWaitForWindowExposed(ventana);
        return ventana;
    }

private slots:
    void init() { preparar(); }
    void cleanup() { terminar(); }

    void reparte_data()
    {
        QTest::addColumn<QString>("desde");
        QTest::addColumn<QString>("hasta");
        QTest::addColumn<QString>("hora");
        QTest::addColumn<QString>("dias"); // or the refusal, with its field before a bar
        QTest::addColumn<QString>("texto");

        const auto fila = [](const char *nombre,
                             const char *desde,
                             const char *hasta,
                             const char *hora,
                             const char *dias,
                             const char *texto = "") {
            QTest::newRow(nombre) << QString(desde) << QString(hasta) << QString(hora) << QString(dias)
                                  << QString(texto);
        };
        fila("una semana", "23/11/26", "29/11/26", "09:20", "23/11 24/11 26/11 27/11", "Se agregarán 4 turnos.");
        fila("un día", "23/11/26", "23/11/26", "09:20", "23/11", "Se agregará 1 turno.");
        fila("después del final", "23/11/26", "23/11/26", "10:00", "23/11");
        fila("de tarde", "23/11/26", "24/11/26", "16:40", "23/11 24/11");
        fila(
            "ocupado y bloqueado",
            "16/11/26",
            "20/11/26",
            "09:20",
            "16/11 18/11 19/11 20/11",
            "Se agregarán 4 turnos, 1 de ellos en un horario ya ocupado. Se saltea 1 día en que no se atiende a esa"
            " hora.");
        fila(
            "sólo uno, ocupado",
            "16/11/26",
            "16/11/26",
            "09:20",
            "16/11",
            "Se agregará 1 turno, en un horario ya ocupado.");
        fila("rige la más nueva", "30/11/26", "2/12/26", "09:20", "30/11");
        fila("rige la más nueva, su hora", "30/11/26", "2/12/26", "08:30", "01/12 02/12");
        fila("cambio de año", "30/12/26", "5/1/27", "09:00", "04/01 05/01");
        fila("día bisiesto", "28/2/28", "1/3/28", "09:00", "28/02 29/02 01/03");
        fila("termina la plantilla", "30/3/28", "10/4/28", "09:00", "30/03 31/03");
        fila("año entero", "1/1/27", "1/1/28", "09:00", nullptr);
        fila(
            "fuera del horario",
            "23/11/26",
            "29/11/26",
            "09:25",
            "hora|Ningún día laborable del período tiene libre el horario de las 09:25.");
        fila(
            "sin plantilla",
            "1/1/25",
            "31/1/25",
            "09:00",
            "hora|Ningún día laborable del período tiene libre el horario de las 09:00.");
        fila(
            "sólo sábado y domingo",
            "28/11/26",
            "29/11/26",
            "09:00",
            "hora|Ningún día laborable del período tiene libre el horario de las 09:00.");
        fila("falta desde", "", "29/11/26", "09:00", "desde|Debe ingresar la Fecha Inicial.");
        fila("desde mal", "31/11/26", "29/11/26", "09:00", "desde|ERROR en la Fecha Inicial.");
        fila("falta hasta", "23/11/26", " ", "09:00", "hasta|Debe ingresar la Fecha Final.");
        fila("hasta mal", "23/11/26", "29/2/27", "09:00", "hasta|ERROR en la Fecha Final.");
        fila(
            "al revés",
            "23/11/26",
            "22/11/26",
            "09:00",
            "hasta|La Fecha Final no puede ser anterior a la Fecha Inicial.");
        fila("demasiado", "1/1/27", "2/1/28", "09:00", "hasta|El período no puede abarcar más de 366 días.");
    }

    void reparte()
    {
        QFETCH(QString, desde);
        QFETCH(QString, hasta);
        QFETCH(QString, texto);
        QFETCH(QString, hora);
        QFETCH(QString, dias);
        for (const auto dialecto : {db::Dialect::Kind::Access, db::Dialect::Kind::SqlServer}) {
            Consultorio suya(dialecto);
            prepararPlantillas(suya);
            // Off: one date, and every 1st of January.
            QVERIFY(!agregarDiasNoLaborables(suya.conexion(), suya.usuario, {{0, 25, 11, 2026}, {0, 1, 1, 0}}));
            const QDate dia(2026, 11, 16);
            suya.turno(7, Consultorio::a(dia, "09:20"));
            suya.turno(8, Consultorio::a(dia, "09:20"));
            suya.turno(-111, Consultorio::a(dia.addDays(1), "09:20"));
            suya.turno(7, Consultorio::a(dia.addDays(2), "09:20"), {{"Doctor", suya.usuario + 1}});
            const auto rango
                = repartirHora(suya.conexion(), suya.usuario, QTime::fromString(hora, "HH:mm"), desde, hasta);
            if (!rango) {
                QCOMPARE(rango.rechazo().titulo, QString("Aviso..."));
                QCOMPARE(rango.rechazo().campo + '|' + rango.rechazo().texto, dias);
                continue;
            }
            if (dias.isEmpty())
                QCOMPARE(rango->momentos.size(), 260); // its working days but the 1st of January
            else
                QCOMPARE(::dias(rango->momentos), dias);
            if (!texto.isEmpty())
                QCOMPARE(rango->texto(), texto);
        }
    }

    /// The overbooking test with the templates above: limits and start times are those of the date's own template.
    void limites_de_su_fecha_data()
    {
        QTest::addColumn<QDate>("fecha");
        QTest::addColumn<QString>("hora");
        QTest::addColumn<int>("permiso");
        const int si = int(Permiso::Permitido), porHora = int(Permiso::LimiteHora), porDia = int(Permiso::LimiteDia);
        QTest::newRow("sin plantilla no hay límite") << QDate(2025, 6, 2) << "09:00" << si;
        QTest::newRow("hora que pasa el final, ocupada") << QDate(2026, 11, 23) << "10:00" << porHora;
        QTest::newRow("la del final no es hora") << QDate(2026, 11, 23) << "10:20" << porDia;
        QTest::newRow("la más nueva la hace hora extra") << QDate(2026, 12, 1) << "10:00" << si;
        QTest::newRow("día sin horas") << QDate(2026, 11, 22) << "09:00" << porDia;
        QTest::newRow("29 de febrero, ocupada") << QDate(2028, 2, 29) << "10:00" << porHora;
        QTest::newRow("año siguiente, libre") << QDate(2027, 1, 4) << "09:20" << si;
    }
    void limites_de_su_fecha()
    {
        QFETCH(QDate, fecha);
        QFETCH(QString, hora);
        for (const auto dialecto : {db::Dialect::Kind::Access, db::Dialect::Kind::SqlServer}) {
            Consultorio suya(dialecto);
            prepararPlantillas(suya);
            suya.conexion().execute("UPDATE [Agenda Turnos Horarios] SET cantidadsobreturnos = 0,"
                                    " cantidadsobreturnoshora = 0 WHERE id = 1");
            for (const char *ocupada : {"09:00", "10:00"})
                suya.turno(7, Consultorio::a(fecha, ocupada));
            QTEST(
                int(controlarSobreturno(
                    suya.conexion(), suya.usuario, Consultorio::a(fecha, hora.toLatin1().constData()))),
                "permiso");
        }
    }

    void encabezados_cortos()
    {
        QCOMPARE(mesCalendario(2026, 11, 0).encabezados(true), (QStringList{"Do", "Lu", "Ma", "Mi", "Ju", "Vi", "Sá"}));
        QCOMPARE(mesCalendario(2026, 11, 1).encabezados(true).first(), QString("Lu"));
    }

    void elige_un_dia()
    {
        prepararPlantillas(*base);
        QVERIFY(!agregarDiasNoLaborables(base->conexion(), base->usuario, {{0, 25, 11, 2026}}));
        base->turno(7, Consultorio::a("09:20"));
        base->turno(8, Consultorio::a("09:20"));
        base->turno(8, Consultorio::a("09:40"));
        base->turno(-111, Consultorio::a("10:00"));
        agendanuevahora *v = abrir(Consultorio::a("09:00"));
        QVERIFY(v);
        QStringList renglones;
        for (int i = 0; i < 4; ++i)
            renglones << v->listahoras->item(i)->text();
        QCOMPARE(renglones, (QStringList{"09:00", "09:20  Ocupado !!", "09:40  Ocupado", "10:00  ========"}));
        QCOMPARE(v->cantidad->text(), QString("Se agregará el 23/11/2026 09:00."));

        // The day off, whatever the hour; what was chosen stays.
        v->fechadia->setFecha(QDate(2026, 11, 25));
        QVERIFY(v->selector->estadodia->text().endsWith(": no se atiende"));
        base->guion.esperarMensaje("Aviso...", "La fecha seleccionada NO corresponde a un día laborable.");
        QTest::mouseClick(v->guardar, Qt::LeftButton);
        QVERIFY(v->isVisible());
        v->fechadia->setFecha(QDate(2026, 11, 26));
        v->hora->setText("9 y cuarto");
        base->guion.esperarMensaje("ERROR...", "ERROR en la Fecha del Turno.");
        QTest::mouseClick(v->guardar, Qt::LeftButton);
        // An extra hour is typed; Enter adds it.
        v->hora->setText("9:15");
        QCOMPARE(v->listahoras->currentRow(), -1);
        v->hora->setFocus();
        QTest::keyClick(v->hora, Qt::Key_Return);
        QCOMPARE(recibidos, QStringList("26/11/2026 09:15"));
    }

    void elige_un_periodo()
    {
        prepararPlantillas(*base);
        agendanuevahora *v = abrir(Consultorio::a("09:20"));
        QVERIFY(v && !v->desde->isEnabled());
        QTest::mouseClick(v->diaunico, Qt::LeftButton, {}, QPoint(8, v->diaunico->height() / 2));
        QCOMPARE(v->desde->fecha(), Consultorio::lunes());
        base->guion.esperarMensaje("Aviso...", "Debe ingresar la Fecha Final.");
        QTest::mouseClick(v->guardar, Qt::LeftButton);
        v->hasta->setFocus();
        QTest::keyClicks(v->hasta, "26/11/26");
        QTest::keyClick(v->hasta, Qt::Key_Tab);
        QCOMPARE(v->cantidad->text(), QString("Se agregarán 4 turnos."));
        v->listahoras->setCurrentRow(4); // 16:00
        QTest::mouseClick(v->guardar, Qt::LeftButton);
        QCOMPARE(
            recibidos, (QStringList{"23/11/2026 16:00", "24/11/2026 16:00", "25/11/2026 16:00", "26/11/2026 16:00"}));
    }
};

PRUEBA(PruebaNuevaHora)
#include "PruebaNuevaHora.moc"
