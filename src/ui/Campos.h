#pragma once

#include "base/Rechazo.h"
#include "ui/Campo.h"

#include <QHash>
#include <QObject>
#include <QVariantMap>

#include <vector>

class QGroupBox;
class QLabel;
class QWidget;

namespace db {
class Connection;
class ResultSet;
struct Column;
} // namespace db

namespace ui {

/// Binds the declared fields of a form to the columns of one row: makes their controls, loads a row into them, hands
/// back what they hold, and knows what the person changed. A field that was not touched always gives back the very
/// value that was loaded, also one that its control cannot show (a deleted entry of a list, a Null, a text with a line
/// break), so that a save changes only what was changed.
///
/// Values by kind: Texto and Memo QString, Entero int, Decimal double, Fecha QDate, Bandera bool, Eleccion and Lista
/// int (the id), Propio what its USER property holds; a null QVariant for Null.
class Campos : public QObject
{
    Q_OBJECT

public:
    explicit Campos(QWidget *ventana);

    /// Makes the control of a field, without placing it; object name and tool tip are set, the parent is the window
    /// until a layout takes it.
    QWidget *crear(const Campo &campo);
    /// Takes over a control of the window's own for a field of kind Propio; it needs a USER property with NOTIFY.
    void agregar(const Campo &campo, QWidget *control);
    /// A titled group of fields in `columnas` pairs of label and control, filled row by row.
    [[nodiscard]] QGroupBox *grupo(const QString &titulo, const std::vector<Campo> &campos, int columnas = 1);
    /// The same without a frame.
    [[nodiscard]] QWidget *plano(const std::vector<Campo> &campos, int columnas = 1);

    [[nodiscard]] const std::vector<Campo> &campos() const { return m_campos; }
    /// Null for a column without field.
    [[nodiscard]] QWidget *control(const QString &columna) const;
    [[nodiscard]] QLabel *etiqueta(const QString &columna) const;

    /// Keeps texts within the size of their columns, so that nothing typed is refused afterwards.
    void limitar(const QVector<db::Column> &columnas);
    /// Fills the lists from their lookup tables; what is chosen stays. Throws db::Error.
    void cargarListas(db::Connection &conexion);
    /// The same for the lists of one lookup table.
    void cargarLista(db::Connection &conexion, const QString &tabla);

    /// Shows a row; from now on that is what counts as unchanged. Columns that it lacks are shown empty.
    void mostrar(const db::ResultSet &rows, int fila);
    void mostrar(const QVariantMap &valores);
    /// Shows the row's newer values in the fields that the person has not changed, and leaves the others as they are.
    void actualizar(const db::ResultSet &rows, int fila);
    /// What is shown becomes what counts as unchanged, after a save.
    void darPorGuardado();

    [[nodiscard]] QVariant valor(const QString &columna) const;
    /// Sets a field as if the person had: it counts as a change.
    void setValor(const QString &columna, const QVariant &valor);
    /// The value that was loaded, whatever the person did since.
    [[nodiscard]] QVariant original(const QString &columna) const;
    /// What is typed into a line or a list, as it stands; empty for the other kinds.
    [[nodiscard]] QString escrito(const QString &columna) const;
    /// What is typed into a field and has no value: half a date, a text that is no entry of its list. Empty otherwise.
    [[nodiscard]] QString ilegible(const QString &columna) const;
    /// Types a text into a line or a list as if the person had.
    void escribir(const QString &columna, const QString &texto);
    /// A value as the person reads it: the name of an entry, "Sí", a date day first.
    [[nodiscard]] QString comoTexto(const QString &columna, const QVariant &valor) const;
    /// Every field's value by column.
    [[nodiscard]] QVariantMap valores() const;
    /// Only those that differ from what was loaded.
    [[nodiscard]] QVariantMap cambios() const;
    [[nodiscard]] bool hayCambios() const;

    /// Refuses what is typed and has no value: a date that is none, a number out of its range, a text that is no entry
    /// of its list. In the order of the fields; a date is refused as the system's date check does, with `detalle` of
    /// the column, or the label.
    [[nodiscard]] base::Control controlar(const QHash<QString, QString> &detalles = {}) const;

signals:
    /// The person changed a field, or setValor() did; loading is silent.
    void cambiado(const QString &columna);

private slots:
    void avisarPropio();

private:
    struct Atado {
        QWidget *control = nullptr;
        QLabel *etiqueta = nullptr;
        QVariant cargado; ///< the row's value
        QVariant mostrado; ///< what the control held right after loading
    };
    [[nodiscard]] int indice(const QString &columna) const;
    int atar(const Campo &campo, QWidget *control);
    void colocar(QWidget *donde, const std::vector<Campo> &campos, int columnas);
    [[nodiscard]] QVariant crudo(int i) const;
    [[nodiscard]] QVariant leer(int i) const;
    void poner(int i, const QVariant &valor);
    void cargar(int i, const QVariant &valor);
    void llenar(int i, db::Connection &conexion);
    [[nodiscard]] bool tocado(int i) const { return crudo(i) != m_atados[size_t(i)].mostrado; }

    QWidget *m_ventana;
    std::vector<Campo> m_campos;
    std::vector<Atado> m_atados;
    QHash<QString, int> m_porColumna; ///< by the column's name in lower case
    bool m_cargando = false;
};

} // namespace ui
