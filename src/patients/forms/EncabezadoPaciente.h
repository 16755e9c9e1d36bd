#pragma once

#include "patients/ResumenPaciente.h"

#include <QFrame>
#include <QLabel>

class QToolButton;

namespace patients {

class BandaAviso;
class RotuloCorto;

/// Who this window is about: name, age, identifier and coverage, with the alerts and the important notes below in
/// colours that cannot be overlooked. Every window about a patient carries it at its top.
class EncabezadoPaciente : public QFrame
{
    Q_OBJECT

public:
    explicit EncabezadoPaciente(QWidget *parent = nullptr);

    void mostrar(const ResumenPaciente &resumen);
    /// Nobody yet: `texto` stands where the name would.
    void mostrarNadie(const QString &texto);
    /// Another station removed the patient: said across the whole width, everything else as it was.
    void mostrarEliminado(const QString &texto);

    RotuloCorto *nombre;
    QLabel *datos; ///< age and identifier
    RotuloCorto *cobertura;
    QLabel *inactivo;
    BandaAviso *alertas;
    BandaAviso *notas;
    BandaAviso *eliminado;
};

/// One line of text that is shortened to its room, and whole in its tool tip.
class RotuloCorto : public QLabel
{
    Q_OBJECT

public:
    RotuloCorto(const QString &nombre, Qt::TextElideMode donde, QWidget *parent);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Qt::TextElideMode m_donde;
};

/// A band of colour with a text; a long one shows its beginning and opens on demand. Out of sight while it has none.
class BandaAviso : public QFrame
{
    Q_OBJECT

public:
    BandaAviso(const QString &nombre, const QString &titulo, const QColor &fondo, const QColor &letra, QWidget *parent);

    void setTexto(const QString &texto);
    [[nodiscard]] QString texto() const { return m_texto; }

private:
    void mostrar();

    QString m_titulo;
    QString m_texto;
    bool m_abierta = false;
    QLabel *m_rotulo;
    QToolButton *m_mas;
};

} // namespace patients
