#include "maintenance/forms/configuracion.h"

#include "base/Clock.h"
#include "base/Fechas.h"
#include "base/Mensajes.h"
#include "base/NumeroHistoria.h"
#include "db/Connection.h"
#include "db/Entorno.h"
#include "maintenance/Configuracion.h"
#include "maintenance/forms/CampoImagen.h"
#include "ui/CampoFecha.h"
#include "ui/Campos.h"
#include "ui/Grilla.h"
#include "ui/ListaCombo.h"
#include "users/Puerta.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QPushButton>
#include <QShortcut>
#include <QStackedWidget>

namespace maintenance {

namespace {

const QString medicos = QStringLiteral("medicos");
const QString encabezados = QStringLiteral("encabezados");

void destacar(QWidget *rotulo, bool si)
{
    if (!rotulo)
        return;
    QFont letra = rotulo->font();
    letra.setBold(si);
    letra.setUnderline(si);
    rotulo->setFont(letra);
}

} // namespace

configuracion::configuracion(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("configuracion"), tr("Configuración del Sistema"))
    , m_campos(new ui::Campos(this))
{
    construir();
    conectar();
    abrirmedicos->setEnabled(ventanas.existe(medicos));
    nombraradministrador->setEnabled(ventanas.existe(medicos));
    abrirencabezados->setEnabled(ventanas.existe(encabezados));
    hastahistorial->setHoy(entorno.clock().today());
    grupos->setCurrentRow(0);
}

void configuracion::conectar()
{
    connect(grupos, &QListWidget::currentRowChanged, this, [this](int fila) {
        paginas->setCurrentIndex(qMax(0, fila));
        intentar([this] { cargarPagina(); });
    });
    connect(buscar, &QLineEdit::textChanged, this, &configuracion::filtrar);
    buscar->installEventFilter(this);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this, [this] {
        buscar->setFocus(Qt::ShortcutFocusReason);
        buscar->selectAll();
    });
    connect(m_campos, &ui::Campos::cambiado, this, [this] {
        mostrarVistaPrevia();
        mostrarEstado();
    });
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *ahora) {
        // Over the other windows, what was said of the last field stays.
        if (!ahora || !isAncestorOf(ahora))
            return;
        QString texto;
        for (QWidget *w = ahora; w != this && texto.isEmpty(); w = w->parentWidget())
            texto = w->toolTip();
        m_explicacion->setText(texto);
    });
    alPulsar(m_fondo->elegir, [this] { elegirFondo(); });
    alPulsar(elegircarpeta, [this] { elegirCarpetaDeCopias(); });
    alPulsar(abrirencabezados, [this] {
        this->ventanas().abrir(encabezados, {{{QStringLiteral("administrador"), m_administrador}}, {}}, this);
    });
    alPulsar(eliminarhistorial, [this] { eliminarDelHistorial(); });
    alPulsar(abrirmedicos, [this] { abrirUsuarios(); });
    connect(lisusuarios, &ui::Grilla::activada, abrirmedicos, &QPushButton::click);
    alPulsar(nombraradministrador, [this] {
        irA(QStringLiteral("usuarios"));
        abrirUsuarios();
    });
    alPulsar(guardar, [this] { save(); });
    connect(cancelar, &QPushButton::clicked, this, &QWidget::close);
}

bool configuracion::preparar(const ui::Pedido &pedido)
{
    const int administrador = pedido.datos.value(QStringLiteral("administrador")).toInt();
    if (!aceptado(controlarApertura(entorno(), administrador)))
        return false;
    m_administrador = administrador;
    if (!m_cargada || !hayCambios())
        cargar();
    cargarUsuarios();
    cargarPagina();
    if (!std::exchange(m_cargada, true))
        grupos->setFocus();
    return true;
}

void configuracion::refrescar()
{
    if (!hayCambios())
        cargar();
    cargarUsuarios();
    cargarPagina();
}

bool configuracion::hayCambios() const { return m_campos->hayCambios(); }

QString configuracion::ayuda() const
{
    return tr("Elija un grupo a la izquierda, o escriba en 'Buscar una opción' una palabra de lo que desea cambiar. "
              "Debajo de las opciones se explica qué cambia la que tiene el cursor.\n\n"
              "Los cambios valen cuando se presiona 'Guardar', para todo el consultorio; sólo las opciones de 'Sólo en "
              "esta computadora' son de cada una. Se guarda únicamente lo que cambió: lo que otra terminal haya "
              "cambiado mientras tanto queda como está.");
}

void configuracion::irA(const QString &grupo)
{
    for (int i = 0; i < paginas->count(); ++i)
        if (paginas->widget(i)->objectName() == grupo) {
            grupos->item(i)->setHidden(false);
            grupos->setCurrentRow(i);
        }
}

void configuracion::cargar()
{
    const QVariantMap valores = leerConfiguracion(entorno());
    completarOpciones(valores);
    m_campos->mostrar(valores);
    m_campos->limitar(conexion().columns(QStringLiteral("Config")));
    mostrarVistaPrevia();
    mostrarEstado();
}

void configuracion::completarOpciones(const QVariantMap &valores)
{
    for (const ui::Campo &campo : m_campos->campos()) {
        auto *lista = qobject_cast<QComboBox *>(m_campos->control(campo.columna));
        const QVariant valor = valores.value(campo.columna);
        if (lista && !valor.isNull() && lista->findData(valor.toInt()) < 0)
            lista->addItem(tr("Otro valor (%1)").arg(valor.toInt()), valor.toInt());
    }
}

void configuracion::cargarUsuarios()
{
    const QVector<UsuarioListado> usuarios = listarUsuarios(conexion());
    const auto siNo = [](bool valor) { return valor ? QStringLiteral("Sí") : QStringLiteral("No"); };
    std::vector<QStringList> filas;
    std::vector<qint64> claves;
    for (const UsuarioListado &usuario : usuarios) {
        filas.push_back(
            {usuario.nombre,
             usuario.medico ? tr("Médico") : tr("Usuario"),
             siNo(usuario.administrador),
             siNo(usuario.conClave)});
        claves.push_back(usuario.id);
    }
    lisusuarios->mostrar(std::move(filas), std::move(claves));
    avisoadministrador->setVisible(!users::puerta::seOfrece(conexion()));
}

void configuracion::cargarPagina()
{
    // Counting a million entries is done for who looks at them only.
    if (paginas->currentWidget()->objectName() != QLatin1String("historial"))
        return;
    const ResumenHistorial resumen = resumenHistorial(conexion());
    resumenhistorial->setText(
        resumen.cantidad == 0
            ? tr("El historial está vacío.")
            : tr("El historial tiene %1 registros, desde el %2. Se consulta con el botón 'Accesos' del menú.")
                  .arg(QLocale().toString(resumen.cantidad), resumen.desde.toString(QStringLiteral("dd/MM/yyyy"))));
}

void configuracion::mostrarVistaPrevia()
{
    vistaprevia->setText(
        tr("Vista Previa: ")
        + base::componerNumeroHistoria(
            m_campos->valor(QStringLiteral("prefijohc")).toString(),
            m_campos->valor(QStringLiteral("numerohc")).toString()));
}

void configuracion::mostrarEstado(const QString &texto)
{
    guardar->setEnabled(hayCambios());
    m_estado->setText(texto.isEmpty() && hayCambios() ? tr("Hay cambios sin guardar.") : texto);
}

void configuracion::filtrar(const QString &texto)
{
    const QString buscado = ui::plegado(texto.simplified());
    std::vector<bool> hallados(size_t(paginas->count()), buscado.isEmpty());
    for (const Buscable &uno : m_buscables) {
        const bool esta = !buscado.isEmpty() && uno.texto.contains(buscado);
        destacar(uno.rotulo, esta);
        if (esta)
            hallados[size_t(uno.pagina)] = true;
    }
    int primera = -1;
    for (int i = 0; i < grupos->count(); ++i) {
        grupos->item(i)->setHidden(!hallados[size_t(i)]);
        if (primera < 0 && hallados[size_t(i)])
            primera = i;
    }
    if (primera >= 0 && grupos->currentItem() && grupos->currentItem()->isHidden())
        grupos->setCurrentRow(primera);
    m_explicacion->setText(primera < 0 ? tr("Ninguna opción tiene '%1'.").arg(texto.simplified()) : QString());
}

bool configuracion::eventFilter(QObject *objeto, QEvent *event)
{
    if (objeto == buscar && event->type() == QEvent::KeyPress && alBuscar(static_cast<QKeyEvent *>(event)->key()))
        return true;
    return Ventana::eventFilter(objeto, event);
}

bool configuracion::alBuscar(int tecla)
{
    if (tecla == Qt::Key_Down) {
        grupos->setFocus(Qt::OtherFocusReason);
        return true;
    }
    if (tecla == Qt::Key_Escape && !buscar->text().isEmpty()) {
        buscar->clear();
        return true;
    }
    if (tecla != Qt::Key_Return && tecla != Qt::Key_Enter)
        return false;
    const QString buscado = ui::plegado(buscar->text().simplified());
    for (const Buscable &uno : m_buscables)
        if (uno.campo && uno.pagina == paginas->currentIndex() && uno.texto.contains(buscado)) {
            uno.campo->setFocus(Qt::OtherFocusReason);
            break;
        }
    return true;
}

bool configuracion::aceptadoEnSuPagina(const base::Control &control)
{
    if (control)
        for (int i = 0; i < paginas->count(); ++i)
            if (!control->campo.isEmpty() && paginas->widget(i)->findChild<QWidget *>(control->campo))
                irA(paginas->widget(i)->objectName());
    return aceptado(control);
}

void configuracion::save()
{
    if (!aceptadoEnSuPagina(m_campos->controlar())
        || !aceptadoEnSuPagina(guardarConfiguracion(entorno(), m_administrador, m_campos->cambios())))
        return;
    m_campos->darPorGuardado();
    cargar();
    // Also this window: it shows what the other stations changed meanwhile.
    ventanas().refrescar();
    mostrarEstado(tr("La configuración se guardó."));
}

void configuracion::elegirFondo()
{
    const auto archivo = entorno().mensajes().elegirArchivo(
        tr("Imagen para el fondo de la ventana principal"), QDir::homePath(), CampoImagen::filtro());
    if (!archivo)
        return;
    if (CampoImagen::esImagen(*archivo))
        m_fondo->setArchivo(*archivo);
    else
        entorno().mensajes().fallar(
            base::titulo::aviso,
            tr("El archivo elegido no es una imagen que se pueda mostrar:\n%1")
                .arg(QDir::toNativeSeparators(*archivo)));
}

void configuracion::elegirCarpetaDeCopias()
{
    const QString columna = QStringLiteral("backupcarpeta");
    const auto carpeta = entorno().mensajes().elegirCarpeta(
        tr("Carpeta para las copias de seguridad automáticas"), m_campos->valor(columna).toString());
    if (carpeta)
        m_campos->setValor(columna, QDir::toNativeSeparators(*carpeta));
}

void configuracion::eliminarDelHistorial()
{
    if (!hastahistorial->esValida()) {
        base::Rechazo fecha = base::fechaInvalida(tr("Fecha hasta la que se elimina el historial"));
        fecha.campo = hastahistorial->objectName();
        aceptado(fecha);
        return;
    }
    const auto eliminados = eliminarHistorialHasta(entorno(), m_administrador, hastahistorial->fecha());
    if (!eliminados) {
        aceptado(eliminados.rechazo());
        return;
    }
    if (!*eliminados)
        return;
    cargarPagina();
    ventanas().refrescar({QStringLiteral("historial")});
    entorno().mensajes().informar(
        base::titulo::atencion, tr("Se eliminaron %1 registros del historial.").arg(QLocale().toString(**eliminados)));
}

void configuracion::abrirUsuarios()
{
    ui::Ventana *abierta = ventanas().abrir(
        medicos,
        {{{QStringLiteral("administrador"), m_administrador}, {QStringLiteral("id"), lisusuarios->claveActual()}}, {}},
        this);
    if (abierta)
        connect(abierta, &Ventana::cerrada, this, &Ventana::actualizar, Qt::UniqueConnection);
}

} // namespace maintenance
