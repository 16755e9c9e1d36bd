#include "maintenance/Configuracion.h"

#include "base/Clock.h"
#include "base/Imagenes.h"
#include "base/NumeroHistoria.h"
#include "db/Config.h"
#include "db/Entorno.h"
#include "db/FondoAplicacion.h"
#include "db/Historial.h"
#include "db/ListaDoctores.h"
#include "maintenance/Ajustes.h"
#include "users/Puerta.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>

#include <algorithm>

namespace maintenance {

namespace {

const QString ventana = QStringLiteral("Configuración del Sistema");
const QString fondo = QStringLiteral("fondoaplicacion");
const QString prefijo = QStringLiteral("prefijohc");
const QString numero = QStringLiteral("numerohc");
const QString carpetaDeCopias = QStringLiteral("backupcarpeta");

base::Rechazo aviso(const QString &texto, const QString &campo) { return {base::titulo::aviso, texto, campo}; }

QVariant comoSeMuestra(const Ajuste &ajuste, const QVariant &valor)
{
    switch (ajuste.tipo) {
    case Ajuste::Tipo::Bandera: return valor.toBool() || valor.toDouble() != 0;
    case Ajuste::Tipo::Uno: return valor.typeId() != QMetaType::Bool && valor.toInt() == 1;
    case Ajuste::Tipo::Eleccion:
    case Ajuste::Tipo::Entero: return valor.isNull() ? QVariant() : QVariant(valor.toInt());
    default: return valor.toString();
    }
}

QVariant comoSeGuarda(const Ajuste &ajuste, const QVariant &valor)
{
    switch (ajuste.tipo) {
    case Ajuste::Tipo::Imagen: return !valor.toString().isEmpty();
    case Ajuste::Tipo::Texto:
    case Ajuste::Tipo::Carpeta: return valor.toString().trimmed();
    default: return valor;
    }
}

base::Control controlarNumeracion(db::Connection &conexion, const QVariantMap &cambios)
{
    if (!cambios.contains(prefijo) && !cambios.contains(numero))
        return std::nullopt;
    const db::Config config(conexion);
    const auto valor = [&](const QString &columna) {
        return (cambios.contains(columna) ? cambios.value(columna).toString() : config.texto(columna)).trimmed();
    };
    if (const QString escrito = valor(numero);
        cambios.contains(numero) && !escrito.isEmpty() && !base::numeroHistoriaSiguiente(escrito))
        return aviso(
            QStringLiteral("El Número de la próxima Historia Clínica debe tener sólo dígitos, o quedar vacío."),
            numero);
    const QString proximo = base::componerNumeroHistoria(valor(prefijo), valor(numero));
    for (const db::Column &columna : conexion.columns(QStringLiteral("Pacientes")))
        if (columna.name.compare(QLatin1String("numehistoria"), Qt::CaseInsensitive) == 0
            && proximo.size() > columna.size)
            return aviso(
                QStringLiteral("El Nº de Historia Clínica '%1' es demasiado largo: entre el Prefijo y el Número puede "
                               "tener hasta %2 caracteres.")
                    .arg(proximo)
                    .arg(columna.size),
                cambios.contains(prefijo) ? prefijo : numero);
    return std::nullopt;
}

/// Only the computer that makes the copies can try the folder.
base::Control controlarCarpeta(const db::Entorno &entorno, const QString &carpeta)
{
    if (carpeta.isEmpty() || entorno.esClienteDeRed())
        return std::nullopt;
    const QString comoSeVe = QDir::toNativeSeparators(carpeta);
    if (QDir::isRelativePath(carpeta) || !QFileInfo(carpeta).isDir())
        return aviso(
            QStringLiteral("La carpeta para las copias de seguridad no existe:\n%1\nElija otra, o deje el campo vacío "
                           "para usar la carpeta 'Backup' del programa.")
                .arg(comoSeVe),
            carpetaDeCopias);
    QTemporaryFile prueba(carpeta + QStringLiteral("/.vastelo-XXXXXX"));
    if (!prueba.open())
        return aviso(
            QStringLiteral("No se puede escribir en la carpeta para las copias de seguridad:\n%1").arg(comoSeVe),
            carpetaDeCopias);
    return std::nullopt;
}

base::Control controlarValores(db::Entorno &entorno, const QVariantMap &cambios)
{
    for (auto it = cambios.begin(); it != cambios.end(); ++it) {
        const Ajuste *ajuste = buscarAjuste(it.key());
        Q_ASSERT_X(ajuste, "guardarConfiguracion", qPrintable(it.key()));
        if (ajuste->tipo == Ajuste::Tipo::Entero
            && (it->isNull() || it->toInt() < ajuste->minimo || it->toInt() > ajuste->maximo))
            return aviso(
                QStringLiteral("Ingrese en '%1' un número entre %2 y %3.")
                    .arg(ajuste->rotulo())
                    .arg(ajuste->minimo)
                    .arg(ajuste->maximo),
                it.key());
        const auto esta = [&](const Ajuste::Opcion &opcion) { return opcion.valor == it->toInt(); };
        if (ajuste->tipo == Ajuste::Tipo::Eleccion
            && (it->isNull() || std::none_of(ajuste->opciones.cbegin(), ajuste->opciones.cend(), esta)))
            return aviso(QStringLiteral("Elija una de las opciones de '%1'.").arg(ajuste->rotulo()), it.key());
    }
    if (const base::Control rechazo = controlarNumeracion(entorno.conexion(), cambios))
        return rechazo;
    return controlarCarpeta(entorno, cambios.value(carpetaDeCopias).toString().trimmed());
}

base::Control guardarFondo(db::Entorno &entorno, const QString &archivo)
{
    const QString carpeta = entorno.carpetaPrograma();
    if (archivo.isEmpty() ? !base::quitarImagen(carpeta, fondo) : !base::guardarImagen(carpeta, fondo, archivo))
        return aviso(
            QStringLiteral("No se pudo guardar la imagen del fondo en la carpeta 'Imagenes' del programa."), fondo);
    // The main window looks at the first row; everything else is kept in the last.
    entorno.conexion().execute(QStringLiteral("UPDATE [Config] SET fondoaplicacion = ?"), {archivo.isEmpty() ? 0 : -1});
    return std::nullopt;
}

void guardarDelEquipo(db::Entorno &entorno, const QVariantMap &cambios)
{
    const db::AjustesEquipo antes{entorno.segundosAgenda(), entorno.segundosMensajes(), entorno.modoTurno()};
    const db::AjustesEquipo ahora{
        cambios.value(equipo::segundosAgenda, antes.segundosAgenda).toInt(),
        cambios.value(equipo::segundosMensajes, antes.segundosMensajes).toInt(),
        cambios.value(equipo::modoTurno, antes.modoTurno).toInt() == 1};
    if (ahora != antes)
        entorno.setAjustesEquipo(ahora);
}

} // namespace

base::Control controlarApertura(db::Entorno &entorno, int administrador)
{
    if (const base::Control rechazo = db::controlarConfiguracion(entorno, administrador))
        return rechazo;
    if (administrador == 0 && users::puerta::seOfrece(entorno.conexion()))
        return base::Rechazo{
            base::titulo::atencion,
            QStringLiteral("A esta ventana se ingresa con la Clave de Acceso de un Administrador del sistema.")};
    return std::nullopt;
}

QVariantMap leerConfiguracion(db::Entorno &entorno)
{
    const db::Rows filas = entorno.conexion().query(QStringLiteral("SELECT * FROM [Config]"));
    const int ultima = filas->rowCount() - 1;
    QVariantMap valores;
    for (const GrupoAjustes &grupo : gruposDeAjustes())
        for (const SeccionAjustes &seccion : grupo.secciones)
            for (const Ajuste &ajuste : seccion.ajustes) {
                const int c = filas->column(ajuste.columna);
                valores.insert(
                    ajuste.columna, comoSeMuestra(ajuste, ultima < 0 || c < 0 ? QVariant() : filas->value(ultima, c)));
            }
    valores[fondo] = db::fondoAplicacion(entorno);
    valores[equipo::segundosAgenda] = entorno.segundosAgenda();
    valores[equipo::segundosMensajes] = entorno.segundosMensajes();
    valores[equipo::modoTurno] = int(entorno.modoTurno());
    return valores;
}

base::Control guardarConfiguracion(db::Entorno &entorno, int administrador, const QVariantMap &cambios)
{
    if (const base::Control rechazo = db::controlarConfiguracion(entorno, administrador))
        return rechazo;
    if (const base::Control rechazo = controlarValores(entorno, cambios))
        return rechazo;

    QVariantMap columnas;
    QStringList nombres;
    for (const GrupoAjustes &grupo : gruposDeAjustes())
        for (const SeccionAjustes &seccion : grupo.secciones)
            for (const Ajuste &ajuste : seccion.ajustes) {
                const auto cambio = cambios.constFind(ajuste.columna);
                if (cambio == cambios.constEnd())
                    continue;
                nombres << nombreCompleto(ajuste);
                if (!ajuste.deEquipo)
                    columnas.insert(ajuste.columna, comoSeGuarda(ajuste, *cambio));
            }
    if (nombres.isEmpty())
        return std::nullopt;

    db::Transaction transaccion(entorno.conexion());
    if (!columnas.isEmpty())
        db::Config(entorno.conexion()).guardar(columnas);
    if (cambios.contains(fondo))
        if (const base::Control rechazo = guardarFondo(entorno, cambios.value(fondo).toString()))
            return rechazo;
    db::registrarHistorial(
        entorno,
        ventana,
        QStringLiteral("Se presionó el botón Guardar. Se cambió: %1.").arg(nombres.join(QStringLiteral("; "))));
    guardarDelEquipo(entorno, cambios);
    transaccion.commit();
    return std::nullopt;
}

ResumenHistorial resumenHistorial(db::Connection &conexion)
{
    const db::Rows filas = conexion.query(QStringLiteral("SELECT COUNT(*), MIN(fecha) FROM [Historial]"));
    return {filas->integer(0, 0), filas->dateTime(0, 1)};
}

base::Resultado<std::optional<int>> eliminarHistorialHasta(db::Entorno &entorno, int administrador, QDate hasta)
{
    if (const base::Control rechazo = db::controlarConfiguracion(entorno, administrador))
        return *rechazo;
    if (!hasta.isValid())
        return aviso(
            QStringLiteral("Debe ingresar la fecha hasta la que desea eliminar el historial."),
            QStringLiteral("hastahistorial"));
    if (hasta > entorno.clock().today())
        return aviso(
            QStringLiteral("La fecha hasta la que desea eliminar el historial no puede ser posterior a hoy."),
            QStringLiteral("hastahistorial"));
    if (!entorno.mensajes().pregunta(
            base::titulo::confirmacion,
            QStringLiteral("¿Seguro que desea eliminar los registros del historial hasta el %1?")
                .arg(hasta.toString(QStringLiteral("dd/MM/yyyy"))),
            false))
        return std::optional<int>();
    return std::optional(db::eliminarHistorial(entorno, hasta));
}

QVector<UsuarioListado> listarUsuarios(db::Connection &conexion)
{
    const db::Rows filas = conexion.query(QStringLiteral(
        "SELECT id,NomDoc,tipo,administrador,claveusuario FROM [Lista Doctores] ORDER BY prioridad DESC,NomDoc"));
    QVector<UsuarioListado> usuarios;
    for (int f = 0; f < filas->rowCount(); ++f)
        usuarios.append(
            {int(filas->integer(f, 0)),
             filas->text(f, 1),
             filas->integer(f, 2) == 0,
             filas->flag(f, 3),
             !filas->text(f, 4).trimmed().isEmpty()});
    return usuarios;
}

} // namespace maintenance
