#include "patients/forms/pacientes.h"

#include "patients/forms/ColumnaRegistros.h"
#include "patients/forms/EncabezadoPaciente.h"
#include "patients/forms/FotoPaciente.h"
#include "patients/forms/OpcionCobertura.h"
#include "ui/BotonLista.h"
#include "ui/Botones.h"
#include "ui/CampoFecha.h"
#include "ui/Estilo.h"
#include "ui/ListaCombo.h"

#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabWidget>
#include <QToolButton>

namespace patients {

namespace campo = ui::campo;

namespace {

/// Puts a control of a grid and its companion side by side, where the control stood alone.
QHBoxLayout *alLado(QWidget *control, QWidget *companiero)
{
    QWidget *donde = control->parentWidget();
    auto *juntos = new QWidget(donde);
    delete donde->layout()->replaceWidget(control, juntos);
    auto *fila = new QHBoxLayout(juntos);
    fila->setContentsMargins(0, 0, 0, 0);
    fila->setSpacing(4);
    fila->addWidget(control, 1);
    fila->addWidget(companiero);
    return fila;
}

} // namespace

void pacientes::construir()
{
    auto *izquierda = new QVBoxLayout;
    izquierda->setSpacing(ui::espacio);
    izquierda->addWidget(construirDatos());
    izquierda->addWidget(construirSolapas(), 1);
    auto *formulario = new QWidget;
    formulario->setLayout(izquierda);
    izquierda->setContentsMargins(0, 0, 0, 0);
    auto *visor = new QScrollArea(this);
    visor->setWidget(formulario);
    visor->setWidgetResizable(true);
    visor->setFrameShape(QFrame::NoFrame);
    visor->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // Only its height gives way on a small screen.
    visor->setMinimumWidth(formulario->minimumSizeHint().width() + visor->verticalScrollBar()->sizeHint().width());

    foto = new FotoPaciente(entorno(), this);
    registros = new ColumnaRegistros(this);
    auto *derecha = new QVBoxLayout;
    derecha->setSpacing(ui::espacio);
    derecha->addWidget(foto);
    derecha->addWidget(registros, 1);

    auto *medio = new QHBoxLayout;
    medio->setSpacing(10);
    medio->addWidget(visor, 1);
    medio->addLayout(derecha);

    guardar = ui::boton(this, QStringLiteral("guardar"), tr("&Guardar"), QStringLiteral("document-save"));
    nuevo = ui::boton(this, QStringLiteral("nuevo"), tr("Nue&vo"), QStringLiteral("contact-new"));
    impri = ui::boton(this, QStringLiteral("impri"), tr("&Imprimir"), QStringLiteral("document-print"));
    cerrar = ui::boton(this, QStringLiteral("cerrar"), tr("Cerrar"), QStringLiteral("dialog-close"));
    estado = new QLabel(this);
    estado->setObjectName(QStringLiteral("estado"));
    QPalette tenue = estado->palette();
    tenue.setColor(QPalette::WindowText, ui::color::tenue());
    estado->setPalette(tenue);
    auto *botones = new QHBoxLayout;
    botones->addWidget(guardar);
    botones->addWidget(nuevo);
    botones->addWidget(impri);
    botones->addSpacing(10);
    botones->addWidget(estado, 1);
    botones->addWidget(cerrar);

    encabezado = new EncabezadoPaciente(this);
    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->setSpacing(ui::espacio);
    todo->addWidget(encabezado);
    todo->addLayout(medio, 1);
    todo->addLayout(botones);
    setMinimumHeight(480);
}

QWidget *pacientes::construirDatos()
{
    QGroupBox *identidad = m_campos.grupo(
        tr("Paciente"),
        {campo::texto(QStringLiteral("Apellido"), tr("&Apellido:")),
         campo::lista(QStringLiteral("idtipodoc"), tr("Tipo de doc.:"), QStringLiteral("Lista Tipo de documento")),
         campo::texto(QStringLiteral("apellido2"), tr("2º apellido:")),
         campo::texto(QStringLiteral("DNI"), tr("Nº &documento:")),
         campo::texto(QStringLiteral("Nombres"), tr("Nom&bres:")),
         campo::fecha(QStringLiteral("FeNac"), tr("Nacimi&ento:")),
         campo::texto(QStringLiteral("numehistoria"), tr("Nº H.C.:")),
         campo::eleccion(QStringLiteral("sexo"), tr("Se&xo:"), {{tr("Femenino"), 0}, {tr("Masculino"), 1}}).con(14)},
        2);
    QGroupBox *contacto = m_campos.grupo(
        tr("Contacto"),
        {campo::texto(QStringLiteral("Tel"), tr("Te&léfono:")),
         campo::texto(QStringLiteral("Domicilio"), tr("Domicilio:")),
         campo::texto(QStringLiteral("TelCelular"), tr("Celular:")),
         campo::texto(QStringLiteral("CP"), tr("Código postal:")).con(12),
         campo::texto(QStringLiteral("TelLaboral"), tr("Laboral:")),
         campo::lista(QStringLiteral("idciudad"), tr("Ciudad:"), QStringLiteral("Lista Ciudad")),
         campo::texto(QStringLiteral("Email"), tr("Email:")),
         campo::lista(QStringLiteral("idprovincia"), tr("Provincia:"), QStringLiteral("Lista Provincia"))},
        2);

    auto *seguro = new QGroupBox(tr("Cobertura médica"), this);
    cobertura = new OpcionCobertura(this);
    ui::Campo eleccion = campo::propio(QStringLiteral("cobertura"), tr("Cobertura:"));
    eleccion.opciones
        = {{tr("Con cobertura"), ConCobertura},
           {tr("Sin cobertura"), SinCobertura},
           {tr("Sin indicar"), CoberturaSinIndicar}};
    m_campos.agregar(eleccion, cobertura);
    QWidget *aseguradora = m_campos.plano(
        {campo::lista(QStringLiteral("idcobertura"), tr("Cobertura:"), QStringLiteral("Lista Coberturas")),
         campo::texto(QStringLiteral("NroOS"), tr("Nº a&filiado:"))},
        2);
    if (auto *rejilla = qobject_cast<QGridLayout *>(aseguradora->layout()))
        rejilla->setColumnStretch(1, 2); // the names of insurers are long
    auto *fila = new QHBoxLayout(seguro);
    fila->setSpacing(12);
    fila->addWidget(cobertura);
    fila->addWidget(aseguradora, 1);

    conLista(QStringLiteral("idtipodoc"), tr("Tipo de Documento de Identidad"));
    conLista(QStringLiteral("idciudad"), tr("Ciudad"));
    conLista(QStringLiteral("idprovincia"), tr("Provincia / Departamento"));
    conLista(QStringLiteral("idcobertura"), tr("Coberturas Médicas"));
    conEdad(QStringLiteral("FeNac"));

    for (QGroupBox *caja : {identidad, contacto, seguro})
        caja->layout()->setContentsMargins(9, 4, 9, 6);
    auto *siempre = new QWidget(this);
    auto *todo = new QVBoxLayout(siempre);
    todo->setContentsMargins(0, 0, 0, 0);
    todo->setSpacing(ui::espacio);
    todo->addWidget(identidad);
    todo->addWidget(contacto);
    todo->addWidget(seguro);
    return siempre;
}

QWidget *pacientes::construirSolapas()
{
    solapas = new QTabWidget(this);
    solapas->setObjectName(QStringLiteral("solapas"));
    const auto pagina = [this](const QString &titulo, const QList<QWidget *> &partes) {
        auto *hoja = new QWidget(solapas);
        auto *columna = new QVBoxLayout(hoja);
        columna->setSpacing(ui::espacio);
        for (QWidget *parte : partes)
            columna->addWidget(parte);
        columna->addStretch(1);
        solapas->addTab(hoja, titulo);
    };

    pagina(
        tr("No&tas y alertas"),
        {m_campos.plano(
            {campo::memo(QStringLiteral("alergias"), tr("Alergias y alertas:")).con(3),
             campo::memo(QStringLiteral("Notas"), tr("Notas importantes:")).con(3)},
            1)});
    const QString inactivo = tr("Queda con todos sus datos, pero fuera de la búsqueda de siempre.");
    pagina(
        tr("Más dato&s"),
        {m_campos.plano(
            {campo::lista(QStringLiteral("idestadocivil"), tr("Estado civil:"), QStringLiteral("Lista Estado civil")),
             campo::lista(QStringLiteral("idpais"), tr("País:"), QStringLiteral("Lista Pais")),
             campo::lista(QStringLiteral("idocupacion"), tr("Ocupación:"), QStringLiteral("Lista Ocupacion")),
             campo::lista(
                 QStringLiteral("idestatus"), tr("Estatus en el país:"), QStringLiteral("Lista Estatus en el pais")),
             campo::texto(QStringLiteral("detallesocupacion"), tr("Detalles ocupación:")),
             campo::lista(QStringLiteral("idetnia"), tr("Etnia:"), QStringLiteral("Lista Etnia")),
             campo::texto(QStringLiteral("referente"), tr("Referido por:")),
             campo::fecha(QStringLiteral("ultimacons"), tr("Última consulta:")),
             campo::bandera(QStringLiteral("pacienteinactivo"), tr("Paciente inactivo")).dice(inactivo),
             campo::texto(QStringLiteral("motivoinactividad"), tr("Motivo:"))},
            2)});
    pagina(
        tr("Fa&milia"),
        {m_campos.plano(
             {campo::texto(QStringLiteral("nombrepadre"), tr("Padre:")),
              campo::texto(QStringLiteral("nombremadre"), tr("Madre:")),
              campo::fecha(QStringLiteral("nacipadre"), tr("Nac. del padre:")),
              campo::fecha(QStringLiteral("nacimadre"), tr("Nac. de la madre:")),
              campo::lista(
                  QStringLiteral("idocupacionpadre"), tr("Ocup. del padre:"), QStringLiteral("Lista Ocupacion")),
              campo::lista(
                  QStringLiteral("idocupacionmadre"), tr("Ocup. de la madre:"), QStringLiteral("Lista Ocupacion")),
              campo::texto(QStringLiteral("horashogarpadre"), tr("Horas en el hogar:")),
              campo::texto(QStringLiteral("horashogarmadre"), tr("Horas en el hogar:"))},
             2),
         m_campos.plano(
             {campo::texto(QStringLiteral("nrohermanos"), tr("Hermanos:")).con(5),
              campo::texto(QStringLiteral("edadhermanos"), tr("Edades:")),
              campo::texto(QStringLiteral("nrohermanas"), tr("Hermanas:")).con(5),
              campo::texto(QStringLiteral("edadhermanas"), tr("Edades:"))},
             4),
         m_campos.plano({campo::memo(QStringLiteral("detallesfamilia"), tr("Detalles:")).con(2)}, 1)});
    pagina(
        tr("&Persona de contacto"),
        {m_campos.plano(
            {campo::texto(QStringLiteral("ape1contacto"), tr("Apellido:")),
             campo::texto(QStringLiteral("telparcontacto"), tr("Teléfono:")),
             campo::texto(QStringLiteral("ape2contacto"), tr("2º apellido:")),
             campo::texto(QStringLiteral("telcelcontacto"), tr("Celular:")),
             campo::texto(QStringLiteral("nombrecontacto"), tr("Nombres:")),
             campo::texto(QStringLiteral("tellabcontacto"), tr("Laboral:")),
             campo::lista(
                 QStringLiteral("idrelacion"), tr("Relación:"), QStringLiteral("Lista Relacion con el paciente"))},
            2)});

    for (const auto &[columna, titulo] : std::initializer_list<std::pair<const char *, QString>>{
             {"idestadocivil", tr("Estado Civil")},
             {"idpais", tr("País")},
             {"idocupacion", tr("Ocupación")},
             {"idestatus", tr("Estatus en el país")},
             {"idetnia", tr("Etnia")},
             {"idocupacionpadre", tr("Ocupación")},
             {"idocupacionmadre", tr("Ocupación")},
             {"idrelacion", tr("Relación con el Paciente")}})
        conLista(QLatin1String(columna), titulo);
    conEdad(QStringLiteral("nacipadre"));
    conEdad(QStringLiteral("nacimadre"));
    return solapas;
}

/// The button beside a list that opens the maintenance of its table.
void pacientes::conLista(const QString &columna, const QString &titulo)
{
    auto *lista = qobject_cast<QComboBox *>(m_campos.control(columna));
    const auto &todos = m_campos.campos();
    const auto suyo
        = std::find_if(todos.cbegin(), todos.cend(), [&](const ui::Campo &c) { return c.columna == columna; });
    alLado(lista, ui::botonLista(*this, ventanas(), *lista, suyo->tabla, titulo));
}

void pacientes::conEdad(const QString &columna)
{
    auto *edad = new QLabel(this);
    edad->setObjectName(QStringLiteral("edad") + columna);
    m_edades.insert(columna, edad);
    QWidget *fecha = m_campos.control(columna);
    alLado(fecha, edad)->addStretch(1);
}

} // namespace patients
