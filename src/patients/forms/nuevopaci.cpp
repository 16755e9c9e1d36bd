#include "patients/forms/nuevopaci.h"

#include "base/Fechas.h"
#include "db/Config.h"
#include "db/Connection.h"
#include "db/Entorno.h"
#include "patients/AltaAmplia.h"
#include "patients/Numeracion.h"
#include "patients/Parecidos.h"
#include "patients/forms/FormularioAmplio.h"
#include "patients/forms/FormularioReducido.h"
#include "patients/forms/PanelParecidos.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTimer>

#include <chrono>

namespace patients {

namespace {

template <typename Campo>
Campo *conNombre(Campo *campo, const char *nombre)
{
    campo->setObjectName(QLatin1String(nombre));
    return campo;
}

// The values of `tipoformunewpaci`: 0 is the reduced form.
constexpr int formaAmplia = 1;

} // namespace

nuevopaci::nuevopaci(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("nuevopaci"), tr("Nuevo Paciente"))
    , opcionredu(conNombre(new QRadioButton(tr("&Reducido")), "opcionredu"))
    , opcionampli(conNombre(new QRadioButton(tr("Am&plio")), "opcionampli"))
    , m_formas(new QStackedWidget(this))
    , m_reducido(new FormularioReducido(*this, ventanas))
    , m_amplio(new FormularioAmplio)
    , m_parecidos(new PanelParecidos(this))
    , m_pausa(new QTimer(this))
{
    auto *formas = new QHBoxLayout;
    formas->addWidget(new QLabel(tr("Formulario:"), this));
    formas->addWidget(opcionredu);
    formas->addWidget(opcionampli);
    formas->addStretch(1);
    // Its fields are the window's own.
    numehistoriar = m_reducido->numehistoriar;
    apellidor = m_reducido->apellidor;
    nombresr = m_reducido->nombresr;
    dnir = m_reducido->dnir;
    telparr = m_reducido->telparr;
    coberturar = m_reducido->coberturar;
    listacoberturar = m_reducido->listacoberturar;
    domicilior = m_reducido->domicilior;
    emailr = m_reducido->emailr;
    m_formas->addWidget(m_reducido);
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
    connect(m_reducido, &FormularioReducido::cambiado, m_pausa, qOverload<>(&QTimer::start));
    connect(m_amplio, &FormularioAmplio::cambiado, m_pausa, qOverload<>(&QTimer::start));
    connect(m_parecidos, &PanelParecidos::elegido, this, [this](int nrohc, const QString &nombre) {
        terminar({{QStringLiteral("nrohc"), nrohc}, {QStringLiteral("nombre"), nombre}});
    });
}

bool nuevopaci::preparar(const ui::Pedido &pedido)
{
    if (!aceptado(controlarAlta(entorno())))
        return false;
    refrescar();
    if (m_preparada)
        return true; // what was being typed stays
    const bool amplia = db::Config(conexion()).numero(u"tipoformunewpaci") == formaAmplia;
    (amplia ? opcionampli : opcionredu)->setChecked(true);
    const DatosReducidos pedidos{
        .apellido = pedido.datos.value(QStringLiteral("apellido")).toString(),
        .nombres = pedido.datos.value(QStringLiteral("nombres")).toString()};
    m_reducido->mostrar(pedidos);
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
        m_amplio->recibir(m_reducido->leer());
    } else if (m_preparada && !amplia && m_formas->currentWidget() == m_amplio) {
        m_reducido->mostrar(m_amplio->reducidos());
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
    m_reducido->cargar(conexion());
    m_amplio->cargar(conexion());
    m_amplio->setNumeroGenerado(numeroHistoriaGenerado(conexion()));
}

bool nuevopaci::hayCambios() const { return m_preparada && !m_descartar && huella() != m_inicial; }

QString nuevopaci::huella() const
{
    const DatosReducidos redu = m_reducido->leer();
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

void nuevopaci::save()
{
    const Alta alta = opcionampli->isChecked() ? guardarAmplio(entorno(), m_amplio->leer())
                                               : guardarReducido(entorno(), m_reducido->leer());
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
        return m_reducido->conocido();
    const DatosAmplios datos = m_amplio->leer();
    return {
        .apellido = datos.apellido,
        .nombres = datos.nombres,
        .dni = datos.dni,
        .nacimiento = base::leerFecha(datos.fecnac).value_or(QDate())};
}

void nuevopaci::buscarIguales()
{
    if (m_parecidos->buscar(conexion(), conocido()))
        reacomodar();
}

} // namespace patients
