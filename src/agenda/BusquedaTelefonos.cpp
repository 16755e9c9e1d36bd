#include "agenda/BusquedaTelefonos.h"

#include "agenda/Telefonos.h"
#include "db/Connection.h"

#include <QRegularExpression>

#include <algorithm>
#include <set>

namespace agenda {

namespace {

const QStringList &telefonosDePaciente()
{
    static const QStringList columnas{
        QStringLiteral("Tel"), QStringLiteral("TelCelular"), QStringLiteral("TelLaboral")};
    return columnas;
}

QString cifras(const QString &texto)
{
    QString solas;
    for (const QChar c : texto)
        if (c >= u'0' && c <= u'9')
            solas += c;
    return solas;
}

/// What was typed, taken apart.
class Buscado
{
public:
    Buscado(const db::Dialect &dialecto, const QString &texto)
        : m_dialecto(dialecto)
        , m_palabras(texto.split(QRegularExpression(QStringLiteral("[\\s,]+")), Qt::SkipEmptyParts))
    {
        const bool hayLetras = std::any_of(texto.begin(), texto.end(), [](QChar c) { return c.isLetter(); });
        if (!hayLetras)
            m_cifras = cifras(texto);
        for (const QString &palabra : m_palabras)
            m_condiciones.push_back(db::Condition::contains(dialecto, QString(), palabra));
    }

    [[nodiscard]] bool vacio() const { return m_palabras.isEmpty(); }
    [[nodiscard]] bool alcanzaParaPacientes() const
    {
        return (m_cifras.isEmpty() ? m_palabras.join(QString()) : m_cifras).size() >= minimoPacientes;
    }

    [[nodiscard]] bool halladoEn(const Contacto &contacto) const
    {
        if (!m_cifras.isEmpty() && enTelefono({contacto.telefono, contacto.celular, contacto.laboral}))
            return true;
        const QByteArray todo = QStringList{contacto.nombre, contacto.email, contacto.direccion, contacto.observaciones}
                                    .join(u'\n')
                                    .toUtf8();
        return std::all_of(
            m_condiciones.begin(), m_condiciones.end(), [&](const db::Condition &c) { return c.holds(todo); });
    }

    /// One of them is to hold whole.
    [[nodiscard]] std::vector<db::Conditions> alternativas() const
    {
        std::vector<db::Conditions> todas;
        if (!m_cifras.isEmpty()) {
            for (const QString &columna : telefonosDePaciente())
                todas.push_back({porCifras(columna)});
            return todas;
        }
        const QString apellido = QStringLiteral("Apellido"), nombres = QStringLiteral("Nombres");
        const auto contiene = [this](const QString &columna, qsizetype desde, qsizetype cuantas) {
            return db::Condition::contains(m_dialecto, columna, m_palabras.mid(desde, cuantas).join(u' '));
        };
        for (const QString &columna : {apellido, QStringLiteral("apellido2"), nombres})
            todas.push_back({contiene(columna, 0, -1)});
        // "Paz Eva" and "Eva Paz", also where one of both names has two words.
        for (qsizetype k = 1; k < std::min<qsizetype>(m_palabras.size(), 3); ++k) {
            todas.push_back({contiene(apellido, 0, k), contiene(nombres, k, -1)});
            todas.push_back({contiene(nombres, 0, k), contiene(apellido, k, -1)});
        }
        return todas;
    }

private:
    [[nodiscard]] bool enTelefono(const QStringList &numeros) const
    {
        return std::any_of(
            numeros.begin(), numeros.end(), [this](const QString &n) { return cifras(n).contains(m_cifras); });
    }

    /// The digits in that order whatever stands between them. The statement takes in anything between, digits too: what
    /// it finds has to be looked at once more.
    [[nodiscard]] db::Condition porCifras(const QString &columna) const
    {
        QString patron = QStringLiteral("%");
        for (const QChar c : m_cifras) {
            patron += c;
            patron += u'%';
        }
        return {
            columna,
            columna + QStringLiteral(" like ") + m_dialecto.text(patron),
            [buscadas = m_cifras.toLatin1()](QByteArrayView guardado) {
                QByteArray suyas;
                for (const char c : guardado)
                    if (c >= '0' && c <= '9')
                        suyas += c;
                return suyas.contains(buscadas);
            }};
    }

    const db::Dialect &m_dialecto;
    QStringList m_palabras;
    QString m_cifras;
    db::Conditions m_condiciones;
};

/// Beyond this many rows a statement that takes in too much is not looked through.
constexpr int topeSentencia = 5 * topePacientes;

const QString columnasPaciente = QStringLiteral(
    "NroHC,Apellido,apellido2,Nombres,Tel,TelCelular,TelLaboral,Email,Domicilio FROM [Pacientes] WHERE ");
const QString ordenPacientes = QStringLiteral(" ORDER BY Apellido,apellido2,Nombres");

/// The numbers of those found in the searched columns; empty where the engine keeps none ready.
std::optional<std::set<qint64>> numeros(db::Connection &conexion, const Buscado &buscado)
{
    std::set<qint64> hallados;
    for (const db::Conditions &condiciones : buscado.alternativas()) {
        const db::Rows filas = conexion.search(QStringLiteral("Pacientes"), condiciones);
        if (!filas)
            return std::nullopt;
        for (int i = 0; i < filas->rowCount() && hallados.size() <= topePacientes; ++i)
            if (const qint64 nrohc = filas->integer(i, 0); nrohc != 0)
                hallados.insert(nrohc);
    }
    return hallados;
}

db::Rows leerPorNumero(db::Connection &conexion, const std::set<qint64> &hallados)
{
    // Always the same number of parameters: one prepared statement serves every answer.
    db::Params valores;
    for (const qint64 nrohc : hallados)
        valores << nrohc;
    while (valores.size() <= topePacientes)
        valores << *hallados.begin();
    return conexion.query(
        QStringLiteral("SELECT ") + columnasPaciente + QStringLiteral("NroHC IN (?")
            + QStringLiteral(",?").repeated(topePacientes) + u')' + ordenPacientes,
        valores);
}

db::Rows leerPorSentencia(db::Connection &conexion, const Buscado &buscado)
{
    QStringList alternativas;
    for (const db::Conditions &condiciones : buscado.alternativas()) {
        QStringList juntas;
        for (const db::Condition &condicion : condiciones)
            juntas << condicion.sql;
        alternativas << u'(' + juntas.join(QStringLiteral(" And ")) + u')';
    }
    return conexion.query(
        QStringLiteral("SELECT TOP %1 ").arg(topeSentencia) + columnasPaciente + QStringLiteral("NroHC <> 0 And (")
        + alternativas.join(QStringLiteral(" Or ")) + u')' + ordenPacientes);
}

Contacto paciente(const db::ResultSet &filas, int i)
{
    Contacto contacto;
    contacto.origen = Contacto::Origen::Paciente;
    contacto.numero = int(filas.integer(i, 0));
    const QString apellidos = filas.text(i, 1) + u' ' + filas.text(i, 2);
    contacto.nombre = apellidos.trimmed() + QStringLiteral(", ") + filas.text(i, 3);
    contacto.telefono = filas.text(i, 4);
    contacto.celular = filas.text(i, 5);
    contacto.laboral = filas.text(i, 6);
    contacto.email = filas.text(i, 7);
    contacto.direccion = filas.text(i, 8);
    return contacto;
}

void agregarPacientes(db::Connection &conexion, const Buscado &buscado, ContactosHallados &hallados)
{
    const auto suyos = numeros(conexion, buscado);
    if (suyos && suyos->empty())
        return;
    const db::Rows filas = suyos ? leerPorNumero(conexion, *suyos) : leerPorSentencia(conexion, buscado);
    int cuantos = 0;
    for (int i = 0; i < filas->rowCount(); ++i) {
        Contacto contacto = paciente(*filas, i);
        if (!buscado.halladoEn(contacto))
            continue;
        if (++cuantos > topePacientes) {
            hallados.hayMas = true;
            return;
        }
        hallados.contactos.push_back(std::move(contacto));
    }
    hallados.hayMas = !suyos && filas->rowCount() == topeSentencia;
}

std::vector<Contacto> guia(db::Connection &conexion)
{
    std::vector<Contacto> contactos;
    for (const Telefono &t : listarTelefonos(conexion)) {
        Contacto &c = contactos.emplace_back();
        c.origen = Contacto::Origen::Guia;
        c.numero = t.id;
        c.nombre = t.nombre;
        c.telefono = t.telefono;
        c.celular = t.celular;
        c.email = t.email;
        c.direccion = t.direccion;
        c.observaciones = t.observaciones;
    }
    return contactos;
}

std::vector<Contacto> profesionales(db::Connection &conexion)
{
    const db::Rows filas = conexion.query(
        QStringLiteral("SELECT id,NomDoc,Tel,Domi,Especialidad FROM [Lista Doctores] WHERE tipo = 0 ORDER BY NomDoc"));
    std::vector<Contacto> contactos;
    for (int i = 0; i < filas->rowCount(); ++i) {
        Contacto &c = contactos.emplace_back();
        c.origen = Contacto::Origen::Profesional;
        c.numero = int(filas->integer(i, 0));
        c.nombre = filas->text(i, 1);
        c.telefono = filas->text(i, 2);
        c.direccion = filas->text(i, 3);
        c.observaciones = filas->text(i, 4);
    }
    return contactos;
}

} // namespace

QStringList Contacto::textos() const
{
    QString fijo = telefono;
    if (!laboral.trimmed().isEmpty())
        fijo += (fijo.trimmed().isEmpty() ? QString() : QStringLiteral("  /  ")) + QStringLiteral("Lab. ") + laboral;
    const QString deDonde = origen == Origen::Guia ? QStringLiteral("Lista")
        : origen == Origen::Profesional            ? QStringLiteral("Profesional")
                                                   : QStringLiteral("Paciente");
    return {nombre, fijo, celular, email, direccion, observaciones, deDonde};
}

ContactosHallados
buscarContactos(db::Connection &conexion, const QString &texto, bool conProfesionales, bool conPacientes)
{
    const Buscado buscado(conexion.dialect(), texto);
    ContactosHallados hallados;
    std::vector<Contacto> candidatos = guia(conexion);
    if (conProfesionales)
        for (Contacto &contacto : profesionales(conexion))
            candidatos.push_back(std::move(contacto));
    for (Contacto &contacto : candidatos)
        if (buscado.vacio() || buscado.halladoEn(contacto))
            hallados.contactos.push_back(std::move(contacto));
    if (conPacientes && buscado.alcanzaParaPacientes())
        agregarPacientes(conexion, buscado, hallados);
    return hallados;
}

} // namespace agenda
