#pragma once

#include <QToolButton>
#include <QVector>

namespace db {
class Entorno;
}
namespace ui {
class Ventanas;
}

namespace app {

/// Tells in the status bar that data were left unsaved by a program that went away, and opens them: each window offers
/// its own back. What is being typed in this session is none of its business. Out of sight while there is nothing.
class AvisoBorradores : public QToolButton
{
    Q_OBJECT

public:
    AvisoBorradores(db::Entorno &entorno, ui::Ventanas &ventanas, QWidget *parent = nullptr);

    /// Looks for what was left unsaved before now, for the start of a session or another user. Throws db::Error.
    void buscar();

private:
    void llenarMenu();
    void mostrar();

    db::Entorno &m_entorno;
    ui::Ventanas &m_ventanas;
    QVector<qint64> m_deAntes;
};

} // namespace app
