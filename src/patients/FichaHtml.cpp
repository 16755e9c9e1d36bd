#include "patients/FichaHtml.h"

#include "base/Clock.h"
#include "base/Fechas.h"
#include "db/Entorno.h"
#include "patients/Ficha.h"
#include "patients/ResumenPaciente.h"

namespace patients {

namespace {

using namespace Qt::StringLiterals;

/// Lines of a heading, "<b>Domicilio:</b> San Martín 1450", as HTML.
class Renglones
{
public:
    Renglones(db::Connection &conexion, const db::Recordset &fila, QDate hoy)
        : m_conexion(conexion)
        , m_fila(fila)
        , m_hoy(hoy)
    {
    }

    void linea(const QString &rotulo, const QString &texto)
    {
        if (!texto.trimmed().isEmpty())
            m_html += u"<br><b>%1</b> %2"_s.arg(rotulo, enHtml(texto.trimmed()));
    }
    void columna(const QString &rotulo, QStringView nombre) { linea(rotulo, m_fila.text(nombre)); }
    void columnas(const QString &rotulo, std::initializer_list<QStringView> nombres)
    {
        QStringList partes;
        for (const QStringView nombre : nombres)
            partes << m_fila.text(nombre).trimmed();
        partes.removeAll(QString());
        linea(rotulo, partes.join(u' '));
    }
    void lista(const QString &rotulo, QStringView nombre, const QString &tabla, const QString &detalle = {})
    {
        QStringList partes{nombreEnLista(m_conexion, tabla, m_fila.integer(nombre)), detalle.trimmed()};
        partes.removeAll(QString());
        linea(rotulo, partes.join(u" - "_s));
    }
    void nacimiento(QStringView nombre)
    {
        const QDate fecha = m_fila.date(nombre);
        if (!fecha.isValid() || fecha == base::fechaDesconocida())
            return;
        const QString edad = edadTexto(fecha, m_hoy);
        linea(u"Fecha de Nacimiento:"_s, base::fechaTexto(fecha) + (edad.isEmpty() ? edad : u" ("_s + edad + u')'));
    }
    void agregar(const QString &html) { m_html += html; }

    /// The heading with its lines, and none of it when there are none.
    [[nodiscard]] QString bajo(const QString &titulo) const
    {
        return m_html.isEmpty() ? QString() : u"<p><b><u>%1</u></b>%2</p>"_s.arg(titulo, m_html);
    }

private:
    [[nodiscard]] static QString enHtml(const QString &texto)
    {
        return texto.toHtmlEscaped().replace(u"\r\n"_s, u"<br>"_s).replace(u'\n', u"<br>"_s);
    }

    db::Connection &m_conexion;
    const db::Recordset &m_fila;
    QDate m_hoy;
    QString m_html;
};

QString sexoTexto(const db::Recordset &fila)
{
    if (fila.isNull(u"sexo"))
        return {};
    return fila.integer(u"sexo") == 0 ? u"Femenino"_s : u"Masculino"_s;
}

} // namespace

QString fichaHtml(db::Entorno &entorno, const PacienteAbierto &paciente)
{
    db::Connection &conexion = entorno.conexion();
    const db::Recordset fila = paciente.fila(conexion);
    const QDate hoy = entorno.clock().today();
    const auto renglones = [&] { return Renglones(conexion, fila, hoy); };

    Renglones personales = renglones();
    personales.linea(etiquetaIdentificador(conexion).trimmed(), identificadorDe(conexion, fila));
    personales.linea(u"Apellido y Nombres:"_s, nombreDe(fila));
    personales.nacimiento(u"FeNac");
    personales.linea(u"Sexo:"_s, sexoTexto(fila));
    personales.linea(
        u"Documento de Identidad:"_s,
        (nombreEnLista(conexion, u"Lista Tipo de documento"_s, fila.integer(u"idtipodoc")) + u' ' + fila.text(u"DNI")));
    personales.lista(u"Estado Civil:"_s, u"idestadocivil", u"Lista Estado civil"_s);
    personales.lista(u"Ocupación:"_s, u"idocupacion", u"Lista Ocupacion"_s, fila.text(u"detallesocupacion"));
    personales.lista(u"Etnia:"_s, u"idetnia", u"Lista Etnia"_s);
    personales.columna(u"Domicilio:"_s, u"Domicilio");
    personales.columna(u"Código Postal:"_s, u"CP");
    personales.lista(u"Ciudad:"_s, u"idciudad", u"Lista Ciudad"_s);
    personales.lista(u"Provincia / Departamento:"_s, u"idprovincia", u"Lista Provincia"_s);
    personales.lista(u"País:"_s, u"idpais", u"Lista Pais"_s);
    personales.lista(u"Estatus en el país:"_s, u"idestatus", u"Lista Estatus en el pais"_s);
    personales.columna(u"Teléfono Particular:"_s, u"Tel");
    personales.columna(u"Teléfono Celular:"_s, u"TelCelular");
    personales.columna(u"Teléfono Laboral:"_s, u"TelLaboral");
    personales.columna(u"Email:"_s, u"Email");
    personales.linea(u"Cobertura Médica:"_s, coberturaTexto(conexion, fila));
    personales.columna(u"Referido por:"_s, u"referente");
    personales.linea(u"Última Consulta:"_s, base::fechaTexto(fila.date(u"ultimacons")));
    personales.columna(u"Alertas:"_s, u"alergias");
    personales.columna(u"Notas Importantes:"_s, u"Notas");
    if (fila.flag(u"pacienteinactivo")) {
        const QString motivo = fila.text(u"motivoinactividad").trimmed();
        personales.agregar(
            u"<br><b>Paciente Inactivo</b>"_s
            + (motivo.isEmpty() ? QString() : u" - Motivo de Inactividad: "_s + motivo.toHtmlEscaped()));
    }

    Renglones familia = renglones();
    familia.columna(u"Padre:"_s, u"nombrepadre");
    familia.nacimiento(u"nacipadre");
    familia.lista(u"Ocupación:"_s, u"idocupacionpadre", u"Lista Ocupacion"_s);
    familia.columna(u"Horas en el hogar:"_s, u"horashogarpadre");
    familia.columna(u"Madre:"_s, u"nombremadre");
    familia.nacimiento(u"nacimadre");
    familia.lista(u"Ocupación:"_s, u"idocupacionmadre", u"Lista Ocupacion"_s);
    familia.columna(u"Horas en el hogar:"_s, u"horashogarmadre");
    familia.columna(u"Nº de Hermanos:"_s, u"nrohermanos");
    familia.columna(u"Edad de los Hermanos:"_s, u"edadhermanos");
    familia.columna(u"Nº de Hermanas:"_s, u"nrohermanas");
    familia.columna(u"Edad de las Hermanas:"_s, u"edadhermanas");
    familia.columna(u"Detalles:"_s, u"detallesfamilia");

    Renglones contacto = renglones();
    contacto.columnas(u"Apellido y Nombres:"_s, {u"ape1contacto", u"ape2contacto", u"nombrecontacto"});
    contacto.lista(u"Relación con el Paciente:"_s, u"idrelacion", u"Lista Relacion con el paciente"_s);
    contacto.columna(u"Teléfono Particular:"_s, u"telparcontacto");
    contacto.columna(u"Teléfono Celular:"_s, u"telcelcontacto");
    contacto.columna(u"Teléfono Laboral:"_s, u"tellabcontacto");

    return u"<html><body><font face='Verdana' size=2>"_s + personales.bajo(u"DATOS PERSONALES"_s)
        + familia.bajo(u"SITUACION FAMILIAR"_s) + contacto.bajo(u"PERSONA DE CONTACTO"_s) + u"</font></body></html>"_s;
}

} // namespace patients
