#include "Pantallas.h"

#include "Camara.h"
#include "Consultorio.h"
#include "app/forms/Composicion.h"
#include "app/forms/sistema.h"
#include "db/Error.h"
#include "db/Verificacion.h"
#include "ui/Grilla.h"
#include "ui/MensajesQt.h"
#include "ui/Ventana.h"
#include "ui/Ventanas.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QCursor>
#include <QDialog>
#include <QDir>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTimer>

namespace pantallas {

namespace {

/// The program as one picture needs it, driven as a person would: by the names of the controls.
class Escena
{
public:
    explicit Escena(Consultorio &consultorio)
        : m_consultorio(consultorio)
    {
        app::registrarVentanas(consultorio, m_ventanas);
        m_marco = std::make_unique<app::sistema>(consultorio, consultorio, m_ventanas);
        m_marco->setGeometry(0, 0, 1280, 800);
        QCursor::setPos(700, 799); // over nothing that would light up
        m_marco->show();
        m_marco->activateWindow();
        asentar();
    }

    [[nodiscard]] Consultorio &consultorio() { return m_consultorio; }
    [[nodiscard]] ui::Ventanas &ventanas() { return m_ventanas; }
    [[nodiscard]] QWidget &marco() { return *m_marco; }
    [[nodiscard]] const QStringList &problemas() const { return m_problemas; }

    /// A control of an open window; of the frame, when `ventana` is empty. Null and a problem when there is none.
    template <typename Control = QWidget>
    Control *control(const QString &ventana, const QString &nombre)
    {
        QWidget *donde = ventana.isEmpty() ? m_marco.get() : static_cast<QWidget *>(m_ventanas.buscar(ventana));
        auto *suyo = donde ? donde->findChild<Control *>(nombre) : nullptr;
        if (!suyo)
            m_problemas << QStringLiteral("no hay %1 en %2").arg(nombre, ventana);
        return suyo;
    }
    void pulsar(const QString &ventana, const QString &nombre)
    {
        auto *boton = control<QAbstractButton>(ventana, nombre);
        if (boton && !boton->isEnabled())
            m_problemas << QStringLiteral("%1 de %2 no se puede pulsar").arg(nombre, ventana);
        else if (boton)
            boton->click();
        asentar();
    }
    void escribir(const QString &ventana, const QString &nombre, const QString &texto)
    {
        if (auto *campo = control<QLineEdit>(ventana, nombre)) {
            campo->setFocus();
            campo->setText(texto);
        }
    }
    void tecla(const QString &ventana, const QString &nombre, Qt::Key cual)
    {
        if (auto *campo = control(ventana, nombre)) {
            QKeyEvent abajo(QEvent::KeyPress, cual, Qt::NoModifier);
            QApplication::sendEvent(campo, &abajo);
        }
        asentar();
    }
    /// Chooses the row of a list whose cell reads so.
    void elegir(const QString &ventana, const QString &nombre, int columna, const QString &texto)
    {
        auto *grilla = control<ui::Grilla>(ventana, nombre);
        if (!grilla)
            return;
        for (int fila = 0; fila < grilla->modelo().rowCount(); ++fila)
            if (grilla->modelo().index(fila, columna).data().toString() == texto) {
                grilla->elegirFila(fila);
                asentar();
                return;
            }
        m_problemas << QStringLiteral("no hay %1 en %2 de %3").arg(texto, nombre, ventana);
    }

    void abrirAgenda(const QString &hora)
    {
        pulsar({}, QStringLiteral("menagendas"));
        elegir(QStringLiteral("agendas"), QStringLiteral("lista"), 0, hora);
    }

private:
    Consultorio &m_consultorio;
    ui::Ventanas m_ventanas;
    std::unique_ptr<app::sistema> m_marco;
    QStringList m_problemas;
};

struct Pantalla {
    QString archivo; ///< without its ending
    std::function<void(Escena &)> preparar;
    /// What the picture is taken during: a message box, which returns when it is closed. Null: preparar() is enough.
    std::function<void(Escena &, base::Mensajes &)> decir = {};
    bool conBase = true; ///< whether the program has found its database
};

const QString agendas = QStringLiteral("agendas");
const QString booking = QStringLiteral("agendanuevoturno");
const QString chooser = QStringLiteral("elecpaci");
const QString alta = QStringLiteral("nuevopaci");
const QString taken = QStringLiteral("11:20"); ///< arrived and waiting, with an extra appointment
const QString libre = QStringLiteral("16:20");

void elegirPaciente(Escena &e)
{
    e.pulsar({}, QStringLiteral("menpacientes"));
    e.escribir(chooser, QStringLiteral("apellidoredu"), QStringLiteral("gar"));
    e.tecla(chooser, QStringLiteral("apellidoredu"), Qt::Key_Return);
}

void buscarEnTodo(Escena &e)
{
    e.pulsar({}, QStringLiteral("menpacientes"));
    e.pulsar(chooser, QStringLiteral("opcionampli"));
    e.pulsar(chooser, QStringLiteral("sicober"));
    e.escribir(chooser, QStringLiteral("apellido"), QStringLiteral("gar"));
    e.escribir(chooser, QStringLiteral("edad1"), QStringLiteral("18"));
    e.tecla(chooser, QStringLiteral("edad1"), Qt::Key_Return);
}

void reservar(Escena &e)
{
    e.abrirAgenda(libre);
    e.pulsar(agendas, QStringLiteral("nuevo"));
    e.pulsar(booking, QStringLiteral("elegirpaciente"));
    e.escribir(chooser, QStringLiteral("apellidoredu"), QStringLiteral("fern"));
    e.tecla(chooser, QStringLiteral("apellidoredu"), Qt::Key_Return);
    if (auto *lista = e.control<ui::Grilla>(chooser, QStringLiteral("listapaci")))
        lista->elegirFila(0);
    e.pulsar(chooser, QStringLiteral("aceptar"));
    if (auto *motivo = e.control<QComboBox>(booking, QStringLiteral("motivo")))
        motivo->setCurrentText(QStringLiteral("Control de salud"));
    if (auto *texto = e.control<QPlainTextEdit>(booking, QStringLiteral("observacionestur")))
        texto->setPlainText(QStringLiteral("Primera vez. Trae estudios."));
}

void darDeAlta(Escena &e)
{
    e.pulsar({}, QStringLiteral("menpacientes"));
    e.pulsar(chooser, QStringLiteral("nuevo"));
    const std::pair<QString, QString> datos[]
        = {{QStringLiteral("apellidor"), QStringLiteral("Giménez")},
           {QStringLiteral("nombresr"), QStringLiteral("Marta Elena")},
           {QStringLiteral("dnir"), QStringLiteral("24518903")},
           {QStringLiteral("telparr"), QStringLiteral("0341 155512345")},
           {QStringLiteral("domicilior"), QStringLiteral("San Martín 1450")},
           {QStringLiteral("emailr"), QStringLiteral("marta@ejemplo.com.ar")}};
    for (const auto &[campo, texto] : datos)
        e.escribir(alta, campo, texto);
    if (auto *cobertura = e.control<QComboBox>(alta, QStringLiteral("coberturar")))
        cobertura->setCurrentIndex(qMin(2, cobertura->count() - 1));
}

std::function<void(Escena &)> deTurno(const QString &boton)
{
    return [boton](Escena &e) {
        e.abrirAgenda(taken);
        e.pulsar(agendas, boton);
    };
}

const std::vector<Pantalla> &lista()
{
    static const std::vector<Pantalla> todas{
        {QStringLiteral("sistema"), [](Escena &) {}},
        {agendas, [](Escena &e) { e.abrirAgenda(taken); }},
        {booking, reservar},
        {QStringLiteral("agendahorarios"),
         [](Escena &e) {
             e.abrirAgenda(taken);
             e.pulsar(agendas, QStringLiteral("horarios"));
         }},
        {QStringLiteral("agendamodifturno"), deTurno(QStringLiteral("modifhora"))},
        {QStringLiteral("agendamotivo"), deTurno(QStringLiteral("modifmoticonsul"))},
        {QStringLiteral("agendaobservacion"), deTurno(QStringLiteral("modifobservacion"))},
        {chooser, elegirPaciente},
        {QStringLiteral("elecpaci-amplia"), buscarEnTodo},
        {alta, darDeAlta},
        {QStringLiteral("mensaje-eliminar"),
         [](Escena &e) { e.abrirAgenda(taken); },
         [](Escena &e, base::Mensajes &) { e.pulsar(agendas, QStringLiteral("liberar")); }},
        {QStringLiteral("mensaje-sin-base"),
         [](Escena &) {},
         [](Escena &e, base::Mensajes &) { e.pulsar({}, QStringLiteral("menagendas")); },
         false},
        {QStringLiteral("mensaje-base-daniada"),
         [](Escena &) {},
         [](Escena &, base::Mensajes &mensajes) {
             db::avisarBaseDaniada(
                 mensajes,
                 db::Error(
                     db::Error::Kind::Corrupt, 11, QStringLiteral("El archivo de la base de datos está dañado.")));
         },
         false},
    };
    return todas;
}

/// Runs something that ends up in a message box, and takes the picture while it waits for its answer.
QImage retratoDelMensaje(Escena &escena, const Pantalla &pantalla)
{
    QImage imagen;
    ui::MensajesQt cajas;
    escena.consultorio().setMensajes(&cajas);
    QTimer::singleShot(0, &escena.marco(), [&] {
        auto *caja = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!caja)
            return;
        imagen = retrato(escena.marco());
        caja->reject();
    });
    pantalla.decir(escena, cajas);
    escena.consultorio().setMensajes(nullptr);
    return imagen;
}

} // namespace

Resultado retratar(const QString &carpeta)
{
    Resultado resultado;
    Consultorio consultorio;
    if (!QDir().mkpath(carpeta))
        resultado.problemas << QStringLiteral("no se puede escribir en %1").arg(carpeta);

    QStringList registradas;
    for (const Pantalla &pantalla : lista()) {
        consultorio.hayBase = pantalla.conBase;
        Escena escena(consultorio);
        registradas = escena.ventanas().nombres();
        pantalla.preparar(escena);
        asentar();
        const QImage imagen = pantalla.decir ? retratoDelMensaje(escena, pantalla) : retrato(escena.marco());
        for (const QString &nombre : registradas) {
            const ui::Ventana *abierta = escena.ventanas().buscar(nombre);
            if (abierta && abierta->isVisible() && !resultado.ventanas.contains(nombre))
                resultado.ventanas << nombre;
        }
        const QString archivo = pantalla.archivo + QStringLiteral(".png");
        if (!imagen.isNull() && guardar(imagen, carpeta + u'/' + archivo))
            resultado.archivos << archivo;
        else
            resultado.problemas << QStringLiteral("no se pudo hacer %1").arg(archivo);
        for (const QString &problema : escena.problemas())
            resultado.problemas << archivo + QStringLiteral(": ") + problema;
    }
    resultado.ventanas.sort();
    for (const QString &nombre : registradas)
        if (!resultado.ventanas.contains(nombre))
            resultado.faltan << nombre;
    resultado.problemas << consultorio.escritos.dichos();
    return resultado;
}

} // namespace pantallas
