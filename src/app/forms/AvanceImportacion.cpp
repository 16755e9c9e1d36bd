#include "app/forms/AvanceImportacion.h"

#include "app/ImportacionAccess.h"

#include <QApplication>
#include <QLocale>

namespace app {

AvanceImportacion::AvanceImportacion(QWidget *padre)
    : m_caja(new QProgressDialog(QString(), QObject::tr("&Cancelar"), 0, 0, padre))
{
    m_caja->setObjectName(QStringLiteral("avanceimportacion"));
    m_caja->setWindowTitle(tituloImportacion);
    m_caja->setWindowModality(Qt::ApplicationModal);
    m_caja->setMinimumDuration(0);
    m_caja->setAutoReset(false);
    m_caja->setAutoClose(false);
    // Wide enough for the longest table name, so that it does not jump from one to the next.
    m_caja->setMinimumWidth(m_caja->fontMetrics().averageCharWidth() * 80);
    m_caja->setLabelText(QObject::tr("Preparando..."));
    m_caja->show();
    QApplication::processEvents();
}

AvanceImportacion::~AvanceImportacion() { delete m_caja; }

QWidget *AvanceImportacion::ventana() const { return m_caja; }

bool AvanceImportacion::avanzar(const QString &que, qint64 hechas, qint64 total)
{
    if (!m_caja)
        return false;
    // Asked at every row: showing each would take longer than the work.
    constexpr int momento = 50;
    if (que == m_que && m_dicho.elapsed() < momento)
        return !m_caja->wasCanceled();
    m_que = que;
    m_dicho.start();
    constexpr int entero = 1000;
    m_caja->setLabelText(
        total > 0
            ? QObject::tr("%1\n%2 de %3 registros").arg(que, QLocale().toString(hechas), QLocale().toString(total))
            : que + u'\n');
    m_caja->setMaximum(total > 0 ? entero : 0);
    m_caja->setValue(total > 0 ? int(hechas * entero / total) : 0);
    QApplication::processEvents();
    return m_caja && !m_caja->wasCanceled();
}

} // namespace app
