#include "ui/Avance.h"

#include <QProgressDialog>

namespace ui {

namespace {

constexpr int pasosPorVista = 64; // looking after events costs more than most steps

} // namespace

Avance::Avance(QWidget *padre, const QString &texto, int total)
    : m_caja(std::make_unique<QProgressDialog>(texto, QObject::tr("Cancelar"), 0, total, padre))
{
    m_caja->setWindowTitle(padre->windowTitle());
    m_caja->setWindowModality(Qt::WindowModal);
    m_caja->setMinimumDuration(400);
}

Avance::~Avance() = default;

bool Avance::paso()
{
    // The last step would close the box and forget that it was cancelled.
    if (++m_hechos % pasosPorVista == 0 && m_hechos < m_caja->maximum())
        m_caja->setValue(m_hechos);
    return !cancelado();
}

bool Avance::cancelado() const { return m_caja->wasCanceled(); }

} // namespace ui
