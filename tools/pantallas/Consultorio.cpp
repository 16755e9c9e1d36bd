#include "Consultorio.h"

#include "agenda/CambiosTurno.h"
#include "agenda/Reserva.h"
#include "app/Ruta.h"
#include "base/Rechazo.h"
#include "db/Connection.h"
#include "db/Error.h"
#include "db/Verificacion.h"
#include "demo/Archivo.h"

#include <QThread>

#include <cstdio>

namespace pantallas {

namespace {

void exigir(const base::Control &control)
{
    if (control)
        throw db::Error(db::Error::Kind::General, 0, control->texto);
}

} // namespace

void MensajesEscritos::decir(const QString &titulo, const QString &texto)
{
    m_dichos << titulo + QStringLiteral(": ") + texto;
    std::fprintf(stderr, "%s\n", qUtf8Printable(m_dichos.constLast()));
}

void MensajesEscritos::mensaje(const QString &titulo, const QString &texto, base::Icono) { decir(titulo, texto); }

bool MensajesEscritos::pregunta(const QString &titulo, const QString &texto, bool)
{
    decir(titulo, texto);
    return false;
}

std::optional<QString> MensajesEscritos::pedirTexto(const QString &titulo, const QString &texto, const QString &)
{
    decir(titulo, texto);
    return std::nullopt;
}

std::optional<QString> MensajesEscritos::pedirClave(const QString &titulo, const QString &texto)
{
    decir(titulo, texto);
    return std::nullopt;
}

std::optional<QString> MensajesEscritos::elegirArchivo(const QString &titulo, const QString &, const QString &filtro)
{
    decir(titulo, filtro);
    return std::nullopt;
}

std::optional<QString> MensajesEscritos::elegirDestino(const QString &titulo, const QString &propuesto, const QString &)
{
    decir(titulo, propuesto);
    return std::nullopt;
}

std::optional<QString> MensajesEscritos::elegirCarpeta(const QString &titulo, const QString &carpeta)
{
    decir(titulo, carpeta);
    return std::nullopt;
}

Consultorio::Consultorio()
{
    demo::Medida medida;
    medida.hoy = m_reloj.today();
    const app::Destino destino = app::destinoDe({}, m_carpeta.path());
    if (!demo::crearArchivo(QStringLiteral(VASTELO_PLANTILLA), destino.archivo, medida))
        throw db::Error(db::Error::Kind::CannotOpen, 0, QStringLiteral("No se pudo copiar la plantilla."));
    m_conexion = db::Connection::open(destino.cadenaConexion(), db::Engines::standard());
    m_usuario = int(m_conexion->query(QStringLiteral("SELECT MIN(id) FROM [Lista Doctores]"))->integer(0, 0));
    prepararDia();
}

Consultorio::~Consultorio() = default;

bool Consultorio::verificarBase()
{
    if (!hayBase)
        db::avisarBaseAusente(mensajes());
    return hayBase;
}

app::Ruta Consultorio::rutaGuardada() const
{
    app::Ruta ruta;
    ruta.otraCarpeta = true;
    ruta.carpeta = QStringLiteral("/mnt/servidor/vastelo");
    return ruta;
}

app::Hallazgo Consultorio::examinarRuta(const app::Ruta &) const { return app::examinarBase(*m_conexion); }

app::TrabajoTraslado Consultorio::traslado(const app::PedidoTraslado &) const
{
    return [](db::migracion::Seguimiento &seguimiento) {
        seguimiento.poner(
            {.que = QStringLiteral("Copiando"),
             .tabla = QStringLiteral("Consultas"),
             .numero = 27,
             .tablas = 103,
             .filas = 12'000,
             .filasTabla = 21'480,
             .hechas = 68'300,
             .total = 191'512});
        while (!seguimiento.cancelado())
            QThread::msleep(5);
        return db::migracion::Desenlace{};
    };
}

void Consultorio::prepararDia()
{
    const auto momento = [this](int hora, int minuto) { return QDateTime(m_reloj.today(), QTime(hora, minuto)); };
    // The practice is a full one: free hours before and after now, and what every book shows sooner or later.
    for (const QDateTime &libre :
         {momento(8, 40), momento(9, 20), momento(9, 40), momento(11, 20), momento(11, 40), momento(16, 20)})
        m_conexion->execute(
            QStringLiteral("DELETE FROM [Agenda Turnos] WHERE Doctor = ? AND Fecha = ?"), {m_usuario, libre});
    exigir(agenda::bloquear(*this, m_usuario, {momento(11, 40)}));

    const struct {
        QDateTime cuando;
        QString observaciones;
        bool llegado;
    } turnos[]
        = {{momento(9, 20), {}, true}, // arrived, and left without being attended
           {momento(11, 20), QStringLiteral("Trae estudios de laboratorio."), true},
           {momento(11, 20), {}, false}};
    const auto pacientes = m_conexion->query(
        QStringLiteral("SELECT TOP 3 NroHC FROM Pacientes WHERE FeNac < ? ORDER BY NroHC"), {QDate(1990, 1, 1)});
    for (int i = 0; i < 3; ++i) {
        agenda::Reserva reserva;
        reserva.nrohc = int(pacientes->integer(i, 0));
        reserva.doctor = m_usuario;
        reserva.turnos = {turnos[i].cuando};
        reserva.motivo = 1;
        reserva.observacionestur = turnos[i].observaciones;
        const auto hecha = agenda::reservar(*this, reserva);
        if (!hecha)
            exigir(hecha.rechazo());
        exigir(hecha->informe());
        if (turnos[i].llegado)
            exigir(agenda::marcarLlegado(*this, hecha->ids.constFirst(), true));
    }
}

} // namespace pantallas
