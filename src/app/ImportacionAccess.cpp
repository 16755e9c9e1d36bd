#include "app/ImportacionAccess.h"

#include "app/Esquema.h"
#include "base/Clock.h"
#include "base/Mensajes.h"
#include "base/Rechazo.h"
#include "db/Entorno.h"
#include "db/Error.h"
#include "db/Historial.h"
#include "db/Verificacion.h"
#include "db/access/Cabecera.h"
#include "db/access/LectorProceso.h"

#include <QDir>
#include <QFileInfo>
#include <QScopedValueRollback>

namespace app {

namespace {

const QString ventana = QStringLiteral("Importación de Access");
/// The password of every database of this system, old and new.
const QString claveConocida = QStringLiteral("kestrel428");

class SinAvance final : public db::access::Seguimiento
{
public:
    bool avanzar(const QString &, qint64, qint64) override { return true; }
};

} // namespace

QString preguntaDeImportacion(const QString &archivo)
{
    return QStringLiteral("La Base de Datos es un archivo de Access de una versión anterior:\n%1\n\n"
                          "Para usarla, el programa debe convertirla. El archivo original se conserva sin cambios, al "
                          "lado y con otro nombre. Antes de empezar, cierre el programa en las demás computadoras.\n\n"
                          "¿Desea convertirla ahora?")
        .arg(QDir::toNativeSeparators(archivo));
}

ImportacionAccess::ImportacionAccess(base::Mensajes &mensajes, const base::Clock &clock)
    : m_mensajes(mensajes)
    , m_clock(clock)
    , m_abrir(db::access::fuenteDelSistema)
{
}

void ImportacionAccess::fallar(const QString &texto) { m_mensajes.fallar(QStringLiteral("Error..."), texto); }

bool ImportacionAccess::ofrecer(const QString &archivo)
{
    // The progress lets timers run, and one of them may check the database.
    if (m_ocupada)
        return false;
    const QScopedValueRollback ocupada(m_ocupada, true);
    if (m_rechazado == archivo) {
        fallar(
            QStringLiteral("La Base de Datos es un archivo de Access de una versión anterior, que todavía no se "
                           "convirtió. Para convertirla reinicie el programa, o pulse 'Guardar' en la ventana 'Red'."));
        return false;
    }
    const bool convertida = convertir(archivo);
    if (convertida)
        m_rechazado.clear();
    return convertida;
}

bool ImportacionAccess::convertir(const QString &archivo)
{
    using db::access::Desenlace;
    if (!db::access::leerCabecera(archivo).legible()) {
        fallar(QStringLiteral("La Base de Datos es un archivo de Access 2007 o posterior, que el programa no puede "
                              "convertir. Ábralo con Access y guárdelo con el formato 'Access 2002-2003'."));
        return false;
    }
    try {
        if (db::access::examinar(*m_abrir(archivo)) == db::access::Examen::Incompatible) {
            db::avisarBaseIncompatible(m_mensajes);
            return false;
        }
    } catch (const db::Error &error) {
        fallar(
            QStringLiteral(
                "La Base de Datos es un archivo de Access de una versión anterior y no se pudo convertir.\n\n")
            + error.description());
        return false;
    }
    m_rechazado = archivo; // unless it goes well
    if (!m_mensajes.pregunta(tituloImportacion, preguntaDeImportacion(archivo)))
        return false;
    if (!pedirClave(archivo))
        return false;

    db::access::Pedido pedido;
    pedido.archivo = archivo;
    pedido.clave = claveConocida;
    pedido.rutinas = esquemaPorRutinas();
    pedido.abrir = m_abrir;
    pedido.ahora = m_clock.now();
    pedido.continuarConDiferencias = [this](const QString &diferencias) {
        return m_mensajes.pregunta(
            base::titulo::atencion,
            QStringLiteral("El archivo de Access no está del todo sano: %1.\n\nPuede ser que falten datos. ¿Desea "
                           "convertir de todos modos lo que se pudo leer?")
                .arg(diferencias),
            false);
    };
    Desenlace desenlace;
    {
        const std::unique_ptr<db::access::Seguimiento> avance
            = m_hacerAvance ? m_hacerAvance() : std::make_unique<SinAvance>();
        desenlace = db::access::convertir(pedido, *avance);
    }
    switch (desenlace.tipo) {
    case Desenlace::Tipo::Hecha: break;
    case Desenlace::Tipo::Cancelada:
        m_mensajes.informar(
            QStringLiteral("Información"),
            QStringLiteral("La conversión se canceló. El archivo de Access quedó como estaba."));
        return false;
    case Desenlace::Tipo::Fallada:
        fallar(
            QStringLiteral("No se pudo convertir la Base de Datos; el archivo de Access quedó como estaba.\n\n")
            + desenlace.motivo);
        return false;
    }
    m_renglon = desenlace.informe.renglon();
    m_mensajes.informar(QStringLiteral("Información"), desenlace.informe.resumen());
    return true;
}

bool ImportacionAccess::pedirClave(const QString &archivo)
{
    const QString clave = db::access::leerCabecera(archivo).clave;
    if (clave.isEmpty() || clave == claveConocida)
        return true;
    QString texto = QStringLiteral("La base de datos de Access tiene una clave. Escríbala para convertirla:");
    for (;;) {
        const auto escrita = m_mensajes.pedirClave(QStringLiteral("Clave de la base de datos"), texto);
        if (!escrita)
            return false;
        if (*escrita == clave)
            return true;
        texto = QStringLiteral("La clave no es correcta. Escriba la clave de la base de datos de Access:");
    }
}

void ImportacionAccess::registrar(db::Entorno &entorno)
{
    if (m_renglon.isEmpty())
        return;
    try {
        db::registrarHistorial(entorno, ventana, m_renglon);
        m_renglon.clear();
    } catch (const db::Error &) {
        // The report in the folder tells the same; the next check tries again.
    }
}

} // namespace app
