#include "patients/forms/nuevopaci.h"

#include "base/Fechas.h"
#include "db/Config.h"
#include "db/Connection.h"
#include "db/Entorno.h"
#include "db/Error.h"
#include "patients/AltaAmplia.h"
#include "patients/Numeracion.h"
#include "patients/Parecidos.h"
#include "patients/forms/FormularioAmplio.h"
#include "patients/forms/PanelParecidos.h"
#include "ui/BotonLista.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"
#include "ui/ListaCombo.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTimer>
#include <QToolButton>

#include <chrono>

namespace patients {

namespace {

template <typename Campo>
Campo *conNombre(Campo *campo, const char *nombre)
{
    campo->setObjectName(QLatin1String(nombre));
    return campo;
}

// The values of `tipoformunewpaci`.
constexpr int formaReducida = 1;

} // namespace

nuevopaci::nuevopaci(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("nuevopaci"), tr("Nuevo Paciente"))
    , opcionredu(conNombre(new QRadioButton(tr("&Reducido")), "opcionredu"))
    , opcionampli(conNombre(new QRadioButton(tr("Am&plio")), "opcionampli"))
    , numehistoriar(conNombre(new QLabel, "numehistoriar"))
    , apellidor(conNombre(new QLineEdit, "apellidor"))
    , nombresr(conNombre(new QLineEdit, "nombresr"))
    , dnir(conNombre(new QLineEdit, "dnir"))
    , telparr(conNombre(new QLineEdit, "telparr"))
    , coberturar(conNombre(new QComboBox, "coberturar"))
    , domicilior(conNombre(new QLineEdit, "domicilior"))
    , emailr(conNombre(new QLineEdit, "emailr"))
    , m_formas(new QStackedWidget(this))
    , m_campos(new QFormLayout)
    , m_amplio(new FormularioAmplio)
    , m_parecidos(new PanelParecidos(this))
    , m_pausa(new QTimer(this))
{
    auto *formas = new QHBoxLayout;
    formas->addWidget(new QLabel(tr("Formulario:"), this));
    formas->addWidget(opcionredu);
    formas->addWidget(opcionampli);
    formas->addStretch(1);
    m_formas->addWidget(crearReducido());
    m_formas->addWidget(m_amplio);

    const ui::FinDeFormulario fin = ui::finDeFormulario(this);
    guardar = fin.guardar;
    cancelar = fin.cancelar;

    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->setSpacing(ui::espacio);
    todo->addLayout(formas);
    todo->addWidget(m_formas);
    todo->addWidget(m_parecidos);
    todo->addStretch();
    todo->addLayout(fin.fila);
    setMinimumWidth(520);

    connect(opcionampli, &QRadioButton::toggled, this, &nuevopaci::cambiarForma);
    alPulsar(guardar, [this] { save(); });
    connect(cancelar, &QPushButton::clicked, this, [this] {
        m_descartar = true;
        close();
    });

    m_pausa->setSingleShot(true);
    m_pausa->setInterval(std::chrono::milliseconds(400));
    connect(m_pausa, &QTimer::timeout, this, &nuevopaci::buscarIguales);
    for (QLineEdit *linea : {apellidor, nombresr, dnir})
        connect(linea, &QLineEdit::textEdited, m_pausa, qOverload<>(&QTimer::start));
    connect(m_amplio, &FormularioAmplio::cambiado, m_pausa, qOverload<>(&QTimer::start));
    connect(m_parecidos, &PanelParecidos::elegido, this, [this](int nrohc, const QString &nombre) {
        terminar({{QStringLiteral("nrohc"), nrohc}, {QStringLiteral("nombre"), nombre}});
    });
}

QWidget *nuevopaci::crearReducido()
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
    listacoberturar
        = ui::botonLista(*this, ventanas(), *coberturar, QStringLiteral("Lista Coberturas"), tr("Coberturas Médicas"));
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
    auto *pagina = new QWidget;
    pagina->setLayout(m_campos);
    return pagina;
}

bool nuevopaci::preparar(const ui::Pedido &pedido)
{
    if (!aceptado(controlarAlta(entorno())))
        return false;
    refrescar();
    if (m_preparada)
        return true; // what was being typed stays
    limitarLargos();
    const bool reducida = db::Config(conexion()).numero(u"tipoformunewpaci") == formaReducida;
    (reducida ? opcionredu : opcionampli)->setChecked(true);
    const DatosReducidos pedidos{
        .apellido = pedido.datos.value(QStringLiteral("apellido")).toString(),
        .nombres = pedido.datos.value(QStringLiteral("nombres")).toString()};
    apellidor->setText(pedidos.apellido);
    nombresr->setText(pedidos.nombres);
    m_amplio->recibir(pedidos);
    m_inicial = huella();
    m_preparada = true;
    cambiarForma();
    return true;
}

void nuevopaci::cambiarForma()
{
    const bool amplia = opcionampli->isChecked();
    // Whoever changes the form half way finds there what she typed.
    if (m_preparada && amplia && m_formas->currentWidget() != m_amplio) {
        m_amplio->recibir(leer());
    } else if (m_preparada && !amplia && m_formas->currentWidget() == m_amplio) {
        const DatosReducidos datos = m_amplio->reducidos();
        apellidor->setText(datos.apellido);
        nombresr->setText(datos.nombres);
        dnir->setText(datos.dni);
        telparr->setText(datos.telefono);
        domicilior->setText(datos.domicilio);
        emailr->setText(datos.email);
        ui::elegirId(*coberturar, datos.idcobertura);
    }
    m_formas->setCurrentIndex(amplia ? 1 : 0);
    // The page that is not shown asks for no room.
    for (int i = 0; i < m_formas->count(); ++i) {
        const auto politica = i == m_formas->currentIndex() ? QSizePolicy::Preferred : QSizePolicy::Ignored;
        m_formas->widget(i)->setSizePolicy(politica, politica);
    }
    reacomodar();
    QWidget *primero = amplia ? m_amplio->findChild<QWidget *>(QStringLiteral("apellido")) : apellidor;
    if (m_preparada)
        primero->setFocus();
    buscarIguales();
}

void nuevopaci::refrescar()
{
    const QString numero = numeroHistoriaGenerado(conexion());
    numehistoriar->setText(numero);
    numehistoriar->setVisible(!numero.isEmpty());
    m_campos->labelForField(numehistoriar)->setVisible(!numero.isEmpty());
    m_amplio->cargar(conexion());
    m_amplio->setNumeroGenerado(numero);

    ui::cargarLista(
        *coberturar,
        conexion(),
        QStringLiteral("Lista Coberturas"),
        QStringLiteral("nombre"),
        {{tr("<Sin indicar>"), 0}});
}

bool nuevopaci::hayCambios() const { return m_preparada && !m_descartar && huella() != m_inicial; }

QString nuevopaci::huella() const
{
    const DatosReducidos redu = leer();
    const DatosAmplios amplio = m_amplio->leer();
    QStringList todo{
        redu.apellido,
        redu.nombres,
        redu.dni,
        redu.telefono,
        redu.domicilio,
        redu.email,
        QString::number(redu.idcobertura),
        amplio.apellido,
        amplio.apellido2,
        amplio.nombres,
        amplio.fecnac,
        amplio.dni,
        amplio.telpar,
        amplio.nroos,
        QString::number(amplio.sexo),
        QString::number(amplio.cobertura),
        QString::number(amplio.idcobertura),
        amplio.numehistoria.value_or(QString())};
    for (const QVariant &valor : amplio.demas)
        todo << valor.toString();
    return todo.join(QChar(0x1f));
}

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
    const Alta alta
        = opcionampli->isChecked() ? guardarAmplio(entorno(), m_amplio->leer()) : guardarReducido(entorno(), leer());
    if (!alta) {
        aceptado(alta.rechazo());
        return;
    }
    if (!*alta)
        return;
    const PacienteCreado &creado = **alta;
    terminar({{QStringLiteral("nrohc"), creado.nrohc}, {QStringLiteral("nombre"), creado.nombre}});
}

Conocido nuevopaci::conocido() const
{
    if (!opcionampli->isChecked())
        return {.apellido = apellidor->text(), .nombres = nombresr->text(), .dni = dnir->text()};
    const DatosAmplios datos = m_amplio->leer();
    return {
        .apellido = datos.apellido,
        .nombres = datos.nombres,
        .dni = datos.dni,
        .nacimiento = base::leerFecha(datos.fecnac).value_or(QDate())};
}

void nuevopaci::buscarIguales()
{
    // A hint: what goes wrong with it is not worth a message while somebody types.
    const bool habia = !m_parecidos->isHidden();
    try {
        m_parecidos->mostrar(buscarParecidos(conexion(), conocido()));
    } catch (const db::Error &) {
        m_parecidos->mostrar({});
    }
    if (m_parecidos->isHidden() == habia)
        reacomodar();
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
