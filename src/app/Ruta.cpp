#include "app/Ruta.h"

#include "base/Windows1252.h"
#include "db/Error.h"

#include <QFile>
#include <QSaveFile>
#include <QtEndian>

namespace app {

namespace {

constexpr int anchoCarpeta = Ruta::anchoCarpeta, anchoServidor = Ruta::anchoTexto;
constexpr int posOtra = 0, posCarpeta = 2, posReservado = 252, posModo = 270, posServidor = 272, posInstancia = 322,
              posUsuario = 372, posClave = 422;

QString leerTexto(QByteArrayView registro, int posicion, int ancho)
{
    // Files of older versions hold zeros where nothing was typed, short ones behind what they hold.
    const QByteArrayView campo = registro.sliced(posicion, ancho);
    const qsizetype cero = campo.indexOf('\0');
    return base::desdeWindows1252(cero < 0 ? campo : campo.first(cero)).trimmed();
}

bool leerBandera(QByteArrayView registro, int posicion)
{
    return qFromLittleEndian<qint16>(registro.data() + posicion) == -1;
}

void ponerTexto(QByteArray &registro, int posicion, int ancho, const QString &texto)
{
    const auto bytes = base::aWindows1252(texto);
    if (!bytes || bytes->size() > ancho)
        throw db::Error(
            db::Error::Kind::General,
            0,
            QStringLiteral("El texto '%1' no se puede guardar: admite hasta %2 caracteres del alfabeto occidental.")
                .arg(texto)
                .arg(ancho));
    registro.replace(posicion, ancho, bytes->leftJustified(ancho, ' '));
}

void ponerBandera(QByteArray &registro, int posicion, bool valor)
{
    qToLittleEndian<qint16>(valor ? -1 : 0, registro.data() + posicion);
}

} // namespace

Ruta Ruta::deRegistro(QByteArrayView leido)
{
    const QByteArray registro = leido.toByteArray().leftJustified(bytes, '\0', true);
    Ruta ruta;
    ruta.otraCarpeta = leerBandera(registro, posOtra);
    ruta.carpeta = leerTexto(registro, posCarpeta, anchoCarpeta);
    ruta.reservado = registro.mid(posReservado, posModo - posReservado);
    ruta.modoServidor = leerBandera(registro, posModo);
    ruta.servidor = leerTexto(registro, posServidor, anchoServidor);
    ruta.instancia = leerTexto(registro, posInstancia, anchoServidor);
    ruta.usuario = leerTexto(registro, posUsuario, anchoServidor);
    ruta.clave = leerTexto(registro, posClave, anchoServidor);
    return ruta;
}

QByteArray Ruta::aRegistro() const
{
    QByteArray registro(bytes, ' ');
    ponerBandera(registro, posOtra, otraCarpeta);
    ponerTexto(registro, posCarpeta, anchoCarpeta, carpeta);
    registro.replace(posReservado, posModo - posReservado, reservado.leftJustified(posModo - posReservado, '\0', true));
    ponerBandera(registro, posModo, modoServidor);
    ponerTexto(registro, posServidor, anchoServidor, servidor);
    ponerTexto(registro, posInstancia, anchoServidor, instancia);
    ponerTexto(registro, posUsuario, anchoServidor, usuario);
    ponerTexto(registro, posClave, anchoServidor, clave);
    return registro;
}

Ruta Ruta::leer(const QString &archivo)
{
    QFile file(archivo);
    return file.open(QIODevice::ReadOnly) ? deRegistro(file.read(bytes)) : Ruta();
}

void Ruta::guardar(const QString &archivo) const
{
    const QByteArray registro = aRegistro();
    QSaveFile file(archivo);
    if (!file.open(QIODevice::WriteOnly) || file.write(registro) != registro.size() || !file.commit())
        throw db::Error(db::Error::Kind::ReadOnly, 0, QStringLiteral("No se puede escribir el archivo ruta.dat."));
}

QString Destino::cadenaConexion() const
{
    if (!servidor)
        return QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0; Jet OLEDB:Database Password=kestrel428;Data Source=")
            + archivo;
    return QStringLiteral("Provider=SQLOLEDB; Initial Catalog=Datos; Data Source=") + nombreServidor
        + QStringLiteral("; User Id=") + usuarioServidor + QStringLiteral("; Password=") + claveServidor;
}

Destino destinoDe(const Ruta &ruta, const QString &carpetaPrograma)
{
    Destino destino;
    destino.carpetaDatos = carpetaPrograma;
    if (ruta.otraCarpeta && !ruta.carpeta.isEmpty()) {
        destino.carpetaDatos = ruta.carpeta;
        if (destino.carpetaDatos.endsWith(u'\\') || (destino.carpetaDatos.endsWith(u'/') && ruta.carpeta.size() > 1))
            destino.carpetaDatos.chop(1);
    }
    destino.archivo = destino.carpetaDatos + QStringLiteral("/Datos.mdb");
    if (ruta.modoServidor) {
        destino.servidor = true;
        if (!ruta.servidor.isEmpty())
            destino.nombreServidor = ruta.instancia.isEmpty() ? ruta.servidor : ruta.servidor + u'\\' + ruta.instancia;
        destino.usuarioServidor = ruta.usuario;
        destino.claveServidor = ruta.clave;
    }
    return destino;
}

} // namespace app
