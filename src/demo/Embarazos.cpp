#include "demo/Nombres.h"
#include "demo/Practica.h"

#include <algorithm>

namespace demo {

namespace {

constexpr int duracion = 280; // days

/// Usual fetal measures in mm and g by completed weeks, every fourth week from 12 on.
struct Medidas {
    int biparietal;
    int cabeza;
    int abdomen;
    int femur;
    int peso;
};
constexpr Medidas usuales[]
    = {{20, 72, 56, 8, 15},
       {34, 124, 105, 21, 146},
       {47, 175, 152, 33, 331},
       {60, 220, 195, 43, 670},
       {71, 262, 238, 54, 1210},
       {82, 296, 280, 63, 1953},
       {89, 321, 323, 70, 2813},
       {94, 338, 360, 75, 3619}};

Medidas medidasDe(int semana)
{
    const int i = std::clamp((semana - 12) / 4, 0, int(std::size(usuales)) - 2);
    const int paso = std::clamp(semana - 12 - i * 4, 0, 4);
    const auto medio = [paso](int a, int b) { return a + (b - a) * paso / 4; };
    const Medidas &a = usuales[i], &b = usuales[i + 1];
    return {
        medio(a.biparietal, b.biparietal),
        medio(a.cabeza, b.cabeza),
        medio(a.abdomen, b.abdomen),
        medio(a.femur, b.femur),
        medio(a.peso, b.peso)};
}

class Obstetricia
{
public:
    explicit Obstetricia(Practica &practica)
        : p(practica)
        , m_embarazo(practica.lote.insertar(
              QStringLiteral("Pacientes Embarazos"),
              QStringLiteral("NroPaci NroEmba FUM fppeco CantiFeto FinEmba FechaParto PesoHabi talla imc lugarparto "
                             "hb0 hb1 glu0 glu1 antegeme observaciones")))
        , m_materno(practica.lote.insertar(
              QStringLiteral("Pacientes Control Materno"),
              QStringLiteral("NroPaci NroEmba fecha AltuUter pesoactual PesoGana DinaUter Sistolica Diastolica "
                             "MoviFeta Edema prurito Observaciones")))
        , m_fetal(practica.lote.insertar(
              QStringLiteral("Pacientes Control Feto"),
              QStringLiteral("NroPaci NroEmba NroFeto fecha DiameBipa CircuCraneal DiameToracico Abdomen CircunAbdo "
                             "LongiFemur PesoFeto TallaFeto CRL FreCar PresenFeto UbiPlacen Madu Liquido hechopor")))
        , m_parto(practica.lote.insertar(
              QStringLiteral("Pacientes Embarazos Finalizados"),
              QStringLiteral("NroPaci NroEmba NroFeto fechaparto lugarparto iniparto termi controlemba nombre sexo "
                             "pesonacer talla percef partoatendidopor alimentacion")))
        , m_paciente(QStringLiteral("UPDATE [Pacientes] SET UltiEmba = ?,Embarazo = ? WHERE NroHC = ?"))
    {
        for (const Profesional &profesional : p.profesionales)
            if (profesional.especialidad == Especialidad::Ginecologia)
                m_obstetras << profesional.nombre;
    }

    void deUna(int nrohc)
    {
        Azar &azar = p.azar;
        const Paciente &mujer = p.paciente(nrohc);
        if (!mujer.nacimiento.isValid())
            return;
        const int edad = mujer.nacimiento.daysTo(p.medida.hoy) / 365;
        if (edad < 18 || edad > 44)
            return;
        const int suerte = azar.entre(0, 99);
        const bool corre = suerte < 4;
        const int anteriores = suerte < 18 ? azar.entre(corre ? 0 : 1, 2) : 0;
        if (!corre && anteriores == 0)
            return;
        int numero = 0;
        // Oldest first, some years apart, never before she was sixteen.
        for (int i = anteriores; i > 0; --i) {
            const QDate fum = p.medida.hoy.addDays(-(i * 900 + azar.entre(330, 500)));
            if (mujer.nacimiento.daysTo(fum) > 16 * 365)
                embarazo(nrohc, ++numero, fum, true);
        }
        if (corre)
            embarazo(nrohc, ++numero, p.medida.hoy.addDays(-azar.entre(45, 268)), false);
        p.lote.escribir(m_paciente, {numero, corre, nrohc});
    }

private:
    void embarazo(int nrohc, int numero, QDate fum, bool terminado)
    {
        Azar &azar = p.azar;
        const int fetos = azar.porMil(15) ? 2 : 1;
        const QDate fin = fum.addDays(duracion + azar.entre(-12, 6));
        const int altura = azar.entre(150, 176), peso = azar.entre(48, 84);
        const bool conEco = azar.porCiento(40);
        const int corrimiento = azar.entre(-4, 4);
        const int horaDeParto = azar.entre(4, 23); // clear of the hours that clocks skip
        const double hb = azar.entre(105, 138) / 10.0;
        const QString lugar = QStringLiteral("Maternidad");
        db::Params v;
        v << nrohc << numero << fum << (conEco ? QVariant(fum.addDays(duracion + corrimiento)) : QVariant()) << fetos;
        v << terminado << (terminado ? QVariant(QDateTime(fin, QTime(horaDeParto, 30))) : QVariant());
        v << double(peso) << altura / 100.0 << double(peso * 10000 * 10 / (altura * altura)) / 10.0 << lugar;
        v << hb << hb - 0.4 << double(azar.entre(72, 94)) << QVariant() << (fetos == 2) << QVariant();
        p.lote.escribir(m_embarazo, v);
        controles(nrohc, numero, fum, std::min(fin, p.medida.hoy), peso, fetos);
        if (terminado)
            for (int feto = 1; feto <= fetos; ++feto)
                nacimiento(nrohc, numero, feto, fin, lugar);
    }

    void controles(int nrohc, int numero, QDate fum, QDate hasta, int pesoHabitual, int fetos)
    {
        Azar &azar = p.azar;
        double anterior = pesoHabitual;
        for (int semana = 8; semana <= 40; semana += semana < 32 ? 4 : 2) {
            const QDate dia = fum.addDays(semana * 7 + azar.entre(0, 4));
            if (dia > hasta)
                return;
            const double peso = pesoHabitual + std::max(0, semana - 8) * 37 / 100.0 + azar.entre(-5, 5) / 10.0;
            const int sistolica = azar.entre(100, 128), diastolica = azar.entre(60, 82);
            const bool edema = semana > 30 && azar.porCiento(10);
            db::Params v{nrohc, numero, dia, double(semana < 14 ? 0 : semana - 1), peso};
            v << peso - anterior << 0.0 << sistolica << diastolica << (semana >= 20) << edema << false << QVariant();
            p.lote.escribir(m_materno, v);
            anterior = peso;
            if (semana >= 12 && semana % 8 == 4)
                for (int feto = 1; feto <= fetos; ++feto)
                    ecografia(nrohc, numero, feto, dia, semana);
        }
    }

    void ecografia(int nrohc, int numero, int feto, QDate dia, int semana)
    {
        Azar &azar = p.azar;
        const Medidas m = medidasDe(semana);
        const int desvio = azar.entre(-4, 4); // per cent
        const auto con = [desvio](int medida) { return medida + medida * desvio / 100; };
        db::Params v;
        v << nrohc << numero << feto << dia << double(con(m.biparietal)) << double(con(m.cabeza))
          << double(con(m.biparietal) * 95 / 100) << double(con(m.abdomen) / 3) << double(con(m.abdomen))
          << double(con(m.femur)) << con(m.peso) << double(semana * 12) << (semana < 14 ? 55.0 : 0.0);
        v << azar.entre(128, 158);
        v << (azar.porCiento(semana < 30 ? 70 : 94) ? QStringLiteral("Cefálica") : QStringLiteral("Pelviana"));
        v << (azar.porCiento(50) ? QStringLiteral("Anterior ") : QStringLiteral("Posterior"));
        v << (semana < 28 ? QStringLiteral(" I") : QStringLiteral(" II")) << QStringLiteral("Normal");
        v << (m_obstetras.isEmpty() ? QString() : azar.uno(m_obstetras));
        p.lote.escribir(m_fetal, v);
    }

    void nacimiento(int nrohc, int numero, int feto, QDate dia, const QString &lugar)
    {
        Azar &azar = p.azar;
        const bool nena = azar.porCiento(49);
        const int peso = azar.entre(2650, 3900), talla = azar.entre(470, 520), cabeza = azar.entre(330, 360);
        db::Params v;
        v << nrohc << numero << feto << dia << lugar << (azar.porCiento(80) ? 0 : 1);
        v << (azar.porCiento(65) ? 0 : 2) << 1;
        v << nombres(azar, nena, dia.year()) << (nena ? 1 : 0) << peso << double(talla) << double(cabeza);
        v << (m_obstetras.isEmpty() ? QString() : azar.uno(m_obstetras)) << 0;
        p.lote.escribir(m_parto, v);
    }

    Practica &p;
    QString m_embarazo;
    QString m_materno;
    QString m_fetal;
    QString m_parto;
    QString m_paciente;
    QStringList m_obstetras;
};

struct Vacuna {
    int id;
    std::vector<int> meses; ///< suggested age of each dose
};

std::vector<Vacuna> leerVacunas(Practica &p)
{
    const auto filas = p.conexion().query(
        QStringLiteral("SELECT id,NroDosis,Edad1,Edad2,Edad3,Edad4,Edad5 FROM [Lista Vacunas] WHERE Tipo = 1"
                       " ORDER BY prioridad DESC,Vacuna"));
    std::vector<Vacuna> vacunas;
    for (int i = 0; i < filas->rowCount(); ++i) {
        Vacuna vacuna{int(filas->integer(i, 0)), {}};
        for (int dosis = 0; dosis < std::min(5, int(filas->integer(i, 1))); ++dosis)
            if (!filas->isNull(i, 2 + dosis))
                vacuna.meses.push_back(int(filas->integer(i, 2 + dosis)));
        vacunas.push_back(std::move(vacuna));
    }
    return vacunas;
}

/// Kilograms and centimetres by years completed.
constexpr std::pair<double, double> crecimiento[]
    = {{3.4, 50},
       {9.6, 75},
       {12.2, 87},
       {14.3, 96},
       {16.3, 103},
       {18.4, 110},
       {20.6, 116},
       {23.0, 122},
       {25.6, 128},
       {28.6, 133},
       {32.0, 138},
       {36.0, 144},
       {40.5, 150},
       {45.5, 156},
       {51.0, 161},
       {55.0, 165}};

} // namespace

void crearEmbarazos(Practica &p)
{
    Obstetricia obstetricia(p);
    for (const int nrohc : p.mujeres)
        obstetricia.deUna(nrohc);
}

void crearControlesDeNinos(Practica &p)
{
    const std::vector<Vacuna> vacunas = leerVacunas(p);
    const QString dosis
        = p.lote.insertar(QStringLiteral("Pacientes Vacunas"), QStringLiteral("NroPaci idvacuna dosis fecha"));
    const QString control = p.lote.insertar(
        QStringLiteral("Pacientes Controles Antropometricos"), QStringLiteral("NroPaci fecha peso talla pericefa"));
    Azar &azar = p.azar;
    for (const int nrohc : p.ninos) {
        const QDate nacimiento = p.paciente(nrohc).nacimiento;
        if (!nacimiento.isValid())
            continue;
        for (const Vacuna &vacuna : vacunas)
            for (size_t i = 0; i < vacuna.meses.size(); ++i) {
                const QDate fecha = nacimiento.addMonths(vacuna.meses[i]).addDays(azar.entre(0, 45));
                if (fecha <= p.medida.hoy && azar.porCiento(94))
                    p.lote.escribir(dosis, {nrohc, vacuna.id, int(i) + 1, fecha});
            }
        const int grande = azar.entre(-12, 12); // per cent above or below
        for (int anio = 0; anio < 15; anio += anio < 3 ? 1 : 2) {
            const QDate fecha = nacimiento.addDays(anio * 365 + azar.entre(3, 30));
            if (fecha > p.medida.hoy)
                break;
            const auto &[peso, talla] = crecimiento[anio];
            const double suPeso = qRound(peso * (100 + grande) / 10) / 10.0;
            const double suTalla = qRound(talla * (400 + grande) / 40) / 10.0;
            p.lote.escribir(
                control, {nrohc, fecha, suPeso, suTalla, anio < 3 ? QVariant(35.0 + anio * 5) : QVariant()});
        }
    }
}

} // namespace demo
