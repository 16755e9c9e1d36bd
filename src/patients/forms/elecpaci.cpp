#include "patients/forms/elecpaci.h"

#include "patients/EliminarPaciente.h"

#include "base/Mensajes.h"
#include "db/Entorno.h"
#include "ui/CampoFecha.h"
#include "ui/Grilla.h"
#include "ui/ListaCombo.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

namespace patients {

namespace {

/// Grid columns are the result's from this one on.
constexpr int primeraColumna = ColIdentificacion;
// The pause after a letter, in ms: as short as the last search allows.
constexpr qint64 pausaMinima = 20, pausaMaxima = 200, pausaPorBusqueda = 4;

const std::pair<QString, int> todas{QStringLiteral("<Todas>"), 0};

struct Rotulos {
    const char16_t *boton;
    const char16_t *etiqueta;
};

Rotulos rotulos(int modo)
{
    switch (modo) {
    case 2: return {u"Elegir Paciente", u"Seleccione al paciente que le asignará un turno"};
    case 3: return {u"Buscar Turno", u"Buscar Turno"};
    case 4: return {u"Elegir Paciente", u"Seleccione al paciente que le asignará un pago"};
    default: return {u"Ver Paciente", u"Mostrar Ficha del Paciente"};
    }
}

/// The window that goes on with the patient, by mode; none: whoever asked does.
QString ventanaDelModo(int modo)
{
    return modo == 1 ? QStringLiteral("pacientes") : modo == 3 ? QStringLiteral("resulbusque") : QString();
}

std::optional<int> numero(const QLineEdit *campo)
{
    bool esNumero = false;
    const int valor = campo->text().trimmed().toInt(&esNumero);
    return esNumero ? std::optional(valor) : std::nullopt;
}

/// The balances of everybody take a moment.
class EsperaDeCursor
{
public:
    EsperaDeCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~EsperaDeCursor() { QGuiApplication::restoreOverrideCursor(); }
    EsperaDeCursor(const EsperaDeCursor &) = delete;
    EsperaDeCursor &operator=(const EsperaDeCursor &) = delete;
};

/// 0 for none; what was typed and is no entry is nobody's.
int elegido(const QComboBox *lista) { return lista->currentText().trimmed().isEmpty() ? 0 : ui::idElegido(*lista, -1); }

} // namespace

elecpaci::elecpaci(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("elecpaci"), tr("Elección del Paciente"))
    , m_lista(entorno)
    , m_pausa(new QTimer(this))
{
    construir();
    prepararLista();
    conectar();
}

void elecpaci::prepararLista()
{
    ui::ModeloGrilla &modelo = listapaci->modelo();
    modelo.setColumnaClave(ColNroHC);
    modelo.setTexto([this](const db::ResultSet &, int fila, int columna) {
        return m_lista.texto(fila, ColumnaPaciente(columna + primeraColumna));
    });
    modelo.setYaOrdenada(ColNombre - primeraColumna);
    modelo.setAlOrdenar([this](int columna) { ordenarPor(columna); });
    modelo.setAlRecorrer([this](bool empieza) {
        const EsperaDeCursor espera;
        empieza ? m_lista.leerTodo() : m_lista.soltarTodo();
    });
}

void elecpaci::conectar()
{
    m_pausa->setSingleShot(true);
    m_pausa->setInterval(int(pausaMinima));
    connect(m_pausa, &QTimer::timeout, this, &elecpaci::buscarAlEscribir);
    for (auto *campo : findChildren<QLineEdit *>()) {
        if (qobject_cast<QComboBox *>(campo->parentWidget()))
            continue;
        campo->installEventFilter(this);
        connect(campo, &QLineEdit::textChanged, this, [this, campo] {
            m_ultimo = campo;
            if (!m_vaciando)
                m_pausa->start();
        });
    }
    listapaci->installEventFilter(this);
    const auto alElegir = [this] {
        if (!m_vaciando)
            intentar([this] { buscar(); });
    };
    for (auto *lista : {sexo, ciudad, provincia, coberfiltro})
        connect(lista, &QComboBox::currentIndexChanged, this, alElegir);
    for (auto *opcion : {todascober, sicober, nocober, nosabecober, activos, inactivos, todos})
        connect(opcion, &QRadioButton::clicked, this, alElegir);
    connect(sicober, &QRadioButton::toggled, coberfiltro, &QWidget::setEnabled);
    coberfiltro->setEnabled(false);
    connect(opcionampli, &QRadioButton::toggled, this, [this] { intentar([this] { cambiarForma(); }); });

    connect(listapaci, &ui::Grilla::activada, this, [this] { intentar([this] { elegir(); }); });
    alPulsar(aceptar, [this] { elegir(); });
    alPulsar(nuevo, [this] { crear(); });
    alPulsar(eliminar, [this] { borrar(); });
    alPulsar(exportarlista, [this] {
        if (m_pausa->isActive())
            buscar();
        exportar(*listapaci);
    });
    alPulsar(limpiar, [this] {
        vaciar();
        buscar();
    });
    connect(cancelar, &QPushButton::clicked, this, &QWidget::close);
}

bool elecpaci::preparar(const ui::Pedido &pedido)
{
    m_modo = pedido.datos.value(QStringLiteral("modo"), 1).toInt();
    eliminar->setVisible(m_modo == 1);
    const Rotulos r = rotulos(m_modo);
    aceptar->setText(QString::fromUtf16(r.boton));
    etiqueta->setText(QString::fromUtf16(r.etiqueta));
    vaciar();
    (opcionampli->isChecked() ? apellido : apellidoredu)
        ->setText(pedido.datos.value(QStringLiteral("apellido")).toString());
    (opcionampli->isChecked() ? nombres : nombresredu)
        ->setText(pedido.datos.value(QStringLiteral("nombres")).toString());
    buscar();
    return true;
}

void elecpaci::refrescar()
{
    if (opcionampli->isChecked())
        cargarListas();
    buscar();
}

QString elecpaci::ayuda() const
{
    return QStringLiteral(
        "BÚSQUEDA: Para aplicar filtros de búsqueda, debe ingresar en cada casilla del ítem a buscar una palabra "
        "completa o simplemente parte de la palabra, y luego presionar la tecla ' ENTER '. En el caso de la fecha de "
        "nacimiento debe ingresar una fecha completa del tipo ' dd/mm/aaaa '.");
}

FiltroPacientes elecpaci::filtro() const
{
    if (opcionredu->isChecked())
        return {.reducido = true, .apellido = apellidoredu->text(), .nombres = nombresredu->text()};
    FiltroPacientes f{.reducido = false};
    f.actividad = todos->isChecked() ? FiltroPacientes::Actividad::Todos
        : inactivos->isChecked()     ? FiltroPacientes::Actividad::Inactivos
                                     : FiltroPacientes::Actividad::Activos;
    f.numehistoria = numehistoria->text();
    f.apellido = apellido->text();
    f.apellido2 = apellido2->text();
    f.nombres = nombres->text();
    f.dni = dni->text();
    f.telefono = telpar->text();
    f.nroos = nroos->text();
    f.fecnac = fecnac->text();
    if (sexo->currentIndex() > 0)
        f.sexo = sexo->currentData().toInt();
    f.cobertura = sicober->isChecked() ? FiltroPacientes::Cobertura::Con
        : nocober->isChecked()         ? FiltroPacientes::Cobertura::Sin
        : nosabecober->isChecked()     ? FiltroPacientes::Cobertura::NoSabe
                                       : FiltroPacientes::Cobertura::Todas;
    if (sicober->isChecked())
        f.idcobertura = elegido(coberfiltro);
    f.idciudad = elegido(ciudad);
    f.idprovincia = elegido(provincia);
    f.edadDesde = numero(edad1);
    f.edadHasta = numero(edad2);
    return f;
}

void elecpaci::vaciar()
{
    m_vaciando = true;
    for (auto *campo :
         {apellidoredu, nombresredu, numehistoria, apellido, apellido2, nombres, dni, telpar, nroos, edad1, edad2})
        campo->clear();
    fecnac->setFecha({});
    for (auto *lista : {sexo, ciudad, provincia, coberfiltro})
        lista->setCurrentIndex(0);
    todascober->setChecked(true);
    activos->setChecked(true);
    m_vaciando = false;
    (opcionampli->isChecked() ? apellido : apellidoredu)->setFocus();
}

void elecpaci::cargarListas()
{
    const std::pair<QComboBox *, const char *> listas[]
        = {{coberfiltro, "Lista Coberturas"}, {ciudad, "Lista Ciudad"}, {provincia, "Lista Provincia"}};
    for (const auto &[lista, tabla] : listas)
        ui::cargarLista(*lista, conexion(), QLatin1String(tabla), QStringLiteral("nombre"), {todas});
}

void elecpaci::cambiarForma()
{
    const bool amplia = opcionampli->isChecked();
    if (amplia)
        cargarListas();
    panelredu->setVisible(!amplia);
    panelampli->setVisible(amplia);
    // What was typed goes on being searched for.
    m_vaciando = true;
    for (const auto &[reducido, amplio] : {std::pair(apellidoredu, apellido), {nombresredu, nombres}})
        (amplia ? amplio : reducido)->setText((amplia ? reducido : amplio)->text());
    m_vaciando = false;
    (amplia ? apellido : apellidoredu)->setFocus();
    buscar();
}

bool elecpaci::enFiltro() const
{
    const QWidget *campo = focusWidget();
    return panelredu->isAncestorOf(campo) || panelampli->isAncestorOf(campo);
}

void elecpaci::keyPressEvent(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const FiltroPacientes vacio{.reducido = opcionredu->isChecked()};
    if (event->key() == Qt::Key_Escape && filtro() != vacio) {
        limpiar->click();
    } else if (enter && enFiltro()) {
        // The only one that was found is accepted, provided that it was there to be seen.
        const bool visto = !m_pausa->isActive() && filtro() == m_buscado && m_lista.cantidad() == 1;
        intentar([&] { visto ? elegir() : buscar(); });
    } else {
        Ventana::keyPressEvent(event);
    }
}

bool elecpaci::eventFilter(QObject *objeto, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto &tecla = *static_cast<QKeyEvent *>(event);
        const bool sola = (tecla.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier)) == Qt::NoModifier;
        if (sola && (objeto == listapaci ? teclaDeLista(tecla) : teclaDeFiltro(tecla.key())))
            return true;
    }
    return Ventana::eventFilter(objeto, event);
}

bool elecpaci::teclaDeFiltro(int tecla)
{
    if (tecla != Qt::Key_Down && tecla != Qt::Key_PageDown)
        return false;
    irALista();
    return true;
}

bool elecpaci::teclaDeLista(const QKeyEvent &event)
{
    QLineEdit *campo = m_ultimo && m_ultimo->isVisible() ? m_ultimo.data()
        : opcionampli->isChecked()                       ? apellido
                                                         : apellidoredu;
    if (event.key() == Qt::Key_Up && listapaci->filaActual() <= 0) {
        campo->setFocus();
        return true;
    }
    // Who goes on typing goes on filtering.
    const bool letra = !event.text().isEmpty() && event.text().front().isPrint();
    if (!letra && event.key() != Qt::Key_Backspace)
        return false;
    campo->setFocus();
    campo->end(false);
    QKeyEvent copia(QEvent::KeyPress, event.key(), event.modifiers(), event.text());
    QApplication::sendEvent(campo, &copia);
    return true;
}

void elecpaci::buscarAlEscribir()
{
    // A date half typed is no mistake yet.
    if (opcionampli->isChecked() && !fecnac->isNull() && !fecnac->esValida())
        return;
    intentar([this] { buscar(); });
}

void elecpaci::buscar()
{
    m_pausa->stop();
    QElapsedTimer tiempo;
    tiempo.start();
    const FiltroPacientes suyo = filtro();
    if (const base::Control control = m_lista.buscar(suyo, m_orden)) {
        aceptado(control);
        return;
    }
    for (int columna = 0; columna < listapaci->modelo().columnCount(); ++columna)
        listapaci->modelo().setOrden(columna, m_lista.columnaDeOrden());
    // Another list begins at its top and without anybody chosen: who was may be out of sight.
    const bool otra = std::exchange(m_buscado, suyo) != suyo;
    if (otra)
        listapaci->elegirFila(-1);
    listapaci->mostrar(m_lista.filas());
    if (otra)
        listapaci->scrollToTop();
    const int n = m_lista.cantidad();
    if (n == 1)
        listapaci->elegirFila(0);
    cantidad->setText(n == 1 ? tr("1 paciente") : tr("%1 pacientes").arg(QLocale().toString(n)));
    m_pausa->setInterval(int(qBound(pausaMinima, tiempo.elapsed() * pausaPorBusqueda, pausaMaxima)));
}

void elecpaci::ordenarPor(int columna)
{
    const auto orden = columna < 0 ? ColNombre : ColumnaPaciente(columna + primeraColumna);
    // By name they always come; any other order needs its values.
    if (std::exchange(m_orden, orden) != orden && orden != ColNombre) {
        intentar([this] {
            const EsperaDeCursor espera;
            buscar();
        });
    }
}

void elecpaci::elegir()
{
    if (m_pausa->isActive())
        buscar(); // what is chosen is what the filter shows
    const qint64 nrohc = listapaci->claveActual();
    if (nrohc == 0) {
        aceptado(base::Rechazo{
            base::titulo::atencion, tr("Debe seleccionar un paciente de la lista."), QStringLiteral("listapaci")});
        return;
    }
    ui::Ventanas &abiertas = ventanas();
    if (m_modo == 1
        && (abiertas.buscar(QStringLiteral("pacientes")) || abiertas.buscar(QStringLiteral("pacientesredu")))) {
        aceptado(base::Rechazo{
            base::titulo::atencion,
            tr("Un Paciente está siendo atendido, para seguir debe cerrar la ficha del Paciente")});
        return;
    }
    const auto nombre = nombrePaciente(conexion(), nrohc);
    if (!nombre) {
        buscar();
        aceptado(base::Rechazo{base::titulo::atencion, tr("Este paciente no Existe, probablemente a sido eliminado.")});
        return;
    }
    const QVariantMap resultado{{QStringLiteral("nrohc"), int(nrohc)}, {QStringLiteral("nombre"), *nombre}};
    const QString siguiente = ventanaDelModo(m_modo);
    if (siguiente.isEmpty()) {
        terminar(resultado);
        return;
    }
    if (!abiertas.existe(siguiente)) {
        base::avisarNoDisponible(entorno().mensajes());
        return;
    }
    if (!abiertas.abrir(siguiente, {.datos = resultado}))
        return;
    // Closing gives the focus back to the opener; it belongs to the new window now.
    terminar(resultado);
    (void)abiertas.activar(siguiente);
}

void elecpaci::borrar()
{
    const qint64 nrohc = listapaci->claveActual();
    if (nrohc == 0) {
        aceptado(base::Rechazo{
            base::titulo::atencion, tr("Debe seleccionar un paciente de la lista."), QStringLiteral("listapaci")});
        return;
    }
    const bool abierta
        = ventanas().buscar(QStringLiteral("pacientes")) || ventanas().buscar(QStringLiteral("pacientesredu"));
    const auto eliminado = eliminarPaciente(entorno(), int(nrohc), abierta);
    if (!eliminado)
        aceptado(eliminado.rechazo());
    else if (*eliminado)
        ventanas().refrescar();
}

void elecpaci::crear()
{
    const bool amplia = opcionampli->isChecked();
    const QVariantMap supuesto{
        {QStringLiteral("apellido"), (amplia ? apellido : apellidoredu)->text().trimmed()},
        {QStringLiteral("nombres"), (amplia ? nombres : nombresredu)->text().trimmed()}};
    const QPointer<elecpaci> sigue(this);
    ventanas().abrir(
        QStringLiteral("nuevopaci"),
        {.datos = supuesto,
         .alTerminar =
             [sigue](const QVariantMap &resultado) {
                 if (!sigue)
                     return;
                 sigue->intentar([&] {
                     // Without filters: the new patient may not match what was being searched.
                     sigue->vaciar();
                     sigue->buscar();
                     sigue->listapaci->elegirClave(resultado.value(QStringLiteral("nrohc")).toInt());
                     sigue->listapaci->setFocus();
                 });
             }},
        this);
}

void elecpaci::irALista()
{
    if (m_pausa->isActive())
        intentar([this] { buscar(); });
    if (listapaci->filaActual() < 0)
        listapaci->elegirFila(0);
    listapaci->setFocus();
}

} // namespace patients
