#include "db/CadenaHistorial.h"

#include "db/Error.h"
#include "db/LectorHistorial.h"

#include <QRandomGenerator>
#include <QtEndian>

#include <algorithm>
#include <map>

namespace db {

namespace {

const QString columnas
    = QStringLiteral("orden,clase,fecha,huella,sello,cantidad,desde,hasta,suma,pendiente,sal FROM [Historial Cadena]");

QDate diaEn(const ResultSet &filas, int fila, int columna)
{
    return filas.isNull(fila, columna) ? QDate() : filas.dateTime(fila, columna).date();
}

Eslabon leido(const ResultSet &filas, int fila)
{
    Eslabon e;
    e.orden = int(filas.integer(fila, 0));
    e.clase = Eslabon::Clase(filas.integer(fila, 1));
    e.fecha = filas.utf8(fila, 2).toByteArray();
    e.huella = Huella::de(filas.utf8(fila, 3));
    e.sello = Huella::de(filas.utf8(fila, 4));
    e.cantidad = int(filas.integer(fila, 5));
    e.desde = diaEn(filas, fila, 6);
    e.hasta = diaEn(filas, fila, 7);
    e.suma = Huella::de(filas.utf8(fila, 8));
    e.pendiente = diaEn(filas, fila, 9);
    e.sal = filas.utf8(fila, 10).toByteArray();
    return e;
}

void agregar(QByteArray &texto, qint64 numero)
{
    const auto bytes = qToLittleEndian(numero);
    texto.append(reinterpret_cast<const char *>(&bytes), sizeof bytes);
}

void agregar(QByteArray &texto, const QByteArray &valor)
{
    agregar(texto, qint64(valor.size()));
    texto += valor;
}

QByteArray guardado(const QDateTime &momento) { return storedDateTime(momento).toUtf8(); }

QVariant diaONada(QDate dia) { return dia.isValid() ? QVariant(dia) : QVariant(); }

} // namespace

QDate primerDiaHistorial() { return {1900, 1, 1}; }

bool CadenaHistorial::abrir()
{
    const Rows filas = m_conexion.query(QStringLiteral("SELECT TOP 1 %1 ORDER BY orden").arg(columnas));
    if (filas->rowCount() == 0 || filas->integer(0, 1) != int(Eslabon::Clase::Comienzo))
        return false;
    m_comienzo = leido(*filas, 0);
    m_llave.emplace(m_comienzo.sal);
    return true;
}

std::optional<Eslabon> CadenaHistorial::cola()
{
    const Rows filas = m_conexion.query(QStringLiteral("SELECT TOP 1 %1 ORDER BY orden DESC").arg(columnas));
    return filas->rowCount() > 0 ? std::optional(leido(*filas, 0)) : std::nullopt;
}

std::optional<Eslabon> CadenaHistorial::eslabon(int orden)
{
    const Rows filas = m_conexion.query(QStringLiteral("SELECT %1 WHERE orden = ?").arg(columnas), {orden});
    return filas->rowCount() > 0 ? std::optional(leido(*filas, 0)) : std::nullopt;
}

std::vector<Eslabon> CadenaHistorial::siguientes(int orden, int cuantos)
{
    const Rows filas = m_conexion.query(
        QStringLiteral("SELECT TOP %1 %2 WHERE orden > ? ORDER BY orden").arg(QString::number(cuantos), columnas),
        {orden});
    std::vector<Eslabon> eslabones;
    eslabones.reserve(size_t(filas->rowCount()));
    for (int f = 0; f < filas->rowCount(); ++f)
        eslabones.push_back(leido(*filas, f));
    return eslabones;
}

QByteArray CadenaHistorial::contenido(const Eslabon &e) const
{
    QByteArray texto;
    texto.reserve(160);
    agregar(texto, qint64(e.orden));
    texto += char('0' + int(e.clase));
    agregar(texto, e.fecha);
    if (e.clase != Eslabon::Clase::Comienzo)
        texto += e.huella.bytes();
    // Of the rows of the log nearly none has more to say.
    if (e.clase != Eslabon::Clase::Accion || e.pendiente.isValid()) {
        agregar(texto, qint64(e.cantidad));
        for (const QDate dia : {e.desde, e.hasta, e.pendiente})
            agregar(texto, qint64(claveDia(dia)));
        texto += e.suma.bytes();
        agregar(texto, e.sal);
    }
    return texto;
}

Huella CadenaHistorial::selloDe(const Huella &anterior, const Eslabon &eslabon)
{
    return m_llave->de('E' + anterior.bytes() + contenido(eslabon));
}

Huella CadenaHistorial::firmaDe(const Eslabon &comienzo)
{
    return m_llave->de('C' + comienzo.sello.bytes() + contenido(comienzo));
}

void CadenaHistorial::insertar(const Eslabon &e)
{
    QString nombres = QStringLiteral("orden,clase,fecha,huella,sello");
    Params valores{
        e.orden,
        int(e.clase),
        readStoredDateTime(e.fecha),
        e.huella.bytes(),
        e.sello.bytes(),
    };
    if (e.pendiente.isValid()) {
        nombres += QStringLiteral(",pendiente");
        valores << e.pendiente;
    }
    if (e.clase != Eslabon::Clase::Accion) {
        nombres += QStringLiteral(",cantidad,desde,hasta,suma");
        valores << e.cantidad << diaONada(e.desde) << diaONada(e.hasta) << e.suma.bytes();
    }
    if (!e.sal.isEmpty()) {
        nombres += QStringLiteral(",sal");
        valores << e.sal;
    }
    const QString marcas = QStringLiteral("?,").repeated(valores.size()).chopped(1);
    m_conexion.execute(QStringLiteral("INSERT INTO [Historial Cadena] (%1) VALUES (%2)").arg(nombres, marcas), valores);
}

void CadenaHistorial::anexar(Eslabon &nuevo)
{
    const std::optional<Eslabon> ultimo = cola();
    if (!ultimo)
        throw Error(Error::Kind::Constraint, 0, QStringLiteral("El registro de actividad fue cambiado desde afuera."));
    nuevo.orden = ultimo->orden + 1;
    if (nuevo.clase != Eslabon::Clase::Anteriores)
        nuevo.pendiente = ultimo->pendiente;
    nuevo.sello = selloDe(ultimo->sello, nuevo);
    insertar(nuevo);
}

void CadenaHistorial::comenzar(const QDateTime &ahora)
{
    Eslabon primero;
    primero.clase = Eslabon::Clase::Comienzo;
    primero.fecha = guardado(ahora);
    primero.sal.resize(16);
    QRandomGenerator::system()->fillRange(reinterpret_cast<quint32 *>(primero.sal.data()), 4);
    // An older chain without its beginning stays as it is, for everybody to see, and is not built upon.
    if (const std::optional<Eslabon> ultimo = cola()) {
        primero.orden = siguientes(std::numeric_limits<int>::min(), 1).front().orden - 1;
        primero.cantidad = ultimo->orden;
    }
    const Rows antes
        = m_conexion.query(QStringLiteral("SELECT TOP 1 iddoctor FROM [Historial] WHERE fecha < %1 or fecha IS NULL")
                               .arg(m_conexion.dialect().dayStart(ahora.date())));
    if (antes->rowCount() > 0)
        primero.pendiente = primerDiaHistorial();
    m_llave.emplace(primero.sal);
    primero.huella = firmaDe(primero);
    insertar(primero);
    m_comienzo = primero;
    sellarDia(ahora);
}

void CadenaHistorial::sellarDia(const QDateTime &ahora)
{
    std::map<int, Eslabon> dias;
    Usos usos;
    LectorHistorial lector(m_conexion, ahora.date());
    while (lector.leer())
        for (int f = 0; f < lector.cantidad(); ++f) {
            const int clave = claveDia(lector.filas().utf8(f, 0));
            if (clave < 0)
                continue;
            Eslabon &dia = dias[clave];
            ++dia.cantidad;
            dia.suma += m_llave->deFila(lector.filas(), f);
            usos[lector.filas().text(f, 3)].insert(int(lector.filas().integer(f, 2)));
        }
    for (auto &[clave, dia] : dias) {
        dia.clase = Eslabon::Clase::Anteriores;
        dia.fecha = guardado(ahora);
        dia.desde = dia.hasta = diaDeClave(clave);
        dia.pendiente = m_comienzo.pendiente;
        anexar(dia);
    }
    anotarUsos(usos);
}

int CadenaHistorial::sellar(int filas, const QDateTime &ahora)
{
    const std::optional<Eslabon> ultimo = cola();
    if (!ultimo || !ultimo->pendiente.isValid())
        return 0;
    const Dialect &d = m_conexion.dialect();
    const QDate desde = ultimo->pendiente;
    const QDate primerDia = desde == primerDiaHistorial() ? QDate() : desde;
    const QDate ultimoDia = readStoredDateTime(m_comienzo.fecha).date().addDays(-1);

    // Whole days, until there are enough rows.
    const Rows proximas = m_conexion.query(
        QStringLiteral("SELECT TOP %1 fecha FROM [Historial] WHERE fecha >= %2 and fecha <= %3 ORDER BY fecha")
            .arg(QString::number(filas), d.dayStart(desde), d.dayEnd(ultimoDia)));
    QDate hasta = ultimoDia;
    if (proximas->rowCount() == filas && proximas->dateTime(filas - 1, 0).isValid())
        hasta = proximas->dateTime(filas - 1, 0).date();

    std::vector<Huella> huellas;
    Usos usos;
    LectorHistorial lector(m_conexion, primerDia, hasta);
    while (lector.leer())
        for (int f = 0; f < lector.cantidad(); ++f) {
            huellas.push_back(m_llave->deFila(lector.filas(), f));
            usos[lector.filas().text(f, 3)].insert(int(lector.filas().integer(f, 2)));
        }

    // A station whose clock is behind may already have logged into these days: such rows have links of their own.
    std::sort(huellas.begin(), huellas.end());
    std::vector<bool> propia(huellas.size());
    const Rows eslabones = m_conexion.query(
        QStringLiteral("SELECT huella FROM [Historial Cadena] WHERE orden > ? and fecha <= %1 and clase in (1,2)")
            .arg(d.dayEnd(hasta)),
        {std::max(m_comienzo.cantidad, m_comienzo.orden)});
    for (int f = 0; f < eslabones->rowCount(); ++f) {
        const Huella huella = Huella::de(eslabones->utf8(f, 0));
        auto igual = std::lower_bound(huellas.begin(), huellas.end(), huella);
        while (igual != huellas.end() && *igual == huella && propia[size_t(igual - huellas.begin())])
            ++igual;
        if (igual != huellas.end() && *igual == huella)
            propia[size_t(igual - huellas.begin())] = true;
    }

    Eslabon tramo;
    tramo.clase = Eslabon::Clase::Anteriores;
    tramo.fecha = guardado(ahora);
    tramo.desde = desde;
    tramo.hasta = hasta;
    if (hasta < ultimoDia)
        tramo.pendiente = hasta.addDays(1);
    for (size_t i = 0; i < huellas.size(); ++i)
        if (!propia[i]) {
            ++tramo.cantidad;
            tramo.suma += huellas[i];
        }
    anexar(tramo);
    anotarUsos(usos);
    return int(huellas.size());
}

void CadenaHistorial::podar(const Eslabon &ultimo)
{
    if (ultimo.orden == m_comienzo.orden)
        return;
    m_conexion.execute(QStringLiteral("DELETE FROM [Historial Cadena] WHERE orden <= ?"), {ultimo.orden});
    m_comienzo.orden = ultimo.orden;
    m_comienzo.sello = ultimo.sello;
    m_comienzo.pendiente = ultimo.pendiente;
    m_comienzo.huella = firmaDe(m_comienzo);
    insertar(m_comienzo);
}

void CadenaHistorial::anotarUsos(const Usos &usos)
{
    for (auto uso = usos.cbegin(); uso != usos.cend(); ++uso)
        for (const int iddoctor : *uso)
            anotarUso(iddoctor, uso.key());
}

void CadenaHistorial::anotarUso(int iddoctor, const QString &ventana)
{
    const Rows conocido = m_conexion.query(
        QStringLiteral("SELECT TOP 1 iddoctor FROM [Historial Usos] WHERE iddoctor = ? and ventana = ?"),
        {iddoctor, ventana});
    if (conocido->rowCount() == 0)
        m_conexion.execute(
            QStringLiteral("INSERT INTO [Historial Usos] (iddoctor,ventana) VALUES (?,?)"), {iddoctor, ventana});
}

RecorridoCadena::RecorridoCadena(CadenaHistorial &cadena, const Eslabon &desde)
    : m_cadena(cadena)
    , m_ultimo(desde)
{
}

const std::vector<RecorridoCadena::Paso> &RecorridoCadena::leer(int cuantos)
{
    m_pasos.clear();
    for (Eslabon &e : m_cadena.siguientes(m_ultimo.orden, cuantos)) {
        Paso paso;
        paso.perdido = e.orden <= m_cadena.comienzo().cantidad;
        paso.faltan = e.orden - m_ultimo.orden - 1;
        paso.alterado = !paso.perdido && paso.faltan == 0 && m_cadena.selloDe(m_ultimo.sello, e) != e.sello;
        m_ultimo = e;
        paso.eslabon = std::move(e);
        m_pasos.push_back(std::move(paso));
    }
    return m_pasos;
}

} // namespace db
