#include "app/Setup.h"

#include "db/Error.h"

#include <QFile>
#include <QtEndian>

namespace app {

namespace {

constexpr int posUsuario = 37, posRefresco = 41, posMensajes = 43, posModo = 45;

template <typename T>
void leerNumero(QByteArrayView registro, int posicion, T &valor)
{
    if (registro.size() >= posicion + qsizetype(sizeof(T)))
        valor = qFromLittleEndian<T>(registro.data() + posicion);
}

} // namespace

Setup Setup::deRegistro(QByteArrayView registro)
{
    Setup setup;
    const QByteArrayView reservados = registro.first(qMin<qsizetype>(registro.size(), posUsuario));
    setup.reservado = reservados.toByteArray().leftJustified(posUsuario, ' ');
    leerNumero(registro, posUsuario, setup.usuarioActual);
    leerNumero(registro, posRefresco, setup.refrescoAgenda);
    leerNumero(registro, posMensajes, setup.controlMensajes);
    leerNumero(registro, posModo, setup.modoTurno);
    return setup;
}

QByteArray Setup::aRegistro() const
{
    QByteArray registro = reservado.leftJustified(posUsuario, ' ', true) + QByteArray(bytes - posUsuario, '\0');
    qToLittleEndian(usuarioActual, registro.data() + posUsuario);
    qToLittleEndian(refrescoAgenda, registro.data() + posRefresco);
    qToLittleEndian(controlMensajes, registro.data() + posMensajes);
    qToLittleEndian(modoTurno, registro.data() + posModo);
    return registro;
}

Setup Setup::leer(const QString &archivo)
{
    QFile file(archivo);
    return file.open(QIODevice::ReadOnly) ? deRegistro(file.read(bytes)) : Setup();
}

void Setup::guardar(const QString &archivo) const
{
    QFile file(archivo);
    const QByteArray registro = aRegistro();
    if (!file.open(QIODevice::ReadWrite) || file.write(registro) != registro.size() || !file.flush())
        throw db::Error(db::Error::Kind::ReadOnly, 0, QStringLiteral("No se puede escribir el archivo setup.dat."));
}

int Setup::segundos(qint16 valor) { return valor >= 1 && valor <= 60 ? valor : segundosIniciales; }

} // namespace app
