#include "tds/servidor/Sesion.h"

#include "db/Error.h"
#include "db/SentenciasServidor.h"
#include "support/ServerTestEngine.h"
#include "tds/servidor/Lote.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QThread>
#include <QtEndian>

#include <mutex>
#include <stdexcept>

namespace tds {

namespace {

const QString claveDeArchivo = QStringLiteral("kestrel428");

enum Token : quint8 {
    ColMetadata = 0x81,
    Estado = 0x79,
    Error = 0xAA,
    Ingreso = 0xAD,
    Retorno = 0xAC,
    Fila = 0xD1,
    Cambio = 0xE3,
    Fin = 0xFD,
    FinLlamada = 0xFE,
    FinInterno = 0xFF
};

enum Estados { Mas = 0x01, ConFallo = 0x02, ConCuenta = 0x10, Atendida = 0x20 };

/// Deriving a file's key and registering functions is not meant for two threads at once.
std::mutex &apertura()
{
    static std::mutex mutex;
    return mutex;
}

QRegularExpression sinCaso(const QString &patron)
{
    return QRegularExpression(
        patron, QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
}

void cambio(Escritor &salida, int clase, const QString &nuevo, const QString &viejo)
{
    Escritor cuerpo;
    cuerpo.byte(clase);
    cuerpo.textoCorto(nuevo);
    cuerpo.textoCorto(viejo);
    salida.byte(Cambio);
    salida.numero<quint16>(quint16(cuerpo.datos().size()));
    salida.bytes(cuerpo.datos());
}

/// Begin 8, commit 9, rollback 10: the number of the transaction.
void cambioDeTransaccion(Escritor &salida, int clase, bool abierta)
{
    const QByteArray numero = QByteArray("\1\0\0\0\0\0\0\0", 8);
    Escritor cuerpo;
    cuerpo.byte(clase);
    cuerpo.byte(abierta ? 8 : 0);
    if (abierta)
        cuerpo.bytes(numero);
    cuerpo.byte(abierta ? 0 : 8);
    if (!abierta)
        cuerpo.bytes(numero);
    salida.byte(Cambio);
    salida.numero<quint16>(quint16(cuerpo.datos().size()));
    salida.bytes(cuerpo.datos());
}

} // namespace

Sesion::Sesion(int socket, const Ajustes &ajustes)
    : m_socket(socket)
    , m_ajustes(ajustes)
{
}

Sesion::~Sesion() = default;

void Sesion::atender()
{
    try {
        while (const auto mensaje = recibir(m_socket)) {
            Lector lector(mensaje->datos);
            switch (mensaje->clase) {
            case Clase::Previo: responderPrevio(); break;
            case Clase::Ingreso:
                if (!ingresar(lector))
                    return;
                break;
            case Clase::Lote:
                lector.saltarEncabezados();
                lote(lector.resto());
                break;
            case Clase::Llamada: llamada(lector); break;
            case Clase::Transaccion: transaccion(lector); break;
            case Clase::Atencion: {
                Escritor salida;
                escribirFin(salida, Fin, Atendida, 0, 0);
                responder(salida);
                break;
            }
            case Clase::Respuesta: return;
            }
        }
    } catch (const std::exception &error) {
        // A message that cannot be read, or a client that went away in the middle of an answer: this one is let go.
        fprintf(stderr, "%s\n", error.what());
    }
}

void Sesion::responder(const Escritor &salida)
{
    if (!enviar(m_socket, salida.datos()))
        throw std::runtime_error("the client went away");
}

void Sesion::responderPrevio()
{
    // Version, no encryption, end.
    Escritor salida;
    salida.bytes(QByteArray("\0\0\x0B\0\6\1\0\x11\0\1\xFF", 11));
    salida.bytes(QByteArray("\x0A\x32\x06\x40\0\0\2", 7));
    responder(salida);
}

bool Sesion::ingresar(const Lector &lector)
{
    const auto campo = [&lector](int lugar) {
        const QByteArray par = lector.en(lugar, 4);
        const int desde = qFromLittleEndian<quint16>(par.constData());
        return lector.en(desde, 2 * qFromLittleEndian<quint16>(par.constData() + 2));
    };
    const auto texto = [](const QByteArray &bytes) {
        return QString(reinterpret_cast<const QChar *>(bytes.constData()), bytes.size() / 2);
    };
    QByteArray clave = campo(44);
    for (char &c : clave) {
        const auto abierto = quint8(quint8(c) ^ 0xA5);
        c = char((abierto << 4) | (abierto >> 4));
    }
    const QString base = texto(campo(68));
    Escritor salida;
    try {
        if (texto(campo(40)) != m_ajustes.usuario || texto(clave) != m_ajustes.clave)
            throw db::Error(db::Error::Kind::General, 18456, QStringLiteral("Login failed for user."));
        abrirBase(base.isEmpty() ? QStringLiteral("master") : base);
    } catch (const std::exception &error) {
        escribirFallo(salida, falloDe(error));
        escribirFin(salida, Fin, ConFallo, 0, 0);
        responder(salida);
        return false;
    }
    cambio(salida, 1, m_base, QStringLiteral("master"));
    cambio(salida, 4, QStringLiteral("4096"), QStringLiteral("4096"));
    Escritor aceptado;
    aceptado.byte(1);
    aceptado.bytes(QByteArray("\x74\0\0\4", 4));
    aceptado.textoCorto(QStringLiteral("Microsoft SQL Server"));
    aceptado.bytes(QByteArray("\x0A\x32\x06\x40", 4));
    salida.byte(Ingreso);
    salida.numero<quint16>(quint16(aceptado.datos().size()));
    salida.bytes(aceptado.datos());
    escribirFin(salida, Fin, 0, 0, 0);
    responder(salida);
    return true;
}

void Sesion::abrirBase(const QString &nombre)
{
    const std::lock_guard<std::mutex> uno(apertura());
    const QString archivo = m_ajustes.carpeta + u'/' + nombre + QStringLiteral(".mdb");
    const bool maestra = nombre.compare(u"master", Qt::CaseInsensitive) == 0;
    if (maestra && !QFileInfo::exists(archivo))
        db::createDatabaseFile(archivo, claveDeArchivo);
    if (!QFileInfo::exists(archivo))
        throw db::Error(db::Error::Kind::General, 4060, QStringLiteral("Cannot open database requested by the login."));
    m_motor = std::make_unique<soporte::ServerTestEngine>(archivo, claveDeArchivo);
    m_base = nombre;
}

void Sesion::lote(const QString &texto)
{
    Escritor salida;
    ejecutar(salida, texto, {}, false);
    responder(salida);
}

void Sesion::escribirNumero(Escritor &salida, quint8 fin, const std::optional<qint64> &valor)
{
    db::ResultSet::Builder armado({{QString(), db::Type::Long}});
    if (valor)
        armado.addInteger(*valor);
    else
        armado.addNull();
    armado.endRow();
    escribirFilas(salida, *armado.finish(), {});
    escribirFin(salida, fin, Mas | ConCuenta, 0xC1, 1);
}

void Sesion::escribirColumnas(Escritor &salida, quint8 fin, const QString &tabla)
{
    using db::Type;
    db::ResultSet::Builder armado(
        {{QStringLiteral("COLUMN_NAME"), Type::Text},
         {QStringLiteral("DATA_TYPE"), Type::Text},
         {QStringLiteral("CHARACTER_MAXIMUM_LENGTH"), Type::Long},
         {QStringLiteral("COLUMN_DEFAULT"), Type::Text},
         {QString(), Type::Long}});
    const QVector<db::Column> columnas = m_motor->columns(tabla);
    for (const db::Column &columna : columnas) {
        // "nvarchar(255)" of the declaration is "nvarchar" and 255 here.
        const QString tipo = db::servidor::tipo(columna).section(u' ', 0, 0).section(u'(', 0, 0).toLower();
        armado.addText(columna.name.toUtf8());
        armado.addText(tipo.toUtf8());
        if (columna.type == Type::Text)
            armado.addInteger(columna.size);
        else if (columna.type == Type::Memo || columna.type == Type::Binary)
            armado.addInteger(-1);
        else
            armado.addNull();
        if (columna.initial)
            armado.addText((columna.type == Type::Text ? QStringLiteral("('%1')") : QStringLiteral("((%1))"))
                               .arg(columna.initial->toString().replace(QStringLiteral("'"), QStringLiteral("''")))
                               .toUtf8());
        else
            armado.addNull();
        armado.addInteger(columna.type == Type::Counter ? 1 : 0);
        armado.endRow();
    }
    escribirFilas(salida, *armado.finish(), {});
    escribirFin(salida, fin, Mas | ConCuenta, 0xC1, columnas.size());
}

void Sesion::deshacer(Escritor &salida)
{
    m_motor->rollback();
    m_enTransaccion = false;
    cambioDeTransaccion(salida, 10, false);
}

bool Sesion::propia(Escritor &salida, const QString &sentencia, const db::Params &parametros, quint8 fin)
{
    const auto listo = [&](int orden) {
        escribirFin(salida, fin, Mas, orden, 0);
        return true;
    };
    const auto numero = [&](const std::optional<qint64> &valor) {
        escribirNumero(salida, fin, valor);
        return true;
    };
    static const QRegularExpression opcion = sinCaso(QStringLiteral("^(SET\\s+(?!IDENTITY_INSERT)\\w+|DECLARE)\\s"));
    static const QRegularExpression abortar = sinCaso(QStringLiteral("^SET\\s+XACT_ABORT\\s+(ON|OFF)$"));
    static const QRegularExpression empezar = sinCaso(QStringLiteral("^BEGIN\\s+TRAN(SACTION)?\\s*$"));
    static const QRegularExpression confirmar = sinCaso(QStringLiteral("^COMMIT(\\s+TRAN(SACTION)?)?\\s*$"));
    static const QRegularExpression volver
        = sinCaso(QStringLiteral("^(IF\\s+@@TRANCOUNT\\s*>\\s*0\\s+)?ROLLBACK(\\s+TRAN(SACTION)?)?\\s*$"));
    static const QRegularExpression nuevoId = sinCaso(QStringLiteral("^SELECT\\s+(.*)SCOPE_IDENTITY\\(\\)[^,]*$"));
    static const QRegularExpression esperar = sinCaso(QStringLiteral("^WAITFOR\\s+DELAY\\s+'(\\d\\d:\\d\\d:\\d\\d)'$"));
    static const QRegularExpression uno = sinCaso(QStringLiteral("^SELECT\\s+1$"));
    static const QRegularExpression variable = sinCaso(QStringLiteral("^SELECT\\s+@\\w+$"));
    static const QRegularExpression abiertas = sinCaso(QStringLiteral("^SELECT\\s+@@TRANCOUNT$"));
    static const QRegularExpression columnas
        = sinCaso(QStringLiteral("^SELECT COLUMN_NAME, DATA_TYPE,.*TABLE_NAME = (?:\\?|N?'((?:[^']|'')*)')"));
    if (empezar.match(sentencia).hasMatch()) {
        m_motor->begin();
        m_enTransaccion = true;
        cambioDeTransaccion(salida, 8, true);
        return listo(0xD4);
    }
    if (confirmar.match(sentencia).hasMatch()) {
        if (!m_enTransaccion)
            throw db::Error(db::Error::Kind::General, 3902, QStringLiteral("COMMIT without BEGIN TRANSACTION."));
        m_motor->commit();
        m_enTransaccion = false;
        cambioDeTransaccion(salida, 9, false);
        return listo(0xD5);
    }
    if (volver.match(sentencia).hasMatch()) {
        if (m_enTransaccion)
            deshacer(salida);
        else if (!sentencia.startsWith(u"IF", Qt::CaseInsensitive))
            throw db::Error(db::Error::Kind::General, 3903, QStringLiteral("ROLLBACK without BEGIN TRANSACTION."));
        return listo(0xD2);
    }
    if (const auto hallado = abortar.match(sentencia); hallado.hasMatch())
        m_abortar = hallado.captured(1).compare(u"ON", Qt::CaseInsensitive) == 0;
    // The named lock comes with the transaction: the file behind has one writer.
    if (opcion.match(sentencia).hasMatch() || sentencia.contains(u"sp_getapplock"))
        return listo(0xBE);
    if (variable.match(sentencia).hasMatch())
        return numero(0);
    if (nuevoId.match(sentencia).hasMatch())
        return numero(m_motor->insertedId());
    if (const auto hallado = esperar.match(sentencia); hallado.hasMatch()) {
        QThread::msleep(quint64(QTime(0, 0).msecsTo(QTime::fromString(hallado.captured(1)))));
        return listo(0xBE);
    }
    if (uno.match(sentencia).hasMatch())
        return numero(1);
    if (abiertas.match(sentencia).hasMatch())
        return numero(m_enTransaccion ? 1 : 0);
    if (const auto hallado = columnas.match(sentencia); hallado.hasMatch()) {
        const QString escrita = hallado.captured(1).replace(QStringLiteral("''"), QStringLiteral("'"));
        escribirColumnas(salida, fin, escrita.isEmpty() ? parametros.value(0).toString() : escrita);
        return true;
    }
    return false;
}

void Sesion::ejecutar(Escritor &salida, const QString &texto, const db::Params &parametros, bool dentroDeLlamada)
{
    const quint8 fin = dentroDeLlamada ? quint8(FinInterno) : quint8(Fin);
    try {
        for (const QString &sentencia : sentenciasDe(texto)) {
            if (propia(salida, sentencia, parametros, fin))
                continue;
            db::Params suyos;
            const QString conLugares = conSignos(sentencia, parametros, suyos);
            if (conLugares.startsWith(u"SELECT", Qt::CaseInsensitive)) {
                const db::Rows filas = m_motor->query(conLugares, suyos);
                escribirFilas(salida, *filas, conLugares);
                escribirFin(salida, fin, Mas | ConCuenta, 0xC1, filas->rowCount());
            } else {
                const int cambiadas = m_motor->execute(conLugares, suyos);
                escribirFin(salida, fin, Mas | ConCuenta, 0xC3, cambiadas);
            }
        }
        if (!dentroDeLlamada)
            escribirFin(salida, Fin, 0, 0, 0);
    } catch (const db::Error &error) {
        if (m_enTransaccion && m_abortar)
            deshacer(salida);
        // To see what the server refused.
        if (qEnvironmentVariableIsSet("VASTELO_TDS_DECIR"))
            fprintf(stderr, "%s\n%s\n", error.what(), qUtf8Printable(texto.left(2000)));
        escribirFallo(salida, falloDe(error));
        escribirFin(salida, fin, dentroDeLlamada ? Mas | ConFallo : ConFallo, 0, 0);
    }
}

void Sesion::llamada(Lector &lector)
{
    lector.saltarEncabezados();
    int numero = 0;
    QString nombre;
    const auto largo = lector.numero<quint16>();
    if (largo == 0xFFFF)
        numero = lector.numero<quint16>();
    else
        nombre = lector.texto(largo).toLower();
    (void)lector.numero<quint16>();
    db::Params valores;
    while (!lector.termino()) {
        (void)lector.textoCorto();
        (void)lector.numero<quint8>();
        valores << lector.valor();
    }
    Escritor salida;
    const auto es = [&](int suyo, QStringView suNombre) { return numero == suyo || nombre == suNombre; };
    const auto preparar = [&](const QString &texto) {
        const int clave = m_siguiente++;
        m_preparadas.insert(clave, texto);
        return clave;
    };
    std::optional<int> clave;
    if (es(10, u"sp_executesql")) {
        ejecutar(salida, valores.value(0).toString(), valores.mid(2), true);
    } else if (es(11, u"sp_prepare")) {
        clave = preparar(valores.value(2).toString());
    } else if (es(13, u"sp_prepexec")) {
        clave = preparar(valores.value(2).toString());
        ejecutar(salida, valores.value(2).toString(), valores.mid(3), true);
    } else if (es(12, u"sp_execute")) {
        ejecutar(salida, m_preparadas.value(valores.value(0).toInt()), valores.mid(1), true);
    } else if (es(15, u"sp_unprepare")) {
        m_preparadas.remove(valores.value(0).toInt());
    } else {
        escribirFallo(salida, {2812, 16, QStringLiteral("Could not find stored procedure.")});
    }
    salida.byte(Estado);
    salida.numero<qint32>(0);
    if (clave) {
        salida.byte(Retorno);
        salida.numero<quint16>(0);
        salida.textoCorto({});
        salida.byte(1);
        salida.numero<quint32>(0);
        salida.numero<quint16>(0);
        salida.byte(0x26);
        salida.byte(4);
        salida.byte(4);
        salida.numero<qint32>(*clave);
    }
    escribirFin(salida, FinLlamada, 0, 0xE0, 0);
    responder(salida);
}

void Sesion::transaccion(Lector &lector)
{
    lector.saltarEncabezados();
    Escritor salida;
    switch (lector.numero<quint16>()) {
    case 5: ejecutar(salida, QStringLiteral("BEGIN TRAN"), {}, false); break;
    case 7: ejecutar(salida, QStringLiteral("COMMIT"), {}, false); break;
    case 8: ejecutar(salida, QStringLiteral("ROLLBACK"), {}, false); break;
    default: escribirFin(salida, Fin, 0, 0, 0);
    }
    responder(salida);
}

void Sesion::escribirFilas(Escritor &salida, const db::ResultSet &filas, const QString &sentencia)
{
    // The width of a text is the one declared; of an expression, the longest of its values.
    const QString tabla = sentencia.isEmpty() ? QString() : m_motor->singleTable(sentencia);
    const QVector<db::Column> declaradas = tabla.isEmpty() ? QVector<db::Column>() : m_motor->columns(tabla);
    const int columnas = filas.columnCount();
    std::vector<int> ancho(size_t(columnas), 0);
    salida.byte(ColMetadata);
    salida.numero<quint16>(quint16(columnas));
    for (int c = 0; c < columnas; ++c) {
        const auto &campo = filas.fields()[size_t(c)];
        salida.numero<quint32>(0);
        salida.numero<quint16>(0x09); // may be Null, may be changed
        switch (campo.type) {
        case db::Type::Counter:
        case db::Type::Long:
            salida.byte(0x26);
            salida.byte(4);
            break;
        case db::Type::Integer:
            salida.byte(0x26);
            salida.byte(2);
            break;
        case db::Type::Flag:
            salida.byte(0x68);
            salida.byte(1);
            break;
        case db::Type::Single:
            salida.byte(0x6D);
            salida.byte(4);
            break;
        case db::Type::Double:
            salida.byte(0x6D);
            salida.byte(8);
            break;
        case db::Type::DateTime:
            salida.byte(0x6F);
            salida.byte(8);
            break;
        case db::Type::Binary:
            salida.byte(0xA5);
            salida.numero<quint16>(0xFFFF);
            break;
        case db::Type::Text: {
            int mayor = 1;
            for (const db::Column &declarada : declaradas)
                if (declarada.name.compare(campo.name, Qt::CaseInsensitive) == 0)
                    mayor = declarada.size;
            for (int f = 0; f < filas.rowCount(); ++f)
                mayor = qMax(mayor, int(filas.text(f, c).size()));
            ancho[size_t(c)] = mayor > 4000 ? 0 : mayor;
            salida.byte(0xE7);
            salida.numero<quint16>(mayor > 4000 ? 0xFFFF : quint16(mayor * 2));
            salida.bytes(comparacion());
            break;
        }
        case db::Type::Memo:
            salida.byte(0xE7);
            salida.numero<quint16>(0xFFFF);
            salida.bytes(comparacion());
            break;
        }
        salida.textoCorto(campo.name);
    }
    const auto porPartes = [&salida](const QByteArray &bytes) {
        salida.numero<quint64>(quint64(bytes.size()));
        for (qsizetype lugar = 0; lugar < bytes.size(); lugar += 8000) {
            const QByteArray parte = bytes.mid(lugar, 8000);
            salida.numero<quint32>(quint32(parte.size()));
            salida.bytes(parte);
        }
        salida.numero<quint32>(0);
    };
    for (int f = 0; f < filas.rowCount(); ++f) {
        salida.byte(Fila);
        for (int c = 0; c < columnas; ++c) {
            const db::Type tipo = filas.fields()[size_t(c)].type;
            const bool entera = tipo == db::Type::Memo || tipo == db::Type::Binary
                || (tipo == db::Type::Text && ancho[size_t(c)] == 0);
            if (filas.isNull(f, c)) {
                if (entera)
                    salida.numero<quint64>(~quint64(0));
                else if (tipo == db::Type::Text)
                    salida.numero<quint16>(0xFFFF);
                else
                    salida.byte(0);
                continue;
            }
            switch (tipo) {
            case db::Type::Counter:
            case db::Type::Long:
                salida.byte(4);
                salida.numero<qint32>(qint32(filas.integer(f, c)));
                break;
            case db::Type::Integer:
                salida.byte(2);
                salida.numero<qint16>(qint16(filas.integer(f, c)));
                break;
            case db::Type::Flag:
                salida.byte(1);
                salida.byte(filas.flag(f, c) ? 1 : 0);
                break;
            case db::Type::Single:
                salida.byte(4);
                salida.numero<float>(float(filas.real(f, c)));
                break;
            case db::Type::Double:
                salida.byte(8);
                salida.numero<double>(filas.real(f, c));
                break;
            case db::Type::DateTime:
                salida.byte(8);
                salida.bytes(bytesDeFecha(filas.dateTime(f, c)));
                break;
            case db::Type::Binary: porPartes(filas.utf8(f, c).toByteArray()); break;
            case db::Type::Memo: porPartes(utf16(filas.text(f, c))); break;
            case db::Type::Text: {
                const QByteArray bytes = utf16(filas.text(f, c));
                if (entera) {
                    porPartes(bytes);
                    break;
                }
                salida.numero<quint16>(quint16(bytes.size()));
                salida.bytes(bytes);
                break;
            }
            }
        }
    }
}

void Sesion::escribirFallo(Escritor &salida, const Fallo &fallo)
{
    Escritor cuerpo;
    cuerpo.numero<qint32>(fallo.numero);
    cuerpo.byte(1);
    cuerpo.byte(fallo.clase);
    cuerpo.textoLargo(fallo.texto);
    cuerpo.textoCorto(QStringLiteral("PRUEBA"));
    cuerpo.textoCorto({});
    cuerpo.numero<qint32>(1);
    salida.byte(Error);
    salida.numero<quint16>(quint16(cuerpo.datos().size()));
    salida.bytes(cuerpo.datos());
}

void Sesion::escribirFin(Escritor &salida, quint8 clase, int estado, int orden, qint64 filas)
{
    salida.byte(clase);
    salida.numero<quint16>(quint16(estado));
    salida.numero<quint16>(quint16(orden));
    salida.numero<qint64>(filas);
}

Sesion::Fallo Sesion::falloDe(const std::exception &error)
{
    const auto *suyo = dynamic_cast<const db::Error *>(&error);
    if (!suyo)
        return {50000, 16, QString::fromUtf8(error.what())};
    using Kind = db::Error::Kind;
    const auto con = [&](int numero, int clase) { return Fallo{numero, clase, suyo->description()}; };
    switch (suyo->kind()) {
    case Kind::NoSuchTable: return con(208, 16);
    case Kind::NoSuchColumn: return con(207, 16);
    case Kind::Syntax: return con(102, 15);
    case Kind::Busy: return con(1222, 16);
    case Kind::Constraint: return con(2627, 14);
    default: return con(suyo->number() > 100 ? suyo->number() : 50000, 14);
    }
}

} // namespace tds
