#include "agenda/forms/agendasnolabo.h"

#include "agenda/SemanaPlantilla.h"
#include "agenda/forms/Registro.h"
#include "base/Clock.h"
#include "base/Fechas.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"
#include "ui/CampoFecha.h"
#include "ui/Grilla.h"
#include "ui/ListaCombo.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>

namespace agenda {

namespace {

QString diaTexto(QDate fecha) { return nombreDia(base::diaSemana(fecha) - 1); }

QString periodoTexto(const ui::CampoFecha &desde, const ui::CampoFecha &hasta, qsizetype cuantos, bool deCadaAnio)
{
    const QDate primera = desde.fecha(), ultima = hasta.isNull() ? primera : hasta.fecha();
    QString texto = primera == ultima
        ? (deCadaAnio ? base::fechaTexto(primera) : diaTexto(primera) + u' ' + base::fechaTexto(primera))
        : QObject::tr("Del %1 al %2 (%3 días)")
              .arg(base::fechaTexto(primera), base::fechaTexto(ultima), QString::number(cuantos));
    if (deCadaAnio)
        texto += QObject::tr(", cada año");
    return texto;
}

/// The weekday of a row that is one date.
QString diaDe(const DiaNoLaborable &libre)
{
    const QDate fecha(libre.anio, libre.mes, libre.dia);
    return fecha.isValid() ? diaTexto(fecha) : QString();
}

} // namespace

agendasnolabo::agendasnolabo(db::Entorno &entorno, ui::Ventanas &ventanas, const QString &nombre)
    : Ventana(entorno, ventanas, nombre, tr("Días en que no se atiende"))
{
    construir();
    conectar();
}

void agendasnolabo::conectar()
{
    connect(lisdocto, &QComboBox::currentIndexChanged, this, [this] {
        intentar([this] {
            m_doctor = ui::idElegido(*lisdocto, m_doctor);
            decir({});
            listar();
        });
    });
    setEnter(agregar, {hasta});
    alPulsar(agregar, [this] {
        if (juntar())
            desde->setFocus();
    });
    alPulsar(quitar, [this] {
        if (const int fila = fechas->currentRow(); fila >= 0) {
            m_periodos.removeAt(fila);
            mostrarPeriodos();
            fechas->setCurrentRow(qMin(fila, fechas->count() - 1));
        }
    });
    // Del removes from the list that has the focus; the window's own deletes what is stored.
    auto *suprimir = new QShortcut(QKeySequence(Qt::Key_Delete), fechas);
    suprimir->setContext(Qt::WidgetShortcut);
    connect(suprimir, &QShortcut::activated, quitar, &QPushButton::click);
    alPulsar(guardar, [this] { save(); });
    alPulsar(eliminar, [this] { remove(); });
    alPulsar(feriados, [this] { abrirFeriados(); });
    connect(cerrar, &QPushButton::clicked, this, &QWidget::close);
}

bool agendasnolabo::preparar(const ui::Pedido &pedido)
{
    const QSignalBlocker calla(lisdocto);
    cargarProfesionales();
    m_doctor = pedido.datos.value(QStringLiteral("doctor")).toInt();
    if (m_doctor == 0)
        m_doctor = db::profesionalActivo(entorno());
    ui::elegirId(*lisdocto, m_doctor);
    if (lisdocto->currentIndex() < 0 && lisdocto->count() > 0)
        lisdocto->setCurrentIndex(0);
    m_doctor = ui::idElegido(*lisdocto, m_doctor);
    desde->setHoy(entorno().clock().today());
    hasta->setHoy(entorno().clock().today());
    listar();
    mostrarPeriodos();
    desde->setFocus();
    return true;
}

void agendasnolabo::refrescar()
{
    const QSignalBlocker calla(lisdocto);
    cargarProfesionales();
    listar();
}

bool agendasnolabo::hayCambios() const { return !m_periodos.isEmpty() || !desde->isNull() || !hasta->isNull(); }

QString agendasnolabo::ayuda() const
{
    return tr(
        "AGREGAR: Escriba una fecha, o la primera y la última de un período, y presione Enter: pasa a la lista. Reúna"
        " todas las que necesite y guarde (Ctrl+S). «De cada año» repite el día y el mes todos los años.\n\n"
        "TODOS: Con «Para todos los profesionales» lo que se guarda o se elimina vale para cada uno de ellos.\n\n"
        "FERIADOS: Propone los feriados nacionales de un año para elegir cuáles agregar.\n\n"
        "TURNOS: Los turnos ya dados en esas fechas quedan en la agenda; hay que cambiarlos o eliminarlos allí.");
}

void agendasnolabo::cargarProfesionales()
{
    std::vector<std::pair<QString, int>> entradas;
    for (const db::Doctor &doctor : db::profesionales(conexion()))
        entradas.emplace_back(doctor.nombre, doctor.id);
    ui::ponerEntradas(*lisdocto, entradas);
}

QVector<int> agendasnolabo::paraQuienes() const
{
    if (!paratodos->isChecked())
        return m_doctor == 0 ? QVector<int>{} : QVector<int>{m_doctor};
    QVector<int> todos;
    for (const db::Doctor &doctor : db::profesionales(conexion()))
        todos.append(doctor.id);
    return todos;
}

void agendasnolabo::listar()
{
    std::vector<QStringList> textos;
    std::vector<qint64> claves;
    for (const DiaNoLaborable &libre : listarDiasNoLaborables(conexion(), m_doctor)) {
        textos.push_back({libre.texto(), diaDe(libre)});
        claves.push_back(libre.id);
    }
    lista->mostrar(std::move(textos), std::move(claves));
    eliminar->setEnabled(lista->modelo().rowCount() > 0);
}

bool agendasnolabo::juntar()
{
    const auto dias = leerPeriodo(desde->text(), hasta->text(), cadaanio->isChecked());
    if (!dias)
        return aceptado(dias.rechazo());
    m_periodos.append({periodoTexto(*desde, *hasta, dias->size(), cadaanio->isChecked()), *dias});
    desde->clear();
    hasta->clear();
    decir({});
    mostrarPeriodos();
    return true;
}

void agendasnolabo::mostrarPeriodos()
{
    fechas->clear();
    for (const Periodo &periodo : m_periodos)
        fechas->addItem(periodo.texto);
    quitar->setEnabled(!m_periodos.isEmpty());
}

void agendasnolabo::save()
{
    // What is typed and was not put into the list is meant as well.
    if ((!desde->isNull() || !hasta->isNull()) && !juntar())
        return;
    QVector<DiaNoLaborable> dias;
    for (const Periodo &periodo : m_periodos)
        dias += periodo.dias;
    const auto alta = agregarDiasNoLaborables(entorno(), paraQuienes(), dias);
    if (!alta) {
        aceptado(alta.rechazo());
        if (m_periodos.isEmpty())
            desde->setFocus();
        return;
    }
    m_periodos.clear();
    mostrarPeriodos();
    listar();
    QStringList partes{
        alta->agregados == 1 ? tr("Se agregó 1 fecha.") : tr("Se agregaron %1 fechas.").arg(alta->agregados)};
    if (alta->yaEstaban > 0)
        partes << (alta->yaEstaban == 1 ? tr("1 ya estaba.") : tr("%1 ya estaban.").arg(alta->yaEstaban));
    if (alta->conTurnos > 0)
        partes << tr("Días con turnos ya dados: %1; siguen en la agenda.").arg(alta->conTurnos);
    decir(partes.join(u' '));
    ventanas().refrescar(ventanasDeDiasLibres());
    desde->setFocus();
}

void agendasnolabo::remove()
{
    QVector<int> ids;
    for (const qint64 clave : lista->clavesElegidas())
        ids.append(int(clave));
    const auto eliminados = eliminarDiasNoLaborables(entorno(), ids, paratodos->isChecked());
    if (!eliminados)
        aceptado(eliminados.rechazo());
    else if (*eliminados == 0)
        return;
    else
        decir(*eliminados == 1 ? tr("Se eliminó 1 fecha.") : tr("Se eliminaron %1 fechas.").arg(*eliminados));
    listar();
    ventanas().refrescar(ventanasDeDiasLibres());
}

void agendasnolabo::abrirFeriados()
{
    ui::Pedido pedido;
    pedido.datos = {{QStringLiteral("doctor"), m_doctor}, {QStringLiteral("todos"), paratodos->isChecked()}};
    pedido.alTerminar = [this](const QVariantMap &resultado) {
        const int agregados = resultado.value(QStringLiteral("agregados")).toInt();
        listar();
        decir(agregados == 1 ? tr("Se agregó 1 fecha.") : tr("Se agregaron %1 fechas.").arg(agregados));
    };
    ventanas().abrir(QStringLiteral("agendaferiados"), pedido, this);
}

void agendasnolabo::decir(const QString &texto) { aviso->setText(texto); }

} // namespace agenda
