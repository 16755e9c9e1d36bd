#include "patients/forms/OpcionCobertura.h"

#include "patients/Ficha.h"
#include "ui/Estilo.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QRadioButton>

namespace patients {

OpcionCobertura::OpcionCobertura(QWidget *parent)
    : QWidget(parent)
    , concobertura(new QRadioButton(tr("C&on cobertura"), this))
    , sincobertura(new QRadioButton(tr("Sin cobertura"), this))
    , coberturasinindicar(new QRadioButton(tr("Sin indicar"), this))
{
    concobertura->setObjectName(QStringLiteral("concobertura"));
    sincobertura->setObjectName(QStringLiteral("sincobertura"));
    coberturasinindicar->setObjectName(QStringLiteral("coberturasinindicar"));
    auto *fila = new QHBoxLayout(this);
    fila->setContentsMargins(0, 0, 0, 0);
    fila->setSpacing(2 * ui::espacio);
    // Without a group of their own they would count among the options of the window around them.
    auto *grupo = new QButtonGroup(this);
    for (QRadioButton *opcion : {concobertura, sincobertura, coberturasinindicar}) {
        fila->addWidget(opcion);
        grupo->addButton(opcion);
        connect(opcion, &QRadioButton::toggled, this, &OpcionCobertura::avisar);
    }
    coberturasinindicar->setChecked(true);
    setFocusProxy(concobertura);
}

int OpcionCobertura::cobertura() const
{
    return concobertura->isChecked() ? ConCobertura : sincobertura->isChecked() ? SinCobertura : CoberturaSinIndicar;
}

void OpcionCobertura::setCobertura(int cobertura)
{
    QRadioButton *suya = cobertura == ConCobertura ? concobertura
        : cobertura == SinCobertura                ? sincobertura
                                                   : coberturasinindicar;
    suya->setChecked(true);
}

void OpcionCobertura::setPuedeFaltar(bool puede) { coberturasinindicar->setVisible(puede); }

void OpcionCobertura::avisar()
{
    const int ahora = cobertura();
    // Of two buttons that change places each tells: the one that goes off finds the other not yet on, or on.
    const bool alguno = concobertura->isChecked() || sincobertura->isChecked() || coberturasinindicar->isChecked();
    if (!alguno || ahora == m_avisada)
        return;
    m_avisada = ahora;
    emit coberturaCambiada(ahora);
}

} // namespace patients
