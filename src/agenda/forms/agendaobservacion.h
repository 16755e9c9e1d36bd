#pragma once

#include "ui/Ventana.h"

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace agenda {

/// Edits the observations of the appointment "id".
class agendaobservacion : public ui::Ventana
{
    Q_OBJECT

public:
    agendaobservacion(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;
    [[nodiscard]] bool hayCambios() const override;

    QLabel *turno;
    QPlainTextEdit *observacionestur;
    QPushButton *guardar;
    QPushButton *cancelar;

private:
    void save();

    qint64 m_id = 0;
    QString m_guardadas;
};

} // namespace agenda
