#pragma once

#include <QTextBrowser>
#include <QTimer>

namespace app {

/// Shows a page of the guide: pictures no wider than the room there is, links to headings, found words marked. Nothing
/// outside the guide is ever opened.
class PaginaAyuda : public QTextBrowser
{
    Q_OBJECT

public:
    explicit PaginaAyuda(QWidget *parent = nullptr);

    /// "guia/agenda.md", with "#heading" or without. An unknown page leaves what is shown.
    void irA(const QString &direccion);
    /// The page shown, "guia/agenda.md".
    [[nodiscard]] QString archivo() const;
    /// Marks these words in whatever page is shown and goes to the first; an empty text marks nothing.
    void marcar(const QString &texto);

signals:
    /// Another page is shown, or the same one anew.
    void mostrada(const QString &archivo);

protected:
    QVariant loadResource(int tipo, const QUrl &nombre) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void alCargar(const QUrl &direccion);
    void emparejar();
    void irAlEncabezado(const QString &ancla);
    void pintarMarcas(bool ir);
    [[nodiscard]] int anchoLibre() const;
    /// Makes the pictures anew for the room there is now, at the same place of the page.
    void reajustar();

    QUrl m_direccion; ///< source() is still the former one while a page is being shown
    QString m_marcas;
    QTimer m_reajuste;
    int m_ancho = 0; ///< that the pictures were made for
};

} // namespace app
