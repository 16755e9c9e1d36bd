#include "patients/forms/nuevopaci.h"

#include "db/Connection.h"
#include "db/Entorno.h"
#include "patients/Numeracion.h"
#include "ui/BotonLista.h"
#include "ui/Botones.h"
#include "ui/ListaCombo.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

namespace patients {

namespace {

template <typename Campo>
Campo *conNombre(Campo *campo, const char *nombre)
{
    campo->setObjectName(QLatin1String(nombre));
    return campo;
}

} // namespace

nuevopaci::nuevopaci(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("nuevopaci"), tr("Nuevo Paciente"))
    , numehistoria(conNombre(new QLabel, "numehistoria"))
    , apellidor(conNombre(new QLineEdit, "apellidor"))
    , nombresr(conNombre(new QLineEdit, "nombresr"))
    , dnir(conNombre(new QLineEdit, "dnir"))
    , telparr(conNombre(new QLineEdit, "telparr"))
    , coberturar(conNombre(new QComboBox, "coberturar"))
    , domicilior(conNombre(new QLineEdit, "domicilior"))
    , emailr(conNombre(new QLineEdit, "emailr"))
    , m_campos(new QFormLayout)
{
    QFont destacada = numehistoria->font();
    destacada.setBold(true);
    numehistoria->setFont(destacada);
    numehistoria->setTextInteractionFlags(Qt::TextSelectableByMouse);
    coberturar->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    coberturar->setMinimumContentsLength(30);
    dnir->setMaximumWidth(200);
    telparr->setMaximumWidth(200);

    m_campos->addRow(tr("Nº Historia Clínica:"), numehistoria);
    m_campos->addRow(tr("&Apellido:"), apellidor);
    m_campos->addRow(tr("&Nombres:"), nombresr);
    m_campos->addRow(tr("&Doc. Identidad:"), dnir);
    m_campos->addRow(tr("&Teléfono:"), telparr);
    listacoberturar
        = ui::botonLista(*this, ventanas, *coberturar, QStringLiteral("Lista Coberturas"), tr("Coberturas Médicas"));
    auto *cobertura = new QHBoxLayout;
    cobertura->addWidget(coberturar, 1);
    cobertura->addWidget(listacoberturar);
    m_campos->addRow(tr("C&obertura:"), cobertura);
    qobject_cast<QLabel *>(m_campos->labelForField(cobertura))->setBuddy(coberturar); // a layout carries none
    m_campos->addRow(tr("Do&micilio:"), domicilior);
    m_campos->addRow(tr("&Email:"), emailr);
    m_campos->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_campos->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);

    const ui::FinDeFormulario fin = ui::finDeFormulario(this);
    guardar = fin.guardar;
    cancelar = fin.cancelar;

    auto *todo = new QVBoxLayout(this);
    todo->addLayout(m_campos);
    todo->addSpacing(8);
    todo->addStretch();
    todo->addLayout(fin.fila);
    setMinimumWidth(480);

    alPulsar(guardar, [this] { save(); });
    connect(cancelar, &QPushButton::clicked, this, [this] {
        m_descartar = true;
        close();
    });
}

bool nuevopaci::preparar(const ui::Pedido &pedido)
{
    if (!aceptado(controlarAlta(entorno())))
        return false;
    refrescar();
    if (m_preparada)
        return true; // what was being typed stays
    limitarLargos();
    apellidor->setText(pedido.datos.value(QStringLiteral("apellido")).toString());
    nombresr->setText(pedido.datos.value(QStringLiteral("nombres")).toString());
    apellidor->setFocus();
    m_inicial = leer();
    m_preparada = true;
    return true;
}

void nuevopaci::refrescar()
{
    const QString numero = numeroHistoriaGenerado(conexion());
    numehistoria->setText(numero);
    numehistoria->setVisible(!numero.isEmpty());
    m_campos->labelForField(numehistoria)->setVisible(!numero.isEmpty());

    ui::cargarLista(
        *coberturar,
        conexion(),
        QStringLiteral("Lista Coberturas"),
        QStringLiteral("nombre"),
        {{tr("<Sin indicar>"), 0}});
}

bool nuevopaci::hayCambios() const { return m_preparada && !m_descartar && leer() != m_inicial; }

QString nuevopaci::ayuda() const
{
    return tr("Ingrese al menos el Apellido y los Nombres del paciente y presione 'Guardar'. Los demás datos se pueden "
              "completar después en la ficha del paciente.");
}

DatosReducidos nuevopaci::leer() const
{
    return {
        .apellido = apellidor->text(),
        .nombres = nombresr->text(),
        .dni = dnir->text(),
        .telefono = telparr->text(),
        .idcobertura = coberturar->currentText().trimmed().isEmpty() ? 0 : ui::idElegido(*coberturar, -1),
        .domicilio = domicilior->text(),
        .email = emailr->text(),
    };
}

void nuevopaci::save()
{
    const Alta alta = guardarReducido(entorno(), leer());
    if (!alta) {
        aceptado(alta.rechazo());
        return;
    }
    if (!*alta)
        return;
    const PacienteCreado &creado = **alta;
    terminar({{QStringLiteral("nrohc"), creado.nrohc}, {QStringLiteral("nombre"), creado.nombre}});
}

void nuevopaci::limitarLargos()
{
    const std::pair<QLineEdit *, QLatin1String> campos[] = {
        {apellidor, QLatin1String("Apellido")},
        {nombresr, QLatin1String("Nombres")},
        {dnir, QLatin1String("DNI")},
        {telparr, QLatin1String("Tel")},
        {domicilior, QLatin1String("Domicilio")},
        {emailr, QLatin1String("Email")},
    };
    for (const db::Column &columna : conexion().columns(QStringLiteral("Pacientes")))
        for (const auto &[campo, nombre] : campos)
            if (columna.size > 0 && nombre.compare(columna.name, Qt::CaseInsensitive) == 0)
                campo->setMaxLength(columna.size);
}

} // namespace patients
