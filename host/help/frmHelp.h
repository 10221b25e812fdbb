// The usage guide in a window of its own, beside what is worked with.
#pragma once

#include "host/help/GuideView.h"

#include <QDialog>
#include <memory>

namespace Ui {
class frmHelp;
}

namespace tallyroom::host {

class frmHelp : public QDialog {
    Q_OBJECT

public:
    // Shows the guide, in the window that shows it already if there is one. Says why where it
    // cannot; the parent is that of the message.
    static void open(QWidget* parent);
    // F1 in the window opens the guide.
    static void offerIn(QWidget& window);

    ~frmHelp() override;

    void done(int result) override;

private:
    frmHelp(); // raises what opening the guide raises

    void connectControls();
    void listHeadings();
    void find(QTextDocument::FindFlags flags = {});
    void standWithModalWindow();

    std::unique_ptr<Ui::frmHelp> m_ui;
    std::vector<GuideView::Heading> m_headings; // as they are listed
};

} // namespace tallyroom::host
