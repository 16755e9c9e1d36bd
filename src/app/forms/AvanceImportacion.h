#pragma once

#include "db/access/Conversion.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QProgressDialog>

namespace app {

/// The window that shows how far the conversion of an old Access database is, with a button that cancels it. It is
/// there from the beginning: the program can do nothing else meanwhile.
class AvanceImportacion final : public db::access::Seguimiento
{
public:
    explicit AvanceImportacion(QWidget *padre = nullptr);
    ~AvanceImportacion() override;

    [[nodiscard]] bool avanzar(const QString &que, qint64 hechas, qint64 total) override;
    [[nodiscard]] QWidget *ventana() const;

private:
    QPointer<QProgressDialog> m_caja; ///< may go with the window over which it stands
    QElapsedTimer m_dicho;
    QString m_que;
};

} // namespace app
