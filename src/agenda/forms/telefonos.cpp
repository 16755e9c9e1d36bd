#include "agenda/forms/telefonos.h"

#include "agenda/Telefonos.h"
#include "agenda/Textos.h"
#include "agenda/forms/AbrirFicha.h"
#include "agenda/forms/BotonesLista.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"
#include "ui/Grilla.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

namespace agenda {

namespace {

constexpr int milisegundosEntreTeclas = 120;

} // namespace

telefonos::telefonos(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("telefonos"), tr("Teléfonos"))
    , m_espera(new QTimer(this))
{
    m_espera->setSingleShot(true);
    m_espera->setInterval(milisegundosEntreTeclas);
    construir();
    conectar();
}

bool telefonos::preparar(const ui::Pedido &)
{
    if (auto sinDerecho = db::controlarDerecho(entorno(), derechoAgendas))
        return aceptado(sinDerecho);
    buscar();
    buscado->setFocus();
    buscado->selectAll();
    return true;
}

void telefonos::refrescar() { buscar(); }

QString telefonos::ayuda() const
{
    return tr("BÚSQUEDA: Escriba parte del nombre, o las cifras de un teléfono, con o sin guiones. Se busca a la vez en"
              " la lista de teléfonos, entre los profesionales y entre los pacientes.\n\n"
              "LISTA: Con Ctrl+N se agrega un teléfono; con Enter se modifica el elegido, y con Supr se elimina. Los de"
              " los pacientes se cambian en su ficha, que se abre con Enter; los de los profesionales, en la"
              " configuración.");
}

void telefonos::construir()
{
    buscado = new QLineEdit(this);
    buscado->setObjectName(QStringLiteral("buscado"));
    buscado->setClearButtonEnabled(true);
    buscado->setPlaceholderText(tr("Parte del nombre o del teléfono"));
    auto *rotulo = new QLabel(tr("&Buscar:"), this);
    rotulo->setBuddy(buscado);
    conprofesionales = new QCheckBox(tr("P&rofesionales"), this);
    conprofesionales->setObjectName(QStringLiteral("conprofesionales"));
    conprofesionales->setChecked(true);
    conpacientes = new QCheckBox(tr("P&acientes"), this);
    conpacientes->setObjectName(QStringLiteral("conpacientes"));
    conpacientes->setChecked(true);
    auto *arriba = new QHBoxLayout;
    arriba->addWidget(rotulo);
    arriba->addWidget(buscado, 1);
    arriba->addSpacing(ui::margen);
    arriba->addWidget(conprofesionales);
    arriba->addWidget(conpacientes);

    lista = new ui::Grilla(
        QStringLiteral("lista"),
        QStringLiteral("|<Nombre                 |<Teléfono        |<Celular          |<Origen     "
                       "|<Correo        |<Dirección    |<Observaciones "),
        this);
    lista->setElasticas({{0, 4}, {1, 2}, {2, 2}, {4, 3}, {5, 3}, {6, 3}});
    cantidad = new QLabel(this);
    cantidad->setObjectName(QStringLiteral("cantidad"));

    auto *abajo = new QHBoxLayout;
    abajo->setSpacing(ui::espacio);
    const auto poner = [&](const char *nombre, const QString &texto, const char *icono, const QString &ayuda) {
        QPushButton *boton = ui::boton(this, QLatin1String(nombre), texto, QLatin1String(icono), ayuda);
        abajo->addWidget(boton);
        return boton;
    };
    nuevo = poner("nuevo", tr("&Nuevo"), "list-add", tr("Agregar un teléfono (Ctrl+N)"));
    modificar = poner("modificar", tr("&Modificar"), "document-edit", tr("Modificar el teléfono elegido (Enter)"));
    eliminar = poner("eliminar", tr("&Eliminar"), "edit-delete", tr("Eliminar el teléfono elegido (Supr)"));
    ficha = poner("ficha", tr("&Ficha"), "user-identity", tr("Abrir la ficha del paciente elegido (Enter)"));
    abajo->addStretch(1);
    ponerBotonesLista(*this, *lista, *abajo);

    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->setSpacing(ui::espacio);
    todo->addLayout(arriba);
    todo->addWidget(lista, 1);
    todo->addWidget(cantidad);
    todo->addLayout(abajo);
    resize(1080, 600);
}

void telefonos::conectar()
{
    buscado->installEventFilter(this);
    connect(buscado, &QLineEdit::textChanged, m_espera, qOverload<>(&QTimer::start));
    connect(m_espera, &QTimer::timeout, this, [this] { intentar([this] { buscar(); }); });
    for (QCheckBox *marca : {conpacientes, conprofesionales})
        connect(marca, &QCheckBox::toggled, this, [this] { intentar([this] { buscar(); }); });
    connect(lista, &ui::Grilla::filaCambiada, this, [this] { habilitar(); });
    connect(lista->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { habilitar(); });
    connect(lista, &ui::Grilla::activada, this, [this] { intentar([this] { activar(); }); });
    alPulsar(nuevo, [this] { abrirEntrada(0); });
    alPulsar(modificar, [this] { activar(); });
    alPulsar(ficha, [this] { activar(); });
    alPulsar(eliminar, [this] { eliminarActual(); });
}

bool telefonos::eventFilter(QObject *objeto, QEvent *evento)
{
    if (objeto == buscado && evento->type() == QEvent::KeyPress) {
        const int tecla = static_cast<QKeyEvent *>(evento)->key();
        if (tecla == Qt::Key_Down || tecla == Qt::Key_Return || tecla == Qt::Key_Enter) {
            // What is chosen is what was typed.
            if (m_espera->isActive()) {
                m_espera->stop();
                intentar([this] { buscar(); });
            }
            if (lista->modelo().rowCount() > 0) {
                if (lista->filaActual() < 0)
                    lista->elegirFila(0);
                lista->setFocus();
            }
            return true;
        }
    }
    return Ventana::eventFilter(objeto, evento);
}

void telefonos::buscar()
{
    m_espera->stop();
    const QString texto = buscado->text();
    m_hallados = buscarContactos(conexion(), texto, conprofesionales->isChecked(), conpacientes->isChecked());
    std::vector<QStringList> textos;
    std::vector<qint64> claves;
    for (const Contacto &contacto : m_hallados.contactos) {
        textos.push_back(contacto.textos());
        claves.push_back(contacto.clave());
    }
    const size_t cuantos = textos.size();
    lista->mostrar(std::move(textos), std::move(claves));

    QString dicho = cuantos == 0
        ? (texto.trimmed().isEmpty() ? tr("La lista está vacía.") : tr("No se encontró a nadie."))
        : cuantos == 1 ? tr("1 resultado")
                       : tr("%1 resultados").arg(cuantos);
    if (m_hallados.hayMas)
        dicho += tr("  —  hay más pacientes: siga escribiendo para ver menos");
    else if (conpacientes->isChecked() && texto.trimmed().size() < minimoPacientes)
        dicho += tr("  —  los pacientes se buscan desde la segunda letra");
    cantidad->setText(dicho);
    habilitar();
}

const Contacto *telefonos::actual() const
{
    const qint64 clave = lista->claveActual();
    for (const Contacto &contacto : m_hallados.contactos)
        if (contacto.clave() == clave)
            return &contacto;
    return nullptr;
}

void telefonos::habilitar()
{
    const Contacto *contacto = actual();
    const bool propio = contacto && contacto->origen == Contacto::Origen::Guia;
    modificar->setEnabled(propio);
    eliminar->setEnabled(propio);
    ficha->setEnabled(contacto && contacto->origen == Contacto::Origen::Paciente);
}

void telefonos::activar()
{
    const Contacto *contacto = actual();
    if (!contacto)
        return;
    switch (contacto->origen) {
    case Contacto::Origen::Guia: return abrirEntrada(contacto->numero);
    case Contacto::Origen::Paciente: (void)aceptado(abrirFicha(ventanas(), contacto->numero)); return;
    case Contacto::Origen::Profesional: return;
    }
}

void telefonos::abrirEntrada(int id)
{
    ui::Pedido pedido;
    pedido.datos
        = {{QStringLiteral("id"), id}, {QStringLiteral("nombre"), id == 0 ? buscado->text().trimmed() : QString()}};
    const QPointer<telefonos> esta(this);
    pedido.alTerminar = [esta](const QVariantMap &resultado) {
        if (!esta)
            return;
        esta->intentar([&] {
            Contacto guardado;
            guardado.numero = resultado.value(QStringLiteral("id")).toInt();
            esta->buscar();
            if (esta->lista->modelo().filaDe(guardado.clave()) < 0) {
                // What was being searched does not show it.
                const QSignalBlocker calla(esta->buscado);
                esta->buscado->clear();
                esta->buscar();
            }
            esta->lista->elegirClave(guardado.clave());
            esta->lista->setFocus();
        });
    };
    // Gone meanwhile: the window has said so and the list must show it.
    if (!ventanas().abrir(QStringLiteral("telefonomodif"), pedido, this))
        buscar();
}

void telefonos::eliminarActual()
{
    const Contacto *contacto = actual();
    if (!contacto || contacto->origen != Contacto::Origen::Guia)
        return;
    const auto eliminado = eliminarTelefono(entorno(), contacto->numero);
    if (!eliminado)
        (void)aceptado(eliminado.rechazo());
    buscar();
}

} // namespace agenda
