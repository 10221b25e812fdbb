#include "host/screens/ReportWait.h"

namespace tallyroom::host {

ReportWait::ReportWait(QWidget* parent) : m_parent(parent) {
    m_time.start();
}

bool ReportWait::goesOn(int done, int of) {
    constexpr qint64 patience = 500; // milliseconds
    if (m_time.elapsed() < patience)
        return true;
    if (!m_dialog) {
        m_dialog = std::make_unique<QProgressDialog>(QStringLiteral("Making the report…"),
                                                     QStringLiteral("Cancel"), 0, of, m_parent);
        m_dialog->setObjectName(QStringLiteral("ReportProgress"));
        m_dialog->setWindowTitle(m_parent->windowTitle());
        m_dialog->setWindowModality(Qt::WindowModal);
        m_dialog->setMinimumDuration(0);
        m_dialog->setAutoReset(false);
        m_dialog->show();
    }
    m_dialog->setMaximum(of);
    m_dialog->setValue(done); // lets the dialog live, as it is modal
    return !m_dialog->wasCanceled();
}

} // namespace tallyroom::host
