#pragma once

#include "patients/BusquedaRapida.h"

#include <QLineEdit>

class QStandardItemModel;
class QTimer;

namespace db {
class Entorno;
}

namespace patients {

/// Chooses a patient by typing: surname, "surname, names" or document. The patients found drop down below the field;
/// Enter or a click takes one. The only one found is ready to be taken with Enter. Typing on lets the chosen patient
/// go.
class CampoPaciente : public QLineEdit
{
    Q_OBJECT

public:
    CampoPaciente(db::Entorno &entorno, QWidget *parent = nullptr);

    /// 0 while none is chosen.
    [[nodiscard]] int nrohc() const { return m_nrohc; }
    /// Shows a patient as the chosen one; with 0, whatever text, none.
    void setPaciente(int nrohc, const QString &nombre);

signals:
    /// Another patient is chosen; 0: the former one was let go.
    void elegido(int nrohc);
    /// Enter on a text that names no single patient: whoever knows the chooser opens it with that text.
    void listaPedida(const QString &apellido, const QString &nombres);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void alEscribir();
    void buscar();
    void tomar(int fila);
    void alEnter();

    db::Entorno &m_entorno;
    QStandardItemModel *m_modelo;
    QTimer *m_pausa;
    BusquedaRapida m_hallados;
    QString m_buscado; ///< the text of m_hallados
    int m_nrohc = 0;
};

} // namespace patients
