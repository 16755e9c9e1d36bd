#include "maintenance/Entradas.h"

#include "base/Numeros.h"
#include "db/Entorno.h"
#include "db/Historial.h"
#include "db/ListaDoctores.h"
#include "db/Recordset.h"

namespace maintenance {

namespace {

using Clase = CampoLista::Clase;

base::Rechazo aviso(const QString &texto, const QString &campo) { return {base::titulo::aviso, texto, campo}; }

/// "Número de &dosis:" without its mark and colon.
QString rotuloLlano(const CampoLista &campo)
{
    QString texto = campo.rotulo;
    texto.remove(u'&');
    return texto.endsWith(u':') ? texto.chopped(1) : texto;
}

QString numeroTexto(double valor) { return QString::number(valor, 'g', 10).replace(u'.', u','); }

base::Control controlarLargo(
    db::Connection &conexion, const Lista &lista, const QString &columna, const QString &texto, const QString &campo)
{
    const int largo = largoMaximo(conexion, lista, columna);
    if (largo == 0 || texto.size() <= largo)
        return std::nullopt;
    return aviso(
        QStringLiteral("El texto ingresado es demasiado largo: puede tener hasta %1 letras.").arg(largo), campo);
}

/// The value that a typed text stands for, fitted to its column.
base::Resultado<QVariant> leerCampo(const CampoLista &campo, const QString &texto)
{
    const base::Rechazo mal
        = aviso(QStringLiteral("El valor ingresado en ' %1 ' no es válido.").arg(rotuloLlano(campo)), campo.columna);
    bool entero = false;
    const int numero = texto.toInt(&entero);
    switch (campo.clase) {
    case Clase::Texto: return QVariant(texto);
    case Clase::Porcentaje: {
        const auto porcentaje = texto.isEmpty() ? std::optional<double>(0) : base::leerNumero(texto);
        if (!porcentaje || *porcentaje < 0)
            return mal;
        return QVariant(*porcentaje);
    }
    case Clase::Opcion:
        for (const auto &[codigo, nombre] : campo.opciones)
            if (entero && codigo == numero)
                return QVariant(numero);
        return mal;
    case Clase::Entero:
        if (!entero || numero < campo.minimo || numero > campo.maximo)
            return aviso(
                QStringLiteral("El valor ingresado en ' %1 ' debe ser un número de %2 a %3.")
                    .arg(rotuloLlano(campo))
                    .arg(campo.minimo)
                    .arg(campo.maximo),
                campo.columna);
        return QVariant(numero);
    case Clase::Meses:
        if (texto.isEmpty())
            return QVariant();
        if (!entero || numero < 0 || numero > 1500)
            return mal;
        return QVariant(numero);
    }
    Q_UNREACHABLE();
}

/// The entry without superfluous blanks, its values beside it.
struct Leida {
    Entrada entrada;
    QVector<QVariant> valores;
};

base::Resultado<Leida> leer(db::Connection &conexion, const Lista &lista, const Entrada &escrita)
{
    Q_ASSERT(escrita.campos.size() == lista.campos.size());
    const QString nombre = QStringLiteral("nombre");
    Leida leida{escrita, {}};
    leida.entrada.nombre = escrita.nombre.simplified();
    if (leida.entrada.nombre.isEmpty())
        return aviso(QStringLiteral("Debe ingresar el nombre."), nombre);
    if (const auto largo = controlarLargo(conexion, lista, lista.columnaNombre, leida.entrada.nombre, nombre))
        return *largo;
    for (qsizetype i = 0; i < lista.campos.size(); ++i) {
        const CampoLista &campo = lista.campos[i];
        QString &texto = leida.entrada.campos[i];
        texto = texto.simplified();
        if (campo.clase == Clase::Texto)
            if (const auto largo = controlarLargo(conexion, lista, campo.columna, texto, campo.columna))
                return *largo;
        const auto valor = leerCampo(campo, texto);
        if (!valor)
            return valor.rechazo();
        leida.valores << *valor;
        if (campo.clase == Clase::Porcentaje)
            texto = numeroTexto(valor->toDouble());
    }
    return leida;
}

/// What two entries may not share: the name and the fields that tell entries of one name apart.
QStringList identidad(const Lista &lista, const Entrada &entrada)
{
    QStringList partes{entrada.nombre};
    for (qsizetype i = 0; i < lista.campos.size(); ++i)
        if (lista.campos[i].distingue)
            partes << entrada.campos[i];
    return partes;
}

bool estaRepetida(db::Connection &conexion, const Lista &lista, const Entrada &entrada)
{
    const db::Dialect &d = conexion.dialect();
    QString sql = QStringLiteral("SELECT id FROM %1 WHERE %2 = ? And id <> ?")
                      .arg(d.identifier(lista.tabla), d.identifier(lista.columnaNombre));
    db::Params valores{entrada.nombre, entrada.id};
    for (qsizetype i = 0; i < lista.campos.size(); ++i)
        if (lista.campos[i].distingue) {
            const QString columna = d.identifier(lista.campos[i].columna);
            sql += entrada.campos[i].isEmpty() ? QStringLiteral(" And (%1 = ? Or %1 Is Null)").arg(columna)
                                               : QStringLiteral(" And %1 = ?").arg(columna);
            valores << entrada.campos[i];
        }
    return conexion.query(sql, valores)->rowCount() > 0;
}

QString textoMostrado(const CampoLista &campo, const QString &escrito)
{
    if (campo.clase == Clase::Opcion)
        for (const auto &[codigo, nombre] : campo.opciones)
            if (QString::number(codigo) == escrito)
                return nombre;
    return escrito;
}

/// "Nombre: Osde → OSDE; Prioridad: 0 → 10"
QString cambios(const Lista &lista, const Entrada &antes, const Entrada &ahora)
{
    QStringList partes;
    const auto comparar = [&partes](const QString &rotulo, const QString &a, const QString &b) {
        if (a != b)
            partes << QStringLiteral("%1: %2 → %3").arg(rotulo, a, b);
    };
    comparar(QStringLiteral("Nombre"), antes.nombre, ahora.nombre);
    for (qsizetype i = 0; i < lista.campos.size(); ++i) {
        const CampoLista &campo = lista.campos[i];
        comparar(rotuloLlano(campo), textoMostrado(campo, antes.campos[i]), textoMostrado(campo, ahora.campos[i]));
    }
    comparar(QStringLiteral("Prioridad"), QString::number(antes.prioridad), QString::number(ahora.prioridad));
    return partes.join(QStringLiteral("; "));
}

QString columnas(const db::Dialect &d, const Lista &lista)
{
    QStringList nombres{QStringLiteral("id"), d.identifier(lista.columnaNombre)};
    for (const CampoLista &campo : lista.campos)
        nombres << d.identifier(campo.columna);
    nombres << QStringLiteral("prioridad");
    return nombres.join(u',');
}

Entrada entradaDe(const Lista &lista, const db::ResultSet &rows, int row)
{
    Entrada entrada{rows.integer(row, 0), rows.text(row, 1), 0, {}};
    for (int i = 0; i < lista.campos.size(); ++i)
        entrada.campos << textoCampo(lista.campos[i], rows, row, 2 + i);
    entrada.prioridad = int(rows.integer(row, 2 + int(lista.campos.size())));
    return entrada;
}

} // namespace

base::Rechazo entradaEliminada() { return base::registroEliminado(); }

Entrada entradaNueva(const Lista &lista)
{
    Entrada entrada;
    for (const CampoLista &campo : lista.campos)
        entrada.campos
            << (campo.clase == Clase::Opcion       ? QString::number(campo.opciones.first().first)
                    : campo.clase == Clase::Entero ? QString::number(campo.minimo)
                                                   : QString());
    return entrada;
}

db::Rows leerEntradas(db::Connection &conexion, const Lista &lista, const QString &filtro)
{
    const db::Dialect &d = conexion.dialect();
    const QString nombre = d.identifier(lista.columnaNombre);
    QString sql = QStringLiteral("SELECT %1 FROM %2").arg(columnas(d, lista), d.identifier(lista.tabla));
    if (const QString buscado = filtro.trimmed(); !buscado.isEmpty()) {
        QStringList condiciones{d.contains(nombre, buscado)};
        for (const CampoLista &campo : lista.campos)
            if (campo.clase == Clase::Texto)
                condiciones << d.contains(d.identifier(campo.columna), buscado);
        sql += QStringLiteral(" WHERE ") + condiciones.join(QStringLiteral(" Or "));
    }
    return conexion.query(sql + QStringLiteral(" ORDER BY prioridad DESC,") + nombre);
}

QString textoCampo(const CampoLista &campo, const db::ResultSet &rows, int row, int column)
{
    if (rows.isNull(row, column))
        return {};
    return campo.clase == Clase::Porcentaje ? numeroTexto(rows.real(row, column)) : rows.text(row, column);
}

QString textoEntrada(const Lista &lista, const db::ResultSet &rows, int row)
{
    return textoEntrada(lista, entradaDe(lista, rows, row));
}

QString textoEntrada(const Lista &lista, const Entrada &entrada)
{
    QStringList partes = identidad(lista, entrada);
    const QString nombre = partes.takeFirst();
    partes.removeAll(QString());
    return partes.isEmpty() ? nombre : QStringLiteral("%1 (%2)").arg(nombre, partes.join(QStringLiteral(", ")));
}

std::optional<Entrada> leerEntrada(db::Connection &conexion, const Lista &lista, qint64 id)
{
    const db::Dialect &d = conexion.dialect();
    const db::Rows rows = conexion.query(
        QStringLiteral("SELECT %1 FROM %2 WHERE id = ?").arg(columnas(d, lista), d.identifier(lista.tabla)), {id});
    return rows->rowCount() == 0 ? std::nullopt : std::optional(entradaDe(lista, *rows, 0));
}

qint64 buscarEntrada(db::Connection &conexion, const Lista &lista, const QString &nombre)
{
    const db::Dialect &d = conexion.dialect();
    const db::Rows rows = conexion.query(
        QStringLiteral("SELECT id FROM %1 WHERE %2 = ? ORDER BY prioridad DESC,id")
            .arg(d.identifier(lista.tabla), d.identifier(lista.columnaNombre)),
        {nombre.simplified()});
    return rows->rowCount() == 0 ? 0 : rows->integer(0, 0);
}

int largoMaximo(db::Connection &conexion, const Lista &lista, QStringView columna)
{
    for (const db::Column &declarada : conexion.columns(lista.tabla))
        if (columna.compare(declarada.name, Qt::CaseInsensitive) == 0)
            return declarada.type == db::Type::Text ? declarada.size : 0;
    return 0;
}

base::Resultado<qint64> guardarEntrada(db::Entorno &entorno, const Lista &lista, const Entrada &entrada)
{
    if (auto sinDerecho = db::controlarDerecho(entorno, u"accesoconfiguracion"))
        return *sinDerecho;
    db::Connection &conexion = entorno.conexion();
    const auto leida = leer(conexion, lista, entrada);
    if (!leida)
        return leida.rechazo();
    const Entrada &nueva = leida->entrada;

    db::Transaction transaccion(conexion);
    std::optional<Entrada> antes;
    if (nueva.id != 0) {
        antes = leerEntrada(conexion, lista, nueva.id);
        if (!antes)
            return entradaEliminada();
        if (*antes == nueva)
            return nueva.id;
    }
    // Names that an older database holds twice may stay, or nothing else of them could be changed.
    const bool otroNombre = !antes || identidad(lista, *antes) != identidad(lista, nueva);
    if (otroNombre && estaRepetida(conexion, lista, nueva))
        return aviso(
            QStringLiteral("Ya existe «%1» en la lista %2.").arg(textoEntrada(lista, nueva), lista.titulo),
            QStringLiteral("nombre"));

    db::Recordset fila(
        conexion,
        QStringLiteral("SELECT * FROM %1 WHERE id = ?").arg(conexion.dialect().identifier(lista.tabla)),
        {nueva.id});
    if (!antes)
        fila.addNew();
    fila.set(lista.columnaNombre, nueva.nombre);
    for (qsizetype i = 0; i < lista.campos.size(); ++i)
        fila.set(lista.campos[i].columna, leida->valores[i]);
    fila.set(u"prioridad", nueva.prioridad);
    const qint64 id = fila.update();

    db::registrarHistorial(
        entorno,
        ventanaHistorial,
        antes ? QStringLiteral("Se modificó «%1» de la lista %2. (%3)")
                    .arg(textoEntrada(lista, *antes), lista.titulo, cambios(lista, *antes, nueva))
              : QStringLiteral("Se agregó «%1» a la lista %2.").arg(textoEntrada(lista, nueva), lista.titulo));
    transaccion.commit();
    return id;
}

} // namespace maintenance
