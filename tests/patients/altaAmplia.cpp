#include "patients/AltaAmplia.h"
#include "db/Config.h"
#include "db/Recordset.h"
#include "patients/Parecidos.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"

using namespace Qt::StringLiterals;
using patients::DatosAmplios;

namespace {

DatosAmplios ana()
{
    return {
        .apellido = u" O'Higgins "_s,
        .apellido2 = u"Paz"_s,
        .nombres = u"Ana"_s,
        .sexo = 0,
        .fecnac = u"29/2/1980"_s,
        .dni = u" 12.345.678 "_s,
        .telpar = u"4551234"_s,
        .cobertura = 1,
        .idcobertura = 3,
        .nroos = u" 77 "_s,
        .demas = {{u"Domicilio"_s, u" Mitre 5 "_s}, {u"idprovincia"_s, 2}}};
}

} // namespace

class altaAmplia : public QObject
{
    Q_OBJECT

private slots:
    void guardaLoEscrito_data() { soporte::filasDeDialecto(); }
    void guardaLoEscrito()
    {
        soporte::BaseDePrueba base(soporte::dialectoActual());
        db::Config(base.conexion()).guardar(u"prefijohc", u"HC-"_s);
        db::Config(base.conexion()).guardar(u"numerohc", u"25"_s);
        const patients::Alta alta = patients::guardarAmplio(base, ana());
        QVERIFY(alta && *alta);
        QCOMPARE((*alta)->numehistoria, u"HC-000025"_s);
        const db::Recordset fila(base.conexion(), u"SELECT * FROM [Pacientes]"_s);
        QCOMPARE(fila.text(u"Apellido"), u"O'Higgins"_s);
        QCOMPARE(fila.text(u"DNI"), u"12.345.678"_s);
        QCOMPARE(fila.date(u"FeNac"), QDate(1980, 2, 29));
        QCOMPARE(fila.text(u"Domicilio"), u"Mitre 5"_s);
        QCOMPARE(fila.integer(u"idprovincia"), 2);
        QCOMPARE(fila.integer(u"cobertura"), 1);
        QCOMPARE(fila.integer(u"idcobertura"), 3);
        QCOMPARE(fila.text(u"NroOS"), u"77"_s);

        // A number of her own is kept, none without coverage has an insurer.
        DatosAmplios otra = ana();
        otra.nombres = u"Eva"_s;
        otra.dni.clear();
        otra.fecnac.clear();
        otra.cobertura = 2;
        otra.sexo = -1;
        otra.numehistoria = u" X9 "_s;
        QVERIFY(bool(patients::guardarAmplio(base, otra)));
        const db::Recordset segunda(base.conexion(), u"SELECT * FROM [Pacientes] WHERE numehistoria = 'X9'"_s);
        QCOMPARE(segunda.integer(u"idcobertura"), -1);
        QCOMPARE(segunda.date(u"FeNac"), QDate(9999, 12, 31));
        QVERIFY(segunda.isNull(u"sexo"));

        otra.nombres = u"Inés"_s;
        const patients::Alta repetida = patients::guardarAmplio(base, otra);
        QCOMPARE(
            repetida.rechazo().texto,
            u"Ya existe otro paciente con el Nº de Historia Clínica que le quiere ingresar al paciente actual."_s);
        QCOMPARE(base.valor(u"SELECT UltimoPaci FROM [Config]"_s), u"2"_s);
    }

    /// Each row takes away one thing that is asked for; the messages come in this order.
    void ordenDeLosControles()
    {
        soporte::BaseDePrueba base;
        db::Config(base.conexion()).guardar(u"forzarguardarpaci", 1);
        const auto dice = [&](const DatosAmplios &datos) {
            const patients::Alta alta = patients::guardarAmplio(base, datos);
            return alta ? QString() : alta.rechazo().campo + u'|' + alta.rechazo().texto;
        };
        DatosAmplios datos{.fecnac = u"31/2/2000"_s};
        QCOMPARE(dice(datos), u"apellido|Debe ingresar el Apellido del Paciente"_s);
        datos.apellido = u"Paz"_s;
        QCOMPARE(dice(datos), u"nombres|Debe ingresar el Nombre del Paciente"_s);
        datos.nombres = u"Luz"_s;
        QCOMPARE(dice(datos), u"fecnac|El Formato de Fecha debe ser dd/mm/aaaa\nERROR en la Fecha de Nacimiento"_s);
        datos.fecnac.clear();
        QCOMPARE(dice(datos), u"fecnac|Debe ingresar la Fecha de Nacimiento del Paciente"_s);
        datos.fecnac = u"5/3/80"_s;
        QCOMPARE(dice(datos), u"sexo|Debe indicar el Sexo del Paciente"_s);
        datos.sexo = 1;
        QCOMPARE(dice(datos), u"dni|Debe ingresar el Documento de Identidad del Paciente"_s);
        datos.dni = u"1"_s;
        QCOMPARE(dice(datos), u"telpar|Debe ingresar el Teléfono del Paciente"_s);
        datos.telpar = u"2"_s;
        QCOMPARE(dice(datos), u"concobertura|Debe indicar si el Paciente tiene Cobertura Médica"_s);
        datos.cobertura = 1;
        QCOMPARE(dice(datos), u"cobertura|Debe seleccionar la Cobertura Médica del Paciente"_s);
        datos.idcobertura = 1;
        QCOMPARE(dice(datos), u"nroos|Debe ingresar el Nº de Afiliado del Paciente"_s);
        datos.nroos = u"3"_s;
        QCOMPARE(dice(datos), QString());
        base.conexion().execute(u"UPDATE [Lista Doctores] SET accesocrearpaciente = 0"_s);
        QVERIFY(dice(datos).contains(u"No tiene permiso"_s));
    }

    void parecidos_data() { soporte::filasDeDialecto(); }
    void parecidos()
    {
        soporte::BaseDePrueba base(soporte::dialectoActual());
        QVERIFY(bool(patients::guardarAmplio(base, ana())));
        const auto motivo = [&](const patients::Conocido &conocido) {
            const auto hallados = patients::buscarParecidos(base.conexion(), conocido);
            return hallados.empty() ? QString() : hallados.front().motivo;
        };
        QCOMPARE(motivo({.dni = u"12345678"_s}), u"mismo documento"_s);
        QCOMPARE(motivo({.dni = u"12345679"_s}), u"documento casi igual"_s);
        QCOMPARE(motivo({.dni = u"12.345.687"_s}), u"documento casi igual"_s);
        QCOMPARE(motivo({.dni = u"12345699"_s}), QString());
        QCOMPARE(
            motivo({.apellido = u"o'higgins"_s, .nacimiento = QDate(1980, 2, 29)}),
            u"mismo apellido y fecha de nacimiento"_s);
        QCOMPARE(motivo({.apellido = u"ana"_s, .nombres = u"O'HIGGINS"_s}), u"apellido y nombres al revés"_s);
        QCOMPARE(motivo({.apellido = u"O'Higgins"_s, .nombres = u"Ana"_s}), u"mismo nombre"_s);
        // Nobody knows the birth date of either: that is no likeness.
        base.conexion().execute(
            u"UPDATE [Pacientes] SET FeNac = "_s + base.conexion().dialect().date(QDate(9999, 12, 31)));
        QCOMPARE(motivo({.apellido = u"O'Higgins"_s, .nacimiento = QDate(9999, 12, 31)}), QString());
        QCOMPARE(motivo({}), QString());
    }
};

PRUEBA(altaAmplia)
#include "altaAmplia.moc"
