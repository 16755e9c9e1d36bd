#include "patients/forms/histoclinica.h"

#include "base/Mensajes.h"
#include "db/Entorno.h"
#include "patients/Ficha.h"
#include "patients/HistoriaClinica.h"
#include "patients/ResumenPaciente.h"
#include "patients/forms/EncabezadoPaciente.h"
#include "printing/Armar.h"
#include "printing/forms/Ver.h"
#include "ui/Borrador.h"
#include "ui/Botones.h"
#include "ui/EditorTexto.h"
#include "ui/Estilo.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextEdit>

namespace patients {

namespace {

const QString nombreVentana = QStringLiteral("histoclinica");
const QString columnaHistoria = QStringLiteral("HC");

/// A short text that is mostly one of a few.
QComboBox *lista(const QStringList &usuales)
{
    auto *nueva = new QComboBox;
    nueva->setEditable(true);
    nueva->setInsertPolicy(QComboBox::NoInsert);
    nueva->addItems(usuales);
    nueva->setCurrentIndex(-1);
    nueva->setMinimumContentsLength(6);
    return nueva;
}

} // namespace

histoclinica::histoclinica(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, nombreVentana, tr("Historia Clínica"))
    , m_campos(this)
{
    construir();
    m_borrador = std::make_unique<ui::Borrador>(m_campos, entorno, nombreVentana, [this] {
        return tr("historia clínica de %1").arg(encabezado->nombre->text());
    });
    connect(this, &Ventana::cerrada, this, [this] { m_borrador->quitar(); });
    alPulsar(aceptar, [this] {
        if (save())
            close();
    });
    alPulsar(imprimir, [this] { print(); });
    connect(cancelar, &QPushButton::clicked, this, &QWidget::close);
}

histoclinica::~histoclinica() = default;

void histoclinica::construir()
{
    encabezado = new EncabezadoPaciente(this);
    GrupoSanguineo = lista({QStringLiteral("0"), QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("AB")});
    FactorSanguineo = lista({QStringLiteral("Rh +"), QStringLiteral("Rh -")});
    HC = new ui::EditorTexto(columnaHistoria, this);
    aceptar = ui::boton(this, QStringLiteral("aceptar"), tr("&Aceptar"), QStringLiteral("dialog-ok"));
    imprimir = ui::boton(this, QStringLiteral("imprimir"), tr("&Imprimir"), QStringLiteral("document-print"));
    cancelar = ui::boton(this, QStringLiteral("cancelar"), tr("&Cancelar"), QStringLiteral("dialog-cancel"));

    namespace campo = ui::campo;
    const ui::Campo grupo = campo::propio(QStringLiteral("GrupoSanguineo"), tr("&Grupo sanguíneo:"));
    const ui::Campo factor = campo::propio(QStringLiteral("FactorSanguineo"), tr("&Factor sanguíneo:"));
    m_campos.agregar(grupo, GrupoSanguineo);
    m_campos.agregar(factor, FactorSanguineo);
    QWidget *alertas = m_campos.plano({campo::memo(QStringLiteral("alergias"), tr("A&lertas:")).con(2)});
    m_campos.agregar(campo::propio(columnaHistoria, tr("Historia clínica")), HC);

    auto *sangre = new QGridLayout;
    int fila = 0;
    for (const auto &[rotulo, control] :
         {std::pair{grupo.etiqueta, GrupoSanguineo}, {factor.etiqueta, FactorSanguineo}}) {
        auto *texto = new QLabel(rotulo, this);
        texto->setBuddy(control);
        sangre->addWidget(texto, fila, 0);
        sangre->addWidget(control, fila++, 1);
    }
    auto *arriba = new QHBoxLayout;
    arriba->setSpacing(14);
    arriba->addLayout(sangre);
    arriba->addWidget(alertas, 1);

    auto *botones = new QHBoxLayout;
    botones->addWidget(imprimir);
    botones->addStretch(1);
    botones->addWidget(aceptar);
    botones->addWidget(cancelar);

    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->setSpacing(ui::espacio);
    todo->addWidget(encabezado);
    todo->addLayout(arriba);
    todo->addWidget(HC, 1);
    todo->addLayout(botones);
    setMinimumSize(820, 560);
}

bool histoclinica::preparar(const ui::Pedido &pedido)
{
    if (!aceptado(controlarHistoria(entorno())))
        return false;
    const auto pedida = PacienteAbierto::abrir(conexion(), pedido.datos.value(QStringLiteral("nrohc")).toInt());
    if (!pedida)
        return aceptado(pacienteAusente());
    if (m_paciente && *m_paciente == *pedida) {
        refrescar(); // what was being typed stays
        return true;
    }
    if (hayCambios()
        && !entorno().mensajes().pregunta(
            base::titulo::atencion,
            tr("Hay datos sin guardar (%1). ¿Desea dejar esta historia clínica de todos modos?")
                .arg(encabezado->nombre->text()),
            false))
        return false;
    if (m_paciente)
        m_borrador->quitar();
    abrir(*pedida);
    return true;
}

void histoclinica::abrir(const PacienteAbierto &paciente)
{
    // Everything is read before anything is shown.
    const QVector<db::Column> columnas = conexion().columns(QStringLiteral("Pacientes"));
    const db::Recordset fila = paciente.fila(conexion());
    for (const db::Column &columna : columnas)
        for (QComboBox *corta : {GrupoSanguineo, FactorSanguineo})
            if (columna.name == corta->objectName())
                corta->lineEdit()->setMaxLength(columna.size);
    m_paciente = paciente;
    m_campos.mostrar(fila.rows(), 0);
    HC->hoja()->setFocus();
    mostrarEncabezado();
    m_borrador->seguir(paciente.nrohc(), paciente.nrohc());
    intentar([this] { m_borrador->ofrecer(); });
}

void histoclinica::refrescar()
{
    if (!m_paciente)
        return;
    if (m_paciente->existe(conexion())) {
        const db::Recordset fila = m_paciente->fila(conexion());
        m_campos.actualizar(fila.rows(), 0);
    }
    mostrarEncabezado();
}

void histoclinica::mostrarEncabezado()
{
    if (const auto resumen = leerResumen(entorno(), *m_paciente))
        encabezado->mostrar(*resumen);
    else
        encabezado->mostrarEliminado(pacienteAusente().texto);
}

bool histoclinica::hayCambios() const { return m_paciente && m_campos.hayCambios(); }

QString histoclinica::ayuda() const
{
    return tr("HISTORIA CLÍNICA: Texto libre, con formato. 'Aceptar' guarda y cierra; Ctrl+S guarda y deja seguir "
              "escribiendo. Ctrl+P muestra la hoja como se va a imprimir.\n\n"
              "ALERTAS: Son las mismas de la ficha del paciente: se ven arriba de cada ventana suya.\n\n"
              "DATOS SIN GUARDAR: Lo escrito se conserva cada pocos segundos. Si la computadora se apaga antes de "
              "guardar, la próxima vez que abra la hoja se le ofrecerá recuperarlo.");
}

bool histoclinica::save()
{
    if (!aceptado(guardarHistoria(entorno(), *m_paciente, m_campos.cambios())))
        return false;
    m_campos.darPorGuardado();
    m_borrador->quitar();
    mostrarEncabezado();
    ventanas().refrescar({QStringLiteral("pacientes")});
    return true;
}

void histoclinica::print()
{
    printing::Contenido contenido;
    contenido.titulo = tr("Historia Clínica");
    contenido.subtitulo = encabezado->nombre->text();
    contenido.paciente = printing::leerDatosPaciente(conexion(), m_paciente->nrohc());
    contenido.html = historiaHtml(m_campos.valores());
    printing::ver(ventanas(), printing::armar(entorno(), contenido), this);
}

void histoclinica::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_S && event->modifiers() == Qt::ControlModifier) {
        event->accept();
        intentar([this] { (void)save(); });
        return;
    }
    Ventana::keyPressEvent(event);
}

} // namespace patients
