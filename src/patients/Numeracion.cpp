#include "patients/Numeracion.h"

#include "db/Config.h"

#include <algorithm>

namespace patients {

namespace {

const QString columnaUltimo = QStringLiteral("UltimoPaci");
const QString columnaPrefijo = QStringLiteral("prefijohc");
const QString columnaNumero = QStringLiteral("numerohc");
} // namespace

QString numeroHistoriaGenerado(db::Connection &conexion)
{
    const db::Config config(conexion);
    return componerNumeroHistoria(config.texto(columnaPrefijo), config.texto(columnaNumero));
}

bool avanzarNumeroHistoria(db::Connection &conexion)
{
    db::Config config(conexion);
    const auto siguiente = base::numeroHistoriaSiguiente(config.texto(columnaNumero));
    if (!siguiente)
        return false;
    config.guardar(columnaNumero, *siguiente);
    return true;
}

int proximoNroHC(db::Connection &conexion)
{
    const int proximo = db::Config(conexion).numero(columnaUltimo) + 1;
    const auto ocupado = conexion.query(QStringLiteral("SELECT NroHC FROM [Pacientes] WHERE NroHC = ?"), {proximo});
    // Below 1 are the marks of other tables (-111 a blocked slot, 0 nobody).
    if (proximo > 0 && ocupado->rowCount() == 0)
        return proximo;
    const auto mayor = conexion.query(QStringLiteral("SELECT MAX(NroHC) AS mayor FROM [Pacientes]"));
    return std::max(1, int(mayor->integer(0, 0)) + 1);
}

int tomarNroHC(db::Connection &conexion)
{
    const int nrohc = proximoNroHC(conexion);
    db::Config(conexion).guardar(columnaUltimo, nrohc);
    return nrohc;
}

} // namespace patients
