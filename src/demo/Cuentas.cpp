#include "demo/Perfil.h"

#include <algorithm>
#include <map>

namespace demo {

namespace {

struct Prestacion {
    int id = 0;
    double precio = 0;
};

// What the schedules of a new practice may lack.
const std::pair<QString, QString> propias[]
    = {{QStringLiteral("420101"), QStringLiteral("Consulta médica")},
       {QStringLiteral(".01.01"), QStringLiteral("Consulta odontológica")},
       {QStringLiteral(".02.01"), QStringLiteral("Obturación simple")},
       {QStringLiteral(".05.01"), QStringLiteral("Tartrectomía y cepillado mecánico")},
       {QStringLiteral(".09.01"), QStringLiteral("Radiografía periapical")},
       {QStringLiteral(".10.01"), QStringLiteral("Extracción dentaria")}};

/// Practices by kind of professional, at most a dozen each: one uses few of the thousands of the schedule.
using Prestaciones = std::map<Especialidad, std::vector<Prestacion>>;

Prestaciones leerNomenclador(Practica &p)
{
    const QString sql = p.lote.insertar(QStringLiteral("Lista Nomenclador"), QStringLiteral("codigo nombre"));
    for (const auto &[codigo, nombre] : propias)
        if (p.conexion()
                .query(
                    QStringLiteral("SELECT id FROM [Lista Nomenclador] WHERE codigo = ? or nombre = ?"),
                    {codigo, nombre})
                ->rowCount()
            == 0)
            p.lote.escribir(sql, {codigo, nombre});
    const auto filas
        = p.conexion().query(QStringLiteral("SELECT id,nombre FROM [Lista Nomenclador] ORDER BY codigo,id"));
    Catalogo todas;
    for (int i = 0; i < filas->rowCount(); ++i)
        todas.emplace_back(int(filas->integer(i, 0)), filas->text(i, 1));

    Prestaciones prestaciones;
    for (const Profesional &profesional : p.profesionales) {
        std::vector<Prestacion> &suyas = prestaciones[profesional.especialidad];
        if (!suyas.empty())
            continue;
        for (const int id : idsDe(todas, perfil(profesional.especialidad).practicas))
            if (suyas.size() < 12)
                suyas.push_back({id, 4000.0 + p.azar.entre(0, 60) * 250});
    }
    return prestaciones;
}

std::vector<int> derivadores(Practica &p)
{
    std::vector<int> ids;
    for (const char16_t *nombre :
         {u"Dr. Aníbal Basualdo",
          u"Dra. Celina Arregui",
          u"Dr. Julio Peñaloza",
          u"Dra. Noemí Grandi",
          u"Dr. Omar Haddad",
          u"Dra. Paula Iñíguez",
          u"Dr. Saúl Kravetz",
          u"Dra. Zulema Ortúzar"})
        ids.push_back(idDe(p.lote, QStringLiteral("Lista Derivadores"), QString::fromUtf16(nombre)));
    return ids;
}

void guardarPrecios(Practica &p, const Prestaciones &prestaciones)
{
    const QString sql = p.lote.insertar(
        QStringLiteral("Lista Precios"),
        QStringLiteral("idobrasocial idpractica costopaciente costocobertura usarporcentaje costoporcentaje cobradr"));
    std::vector<int> coberturas{p.idParticular};
    for (const auto &[id, peso] : p.coberturas)
        if (peso >= 30)
            coberturas.push_back(id);
    std::map<int, Prestacion> practicas; // several kinds share the plain visit
    for (const auto &[especialidad, suyas] : prestaciones)
        for (const Prestacion &practica : suyas)
            practicas.emplace(practica.id, practica);
    for (const int cobertura : coberturas)
        for (const auto &[id, practica] : practicas) {
            const bool particular = cobertura == p.idParticular;
            const double plus = particular ? practica.precio * 2 : p.azar.entre(0, 6) * 500;
            const double deLaCobertura = particular ? 0 : practica.precio;
            p.lote.escribir(
                sql, {cobertura, practica.id, plus, deLaCobertura, false, 0.0, (plus + deLaCobertura) * 0.5});
        }
}

class Ordenes
{
public:
    explicit Ordenes(Practica &practica)
        : p(practica)
        , m_prestaciones(leerNomenclador(practica))
        , m_derivadores(derivadores(practica))
        , m_orden(practica.lote.insertar(
              QStringLiteral("Pacientes Ordenes"),
              QStringLiteral("NroPaci fecha numero idpractica entregada fechaentrega autorizada fechaautorizacion "
                             "fechaderivacion sesiones pagaiva costo estado costo_os estado_os iddoctor idobrasocial "
                             "idderivado idusuariocarga diente cara tipoasistencia")))
        , m_sesion(practica.lote.insertar(
              QStringLiteral("Pacientes Sesiones"),
              QStringLiteral("NroPaci idorden fecha codigoautorizacion iddoctor autorizadafuerafecha liquidadas")))
        , m_pago(practica.lote.insertar(
              QStringLiteral("Pacientes Pagos"),
              QStringLiteral("NroPaci idorden fecha importe quien iddoctor turno libros observaciones")))
    {
        guardarPrecios(p, m_prestaciones);
    }

    void agregar(QDate fecha);

private:
    void sesiones(int nrohc, qint64 orden, QDate fecha, int hechas, const Profesional &profesional, bool liquidadas)
    {
        for (int i = 0; i < hechas; ++i) {
            const QDate dia = fecha.addDays(2 + i * 3);
            if (dia > p.medida.hoy)
                return;
            const int hora = p.azar.entre(8, 18), minuto = p.azar.entre(0, 1) * 30;
            const bool conCodigo = p.azar.porCiento(80);
            const QString codigo = conCodigo ? QString::number(p.azar.entre(10000000, 99999999)) : QString();
            p.lote.escribir(
                m_sesion,
                {nrohc, orden, QDateTime(dia, QTime(hora, minuto)), codigo, profesional.id, false, liquidadas});
        }
    }

    void pago(int nrohc, qint64 orden, QDate fecha, double importe, char16_t quien)
    {
        if (importe <= 0 || fecha > p.medida.hoy)
            return;
        const int turno = p.azar.entre(1, 2);
        const int libros = p.azar.entre(0, 2);
        p.lote.escribir(
            m_pago,
            {nrohc,
             orden,
             fecha,
             importe,
             QString(QChar(quien)),
             p.profesionales.front().id,
             turno,
             libros,
             QVariant(QString())});
    }

    Practica &p;
    Prestaciones m_prestaciones;
    std::vector<int> m_derivadores;
    QString m_orden;
    QString m_sesion;
    QString m_pago;
    int m_numero = 100000;
};

void Ordenes::agregar(QDate fecha)
{
    static const QString caras[] = {QStringLiteral("O"), QStringLiteral("M"), QStringLiteral("D"), QStringLiteral("V")};
    Azar &azar = p.azar;
    const auto quien = size_t(azar.entre(0, int(p.profesionales.size()) - 1));
    const Profesional &profesional = p.profesionales[quien];
    const int nrohc = p.alguien(profesional.especialidad, fecha);
    if (nrohc == 0)
        return;
    const Prestacion *practica = &azar.uno(m_prestaciones.at(profesional.especialidad));
    const bool dental = profesional.especialidad == Especialidad::Odontologia;
    const bool deSesiones = profesional.especialidad == Especialidad::Kinesiologia;

    const int cobertura = p.paciente(nrohc).cobertura;
    const bool particular = cobertura == 0;
    const double costo = particular ? practica->precio * 2 : azar.entre(0, 6) * 500;
    const double costoOs = particular ? 0 : practica->precio;
    const int sesiones = deSesiones ? 10 : 1;
    const bool vieja = fecha < p.medida.hoy.addDays(-75);
    const bool pagada = azar.porCiento(vieja ? 93 : 55);
    const bool pagadaOs = !particular && vieja && azar.porCiento(85);
    const bool entregada = azar.porCiento(92), autorizada = azar.porCiento(90);

    db::Params v;
    v << nrohc << fecha << (azar.porCiento(94) ? ++m_numero : 0) << practica->id;
    v << entregada << (entregada ? QVariant(fecha) : QVariant());
    v << autorizada << (autorizada ? QVariant(fecha) : QVariant()) << QVariant();
    v << sesiones << 0 << costo
      << (pagada                   ? QStringLiteral("P")
              : azar.porCiento(70) ? QStringLiteral("A")
                                   : QStringLiteral("F"));
    v << costoOs << (pagadaOs ? QStringLiteral("P") : azar.porCiento(60) ? QStringLiteral("A") : QStringLiteral("F"));
    v << profesional.id << (particular ? p.idParticular : cobertura);
    v << (azar.porCiento(50) ? azar.uno(m_derivadores) : 0) << p.profesionales.front().id;
    const int cuadrante = azar.entre(1, 4), pieza = azar.entre(1, 8);
    v << (dental ? QString::number(cuadrante * 10 + pieza) : QString());
    v << (dental ? azar.uno(caras) : QString()) << 0;
    const qint64 orden = p.lote.escribirConId(m_orden, v);

    const int hechas = vieja ? sesiones : azar.entre(0, sesiones);
    this->sesiones(nrohc, orden, fecha, hechas, profesional, pagadaOs);
    if (pagada)
        pago(nrohc, orden, fecha, costo, u'P');
    else if (azar.porCiento(40))
        pago(nrohc, orden, fecha, costo / 2, u'P');
    if (pagadaOs)
        pago(nrohc, orden, std::min(fecha.addDays(60), p.medida.hoy), costoOs, u'O');
}

} // namespace

void crearCuentas(Practica &p, const Avance &avance)
{
    if (p.pacientes.empty())
        return;
    Ordenes ordenes(p);
    // Evenly over two years, more in large practices; the last one is of today.
    const int dias = std::clamp(p.medida.ordenes, 1, 2 * 365 + p.medida.ordenes / 300);
    for (int i = 0; i < p.medida.ordenes; ++i) {
        if (i % 5000 == 0)
            avance(int(100ll * i / p.medida.ordenes), QStringLiteral("Órdenes y pagos"));
        ordenes.agregar(p.medida.hoy.addDays(-int(qint64(p.medida.ordenes - 1 - i) * dias / p.medida.ordenes)));
    }
}

} // namespace demo
