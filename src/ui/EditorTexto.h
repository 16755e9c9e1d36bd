#pragma once

#include <QWidget>

class QTextEdit;

namespace ui {

class BarraFormato;

/// A formatted text, edited as paper shows it: black on white whatever the screen's colours are. What is pasted keeps
/// simple formatting only and brings nothing from outside. Reads every stored form (see texto::Formato) and gives back
/// the small HTML that is stored.
class EditorTexto : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString html READ html WRITE setHtml NOTIFY htmlCambiado USER true)

public:
    /// With a bar of buttons of its own above it, or served by `barra`, which several editors of a window may share.
    explicit EditorTexto(const QString &nombre, QWidget *parent = nullptr, BarraFormato *barra = nullptr);

    /// Empty when nothing is written.
    [[nodiscard]] QString html() const;
    /// What was there cannot be brought back with undo.
    void setHtml(const QString &guardado);
    [[nodiscard]] QString textoPlano() const;
    /// In the place of the selection, in the format that is there; the sheet gets the focus.
    void insertar(const QString &texto);
    /// For reading only: no bar of its own, no typing.
    void setSoloLectura(bool solo);

    [[nodiscard]] QTextEdit *hoja() const { return m_hoja; }

signals:
    void htmlCambiado();

private:
    QTextEdit *m_hoja;
    BarraFormato *m_propia = nullptr;
};

} // namespace ui
