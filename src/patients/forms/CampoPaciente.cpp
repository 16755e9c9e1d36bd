#include "patients/forms/CampoPaciente.h"

#include "db/Error.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>
#include <QStandardItemModel>
#include <QTimer>

#include <chrono>

namespace patients {

CampoPaciente::CampoPaciente(db::Entorno &entorno, QWidget *parent)
    : QLineEdit(parent)
    , m_entorno(entorno)
    , m_modelo(new QStandardItemModel(this))
    , m_pausa(new QTimer(this))
{
    auto *desplegable = new QCompleter(m_modelo, this);
    desplegable->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    // Not as the field's own completer: that one would write each row passed over into the field.
    desplegable->setWidget(this);
    connect(desplegable, qOverload<const QModelIndex &>(&QCompleter::activated), this, [this](const QModelIndex &i) {
        tomar(i.row());
    });
    connect(this, &QLineEdit::textEdited, this, &CampoPaciente::alEscribir);
    m_pausa->setSingleShot(true);
    m_pausa->setInterval(std::chrono::milliseconds(150));
    connect(m_pausa, &QTimer::timeout, this, [this, desplegable] {
        buscar();
        if (m_hallados.pacientes.empty() || !hasFocus()) {
            desplegable->popup()->hide();
            return;
        }
        desplegable->complete();
        if (m_hallados.total == 1)
            desplegable->popup()->setCurrentIndex(desplegable->completionModel()->index(0, 0));
    });
    setPlaceholderText(tr("Apellido, nombres o documento"));
    setClearButtonEnabled(true);
}

void CampoPaciente::setPaciente(int nrohc, const QString &nombre)
{
    m_pausa->stop();
    setText(nombre);
    setCursorPosition(0);
    if (m_nrohc == nrohc)
        return;
    m_nrohc = nrohc;
    emit elegido(nrohc);
}

void CampoPaciente::alEscribir()
{
    m_pausa->start();
    if (m_nrohc == 0)
        return;
    m_nrohc = 0;
    emit elegido(0);
}

void CampoPaciente::buscar()
{
    m_pausa->stop();
    m_buscado = text();
    // While somebody types there is no message: Enter opens the chooser, which tells what is wrong.
    try {
        m_hallados = buscarRapido(m_entorno, m_buscado);
    } catch (const db::Error &) {
        m_hallados = {};
    }
    m_modelo->clear();
    for (const PacienteHallado &p : m_hallados.pacientes)
        m_modelo->appendRow(new QStandardItem(p.dni.isEmpty() ? p.nombre : tr("%1   (Doc. %2)").arg(p.nombre, p.dni)));
    if (const int otros = m_hallados.total - int(m_hallados.pacientes.size()); otros > 0) {
        auto *resto = new QStandardItem(tr("... y %1 más: presione Enter para verlos").arg(otros));
        resto->setFlags(Qt::NoItemFlags);
        m_modelo->appendRow(resto);
    }
}

void CampoPaciente::tomar(int fila)
{
    if (fila < 0 || fila >= int(m_hallados.pacientes.size()))
        return;
    const PacienteHallado elegida = m_hallados.pacientes[size_t(fila)];
    setPaciente(elegida.nrohc, elegida.nombre);
}

void CampoPaciente::keyPressEvent(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && m_nrohc == 0) {
        // With a row of the list below chosen, the completer takes that one.
        const auto *desplegable = findChild<QCompleter *>();
        if (desplegable->popup()->isVisible() && desplegable->popup()->currentIndex().isValid()) {
            event->ignore();
            return;
        }
        event->accept();
        alEnter();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void CampoPaciente::alEnter()
{
    findChild<QCompleter *>()->popup()->hide();
    if (m_buscado != text() || m_pausa->isActive())
        buscar();
    if (m_hallados.total == 1) {
        tomar(0);
        return;
    }
    if (m_hallados.total > 1 || text().trimmed().isEmpty()) {
        emit listaPedida(m_hallados.apellido, m_hallados.nombres);
        return;
    }
    const QString texto = text().simplified();
    const auto coma = texto.indexOf(u',');
    emit listaPedida(texto.left(coma).trimmed(), coma < 0 ? QString() : texto.mid(coma + 1).trimmed());
}

} // namespace patients
