#include "patients/Numeracion.h"

#include "db/Config.h"

#include <algorithm>

namespace patients {

namespace {

const QString columnaUltimo = QStringLiteral("UltimoPaci");
const QString columnaPrefijo = QStringLiteral("prefijohc");
const QString columnaNumero = QStringLiteral("numerohc");
constexpr int cifras = 6;

bool soloCifras(QStringView texto)
{
    return !texto.isEmpty() && std::all_of(texto.begin(), texto.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

QString sinCerosDelante(const QString &numero)
{
    qsizetype i = 0;
    while (i < numero.size() - 1 && numero.at(i) == u'0')
        ++i;
    return numero.mid(i);
}

// On the digits themselves, so that no length of number overflows.
QString masUno(QString numero)
{
    for (qsizetype i = numero.size() - 1; i >= 0; --i) {
        if (numero.at(i) != u'9') {
            numero[i] = QChar(numero.at(i).unicode() + 1);
            return numero;
        }
        numero[i] = u'0';
    }
    return u'1' + numero;
}

} // namespace

QString componerNumeroHistoria(const QString &prefijo, const QString &numero)
{
    const QString n = numero.trimmed();
    return prefijo.trimmed() + (soloCifras(n) ? sinCerosDelante(n).rightJustified(cifras, u'0') : n);
}

QString numeroHistoriaGenerado(db::Connection &conexion)
{
    const db::Config config(conexion);
    return componerNumeroHistoria(config.texto(columnaPrefijo), config.texto(columnaNumero));
}

bool avanzarNumeroHistoria(db::Connection &conexion)
{
    db::Config config(conexion);
    const QString numero = config.texto(columnaNumero).trimmed();
    if (!soloCifras(numero))
        return false;
    config.guardar(columnaNumero, masUno(sinCerosDelante(numero)));
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
