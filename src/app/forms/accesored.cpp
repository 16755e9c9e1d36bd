#include "app/forms/accesored.h"

#include "app/Red.h"
#include "base/Mensajes.h"
#include "db/Entorno.h"
#include "db/odbc/Target.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"

#include <QApplication>
#include <QDir>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace app {

namespace {

QRadioButton *opcion(QWidget *padre, const QString &nombre, const QString &texto)
{
    auto *boton = new QRadioButton(texto, padre);
    boton->setObjectName(nombre);
    return boton;
}

QLineEdit *campo(QWidget *padre, const QString &nombre, int ancho)
{
    auto *linea = new QLineEdit(padre);
    linea->setObjectName(nombre);
    linea->setMaxLength(ancho);
    return linea;
}

QLabel *renglon(QWidget *padre, const QString &nombre)
{
    auto *texto = new QLabel(padre);
    texto->setObjectName(nombre);
    texto->setTextFormat(Qt::PlainText);
    texto->setWordWrap(true);
    return texto;
}

} // namespace

accesored::accesored(db::Entorno &entorno, ui::Ventanas &ventanas, CambioDeRuta *red)
    : Ventana(entorno, ventanas, QStringLiteral("accesored"), tr("Red - Ubicación de la Base de Datos"))
    , m_red(red)
{
    armar();
    for (QRadioButton *boton : {modoaccess, modoservidor, local, otra})
        connect(boton, &QRadioButton::toggled, this, &accesored::habilitar);
    for (QLineEdit *linea : {carpeta, servidor, instancia, usuario, clave})
        connect(linea, &QLineEdit::textChanged, this, &accesored::habilitar);
    alPulsar(examinar, [this] { elegirCarpeta(); });
    alPulsar(probar, [this] { probarRuta(); });
    alPulsar(guardar, [this] { guardarCambios(); });
    connect(cancelar, &QPushButton::clicked, this, &QWidget::close);
    using Clase = PedidoTraslado::Clase;
    alPulsar(migrardatos, [this] { trasladar(Clase::DatosActuales); });
    alPulsar(migrarvacia, [this] { trasladar(Clase::BaseVacia); });
    alPulsar(volverarchivo, [this] { trasladar(Clase::AlArchivo); });
}

void accesored::armar()
{
    auto *modo = new QGroupBox(tr("Modo de Acceso"), this);
    modoaccess = opcion(modo, QStringLiteral("modoaccess"), tr("&Archivo de la base de datos (Datos.mdb)"));
    modoservidor = opcion(modo, QStringLiteral("modoservidor"), tr("Servidor de &base de datos (SQL Server)"));
    nota = renglon(modo, QStringLiteral("nota"));
    auto *modos = new QVBoxLayout(modo);
    for (QWidget *pieza : std::initializer_list<QWidget *>{modoaccess, modoservidor, nota})
        modos->addWidget(pieza);

    auto *lugar = new QGroupBox(tr("Ubicación de la Base de Datos"), this);
    local = opcion(lugar, QStringLiteral("local"), tr("La base de datos está en &esta computadora"));
    otra = opcion(lugar, QStringLiteral("otra"), tr("La base de datos está en &otra computadora (carpeta compartida)"));
    carpeta = campo(lugar, QStringLiteral("carpeta"), Ruta::anchoCarpeta);
    carpeta->setMinimumWidth(380);
    carpeta->setAccessibleName(tr("Carpeta compartida"));
    examinar = ui::boton(lugar, QStringLiteral("examinar"), tr("E&xaminar..."), QStringLiteral("folder-network"));
    auto *fila = new QHBoxLayout;
    fila->setContentsMargins(22, 0, 0, 0);
    fila->addWidget(carpeta, 1);
    fila->addWidget(examinar);
    auto *lugares = new QVBoxLayout(lugar);
    lugares->addWidget(local);
    lugares->addWidget(otra);
    lugares->addLayout(fila);

    datosservidor = new QGroupBox(tr("Servidor"), this);
    servidor = campo(datosservidor, QStringLiteral("servidor"), Ruta::anchoTexto);
    instancia = campo(datosservidor, QStringLiteral("instancia"), Ruta::anchoTexto);
    usuario = campo(datosservidor, QStringLiteral("usuario"), Ruta::anchoTexto);
    clave = campo(datosservidor, QStringLiteral("clave"), Ruta::anchoTexto);
    clave->setEchoMode(QLineEdit::Password);
    instancia->setPlaceholderText(tr("puede quedar vacía"));
    auto *datos = new QFormLayout(datosservidor);
    datos->addRow(tr("Ser&vidor:"), servidor);
    datos->addRow(tr("&Instancia:"), instancia);
    datos->addRow(tr("&Usuario:"), usuario);
    datos->addRow(tr("C&lave:"), clave);

    resultado = renglon(this, QStringLiteral("resultado"));
    resultado->setMinimumHeight(resultado->fontMetrics().lineSpacing() * 2);
    resultado->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    probar = ui::boton(this, QStringLiteral("probar"), tr("&Probar"), QStringLiteral("network-connect"));
    probar->setToolTip(tr("Mira si allí hay una base de datos de este programa, sin cambiar nada"));
    const auto fin = ui::finDeFormulario(this);
    guardar = fin.guardar;
    cancelar = fin.cancelar;
    fin.fila->insertWidget(0, probar);

    auto *caja = new QVBoxLayout(this);
    caja->setSpacing(ui::margen);
    for (QWidget *pieza : std::initializer_list<QWidget *>{modo, lugar, datosservidor, armarTraslado(), resultado})
        caja->addWidget(pieza);
    caja->addStretch(1);
    caja->addLayout(fin.fila);
}

QGroupBox *accesored::armarTraslado()
{
    auto *grupo = new QGroupBox(tr("Traslado de los Datos"), this);
    migrardatos = ui::boton(
        grupo,
        QStringLiteral("migrardatos"),
        tr("Pasar los &datos actuales al servidor..."),
        QStringLiteral("network-server"));
    migrarvacia = ui::boton(
        grupo,
        QStringLiteral("migrarvacia"),
        tr("Crear una base &nueva en el servidor..."),
        QStringLiteral("document-new"));
    volverarchivo = ui::boton(
        grupo,
        QStringLiteral("volverarchivo"),
        tr("&Traer los datos del servidor a un archivo..."),
        QStringLiteral("drive-harddisk"));
    auto *botones = new QVBoxLayout(grupo);
    for (QPushButton *boton : {migrardatos, migrarvacia, volverarchivo})
        botones->addWidget(boton);
    return grupo;
}

bool accesored::preparar(const ui::Pedido &)
{
    if (!m_red)
        return false;
    nota->setText(m_red->admiteServidor() ? QString() : db::odbc::missingDriverText());
    // Its room is kept while it is hidden: the frame around the window does not grow with it.
    QSizePolicy lugar = nota->sizePolicy();
    lugar.setRetainSizeWhenHidden(!nota->text().isEmpty());
    nota->setSizePolicy(lugar);
    nota->setMinimumHeight(nota->text().isEmpty() ? 0 : nota->fontMetrics().lineSpacing() * 2 + 4);
    m_guardada = m_red->rutaGuardada();
    mostrar(m_guardada);
    return true;
}

void accesored::mostrar(const Ruta &ruta)
{
    (ruta.modoServidor ? modoservidor : modoaccess)->setChecked(true);
    (ruta.otraCarpeta ? otra : local)->setChecked(true);
    carpeta->setText(QDir::toNativeSeparators(ruta.carpeta));
    servidor->setText(ruta.servidor);
    instancia->setText(ruta.instancia);
    usuario->setText(ruta.usuario);
    clave->setText(ruta.clave);
    habilitar();
}

Ruta accesored::leida() const
{
    Ruta ruta = m_guardada;
    ruta.otraCarpeta = otra->isChecked();
    if (const QString escrita = carpeta->text().trimmed(); escrita != QDir::toNativeSeparators(m_guardada.carpeta))
        ruta.carpeta = escrita;
    ruta.modoServidor = modoservidor->isChecked();
    ruta.servidor = servidor->text().trimmed();
    ruta.instancia = instancia->text().trimmed();
    ruta.usuario = usuario->text().trimmed();
    ruta.clave = clave->text();
    return ruta;
}

bool accesored::hayCambios() const { return leida() != m_guardada; }

void accesored::habilitar()
{
    const bool enServidor = modoservidor->isChecked();
    datosservidor->setEnabled(enServidor);
    nota->setVisible(enServidor && !nota->text().isEmpty());
    const bool enCarpeta = otra->isChecked() && !enServidor;
    carpeta->setEnabled(enCarpeta);
    examinar->setEnabled(enCarpeta);
    resultado->clear();

    using Clase = PedidoTraslado::Clase;
    const Ruta ruta = leida();
    for (const auto &[boton, clase] :
         {std::pair(migrardatos, Clase::DatosActuales),
          std::pair(migrarvacia, Clase::BaseVacia),
          std::pair(volverarchivo, Clase::AlArchivo)}) {
        const QString motivo = m_red ? impedimento(entorno(), *m_red, clase, ruta) : QString();
        boton->setEnabled(m_red && motivo.isEmpty());
        boton->setToolTip(motivo);
    }
}

void accesored::trasladar(PedidoTraslado::Clase clase)
{
    const PedidoTraslado pedido{clase, leida(), {}};
    if (!aceptado(controlarTraslado(entorno(), *m_red, pedido)))
        return;
    // The others show the database that may be about to be left, and may hold what is not saved in it yet.
    if (!ventanas().cerrarTodas(objectName()))
        return;
    abrirVentana(
        QStringLiteral("migracion"),
        {{{QStringLiteral("clase"), int(clase)}, {QStringLiteral("ruta"), pedido.ruta.aRegistro()}},
         [this](const QVariantMap &hecho) {
             if (!hecho.value(QStringLiteral("usada")).toBool())
                 return;
             m_guardada = m_red->rutaGuardada();
             mostrar(m_guardada);
             close();
         }});
}

void accesored::elegirCarpeta()
{
    const auto elegida = entorno().mensajes().elegirCarpeta(
        tr("Seleccione la carpeta compartida que contiene el archivo Datos.mdb."), carpeta->text());
    if (elegida)
        carpeta->setText(QDir::toNativeSeparators(*elegida));
}

void accesored::probarRuta()
{
    const Ruta ruta = leida();
    if (!aceptado(controlarRuta(ruta, entorno().carpetaPrograma())))
        return;
    QApplication::setOverrideCursor(Qt::WaitCursor); // a computer that is off takes its time not to answer
    const Hallazgo hallazgo = m_red->examinarRuta(ruta);
    QApplication::restoreOverrideCursor();
    QPalette colores = palette();
    if (!hallazgo.valida)
        colores.setColor(QPalette::WindowText, ui::color::error());
    resultado->setPalette(colores);
    resultado->setText(hallazgo.texto);
}

void accesored::guardarCambios()
{
    const Ruta ruta = leida();
    if (!aceptado(controlarRuta(ruta, entorno().carpetaPrograma())))
        return;
    // The others show the database that is about to be left.
    if (!ventanas().cerrarTodas(objectName()))
        return;
    const auto cambiada = guardarRuta(entorno(), *m_red, ruta);
    if (!cambiada) {
        (void)aceptado(cambiada.rechazo());
        return;
    }
    m_guardada = m_red->rutaGuardada();
    mostrar(m_guardada);
    if (*cambiada == RutaCambiada::Usada) {
        entorno().mensajes().informar(
            tr("Información"), tr("El programa trabaja ahora con la base de datos indicada."));
        close();
    }
}

} // namespace app
