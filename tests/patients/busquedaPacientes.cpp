#include "db/Config.h"
#include "patients/ListaPacientes.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"

using namespace Qt::StringLiterals;
using patients::FiltroPacientes;
using Actividad = FiltroPacientes::Actividad;
using Cobertura = FiltroPacientes::Cobertura;

namespace {

void paciente(db::Connection &conexion, int nrohc, const QVariantMap &columnas)
{
    QStringList nombres{u"NroHC"_s}, marcas{u"?"_s};
    db::Params valores{nrohc};
    for (auto it = columnas.cbegin(); it != columnas.cend(); ++it) {
        nombres << it.key();
        marcas << u"?"_s;
        valores << it.value();
    }
    conexion.execute(u"INSERT INTO [Pacientes] (%1) VALUES (%2)"_s.arg(nombres.join(u','), marcas.join(u',')), valores);
}

void llenar(db::Connection &c)
{
    paciente(c, 0, {{u"Apellido"_s, u"NADIE"_s}, {u"Nombres"_s, u"NADIE"_s}});
    paciente(
        c,
        1,
        {{u"Apellido"_s, u"PÉREZ"_s},
         {u"apellido2"_s, u"GODOY"_s},
         {u"Nombres"_s, u"Ana"_s},
         {u"DNI"_s, u"20111222"_s},
         {u"Tel"_s, u"0341 4551234"_s},
         {u"NroOS"_s, u"77/01"_s},
         {u"FeNac"_s, QDate(2016, 12, 31)},
         {u"sexo"_s, 0},
         {u"cobertura"_s, 1},
         {u"idcobertura"_s, 5},
         {u"idciudad"_s, 3},
         {u"idprovincia"_s, 8},
         {u"numehistoria"_s, u"HC-1"_s}});
    paciente(
        c,
        2,
        {{u"Apellido"_s, u"GÓMEZ"_s},
         {u"Nombres"_s, u"Luis"_s},
         {u"FeNac"_s, QDate(1980, 3, 5)},
         {u"sexo"_s, 1},
         {u"cobertura"_s, 2},
         {u"idcobertura"_s, -1},
         {u"numehistoria"_s, u"HC-20"_s}});
    paciente(
        c,
        3,
        {{u"Apellido"_s, u"O'HIGGINS"_s},
         {u"Nombres"_s, u"100% Juan_[x]"_s},
         {u"pacienteinactivo"_s, true},
         {u"cobertura"_s, 1},
         {u"idcobertura"_s, 6}});
    paciente(c, 21, {{u"Apellido"_s, u"ÑANDÚ"_s}, {u"Nombres"_s, u"Eva"_s}});
    c.execute(u"UPDATE [Pacientes] SET cobertura = 0 WHERE NroHC = 21"_s);
}

QList<int> numeros(const db::Rows &filas)
{
    QList<int> lista;
    for (int i = 0; i < filas->rowCount(); ++i)
        lista << int(filas->integer(i, patients::ColNroHC));
    return lista;
}

FiltroPacientes amplio(const std::function<void(FiltroPacientes &)> &ajuste)
{
    FiltroPacientes filtro{.reducido = false, .actividad = Actividad::Todos};
    ajuste(filtro);
    return filtro;
}

} // namespace

class busquedaPacientes : public QObject
{
    Q_OBJECT

private slots:
    void filtra_data()
    {
        QTest::addColumn<FiltroPacientes>("filtro");
        QTest::addColumn<QList<int>>("esperados");
        QTest::addColumn<bool>("porHistoria");
        QTest::addColumn<db::Dialect::Kind>("dialecto");
        const auto fila
            = [](const char *nombre, const FiltroPacientes &filtro, const QList<int> &esperados, bool hc = false) {
                  QTest::addRow("%s, Access", nombre) << filtro << esperados << hc << db::Dialect::Kind::Access;
                  QTest::addRow("%s, servidor", nombre) << filtro << esperados << hc << db::Dialect::Kind::SqlServer;
              };
        const auto reducido = [](const QString &apellido, const QString &nombres) {
            return FiltroPacientes{.apellido = apellido, .nombres = nombres};
        };
        fila("sin filtro, por apellido", reducido({}, u"  "_s), {2, 21, 3, 1});
        fila("dentro del valor, sin acentos", reducido(u"ez"_s, {}), {2, 1});
        fila("acento y mayúsculas", reducido(u"perez"_s, u"AN"_s), {1});
        fila("apóstrofo", reducido(u"O'H"_s, {}), {3});
        fila("porcentaje", reducido({}, u"0%"_s), {3});
        fila("guión bajo", reducido({}, u"n_"_s), {3});
        fila("corchete", reducido({}, u"[x]"_s), {3});
        fila("un porcentaje solo no es todo", reducido(u"%"_s, {}), {});
        fila("inyección", reducido(u"' or 1=1 --"_s, {}), {});
        fila("ñ", reducido(u"ñan"_s, {}), {21});
        fila("el amplio no cuenta en el reducido", FiltroPacientes{.dni = u"x"_s}, {2, 21, 3, 1});

        fila("activos", amplio([](auto &f) { f.actividad = Actividad::Activos; }), {2, 21, 1});
        fila("inactivos", amplio([](auto &f) { f.actividad = Actividad::Inactivos; }), {3});
        fila("por número", amplio([](auto &f) { f.numehistoria = u" 2 "_s; }), {2});
        fila("por lo que no es número", amplio([](auto &f) { f.numehistoria = u"2 or 1=1"_s; }), {});
        fila("por historia", amplio([](auto &f) { f.numehistoria = u"-2"_s; }), {2}, true);
        fila("segundo apellido", amplio([](auto &f) { f.apellido2 = u"god"_s; }), {1});
        fila("documento", amplio([](auto &f) { f.dni = u"111"_s; }), {1});
        fila("teléfono", amplio([](auto &f) { f.telefono = u"455"_s; }), {1});
        fila("documento con puntos", amplio([](auto &f) { f.dni = u"20.111.222"_s; }), {1});
        fila("afiliado", amplio([](auto &f) { f.nroos = u"7/0"_s; }), {1});
        fila("nacimiento", amplio([](auto &f) { f.fecnac = u"5/3/80"_s; }), {2});
        fila("sexo", amplio([](auto &f) { f.sexo = 0; }), {1});
        fila("con cobertura", amplio([](auto &f) { f.cobertura = Cobertura::Con; }), {3, 1});
        fila("con esa cobertura", amplio([](auto &f) { f.cobertura = Cobertura::Con, f.idcobertura = 6; }), {3});
        fila("sin cobertura", amplio([](auto &f) { f.cobertura = Cobertura::Sin; }), {2});
        fila("no sabe", amplio([](auto &f) { f.cobertura = Cobertura::NoSabe; }), {21});
        fila("ciudad y provincia", amplio([](auto &f) { f.idciudad = 3, f.idprovincia = 8; }), {1});
        // Born on 31/12/2016: ten calendar years on any day of 2026.
        fila("edad desde", amplio([](auto &f) { f.edadDesde = 10, f.edadHasta = 46; }), {2, 1});
        fila("edad hasta", amplio([](auto &f) { f.edadDesde = 0, f.edadHasta = 10; }), {1});
        fila("todo junto", amplio([](auto &f) { f.apellido = u"e"_s, f.sexo = 1, f.cobertura = Cobertura::Sin; }), {2});
    }

    void filtra()
    {
        QFETCH(FiltroPacientes, filtro);
        QFETCH(QList<int>, esperados);
        QFETCH(bool, porHistoria);
        soporte::BaseDePrueba base(soporte::dialectoActual());
        llenar(base.conexion());
        db::Config(base.conexion()).guardar(u"nuidhc", porHistoria);
        QCOMPARE(numeros(*patients::buscarPacientes(base, filtro)), esperados);
        patients::ListaPacientes lista(base);
        QVERIFY(!lista.buscar(filtro));
        QCOMPARE(numeros(lista.filas()), esperados);
    }

    void rechazaFechasQueNoSon()
    {
        soporte::BaseDePrueba base;
        const auto filas = patients::buscarPacientes(base, amplio([](auto &f) { f.fecnac = u"31/02/1980"_s; }));
        QVERIFY(!filas);
        QCOMPARE(
            filas.rechazo(),
            (base::Rechazo{
                u"Error..."_s,
                u"La fecha de nacimiento ingresada es incorrecta, debe ser del tipo ' dd/mm/aaaa'."_s,
                u"fecnac"_s}));
    }

    void muestraLasColumnas_data() { soporte::filasDeDialecto(); }

    void muestraLasColumnas()
    {
        soporte::BaseDePrueba base(soporte::dialectoActual());
        llenar(base.conexion());
        const FiltroPacientes perez{.apellido = u"PÉREZ"_s};
        QCOMPARE(
            (*patients::buscarPacientes(base, perez))->toDelimited(u"|", u"\n"),
            u"1|1|PÉREZ GODOY, Ana|20111222|77/01|\n"_s);
        db::Config(base.conexion()).guardar(u"nuidhc", true);
        const auto filas = *patients::buscarPacientes(base, perez);
        QCOMPARE(filas->text(0, patients::ColIdentificacion), u"HC-1"_s);
        // No second surname is an empty one.
        QCOMPARE(
            (*patients::buscarPacientes(base, {.apellido = u"ñan"_s}))->text(0, patients::ColNombre), u"ÑANDÚ , Eva"_s);
        QCOMPARE(patients::nombrePaciente(base.conexion(), 21), u"ÑANDÚ, Eva"_s);
        QCOMPARE(patients::nombrePaciente(base.conexion(), 22), std::nullopt);
    }

    void sumaLosSaldos_data() { soporte::filasDeDialecto(); }

    void sumaLosSaldos()
    {
        soporte::BaseDePrueba base(soporte::dialectoActual());
        llenar(base.conexion());
        db::Connection &c = base.conexion();
        const auto orden = [&](int paciente_, QDate fecha, double costo) {
            c.execute(
                u"INSERT INTO [Pacientes Ordenes] (NroPaci,fecha,costo) VALUES (?,?,?)"_s, {paciente_, fecha, costo});
        };
        const auto pago = [&](int paciente_, QDate fecha, double importe, const QString &quien) {
            c.execute(
                u"INSERT INTO [Pacientes Pagos] (NroPaci,fecha,importe,quien) VALUES (?,?,?,?)"_s,
                {paciente_, fecha, importe, quien});
        };
        orden(1, QDate(2025, 12, 31), 100);
        orden(1, QDate(2026, 1, 1), 50.5);
        pago(1, QDate(2026, 3, 1), 30, u"P"_s);
        pago(1, QDate(2025, 3, 1), 7, u"P"_s);
        pago(1, QDate(2026, 3, 1), 999, u"O"_s);
        pago(2, QDate(2026, 3, 1), 10, u"P"_s);
        std::vector<qint64> muchos{1, 2, 21};
        muchos.resize(150, 21);
        muchos.push_back(1);

        std::vector<double> saldos = patients::Saldos(base).calcular(muchos);
        QCOMPARE(saldos.size(), size_t(151));
        QCOMPARE(saldos[0], 113.5);
        QCOMPARE(saldos[1], -10.0);
        QCOMPARE(saldos[2], 0.0);
        QCOMPARE(saldos[150], 113.5);
        QVERIFY(patients::Saldos(base).calcular({}).empty());
        patients::ListaPacientes lista(base);
        const auto mostrados = [&lista] {
            QStringList textos;
            for (int fila = 0; fila < lista.cantidad(); ++fila)
                textos << lista.texto(fila, patients::ColSaldo);
            return textos;
        };
        QVERIFY(!lista.buscar({}));
        QCOMPARE(mostrados(), (QStringList{u"-10,00"_s, u"0,00"_s, u"0,00"_s, u"113,50"_s}));

        db::Config(c).guardar(u"versaldoanioactual", true);
        QCOMPARE(patients::Saldos(base).calcular({1}).front(), 20.5);
        muchos.resize(2000, 2); // everybody's at once
        QCOMPARE(patients::Saldos(base).calcular(muchos)[0], 20.5);
        QCOMPARE(patients::Saldos(base).calcular(muchos)[1999], -10.0);
        for (const auto columna : {patients::ColNombre, patients::ColSaldo}) {
            QVERIFY(!lista.buscar({}, columna));
            QCOMPARE(mostrados(), (QStringList{u"-10,00"_s, u"0,00"_s, u"0,00"_s, u"20,50"_s}));
            QCOMPARE(lista.texto(3, patients::ColNombre), u"PÉREZ GODOY, Ana"_s);
        }
    }
};

PRUEBA(busquedaPacientes)
#include "busquedaPacientes.moc"
