#include "agenda/forms/agendamanana.h"

#include "agenda/Exportacion.h"
#include "agenda/GrillaDia.h"
#include "agenda/TelefonoMovil.h"
#include "agenda/Textos.h"
#include "agenda/forms/Enlaces.h"
#include "base/Clock.h"
#include "base/Fechas.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"
#include "printing/AnchosTabla.h"
#include "printing/Armar.h"
#include "printing/forms/Ver.h"
#include "ui/CampoFecha.h"
#include "ui/Grilla.h"
#include "ui/ListaCombo.h"
#include "ui/NombreArchivo.h"
#include "ui/Preferencias.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QUrl>

#include <algorithm>

namespace agenda {

namespace {
const QString claveModelo = QStringLiteral("agendamanana/mensaje");
}

agendamanana::agendamanana(db::Entorno &entorno, ui::Ventanas &ventanas, std::shared_ptr<Enlaces> enlaces)
    : Ventana(entorno, ventanas, QStringLiteral("agendamanana"), tr("Turnos de mañana"))
    , m_enlaces(std::move(enlaces))
{
    construir();
    ponerModelo(ui::Preferencias::leer(claveModelo, modeloDeAviso()));
    conectar();
}

bool agendamanana::preparar(const ui::Pedido &pedido)
{
    if (!aceptado(db::controlarDerecho(entorno(), derechoAgendas)))
        return false;
    std::vector<std::pair<QString, int>> entradas{{tr("<Todos los profesionales>"), 0}};
    for (const db::Doctor &d : db::profesionales(conexion()))
        entradas.emplace_back(d.nombre, d.id);
    {
        const QSignalBlocker calla(lisdocto);
        ui::ponerEntradas(*lisdocto, entradas);
        ui::elegirId(*lisdocto, pedido.datos.value(QStringLiteral("doctor")).toInt());
    }
    const int doctor = ui::idElegido(*lisdocto);
    const QDate hoy = entorno().clock().today();
    const QDate pedida = pedido.datos.value(QStringLiteral("fecha")).toDate();
    fecha->setHoy(hoy);
    fecha->setFecha(pedida.isValid() ? pedida : proximoDiaConTurnos(conexion(), doctor, hoy));
    cargar();
    lista->setFocus();
    if (lista->modelo().rowCount() > 0)
        lista->elegirFila(0);
    return true;
}

void agendamanana::refrescar() { cargar(); }

void agendamanana::cargar()
{
    // What is half typed is no other day yet.
    if (fecha->fecha().isValid())
        m_fecha = fecha->fecha();
    auto turnos = turnosAAvisar(entorno(), ui::idElegido(*lisdocto), m_fecha);
    if (!turnos) {
        aceptado(turnos.rechazo());
        return;
    }
    m_turnos = *turnos;
    std::vector<QStringList> filas;
    std::vector<qint64> claves;
    for (const TurnoListado &t : m_turnos) {
        const auto movil = movilDe(t.celular, t.tel);
        filas.push_back(
            {horaTexto(t.momento.time()),
             t.medico,
             t.paciente(),
             t.telefonos(),
             movil ? u'+' + *movil : tr("(no se reconoce)")});
        claves.push_back(t.id);
    }
    lista->mostrar(std::move(filas), std::move(claves));
    mostrarEstado();
    mostrarMensaje();
}

void agendamanana::mostrarEstado()
{
    const auto sinMovil = std::count_if(
        m_turnos.begin(), m_turnos.end(), [](const TurnoListado &t) { return !movilDe(t.celular, t.tel); });
    QString texto = fechaLarga(m_fecha) + QStringLiteral(": ");
    texto += m_turnos.empty() ? tr("no hay turnos.") : cantidadTurnos(int(m_turnos.size()));
    if (!m_turnos.empty())
        texto += sinMovil == 0 ? QStringLiteral(".") : tr(", %1 sin un celular que se reconozca.").arg(sinMovil);
    estado->setText(texto);
    for (QPushButton *boton : {copiarlista, exportarlista, imprimir})
        boton->setEnabled(!m_turnos.empty());
}

const TurnoListado *agendamanana::turnoActual() const
{
    const qint64 id = lista->claveActual();
    const auto suyo
        = std::find_if(m_turnos.begin(), m_turnos.end(), [id](const TurnoListado &t) { return t.id == id; });
    return id != 0 && suyo != m_turnos.end() ? &*suyo : nullptr;
}

void agendamanana::mostrarMensaje()
{
    const TurnoListado *turno = turnoActual();
    const QString texto = turno ? textoAviso(modelo->toPlainText(), *turno) : QString();
    if (mensaje->toPlainText() != texto)
        mensaje->setPlainText(texto);
    copiarmensaje->setEnabled(!texto.trimmed().isEmpty());
    abrirenlace->setEnabled(turno && !turno->pacienteEliminado);
}

void agendamanana::ponerModelo(const QString &texto) { modelo->setPlainText(texto); }

void agendamanana::abrirConversacion()
{
    const TurnoListado *turno = turnoActual();
    if (!turno)
        return;
    const auto movil = movilDe(turno->celular, turno->tel);
    if (!movil) {
        entorno().mensajes().advertir(
            base::titulo::atencion,
            tr("No se puede estar seguro del número de celular de %1 (%2): hace falta la característica, por ejemplo "
               "0341 156123456. Corríjalo en la ficha del paciente, o copie el mensaje y envíelo a mano.")
                .arg(turno->paciente(), turno->telefonos().isEmpty() ? tr("sin teléfonos") : turno->telefonos()));
        return;
    }
    if (!m_enlaces->abrir(enlaceDeMensaje(*movil, mensaje->toPlainText())))
        entorno().mensajes().fallar(
            base::titulo::error, tr("No hay un programa que abra la conversación. Copie el mensaje y envíelo a mano."));
}

void agendamanana::print()
{
    printing::Contenido contenido;
    contenido.titulo = tr("Turnos a avisar del %1").arg(base::fechaTexto(m_fecha));
    contenido.subtitulo = fechaLarga(m_fecha) + u'\n' + lisdocto->currentText().remove(u'<').remove(u'>');
    contenido.tabla = printing::tablaDe(*lista);
    contenido.hoja.apaisada = printing::convieneApaisada(*contenido.tabla, contenido.hoja);
    printing::ver(ventanas(), printing::armar(entorno(), contenido), this);
}

void agendamanana::exportar(const ui::Grilla &)
{
    const QDate dia = m_fecha;
    const auto archivo = entorno().mensajes().elegirDestino(
        tr("Exportar"),
        ui::nombreDeArchivo(tr("Turnos a avisar del %1").arg(base::fechaTexto(dia))) + QStringLiteral(".csv"),
        tr("Planilla (*.csv)"));
    if (archivo)
        intentar([&] { aceptado(exportarAvisos(entorno(), m_turnos, dia, modelo->toPlainText(), *archivo)); });
}

void agendamanana::conectar()
{
    connect(lisdocto, &QComboBox::currentIndexChanged, this, [this] { intentar([this] { cargar(); }); });
    connect(fecha, &QLineEdit::editingFinished, this, [this] {
        if (fecha->fecha() != m_fecha)
            intentar([this] { cargar(); });
    });
    connect(lista, &ui::Grilla::filaCambiada, this, [this] { mostrarMensaje(); });
    connect(lista, &ui::Grilla::activada, this, [this] { copiarmensaje->click(); });
    connect(modelo, &QPlainTextEdit::textChanged, this, [this] {
        ui::Preferencias::guardar(claveModelo, modelo->toPlainText());
        mostrarMensaje();
    });
    alPulsar(restaurar, [this] { ponerModelo(modeloDeAviso()); });
    alPulsar(copiarmensaje, [this] {
        QApplication::clipboard()->setText(mensaje->toPlainText());
        if (const TurnoListado *turno = turnoActual())
            estado->setText(tr("Se copió el mensaje para %1.").arg(turno->paciente()));
    });
    alPulsar(abrirenlace, [this] { abrirConversacion(); });
    alPulsar(copiarlista, [this] {
        copiar(*lista, false);
        estado->setText(tr("Se copió la lista."));
    });
    alPulsar(exportarlista, [this] { exportar(*lista); });
    alPulsar(imprimir, [this] { print(); });
}

} // namespace agenda
