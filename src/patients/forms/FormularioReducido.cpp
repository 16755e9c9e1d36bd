#include "patients/forms/FormularioReducido.h"

#include "db/Connection.h"
#include "patients/Numeracion.h"
#include "patients/Parecidos.h"
#include "ui/BotonLista.h"
#include "ui/ListaCombo.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
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

FormularioReducido::FormularioReducido(ui::Ventana &ventana, ui::Ventanas &ventanas)
    : numehistoriar(conNombre(new QLabel, "numehistoriar"))
    , apellidor(conNombre(new QLineEdit, "apellidor"))
    , nombresr(conNombre(new QLineEdit, "nombresr"))
    , dnir(conNombre(new QLineEdit, "dnir"))
    , telparr(conNombre(new QLineEdit, "telparr"))
    , coberturar(conNombre(new QComboBox, "coberturar"))
    , listacoberturar(
          ui::botonLista(ventana, ventanas, *coberturar, QStringLiteral("Lista Coberturas"), tr("Coberturas Médicas")))
    , domicilior(conNombre(new QLineEdit, "domicilior"))
    , emailr(conNombre(new QLineEdit, "emailr"))
    , m_campos(new QFormLayout(this))
{
    QFont destacada = numehistoriar->font();
    destacada.setBold(true);
    numehistoriar->setFont(destacada);
    numehistoriar->setTextInteractionFlags(Qt::TextSelectableByMouse);
    coberturar->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    coberturar->setMinimumContentsLength(30);
    dnir->setMaximumWidth(200);
    telparr->setMaximumWidth(200);

    m_campos->addRow(tr("Nº Historia Clínica:"), numehistoriar);
    m_campos->addRow(tr("&Apellido:"), apellidor);
    m_campos->addRow(tr("&Nombres:"), nombresr);
    m_campos->addRow(tr("&Doc. Identidad:"), dnir);
    m_campos->addRow(tr("&Teléfono:"), telparr);
    auto *cobertura = new QHBoxLayout;
    cobertura->addWidget(coberturar, 1);
    cobertura->addWidget(listacoberturar);
    m_campos->addRow(tr("C&obertura:"), cobertura);
    qobject_cast<QLabel *>(m_campos->labelForField(cobertura))->setBuddy(coberturar); // a layout carries none
    m_campos->addRow(tr("Do&micilio:"), domicilior);
    m_campos->addRow(tr("&Email:"), emailr);
    m_campos->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_campos->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    m_campos->setContentsMargins(0, 0, 0, 0);
    for (QLineEdit *linea : {apellidor, nombresr, dnir})
        connect(linea, &QLineEdit::textEdited, this, &FormularioReducido::cambiado);
}

void FormularioReducido::cargar(db::Connection &conexion)
{
    const QString numero = numeroHistoriaGenerado(conexion);
    numehistoriar->setText(numero);
    numehistoriar->setVisible(!numero.isEmpty());
    m_campos->labelForField(numehistoriar)->setVisible(!numero.isEmpty());
    ui::cargarLista(
        *coberturar,
        conexion,
        QStringLiteral("Lista Coberturas"),
        QStringLiteral("nombre"),
        {{tr("<Sin indicar>"), 0}});

    const std::pair<QLineEdit *, QLatin1String> campos[] = {
        {apellidor, QLatin1String("Apellido")},
        {nombresr, QLatin1String("Nombres")},
        {dnir, QLatin1String("DNI")},
        {telparr, QLatin1String("Tel")},
        {domicilior, QLatin1String("Domicilio")},
        {emailr, QLatin1String("Email")},
    };
    for (const db::Column &columna : conexion.columns(QStringLiteral("Pacientes")))
        for (const auto &[campo, nombre] : campos)
            if (columna.size > 0 && nombre.compare(columna.name, Qt::CaseInsensitive) == 0)
                campo->setMaxLength(columna.size);
}

DatosReducidos FormularioReducido::leer() const
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

void FormularioReducido::mostrar(const DatosReducidos &datos)
{
    apellidor->setText(datos.apellido);
    nombresr->setText(datos.nombres);
    dnir->setText(datos.dni);
    telparr->setText(datos.telefono);
    domicilior->setText(datos.domicilio);
    emailr->setText(datos.email);
    ui::elegirId(*coberturar, datos.idcobertura);
}

Conocido FormularioReducido::conocido() const
{
    return {.apellido = apellidor->text(), .nombres = nombresr->text(), .dni = dnir->text()};
}

} // namespace patients
