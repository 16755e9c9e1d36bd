#pragma once

#include <QDate>
#include <QWidget>

#include <functional>

class QPushButton;
class QToolButton;

namespace agenda {

class CalendarioMes;

/// The row above a month calendar: a year or a month back, today, a month or a year on.
class FlechasMes : public QWidget
{
    Q_OBJECT

public:
    /// `queDiaEs` says which day it is.
    FlechasMes(CalendarioMes &calendario, const std::function<QDate()> &queDiaEs, QWidget *parent);

    QToolButton *fechaaniomenos;
    QToolButton *fechamesmenos;
    QPushButton *hoy;
    QToolButton *fechamesmas;
    QToolButton *fechaaniomas;
};

} // namespace agenda
