#include "maintenance/forms/OpcionesAbiertas.h"

#include <QHBoxLayout>
#include <QRadioButton>

namespace maintenance {

OpcionesAbiertas::OpcionesAbiertas(const std::vector<Ajuste::Opcion> &opciones, QWidget *parent)
    : QWidget(parent)
{
    auto *fila = new QHBoxLayout(this);
    fila->setContentsMargins(0, 0, 0, 0);
    fila->setSpacing(16);
    for (const Ajuste::Opcion &opcion : opciones) {
        auto *boton = new QRadioButton(opcion.texto, this);
        boton->setObjectName(opcion.nombre);
        fila->addWidget(boton);
        m_botones.emplace_back(boton, opcion.valor);
        connect(boton, &QRadioButton::toggled, this, [this](bool elegido) {
            if (elegido)
                emit cambiado();
        });
        if (!focusProxy())
            setFocusProxy(boton);
    }
    fila->addStretch(1);
}

QVariant OpcionesAbiertas::valor() const
{
    for (const auto &[boton, valor] : m_botones)
        if (boton->isChecked())
            return valor;
    return {};
}

void OpcionesAbiertas::setValor(const QVariant &valor)
{
    for (const auto &[boton, suyo] : m_botones) {
        // One of an exclusive set cannot be unchecked otherwise.
        boton->setAutoExclusive(false);
        boton->setChecked(!valor.isNull() && suyo == valor.toInt());
        boton->setAutoExclusive(true);
    }
}

} // namespace maintenance
