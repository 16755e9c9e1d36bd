#include "app/Esquema.h"
#include "db/Recordset.h"
#include "maintenance/Entradas.h"
#include "maintenance/Reemplazo.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"

#include <QSet>

using namespace maintenance;
using namespace Qt::StringLiterals;

/// The rules of the lookup lists, over the tables that use them.
class PruebaListas : public QObject
{
    Q_OBJECT

    std::unique_ptr<soporte::BaseDePrueba> base;

    qint64 fila(const QString &tabla, const QVariantMap &valores)
    {
        db::Recordset rs(base->conexion(), u"SELECT * FROM [%1] WHERE id = 0"_s.arg(tabla));
        rs.addNew();
        for (auto it = valores.begin(); it != valores.end(); ++it)
            rs.set(it.key(), it.value());
        return rs.update();
    }
    qint64 agregar(const QString &tabla, const QString &nombre, int prioridad = 0, const QStringList &campos = {})
    {
        const Lista &l = *lista(tabla);
        Entrada entrada = entradaNueva(l);
        entrada.nombre = nombre;
        entrada.prioridad = prioridad;
        if (!campos.isEmpty())
            entrada.campos = campos;
        const auto id = guardarEntrada(*base, l, entrada);
        return id ? *id : -1;
    }
    QString rechazo(const QString &tabla, Entrada entrada)
    {
        const auto id = guardarEntrada(*base, *lista(tabla), entrada);
        return id ? QString() : id.rechazo().titulo + u'|' + id.rechazo().texto;
    }
    QStringList historial()
    {
        const db::Rows rows
            = base->conexion().query(u"SELECT accion FROM [Historial] WHERE ventana = 'Mantenimiento del Sistema'"_s);
        QStringList acciones;
        for (int i = 0; i < rows->rowCount(); ++i)
            acciones << rows->text(i, 0);
        return acciones;
    }
    int cuenta(const QString &tabla, const QString &condicion)
    {
        return base->valor(u"SELECT COUNT(id) FROM [%1] WHERE "_s.arg(tabla) + condicion).toInt();
    }

private slots:
    void cleanup()
    {
        if (base)
            base->guion.terminar();
        base.reset();
    }

    void declaracionYEsquema()
    {
        const db::Schema esquema = app::esquemaCompleto();
        QSet<QString> usadas;
        for (const Lista &l : listas()) {
            const db::Table *tabla = esquema.table(l.tabla);
            QVERIFY2(tabla, qPrintable(l.tabla));
            QStringList columnas{u"id"_s, u"prioridad"_s, l.columnaNombre};
            for (const CampoLista &campo : l.campos)
                columnas << campo.columna;
            for (const QString &columna : columnas)
                QVERIFY2(tabla->column(columna), qPrintable(l.tabla + u'.' + columna));
            for (const UsoLista &uso : l.usos) {
                const db::Table *donde = esquema.table(uso.tabla);
                QVERIFY2(donde && donde->column(u"id"), qPrintable(uso.tabla));
                for (const QString &columna : uso.columnas + uso.clave)
                    QVERIFY2(donde->column(columna), qPrintable(uso.tabla + u'.' + columna));
                QVERIFY(uso.clave.isEmpty() || uso.columnas.size() == 1);
                for (const QString &columna : uso.columnas)
                    usadas.insert(uso.tabla + u'.' + columna);
            }
        }

        // Lists with windows and rules of their own.
        const QStringList ajenas{
            u"Lista Doctores"_s, // users and their rights
            u"Lista Nomenclador"_s, // practices, found by their code
            u"Lista Precios"_s, // one row per coverage and practice
            u"Lista Productos"_s, // articles, found by their code
            u"Lista Stock"_s, // one row per professional and article
            u"Lista Usos"_s}; // articles that a practice consumes
        // Numbers that look like an entry's and name something else.
        const QStringList otras = u"idconsulta idorden idsesion idcaja iddoctor idusuariocarga idpractica idmuscu"
                                  " idusuario"_s.split(u' ');
        const QStringList otrosRegistros{
            u"Antecedentes Perso - Fami - Patologias.idpatologia"_s, // a code of the classification
            u"Pacientes Estudios Imagenes.idestudio"_s, // a study of the patient
            u"Pacientes Analisis.idestudio"_s}; // the same
        for (const db::Table &tabla : esquema.tables) {
            if (tabla.name.startsWith(u"Lista "_s) && !ajenas.contains(tabla.name))
                QVERIFY2(lista(tabla.name), qPrintable(tabla.name));
            for (const db::Column &columna : tabla.columns) {
                const QString nombre = tabla.name + u'.' + columna.name;
                const bool parece = columna.type == db::Type::Long
                    && (columna.name.startsWith(u"id"_s) || columna.name.endsWith(u"lis"_s)
                        || columna.name.endsWith(u"lista"_s));
                if (parece && !otras.contains(columna.name) && !otrosRegistros.contains(nombre))
                    QVERIFY2(usadas.contains(nombre), qPrintable(nombre));
            }
        }
    }

    void agregaYCambia_data() { soporte::filasDeDialecto(); }
    void agregaYCambia()
    {
        base = std::make_unique<soporte::BaseDePrueba>(soporte::dialectoActual());
        const Lista &etnia = *lista(u"Lista Etnia");
        base->conexion().execute(u"DELETE FROM [Lista Etnia]"_s);
        const qint64 o = agregar("Lista Etnia", u"  O'Brien   y Ñandú "_s);
        agregar("Lista Etnia", u"Árabe"_s);
        agregar("Lista Etnia", u"Zulú"_s, 5);
        QVERIFY(historial().contains(u"Se agregó «O'Brien y Ñandú» a la lista Etnia."_s));
        const db::Rows todas = leerEntradas(base->conexion(), etnia);
        QCOMPARE(todas->rowCount(), 3);
        QCOMPARE(todas->text(0, 1), u"Zulú"_s);
        QCOMPARE(todas->text(1, 1), u"Árabe"_s);
        QCOMPARE(todas->text(2, 1), u"O'Brien y Ñandú"_s);
        QCOMPARE(leerEntradas(base->conexion(), etnia, u"ARAB"_s)->rowCount(), 1);
        QCOMPARE(leerEntradas(base->conexion(), etnia, u"%"_s)->rowCount(), 0);

        Entrada entrada = *leerEntrada(base->conexion(), etnia, o);
        entrada.nombre = u"o'brien y ñandú"_s; // its own name in other letters is no repetition
        entrada.prioridad = 9;
        QVERIFY(guardarEntrada(*base, etnia, entrada));
        QCOMPARE(leerEntradas(base->conexion(), etnia)->integer(0, 0), o);
        QCOMPARE(
            historial().last(),
            u"Se modificó «O'Brien y Ñandú» de la lista Etnia. (Nombre: O'Brien y Ñandú → o'brien y ñandú;"
            " Prioridad: 0 → 9)"_s);
    }

    void rechaza_data() { soporte::filasDeDialecto(); }
    void rechaza()
    {
        base = std::make_unique<soporte::BaseDePrueba>(soporte::dialectoActual());
        const Lista &cobertura = *lista(u"Lista Coberturas");
        const qint64 osde = agregar("Lista Coberturas", u"Mutual Ñu"_s, 0, {u"80,5"_s});
        QCOMPARE(base->valor(u"SELECT Porcentaje_Cobertura FROM [Lista Coberturas] WHERE id = ?"_s, {osde}), u"80.5"_s);
        const auto con = [](qint64 id, const QString &nombre, const QStringList &campos) {
            return Entrada{id, nombre, 0, campos};
        };
        QCOMPARE(rechazo("Lista Coberturas", con(0, u"  "_s, {{}})), u"Aviso...|Debe ingresar el nombre."_s);
        QCOMPARE(
            rechazo("Lista Coberturas", con(0, u"MUTUAL  ñu"_s, {{}})),
            u"Aviso...|Ya existe «MUTUAL ñu» en la lista Coberturas Médicas."_s);
        QCOMPARE(
            rechazo("Lista Coberturas", con(0, QString(151, u'a'), {{}})),
            u"Aviso...|El texto ingresado es demasiado largo: puede tener hasta 150 letras."_s);
        for (const char *mal : {"ochenta", "-1"})
            QCOMPARE(
                rechazo("Lista Coberturas", con(osde, u"Mutual Ñu"_s, {QLatin1String(mal)})),
                u"Aviso...|El valor ingresado en ' Porcentaje que cubre ' no es válido."_s);

        // The same drug in another form is another entry; what an older database holds twice can still be changed.
        agregar("Lista Medicamentos", u"Droga X"_s, 0, {u"jarabe"_s, u""_s});
        QVERIFY(agregar("Lista Medicamentos", u"Droga X"_s, 0, {u"gotas"_s, u""_s}) > 0);
        QVERIFY(agregar("Lista Medicamentos", u"Droga X"_s, 0, {u""_s, u""_s}) > 0);
        for (const char *forma : {"JARABE", ""})
            QVERIFY(!rechazo("Lista Medicamentos", con(0, u"droga x"_s, {QLatin1String(forma), {}})).isEmpty());
        const qint64 doble = fila(u"Lista Coberturas"_s, {{u"nombre"_s, u"Mutual Ñu"_s}});
        QCOMPARE(rechazo("Lista Coberturas", con(doble, u"Mutual Ñu"_s, {u"10"_s})), QString());

        for (const QStringList &mal :
             {QStringList{u"4"_s, u"1"_s, {}, {}, {}, {}, {}},
              {u"1"_s, u"6"_s, {}, {}, {}, {}, {}},
              {u"1"_s, u"1"_s, u"2m"_s, {}, {}, {}, {}}})
            QVERIFY(!rechazo("Lista Vacunas", con(0, u"Nueva"_s, mal)).isEmpty());
        const qint64 vacuna = agregar("Lista Vacunas", u"Nueva"_s, 3, {u"2"_s, u"2"_s, u"0"_s, u"18"_s, {}, {}, {}});
        const Entrada guardada = *leerEntrada(base->conexion(), *lista(u"Lista Vacunas"), vacuna);
        QCOMPARE(guardada.campos, (QStringList{u"2"_s, u"2"_s, u"0"_s, u"18"_s, {}, {}, {}}));
        QCOMPARE(cuenta(u"Lista Vacunas"_s, u"Edad3 Is Null And Edad1 = 0 And Vacuna = 'Nueva'"_s), 1);

        base->otraTerminal()->execute(u"DELETE FROM [Lista Coberturas] WHERE id = ?"_s, {osde});
        const QString eliminado
            = u"Atención...|Este Registro ya No existe, debe haber sido eliminado por otro usuario."_s;
        QCOMPARE(rechazo("Lista Coberturas", con(osde, u"Otra"_s, {{}})), eliminado);
        QCOMPARE(eliminarEntrada(*base, cobertura, osde).rechazo().texto, eliminado.section(u'|', 1));
        QCOMPARE(reemplazarEntrada(*base, cobertura, osde, doble).rechazo().texto, eliminado.section(u'|', 1));

        base->conexion().execute(u"UPDATE [Lista Doctores] SET accesoconfiguracion = 0"_s);
        const QString sinPermiso = u"Atención...|No tiene permiso"_s;
        QVERIFY(rechazo("Lista Coberturas", con(0, u"Otra"_s, {{}})).startsWith(sinPermiso));
        QVERIFY(!eliminarEntrada(*base, cobertura, doble));
        QVERIFY(!reemplazarEntrada(*base, cobertura, doble, 1));
        QCOMPARE(cuenta(u"Lista Coberturas"_s, u"nombre = "_s + base->conexion().dialect().text(u"Mutual Ñu")), 1);
    }

    void eliminaLoQueNadieUsa_data() { soporte::filasDeDialecto(); }
    void eliminaLoQueNadieUsa()
    {
        base = std::make_unique<soporte::BaseDePrueba>(soporte::dialectoActual());
        const Lista &motivos = *lista(u"Lista Motivos Consulta");
        const qint64 id = agregar("Lista Motivos Consulta", u"Dolor 100%1"_s);
        const QString segura = u"¿Seguro que desea eliminar «Dolor 100%1» de la lista Motivos de Consulta?"_s;

        // The number of another list is no use of this one.
        fila(u"Consultas Items"_s, {{u"tipoconsulta"_s, 2}, {u"iditem"_s, id}});
        QVERIFY(!contarUsos(base->conexion(), motivos, id).estaEnUso());
        base->guion.esperarPregunta(u"Confirmación..."_s, segura, false);
        QCOMPARE(*eliminarEntrada(*base, motivos, id), Eliminacion::Cancelada);

        for (int i = 0; i < 2; ++i)
            fila(u"Agenda Turnos"_s, {{u"NroHC"_s, 7}, {u"motivo"_s, id}});
        fila(u"Consultas Items"_s, {{u"tipoconsulta"_s, 1}, {u"iditem"_s, id}});
        const QString enUso
            = u"Esta entrada está en uso en 2 turnos y 1 anotación de consultas: si se eliminara, esos registros "
              "quedarían sin «Dolor 100%1».\n¿Desea elegir otra entrada que la reemplace?"_s;
        base->guion.esperarPregunta(u"Atención..."_s, enUso, false);
        QCOMPARE(*eliminarEntrada(*base, motivos, id), Eliminacion::Cancelada);
        base->guion.esperarPregunta(u"Atención..."_s, enUso, true);
        QCOMPARE(*eliminarEntrada(*base, motivos, id), Eliminacion::PideReemplazo);
        QVERIFY(leerEntrada(base->conexion(), motivos, id));

        base->conexion().execute(u"DELETE FROM [Agenda Turnos]"_s);
        base->conexion().execute(u"DELETE FROM [Consultas Items]"_s);
        base->guion.esperarPregunta(u"Confirmación..."_s, segura, true);
        QCOMPARE(*eliminarEntrada(*base, motivos, id), Eliminacion::Hecha);
        QVERIFY(!leerEntrada(base->conexion(), motivos, id));
    }

    void uneDosCoberturas_data() { soporte::filasDeDialecto(); }
    void uneDosCoberturas()
    {
        base = std::make_unique<soporte::BaseDePrueba>(soporte::dialectoActual());
        const Lista &cobertura = *lista(u"Lista Coberturas");
        const qint64 vieja = fila(u"Lista Coberturas"_s, {{u"nombre"_s, u"Mutual"_s}}),
                     queda = fila(u"Lista Coberturas"_s, {{u"nombre"_s, u"Mutual Unida"_s}});
        for (int i = 1; i <= 3; ++i)
            fila(
                u"Pacientes"_s,
                {{u"NroHC"_s, i},
                 {u"idcobertura"_s, i == 3 ? queda : vieja},
                 {u"idcobertura2"_s, i == 2 ? vieja : -1}});
        fila(u"Pacientes Ordenes"_s, {{u"NroPaci"_s, 1}, {u"idobrasocial"_s, vieja}});
        for (const auto &[obra, practica, importe] :
             {std::tuple(vieja, 10, 100), {vieja, 11, 100}, {queda, 10, 900}, {queda, 12, 900}})
            fila(
                u"Lista Precios"_s,
                {{u"idobrasocial"_s, obra}, {u"idpractica"_s, practica}, {u"costopaciente"_s, importe}});
        // Equal numbers elsewhere are no coverage.
        fila(u"Pacientes Ordenes"_s, {{u"NroPaci"_s, 2}, {u"idobrasocial"_s, queda}, {u"idderivado"_s, vieja}});

        QCOMPARE(contarUsos(base->conexion(), cobertura, vieja).texto(), u"2 pacientes, 1 orden y 2 precios"_s);
        QCOMPARE(reemplazarEntrada(*base, cobertura, vieja, vieja).rechazo().campo, u"destino"_s);
        QCOMPARE(reemplazarEntrada(*base, cobertura, vieja, 0).rechazo().campo, u"destino"_s);
        const QString pregunta
            = u"Se cambiará «Mutual» por «Mutual Unida» en 2 pacientes, 1 orden y 2 precios, y «Mutual» se eliminará "
              "de la lista Coberturas Médicas.\nAdemás se elimina de «Mutual» lo que «Mutual Unida» ya tiene definido: "
              "1 precio.\nEsta acción no se puede deshacer. ¿Seguro que desea continuar?"_s;
        base->guion.esperarPregunta(u"Confirmación..."_s, pregunta, false);
        QVERIFY(!*reemplazarEntrada(*base, cobertura, vieja, queda));
        QCOMPARE(cuenta(u"Pacientes"_s, u"idcobertura = %1"_s.arg(vieja)), 2);
        base->guion.esperarPregunta(u"Confirmación..."_s, pregunta, true);
        QVERIFY(*reemplazarEntrada(*base, cobertura, vieja, queda));

        QVERIFY(!leerEntrada(base->conexion(), cobertura, vieja));
        QVERIFY(!contarUsos(base->conexion(), cobertura, vieja).estaEnUso());
        QCOMPARE(contarUsos(base->conexion(), cobertura, queda).texto(), u"3 pacientes, 2 órdenes y 3 precios"_s);
        QCOMPARE(cuenta(u"Pacientes"_s, u"idcobertura2 = %1"_s.arg(queda)), 1);
        QCOMPARE(cuenta(u"Lista Precios"_s, u"idobrasocial = %1 And costopaciente = 900"_s.arg(queda)), 2);
        QCOMPARE(cuenta(u"Pacientes Ordenes"_s, u"idderivado = %1"_s.arg(vieja)), 1);
        QCOMPARE(
            historial().last(),
            u"Se reemplazó «Mutual» por «Mutual Unida» en la lista Coberturas Médicas. (2 pacientes, 1 orden y 2 "
            "precios)"_s);
    }

    void noOcultaUnaDosis()
    {
        base = std::make_unique<soporte::BaseDePrueba>();
        const Lista &vacuna = *lista(u"Lista Vacunas");
        const auto dosis = [this](int paciente, int idvacuna, int numero) {
            fila(u"Pacientes Vacunas"_s, {{u"NroPaci"_s, paciente}, {u"idvacuna"_s, idvacuna}, {u"dosis"_s, numero}});
        };
        dosis(1, 1, 1);
        dosis(1, 2, 1);
        dosis(2, 1, 2);
        const auto negada = reemplazarEntrada(*base, vacuna, 1, 2);
        QVERIFY(!negada);
        QCOMPARE(
            negada.rechazo().texto,
            u"No se puede reemplazar: 1 dosis aplicada ya figura también con la otra entrada, y quedaría repetida. "
            "Corríjalo primero en la ficha de esos pacientes."_s);
        QCOMPARE(cuenta(u"Pacientes Vacunas"_s, u"idvacuna = 1"_s), 2);
    }

    void dejaSinDato()
    {
        base = std::make_unique<soporte::BaseDePrueba>();
        const Lista &etnia = *lista(u"Lista Etnia");
        const qint64 id = agregar("Lista Etnia", u"Otra más"_s);
        fila(u"Pacientes"_s, {{u"NroHC"_s, 1}, {u"idetnia"_s, id}});
        base->guion.esperarPregunta(
            u"Confirmación..."_s,
            u"Se cambiará «Otra más» por ninguna en 1 paciente, y «Otra más» se eliminará de la lista Etnia.\n"
            "Esta acción no se puede deshacer. ¿Seguro que desea continuar?"_s,
            true);
        QVERIFY(*reemplazarEntrada(*base, etnia, id, 0));
        QCOMPARE(cuenta(u"Pacientes"_s, u"idetnia = 0"_s), 1);
    }
};

PRUEBA(PruebaListas)
#include "PruebaListas.moc"
