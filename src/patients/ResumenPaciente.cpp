#include "patients/ResumenPaciente.h"

#include "base/Clock.h"
#include "db/Config.h"
#include "db/Entorno.h"
#include "patients/Ficha.h"

namespace patients {

using namespace Qt::StringLiterals;

std::optional<ResumenPaciente> leerResumen(db::Entorno &entorno, const PacienteAbierto &paciente)
{
    db::Connection &conexion = entorno.conexion();
    if (!paciente.existe(conexion))
        return std::nullopt;
    const db::Recordset fila = paciente.fila(conexion);
    return ResumenPaciente{
        .nombre = nombreDe(fila),
        .edad = edadTexto(fila.date(u"FeNac"), entorno.clock().today()),
        .etiqueta = etiquetaIdentificador(conexion),
        .identificador = identificadorDe(conexion, fila),
        .cobertura = coberturaTexto(conexion, fila),
        .alertas = fila.text(u"alergias").trimmed(),
        .notas = fila.text(u"Notas").trimmed(),
        .inactivo = fila.flag(u"pacienteinactivo"),
        .motivoInactividad = fila.text(u"motivoinactividad").trimmed()};
}

QString etiquetaIdentificador(db::Connection &conexion)
{
    const db::Config config(conexion);
    if (config.numero(u"nuidhc") != 0)
        return u"Nº Historia Clínica: "_s;
    const QString propia = config.texto(u"reemplazoid").trimmed();
    return (propia.isEmpty() ? u"Nº ID"_s : propia) + u": "_s;
}

QString identificadorDe(db::Connection &conexion, const db::Recordset &fila)
{
    return db::Config(conexion).numero(u"nuidhc") != 0 ? fila.text(u"numehistoria").trimmed()
                                                       : QString::number(fila.integer(u"NroHC"));
}

QString nombreEnLista(db::Connection &conexion, const QString &tabla, qint64 id)
{
    if (id <= 0)
        return {};
    const db::Rows rows
        = conexion.query(u"SELECT nombre FROM %1 WHERE id = ?"_s.arg(conexion.dialect().identifier(tabla)), {id});
    return rows->rowCount() > 0 ? rows->text(0, 0).trimmed() : QString();
}

QString coberturaTexto(db::Connection &conexion, const db::Recordset &fila)
{
    switch (fila.integer(u"cobertura")) {
    case SinCobertura: return u"Sin cobertura"_s;
    case ConCobertura: break;
    default: return u"Cobertura sin indicar"_s;
    }
    const QString nombre = nombreEnLista(conexion, u"Lista Coberturas"_s, fila.integer(u"idcobertura"));
    const QString afiliado = fila.text(u"NroOS").trimmed();
    return (nombre.isEmpty() ? u"Con cobertura"_s : nombre)
        + (afiliado.isEmpty() ? QString() : u"  Nº Afiliado: "_s + afiliado);
}

} // namespace patients
