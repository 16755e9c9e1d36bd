#include "maintenance/forms/VentanaLista.h"

#include "db/Entorno.h"
#include "maintenance/Reemplazo.h"
#include "maintenance/forms/FormularioEntrada.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"
#include "ui/Grilla.h"

#include <QGroupBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace maintenance {

namespace {

/// A field as the grid shows it. The ages stand together under the first one's title.
QString textoCelda(const Lista &lista, const db::ResultSet &rows, int row, int i)
{
    const CampoLista &campo = lista.campos[i];
    const QString texto = textoCampo(campo, rows, row, i + 2);
    for (const auto &[codigo, nombre] : campo.opciones)
        if (QString::number(codigo) == texto)
            return nombre;
    if (campo.clase != CampoLista::Clase::Meses)
        return texto;
    QStringList edades;
    for (int j = i; j < lista.campos.size(); ++j)
        edades << textoCampo(lista.campos[j], rows, row, j + 2);
    edades.removeAll(QString());
    return edades.join(QStringLiteral(", "));
}

/// Short enough for a title, its "&" no mnemonic.
QString paraTitulo(QString texto)
{
    constexpr int letras = 50;
    if (texto.size() > letras)
        texto = texto.left(letras).trimmed() + u'…';
    return texto.replace(u'&', QStringLiteral("&&"));
}

} // namespace

VentanaLista::VentanaLista(db::Entorno &entorno, ui::Ventanas &ventanas, const QString &nombre, const QString &titulo)
    : Ventana(entorno, ventanas, nombre, titulo)
{
    construir();
    alPulsar(nuevo, [this] {
        if (descartar())
            proponer({});
    });
    alPulsar(guardar, [this] { save(); });
    alPulsar(eliminar, [this] { borrar(); });
    alPulsar(reemplazar, [this] { abrirReemplazo(); });
    alPulsar(usos, [this] { informarUsos(); });
    alPulsar(exportacion, [this] { exportar(*entradas); });
    connect(cerrar, &QPushButton::clicked, this, &QWidget::close);
    connect(filtro, &QLineEdit::textChanged, this, [this] { intentar([this] { cargar(); }); });
    setEnter(guardar, {formulario->prioridad});
}

void VentanaLista::construir()
{
    titulolista = new QLabel(this);
    titulolista->setObjectName(QStringLiteral("titulolista"));
    titulolista->setTextFormat(Qt::PlainText);
    QFont destacada = titulolista->font();
    destacada.setBold(true);
    titulolista->setFont(destacada);

    filtro = new QLineEdit(this);
    filtro->setObjectName(QStringLiteral("filtro"));
    filtro->setClearButtonEnabled(true);
    filtro->installEventFilter(this);
    auto *rotulo = new QLabel(tr("Fi&ltrar:"), this);
    rotulo->setBuddy(filtro);
    cantidad = new QLabel(this);
    cantidad->setObjectName(QStringLiteral("cantidad"));
    auto *filaFiltro = new QHBoxLayout;
    filaFiltro->addWidget(rotulo);
    filaFiltro->addWidget(filtro, 1);
    filaFiltro->addWidget(cantidad);

    nuevo = ui::boton(this, QStringLiteral("nuevo"), tr("&Nuevo"), QStringLiteral("list-add"));
    eliminar = ui::boton(this, QStringLiteral("eliminar"), tr("&Eliminar"), QStringLiteral("edit-delete"));
    reemplazar
        = ui::boton(this, QStringLiteral("reemplazar"), tr("&Reemplazar por..."), QStringLiteral("document-multiple"));
    reemplazar->setToolTip(
        tr("Pasa a otra entrada todos los registros que usan ésta, y la elimina. Sirve para unir dos repetidas."));
    usos = ui::boton(this, QStringLiteral("usos"), tr("¿Dónde se &usa?"), QStringLiteral("system-search"));
    exportacion = ui::boton(this, QStringLiteral("exportar"), tr("E&xportar"), QStringLiteral("document-export"));
    auto *filaBotones = new QHBoxLayout;
    filaBotones->addWidget(nuevo);
    filaBotones->addWidget(eliminar);
    filaBotones->addWidget(reemplazar);
    filaBotones->addWidget(usos);
    filaBotones->addStretch(1);
    filaBotones->addWidget(exportacion);

    m_grupo = new QGroupBox(this);
    formulario = new FormularioEntrada(m_grupo);
    guardar = ui::boton(m_grupo, QStringLiteral("guardar"), tr("&Guardar"), QStringLiteral("document-save"));
    auto *filaGuardar = new QHBoxLayout;
    filaGuardar->addStretch(1);
    filaGuardar->addWidget(guardar);
    auto *dentro = new QVBoxLayout(m_grupo);
    dentro->addWidget(formulario);
    dentro->addLayout(filaGuardar);

    cerrar = ui::boton(this, QStringLiteral("cerrar"), tr("&Cerrar"), QStringLiteral("window-close"));
    m_botones = new QHBoxLayout;
    m_botones->addStretch(1);
    m_botones->addWidget(cerrar);

    m_lugarGrilla = new QVBoxLayout;
    m_columna = new QVBoxLayout;
    m_columna->setSpacing(ui::espacio);
    m_columna->addWidget(titulolista);
    m_columna->addLayout(filaFiltro);
    m_columna->addLayout(m_lugarGrilla, 1);
    m_columna->addLayout(filaBotones);
    m_columna->addWidget(m_grupo);
    m_columna->addLayout(m_botones);
}

void VentanaLista::ponerGrilla()
{
    QString encabezado = QStringLiteral("|<Nombre                                        ");
    for (const CampoLista &campo : m_lista->campos)
        encabezado += u'|' + campo.encabezado;
    delete entradas;
    entradas = new ui::Grilla(QStringLiteral("entradas"), encabezado + QStringLiteral("|>Prioridad"), this);
    entradas->setSelectionMode(QAbstractItemView::SingleSelection);
    entradas->horizontalHeader()->setStretchLastSection(false);
    entradas->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_lugarGrilla->addWidget(entradas);
    setTabOrder(filtro, entradas);
    setTabOrder(entradas, nuevo);

    ui::ModeloGrilla &modelo = entradas->modelo();
    modelo.setColumnaClave(0);
    modelo.setTexto([this](const db::ResultSet &rows, int row, int column) {
        const int i = column - 1;
        return i < 0 || i >= m_lista->campos.size() ? rows.text(row, column + 1) : textoCelda(*m_lista, rows, row, i);
    });
    for (int columna = 0; columna < modelo.columnCount(); ++columna)
        modelo.setOrden(columna, columna + 1);
    // Once the click is over: the list would go on choosing the row after a question had taken it back.
    connect(
        entradas,
        &ui::Grilla::filaCambiada,
        this,
        [this] { intentar([this] { alCambiarFila(); }); },
        Qt::QueuedConnection);
    connect(entradas, &ui::Grilla::activada, this, [this] { intentar([this] { alActivar(); }); });
}

void VentanaLista::abrirLista(const Lista &lista)
{
    m_lista = &lista;
    titulolista->setText(lista.titulo);
    {
        const QSignalBlocker calla(filtro);
        filtro->clear();
    }
    ponerGrilla();
    formulario->preparar(conexion(), lista);
    cargar();
    mostrar(entradaNueva(lista));
}

void VentanaLista::cargar()
{
    const db::Rows filas = leerEntradas(conexion(), *m_lista, filtro->text());
    entradas->mostrar(filas, 1);
    const int n = filas->rowCount();
    cantidad->setText(n == 1 ? tr("1 entrada") : tr("%1 entradas").arg(QLocale().toString(n)));
}

void VentanaLista::refrescar()
{
    if (!m_lista)
        return;
    cargar();
    if (m_mostrada.id == 0 || hayCambios())
        return;
    const auto ahora = leerEntrada(conexion(), *m_lista, m_mostrada.id);
    if (!ahora || *ahora != m_mostrada)
        mostrar(ahora.value_or(entradaNueva(*m_lista)));
}

bool VentanaLista::hayCambios() const { return m_lista && formulario->leer() != m_inicial; }

bool VentanaLista::descartar()
{
    return !hayCambios()
        || entorno().mensajes().pregunta(
            base::titulo::atencion, tr("La entrada tiene cambios sin guardar. ¿Desea descartarlos?"), false);
}

void VentanaLista::alCambiarFila()
{
    // A row that a filter or another station took away leaves the form as it is.
    const qint64 id = entradas->claveActual();
    if (id == 0 || id == m_mostrada.id)
        return;
    if (descartar()) {
        mostrar(leerEntrada(conexion(), *m_lista, id).value_or(entradaNueva(*m_lista)));
        return;
    }
    entradas->elegirClave(m_mostrada.id);
}

void VentanaLista::mostrar(const Entrada &entrada)
{
    m_mostrada = entrada;
    formulario->mostrar(entrada);
    m_inicial = formulario->leer();
    const bool nueva = entrada.id == 0;
    m_grupo->setTitle(
        nueva ? tr("Nueva entrada") : tr("Modificar: %1").arg(paraTitulo(textoEntrada(*m_lista, entrada))));
    for (QPushButton *boton : {eliminar, reemplazar, usos})
        boton->setEnabled(!nueva);
    alMostrar(nueva);
}

void VentanaLista::mostrarEntrada(qint64 id)
{
    const auto entrada = leerEntrada(conexion(), *m_lista, id);
    mostrar(entrada.value_or(entradaNueva(*m_lista)));
    if (entradas->modelo().filaDe(m_mostrada.id) < 0 && !filtro->text().isEmpty()) {
        const QSignalBlocker calla(filtro);
        filtro->clear();
        cargar();
    }
    entradas->elegirClave(m_mostrada.id);
}

void VentanaLista::proponer(const QString &nombre)
{
    mostrarEntrada(0);
    Entrada propuesta = m_mostrada;
    propuesta.nombre = nombre.simplified().left(formulario->nombre->maxLength());
    formulario->mostrar(propuesta);
    m_inicial = formulario->leer();
    formulario->nombre->setFocus();
    formulario->nombre->end(false);
}

void VentanaLista::save()
{
    const bool nueva = m_mostrada.id == 0;
    const auto id = guardarEntrada(entorno(), *m_lista, formulario->leer());
    if (!id) {
        aceptado(id.rechazo());
        if (id.rechazo() == entradaEliminada()) {
            // What was typed stays, to be added again if the person wants it.
            const Entrada escrita = formulario->leer();
            mostrarEntrada(0);
            formulario->mostrar({0, escrita.nombre, escrita.prioridad, escrita.campos});
            cargar();
        }
        return;
    }
    cargar();
    mostrarEntrada(*id);
    ventanas().refrescar();
    alGuardar(nueva);
}

void VentanaLista::borrar()
{
    const int fila = entradas->filaActual();
    const auto hecha = eliminarEntrada(entorno(), *m_lista, m_mostrada.id);
    if (!hecha) {
        aceptado(hecha.rechazo());
        cargar();
    } else if (*hecha == Eliminacion::PideReemplazo) {
        abrirReemplazo();
    } else if (*hecha == Eliminacion::Hecha) {
        mostrar(entradaNueva(*m_lista));
        cargar();
        entradas->elegirFila(qMin(fila, entradas->modelo().rowCount() - 1));
        ventanas().refrescar();
    }
}

void VentanaLista::abrirReemplazo()
{
    if (!descartar())
        return;
    const QPointer<VentanaLista> esta(this);
    ui::Pedido pedido;
    pedido.datos = {{QStringLiteral("lista"), m_lista->tabla}, {QStringLiteral("id"), m_mostrada.id}};
    pedido.alTerminar = [esta](const QVariantMap &resultado) {
        if (!esta)
            return;
        esta->cargar();
        esta->mostrarEntrada(resultado.value(QStringLiteral("id")).toLongLong());
        esta->ventanas().refrescar();
    };
    ventanas().abrir(QStringLiteral("listareemplazo"), pedido, this);
}

void VentanaLista::informarUsos()
{
    const CuentaUsos cuenta = contarUsos(conexion(), *m_lista, m_mostrada.id);
    const QString nombre = textoEntrada(*m_lista, m_mostrada);
    entorno().mensajes().informar(
        tr("Información"),
        cuenta.estaEnUso() ? tr("«%1» está en uso en %2.").arg(nombre, cuenta.texto())
                           : tr("«%1» no está en uso en ningún registro.").arg(nombre));
}

void VentanaLista::alGuardar(bool) { entradas->setFocus(); }

void VentanaLista::alActivar()
{
    formulario->nombre->setFocus();
    formulario->nombre->selectAll();
}

void VentanaLista::alMostrar(bool) { }

QString VentanaLista::ayuda() const
{
    return tr(
        "PRIORIDAD: Las listas se muestran por prioridad, de mayor a menor, y las entradas de igual prioridad por "
        "nombre. Todas comienzan en 0: dé un número mayor a las que más se usan.\n\n"
        "ELIMINAR: Una entrada que ya figura en algún registro no se elimina: se reemplaza por otra, que toma su "
        "lugar en todos ellos. Así también se unen dos entradas repetidas.");
}

bool VentanaLista::eventFilter(QObject *objeto, QEvent *event)
{
    if (objeto == filtro && event->type() == QEvent::KeyPress) {
        const int tecla = static_cast<QKeyEvent *>(event)->key();
        if (tecla == Qt::Key_Down || tecla == Qt::Key_PageDown) {
            entradas->setFocus();
            if (entradas->filaActual() < 0)
                entradas->elegirFila(0);
            return true;
        }
    }
    return Ventana::eventFilter(objeto, event);
}

} // namespace maintenance
