#include "maintenance/forms/historial.h"

#include "base/Clock.h"
#include "base/Fechas.h"
#include "base/Mensajes.h"
#include "db/Entorno.h"
#include "maintenance/IntegridadHistorial.h"
#include "ui/CampoFecha.h"
#include "ui/Grilla.h"
#include "ui/Iconos.h"
#include "ui/ListaCombo.h"

#include <QComboBox>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QStyle>
#include <QTimer>

namespace maintenance {

namespace {

using Busqueda = BusquedaHistorial;
using Alcance = db::VerificadorHistorial::Alcance;

constexpr int filasPorPedido = 200;
constexpr int pausaAlEscribir = 300; // ms
/// What is done at a stretch: less than the time of a picture on the screen.
constexpr qint64 turno = 12; // ms
constexpr int todosLosUsuarios = -1;

QString celda(const db::ResultSet &filas, int fila, int columna, const UsuariosHistorial &usuarios)
{
    switch (columna) {
    case 0: return base::fechaTexto(filas.dateTime(fila, Busqueda::Fecha).date());
    case 1: return filas.dateTime(fila, Busqueda::Fecha).toString(QStringLiteral("HH:mm"));
    case 2: return filas.text(fila, Busqueda::Equipo);
    case 3: return usuarios.nombre(int(filas.integer(fila, Busqueda::Usuario)));
    case 4: return filas.text(fila, Busqueda::Ventana);
    default: return filas.text(fila, Busqueda::Accion);
    }
}

} // namespace

historial::historial(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("historial"), tr("Historial de Accesos"))
    , m_pausa(new QTimer(this))
    , m_tarea(new QTimer(this))
{
    construir();
    m_pausa->setSingleShot(true);
    m_pausa->setInterval(pausaAlEscribir);
    m_tarea->setSingleShot(true);
    m_tarea->setInterval(0);
    conectar();
}

historial::~historial() = default;

void historial::conectar()
{
    ui::ModeloGrilla &modelo = lista->modelo();
    modelo.setTexto(
        [this](const db::ResultSet &filas, int fila, int columna) { return celda(filas, fila, columna, *m_usuarios); });
    modelo.setMas(
        [this] { return m_busqueda && !m_busqueda->terminada() && !buscando() && !m_detenida; },
        [this] { intentar([this] { pedirMas(); }); });
    connect(lista->selectionModel(), &QItemSelectionModel::selectionChanged, this, &historial::mostrarDetalle);
    connect(hallazgos, &ui::Grilla::activada, this, [this](int fila) { intentar([=, this] { irAlHallazgo(fila); }); });

    const auto filtrarYa = [this] { intentar([this] { filtrar(); }); };
    connect(m_pausa, &QTimer::timeout, this, filtrarYa);
    connect(m_tarea, &QTimer::timeout, this, &historial::trabajar);
    connect(texto, &QLineEdit::textChanged, m_pausa, qOverload<>(&QTimer::start));
    for (ui::CampoFecha *fecha : {fechadesde, fechahasta}) {
        connect(fecha, &ui::CampoFecha::fechaCambiada, m_pausa, qOverload<>(&QTimer::start));
        connect(fecha, &QLineEdit::editingFinished, this, filtrarYa);
    }
    for (QComboBox *combo : {usuario, ventana}) {
        combo->setEditable(true);
        connect(combo, &QComboBox::activated, this, filtrarYa);
    }
    alPulsar(quitarfiltros, [this] { limpiarFiltros(); });
    alPulsar(detener, [this] {
        m_detenida = !m_detenida;
        if (m_detenida)
            m_faltan = 0;
        else
            pedirMas();
        mostrarCantidad();
    });
    alPulsar(verificar, [this] {
        if (m_verificador && m_pedida) {
            m_verificador.reset();
            mostrarInforme();
        } else {
            m_pedida = true;
            empezarVerificacion(Alcance::Todo);
        }
    });
    alPulsar(exportarlista, [this] { elegirDestino(); });
    connect(cerrar, &QPushButton::clicked, this, &QWidget::close);
}

bool historial::preparar(const ui::Pedido &)
{
    if (!aceptado(controlarHistorial(entorno())))
        return false;
    cargarListas();
    fechadesde->setHoy(entorno().clock().today());
    fechahasta->setHoy(entorno().clock().today());
    buscar();
    lista->elegirFila(0);
    lista->setFocus();
    m_pedida = false;
    empezarVerificacion(Alcance::Reciente);
    return true;
}

void historial::refrescar()
{
    const int fila = lista->filaActual();
    cargarListas();
    buscar();
    if (fila >= 0)
        lista->elegirFila(0);
}

QString historial::ayuda() const
{
    return tr(
        "Muestra lo que hizo cada usuario, lo último primero. Los filtros se combinan: fechas, usuario, ventana y "
        "una parte del texto de la acción.\n\n"
        "Cada acción queda sellada junto con la anterior. Si alguien modifica, quita o agrega acciones desde otro "
        "programa, la verificación lo muestra: al abrir la ventana se revisa lo reciente; el botón Verificar "
        "revisa todo y deja constancia en el mismo historial.\n\n"
        "F5 vuelve a leer. Esc detiene la búsqueda, quita los filtros y después cierra la ventana.");
}

void historial::cargarListas()
{
    m_base = &conexion();
    m_usuarios.emplace(conexion());
    std::vector<std::pair<QString, int>> usuarios{{tr("<Todos>"), todosLosUsuarios}};
    usuarios.insert(usuarios.end(), m_usuarios->lista().begin(), m_usuarios->lista().end());
    std::vector<std::pair<QString, int>> entradas{{tr("<Todas>"), 0}};
    const QString elegida = m_ventanas.value(ui::idElegido(*ventana, 0) - 1);
    m_ventanas = ventanasHistorial(conexion());
    for (int i = 0; i < m_ventanas.size(); ++i)
        entradas.emplace_back(m_ventanas[i], i + 1);
    const int usuarioElegido = ui::idElegido(*usuario, todosLosUsuarios);
    ui::ponerEntradas(*usuario, usuarios);
    ui::ponerEntradas(*ventana, entradas);
    const QSignalBlocker callaUsuario(usuario), callaVentana(ventana);
    ui::elegirId(*usuario, usuarioElegido);
    ui::elegirId(*ventana, int(m_ventanas.indexOf(elegida)) + 1);
}

std::optional<FiltroHistorial> historial::filtroPedido()
{
    for (const ui::CampoFecha *fecha : {fechadesde, fechahasta})
        if (!fecha->isNull() && !fecha->esValida())
            return std::nullopt;
    // What was typed and is no entry filters nothing: the list then says so.
    for (QComboBox *combo : {usuario, ventana})
        if (ui::idElegido(*combo, -2) == -2 && !combo->lineEdit()->hasFocus())
            combo->setCurrentIndex(0);
    FiltroHistorial filtro;
    filtro.desde = fechadesde->fecha();
    filtro.hasta = fechahasta->fecha();
    if (const int id = ui::idElegido(*usuario, todosLosUsuarios); id != todosLosUsuarios)
        filtro.usuario = id;
    filtro.ventana = m_ventanas.value(ui::idElegido(*ventana, 0) - 1);
    filtro.texto = texto->text().trimmed();
    return filtro;
}

void historial::filtrar()
{
    m_pausa->stop();
    const std::optional<FiltroHistorial> filtro = filtroPedido();
    if (filtro && *filtro != m_filtro)
        buscar();
}

void historial::limpiarFiltros()
{
    {
        const QSignalBlocker calla1(fechadesde), calla2(fechahasta), calla3(usuario), calla4(ventana), calla5(texto);
        fechadesde->setFecha({});
        fechahasta->setFecha({});
        usuario->setCurrentIndex(0);
        ventana->setCurrentIndex(0);
        texto->clear();
    }
    buscar();
    lista->setFocus();
}

void historial::buscar()
{
    m_pausa->stop();
    m_filtro = filtroPedido().value_or(m_filtro);
    m_base = &conexion();
    m_busqueda.emplace(conexion(), m_filtro, filasPorPedido);
    m_detenida = false;
    lista->mostrar(db::Rows());
    lista->scrollToTop();
    pedirMas();
    if (m_busqueda->terminada() && lista->modelo().rowCount() == 1)
        lista->elegirFila(0);
    mostrarDetalle();
}

bool historial::buscando() const { return m_busqueda && m_faltan > 0; }

void historial::pedirMas()
{
    if (m_base != &conexion()) {
        buscar();
        return;
    }
    m_faltan = filasPorPedido;
    // The first rows are there when the window is painted next.
    QElapsedTimer reloj;
    reloj.start();
    while (buscando() && reloj.elapsed() < turno)
        seguirBuscando();
    mostrarCantidad();
    if (ocupada())
        m_tarea->start();
}

void historial::seguirBuscando()
{
    const Busqueda::Tanda tanda = m_busqueda->seguir();
    if (tanda.cantidad > 0)
        lista->modelo().agregarRows(tanda.filas, tanda.cantidad);
    m_faltan = m_busqueda->terminada() ? 0 : m_faltan - tanda.cantidad;
}

void historial::exportar(const ui::Grilla &grilla)
{
    if (&grilla == lista)
        intentar([this] { elegirDestino(); });
    else
        Ventana::exportar(grilla);
}

void historial::elegirDestino()
{
    if (m_exportacion) {
        m_exportacion.reset();
        mostrarAvance();
        mostrarCantidad();
        return;
    }
    const auto destino = entorno().mensajes().elegirDestino(
        tr("Exportar"), windowTitle() + QStringLiteral(".csv"), tr("Planilla (*.csv)"));
    if (!destino)
        return;
    m_exportacion = std::make_unique<ExportacionHistorial>(conexion(), m_filtro, *destino);
    mostrarAvance();
    m_tarea->start();
}

void historial::seguirExportando()
{
    if (m_exportacion->seguir())
        return;
    const qint64 filas = m_exportacion->filas();
    m_exportacion.reset();
    mostrarAvance();
    mostrarCantidad();
    entorno().mensajes().informar(
        tr("Información"),
        filas == 1 ? tr("Se exportó 1 acción.") : tr("Se exportaron %1 acciones.").arg(QLocale().toString(filas)));
}

void historial::empezarVerificacion(Alcance alcance)
{
    m_base = &conexion();
    m_verificador = std::make_unique<db::VerificadorHistorial>(entorno(), alcance);
    mostrarAvance();
    m_tarea->start();
}

void historial::seguirVerificando()
{
    if (m_verificador->seguir())
        return;
    m_informe = m_verificador->informe();
    m_verificador.reset();
    mostrarInforme();
    if (std::exchange(m_pedida, false))
        registrarVerificacion(entorno(), m_informe);
    // Sealing the rows of before has told who and what they were.
    cargarListas();
}

void historial::trabajar()
{
    const bool bien = intentar([this] {
        // The connection may have been opened again meanwhile, on another file perhaps.
        if (m_base != &conexion()) {
            dejarTodo();
            return;
        }
        QElapsedTimer reloj;
        reloj.start();
        do {
            if (buscando())
                seguirBuscando();
            else if (m_exportacion)
                seguirExportando();
            else if (m_verificador)
                seguirVerificando();
        } while (ocupada() && reloj.elapsed() < turno);
    });
    if (!bien)
        dejarTodo();
    mostrarAvance();
    mostrarCantidad();
    if (ocupada())
        m_tarea->start();
}

void historial::dejarTodo()
{
    m_faltan = 0;
    m_detenida = true;
    m_exportacion.reset();
    m_verificador.reset();
    m_pedida = false;
}

bool historial::ocupada() const { return buscando() || m_exportacion || m_verificador; }

void historial::irAlHallazgo(int fila)
{
    const int cual = int(hallazgos->modelo().clave(fila)) - 1;
    const QDateTime momento = m_informe.hallazgos.at(size_t(cual)).hasta;
    if (!momento.isValid())
        return;
    limpiarFiltros();
    fechadesde->setFecha(momento.date());
    fechahasta->setFecha(momento.date());
    filtrar();
}

void historial::keyPressEvent(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const QWidget *campo = focusWidget();
    const bool enFiltro = campo == fechadesde || campo == fechahasta || campo == texto;
    if (event->key() == Qt::Key_Escape && m_exportacion) {
        exportarlista->click();
    } else if (event->key() == Qt::Key_Escape && buscando()) {
        detener->click();
    } else if (event->key() == Qt::Key_Escape && m_verificador && m_pedida) {
        verificar->click();
    } else if (event->key() == Qt::Key_Escape && filtroPedido() != std::optional(FiltroHistorial())) {
        intentar([this] { limpiarFiltros(); });
    } else if (enter && enFiltro) {
        intentar([this] { filtrar(); });
        if (lista->modelo().rowCount() > 0) {
            lista->elegirFila(0);
            lista->setFocus();
        }
    } else {
        Ventana::keyPressEvent(event);
    }
}

void historial::mostrarDetalle()
{
    const int fila = lista->filaActual();
    QString todo;
    if (fila >= 0) {
        QStringList partes;
        for (int columna = 0; columna < lista->modelo().columnCount() - 1; ++columna)
            partes << lista->modelo().textoCelda(fila, columna);
        partes.removeAll(QString());
        todo = partes.join(QStringLiteral("  ·  ")) + u'\n'
            + lista->modelo().textoCelda(fila, lista->modelo().columnCount() - 1);
    }
    detalle->setPlainText(todo);
}

void historial::mostrarCantidad()
{
    const int n = lista->modelo().rowCount();
    const QString acciones = n == 1 ? tr("1 acción") : tr("%1 acciones").arg(QLocale().toString(n));
    const QString hasta = m_busqueda ? base::fechaTexto(m_busqueda->llegoA().date()) : QString();
    if (m_exportacion)
        cantidad->setText(tr("Exportando %1 acciones…").arg(QLocale().toString(m_exportacion->filas())));
    else if (buscando())
        cantidad->setText(tr("Buscando… %1 hasta el %2").arg(acciones, hasta));
    else if (m_detenida)
        cantidad->setText(tr("%1 hasta el %2; falta buscar lo anterior").arg(acciones, hasta));
    else if (m_busqueda && !m_busqueda->terminada())
        cantidad->setText(tr("Últimas %1; más abajo siguen las anteriores").arg(acciones));
    else
        cantidad->setText(n == 0 ? tr("Ninguna acción") : acciones);
    detener->setVisible(!m_exportacion && (buscando() || m_detenida));
    detener->setText(m_detenida ? tr("Seguir &buscando") : tr("&Detener"));
    quitarfiltros->setEnabled(m_filtro != FiltroHistorial());
}

void historial::mostrarInforme()
{
    const bool bien = m_informe.integro(), mal = !m_informe.hallazgos.empty();
    estado->setText(resumenIntegridad(m_informe));
    icono->setPixmap(ui::icono(
                         bien      ? QStringLiteral("dialog-ok")
                             : mal ? QStringLiteral("dialog-error")
                                   : QStringLiteral("dialog-information"))
                         .pixmap(style()->pixelMetric(QStyle::PM_SmallIconSize)));
    std::vector<QStringList> filas;
    std::vector<qint64> claves;
    for (const db::HallazgoHistorial &hallazgo : m_informe.hallazgos) {
        filas.push_back({momentoHallazgo(hallazgo), textoHallazgo(hallazgo)});
        claves.push_back(qint64(claves.size()) + 1);
    }
    hallazgos->mostrar(std::move(filas), std::move(claves));
    diferencias->setVisible(mal);
    mostrarAvance();
}

void historial::mostrarAvance()
{
    const bool mostrar = m_exportacion || (m_verificador && m_pedida);
    avance->setVisible(mostrar);
    if (mostrar)
        avance->setValue(m_exportacion ? m_exportacion->porciento() : m_verificador->porciento());
    if (m_verificador) {
        icono->clear();
        estado->setText(tr("%1… %2 %").arg(m_verificador->etapa()).arg(m_verificador->porciento()));
    }
    verificar->setText(m_verificador && m_pedida ? tr("Dejar de &verificar") : tr("&Verificar"));
    verificar->setEnabled(!m_exportacion);
    exportarlista->setText(m_exportacion ? tr("Cancelar la &exportación") : tr("&Exportar..."));
}

} // namespace maintenance
