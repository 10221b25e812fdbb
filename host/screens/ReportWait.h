// What is shown while a report takes its time.
#pragma once

#include <QElapsedTimer>
#include <QProgressDialog>
#include <memory>

namespace tallyroom::host {

class ReportWait {
public:
    explicit ReportWait(QWidget* parent);

    // False once the user has cancelled it. Shows the progress from half a second on, in a window
    // that keeps the keys and clicks for its own button.
    bool goesOn(int done, int of);

private:
    QWidget* m_parent;
    QElapsedTimer m_time;
    std::unique_ptr<QProgressDialog> m_dialog;
};

} // namespace tallyroom::host
