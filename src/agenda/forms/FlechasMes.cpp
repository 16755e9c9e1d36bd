#include "agenda/forms/FlechasMes.h"

#include "agenda/forms/CalendarioMes.h"
#include "ui/Botones.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QToolButton>

namespace agenda {

FlechasMes::FlechasMes(CalendarioMes &calendario, const std::function<QDate()> &queDiaEs, QWidget *parent)
    : QWidget(parent)
    , fechaaniomenos(
          ui::flecha(this, QStringLiteral("fechaaniomenos"), QStringLiteral("«"), tr("Año anterior (Mayús+Re Pág)")))
    , fechamesmenos(ui::flecha(this, QStringLiteral("fechamesmenos"), QStringLiteral("‹"), tr("Mes anterior (Re Pág)")))
    , hoy(ui::boton(
          this,
          QStringLiteral("hoy"),
          tr("Ho&y"),
          QStringLiteral("go-jump-today"),
          tr("Ir al día de hoy (Ctrl+Inicio)")))
    , fechamesmas(ui::flecha(this, QStringLiteral("fechamesmas"), QStringLiteral("›"), tr("Mes siguiente (Av Pág)")))
    , fechaaniomas(
          ui::flecha(this, QStringLiteral("fechaaniomas"), QStringLiteral("»"), tr("Año siguiente (Mayús+Av Pág)")))
{
    auto *fila = new QHBoxLayout(this);
    fila->setContentsMargins(0, 0, 0, 0);
    fila->setSpacing(2);
    fila->addWidget(fechaaniomenos);
    fila->addWidget(fechamesmenos);
    fila->addWidget(hoy, 1);
    fila->addWidget(fechamesmas);
    fila->addWidget(fechaaniomas);

    const auto ir = [&calendario](QAbstractButton *boton, const std::function<QDate(QDate)> &cual) {
        connect(boton, &QAbstractButton::clicked, &calendario, [&calendario, cual] {
            calendario.setFecha(cual(calendario.fecha()));
        });
    };
    ir(hoy, [queDiaEs](QDate) { return queDiaEs(); });
    ir(fechamesmas, [](QDate dia) { return dia.addMonths(1); });
    ir(fechamesmenos, [](QDate dia) { return dia.addMonths(-1); });
    ir(fechaaniomas, [](QDate dia) { return dia.addYears(1); });
    ir(fechaaniomenos, [](QDate dia) { return dia.addYears(-1); });
}

} // namespace agenda
