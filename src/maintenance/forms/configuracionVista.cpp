// How the window "configuracion" is laid out.

#include "maintenance/forms/CampoImagen.h"
#include "maintenance/forms/OpcionesAbiertas.h"
#include "maintenance/forms/configuracion.h"
#include "ui/Botones.h"
#include "ui/CampoFecha.h"
#include "ui/Campos.h"
#include "ui/Estilo.h"
#include "ui/Grilla.h"
#include "ui/Iconos.h"
#include "ui/ListaCombo.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace maintenance {

namespace {

using Tipo = Ajuste::Tipo;

QLabel *parrafo(QWidget *padre, const QString &texto)
{
    auto *rotulo = new QLabel(texto, padre);
    rotulo->setWordWrap(true);
    rotulo->setTextFormat(Qt::PlainText);
    return rotulo;
}

QLabel *nota(QWidget *padre, const QString &texto = {})
{
    QLabel *rotulo = parrafo(padre, texto);
    QPalette colores = rotulo->palette();
    colores.setColor(QPalette::WindowText, ui::color::tenue());
    rotulo->setPalette(colores);
    return rotulo;
}

ui::Campo campoDe(const Ajuste &ajuste)
{
    ui::Campo campo;
    switch (ajuste.tipo) {
    case Tipo::Bandera:
    case Tipo::Uno: campo = ui::campo::bandera(ajuste.columna, ajuste.etiqueta); break;
    case Tipo::Entero:
        campo = ui::campo::numero(ajuste.columna, ajuste.etiqueta).con(5).entre(ajuste.minimo, ajuste.maximo);
        break;
    case Tipo::Texto: campo = ui::campo::texto(ajuste.columna, ajuste.etiqueta).con(30); break;
    case Tipo::Memo: campo = ui::campo::memo(ajuste.columna, ajuste.etiqueta).con(5); break;
    case Tipo::Carpeta: campo = ui::campo::texto(ajuste.columna, ajuste.etiqueta); break;
    case Tipo::Imagen: campo = ui::campo::propio(ajuste.columna, ajuste.etiqueta); break;
    case Tipo::Eleccion: {
        ui::Campo::Opciones opciones;
        for (const Ajuste::Opcion &opcion : ajuste.opciones)
            opciones.emplace_back(opcion.texto, opcion.valor);
        const bool abiertas = !ajuste.opciones.front().nombre.isEmpty();
        campo = abiertas ? ui::campo::propio(ajuste.columna, ajuste.etiqueta)
                         : ui::campo::eleccion(ajuste.columna, ajuste.etiqueta, opciones).con(42);
        break;
    }
    }
    return campo.dice(ajuste.ayuda);
}

} // namespace

void configuracion::construir()
{
    buscar = new QLineEdit(this);
    buscar->setObjectName(QStringLiteral("buscar"));
    buscar->setPlaceholderText(tr("Buscar una opción"));
    buscar->setToolTip(tr("Escriba una palabra: quedan los grupos que la tienen, y sus opciones en negrita. Enter va a "
                          "la primera. (Ctrl+F)"));
    buscar->setAccessibleName(buscar->placeholderText());
    buscar->setClearButtonEnabled(true);
    buscar->addAction(ui::icono(QStringLiteral("edit-find")), QLineEdit::LeadingPosition);
    grupos = new QListWidget(this);
    grupos->setObjectName(QStringLiteral("grupos"));
    grupos->setAccessibleName(tr("Grupos de opciones"));
    grupos->setIconSize({22, 22});
    paginas = new QStackedWidget(this);
    paginas->setObjectName(QStringLiteral("paginas"));
    for (const GrupoAjustes &grupo : gruposDeAjustes()) {
        auto *renglon = new QListWidgetItem(ui::icono(grupo.icono), grupo.titulo, grupos);
        renglon->setSizeHint({0, 32});
        paginas->addWidget(pagina(grupo));
    }
    auto *izquierda = new QVBoxLayout;
    izquierda->setSpacing(ui::espacio);
    izquierda->addWidget(buscar);
    izquierda->addWidget(grupos, 1);
    const int ancho = fontMetrics().averageCharWidth() * 26;
    buscar->setFixedWidth(ancho);
    grupos->setFixedWidth(ancho);

    // A small screen, or large letters: the page scrolls, the buttons stay.
    auto *rollo = new QScrollArea(this);
    rollo->setFrameShape(QFrame::NoFrame);
    rollo->setWidgetResizable(true);
    rollo->setFocusPolicy(Qt::NoFocus);
    rollo->setWidget(paginas);
    // As wide and high as its largest page, where there is room.
    rollo->setMinimumSize(qMin(710, paginas->sizeHint().width() + 20), qMin(520, paginas->sizeHint().height()));
    m_explicacion = nota(this);
    m_explicacion->setMinimumHeight(fontMetrics().lineSpacing() * 2);
    m_explicacion->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    auto *derecha = new QVBoxLayout;
    derecha->setSpacing(ui::espacio);
    derecha->addWidget(rollo, 1);
    derecha->addWidget(m_explicacion);

    auto *medio = new QHBoxLayout;
    medio->setSpacing(ui::margen);
    medio->addLayout(izquierda);
    medio->addLayout(derecha, 1);

    const ui::FinDeFormulario fin = ui::finDeFormulario(this);
    guardar = fin.guardar;
    cancelar = fin.cancelar;
    m_estado = nota(this);
    fin.fila->insertWidget(0, m_estado, 1);

    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->setSpacing(ui::margen);
    todo->addWidget(panelAviso());
    todo->addLayout(medio, 1);
    todo->addLayout(fin.fila);
    setTabOrder(buscar, grupos);
    setTabOrder(guardar, cancelar);
}

QWidget *configuracion::panelAviso()
{
    avisoadministrador = new QFrame(this);
    avisoadministrador->setObjectName(QStringLiteral("avisoadministrador"));
    avisoadministrador->setFrameShape(QFrame::StyledPanel);
    auto *icono = new QLabel(avisoadministrador);
    icono->setPixmap(ui::icono(QStringLiteral("dialog-warning")).pixmap(22, 22));
    nombraradministrador = ui::boton(
        avisoadministrador,
        QStringLiteral("nombraradministrador"),
        tr("Nom&brar administrador..."),
        QStringLiteral("user-group-new"));
    auto *fila = new QHBoxLayout(avisoadministrador);
    fila->addWidget(icono);
    fila->addWidget(
        parrafo(
            avisoadministrador,
            tr("Todavía no hay un Administrador del sistema con clave: cualquier usuario que tenga el permiso de "
               "configuración puede entrar aquí. Nombre uno y asígnele una Clave de Usuario; desde entonces esta "
               "ventana se abrirá sólo con esa clave.")),
        1);
    fila->addWidget(nombraradministrador);
    return avisoadministrador;
}

QWidget *configuracion::pagina(const GrupoAjustes &grupo)
{
    auto *panel = new QWidget(this);
    panel->setObjectName(grupo.nombre);
    auto *columna = new QVBoxLayout(panel);
    columna->setContentsMargins(0, 0, ui::espacio, 0);
    columna->setSpacing(ui::margen);
    QString palabras = grupo.titulo + u' ' + grupo.palabras;
    for (const SeccionAjustes &una : grupo.secciones) {
        columna->addWidget(una.nombre == QLatin1String("proximonumero") ? seccionNumeracion(una) : seccion(una));
        for (const Ajuste &ajuste : una.ajustes) {
            QString texto = una.titulo + u' ' + ajuste.rotulo() + u' ' + ajuste.ayuda;
            for (const Ajuste::Opcion &opcion : ajuste.opciones)
                texto += u' ' + QString(opcion.texto).remove(u'&');
            QWidget *campo = m_campos->control(ajuste.columna);
            QWidget *rotulo = m_campos->etiqueta(ajuste.columna);
            m_buscables.push_back({paginas->count(), ui::plegado(texto), rotulo ? rotulo : campo, campo});
        }
    }
    if (grupo.nombre == QLatin1String("impresiones"))
        columna->addWidget(seccionEncabezados());
    else if (grupo.nombre == QLatin1String("historial"))
        columna->addWidget(seccionHistorial());
    else if (grupo.nombre == QLatin1String("usuarios"))
        columna->addWidget(seccionUsuarios(), 1);
    if (grupo.nombre != QLatin1String("usuarios"))
        columna->addStretch(1);
    m_buscables.push_back({paginas->count(), ui::plegado(palabras), nullptr, nullptr});
    return panel;
}

QWidget *configuracion::seccion(const SeccionAjustes &una)
{
    std::vector<ui::Campo> campos;
    for (const Ajuste &ajuste : una.ajustes) {
        const ui::Campo campo = una.columnas > 1 ? campoDe(ajuste).con(14) : campoDe(ajuste);
        campos.push_back(campo);
        if (ajuste.tipo == Tipo::Imagen) {
            m_fondo = new CampoImagen(this);
            m_campos->agregar(campo, m_fondo);
        } else if (campo.tipo == ui::Campo::Tipo::Propio) {
            m_campos->agregar(campo, new OpcionesAbiertas(ajuste.opciones, this));
        }
    }
    QGroupBox *caja = m_campos->grupo(una.titulo, campos, una.columnas);
    caja->setObjectName(una.nombre);
    for (const ui::Campo &campo : campos)
        if (qobject_cast<OpcionesAbiertas *>(m_campos->control(campo.columna)))
            m_campos->etiqueta(campo.columna)->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    if (auto *carpeta
        = una.ajustes.back().tipo == Tipo::Carpeta ? m_campos->control(una.ajustes.back().columna) : nullptr) {
        elegircarpeta
            = ui::boton(caja, QStringLiteral("elegircarpeta"), tr("&Elegir..."), QStringLiteral("folder-open"));
        auto *rejilla = qobject_cast<QGridLayout *>(caja->layout());
        rejilla->addWidget(elegircarpeta, rejilla->rowCount() - 1, 2);
        qobject_cast<QLineEdit *>(carpeta)->setPlaceholderText(tr("'Backup' en la carpeta del programa"));
    }
    return caja;
}

QWidget *configuracion::seccionNumeracion(const SeccionAjustes &una)
{
    auto *caja = new QGroupBox(una.titulo, this);
    caja->setObjectName(una.nombre);
    vistaprevia = new QLabel(caja);
    vistaprevia->setObjectName(QStringLiteral("vistaprevia"));
    vistaprevia->setTextFormat(Qt::PlainText);
    QFont letra = vistaprevia->font();
    letra.setBold(true);
    vistaprevia->setFont(letra);
    vistaprevia->setWordWrap(true); // a long number goes below its title
    vistaprevia->setMinimumWidth(QFontMetrics(letra).horizontalAdvance(tr("Vista Previa: ") + QString(9, u'0')));

    auto *columna = new QVBoxLayout(caja);
    columna->setSpacing(ui::margen);
    auto *fila = new QHBoxLayout;
    fila->setSpacing(10);
    fila->addWidget(new QLabel(tr("Próximo Nº Historia Clínica: "), caja));
    std::vector<ui::Campo> campos;
    for (const Ajuste &ajuste : una.ajustes)
        campos.push_back(campoDe(ajuste).con(12));
    fila->addWidget(m_campos->plano(campos, 2));
    fila->addSpacing(10);
    fila->addWidget(vistaprevia, 1);
    columna->addLayout(fila);
    columna->addWidget(nota(
        caja,
        tr("Nota: Si existe un valor en el campo ' Número ', entonces este valor se irá incrementando automáticamente "
           "cada vez que se registre un nuevo paciente.")));
    return caja;
}

QWidget *configuracion::seccionEncabezados()
{
    auto *caja = new QGroupBox(tr("Encabezados"), this);
    abrirencabezados = ui::boton(
        caja,
        QStringLiteral("abrirencabezados"),
        tr("&Encabezados de las impresiones..."),
        QStringLiteral("draw-text"));
    auto *columna = new QVBoxLayout(caja);
    columna->setSpacing(ui::margen);
    columna->addWidget(parrafo(
        caja,
        tr("Cada hoja impresa empieza con un encabezado general, que lleva los datos del profesional, y uno con los "
           "datos del paciente; puede llevar además una imagen. Los tres se editan en una ventana aparte.")));
    auto *fila = new QHBoxLayout;
    fila->addWidget(abrirencabezados);
    fila->addStretch(1);
    columna->addLayout(fila);
    return caja;
}

QWidget *configuracion::seccionHistorial()
{
    auto *caja = new QGroupBox(tr("Historial de accesos"), this);
    resumenhistorial = parrafo(caja, {});
    resumenhistorial->setObjectName(QStringLiteral("resumenhistorial"));
    hastahistorial = new ui::CampoFecha(caja);
    hastahistorial->setObjectName(QStringLiteral("hastahistorial"));
    hastahistorial->setMaximumWidth(fontMetrics().averageCharWidth() * 18);
    hastahistorial->setToolTip(tr("Se eliminan los registros más viejos, hasta esta fecha. No se pueden recuperar."));
    eliminarhistorial = ui::boton(
        caja, QStringLiteral("eliminarhistorial"), tr("&Eliminar registros"), QStringLiteral("edit-delete"));
    auto *rotulo = new QLabel(tr("Eliminar los registros &hasta el:"), caja);
    rotulo->setBuddy(hastahistorial);
    auto *columna = new QVBoxLayout(caja);
    columna->setSpacing(ui::margen);
    columna->addWidget(resumenhistorial);
    auto *fila = new QHBoxLayout;
    fila->setSpacing(10);
    fila->addWidget(rotulo);
    fila->addWidget(hastahistorial);
    fila->addWidget(eliminarhistorial);
    fila->addStretch(1);
    columna->addLayout(fila);
    return caja;
}

QWidget *configuracion::seccionUsuarios()
{
    auto *caja = new QGroupBox(tr("Usuarios del sistema"), this);
    lisusuarios = new ui::Grilla(
        QStringLiteral("lisusuarios"),
        QStringLiteral("|<Nombre                                  |<Tipo             |^Administrador  |^Con clave  "),
        caja);
    abrirmedicos = ui::boton(
        caja, QStringLiteral("abrirmedicos"), tr("&Usuarios, claves y permisos..."), QStringLiteral("system-users"));
    abrirmedicos->setToolTip(tr("Abre la ventana de médicos y usuarios, en el que está elegido en la lista. (Enter)"));
    auto *columna = new QVBoxLayout(caja);
    columna->setSpacing(ui::margen);
    columna->addWidget(lisusuarios, 1);
    auto *fila = new QHBoxLayout;
    fila->addWidget(abrirmedicos);
    fila->addStretch(1);
    columna->addLayout(fila);
    return caja;
}

} // namespace maintenance
