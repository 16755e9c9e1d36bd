#include "patients/forms/pacientes.h"

#include "base/Clock.h"
#include "base/Mensajes.h"
#include "db/Entorno.h"
#include "patients/FichaHtml.h"
#include "patients/Foto.h"
#include "patients/NuevoPaciente.h"
#include "patients/Numeracion.h"
#include "patients/RegistrosPaciente.h"
#include "patients/forms/CamaraFoto.h"
#include "patients/forms/ColumnaRegistros.h"
#include "patients/forms/EncabezadoPaciente.h"
#include "patients/forms/FotoPaciente.h"
#include "patients/forms/OpcionCobertura.h"
#include "printing/Armar.h"
#include "printing/forms/Ver.h"
#include "ui/Borrador.h"
#include "ui/CampoFecha.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>

namespace patients {

namespace {

const QString nombreVentana = QStringLiteral("pacientes");
const QString columnaCobertura = QStringLiteral("cobertura");
const QString columnaAseguradora = QStringLiteral("idcobertura");

QString ayudaDeActivar()
{
    return QStringLiteral(
        "IMPRIMIR Y ACTIVAR CONSULTAS, ANTECEDENTES E HISTORIA CLÍNICA: Si está ingresando un nuevo paciente, entonces "
        "para poder almacenar datos en las fichas de ' Consultas, Antecedentes e Historia Clínica ', primero debe "
        "GUARDAR por primera vez al paciente.");
}

} // namespace

pacientes::pacientes(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, nombreVentana, tr("Ficha del Paciente"))
    , m_campos(this)
    , m_camara(CamaraFoto::tomar)
{
    construir();
    m_borrador = std::make_unique<ui::Borrador>(m_campos, entorno, nombreVentana, [this] { return titulo(); });
    connect(&m_campos, &ui::Campos::cambiado, this, &pacientes::alCambiar);
    connect(this, &Ventana::cerrada, this, [this] { m_borrador->quitar(); });
    alPulsar(guardar, [this] { save(); });
    alPulsar(nuevo, [this] { crear(); });
    alPulsar(impri, [this] { print(); });
    connect(cerrar, &QPushButton::clicked, this, &QWidget::close);
    connect(registros, &ColumnaRegistros::pulsado, this, [this](const BotonRegistro &boton) {
        intentar([&] { abrirRegistro(boton); });
    });
    connect(foto, &FotoPaciente::elegir, this, [this] { intentar([this] { elegirArchivoFoto(); }); });
    connect(foto, &FotoPaciente::tomar, this, [this] { intentar([this] { tomarFoto(); }); });
    connect(foto, &FotoPaciente::quitar, this, [this] {
        intentar([this] {
            const auto quitada = eliminarFoto(this->entorno(), *m_paciente);
            if (!quitada)
                (void)aceptado(quitada.rechazo());
            foto->mostrar(m_paciente);
        });
    });
}

pacientes::~pacientes() = default;

bool pacientes::preparar(const ui::Pedido &pedido)
{
    std::optional<PacienteAbierto> pedida;
    if (const QString clave = QStringLiteral("nrohc"); pedido.datos.contains(clave)) {
        pedida = PacienteAbierto::abrir(conexion(), pedido.datos.value(clave).toInt());
        if (!pedida)
            return aceptado(pacienteAusente());
        if (m_preparada && pedida == m_paciente) {
            refrescar(); // what was being typed stays
            return true;
        }
    } else if (!aceptado(controlarAlta(entorno()))) {
        return false;
    }
    if (m_preparada && !aceptaDejar())
        return false;
    abrir(pedida);
    return true;
}

void pacientes::abrir(const std::optional<PacienteAbierto> &paciente)
{
    // Everything is read before anything is shown: a failure half way leaves the former patient whole.
    if (!m_preparada)
        m_campos.limitar(conexion().columns(QStringLiteral("Pacientes")));
    m_campos.cargarListas(conexion());
    const auto fila = paciente ? std::optional(paciente->fila(conexion())) : std::nullopt;
    const QString proximo = paciente ? QString() : numeroHistoriaGenerado(conexion());

    m_paciente = paciente;
    if (fila)
        m_campos.mostrar(fila->rows(), 0);
    else
        m_campos.mostrar({{QStringLiteral("numehistoria"), proximo}});
    m_preparada = true;
    estado->clear();
    foto->mostrar(m_paciente);
    registros->setActiva(m_paciente.has_value(), ayudaDeActivar());
    impri->setEnabled(m_paciente.has_value());
    solapas->setCurrentIndex(0);
    m_campos.control(QStringLiteral("Apellido"))->setFocus(Qt::OtherFocusReason);
    mostrarCobertura();
    mostrarEdades();
    mostrarEncabezado();
    const int nrohc = m_paciente ? m_paciente->nrohc() : 0;
    m_borrador->seguir(nrohc, nrohc);
    intentar([this] { m_borrador->ofrecer(); });
}

void pacientes::refrescar()
{
    if (!m_preparada)
        return;
    m_campos.cargarListas(conexion());
    if (m_paciente && m_paciente->existe(conexion())) {
        const db::Recordset fila = m_paciente->fila(conexion());
        m_campos.actualizar(fila.rows(), 0);
    }
    mostrarCobertura();
    mostrarEdades();
    mostrarEncabezado();
}

void pacientes::mostrarEncabezado()
{
    if (!m_paciente) {
        encabezado->mostrarNadie(tr("Nuevo paciente"));
        return;
    }
    if (const auto resumen = leerResumen(entorno(), *m_paciente))
        encabezado->mostrar(*resumen);
    else
        encabezado->mostrarEliminado(pacienteAusente().texto);
}

void pacientes::mostrarEdades()
{
    const QDate hoy = entorno().clock().today();
    for (auto it = m_edades.cbegin(); it != m_edades.cend(); ++it) {
        auto *fecha = qobject_cast<ui::CampoFecha *>(m_campos.control(it.key()));
        fecha->setHoy(hoy);
        it.value()->setText(edadTexto(fecha->fecha(), hoy));
    }
}

void pacientes::mostrarCobertura()
{
    cobertura->setPuedeFaltar(m_campos.original(columnaCobertura).toInt() == CoberturaSinIndicar);
    m_campos.control(columnaAseguradora)->setEnabled(cobertura->cobertura() != SinCobertura);
    m_campos.control(QStringLiteral("motivoinactividad"))
        ->setEnabled(m_campos.valor(QStringLiteral("pacienteinactivo")).toBool());
}

void pacientes::alCambiar(const QString &columna)
{
    estado->clear();
    if (m_edades.contains(columna))
        mostrarEdades();
    // Who chooses an insurer has said that there is a coverage.
    if (columna == columnaAseguradora && m_campos.valor(columna).toInt() > 0)
        cobertura->setCobertura(ConCobertura);
    if (columna == columnaCobertura || columna == QStringLiteral("pacienteinactivo"))
        mostrarCobertura();
}

bool pacientes::hayCambios() const { return m_preparada && m_campos.hayCambios(); }

bool pacientes::aceptaDejar()
{
    if (hayCambios()
        && !entorno().mensajes().pregunta(
            base::titulo::atencion,
            tr("Hay datos sin guardar (%1). ¿Desea dejar esta ficha de todos modos?").arg(titulo()),
            false))
        return false;
    m_borrador->quitar();
    return true;
}

QString pacientes::titulo() const
{
    const QString nombre = nombreCompleto(
        m_campos.valor(QStringLiteral("Apellido")).toString().trimmed(),
        m_campos.valor(QStringLiteral("Nombres")).toString().trimmed());
    return m_paciente ? nombre : tr("nuevo paciente: %1").arg(nombre);
}

QString pacientes::ayuda() const
{
    return ayudaDeActivar()
        + tr("\n\nGUARDAR: Ctrl+S. NUEVO PACIENTE: Ctrl+N. IMPRIMIR: Ctrl+P. Enter pasa al campo siguiente.\n\n"
             "DATOS SIN GUARDAR: Lo escrito se conserva cada pocos segundos. Si la computadora se apaga antes de "
             "guardar, la próxima vez que abra la ficha se le ofrecerá recuperarlo.");
}

void pacientes::crear()
{
    if (aceptado(controlarAlta(entorno())) && aceptaDejar())
        abrir(std::nullopt);
}

void pacientes::save()
{
    DatosFicha datos;
    datos.valores = m_campos.valores();
    datos.cambios = m_campos.cambios();
    for (const ui::Campo &campo : m_campos.campos())
        if (campo.tipo == ui::Campo::Tipo::Fecha)
            datos.escritas.insert(campo.columna, m_campos.escrito(campo.columna));
    datos.reparo = m_campos.controlar();
    const FichaGuardada guardada = guardarFicha(entorno(), m_paciente, datos);
    if (!guardada) {
        (void)aceptado(guardada.rechazo());
        return;
    }
    if (!*guardada)
        return;
    const bool alta = !m_paciente;
    m_paciente = **guardada;
    m_campos.darPorGuardado();
    m_borrador->quitar();
    m_borrador->seguir(m_paciente->nrohc(), m_paciente->nrohc());
    const db::Recordset fila = m_paciente->fila(conexion());
    m_campos.mostrar(fila.rows(), 0);
    mostrarCobertura();
    mostrarEdades();
    mostrarEncabezado();
    if (alta) {
        foto->mostrar(m_paciente);
        registros->setActiva(true, {});
        impri->setEnabled(true);
    }
    estado->setText(tr("Guardado a las %1").arg(entorno().clock().now().toString(QStringLiteral("HH:mm"))));
    ventanas().refrescar({QStringLiteral("agendas"), QStringLiteral("pacientesredu"), QStringLiteral("ordenes")});
}

void pacientes::print()
{
    // Without a patient the button is off.
    if (hayCambios()
        && !entorno().mensajes().pregunta(
            base::titulo::atencion,
            tr("Hay datos sin guardar: la ficha se imprime como está guardada. ¿Desea imprimirla?"),
            true))
        return;
    if (!m_paciente->existe(conexion())) {
        (void)aceptado(pacienteAusente());
        return;
    }
    printing::Contenido contenido;
    contenido.titulo = tr("Ficha del Paciente");
    contenido.paciente = printing::leerDatosPaciente(conexion(), m_paciente->nrohc());
    contenido.html = fichaHtml(entorno(), *m_paciente);
    printing::ver(ventanas(), printing::armar(entorno(), contenido), this);
}

void pacientes::abrirRegistro(const BotonRegistro &boton)
{
    if (!aceptado(controlarRegistro(entorno(), boton)))
        return;
    const auto resumen = leerResumen(entorno(), *m_paciente);
    if (!resumen) {
        (void)aceptado(pacienteAusente());
        return;
    }
    abrirVentana(
        boton.ventana,
        {.datos = {{QStringLiteral("nrohc"), m_paciente->nrohc()}, {QStringLiteral("nombre"), resumen->nombre}}});
}

void pacientes::elegirArchivoFoto()
{
    if (!aceptado(controlarModificacion(entorno())))
        return;
    const auto archivo = entorno().mensajes().elegirArchivo(
        tr("Foto del paciente"),
        {},
        QStringLiteral("Imagen (*.jpg);;Imagen (*.bmp);;Imagen (*.gif);;Todas las imágenes. (*.jpg *.bmp *.gif)"));
    if (!archivo)
        return;
    const auto elegida = elegirFoto(*archivo);
    if (!elegida)
        (void)aceptado(elegida.rechazo());
    else
        ponerFoto(*elegida);
}

void pacientes::tomarFoto()
{
    if (!aceptado(controlarModificacion(entorno())))
        return;
    const auto tomada = m_camara(this);
    if (!tomada)
        (void)aceptado(tomada.rechazo());
    else if (*tomada)
        ponerFoto(**tomada);
}

void pacientes::ponerFoto(const QImage &imagen)
{
    if (aceptado(guardarFoto(entorno(), *m_paciente, imagen)))
        foto->mostrar(m_paciente);
}

void pacientes::keyPressEvent(QKeyEvent *event)
{
    // The given name of the button that prints is not the one that the keys look for.
    if (event->key() == Qt::Key_P && event->modifiers() == Qt::ControlModifier) {
        event->accept();
        if (impri->isEnabled())
            impri->click();
        return;
    }
    Ventana::keyPressEvent(event);
}

} // namespace patients
