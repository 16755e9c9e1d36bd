#include "patients/forms/elecpaci.h"

#include "base/Mensajes.h"
#include "base/Numeros.h"
#include "db/Entorno.h"
#include "db/Error.h"
#include "ui/Grilla.h"
#include "ui/Iconos.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QTimer>

namespace patients {

namespace {

// The narrow first column holds the patient's number and is not shown.
const QString encabezado = QStringLiteral(
    "|^Nº Hist. Clínica|<Pacientes                               |^Nº Doc. Identidad|^Nº Afiliado   |>Saldo $      ");
/// Grid columns are the result's from this one on.
constexpr int primeraColumna = ColIdentificacion;
constexpr int pausaAlEscribir = 200; // ms

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

} // namespace

elecpaci::elecpaci(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("elecpaci"), tr("Elección del Paciente"))
    , etiqueta(new QLabel)
    , apellidoredu(new QLineEdit)
    , nombresredu(new QLineEdit)
    , listapaci(new ui::Grilla(QStringLiteral("listapaci"), encabezado))
    , cantidad(new QLabel)
    , nuevo(new QPushButton(ui::icono(QStringLiteral("contact-new")), tr("&Nuevo Paciente")))
    , aceptar(new QPushButton(ui::icono(QStringLiteral("dialog-ok")), QString()))
    , cancelar(new QPushButton(ui::icono(QStringLiteral("dialog-cancel")), tr("&Cancelar")))
    , m_pausa(new QTimer(this))
{
    etiqueta->setObjectName(QStringLiteral("etiqueta"));
    apellidoredu->setObjectName(QStringLiteral("apellidoredu"));
    nombresredu->setObjectName(QStringLiteral("nombresredu"));
    cantidad->setObjectName(QStringLiteral("cantidad"));
    nuevo->setObjectName(QStringLiteral("nuevo"));
    aceptar->setObjectName(QStringLiteral("aceptar"));
    cancelar->setObjectName(QStringLiteral("cancelar"));

    QFont destacada = etiqueta->font();
    destacada.setBold(true);
    etiqueta->setFont(destacada);

    auto *filtros = new QHBoxLayout;
    const auto agregarFiltro = [&](const QString &texto, QLineEdit *campo) {
        auto *rotulo = new QLabel(texto);
        rotulo->setBuddy(campo);
        filtros->addWidget(rotulo);
        filtros->addWidget(campo, 1);
        campo->setClearButtonEnabled(true);
        campo->installEventFilter(this);
        connect(campo, &QLineEdit::textChanged, m_pausa, qOverload<>(&QTimer::start));
    };
    agregarFiltro(tr("A&pellido:"), apellidoredu);
    filtros->addSpacing(12);
    agregarFiltro(tr("No&mbres:"), nombresredu);

    auto *botones = new QHBoxLayout;
    botones->addWidget(cantidad);
    botones->addStretch();
    botones->addWidget(nuevo);
    botones->addSpacing(12);
    botones->addWidget(aceptar);
    botones->addWidget(cancelar);

    auto *todo = new QVBoxLayout(this);
    todo->addWidget(etiqueta);
    todo->addLayout(filtros);
    todo->addWidget(listapaci, 1);
    todo->addLayout(botones);
    setMinimumSize(960, 540);

    ui::ModeloGrilla &modelo = listapaci->modelo();
    // The names get the room that is left over.
    listapaci->horizontalHeader()->setStretchLastSection(false);
    listapaci->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    modelo.setColumnaClave(ColNroHC);
    modelo.setTexto([this](const db::ResultSet &filas, int fila, int columna) {
        const int celda = columna + primeraColumna;
        if (celda == ColSaldo)
            return saldo(filas, fila);
        // Who has no second surname leaves a blank before the comma.
        const QString texto = filas.text(fila, celda);
        return celda == ColNombre ? QString(texto).replace(QLatin1String(" , "), QLatin1String(", ")) : texto;
    });

    for (int columna = 0; columna < modelo.columnCount(); ++columna)
        modelo.setOrden(columna, columna + primeraColumna);
    connect(listapaci->horizontalHeader(), &QHeaderView::sortIndicatorChanged, this, [this](int columna) {
        const bool porSaldo = columna + primeraColumna == ColSaldo;
        if (porSaldo && !m_porSaldo) {
            m_porSaldo = true;
            intentar([this] { buscar(); });
        }
        m_porSaldo = porSaldo;
    });

    m_pausa->setSingleShot(true);
    m_pausa->setInterval(pausaAlEscribir);
    connect(m_pausa, &QTimer::timeout, this, [this] { intentar([this] { buscar(); }); });
    connect(listapaci, &ui::Grilla::activada, this, [this] { intentar([this] { elegir(); }); });
    alPulsar(aceptar, [this] { elegir(); });
    alPulsar(nuevo, [this] { crear(); });
    connect(cancelar, &QPushButton::clicked, this, &QWidget::close);
}

bool elecpaci::preparar(const ui::Pedido &pedido)
{
    m_modo = pedido.datos.value(QStringLiteral("modo"), 1).toInt();
    const Rotulos r = rotulos(m_modo);
    aceptar->setText(QString::fromUtf16(r.boton));
    etiqueta->setText(QString::fromUtf16(r.etiqueta));
    apellidoredu->setFocus();
    buscar();
    return true;
}

void elecpaci::refrescar() { buscar(); }

QString elecpaci::ayuda() const
{
    return QStringLiteral(
        "BÚSQUEDA: Para aplicar filtros de búsqueda, debe ingresar en cada casilla del ítem a buscar una palabra "
        "completa "
        "o simplemente parte de la palabra, y luego presionar la tecla ' ENTER '. En el caso de la fecha de nacimiento "
        "debe ingresar una fecha completa del tipo ' dd/mm/aaaa '.");
}

void elecpaci::keyPressEvent(QKeyEvent *event)
{
    const bool enFiltro = focusWidget() == apellidoredu || focusWidget() == nombresredu;
    const bool hayFiltro = !apellidoredu->text().isEmpty() || !nombresredu->text().isEmpty();
    if (event->key() == Qt::Key_Escape && hayFiltro) {
        apellidoredu->clear();
        nombresredu->clear();
        apellidoredu->setFocus();
        intentar([this] { buscar(); });
    } else if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && enFiltro) {
        intentar([this] { buscar(); });
    } else {
        Ventana::keyPressEvent(event);
    }
}

bool elecpaci::eventFilter(QObject *objeto, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const int tecla = static_cast<QKeyEvent *>(event)->key();
        if (tecla == Qt::Key_Down || tecla == Qt::Key_PageDown) {
            irALista();
            return true;
        }
    }
    return Ventana::eventFilter(objeto, event);
}

void elecpaci::buscar()
{
    m_pausa->stop();
    FiltroPacientes filtro;
    filtro.apellido = apellidoredu->text();
    filtro.nombres = nombresredu->text();
    const auto filas = m_porSaldo ? buscarPacientesConSaldo(entorno(), filtro) : buscarPacientes(entorno(), filtro);
    if (!filas) {
        aceptado(filas.rechazo());
        return;
    }
    m_saldos.clear();
    listapaci->mostrar(*filas, primeraColumna);
    const int n = (*filas)->rowCount();
    if (n == 1)
        listapaci->elegirFila(0);
    cantidad->setText(n == 1 ? tr("1 paciente") : tr("%1 pacientes").arg(QLocale().toString(n)));
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
    const bool ficha = m_modo == 1;
    if (ficha
        && (ventanas().buscar(QStringLiteral("pacientes")) || ventanas().buscar(QStringLiteral("pacientesredu")))) {
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
    if (!ficha) {
        terminar(resultado);
        return;
    }
    const QString nombreFicha = QStringLiteral("pacientes");
    ui::Ventanas &todas = ventanas();
    if (!todas.existe(nombreFicha)) {
        entorno().mensajes().informar(
            base::titulo::atencion, tr("Esta ventana todavía no forma parte de esta versión de Vastelo."));
        return;
    }
    if (!todas.abrir(nombreFicha, {.datos = resultado}))
        return;
    // Closing gives the focus back to the opener; it belongs to the file now.
    terminar(resultado);
    (void)todas.activar(nombreFicha);
}

void elecpaci::crear()
{
    const QVariantMap supuesto{
        {QStringLiteral("apellido"), apellidoredu->text().trimmed()},
        {QStringLiteral("nombres"), nombresredu->text().trimmed()}};
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
                     sigue->apellidoredu->clear();
                     sigue->nombresredu->clear();
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

QString elecpaci::saldo(const db::ResultSet &filas, int fila)
{
    if (m_porSaldo && !filas.isNull(fila, ColSaldo))
        return base::dinero(filas.real(fila, ColSaldo));
    const qint64 nrohc = filas.integer(fila, ColNroHC);
    if (const auto conocido = m_saldos.constFind(nrohc); conocido != m_saldos.constEnd())
        return *conocido;

    const int inicio = fila / Saldos::pagina * Saldos::pagina;
    const int fin = std::min(filas.rowCount(), inicio + Saldos::pagina);
    std::vector<qint64> pacientes;
    for (int f = inicio; f < fin; ++f)
        pacientes.push_back(filas.integer(f, ColNroHC));
    try {
        const std::vector<double> saldos = Saldos(entorno()).calcular(pacientes);
        for (size_t i = 0; i < pacientes.size(); ++i)
            m_saldos.insert(pacientes[i], base::dinero(saldos[i]));
    } catch (const db::Error &) {
        // Painting cannot stop to tell; the next action on the database will. Nor should it try again for each cell.
        for (const qint64 paciente : pacientes)
            m_saldos.insert(paciente, QString());
    }
    return m_saldos.value(nrohc);
}

} // namespace patients
