#pragma once

#include <QLineEdit>

class QLabel;

namespace ui {

/// A password being typed: hidden, or shown by the eye at its end (Alt+V). Notices from what is typed that the capitals
/// are locked, as Qt does not tell it.
class CampoClave : public QLineEdit
{
    Q_OBJECT

public:
    explicit CampoClave(QWidget *parent = nullptr);

    [[nodiscard]] bool mayusculasFijas() const { return m_mayusculas; }
    /// A line of text under the field that appears while the capitals are locked; its room is always there.
    [[nodiscard]] QLabel *avisoMayusculas();

signals:
    void mayusculasCambiadas(bool fijas);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void mostrarClave(bool seVe);
    void notar(bool fijas);

    QAction *m_ojo;
    bool m_mayusculas = false;
};

} // namespace ui
