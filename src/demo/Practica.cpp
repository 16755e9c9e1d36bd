#include "demo/Practica.h"

#include "db/Config.h"

#include <algorithm>

namespace demo {

namespace {

constexpr Turno manana{8 * 60, 12 * 60};
constexpr Turno tarde{16 * 60, 19 * 60 + 30};
constexpr Turno nada{};

const std::pair<int, int> feriados[] = {{1, 1}, {24, 3}, {2, 4}, {1, 5}, {25, 5}, {20, 6}, {9, 7}, {8, 12}, {25, 12}};

struct Presentacion {
    const char16_t *titulo;
    const char16_t *especialidad;
    Especialidad clase;
    int duracion;
};

// The first six open every practice; larger ones repeat the kinds with other people.
struct Persona {
    const char16_t *nombre;
    bool mujer;
};
constexpr Persona personas[]
    = {{u"María Laura Quiroga", true},
       {u"Esteban Ferreyra", false},
       {u"Ana Clara Iturralde", true},
       {u"Hugo Daniel Ñáñez", false},
       {u"Romina O'Connell", true},
       {u"Gustavo Peralta", false}};

constexpr Presentacion clases[]
    = {{u"Dr", u"Clínica médica", Especialidad::Clinica, 20},
       {u"Dr", u"Pediatría", Especialidad::Pediatria, 20},
       {u"Dr", u"Ginecología", Especialidad::Ginecologia, 30},
       {u"Dr", u"Ortopedia y traumatología", Especialidad::Traumatologia, 15},
       {u"Lic", u"Kinesiología", Especialidad::Kinesiologia, 30},
       {u"Od", u"Odontología", Especialidad::Odontologia, 30}};

constexpr const char16_t *nombresDeMas[]
    = {u"Cecilia", u"Andrés", u"Verónica", u"Martín", u"Jimena", u"Ricardo", u"Lucía", u"Federico", u"Inés", u"Tomás"};
constexpr const char16_t *apellidosDeMas[]
    = {u"Barrionuevo",
       u"Etcheverry",
       u"Agüero",
       u"Vázquez",
       u"D'Angelo",
       u"Bianchi",
       u"Muñoz",
       u"Urquiza",
       u"Ledesma",
       u"Zárate"};

QString texto(const char16_t *t) { return QString::fromUtf16(t); }

// "Dra. Ana ...", "Lic. ...": only the doctors' title has a feminine of its own.
QString conTitulo(const Presentacion &clase, const QString &nombre, bool mujer)
{
    QString titulo = texto(clase.titulo);
    if (mujer && titulo == u"Dr")
        titulo += u'a';
    return titulo + QStringLiteral(". ") + nombre;
}

// Each attends three or four days, at the same hours every week.
void ponerHoras(Profesional &profesional, int i)
{
    for (int dia = 1; dia <= 5; ++dia) {
        if ((dia + i) % 5 == 0)
            continue;
        const bool deManana = (dia + i) % 3 != 0, deTarde = (dia + i) % 2 == 0 || !deManana;
        profesional.horas[size_t(dia)] = {deManana ? manana : nada, deTarde ? tarde : nada};
    }
    if (i % 4 == 1)
        profesional.horas[6] = {Turno{9 * 60, 12 * 60}, nada};
}

int guardarProfesional(Practica &p, const Profesional &profesional, const Presentacion &clase, int orden)
{
    const db::Params datos{
        profesional.nombre,
        texto(clase.especialidad),
        QStringLiteral("M.P. %1").arg(8412 + orden * 137),
        0,
        orden == 0,
        orden == 0 ? 100 : 0,
        orden < 5};
    // The empty database comes with one professional, whom every new computer takes for its user.
    const auto muestra = p.conexion().query(QStringLiteral("SELECT id FROM [Lista Doctores] ORDER BY id"));
    if (orden == 0 && muestra->rowCount() > 0) {
        const auto id = int(muestra->integer(0, 0));
        p.lote.escribir(
            QStringLiteral("UPDATE [Lista Doctores] SET NomDoc = ?,Especialidad = ?,Matricula = ?,tipo = ?,"
                           "administrador = ?,Prioridad = ?,cie10 = ? WHERE id = ?"),
            datos + db::Params{id});
        return id;
    }
    return int(p.lote.escribirConId(
        p.lote.insertar(
            QStringLiteral("Lista Doctores"),
            QStringLiteral("NomDoc Especialidad Matricula tipo administrador Prioridad cie10")),
        datos));
}

QVariant hora(int minutos) { return QTime(minutos / 60, minutos % 60); }

void guardarHoras(Practica &p, const Profesional &profesional)
{
    static constexpr const char *dias[] = {"Do", "Lu", "Ma", "Mi", "Ju", "Vi", "Sa"};
    QString columnas = QStringLiteral(
        "iddoctor fechadesde fechahasta cantidadsobreturnos cantidadsobreturnoshora sobreturnoshoraresaltar");
    db::Params valores{
        profesional.id, QDate(p.medida.hoy.year() - 30, 1, 1), QDate(p.medida.hoy.year() + 5, 12, 31), 4, 1, true};
    for (int dia = 0; dia < 7; ++dia) {
        columnas += QStringLiteral(" durtur%1").arg(dia + 1);
        valores << profesional.duracion;
        for (int mitad = 0; mitad < 2; ++mitad) {
            const Turno &turno = profesional.horas[size_t(dia)][size_t(mitad)];
            if (turno.desde == turno.hasta)
                continue;
            const QString raiz
                = u' ' + QLatin1String(dias[dia]) + (mitad == 0 ? QLatin1String("Ma") : QLatin1String("Ta"));
            columnas += raiz + QStringLiteral("Desde") + raiz + QStringLiteral("Hasta");
            valores << hora(turno.desde) << hora(turno.hasta);
        }
    }
    p.lote.escribir(p.lote.insertar(QStringLiteral("Agenda Turnos Horarios"), columnas), valores);

    const QString libre
        = p.lote.insertar(QStringLiteral("Agenda Turnos No Se Atiende"), QStringLiteral("iddoctor dia mes anio"));
    for (const auto &[dia, mes] : feriados)
        p.lote.escribir(libre, {profesional.id, dia, mes, 0});
    for (int dia = 1; dia <= 14; ++dia)
        p.lote.escribir(libre, {profesional.id, dia, profesional.mesDeVacaciones, 0});
}

} // namespace

void crearProfesionales(Practica &p)
{
    // About as many as the agenda needs to look busy, not endless.
    const int cuantos = std::clamp(p.medida.turnos / 25000 + 6, 6, 40);
    for (int i = 0; i < cuantos; ++i) {
        const Presentacion &clase = clases[size_t(i) % std::size(clases)];
        const bool fundador = size_t(i) < std::size(personas);
        const QString nombre = fundador
            ? texto(personas[i].nombre)
            : texto(nombresDeMas[size_t(i) % 10]) + u' ' + texto(apellidosDeMas[(size_t(i) / 10 + size_t(i) * 3) % 10]);
        const bool mujer = fundador ? personas[i].mujer : i % 2 == 0;
        Profesional profesional{
            .nombre = conTitulo(clase, nombre, mujer), .especialidad = clase.clase, .duracion = clase.duracion};
        // Not around the day that is shown.
        profesional.mesDeVacaciones = (p.medida.hoy.month() + 5 + i % 3) % 12 + 1;
        ponerHoras(profesional, i);
        profesional.id = guardarProfesional(p, profesional, clase, i);
        guardarHoras(p, profesional);
        p.profesionales.push_back(profesional);
    }
    p.secretaria = QStringLiteral("Silvia Benítez");
    p.lote.escribir(
        p.lote.insertar(QStringLiteral("Lista Doctores"), QStringLiteral("NomDoc tipo medisecre Descripcion")),
        {p.secretaria, 1, p.profesionales.front().id, QStringLiteral("Secretaria, turno mañana y tarde")});
}

void crearCoberturas(Practica &p)
{
    // What is usual around Rosario; the rest of the catalogue now and then.
    static const std::pair<QString, int> usuales[]
        = {{QStringLiteral("PAMI"), 140},
           {QStringLiteral("IAPOS"), 230},
           {QStringLiteral("OSECAC"), 110},
           {QStringLiteral("OSDE"), 160},
           {QStringLiteral("Swiss Medical"), 60},
           {QStringLiteral("IOMA"), 30},
           {QStringLiteral("Galeno Argentina"), 40},
           {QStringLiteral("Medifé"), 50},
           {QStringLiteral("OSUOMRA"), 50},
           {QStringLiteral("OSBA"), 30},
           {QStringLiteral("UP"), 40}};
    const QString tabla = QStringLiteral("Lista Coberturas");
    p.idParticular = idDe(p.lote, tabla, QStringLiteral("PARTICULAR"));
    Catalogo filas = catalogo(p.conexion(), tabla);
    if (filas.size() < 2) {
        for (const char16_t *nombre : {u"PAMI", u"IAPOS", u"OSECAC", u"OSDE"})
            (void)idDe(p.lote, tabla, texto(nombre));
        filas = catalogo(p.conexion(), tabla);
    }
    for (const auto &[id, nombre] : filas) {
        if (id == p.idParticular)
            continue;
        int peso = 1;
        for (const auto &[parte, suyo] : usuales)
            if (nombre == parte || nombre.startsWith(parte + QStringLiteral(" - ")))
                peso = suyo;
        if (p.idPami == 0 && nombre.contains(QLatin1String("PAMI")))
            p.idPami = id;
        p.coberturas.emplace_back(id, peso);
    }
}

int Practica::alguien(Especialidad especialidad, QDate dia)
{
    const std::vector<int> *lista = &adultos;
    if (especialidad == Especialidad::Pediatria)
        lista = &ninos;
    else if (especialidad == Especialidad::Ginecologia)
        lista = &mujeres;
    if (lista->empty())
        return pacientes.empty() ? 0 : azar.entre(1, int(pacientes.size()));
    for (int intento = 0; intento < 8; ++intento) {
        // Some come often: the lower half of the list twice as much as the upper one.
        const int ultimo = int(lista->size()) - 1;
        const int nrohc = (*lista)[size_t(azar.porCiento(33) ? azar.entre(0, ultimo / 2) : azar.entre(0, ultimo))];
        const QDate nacimiento = paciente(nrohc).nacimiento;
        if (!nacimiento.isValid() || nacimiento < dia)
            return nrohc;
    }
    return adultos.empty() ? 0 : azar.uno(adultos);
}

bool Practica::esFeriado(QDate dia) const
{
    return std::any_of(std::begin(feriados), std::end(feriados), [dia](const auto &feriado) {
        return feriado.first == dia.day() && feriado.second == dia.month();
    });
}

bool Practica::atiende(const Profesional &profesional, QDate dia) const
{
    return !esFeriado(dia) && !(dia.month() == profesional.mesDeVacaciones && dia.day() <= 14);
}

Catalogo catalogo(db::Connection &conexion, const QString &tabla, const QString &nombre)
{
    const auto filas = conexion.query(QStringLiteral("SELECT id,%1 FROM %2 ORDER BY prioridad DESC,%1")
                                          .arg(nombre, conexion.dialect().identifier(tabla)));
    Catalogo lista;
    lista.reserve(size_t(filas->rowCount()));
    for (int i = 0; i < filas->rowCount(); ++i)
        lista.emplace_back(int(filas->integer(i, 0)), filas->text(i, 1));
    return lista;
}

int idDe(Lote &lote, const QString &tabla, const QString &valor, const QString &nombre)
{
    db::Connection &conexion = lote.conexion();
    const auto filas = conexion.query(
        QStringLiteral("SELECT id FROM %1 WHERE %2 = ?").arg(conexion.dialect().identifier(tabla), nombre), {valor});
    return filas->rowCount() > 0 ? int(filas->integer(0, 0))
                                 : int(lote.escribirConId(lote.insertar(tabla, nombre), {valor}));
}

} // namespace demo
