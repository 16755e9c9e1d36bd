#pragma once

#include <QLabel>

namespace agenda {

/// A calm notice within a window, `aviso`: room for two lines that is kept while there is nothing to tell, so that the
/// fields do not move when there is.
class LineaAviso : public QLabel
{
    Q_OBJECT

public:
    explicit LineaAviso(QWidget *parent = nullptr);

    void mostrar(const QString &texto);
};

} // namespace agenda
