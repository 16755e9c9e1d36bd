#include "users/forms/medicos.h"

#include "db/Connection.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"
#include "ui/CampoClave.h"
#include "ui/Campos.h"
#include "ui/ListaCombo.h"
#include "users/Derechos.h"
#include "users/Profesionales.h"

#include <QApplication>
#include <QComboBox>
#include <QCompleter>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScopeGuard>
#include <QStackedWidget>
#include <QTabWidget>

namespace users {

namespace {

const QString sinIdentificar = QStringLiteral("<Médico sin Identificar>");

std::vector<std::pair<QString, int>> entradas(const QVector<db::Doctor> &doctores, int menos = 0)
{
    std::vector<std::pair<QString, int>> todas;
    for (const db::Doctor &doctor : doctores)
        if (doctor.id != menos)
            todas.emplace_back(doctor.nombre, doctor.id);
    return todas;
}

} // namespace

medicos::medicos(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("medicos"), tr("Médicos y Usuarios"))
    , m_campos(new ui::Campos(this))
{
    construir();
    // Once the click is over: the list would go on choosing the row after a question had taken it back.
    connect(
        lisusuarios,
        &QListWidget::currentRowChanged,
        this,
        [this] { intentar([this] { alElegir(); }); },
        Qt::QueuedConnection);
    alPulsar(nuevo, [this] {
        if (!descartar())
            return;
        mostrar(usuarioNuevo());
        elegirRenglon(-1);
        solapas->setCurrentIndex(0);
        m_campos->control(QStringLiteral("NomDoc"))->setFocus();
    });
    alPulsar(eliminar, [this] {
        if (!m_nadie && m_id != 0 && eliminarUsuario(this->entorno(), m_id, administrador())) {
            listar(this->entorno().usuarioActual());
            this->ventanas().refrescar();
        }
    });
    alPulsar(guardar, [this] { save(); });
    connect(cerrar, &QPushButton::clicked, this, &QWidget::close);
    connect(quitarclave, &QPushButton::clicked, this, [this] {
        claveusuario->clear();
        m_quitarClave = m_tieneClave;
        mostrarClave();
        claveusuario->setFocus();
    });
    connect(claveusuario, &QLineEdit::textChanged, this, &medicos::mostrarClave);
    connect(
        copiarde, &QComboBox::currentTextChanged, this, [this] { copiar->setEnabled(ui::idElegido(*copiarde) != 0); });
    alPulsar(copiar, [this] { copiarPermisos(); });
    connect(todos, &QPushButton::clicked, this, [this] { marcarDerechos(true); });
    connect(ninguno, &QPushButton::clicked, this, [this] { marcarDerechos(false); });
    connect(m_campos, &ui::Campos::cambiado, this, [this](const QString &columna) {
        if (columna == QLatin1String("tipo"))
            alCambiarTipo();
    });
}

int medicos::administrador() const { return datos().value(QStringLiteral("administrador")).toInt(); }

bool medicos::preparar(const ui::Pedido &pedido)
{
    if (!aceptado(db::controlarConfiguracion(entorno(), administrador())))
        return false;
    // Asked for again while something is being written: it stays.
    if (isVisible() && !descartar())
        return false;
    m_campos->limitar(conexion().columns(QStringLiteral("Lista Doctores")));
    const db::Rows especialidades
        = conexion().query(QStringLiteral("SELECT nombre FROM [Lista Especialidades] ORDER BY prioridad DESC,nombre"));
    QStringList nombres;
    for (int i = 0; i < especialidades->rowCount(); ++i)
        nombres << especialidades->text(i, 0);
    auto *especialidad = qobject_cast<QLineEdit *>(m_campos->control(QStringLiteral("Especialidad")));
    auto *propone = new QCompleter(nombres, especialidad);
    propone->setCaseSensitivity(Qt::CaseInsensitive);
    propone->setFilterMode(Qt::MatchContains);
    especialidad->setCompleter(propone); // deletes the one before

    listar(pedido.datos.value(QStringLiteral("id"), entorno().usuarioActual()).toInt());
    lisusuarios->setFocus();
    return true;
}

void medicos::refrescar()
{
    if (!hayCambios() && (m_nadie || m_id != 0))
        listar(m_id);
}

bool medicos::hayCambios() const { return !m_nadie && (m_campos->hayCambios() || claveNueva()); }

bool medicos::descartar()
{
    return !hayCambios()
        || entorno().mensajes().pregunta(
            base::titulo::atencion, tr("El usuario tiene cambios sin guardar. ¿Desea descartarlos?"), false);
}

void medicos::listar(int id)
{
    const QVector<db::Doctor> usuarios = db::usuarios(conexion());
    {
        const QSignalBlocker calla(lisusuarios);
        lisusuarios->clear();
        (new QListWidgetItem(sinIdentificar, lisusuarios))->setData(Qt::UserRole, 0);
        for (const db::Doctor &usuario : usuarios)
            (new QListWidgetItem(usuario.nombre, lisusuarios))->setData(Qt::UserRole, usuario.id);
    }
    auto profesionales = entradas(db::profesionales(conexion()));
    profesionales.insert(profesionales.begin(), {sinIdentificar, 0});
    ui::ponerEntradas(*qobject_cast<QComboBox *>(m_campos->control(QStringLiteral("medisecre"))), profesionales);

    elegirRenglon(id);
    if (lisusuarios->currentRow() < 0)
        elegirRenglon(0);
    mostrarElegido();
}

void medicos::elegirRenglon(int id)
{
    const QSignalBlocker calla(lisusuarios);
    lisusuarios->setCurrentRow(-1);
    for (int i = 0; i < lisusuarios->count(); ++i)
        if (lisusuarios->item(i)->data(Qt::UserRole).toInt() == id)
            lisusuarios->setCurrentRow(i);
}

void medicos::alElegir()
{
    const QListWidgetItem *elegido = lisusuarios->currentItem();
    const int id = elegido ? elegido->data(Qt::UserRole).toInt() : -1;
    const int mostrado = m_id != 0 ? m_id : m_nadie ? 0 : -1;
    if (id == mostrado)
        return;
    if (descartar())
        mostrarElegido();
    else
        elegirRenglon(mostrado);
}

void medicos::mostrarElegido()
{
    const QListWidgetItem *elegido = lisusuarios->currentItem();
    const int id = elegido ? elegido->data(Qt::UserRole).toInt() : 0;
    if (id != 0) {
        const auto ficha = leerUsuario(conexion(), id);
        if (ficha) {
            mostrar(*ficha);
            return;
        }
        aceptado(ficha.rechazo());
        elegirRenglon(0);
    }
    m_id = 0;
    m_nadie = true;
    m_paginas->setCurrentIndex(0);
    eliminar->setEnabled(false);
    guardar->setEnabled(false);
}

void medicos::mostrar(const FichaUsuario &ficha)
{
    m_id = ficha.id;
    m_nadie = false;
    m_tieneClave = ficha.tieneClave;
    m_quitarClave = false;
    m_campos->mostrar(ficha.columnas);
    claveusuario->clear();
    mostrarClave();
    alCambiarTipo();
    ui::ponerEntradas(*copiarde, entradas(db::usuarios(conexion()), m_id));
    ui::elegirId(*copiarde, 0);
    m_paginas->setCurrentIndex(1);
    eliminar->setEnabled(m_id != 0);
    guardar->setEnabled(true);
}

void medicos::mostrarClave()
{
    const bool escrita = !claveusuario->text().trimmed().isEmpty();
    if (escrita)
        m_quitarClave = false;
    claveusuario->setPlaceholderText(
        m_quitarClave      ? tr("Quedará sin clave al guardar")
            : m_tieneClave ? tr("Tiene una clave: escriba otra para cambiarla")
                           : tr("Sin clave"));
    quitarclave->setEnabled(m_tieneClave && !m_quitarClave);
}

void medicos::alCambiarTipo()
{
    const bool esMedico = m_campos->valor(QStringLiteral("tipo")).toInt() == 0;
    // A professional's active professional is herself, and only she has an agenda to publish.
    m_campos->control(QStringLiteral("medisecre"))->setEnabled(!esMedico);
    m_campos->control(QStringLiteral("moduloweb"))->setEnabled(esMedico);
}

std::optional<QString> medicos::claveNueva() const
{
    const QString escrita = claveusuario->text().trimmed();
    if (!escrita.isEmpty())
        return escrita;
    return m_quitarClave ? std::optional<QString>(QString()) : std::nullopt;
}

void medicos::marcarDerechos(bool si)
{
    for (const GrupoDerechos &grupo : derechos())
        for (const Derecho &derecho : grupo.derechos)
            m_campos->setValor(derecho.columna, si && !derecho.limita);
}

void medicos::copiarPermisos()
{
    const auto permisos = permisosDe(conexion(), ui::idElegido(*copiarde));
    if (!permisos) {
        aceptado(permisos.rechazo());
        return;
    }
    for (auto it = permisos->cbegin(); it != permisos->cend(); ++it)
        m_campos->setValor(it.key(), it.value());
}

void medicos::save()
{
    if (m_nadie || !aceptado(m_campos->controlar()))
        return;
    const UsuarioEditado usuario{m_id, m_campos->valores(), m_campos->cambios(), claveNueva()};
    const auto id = [&] {
        QApplication::setOverrideCursor(Qt::WaitCursor); // a new password is compared with everybody's
        const auto soltar = qScopeGuard([] { QApplication::restoreOverrideCursor(); });
        return guardarUsuario(entorno(), usuario, administrador());
    }();
    if (!id) {
        aceptado(id.rechazo());
        return;
    }
    listar(*id);
    ventanas().refrescar();
}

} // namespace users
