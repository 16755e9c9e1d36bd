#pragma once

#include <QWidget>

class QLabel;
class QPushButton;

namespace maintenance {

/// A picture by the path of its file, shown small, with buttons to choose another and to do without.
class CampoImagen : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString archivo READ archivo WRITE setArchivo NOTIFY cambiado USER true)

public:
    explicit CampoImagen(QWidget *parent = nullptr);

    [[nodiscard]] QString archivo() const { return m_archivo; }
    /// Empty for none.
    void setArchivo(const QString &archivo);
    /// Whether a file is a picture that can be shown.
    [[nodiscard]] static bool esImagen(const QString &archivo);
    /// The formats that can be shown, as a file dialog wants them: "Imágenes (*.bmp *.jpg ...)".
    [[nodiscard]] static QString filtro();

    QPushButton *elegir; ///< the window asks for the file
    QPushButton *quitar;

signals:
    void cambiado();

private:
    QString m_archivo;
    QLabel *m_muestra;
};

} // namespace maintenance
