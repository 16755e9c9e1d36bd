#include "support/MensajesGuionados.h"

#include <QtTest>

namespace soporte {

using base::Icono;

void MensajesGuionados::esperarMensaje(const QString &titulo, const QString &texto, Icono icono)
{
    m_guion.push_back({Clase::Mensaje, titulo, texto, icono});
}

void MensajesGuionados::esperarPregunta(
    const QString &titulo, const QString &texto, bool respuesta, std::function<void()> mientras)
{
    m_guion.push_back({Clase::Pregunta, titulo, texto, Icono::Ninguno, respuesta, {}, std::move(mientras)});
}

void MensajesGuionados::esperarTexto(const QString &titulo, const QString &texto, std::optional<QString> respuesta)
{
    m_guion.push_back({Clase::Texto, titulo, texto, Icono::Ninguno, false, std::move(respuesta)});
}

void MensajesGuionados::esperarClave(const QString &titulo, const QString &texto, std::optional<QString> respuesta)
{
    m_guion.push_back({Clase::Clave, titulo, texto, Icono::Ninguno, false, std::move(respuesta)});
}

void MensajesGuionados::esperarArchivo(const QString &titulo, std::optional<QString> respuesta)
{
    m_guion.push_back({Clase::Archivo, titulo, {}, Icono::Ninguno, false, std::move(respuesta)});
}

void MensajesGuionados::esperarDestino(const QString &titulo, std::optional<QString> respuesta)
{
    m_guion.push_back({Clase::Destino, titulo, {}, Icono::Ninguno, false, std::move(respuesta)});
}

void MensajesGuionados::esperarCarpeta(const QString &titulo, std::optional<QString> respuesta)
{
    m_guion.push_back({Clase::Carpeta, titulo, {}, Icono::Ninguno, false, std::move(respuesta)});
}

bool MensajesGuionados::terminar()
{
    const bool vacio = m_guion.empty();
    if (!vacio) {
        const QByteArray falta = "expected message never came: " + m_guion.front().titulo.toUtf8() + " | "
            + m_guion.front().texto.toUtf8();
        m_guion.clear();
        QTest::qFail(falta.constData(), __FILE__, __LINE__);
    }
    return vacio;
}

std::optional<MensajesGuionados::Paso>
MensajesGuionados::tomar(Clase clase, const QString &titulo, const QString &texto, bool conTexto)
{
    m_dichos << titulo + u'|' + texto;
    const bool coincide = !m_guion.empty() && m_guion.front().clase == clase && m_guion.front().titulo == titulo
        && (!conTexto || m_guion.front().texto == texto);
    if (!coincide) {
        QByteArray falla = "unexpected message: " + titulo.toUtf8() + " | " + texto.toUtf8();
        if (!m_guion.empty())
            falla += "\n   expected: " + m_guion.front().titulo.toUtf8() + " | " + m_guion.front().texto.toUtf8();
        QTest::qFail(falla.constData(), __FILE__, __LINE__);
        return std::nullopt;
    }
    Paso paso = m_guion.front();
    m_guion.pop_front();
    return paso;
}

void MensajesGuionados::mensaje(const QString &titulo, const QString &texto, Icono icono)
{
    const auto paso = tomar(Clase::Mensaje, titulo, texto);
    if (paso && paso->icono != icono)
        QTest::qFail(("wrong icon for: " + texto.toUtf8()).constData(), __FILE__, __LINE__);
}

bool MensajesGuionados::pregunta(const QString &titulo, const QString &texto, bool)
{
    const auto paso = tomar(Clase::Pregunta, titulo, texto);
    if (paso && paso->mientras)
        paso->mientras();
    return paso && paso->respuesta;
}

std::optional<QString> MensajesGuionados::pedirTexto(const QString &titulo, const QString &texto, const QString &)
{
    const auto paso = tomar(Clase::Texto, titulo, texto);
    return paso ? paso->valor : std::nullopt;
}

std::optional<QString> MensajesGuionados::pedirClave(const QString &titulo, const QString &texto)
{
    const auto paso = tomar(Clase::Clave, titulo, texto);
    return paso ? paso->valor : std::nullopt;
}

std::optional<QString> MensajesGuionados::elegirArchivo(const QString &titulo, const QString &, const QString &)
{
    const auto paso = tomar(Clase::Archivo, titulo, {}, false);
    return paso ? paso->valor : std::nullopt;
}

std::optional<QString> MensajesGuionados::elegirDestino(const QString &titulo, const QString &, const QString &)
{
    const auto paso = tomar(Clase::Destino, titulo, {}, false);
    return paso ? paso->valor : std::nullopt;
}

std::optional<QString> MensajesGuionados::elegirCarpeta(const QString &titulo, const QString &)
{
    const auto paso = tomar(Clase::Carpeta, titulo, {}, false);
    return paso ? paso->valor : std::nullopt;
}

} // namespace soporte
