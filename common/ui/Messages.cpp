#include "common/ui/Messages.h"

#include "common/ui/WaitPointer.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QPushButton>
#include <utility>

namespace tallyroom::Messages {

namespace {

class AnswerBox : public QMessageBox {
public:
    using QMessageBox::QMessageBox;

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Escape && mustBeAnswered())
            return;
        QMessageBox::keyPressEvent(event);
    }
    void closeEvent(QCloseEvent* event) override {
        if (mustBeAnswered())
            event->ignore();
        else
            QMessageBox::closeEvent(event);
    }

private:
    bool mustBeAnswered() const { return standardButtons() != QMessageBox::Ok; }
};

// As the old run time has them, whatever the desktop's way: the first button is the default, and
// letters choose all of them.
void prepareButtons(QMessageBox& box) {
    for (const auto& [which, text] :
         {std::pair(QMessageBox::Abort, u"&Abort"), std::pair(QMessageBox::Retry, u"&Retry"),
          std::pair(QMessageBox::Ignore, u"&Ignore")}) {
        if (QAbstractButton* button = box.button(which))
            button->setText(QString::fromUtf16(text));
    }
    for (const auto first : {QMessageBox::Abort, QMessageBox::Yes}) {
        if (box.standardButtons().testFlag(first))
            box.setDefaultButton(first);
    }
}

} // namespace

QString applicationTitle() {
    return QStringLiteral("Tallyroom");
}

QMessageBox::StandardButton show(QWidget* parent, const QString& text, QMessageBox::Icon icon,
                                 QMessageBox::StandardButtons buttons, const QString& title) {
    WaitPointer::hide();
    AnswerBox box(parent);
    box.setObjectName(QStringLiteral("MessageBox"));
    box.setWindowTitle(title);
    box.setTextFormat(Qt::PlainText);
    box.setText(QString(text).replace(QLatin1String("\r\n"), QLatin1String("\n")));
    box.setIcon(icon);
    box.setStandardButtons(buttons);
    prepareButtons(box);
    if (buttons != QMessageBox::Ok)
        box.setWindowFlag(Qt::WindowCloseButtonHint, false);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

void showRunTimeError(QWidget* parent, const RunError& error) {
    show(parent,
         QStringLiteral("Run-time error '%1':\n\n%2")
             .arg(QString::number(error.number()), error.description()),
         QMessageBox::Critical);
}

} // namespace tallyroom::Messages
