#include "patients/forms/FormularioAmplio.h"

#include "db/Connection.h"
#include "patients/Ficha.h"
#include "patients/forms/OpcionCobertura.h"
#include "ui/CampoFecha.h"
#include "ui/Estilo.h"
#include "ui/ListaCombo.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace patients {

namespace campo = ui::campo;

FormularioAmplio::FormularioAmplio(QWidget *parent)
    : QWidget(parent)
    , m_campos(this)
    , m_cobertura(new OpcionCobertura(this))
{
    QWidget *identidad = m_campos.grupo(
        tr("Paciente"),
        {campo::texto(QStringLiteral("Apellido"), tr("&Apellido:")).llamado(QStringLiteral("apellido")),
         campo::texto(QStringLiteral("apellido2"), tr("Segundo apellido:")),
         campo::texto(QStringLiteral("Nombres"), tr("&Nombres:")).llamado(QStringLiteral("nombres")),
         campo::eleccion(QStringLiteral("sexo"), tr("Se&xo:"), {{tr("Femenino"), 0}, {tr("Masculino"), 1}}),
         campo::fecha(QStringLiteral("FeNac"), tr("&Fecha de nacimiento:")).llamado(QStringLiteral("fecnac")),
         campo::texto(QStringLiteral("DNI"), tr("&Doc. Identidad:")).llamado(QStringLiteral("dni")).con(16),
         campo::lista(QStringLiteral("idtipodoc"), tr("Tipo:"), QStringLiteral("Lista Tipo de documento"))
             .llamado(QStringLiteral("tipodoc")),
         campo::texto(QStringLiteral("numehistoria"), tr("Nº &Historia Clínica:")).con(16)},
        3);

    QWidget *contacto = m_campos.grupo(
        tr("Contacto"),
        {campo::texto(QStringLiteral("Tel"), tr("&Teléfono:")).llamado(QStringLiteral("telpar")),
         campo::texto(QStringLiteral("TelCelular"), tr("Ce&lular:")).llamado(QStringLiteral("telcel")),
         campo::texto(QStringLiteral("Email"), tr("&Email:")).llamado(QStringLiteral("email")),
         campo::texto(QStringLiteral("Domicilio"), tr("Do&micilio:")).llamado(QStringLiteral("domicilio")),
         campo::lista(QStringLiteral("idciudad"), tr("Ciudad:"), QStringLiteral("Lista Ciudad"))
             .llamado(QStringLiteral("ciudad")),
         campo::lista(QStringLiteral("idprovincia"), tr("Provincia:"), QStringLiteral("Lista Provincia"))
             .llamado(QStringLiteral("provincia")),
         campo::texto(QStringLiteral("referente"), tr("Referido por:")),
         campo::memo(QStringLiteral("Notas"), tr("Notas:")).llamado(QStringLiteral("notas")).con(2)},
        3);

    auto *cobertura = new QGroupBox(tr("Cobertura"), this);
    auto *opciones = new QHBoxLayout;
    opciones->addWidget(m_cobertura);
    opciones->addStretch(1);
    auto *datos = m_campos.plano(
        {campo::lista(QStringLiteral("idcobertura"), tr("Co&bertura:"), QStringLiteral("Lista Coberturas"))
             .llamado(QStringLiteral("cobertura")),
         campo::texto(QStringLiteral("NroOS"), tr("Nº Af&iliado:")).llamado(QStringLiteral("nroos")).con(24)},
        2);
    auto *dentro = new QVBoxLayout(cobertura);
    dentro->addLayout(opciones);
    dentro->addWidget(datos);

    setMinimumWidth(880);
    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(0, 0, 0, 0);
    todo->setSpacing(ui::espacio);
    todo->addWidget(identidad);
    todo->addWidget(contacto);
    todo->addWidget(cobertura);

    connect(m_cobertura, &OpcionCobertura::coberturaCambiada, this, [this] {
        mostrarCobertura();
        emit cambiado();
    });
    connect(&m_campos, &ui::Campos::cambiado, this, [this](const QString &columna) {
        // Who chooses an insurer has said that there is a coverage.
        if (columna == QStringLiteral("idcobertura") && entidad() > 0)
            m_cobertura->setCobertura(ConCobertura);
        emit cambiado();
    });
}

void FormularioAmplio::cargar(db::Connection &conexion)
{
    m_campos.limitar(conexion.columns(QStringLiteral("Pacientes")));
    m_campos.cargarListas(conexion);
}

void FormularioAmplio::setNumeroGenerado(const QString &numero)
{
    const QString escrito = texto("numehistoria");
    // What was typed by hand stays.
    if (escrito == m_generado && escrito != numero)
        m_campos.setValor(QStringLiteral("numehistoria"), numero);
    m_generado = numero;
}

QString FormularioAmplio::texto(const char *columna) const
{
    const auto *linea = qobject_cast<QLineEdit *>(m_campos.control(QLatin1String(columna)));
    Q_ASSERT(linea);
    return linea->text();
}

int FormularioAmplio::entidad() const
{
    const auto *lista = qobject_cast<QComboBox *>(m_campos.control(QStringLiteral("idcobertura")));
    return lista->currentText().trimmed().isEmpty() ? 0 : ui::idElegido(*lista, -1);
}

void FormularioAmplio::mostrarCobertura()
{
    for (const char *columna : {"idcobertura", "NroOS"})
        m_campos.control(QLatin1String(columna))->setEnabled(m_cobertura->cobertura() != SinCobertura);
}

DatosAmplios FormularioAmplio::leer() const
{
    DatosAmplios datos;
    if (texto("numehistoria") != m_generado)
        datos.numehistoria = texto("numehistoria");
    datos.apellido = texto("Apellido");
    datos.apellido2 = texto("apellido2");
    datos.nombres = texto("Nombres");
    const QVariant sexo = m_campos.valor(QStringLiteral("sexo"));
    datos.sexo = sexo.isNull() ? -1 : sexo.toInt();
    datos.fecnac = texto("FeNac");
    datos.dni = texto("DNI");
    datos.telpar = texto("Tel");
    datos.cobertura = m_cobertura->cobertura();
    if (datos.cobertura == ConCobertura)
        datos.idcobertura = entidad();
    if (datos.cobertura != SinCobertura)
        datos.nroos = texto("NroOS");
    for (const char *columna : {"TelCelular", "Domicilio", "Email", "referente"})
        datos.demas.insert(QLatin1String(columna), texto(columna));
    for (const char *columna : {"idtipodoc", "idciudad", "idprovincia"})
        datos.demas.insert(QLatin1String(columna), m_campos.valor(QLatin1String(columna)));
    datos.demas.insert(QStringLiteral("Notas"), m_campos.valor(QStringLiteral("Notas")));
    return datos;
}

void FormularioAmplio::recibir(const DatosReducidos &datos)
{
    m_campos.setValor(QStringLiteral("Apellido"), datos.apellido);
    m_campos.setValor(QStringLiteral("Nombres"), datos.nombres);
    m_campos.setValor(QStringLiteral("DNI"), datos.dni);
    m_campos.setValor(QStringLiteral("Tel"), datos.telefono);
    m_campos.setValor(QStringLiteral("Domicilio"), datos.domicilio);
    m_campos.setValor(QStringLiteral("Email"), datos.email);
    if (datos.idcobertura > 0)
        m_campos.setValor(QStringLiteral("idcobertura"), datos.idcobertura);
}

DatosReducidos FormularioAmplio::reducidos() const
{
    return {
        .apellido = texto("Apellido"),
        .nombres = texto("Nombres"),
        .dni = texto("DNI"),
        .telefono = texto("Tel"),
        .idcobertura = m_cobertura->cobertura() == ConCobertura ? qMax(0, entidad()) : 0,
        .domicilio = texto("Domicilio"),
        .email = texto("Email"),
    };
}

} // namespace patients
