#include "base/Fechas.h"
#include "db/Config.h"
#include "db/Error.h"
#include "patients/Ficha.h"
#include "patients/FichaHtml.h"
#include "patients/NuevoPaciente.h"
#include "patients/RegistrosPaciente.h"
#include "patients/ResumenPaciente.h"
#include "support/BaseDePrueba.h"
#include "support/Falla.h"
#include "support/Prueba.h"

using namespace Qt::StringLiterals;
using patients::DatosFicha;
using patients::FichaGuardada;
using patients::PacienteAbierto;

namespace {

const QString mismoNombre
    = u"Ya existe un paciente con el mismo nombre y apellido. ¿Desea igualmente continuar dando de "
      "alta al paciente?"_s;
const QString sinPermiso
    = u"No tiene permiso para ejecutar esta acción. Consulte con el Administrador del sistema para definir "
      "sus permisos de accesos."_s;

PacienteAbierto crear(soporte::BaseDePrueba &base, QVariantMap columnas)
{
    const int nrohc = patients::insertarPaciente(base.conexion(), std::move(columnas)).nrohc;
    return *PacienteAbierto::abrir(base.conexion(), nrohc);
}

/// The file as a form holds it after these changes: everything else as stored.
DatosFicha cambiada(soporte::BaseDePrueba &base, const PacienteAbierto &paciente, const QVariantMap &cambios)
{
    DatosFicha datos{.cambios = cambios};
    const db::Recordset fila = paciente.fila(base.conexion());
    for (const db::ResultSet::Field &campo : fila.rows().fields())
        datos.valores.insert(campo.name, fila.value(campo.name));
    datos.valores.insert(cambios);
    return datos;
}

QString texto(const FichaGuardada &guardada) { return guardada ? QString() : guardada.rechazo().texto; }

/// A row as one text, without the columns named.
QString filaComoTexto(soporte::BaseDePrueba &base, int nrohc, const QStringList &salvo = {})
{
    const db::Rows fila = base.conexion().query(u"SELECT * FROM [Pacientes] WHERE NroHC = ?"_s, {nrohc});
    QStringList partes;
    for (int c = 0; c < fila->columnCount(); ++c)
        if (!salvo.contains(fila->fields()[size_t(c)].name))
            partes << fila->fields()[size_t(c)].name + u'=' + fila->text(0, c);
    return partes.join(u'|');
}

} // namespace

/// The patient file without its window: every check in its order, what is written, and to whom.
class PruebaFichas : public QObject
{
    Q_OBJECT

private slots:
    // Everything is wrong at first; each refusal is mended and the next one comes.
    void controlesEnSuOrden_data() { soporte::filasDeDialecto(); }
    void controlesEnSuOrden()
    {
        soporte::BaseDePrueba base(soporte::dialectoActual());
        (void)crear(base, {{u"Apellido"_s, u"ÁLVAREZ"_s}, {u"Nombres"_s, u"Inés"_s}, {u"DNI"_s, u"ab12"_s}});
        (void)crear(base, {{u"Apellido"_s, u"X"_s}, {u"Nombres"_s, u"Y"_s}, {u"numehistoria"_s, u"hc-9"_s}});
        db::Config(base.conexion()).guardar(u"forzarguardarpaci", 1);
        base.conexion().execute(u"UPDATE [Lista Doctores] SET accesomodificarpaciente = 0, accesocrearpaciente = 0"_s);

        DatosFicha datos;
        datos.escritas
            = {{u"ultimacons"_s, u"31/2/2020"_s},
               {u"FeNac"_s, u"ayer"_s},
               {u"nacipadre"_s, u"1/13/50"_s},
               {u"nacimadre"_s, u"0"_s}};
        datos.valores = {{u"Apellido"_s, u"  "_s}, {u"Nombres"_s, QString()}, {u"numehistoria"_s, u" HC-9 "_s}};
        datos.cambios = datos.valores;
        datos.reparo = base::Rechazo{u"Aviso..."_s, u"no está en la lista"_s, u"idciudad"_s};
        const QString fecha = u"El Formato de Fecha debe ser dd/mm/aaaa\n"_s;
        const auto poner = [&](const char *columna, const QVariant &valor) {
            datos.valores.insert(QLatin1String(columna), valor);
            datos.cambios.insert(QLatin1String(columna), valor);
        };
        const auto permitir = [&](const QString &derecho) {
            base.conexion().execute(u"UPDATE [Lista Doctores] SET %1 = -1"_s.arg(derecho));
        };
        const struct {
            const char *titulo;
            QString texto;
            const char *campo;
            std::function<void()> remedio;
        } pasos[] = {
            {"Atención...", sinPermiso, "", [&] { permitir(u"accesomodificarpaciente"_s); }},
            {"Atención...", sinPermiso, "", [&] { permitir(u"accesocrearpaciente"_s); }},
            {"ERROR en la fecha...",
             fecha + u"ERROR en la Fecha de la Ultima Consulta del Paciente"_s,
             "ultimacons",
             [&] { datos.escritas.remove(u"ultimacons"_s); }},
            {"Aviso...",
             u"Debe ingresar el primer Apellido del Paciente"_s,
             "Apellido",
             [&] { poner("Apellido", u" álvarez "_s); }},
            {"Aviso...", u"Debe ingresar el Nombre del Paciente"_s, "Nombres", [&] { poner("Nombres", u"INÉS"_s); }},
            {"ERROR en la fecha...",
             fecha + u"ERROR en la Fecha de Nacimiento del Paciente"_s,
             "FeNac",
             [&] { datos.escritas[u"FeNac"_s] = QString(); }},
            {"Aviso...",
             u"Debe ingresar la Fecha de Nacimiento del Paciente"_s,
             "FeNac",
             [&] {
                 datos.escritas[u"FeNac"_s] = u"29/2/24"_s;
                 poner("FeNac", QDate(2024, 2, 29));
             }},
            {"Aviso...",
             u"Debe indicar si el Paciente tiene Cobertura Médica"_s,
             "cobertura",
             [&] { poner("cobertura", patients::ConCobertura); }},
            {"Aviso...",
             u"Debe seleccionar la Cobertura Médica del Paciente"_s,
             "idcobertura",
             [&] { poner("idcobertura", 3); }},
            {"Aviso...", u"Debe ingresar el Nº de Afiliado del Paciente"_s, "NroOS", [&] { poner("NroOS", u"1"_s); }},
            {"Aviso...", u"Debe ingresar el Teléfono del Paciente"_s, "Tel", [&] { poner("Tel", u"4"_s); }},
            {"Aviso...",
             u"Debe ingresar el Documento de Identidad del Paciente"_s,
             "DNI",
             [&] { poner("DNI", u" AB12"_s); }},
            {"ERROR en la fecha...",
             fecha + u"ERROR en la Fecha de Nacimiento del Padre del Paciente"_s,
             "nacipadre",
             [&] { datos.escritas.remove(u"nacipadre"_s); }},
            {"ERROR en la fecha...",
             fecha + u"ERROR en la Fecha de Nacimiento de la Madre del Paciente"_s,
             "nacimadre",
             [&] { datos.escritas.remove(u"nacimadre"_s); }},
            {"Aviso...",
             u"Ya existe otro paciente con el Nº de Historia Clínica que le quiere ingresar al paciente actual."_s,
             "numehistoria",
             [&] { poner("numehistoria", u"HC-10"_s); }},
            {"Aviso...",
             u"Ya existe otro paciente con el Nº de Documento que le quiere ingresar al paciente actual."_s,
             "DNI",
             [&] { poner("DNI", u"20.111.222"_s); }},
            {"Aviso...", u"no está en la lista"_s, "idciudad", [&] { datos.reparo.reset(); }},
        };
        for (const auto &paso : pasos) {
            const FichaGuardada rechazada = patients::guardarFicha(base, std::nullopt, datos);
            QVERIFY2(!rechazada, qPrintable(paso.texto));
            QCOMPARE(rechazada.rechazo().texto, paso.texto);
            QCOMPARE(rechazada.rechazo().titulo, QString::fromUtf8(paso.titulo));
            QCOMPARE(rechazada.rechazo().campo, QLatin1String(paso.campo));
            QCOMPARE(rechazada.rechazo().icono, base::Icono::Critico);
            paso.remedio();
        }
        base.guion.esperarPregunta(u"Atención..."_s, mismoNombre, false);
        const FichaGuardada no = patients::guardarFicha(base, std::nullopt, datos);
        QVERIFY(no && !*no);
        QCOMPARE(base.valor(u"SELECT COUNT(*) FROM [Pacientes]"_s), u"2"_s);
        QCOMPARE(base.valor(u"SELECT UltimoPaci FROM [Config]"_s), u"2"_s);

        base.guion.esperarPregunta(u"Atención..."_s, mismoNombre, true);
        const FichaGuardada si = patients::guardarFicha(base, std::nullopt, datos);
        QVERIFY(si && *si);
        QCOMPARE((*si)->nrohc(), 3);
        QCOMPARE(base.valor(u"SELECT COUNT(*) FROM [Antecedentes Perinatologicos] WHERE NroPaci = 3"_s), u"1"_s);
        // Saved again it does not trip over itself, and asks nothing.
        QCOMPARE(texto(patients::guardarFicha(base, *si, datos)), QString());
        QVERIFY(base.guion.terminar());
    }

    void sinUsuarioNoGuarda()
    {
        soporte::BaseDePrueba base;
        base.usuario = 999;
        QCOMPARE(
            texto(patients::guardarFicha(base, std::nullopt, {})),
            u"Defina un Usuario Activo válido desde la ventana Configuración."_s);
    }

    void altaConLoMinimo_data() { soporte::filasDeDialecto(); }
    void altaConLoMinimo()
    {
        soporte::BaseDePrueba base(soporte::dialectoActual());
        db::Config config(base.conexion());
        config.guardar(u"prefijohc", u"HC-"_s);
        config.guardar(u"numerohc", u"7"_s);
        DatosFicha datos;
        datos.valores
            = {{u"numehistoria"_s, u"HC-000007"_s}, // as proposed, not typed
               {u"Apellido"_s, u" O'Higgins "_s},
               {u"Nombres"_s, u"100%_[x] 🙂"_s},
               {u"FeNac"_s, QVariant()},
               {u"cobertura"_s, patients::CoberturaSinIndicar},
               {u"idcobertura"_s, 0},
               {u"sexo"_s, QVariant()}};
        // Another station takes the proposed number meanwhile.
        (void)crear(base, {{u"Apellido"_s, u"Z"_s}, {u"Nombres"_s, u"Z"_s}});
        const FichaGuardada guardada = patients::guardarFicha(base, std::nullopt, datos);
        QVERIFY(guardada && *guardada);
        const db::Recordset fila = (*guardada)->fila(base.conexion());
        QCOMPARE(fila.text(u"numehistoria"), u"HC-000008"_s);
        QCOMPARE(fila.text(u"Apellido"), u"O'Higgins"_s);
        QCOMPARE(fila.text(u"Nombres"), u"100%_[x] 🙂"_s);
        QCOMPARE(fila.date(u"FeNac"), base::fechaDesconocida());
        QCOMPARE(fila.integer(u"cobertura"), 0);
        QVERIFY(fila.isNull(u"idcobertura") && fila.isNull(u"sexo"));
        QVERIFY(!fila.flag(u"pacienteinactivo"));
        QCOMPARE(config.texto(u"numerohc"), u"9"_s);
    }

    // Only what was changed is written, and what belongs together with it.
    void escribeLoCambiado_data()
    {
        QTest::addColumn<QVariantMap>("cambios");
        QTest::addColumn<QVariantMap>("guardado");
        QTest::addColumn<db::Dialect::Kind>("dialecto");
        const auto fila = [](const char *nombre, const QVariantMap &cambios, const QVariantMap &guardado) {
            for (const auto dialecto : {db::Dialect::Kind::Access, db::Dialect::Kind::SqlServer})
                QTest::addRow("%s %d", nombre, int(dialecto)) << cambios << guardado << dialecto;
        };
        fila("nada", {}, {});
        fila("un texto, recortado", {{u"Tel"_s, u" 455 1234 "_s}}, {{u"Tel"_s, u"455 1234"_s}});
        fila(
            "fechas lejanas",
            {{u"FeNac"_s, QDate(1890, 2, 28)}, {u"nacimadre"_s, QDate(2026, 11, 23)}},
            {{u"FeNac"_s, u"1890-02-28 00:00:00"_s}, {u"nacimadre"_s, u"2026-11-23 00:00:00"_s}});
        fila("la fecha de nacimiento borrada", {{u"FeNac"_s, QVariant()}}, {{u"FeNac"_s, u"9999-12-31 00:00:00"_s}});
        fila("sin cobertura", {{u"cobertura"_s, 2}}, {{u"cobertura"_s, u"2"_s}, {u"idcobertura"_s, u"-1"_s}});
        fila("otra cobertura", {{u"idcobertura"_s, 9}}, {{u"idcobertura"_s, u"9"_s}});
        fila("ni una ni otra: queda como estaba", {{u"cobertura"_s, 0}, {u"idcobertura"_s, 9}}, {});
        fila(
            "inactivo",
            {{u"pacienteinactivo"_s, true}, {u"motivoinactividad"_s, u" se mudó "_s}},
            {{u"pacienteinactivo"_s, true}, {u"motivoinactividad"_s, u"se mudó"_s}});
        fila("motivo sin marca", {{u"motivoinactividad"_s, u"x"_s}}, {{u"motivoinactividad"_s, QString()}});
    }
    void escribeLoCambiado()
    {
        QFETCH(QVariantMap, cambios);
        QFETCH(QVariantMap, guardado);
        soporte::BaseDePrueba base(soporte::dialectoActual());
        (void)crear(base, {{u"Apellido"_s, u"OTRA"_s}, {u"Nombres"_s, u"EVA"_s}});
        const PacienteAbierto suyo = crear(
            base,
            {{u"Apellido"_s, u"PAZ"_s},
             {u"Nombres"_s, u"LUZ"_s},
             {u"DNI"_s, u"1"_s},
             {u"FeNac"_s, QDate(1980, 3, 5)},
             {u"cobertura"_s, 1},
             {u"idcobertura"_s, 4}});
        const DatosFicha datos = cambiada(base, suyo, cambios);
        // Another station writes between the reading and the save.
        base.conexion().execute(u"UPDATE [Pacientes] SET Email = 'de@otra', CP = '2000' WHERE NroHC = 2"_s);
        const QString antes = filaComoTexto(base, 2, guardado.keys()), ajena = filaComoTexto(base, 1);
        QCOMPARE(texto(patients::guardarFicha(base, suyo, datos)), QString());
        QCOMPARE(filaComoTexto(base, 2, guardado.keys()), antes);
        QCOMPARE(filaComoTexto(base, 1), ajena);
        for (auto it = guardado.cbegin(); it != guardado.cend(); ++it) {
            const QString leido = base.valor(u"SELECT [%1] FROM [Pacientes] WHERE NroHC = 2"_s.arg(it.key()));
            if (it->typeId() == QMetaType::Bool)
                QCOMPARE(leido != u"0"_s, it->toBool());
            else
                QCOMPARE(leido, it->toString());
        }
    }

    // A row that is gone, or that belongs to somebody else meanwhile, is never written.
    void nuncaEnOtroPaciente_data() { soporte::filasDeDialecto(); }
    void nuncaEnOtroPaciente()
    {
        soporte::BaseDePrueba base(soporte::dialectoActual());
        const PacienteAbierto suyo = crear(base, {{u"Apellido"_s, u"PAZ"_s}, {u"Nombres"_s, u"LUZ"_s}});
        const DatosFicha datos = cambiada(base, suyo, {{u"Tel"_s, u"1"_s}});
        QVERIFY(!PacienteAbierto::abrir(base.conexion(), 0) && !PacienteAbierto::abrir(base.conexion(), 99));
        // The same row under another number, the same number in another row: a restored or merged database.
        for (const QString &cambio :
             {u"UPDATE [Pacientes] SET NroHC = 50 WHERE NroHC = 1"_s,
              u"INSERT INTO [Pacientes] (NroHC,Apellido,Nombres) VALUES (1,'OTRO','LUIS')"_s,
              u"DELETE FROM [Pacientes]"_s}) {
            base.conexion().execute(cambio);
            const auto falla = soporte::fallaDe([&] { (void)patients::guardarFicha(base, suyo, datos); });
            QVERIFY(falla && falla->kind() == db::Error::Kind::RowGone);
            QCOMPARE(
                falla->description(), u"Este Registro ya No existe, debe haber sido eliminado por otro usuario."_s);
            QCOMPARE(base.valor(u"SELECT COUNT(*) FROM [Pacientes] WHERE Tel = '1'"_s), u"0"_s);
            QVERIFY(!patients::leerResumen(base, suyo));
        }
    }

    void edades_data()
    {
        QTest::addColumn<QDate>("nacimiento");
        QTest::addColumn<QString>("edad");
        QTest::newRow("un día después") << QDate(2025, 12, 31) << u"1 años"_s;
        QTest::newRow("en 1890") << QDate(1890, 1, 1) << u"136 años"_s;
        QTest::newRow("bisiesto") << QDate(2024, 2, 29) << u"2 años"_s;
        QTest::newRow("mañana") << QDate(2026, 1, 2) << u"0 años"_s;
        QTest::newRow("otro año") << QDate(2027, 1, 1) << QString();
        QTest::newRow("desconocida") << base::fechaDesconocida() << QString();
        QTest::newRow("ninguna") << QDate() << QString();
    }
    void edades()
    {
        QFETCH(QDate, nacimiento);
        QTEST(patients::edadTexto(nacimiento, QDate(2026, 1, 1)), "edad");
    }

    void resumenYFicha_data() { soporte::filasDeDialecto(); }
    void resumenYFicha()
    {
        soporte::BaseDePrueba base(soporte::dialectoActual());
        base.conexion().execute(u"UPDATE [Lista Coberturas] SET nombre = ? WHERE id = 1"_s, {u"O.S. <Sur> & Cía"_s});
        const PacienteAbierto suyo = crear(
            base,
            {{u"Apellido"_s, u"PÉREZ"_s},
             {u"apellido2"_s, u"GODOY"_s},
             {u"Nombres"_s, u"ANA"_s},
             {u"numehistoria"_s, u"HC-1"_s},
             {u"FeNac"_s, QDate(1980, 3, 5)},
             {u"sexo"_s, 0},
             {u"cobertura"_s, 1},
             {u"idcobertura"_s, 1},
             {u"NroOS"_s, u"77/01"_s},
             {u"alergias"_s, u"Penicilina\n<b>Látex</b>"_s},
             {u"Notas"_s, u"Viene con la hija"_s},
             {u"pacienteinactivo"_s, true},
             {u"motivoinactividad"_s, u"Se mudó"_s},
             {u"nombremadre"_s, u"ROSA"_s},
             {u"nacimadre"_s, QDate(1950, 1, 2)}});
        patients::ResumenPaciente esperado{
            .nombre = u"PÉREZ GODOY, ANA"_s,
            .edad = u"46 años"_s,
            .etiqueta = u"Nº ID: "_s,
            .identificador = u"1"_s,
            .cobertura = u"O.S. <Sur> & Cía  Nº Afiliado: 77/01"_s,
            .alertas = u"Penicilina\n<b>Látex</b>"_s,
            .notas = u"Viene con la hija"_s,
            .inactivo = true,
            .motivoInactividad = u"Se mudó"_s};
        QCOMPARE(patients::leerResumen(base, suyo), esperado);
        db::Config config(base.conexion());
        config.guardar(u"reemplazoid", u"Nº Socio"_s);
        esperado.etiqueta = u"Nº Socio: "_s;
        QCOMPARE(patients::leerResumen(base, suyo), esperado);
        config.guardar(u"nuidhc", true);
        esperado.etiqueta = u"Nº Historia Clínica: "_s;
        esperado.identificador = u"HC-1"_s;
        QCOMPARE(patients::leerResumen(base, suyo), esperado);

        const QString html = patients::fichaHtml(base, suyo);
        for (const QString &parte :
             {u"DATOS PERSONALES"_s,
              u"<b>Nº Historia Clínica:</b> HC-1"_s,
              u"<b>Apellido y Nombres:</b> PÉREZ GODOY, ANA"_s,
              u"<b>Fecha de Nacimiento:</b> 05/03/1980 (46 años)"_s,
              u"<b>Sexo:</b> Femenino"_s,
              u"O.S. &lt;Sur&gt; &amp; Cía"_s,
              u"<b>Alertas:</b> Penicilina<br>&lt;b&gt;Látex"_s,
              u"<b>Paciente Inactivo</b> - Motivo de Inactividad: Se mudó"_s,
              u"SITUACION FAMILIAR"_s,
              u"<b>Madre:</b> ROSA"_s})
            QVERIFY2(html.contains(parte), qPrintable(parte));
        QVERIFY(!html.contains(u"PERSONA DE CONTACTO"_s));
        base.conexion().execute(
            u"UPDATE [Pacientes] SET nombrecontacto = 'Eva', pacienteinactivo = 0, FeNac = ?"_s,
            {base::fechaDesconocida()});
        const QString otra = patients::fichaHtml(base, suyo);
        QVERIFY(otra.contains(u"PERSONA DE CONTACTO"_s) && otra.contains(u"Eva"_s));
        QVERIFY(!otra.contains(u"Inactiv"_s) && !otra.contains(u"9999"_s));
    }

    void quienPuedeAbrirQue()
    {
        soporte::BaseDePrueba base;
        const auto abribles = [&] {
            QStringList si;
            for (const patients::BotonRegistro &boton : patients::registrosPaciente())
                if (!patients::controlarRegistro(base, boton))
                    si << boton.nombre;
            return si;
        };
        QCOMPARE(abribles().size(), qsizetype(patients::registrosPaciente().size()));
        base.conexion().execute(u"UPDATE [Lista Doctores] SET accesoestudios = 0, accesoginecologia = 0"_s);
        const QStringList algunos = abribles();
        QVERIFY(algunos.contains(u"botconsultas"_s) && !algunos.contains(u"botestudios"_s));
        QVERIFY(!algunos.contains(u"botobstetricia"_s));
        base.conexion().execute(u"UPDATE [Lista Doctores] SET accesoparcialpaciente = -1"_s);
        QCOMPARE(abribles(), (QStringList{u"botordenes"_s, u"botpresupuestos"_s}));
        base.usuario = 999;
        QVERIFY(abribles().isEmpty());
    }
};

PRUEBA(PruebaFichas)
#include "fichas.moc"
