#include "ui/Campo.h"

namespace ui {

namespace {

Campo nuevo(Campo::Tipo tipo, const QString &columna, const QString &etiqueta)
{
    Campo campo;
    campo.columna = columna;
    campo.etiqueta = etiqueta;
    campo.tipo = tipo;
    campo.nombre = columna;
    return campo;
}

} // namespace

Campo Campo::llamado(const QString &objectName) const
{
    Campo otro = *this;
    otro.nombre = objectName;
    return otro;
}

Campo Campo::con(int medida) const
{
    Campo otro = *this;
    otro.caracteres = medida;
    return otro;
}

Campo Campo::entre(int desde, int hasta) const
{
    Campo otro = *this;
    otro.minimo = desde;
    otro.maximo = hasta;
    return otro;
}

Campo Campo::dice(const QString &texto) const
{
    Campo otro = *this;
    otro.ayuda = texto;
    return otro;
}

Campo Campo::entero() const
{
    Campo otro = *this;
    otro.ancho = true;
    return otro;
}

namespace campo {

Campo texto(const QString &columna, const QString &etiqueta) { return nuevo(Campo::Tipo::Texto, columna, etiqueta); }

Campo memo(const QString &columna, const QString &etiqueta)
{
    return nuevo(Campo::Tipo::Memo, columna, etiqueta).con(3).entero();
}

Campo numero(const QString &columna, const QString &etiqueta)
{
    return nuevo(Campo::Tipo::Entero, columna, etiqueta).con(8);
}

Campo decimal(const QString &columna, const QString &etiqueta)
{
    return nuevo(Campo::Tipo::Decimal, columna, etiqueta).con(12);
}

Campo fecha(const QString &columna, const QString &etiqueta)
{
    return nuevo(Campo::Tipo::Fecha, columna, etiqueta).con(12);
}

Campo bandera(const QString &columna, const QString &etiqueta)
{
    return nuevo(Campo::Tipo::Bandera, columna, etiqueta);
}

Campo eleccion(const QString &columna, const QString &etiqueta, const Campo::Opciones &opciones)
{
    Campo campo = nuevo(Campo::Tipo::Eleccion, columna, etiqueta);
    campo.opciones = opciones;
    return campo;
}

Campo lista(
    const QString &columna,
    const QString &etiqueta,
    const QString &tabla,
    const QString &vacia,
    const QString &columnaNombre)
{
    Campo campo = nuevo(Campo::Tipo::Lista, columna, etiqueta);
    campo.tabla = tabla;
    campo.columnaNombre = columnaNombre;
    if (!vacia.isEmpty())
        campo.opciones = {{vacia, 0}};
    return campo;
}

Campo propio(const QString &columna, const QString &etiqueta) { return nuevo(Campo::Tipo::Propio, columna, etiqueta); }

} // namespace campo

} // namespace ui
