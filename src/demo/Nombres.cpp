#include "demo/Nombres.h"

#include "demo/Azar.h"

#include <array>
#include <iterator>

namespace demo {

namespace {

QString texto(const char16_t *t) { return QString::fromUtf16(t); }

// The more frequent ones come first and weigh more.
constexpr const char16_t *apellidosFrecuentes[]
    = {u"GONZÁLEZ",  u"RODRÍGUEZ", u"GÓMEZ",   u"FERNÁNDEZ", u"LÓPEZ",   u"DÍAZ",    u"MARTÍNEZ", u"PÉREZ",
       u"GARCÍA",    u"SÁNCHEZ",   u"ROMERO",  u"SOSA",      u"TORRES",  u"ÁLVAREZ", u"RUIZ",     u"RAMÍREZ",
       u"FLORES",    u"BENÍTEZ",   u"ACOSTA",  u"MEDINA",    u"HERRERA", u"SUÁREZ",  u"AGUIRRE",  u"GIMÉNEZ",
       u"GUTIÉRREZ", u"PEREYRA",   u"ROJAS",   u"MOLINA",    u"CASTRO",  u"ORTIZ",   u"SILVA",    u"NÚÑEZ",
       u"LUNA",      u"JUÁREZ",    u"CABRERA", u"RÍOS",      u"MORALES", u"GODOY",   u"MORENO",   u"FERREYRA",
       u"DOMÍNGUEZ", u"CARRIZO",   u"PERALTA", u"CASTILLO",  u"LEDESMA", u"QUIROGA", u"VEGA",     u"VERA",
       u"MUÑOZ",     u"OJEDA",     u"PONCE",   u"VILLALBA",  u"CARDOZO", u"NAVARRO", u"CORONEL",  u"VÁZQUEZ",
       u"IBÁÑEZ",    u"PEÑA",      u"ACUÑA",   u"OCAMPO"};
constexpr const char16_t *apellidosOtros[]
    = {u"BIANCHI",    u"ROSSI",     u"ESPÓSITO",   u"FERRARI",    u"ROMANO",      u"MARINO",       u"BRUNO",
       u"COLOMBO",    u"RICCI",     u"CONTI",      u"GIULIANI",   u"DE LUCA",     u"DI BENEDETTO", u"D'ANGELO",
       u"D'AMICO",    u"DELL'ORO",  u"O'HIGGINS",  u"O'CONNOR",   u"MACDONALD",   u"WAGNER",       u"SCHMIDT",
       u"MÜLLER",     u"KOWALSKI",  u"NOWAK",      u"COHEN",      u"LEVY",        u"HADDAD",       u"NASSIF",
       u"YAMAMOTO",   u"QUISPE",    u"MAMANI",     u"CONDORÍ",    u"CHOQUE",      u"CATRILEO",     u"ETCHEVERRY",
       u"IRIGOYEN",   u"GOYENECHE", u"ECHAGÜE",    u"ARGÜELLO",   u"URQUIZA",     u"ZUBIZARRETA",  u"ITURRALDE",
       u"ELIZALDE",   u"ÑÁÑEZ",     u"ÑANCULEO",   u"AGÜERO",     u"BARRIONUEVO", u"CASANOVA",     u"DE LA FUENTE",
       u"DE LA VEGA", u"DEL VALLE", u"SAN MARTÍN", u"SANTA CRUZ", u"PAZ",         u"LAGOS",        u"MEZA",
       u"LENCINA",    u"TABORDA",   u"TOLEDO",     u"VALDEZ",     u"ZÁRATE",      u"YÁÑEZ",        u"BRITOS",
       u"CEJAS",      u"DUARTE",    u"ESCOBAR"};

constexpr const char16_t *mujeresMayores[]
    = {u"MARÍA",        u"ANA",      u"ROSA",   u"MARTA", u"SUSANA", u"ELENA",    u"NORMA",
       u"BEATRIZ",      u"GRACIELA", u"SILVIA", u"MIRTA", u"ALICIA", u"NÉLIDA",   u"TERESA",
       u"STELLA MARIS", u"LILIANA",  u"OLGA",   u"IRMA",  u"ELSA",   u"CRISTINA", u"MÓNICA"};
constexpr const char16_t *mujeresAdultas[]
    = {u"MARÍA",    u"LAURA",   u"PATRICIA",  u"CLAUDIA", u"ANDREA",   u"VERÓNICA", u"NATALIA",
       u"CAROLINA", u"ROMINA",  u"CECILIA",   u"PAULA",   u"GABRIELA", u"SOLEDAD",  u"LORENA",
       u"MARIANA",  u"VALERIA", u"FLORENCIA", u"JIMENA",  u"INÉS",     u"BEGOÑA"};
constexpr const char16_t *mujeresJovenes[]
    = {u"SOFÍA",    u"CAMILA",    u"MARTINA", u"LUCÍA",    u"VALENTINA", u"AGUSTINA", u"JULIETA",
       u"CATALINA", u"EMMA",      u"OLIVIA",  u"DELFINA",  u"MÍA",       u"ABRIL",    u"MILAGROS",
       u"PILAR",    u"GUADALUPE", u"ZOE",     u"ISABELLA", u"JAZMÍN",    u"RENATA"};
constexpr const char16_t *varonesMayores[]
    = {u"JUAN",    u"CARLOS",  u"JOSÉ",    u"JORGE",   u"LUIS",   u"MIGUEL",  u"HÉCTOR",
       u"OSCAR",   u"RAÚL",    u"ROBERTO", u"EDUARDO", u"RUBÉN",  u"HUGO",    u"RICARDO",
       u"ALBERTO", u"OSVALDO", u"ÁNGEL",   u"ANTONIO", u"ANÍBAL", u"DOMINGO", u"NÉSTOR"};
constexpr const char16_t *varonesAdultos[]
    = {u"DIEGO",  u"PABLO",  u"MARCELO",   u"GUSTAVO",  u"SERGIO",  u"FERNANDO", u"ALEJANDRO",
       u"DANIEL", u"MARTÍN", u"SEBASTIÁN", u"CRISTIAN", u"GABRIEL", u"LEONARDO", u"JAVIER",
       u"ANDRÉS", u"MATÍAS", u"NICOLÁS",   u"ESTEBAN",  u"GERMÁN",  u"IÑAKI"};
constexpr const char16_t *varonesJovenes[]
    = {u"MATEO",   u"SANTIAGO", u"BENJAMÍN",  u"THIAGO", u"BAUTISTA",  u"FELIPE", u"JOAQUÍN",
       u"LAUTARO", u"TOMÁS",    u"FRANCISCO", u"LUCAS",  u"VALENTINO", u"CIRO",   u"DANTE",
       u"RAMIRO",  u"SIMÓN",    u"IGNACIO",   u"GAEL",   u"LORENZO",   u"BRUNO"};

constexpr const char16_t *calles[] = {u"San Martín",     u"Belgrano",
                                      u"Rivadavia",      u"Mitre",
                                      u"Sarmiento",      u"Moreno",
                                      u"9 de Julio",     u"25 de Mayo",
                                      u"Av. Pellegrini", u"Bv. Oroño",
                                      u"Entre Ríos",     u"Corrientes",
                                      u"Córdoba",        u"Santa Fe",
                                      u"Mendoza",        u"San Juan",
                                      u"Av. Francia",    u"Av. Alberdi",
                                      u"Güemes",         u"Alem",
                                      u"Urquiza",        u"Tucumán",
                                      u"Salta",          u"Jujuy",
                                      u"Brown",          u"Dorrego",
                                      u"Italia",         u"España",
                                      u"Paraguay",       u"Presidente Roca",
                                      u"Av. San Martín", u"Pje. Simeoni",
                                      u"Ituzaingó",      u"Cerrito",
                                      u"La Paz",         u"Viamonte",
                                      u"Ocampo",         u"Gálvez",
                                      u"Ayacucho",       u"Colón",
                                      u"Necochea",       u"Chacabuco",
                                      u"Maipú",          u"Laprida",
                                      u"Buenos Aires",   u"Juan Manuel de Rosas",
                                      u"Mariano Moreno", u"Dr. Ricardo Gutiérrez",
                                      u"Los Ñandúes"};

const std::vector<std::pair<Localidad, int>> &localidades()
{
    const auto lugar = [](const char16_t *n, const char16_t *p, const char16_t *c, const char16_t *cp, int peso) {
        return std::pair<Localidad, int>{{texto(n), texto(p), texto(c), texto(cp)}, peso};
    };
    static const std::vector<std::pair<Localidad, int>> lista{
        lugar(u"Rosario", u"Santa Fe", u"0341", u"2000", 560),
        lugar(u"Villa Gobernador Gálvez", u"Santa Fe", u"0341", u"2124", 70),
        lugar(u"Granadero Baigorria", u"Santa Fe", u"0341", u"2152", 50),
        lugar(u"Funes", u"Santa Fe", u"0341", u"2132", 50),
        lugar(u"Roldán", u"Santa Fe", u"0341", u"2134", 35),
        lugar(u"Pérez", u"Santa Fe", u"0341", u"2121", 30),
        lugar(u"San Lorenzo", u"Santa Fe", u"03476", u"2200", 40),
        lugar(u"Casilda", u"Santa Fe", u"03464", u"2170", 25),
        lugar(u"Cañada de Gómez", u"Santa Fe", u"03471", u"2500", 20),
        lugar(u"Santa Fe", u"Santa Fe", u"0342", u"3000", 20),
        lugar(u"Victoria", u"Entre Ríos", u"03436", u"3153", 20),
        lugar(u"Paraná", u"Entre Ríos", u"0343", u"3100", 12),
        lugar(u"San Nicolás de los Arroyos", u"Buenos Aires", u"0336", u"2900", 25),
        lugar(u"Pergamino", u"Buenos Aires", u"02477", u"2700", 15),
        lugar(u"Ciudad Autónoma de Buenos Aires", u"Ciudad Autónoma de Buenos Aires", u"011", u"1000", 15),
        lugar(u"Córdoba", u"Córdoba", u"0351", u"5000", 13)};
    return lista;
}

template <typename Mayores, typename Adultos, typename Jovenes>
QString nombre(Azar &azar, int anio, const Mayores &mayores, const Adultos &adultos, const Jovenes &jovenes)
{
    return texto(anio < 1965 ? azar.uno(mayores) : anio < 1998 ? azar.uno(adultos) : azar.uno(jovenes));
}

// Digits of a subscriber number such that area code and number have ten together.
QString abonado(Azar &azar, const Localidad &lugar)
{
    const qsizetype cifras = 10 - (lugar.caracteristica.size() - 1);
    QString numero = QString::number(azar.entre(4, 6));
    while (numero.size() < cifras)
        numero += QString::number(azar.entre(0, 9));
    return numero;
}

} // namespace

QString apellido(Azar &azar)
{
    const auto simple
        = [&] { return texto(azar.porCiento(72) ? azar.uno(apellidosFrecuentes) : azar.uno(apellidosOtros)); };
    const QString primero = simple();
    if (!azar.porCiento(4))
        return primero;
    const QString segundo = simple();
    return primero == segundo ? primero : primero + u' ' + segundo;
}

QString nombres(Azar &azar, bool mujer, int anio)
{
    const auto otro = [&] {
        return mujer ? nombre(azar, anio, mujeresMayores, mujeresAdultas, mujeresJovenes)
                     : nombre(azar, anio, varonesMayores, varonesAdultos, varonesJovenes);
    };
    const QString primero = otro();
    if (!azar.porCiento(55))
        return primero;
    const QString segundo = otro();
    return primero == segundo ? primero : primero + u' ' + segundo;
}

QString domicilio(Azar &azar)
{
    // One draw to a statement: the operands of an expression may be evaluated in any order.
    QString lugar = texto(azar.uno(calles));
    lugar += u' ' + QString::number(azar.entre(100, 6800));
    if (azar.porCiento(22)) {
        lugar += u' ' + QString::number(azar.entre(1, 14)) + QStringLiteral("º ");
        lugar += QChar(u'A' + azar.entre(0, 5));
    }
    return lugar;
}

const Localidad &localidad(Azar &azar) { return azar.pesado(localidades()); }

QString telefonoFijo(Azar &azar, const Localidad &lugar) { return lugar.caracteristica + u' ' + abonado(azar, lugar); }

QString telefonoCelular(Azar &azar, const Localidad &lugar)
{
    return lugar.caracteristica + QStringLiteral(" 15") + abonado(azar, lugar);
}

int documento(Azar &azar, int anio)
{
    // Highest number given at the beginning of each decade, in thousands.
    struct Tramo {
        int anio;
        int numero;
    };
    static constexpr Tramo tramos[]
        = {{1920, 900},
           {1930, 2800},
           {1940, 4700},
           {1950, 7600},
           {1960, 13600},
           {1970, 21300},
           {1980, 27800},
           {1990, 34700},
           {2000, 42300},
           {2010, 50300},
           {2020, 57900},
           {2040, 72000}};
    if (azar.porMil(25))
        return azar.entre(92000000, 96300000); // residents born abroad
    const int conocido = qBound(tramos[0].anio, anio, std::rbegin(tramos)->anio - 1);
    const Tramo *tramo = tramos;
    while (tramo[1].anio <= conocido)
        ++tramo;
    const int porAnio = (tramo[1].numero - tramo[0].numero) * 1000 / (tramo[1].anio - tramo[0].anio);
    return tramo[0].numero * 1000 + (conocido - tramo[0].anio) * porAnio + azar.entre(0, porAnio - 1);
}

QString sinAcentos(const QString &original)
{
    QString letras;
    for (const QChar c : original.normalized(QString::NormalizationForm_D).toLower())
        if ((c >= u'a' && c <= u'z') || (c >= u'0' && c <= u'9'))
            letras += c;
    return letras;
}

} // namespace demo
