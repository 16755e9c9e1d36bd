#include "maintenance/forms/listareemplazo.h"

#include "db/Entorno.h"
#include "maintenance/Entradas.h"
#include "maintenance/Reemplazo.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"
#include "ui/Iconos.h"
#include "ui/ListaCombo.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace maintenance {

listareemplazo::listareemplazo(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("listareemplazo"), tr("Reemplazar una entrada"))
    , entrada(new QLabel(this))
    , usos(new QLabel(this))
    , destino(new QComboBox(this))
{
    entrada->setObjectName(QStringLiteral("entrada"));
    entrada->setTextFormat(Qt::PlainText);
    entrada->setWordWrap(true);
    QFont destacada = entrada->font();
    destacada.setBold(true);
    entrada->setFont(destacada);
    usos->setObjectName(QStringLiteral("usos"));
    usos->setTextFormat(Qt::PlainText);
    usos->setWordWrap(true);
    destino->setObjectName(QStringLiteral("destino"));
    auto *rotulo = new QLabel(tr("En su &lugar queda:"), this);
    rotulo->setBuddy(destino);
    const ui::FinDeFormulario fin = ui::finDeFormulario(this);
    guardar = fin.guardar;
    guardar->setText(tr("&Reemplazar"));
    guardar->setIcon(ui::icono(QStringLiteral("document-multiple")));
    cancelar = fin.cancelar;

    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->setSpacing(ui::espacio);
    todo->addWidget(entrada);
    todo->addWidget(usos);
    todo->addSpacing(ui::espacio);
    todo->addWidget(rotulo);
    todo->addWidget(destino);
    todo->addStretch(1);
    todo->addLayout(fin.fila);
    setMinimumSize(520, 180);

    alPulsar(guardar, [this] { reemplazar(); });
    connect(cancelar, &QPushButton::clicked, this, &QWidget::close);
}

bool listareemplazo::preparar(const ui::Pedido &pedido)
{
    m_lista = maintenance::lista(pedido.datos.value(QStringLiteral("lista")).toString());
    m_id = pedido.datos.value(QStringLiteral("id")).toLongLong();
    if (!m_lista)
        return false;
    const auto suya = leerEntrada(conexion(), *m_lista, m_id);
    if (!suya)
        return aceptado(entradaEliminada());
    entrada->setText(m_lista->titulo + QStringLiteral(": ") + textoEntrada(*m_lista, *suya));
    const CuentaUsos cuenta = contarUsos(conexion(), *m_lista, m_id);
    usos->setText(cuenta.estaEnUso() ? tr("Está en uso en %1.").arg(cuenta.texto()) : tr("No está en uso."));

    std::vector<std::pair<QString, int>> otras;
    if (m_lista->vaciable)
        otras.emplace_back(tr("<Ninguna: dejar esos registros sin este dato>"), 0);
    int igual = -1; // the other of two entries of one name is what it was opened for
    const db::Rows filas = leerEntradas(conexion(), *m_lista);
    for (int i = 0; i < filas->rowCount(); ++i) {
        const int id = int(filas->integer(i, 0));
        if (id == m_id)
            continue;
        otras.emplace_back(textoEntrada(*m_lista, *filas, i), id);
        if (filas->text(i, 1).simplified().compare(suya->nombre.simplified(), Qt::CaseInsensitive) == 0)
            igual = id;
    }
    ui::ponerEntradas(*destino, otras);
    ui::elegirId(*destino, igual);
    destino->setFocus();
    return true;
}

void listareemplazo::reemplazar()
{
    const int otra = ui::idElegido(*destino, -1);
    const auto hecho = reemplazarEntrada(entorno(), *m_lista, m_id, otra);
    if (!hecho)
        aceptado(hecho.rechazo());
    else if (*hecho)
        terminar({{QStringLiteral("id"), otra}});
}

} // namespace maintenance
