#include "sqlMemoria.h"

#include "base/Numeros.h"
#include "support/Prueba.h"

/// What single expressions of the Access dialect yield when the engine runs them.
class SqlExpresiones : public QObject
{
    Q_OBJECT

private slots:
    void expresion_data();
    void expresion();
    void dineroComoBase();
    void parametrosEnSuOrden();

private:
    SqlMemoria m_engine;
};

void SqlExpresiones::expresion_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<QString>("result");
    const auto row = [](const char *sql, const char *result) {
        QTest::newRow(sql) << QString::fromUtf8(sql) << QString::fromUtf8(result);
    };
    // Operators and their order.
    row("1+2*3", "7");
    row("(1+2)*3", "9");
    row("5--3", "8");
    row("5- -3", "8");
    row("-2^2", "-4");
    row("2^-1", "0.5");
    row("7/2", "3.5");
    row("6/3", "2.0");
    row("7\\2", "3");
    row("-7\\2", "-3");
    row("7 mod 4", "3");
    row("-7 mod 4", "-3");
    row("2*7 mod 4", "2");
    row("10 mod 6\\2", "1");
    row("1 & 2+3", "15");
    row("1/0", "NULL");
    row("1 & 1 = '11'", "-1");
    row("not 1=2 and 1=1", "-1");
    row("1=1 or 1=2 and 1=2", "-1");
    row("not null", "NULL");
    row("1 = 1 = true", "-1");
    row("(2 > 1) + 0", "-1");
    // Text.
    row("'a' & null & 'b'", "ab");
    row("null & null", "");
    row("'a' + null", "NULL");
    row("'a' + 'b'", "ab");
    row("'O''Higgins'", "O'Higgins");
    row("\"dijo \"\"si\"\" 'no'\"", "dijo \"si\" 'no'");
    row("1.5 & ''", "1,5");
    row("2.0 & 'x'", "2x");
    row("1.25 & '-' & 7", "1,25-7");
    row("#01/31/2026# & ''", "31/01/2026");
    row("ucase$('pérez ñandú')", "PÉREZ ÑANDÚ");
    row("LCASE('PÉREZ ÑANDÚ')", "pérez ñandú");
    row("trim('  á ') & '|' & ltrim('  á ') & '|' & rtrim('  á ')", "á|á |  á");
    row("mid('ñandú',2,3)", "and");
    row("mid('ñandú',4)", "dú");
    row("mid('abc',9) & '.'", ".");
    row("mid$('A00.1',4,1) = '.'", "-1");
    row("left('ñandú',2) & right('ñandú',2)", "ñadú");
    row("right('abc',9)", "abc");
    row("left(null,2)", "NULL");
    row("len('ñandú')", "5");
    row("instr('Ñandú','AND')", "2");
    row("instr(3,'abcabc','b')", "5");
    row("instr(1,ucase$('Fiebre'),ucase$('EBR')) <> 0", "-1");
    row("instr('abc','z')", "0");
    row("replace('a.b.c','.','--')", "a--b--c");
    row("space(2) & string(3,'x') & chr(65) & asc('A')", "  xxxA65");
    row("strcomp('abc','ABC') & strcomp('a','b') & strcomp('abc','ABC',0)", "0-11");
    // Case and accents.
    row("'abc' = 'ABC'", "-1");
    row("'É' = 'é'", "-1");
    row("'e' = 'é'", "0");
    row("'ñ' > 'nz'", "-1");
    row("'PEREZ' in ('juan','perez')", "-1");
    row("'b' between 'A' and 'C'", "-1");
    row("'Pérez' like 'perez'", "-1");
    row("'Pérez' not like '%x%'", "-1");
    row("null like '%'", "NULL");
    row("iif('a'='A','si','no') = 'SI'", "-1");
    // Choices and nulls.
    row("iif(1=1,iif(1=2,'a','b'),'c')", "b");
    row("iif(null,1,2)", "2");
    row("iif(isnull(null),'nada','algo')", "nada");
    row("nz(null,5) & nz(null) & nz(3,5)", "53");
    row("null is null", "-1");
    row("1 is not null", "-1");
    row("cbool(5)", "-1");
    row("3 = true", "-1");
    row("3 <> false", "-1");
    row("0 = false", "-1");
    row("true", "-1");
    // Numbers.
    row("cint(2.5) & clng(3.5) & int(-1.5) & fix(-1.5)", "24-2-1");
    row("round(2.345,2)", "2.34");
    row("round(0.5)", "0");
    row("sgn(-3) & abs(-3) & sqr(9)", "-133");
    row("val('12.5 pesos') & '/' & val('x')", "12,5/0");
    row("str(5) & str(-5)", " 5-5");
    row("cdbl('1.234,50')", "1234.5");
    row("isnumeric('12,5') & isnumeric('x')", "-10");
    // Dates.
    row("#01/31/2026 10:20#", "2026-01-31 10:20:00");
    row("#1/5/26 23:59:59#", "2026-01-05 23:59:59");
    row("#31/12/8888#", "8888-12-31 00:00:00");
    row("#2026-03-04#", "2026-03-04 00:00:00");
    row("#10:20#", "1899-12-30 10:20:00");
    row("#01/31/2026# < #02/01/2026#", "-1");
    row("DateDiff('yyyy',#12/31/2025#,#01/01/2026#)", "1");
    row("DateDiff('yyyy',#01/01/2025#,#12/31/2025#)", "0");
    row("datediff(\"q\",#03/31/2026#,#04/01/2026#)", "1");
    row("datediff('m',#01/31/2026#,#02/01/2026#)", "1");
    row("datediff('d',#01/31/2026 23:59#,#02/01/2026 00:01#)", "1");
    row("datediff('d',#02/01/2026#,#01/31/2026#)", "-1");
    row("datediff('ww',#01/03/2026#,#01/04/2026#)", "1");
    row("datediff('ww',#01/04/2026#,#01/10/2026#)", "0");
    row("datediff('w',#01/03/2026#,#01/16/2026#)", "1");
    row("datediff('h',#01/01/2026 10:59#,#01/01/2026 11:00#)", "1");
    row("datediff('n',#01/01/2026 10:59:59#,#01/01/2026 11:00:00#)", "1");
    row("datediff('s',#12/31/2025 23:59:59#,#01/01/2026#)", "1");
    row("datediff('yyyy',null,#01/01/2026#)", "NULL");
    row("dateadd('m',1,#01/31/2026#)", "2026-02-28 00:00:00");
    row("dateadd('yyyy',-1,#02/29/2024#)", "2023-02-28 00:00:00");
    row("dateadd('n',-1,#01/01/2026#)", "2025-12-31 23:59:00");
    row("dateadd('d',1,#12/31/9999#)", "NULL");
    row("datepart('q',#05/01/2026#) & datepart('y',#02/01/2026#) & datepart('ww',#01/04/2026#)", "2322");
    row("year(#02/03/2026#) & month(#02/03/2026#) & day(#02/03/2026#)", "202623");
    row("hour(#10:20:30#) & minute(#10:20:30#) & second(#10:20:30#)", "102030");
    row("weekday(#01/04/2026#)", "1");
    row("dateserial(2026,13,0)", "2026-12-31 00:00:00");
    row("timeserial(10,90,0)", "1899-12-30 11:30:00");
    row("datevalue('5/3/80')", "1980-03-05 00:00:00");
    row("cdate('05/03/1980 8:05')", "1980-03-05 08:05:00");
    row("#01/31/2026# + 1", "2026-02-01 00:00:00");
    row("#01/31/2026# - #01/01/2026#", "30");
    row("isdate('31/02/2026') & isdate('28/02/2026')", "0-1");
    // Format.
    row("format(1234.5,'#,0.00')", "1.234,50");
    row("format(-1234567.891,'#,0.00')", "-1.234.567,89");
    row("format(0.145,'#,0.00')", "0,15");
    row("format(2.675,'0.00')", "2,68");
    row("format(-0.001,'0.00')", "0,00");
    row("format(null,'#,0.00')", "");
    row("format(12,'000000')", "000012");
    row("format(1234567,'000000')", "1234567");
    row("format(1.5,'0.##')", "1,5");
    row("format(1234.5,'#,0')", "1.235");
    row("format(0.256,'0%')", "26%");
    row("format(3,'$ #,0.00')", "$ 3,00");
    row("format('x','#,0.00')", "x");
    row("format(#03/05/2026 08:07#,'dd/mm/yyyy')", "05/03/2026");
    row("format(#03/05/2026 08:07#,'dd/MM/yyyy')", "05/03/2026");
    row("format(#03/05/2026 08:07#,'dd/mm/yy')", "05/03/26");
    row("format(#03/05/2026 08:07#,'dd/mm/yyyy hh:nn')", "05/03/2026 08:07");
    row("format(#03/05/2026 08:07#,'dd/mm/yyyy hh:mm')", "05/03/2026 08:07");
    row("format(#03/05/2026 18:07#,'yyyymmddhhnn')", "202603051807");
    row("format(#03/05/2026 08:07#,'hh:nn dd/mm')", "08:07 05/03");
    row("format(#03/05/2026#,'d mmmm')", "5 marzo");
    row("format('1980-03-05 00:00:00','dd/mm/yyyy')", "05/03/1980");
    row("format(null,'dd/mm/yyyy') & '.'", ".");
    row("format(1.5)", "1,5");
}

void SqlExpresiones::expresion()
{
    QFETCH(QString, sql);
    QFETCH(QString, result);
    QCOMPARE(m_engine.value(sql), result);
}

void SqlExpresiones::dineroComoBase()
{
    // One rounding of money in the program, whoever writes the amount.
    quint32 seed = 7;
    QStringList different;
    for (int i = 0; i < 2000; ++i) {
        seed = seed * 1664525 + 1013904223;
        const double amount = double(float((int(seed >> 4) % 20'000'000 - 10'000'000) / (i % 3 == 0 ? 1000.0 : 200.0)));
        const QString shown
            = m_engine.value(QStringLiteral("format(%1,'#,0.00')").arg(QString::number(amount, 'f', 17)));
        if (shown != base::dinero(amount))
            different << QString::number(amount, 'g', 17) + u' ' + shown + u' ' + base::dinero(amount);
    }
    QCOMPARE(different, QStringList());
}

void SqlExpresiones::parametrosEnSuOrden()
{
    const QStringList parameters{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")};
    QCOMPARE(m_engine.run(QStringLiteral("SELECT ? & ?, iif(isnull(?),1,2)"), parameters), QStringList{"ab|2"});
    QCOMPARE(
        m_engine.run(QStringLiteral("SELECT ? AS x FROM (SELECT ? AS y) AS t WHERE ? = 'C'"), parameters),
        QStringList{"a"});
}

PRUEBA(SqlExpresiones)
#include "sqlExpresiones.moc"
