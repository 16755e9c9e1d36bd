#include "app/forms/migracion.h"

#include "app/Red.h"
#include "base/Clock.h"
#include "base/Mensajes.h"
#include "db/Entorno.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"
#include "ui/Grilla.h"

#include <QCloseEvent>
#include <QDir>
#include <QGridLayout>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QThread>
#include <QTimer>
#include <QVBoxLayout>

namespace app {

namespace {

using Tipo = db::migracion::Desenlace::Tipo;

constexpr int milisegundosPorVista = 100;
constexpr int porMil = 1000; // the bar's own scale: rows may be more than it counts

QLabel *renglon(QWidget *padre, const QString &nombre)
{
    auto *texto = new QLabel(padre);
    texto->setObjectName(nombre);
    texto->setTextFormat(Qt::PlainText);
    texto->setWordWrap(true);
    return texto;
}

QString duracion(qint64 segundos)
{
    return QStringLiteral("%1:%2").arg(segundos / 60).arg(segundos % 60, 2, 10, QLatin1Char('0'));
}

} // namespace

migracion::migracion(db::Entorno &entorno, ui::Ventanas &ventanas, CambioDeRuta *red)
    : Ventana(entorno, ventanas, QStringLiteral("migracion"), tr("Traslado de la Base de Datos"))
    , m_red(red)
    , m_reloj(new QTimer(this))
{
    armar();
    m_reloj->setInterval(milisegundosPorVista);
    connect(m_reloj, &QTimer::timeout, this, &migracion::mostrarEstado);
    connect(cancelar, &QPushButton::clicked, this, &QWidget::close);
}

migracion::~migracion()
{
    if (!m_hilo)
        return;
    m_hilo->disconnect(this);
    m_seguimiento->cancelar();
    m_hilo->wait();
}

void migracion::armar()
{
    que = renglon(this, QStringLiteral("que"));
    estado = renglon(this, QStringLiteral("estado"));
    avance = new QProgressBar(this);
    avance->setObjectName(QStringLiteral("avance"));
    avance->setRange(0, porMil);
    avance->setAccessibleName(tr("Avance del traslado"));
    registros = renglon(this, QStringLiteral("registros"));
    tiempo = renglon(this, QStringLiteral("tiempo"));
    tiempo->setAlignment(Qt::AlignRight);
    tiempo->setWordWrap(false);
    notas = renglon(this, QStringLiteral("notas"));
    tablas = new ui::Grilla(
        QStringLiteral("tablas"),
        tr("|<Tabla                                           |>Registros    |>En la copia  |<Suma de control  "
           "|<Resultado  "),
        this);
    tablas->setAccessibleName(tr("Tablas comprobadas"));
    tablas->setMinimumHeight(260);
    cancelar = ui::boton(this, QStringLiteral("cancelar"), tr("&Cancelar"), QStringLiteral("dialog-cancel"));
    setEnter(cancelar);

    auto *datos = new QGridLayout;
    datos->addWidget(registros, 0, 0);
    datos->addWidget(tiempo, 0, 1);
    datos->setColumnStretch(0, 1);
    auto *fin = new QHBoxLayout;
    fin->addStretch(1);
    fin->addWidget(cancelar);
    auto *caja = new QVBoxLayout(this);
    caja->setSpacing(ui::margen);
    caja->addWidget(que);
    caja->addWidget(estado);
    caja->addWidget(avance);
    caja->addLayout(datos);
    caja->addWidget(tablas, 1);
    caja->addWidget(notas);
    caja->addLayout(fin);
    notas->hide();
    setMinimumWidth(640);
}

bool migracion::preparar(const ui::Pedido &pedido)
{
    if (!m_red || enMarcha())
        return enMarcha();
    m_pedido
        = {PedidoTraslado::Clase(pedido.datos.value(QStringLiteral("clase")).toInt()),
           Ruta::deRegistro(pedido.datos.value(QStringLiteral("ruta")).toByteArray()),
           {}};
    if (!aceptado(controlarTraslado(entorno(), *m_red, m_pedido)) || !confirmarTraslado(entorno(), m_pedido))
        return false;
    empezar();
    return true;
}

void migracion::empezar()
{
    que->setText(descripcion(m_pedido, entorno().carpetaPrograma()));
    m_comienzo = entorno().clock().now();
    m_seguimiento = std::make_unique<db::migracion::Seguimiento>();
    m_hilo = QThread::create([this, trabajo = m_red->traslado(m_pedido)] { m_desenlace = trabajo(*m_seguimiento); });
    m_hilo->setParent(this);
    connect(m_hilo, &QThread::finished, this, [this] { intentar([this] { concluir(); }); });
    m_hilo->start();
    m_reloj->start();
    mostrarEstado();
    cancelar->setFocus();
}

void migracion::mostrarEstado()
{
    const db::migracion::Estado hay = m_seguimiento->estado();
    const QLocale regional;
    tiempo->setText(duracion(m_comienzo.secsTo(entorno().clock().now())));
    if (m_seguimiento->cancelado())
        estado->setText(tr("Cancelando, un momento por favor..."));
    else if (hay.tabla.isEmpty())
        estado->setText(hay.que.isEmpty() ? tr("Comenzando...") : hay.que + QStringLiteral("..."));
    else
        estado->setText(tr("%1 '%2' (tabla %3 de %4): %5 de %6 registros")
                            .arg(
                                hay.que,
                                hay.tabla,
                                QString::number(hay.numero),
                                QString::number(hay.tablas),
                                regional.toString(hay.filas),
                                regional.toString(hay.filasTabla)));
    // Each row twice: copied, and read back.
    registros->setText(
        hay.total > 0 ? tr("%1 de %2 registros entre copiar y comprobar")
                            .arg(regional.toString(hay.hechas), regional.toString(hay.total))
                      : QString());
    avance->setValue(hay.total > 0 ? int(hay.hechas * porMil / hay.total) : 0);
}

void migracion::preguntarCancelar()
{
    if (m_preguntando || m_seguimiento->cancelado())
        return;
    m_preguntando = true; // the work goes on meanwhile
    const bool si = entorno().mensajes().pregunta(
        base::titulo::confirmacion,
        tr("¿Desea cancelar la operación?\nLo copiado hasta ahora se descarta; los datos siguen donde estaban."),
        false);
    m_preguntando = false;
    if (!enMarcha())
        concluir();
    else if (si) {
        m_seguimiento->cancelar();
        mostrarEstado();
    }
}

void migracion::closeEvent(QCloseEvent *event)
{
    if (!enMarcha()) {
        Ventana::closeEvent(event);
        return;
    }
    event->ignore();
    preguntarCancelar();
}

void migracion::concluir()
{
    if (m_hilo) {
        m_hilo->deleteLater();
        m_hilo = nullptr;
        m_reloj->stop();
        mostrarEstado();
    }
    if (m_preguntando)
        return; // the answer comes first
    m_archivo = anotarTraslado(entorno(), m_pedido, m_desenlace, m_comienzo);
    mostrarDesenlace();
    const bool usada = concluirTraslado(entorno(), *m_red, m_pedido, m_desenlace);
    if (usada || m_desenlace.tablas.isEmpty())
        terminar({{QStringLiteral("usada"), usada}});
}

void migracion::mostrarDesenlace()
{
    const QLocale regional;
    const bool bien = m_desenlace.tipo == Tipo::Hecha;
    estado->setText(
        bien ? tr("Terminado: cada registro de la copia es igual al original.")
             : tr("No se completó: los datos siguen donde estaban."));
    QPalette colores = palette();
    if (!bien)
        colores.setColor(QPalette::WindowText, ui::color::error());
    estado->setPalette(colores);
    if (bien)
        avance->setValue(porMil);
    cancelar->setText(tr("&Cerrar"));

    std::vector<QStringList> filas;
    std::vector<qint64> claves;
    for (const db::migracion::TablaComparada &tabla : m_desenlace.tablas) {
        const auto corta
            = [](const db::Huella &huella) { return QString::fromLatin1(huella.bytes().toHex().left(12)); };
        filas.push_back(
            {tabla.tabla,
             regional.toString(tabla.filasOrigen),
             regional.toString(tabla.filasDestino),
             tabla.sumaOrigen == tabla.sumaDestino
                 ? corta(tabla.sumaOrigen)
                 : corta(tabla.sumaOrigen) + QStringLiteral(" / ") + corta(tabla.sumaDestino),
             tabla.igual() ? tr("igual") : tr("DISTINTA")});
        claves.push_back(qint64(claves.size()) + 1);
    }
    tablas->mostrar(filas, claves);
    QStringList textos = m_desenlace.avisos;
    if (!m_desenlace.apartado.isEmpty())
        textos << tr("El archivo anterior se guardó como '%1'.").arg(QDir::toNativeSeparators(m_desenlace.apartado));
    if (!m_archivo.isEmpty())
        textos << tr("Este resultado quedó guardado en '%1'.").arg(QDir::toNativeSeparators(m_archivo));
    notas->setText(textos.join(u'\n'));
    notas->setVisible(!textos.isEmpty());
}

} // namespace app
