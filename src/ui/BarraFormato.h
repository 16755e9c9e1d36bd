#pragma once

#include <QFont>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <optional>

class QComboBox;
class QTextCharFormat;
class QTextEdit;
class QToolButton;

namespace ui {

/// The buttons that format what is selected in a sheet, or what is typed next. Serves one sheet or several: it works on
/// the one that had the focus last. Ctrl+B, Ctrl+I, Ctrl+U; Ctrl+L, Ctrl+E, Ctrl+R align left, centre, right.
class BarraFormato : public QWidget
{
    Q_OBJECT

public:
    /// Empty optional when cancelled.
    using ElegirColor = std::function<std::optional<QColor>(const QColor &actual, QWidget *sobre)>;
    using ElegirLetra = std::function<std::optional<QFont>(const QFont &actual, QWidget *sobre)>;

    explicit BarraFormato(QWidget *parent = nullptr);

    void servir(QTextEdit *hoja);
    /// In the place of the dialogs, which wait for a person.
    void setElegirColor(ElegirColor elegir) { m_elegirColor = std::move(elegir); }
    void setElegirLetra(ElegirLetra elegir) { m_elegirLetra = std::move(elegir); }

    QToolButton *negrita;
    QToolButton *cursiva;
    QToolButton *subrayado;
    QToolButton *izquierda;
    QToolButton *centrado;
    QToolButton *derecha;
    QToolButton *vinetas;
    QToolButton *negro;
    QToolButton *rojo;
    QToolButton *verde;
    QToolButton *azul;
    QToolButton *mascolores;
    QToolButton *letra;
    QComboBox *tama; ///< size in points

protected:
    bool eventFilter(QObject *objeto, QEvent *event) override;

private:
    QToolButton *
    agregar(const QString &nombre, const QIcon &icono, const QString &ayuda, const std::function<void()> &accion);
    QToolButton *color(const QString &nombre, const QColor &suyo, const QString &ayuda);
    void separar();
    void aplicar(const QTextCharFormat &formato);
    void alinear(Qt::Alignment alineacion);
    void ponerVinetas(bool si);
    void pedirColor();
    void pedirLetra();
    void ponerTamano();
    /// Shows the format of where the cursor stands.
    void actualizar();
    void atajo(QTextEdit *hoja, const QKeySequence &tecla, QToolButton *boton);

    QPointer<QTextEdit> m_hoja;
    ElegirColor m_elegirColor;
    ElegirLetra m_elegirLetra;
};

} // namespace ui
