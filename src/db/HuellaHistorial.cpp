#include "db/HuellaHistorial.h"

#include "db/ResultSet.h"

#include <QtEndian>

namespace db {

namespace {

constexpr int bytesHuella = 16;

/// What the embedded file is locked with, on every computer: a server's own password may change, the log's may not.
const QByteArray claveDelPrograma = QByteArrayLiteral("kestrel428");

QByteArray derivar(const QByteArray &sal)
{
    return QMessageAuthenticationCode::hash(
        QByteArrayLiteral("Historial Cadena") + sal, claveDelPrograma, QCryptographicHash::Sha256);
}

int digitos(QByteArrayView texto)
{
    int numero = 0;
    for (const char c : texto) {
        if (c < '0' || c > '9')
            return -1;
        numero = numero * 10 + (c - '0');
    }
    return numero;
}

void agregar(QByteArray &texto, QByteArrayView valor)
{
    const auto largo = qToLittleEndian(quint32(valor.size()));
    texto.append(reinterpret_cast<const char *>(&largo), sizeof largo);
    texto.append(valor);
}

} // namespace

Huella &Huella::operator+=(const Huella &otra)
{
    const quint64 antes = baja;
    baja += otra.baja;
    alta += otra.alta + (baja < antes ? 1 : 0);
    return *this;
}

Huella &Huella::operator-=(const Huella &otra)
{
    alta -= otra.alta + (baja < otra.baja ? 1 : 0);
    baja -= otra.baja;
    return *this;
}

Huella Huella::de(QByteArrayView bytes)
{
    if (bytes.size() != bytesHuella)
        return {};
    return {qFromBigEndian<quint64>(bytes.data()), qFromBigEndian<quint64>(bytes.data() + sizeof(quint64))};
}

QByteArray Huella::bytes() const
{
    QByteArray resultado(bytesHuella, Qt::Uninitialized);
    qToBigEndian(alta, resultado.data());
    qToBigEndian(baja, resultado.data() + sizeof alta);
    return resultado;
}

int claveDia(QDate dia) { return dia.isValid() ? (dia.year() * 100 + dia.month()) * 100 + dia.day() : 0; }

int claveDia(QByteArrayView momento)
{
    if (momento.isEmpty())
        return 0;
    if (momento.size() < 10 || momento[4] != '-' || momento[7] != '-')
        return -1;
    const int anio = digitos(momento.first(4)), mes = digitos(momento.sliced(5, 2)),
              dia = digitos(momento.sliced(8, 2));
    // Nearly all of a million days need no calendar.
    const bool existe = anio > 0 && mes >= 1 && mes <= 12 && dia >= 1 && (dia <= 28 || QDate::isValid(anio, mes, dia));
    return existe ? (anio * 100 + mes) * 100 + dia : -1;
}

QDate diaDeClave(int clave) { return {clave / 10000, clave / 100 % 100, clave % 100}; }

LlaveHistorial::LlaveHistorial(const QByteArray &sal)
    : m_mac(QCryptographicHash::Sha256, derivar(sal))
{
}

Huella LlaveHistorial::de(QByteArrayView texto)
{
    m_mac.reset();
    m_mac.addData(texto.data(), texto.size());
    return Huella::de(QByteArrayView(m_mac.result()).first(bytesHuella));
}

Huella LlaveHistorial::deFila(const ResultSet &filas, int fila)
{
    return deValores(
        filas.utf8(fila, 0), filas.utf8(fila, 1), filas.integer(fila, 2), filas.utf8(fila, 3), filas.utf8(fila, 4));
}

Huella LlaveHistorial::deFila(const FilaHistorial &fila)
{
    return deValores(
        storedDateTime(fila.fecha).toUtf8(),
        fila.equipo.toUtf8(),
        fila.iddoctor,
        fila.ventana.toUtf8(),
        fila.accion.toUtf8());
}

Huella LlaveHistorial::deValores(
    QByteArrayView fecha, QByteArrayView equipo, qint64 iddoctor, QByteArrayView ventana, QByteArrayView accion)
{
    m_texto.resize(0);
    m_texto += 'F';
    // A day alone is its midnight.
    agregar(m_texto, fecha.size() == 10 ? QByteArrayView(fecha.toByteArray() + " 00:00:00") : fecha);
    agregar(m_texto, equipo);
    agregar(m_texto, QByteArray::number(iddoctor));
    agregar(m_texto, ventana);
    agregar(m_texto, accion);
    return de(m_texto);
}

} // namespace db
