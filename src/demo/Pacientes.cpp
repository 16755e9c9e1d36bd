#include "base/Fechas.h"
#include "demo/Nombres.h"
#include "demo/Practica.h"
#include "patients/Numeracion.h"

#include <unordered_set>

namespace demo {

namespace {

struct Listas {
    Catalogo ocupaciones;
    Catalogo estadosCiviles;
    int dni = 0;
    int argentina = 0;
    int madre = 0;
    QHash<QString, int> ciudades;
    QHash<QString, int> provincias;
};

// Upper bound of age and weight: more or less the country's pyramid, with the old and the very young coming more often.
constexpr struct {
    int desde;
    int hasta;
    int peso;
} edades[] = {{0, 4, 90}, {5, 14, 130}, {15, 29, 200}, {30, 44, 210}, {45, 59, 170}, {60, 74, 130}, {75, 94, 70}};

QDate nacimiento(Azar &azar, QDate hoy)
{
    int n = azar.entre(0, 999);
    for (const auto &tramo : edades) {
        if ((n -= tramo.peso) < 0) {
            const int dias = azar.entre(tramo.desde * 365 + 1, tramo.hasta * 365 + 364);
            return hoy.addDays(-dias);
        }
    }
    return hoy.addDays(-40 * 365);
}

int buscar(const Catalogo &lista, const QString &nombre)
{
    for (const auto &[id, suyo] : lista)
        if (suyo.compare(nombre, Qt::CaseInsensitive) == 0)
            return id;
    return lista.empty() ? 0 : lista.front().first;
}

int idRecordado(Lote &lote, QHash<QString, int> &conocidos, const QString &tabla, const QString &nombre)
{
    const auto it = conocidos.constFind(nombre);
    return it != conocidos.constEnd() ? *it : *conocidos.insert(nombre, idDe(lote, tabla, nombre));
}

Listas leerListas(Practica &p)
{
    Listas l;
    l.ocupaciones = catalogo(p.conexion(), QStringLiteral("Lista Ocupacion"));
    l.estadosCiviles = catalogo(p.conexion(), QStringLiteral("Lista Estado civil"));
    l.dni = idDe(p.lote, QStringLiteral("Lista Tipo de documento"), QStringLiteral("DNI"));
    l.argentina = idDe(p.lote, QStringLiteral("Lista Pais"), QStringLiteral("Argentina"));
    l.madre = buscar(catalogo(p.conexion(), QStringLiteral("Lista Relacion con el paciente")), QStringLiteral("Madre"));
    return l;
}

// Null where nothing is known of it.
QVariant oNada(bool sabido, const QVariant &valor) { return sabido ? valor : QVariant(); }

int coberturaDe(Practica &p, int edad)
{
    if (edad >= 65 && p.idPami != 0 && p.azar.porCiento(72))
        return p.idPami;
    if (p.coberturas.empty() || p.azar.porCiento(24))
        return 0;
    const int id = p.azar.pesado(p.coberturas);
    return id == p.idPami && edad < 50 ? 0 : id;
}

QString afiliado(Azar &azar)
{
    QString numero = QString::number(azar.entre(100000, 9999999));
    return numero + u'/' + QStringLiteral("%1").arg(azar.entre(0, 5), 2, 10, QChar(u'0'));
}

QString correo(Azar &azar, const QString &nombres, const QString &apellido)
{
    return sinAcentos(nombres.section(u' ', 0, 0)) + u'.' + sinAcentos(apellido) + QString::number(azar.entre(1, 99))
        + QStringLiteral("@correo.example");
}

const QString alergias[]
    = {QStringLiteral("Alergia a la penicilina"),
       QStringLiteral("Alergia a la aspirina (AAS)"),
       QStringLiteral("Alergia al látex"),
       QStringLiteral("Asma: evitar betabloqueantes"),
       QStringLiteral("Anticoagulado"),
       QStringLiteral("Alergia a los mariscos y al yodo")};

const QString columnas = QStringLiteral(
    "NroHC numehistoria Apellido apellido2 Nombres FeNac sexo DNI idtipodoc idocupacion Tel TelCelular nombremadre "
    "idrelacion ape1contacto nombrecontacto idestadocivil Domicilio CP idciudad idprovincia idpais Email Notas "
    "cobertura "
    "idcobertura NroOS pacienteinactivo motivoinactividad alergias GrupoSanguineo FactorSanguineo");

class Padron
{
public:
    Padron(Practica &practica)
        : p(practica)
        , m_listas(leerListas(practica))
        , m_insertar(practica.lote.insertar(QStringLiteral("Pacientes"), columnas))
        , m_perinatal(practica.lote.insertar(
              QStringLiteral("Antecedentes Perinatologicos"), QStringLiteral("NroPaci semgesta")))
    {
    }

    void agregar(int nrohc);

private:
    QString documentoNuevo(int anio)
    {
        int numero = documento(p.azar, anio);
        while (!m_documentos.insert(numero).second)
            ++numero;
        return QString::number(numero);
    }

    Practica &p;
    Listas m_listas;
    QString m_insertar;
    QString m_perinatal;
    std::unordered_set<int> m_documentos;
};

void Padron::agregar(int nrohc)
{
    static const QString grupos[]
        = {QStringLiteral("0"), QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("AB")};
    Azar &azar = p.azar;
    Paciente paciente;
    const QDate nacio = nacimiento(azar, p.medida.hoy);
    const bool nacimientoSabido = !azar.porMil(15);
    const int edad = p.medida.hoy.year() - nacio.year();
    const bool nino = edad < 15;
    paciente.nacimiento = nacimientoSabido ? nacio : QDate();
    paciente.mujer = azar.porCiento(nino ? 49 : 60);
    paciente.cobertura = coberturaDe(p, edad);

    const QString suApellido = apellido(azar);
    const QString susNombres = nombres(azar, paciente.mujer, nacio.year());
    const bool conSegundo = azar.porCiento(8);
    const QString segundo = apellido(azar);
    const QString madre = nombres(azar, true, nacio.year() - 28);
    const Localidad &lugar = localidad(azar);
    const bool inactivo = azar.porMil(20);
    const QVariant cobertura = paciente.cobertura != 0 ? 1 : azar.porCiento(75) ? 2 : 0;

    db::Params v;
    v << nrohc << patients::componerNumeroHistoria(QStringLiteral("HC-"), QString::number(nrohc)) << suApellido
      << oNada(conSegundo, segundo) << susNombres << (nacimientoSabido ? nacio : base::fechaDesconocida())
      << (paciente.mujer ? 0 : 1);
    v << (azar.porMil(25) ? QString() : documentoNuevo(nacio.year())) << m_listas.dni;
    v << oNada(
        !nino && !m_listas.ocupaciones.empty(),
        m_listas.ocupaciones.empty() ? 0 : azar.uno(m_listas.ocupaciones).first);
    v << (azar.porCiento(55) ? telefonoFijo(azar, lugar) : QString());
    v << (azar.porCiento(88) ? telefonoCelular(azar, lugar) : QString());
    v << oNada(nino, madre + u' ' + segundo) << oNada(nino, m_listas.madre) << oNada(nino, segundo)
      << oNada(nino, madre);
    v << oNada(
        edad >= 18 && !m_listas.estadosCiviles.empty(),
        m_listas.estadosCiviles.empty() ? 0 : azar.uno(m_listas.estadosCiviles).first);
    v << domicilio(azar) << lugar.cp;
    v << idRecordado(p.lote, m_listas.ciudades, QStringLiteral("Lista Ciudad"), lugar.nombre)
      << idRecordado(p.lote, m_listas.provincias, QStringLiteral("Lista Provincia"), lugar.provincia)
      << m_listas.argentina;
    v << (azar.porCiento(42) ? correo(azar, susNombres, suApellido) : QString());
    v << oNada(azar.porMil(12), QStringLiteral("Viene acompañado por un familiar."));
    v << cobertura
      << (paciente.cobertura != 0 ? QVariant(paciente.cobertura)
              : cobertura == 2    ? QVariant(-1)
                                  : QVariant());
    v << (paciente.cobertura != 0 ? afiliado(azar) : QString());
    v << inactivo << (inactivo ? QStringLiteral("Se mudó a otra ciudad") : QString());
    const bool conAlergia = azar.porCiento(8);
    v << oNada(conAlergia, azar.uno(alergias));
    const bool conGrupo = azar.porCiento(35);
    v << oNada(conGrupo, azar.uno(grupos))
      << oNada(conGrupo, azar.porCiento(90) ? QStringLiteral("Rh +") : QStringLiteral("Rh -"));
    p.lote.escribir(m_insertar, v);
    p.lote.escribir(m_perinatal, {nrohc, oNada(nino, azar.entre(36, 41))});

    p.pacientes.push_back(paciente);
    (nino ? p.ninos : p.adultos).push_back(nrohc);
    if (paciente.mujer && edad >= 13)
        p.mujeres.push_back(nrohc);
}

} // namespace

void crearPacientes(Practica &p, const Avance &avance)
{
    Padron padron(p);
    p.pacientes.reserve(size_t(p.medida.pacientes));
    for (int nrohc = 1; nrohc <= p.medida.pacientes; ++nrohc) {
        if (nrohc % 2000 == 1)
            avance(int(100ll * nrohc / p.medida.pacientes), QStringLiteral("Pacientes"));
        padron.agregar(nrohc);
    }
}

} // namespace demo
