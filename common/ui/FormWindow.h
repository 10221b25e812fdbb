// Base of the modal windows that the main window opens.
#pragma once

#include <QDialog>

namespace tallyroom {

// A window lives from its modal opening to its closing and is loaded fresh each time.
class FormWindow : public QDialog {
    Q_OBJECT

public:
    // Loads the window, unless that has been done, and shows it until it is closed. What fails
    // while loading is thrown to the caller, and nothing is shown.
    void showModally();

protected:
    using QDialog::QDialog;

    virtual void Form_Load() = 0;
    // The window was shown or came to the front. Restores the default pointer.
    virtual void Form_Activate();
    // The window is about to close, which is never cancelled: the place to save what it remembers
    // and to release its controls.
    virtual void Form_QueryUnload() {}

    // Loads the window before it is first used, for operations that come before it is shown.
    void ensureLoaded();

    bool event(QEvent* event) override;
    // Enter presses the button that has the focus, else the default one. Esc does nothing: an
    // edited window is left by its own buttons only.
    void keyPressEvent(QKeyEvent* event) override;
    void done(int result) override;

private:
    bool m_loaded = false;
};

} // namespace tallyroom
