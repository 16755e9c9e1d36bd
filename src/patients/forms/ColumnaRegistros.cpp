#include "patients/forms/ColumnaRegistros.h"

#include "ui/Botones.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace patients {

ColumnaRegistros::ColumnaRegistros(QWidget *parent)
    : QWidget(parent)
{
    auto *columna = new QVBoxLayout(this);
    columna->setContentsMargins(0, 0, 0, 0);
    columna->setSpacing(2);
    for (const BotonRegistro &registro : registrosPaciente()) {
        if (registro.abreGrupo)
            columna->addSpacing(8);
        QPushButton *boton = ui::boton(this, registro.nombre, registro.titulo, registro.icono);
        boton->setStyleSheet(QStringLiteral("text-align:left; padding:3px 6px;"));
        columna->addWidget(boton);
        connect(boton, &QPushButton::clicked, this, [this, &registro] { emit pulsado(registro); });
        m_botones.push_back(boton);
    }
    columna->addStretch(1);
}

void ColumnaRegistros::setActiva(bool activa, const QString &porQue)
{
    const std::vector<BotonRegistro> &registros = registrosPaciente();
    for (size_t i = 0; i < m_botones.size(); ++i) {
        m_botones[i]->setEnabled(activa);
        m_botones[i]->setToolTip(activa ? registros[i].ayuda : porQue);
    }
}

} // namespace patients
