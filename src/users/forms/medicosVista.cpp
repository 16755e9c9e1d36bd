#include "users/forms/medicos.h"

#include "base/Mensajes.h"
#include "db/Entorno.h"
#include "ui/Botones.h"
#include "ui/CampoClave.h"
#include "ui/Campos.h"
#include "ui/Estilo.h"
#include "ui/Iconos.h"
#include "users/Claves.h"
#include "users/Derechos.h"
#include "users/EspecialidadActiva.h"
#include "users/VentanaInicio.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

namespace users {

namespace {

namespace campo = ui::campo;

const QString informacion = QStringLiteral("Información");
const QString tituloAyuda = QStringLiteral("Ayuda");

QString sobreAdministrador()
{
    return QStringLiteral(
        "Un usuario Administrador puede ingresar a la ventana 'Configuración' con su propia Clave de Usuario, sin "
        "importar qué usuario esté activo en la computadora.\n\nMientras ningún Administrador tenga una clave, la "
        "ventana 'Configuración' se abre con el permiso común.");
}

QString sobrePrioridad()
{
    return QStringLiteral(
        "La Prioridad ordena las listas de médicos y usuarios. Al comienzo todos tienen prioridad cero y se ordenan "
        "por nombre.\n\nSi a un usuario se le asigna una prioridad mayor, aparece antes que los demás.");
}

QString sobreMedicoActivo()
{
    return QStringLiteral(
        "Los datos del médico activo son los que salen en las impresiones, y a su nombre se registra lo que hace el "
        "usuario.\n\nSi se elige '<Médico sin Identificar>', las impresiones salen sin los datos de ningún médico.");
}

QString sobreModuloWeb()
{
    return QStringLiteral(
        "El médico que tenga esta opción puede ver los turnos de los próximos 15 días en un dispositivo móvil, por "
        "medio del programa Turnex, que se inicia en la PC servidor.");
}

QFormLayout *formulario(QWidget *donde)
{
    auto *todo = new QVBoxLayout(donde);
    todo->setContentsMargins(2 * ui::margen, 2 * ui::margen, 2 * ui::margen, ui::margen);
    auto *filas = new QFormLayout;
    todo->addLayout(filas);
    todo->addStretch(1); // the rows stay together at the top
    filas->setHorizontalSpacing(10);
    filas->setVerticalSpacing(ui::espacio + 2);
    filas->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return filas;
}

} // namespace

void medicos::construir()
{
    m_paginas = new QStackedWidget(this);
    auto *usuarios = panelUsuarios();
    solapas = new QTabWidget(m_paginas);
    solapas->setObjectName(QStringLiteral("solapas"));
    solapas->addTab(solapaDatos(), tr("&Datos"));
    solapas->addTab(solapaAcceso(), tr("&Acceso al sistema"));
    solapas->addTab(solapaPermisos(), tr("Per&misos"));
    solapas->addTab(solapaOpciones(), tr("&Opciones"));
    m_paginas->addWidget(panelNadie());
    m_paginas->addWidget(solapas);

    guardar = ui::boton(this, QStringLiteral("guardar"), tr("&Guardar"), QStringLiteral("document-save"));
    cerrar = ui::boton(this, QStringLiteral("cerrar"), tr("&Cerrar"), QStringLiteral("dialog-close"));
    auto *fin = new QHBoxLayout;
    fin->addStretch(1);
    fin->addWidget(guardar);
    fin->addWidget(cerrar);

    auto *arriba = new QHBoxLayout;
    arriba->setSpacing(ui::margen);
    arriba->addWidget(usuarios);
    arriba->addWidget(m_paginas, 1);
    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->setSpacing(ui::margen);
    todo->addLayout(arriba, 1);
    todo->addLayout(fin);
    setMinimumSize(960, 600);
}

QWidget *medicos::panelUsuarios()
{
    auto *panel = new QWidget(this);
    lisusuarios = new QListWidget(panel);
    lisusuarios->setObjectName(QStringLiteral("lisusuarios"));
    lisusuarios->setSpacing(2);
    lisusuarios->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto *titulo = new QLabel(tr("&Usuarios"), panel);
    titulo->setBuddy(lisusuarios);
    nuevo = ui::boton(panel, QStringLiteral("nuevo"), tr("&Nuevo"), QStringLiteral("user-group-new"));
    eliminar = ui::boton(panel, QStringLiteral("eliminar"), tr("&Eliminar"), QStringLiteral("user-group-delete"));
    auto *botones = new QHBoxLayout;
    botones->addWidget(nuevo);
    botones->addWidget(eliminar);
    auto *todo = new QVBoxLayout(panel);
    todo->setContentsMargins(0, 0, 0, 0);
    todo->setSpacing(ui::espacio);
    todo->addWidget(titulo);
    todo->addWidget(lisusuarios, 1);
    todo->addLayout(botones);
    panel->setFixedWidth(250);
    return panel;
}

QWidget *medicos::panelNadie()
{
    auto *texto = new QLabel(
        QStringLiteral("<Médico sin Identificar> no es un médico en particular.\n\nLas consultas y los movimientos de "
                       "caja que se registran con él no pertenecen a ningún médico, y las impresiones salen sin los "
                       "datos de un profesional.\n\nElija un usuario de la lista, o agregue uno con el botón 'Nuevo'."),
        m_paginas);
    texto->setTextFormat(Qt::PlainText);
    texto->setWordWrap(true);
    texto->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    texto->setMargin(3 * ui::margen);
    return texto;
}

QToolButton *medicos::botonAyuda(const QString &nombre, const QString &titulo, const QString &texto)
{
    auto *boton = new QToolButton(this);
    boton->setObjectName(nombre);
    boton->setIcon(ui::icono(QStringLiteral("help-hint")));
    boton->setAutoRaise(true);
    boton->setFocusPolicy(Qt::StrongFocus);
    boton->setAccessibleName(titulo);
    boton->setToolTip(titulo);
    boton->setWhatsThis(texto);
    connect(
        boton, &QToolButton::clicked, this, [this, titulo, texto] { entorno().mensajes().informar(titulo, texto); });
    return boton;
}

void medicos::agregarFila(QFormLayout &filas, const ui::Campo &declarado, QWidget *alLado)
{
    QWidget *control = m_campos->crear(declarado);
    const bool esMarca = declarado.tipo == ui::Campo::Tipo::Bandera;
    auto *fila = new QHBoxLayout;
    fila->setSpacing(ui::espacio);
    const bool angosto = control->maximumWidth() < QWIDGETSIZE_MAX;
    fila->addWidget(control, angosto ? 1 : 0); // as wide as it may be
    if (alLado) {
        fila->addWidget(alLado);
        setTabOrder(control, alLado);
    }
    if (esMarca || angosto)
        fila->addStretch(0);
    auto *rotulo = new QLabel(esMarca ? QString() : declarado.etiqueta, this);
    rotulo->setBuddy(control);
    filas.addRow(rotulo, fila);
}

QWidget *medicos::solapaDatos()
{
    auto *solapa = new QWidget(solapas);
    QFormLayout *filas = formulario(solapa);
    agregarFila(*filas, campo::texto(QStringLiteral("NomDoc"), tr("Nombre:")));
    agregarFila(
        *filas,
        campo::eleccion(
            QStringLiteral("tipo"),
            tr("Tipo:"),
            {{tr("Médico (tiene agenda y pacientes)"), 0}, {tr("Otro usuario (secretaría, administración)"), 1}}));
    agregarFila(*filas, campo::texto(QStringLiteral("Especialidad"), tr("Especialidad:")));
    agregarFila(*filas, campo::texto(QStringLiteral("Matricula"), tr("Matrícula:")).con(24));
    agregarFila(*filas, campo::texto(QStringLiteral("Domi"), tr("Domicilio:")));
    agregarFila(*filas, campo::texto(QStringLiteral("Locali"), tr("Localidad:")));
    agregarFila(*filas, campo::texto(QStringLiteral("Tel"), tr("Teléfono:")).con(36));
    agregarFila(
        *filas,
        campo::numero(QStringLiteral("Prioridad"), tr("Prioridad:")),
        botonAyuda(QStringLiteral("ayudaprioridad"), tituloAyuda, sobrePrioridad()));
    agregarFila(*filas, campo::memo(QStringLiteral("Descripcion"), tr("Descripción:")).con(4));
    return solapa;
}

QWidget *medicos::solapaAcceso()
{
    auto *solapa = new QWidget(solapas);
    QFormLayout *filas = formulario(solapa);
    claveusuario = new ui::CampoClave(solapa);
    claveusuario->setObjectName(QStringLiteral("claveusuario"));
    claveusuario->setMaxLength(claves::ancho);
    claveusuario->setMinimumWidth(340);
    quitarclave = ui::boton(solapa, QStringLiteral("quitarclave"), tr("&Quitar clave"), QStringLiteral("edit-clear"));
    auto *clave = new QHBoxLayout;
    clave->setSpacing(ui::espacio);
    clave->addWidget(claveusuario);
    clave->addWidget(quitarclave);
    clave->addStretch(1);
    filas->addRow(tr("Clave:"), clave);
    filas->addRow(QString(), claveusuario->avisoMayusculas());
    auto *explica = new QLabel(
        tr("La clave no se puede ver, sólo cambiar o quitar. Dos usuarios no pueden tener la misma. Un usuario sin "
           "clave ingresa dejándola vacía."),
        solapa);
    explica->setWordWrap(true);
    filas->addRow(QString(), explica);
    filas->addItem(new QSpacerItem(0, ui::margen));
    agregarFila(
        *filas,
        campo::bandera(QStringLiteral("administrador"), tr("Administrador del sistema")),
        botonAyuda(QStringLiteral("ayudaadministrador"), informacion, sobreAdministrador()));
    // Enter moves on from a new password: not to the button that would take it away.
    setTabOrder(claveusuario, m_campos->control(QStringLiteral("administrador")));
    return solapa;
}

QWidget *medicos::solapaPermisos()
{
    auto *solapa = new QWidget(solapas);
    copiarde = new QComboBox(solapa);
    copiarde->setObjectName(QStringLiteral("copiarde"));
    copiarde->setMinimumContentsLength(26);
    auto *rotulo = new QLabel(tr("Copiar permisos de:"), solapa);
    rotulo->setBuddy(copiarde);
    copiar = ui::boton(solapa, QStringLiteral("copiar"), tr("Co&piar"), QStringLiteral("edit-copy"));
    copiar->setToolTip(tr("Pone los permisos y las opciones de trabajo de ese usuario; se guardan con 'Guardar'."));
    copiar->setEnabled(false);
    todos = ui::boton(solapa, QStringLiteral("todos"), tr("&Todos"), QStringLiteral("edit-select-all"));
    ninguno = ui::boton(solapa, QStringLiteral("ninguno"), tr("N&inguno"), QStringLiteral("edit-clear"));
    auto *arriba = new QHBoxLayout;
    for (QWidget *pieza :
         {static_cast<QWidget *>(rotulo), static_cast<QWidget *>(copiarde), static_cast<QWidget *>(copiar)})
        arriba->addWidget(pieza);
    arriba->addStretch(1);
    arriba->addWidget(todos);
    arriba->addWidget(ninguno);

    // Columns of about the same height, groups in their order from top to bottom.
    constexpr int columnas = 3;
    auto *abajo = new QHBoxLayout;
    abajo->setSpacing(ui::margen);
    int porColumna = 0, lleva = 0;
    for (const GrupoDerechos &grupo : derechos())
        porColumna += int(grupo.derechos.size()) + 2;
    porColumna = porColumna / columnas + 1;
    QVBoxLayout *columna = nullptr;
    for (const GrupoDerechos &grupo : derechos()) {
        const int suyos = int(grupo.derechos.size()) + 2;
        if (!columna || (lleva + suyos / 2 > porColumna && abajo->count() < columnas)) {
            columna = new QVBoxLayout;
            columna->setSpacing(ui::margen);
            abajo->addLayout(columna, 1);
            lleva = 0;
        }
        lleva += suyos;
        auto *caja = new QGroupBox(grupo.titulo, solapa);
        auto *marcas = new QVBoxLayout(caja);
        marcas->setSpacing(2);
        for (const Derecho &derecho : grupo.derechos)
            marcas->addWidget(m_campos->crear(campo::bandera(derecho.columna, derecho.texto).dice(derecho.ayuda)));
        columna->addWidget(caja);
    }
    for (int i = 0; i < abajo->count(); ++i)
        static_cast<QVBoxLayout *>(abajo->itemAt(i)->layout())->addStretch(1);

    auto *todo = new QVBoxLayout(solapa);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->setSpacing(ui::margen);
    todo->addLayout(arriba);
    todo->addLayout(abajo, 1);
    return solapa;
}

QWidget *medicos::solapaOpciones()
{
    auto *solapa = new QWidget(solapas);
    QFormLayout *filas = formulario(solapa);
    ui::Campo::Opciones inicios;
    for (const VentanaInicio &ventana : ventanasInicio())
        inicios.emplace_back(ventana.titulo, ventana.numero);
    agregarFila(
        *filas,
        campo::lista(QStringLiteral("medisecre"), tr("Médico activo:"), QString()),
        botonAyuda(QStringLiteral("ayudamedicoactivo"), tituloAyuda, sobreMedicoActivo()));
    agregarFila(
        *filas,
        campo::eleccion(
            QStringLiteral("tipoespecialidadactiva"), tr("Especialidad con la que trabaja:"), especialidadesActivas()));
    agregarFila(*filas, campo::eleccion(QStringLiteral("ventanainicio"), tr("Al ingresar, abrir:"), inicios));
    filas->addItem(new QSpacerItem(0, ui::margen));
    const std::pair<QString, QString> marcas[]
        = {{QStringLiteral("cie10"), tr("Codifica los diagnósticos con CIE-10")},
           {QStringLiteral("verotrasconsultas"), tr("Ve las consultas de otros médicos")},
           {QStringLiteral("verfichareducida"), tr("Usa la ficha reducida del paciente")},
           {QStringLiteral("verestadisticareducida"), tr("Usa las estadísticas reducidas")}};
    for (const auto &[columna, texto] : marcas)
        agregarFila(*filas, campo::bandera(columna, texto));
    agregarFila(
        *filas,
        campo::bandera(QStringLiteral("moduloweb"), tr("Publica su agenda en dispositivos móviles")),
        botonAyuda(QStringLiteral("ayudamoduloweb"), informacion, sobreModuloWeb()));
    return solapa;
}

QString medicos::ayuda() const
{
    return tr(
        "Cada persona que trabaja con el sistema es un usuario. Los médicos tienen agenda; los demás trabajan para "
        "un médico, el médico activo.\n\nEn 'Permisos' se elige qué puede hacer cada uno, y con 'Copiar permisos "
        "de' se toman los de otro usuario. Los cambios se guardan con 'Guardar' (Ctrl+S).\n\nSiempre queda al "
        "menos un médico, y dos usuarios no pueden tener la misma clave.");
}

} // namespace users
