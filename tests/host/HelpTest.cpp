#include "host/help/frmHelp.h"
#include "tests/support/DialogScript.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QWindow>
#include <gtest/gtest.h>

namespace tallyroom::host {
namespace {

frmHelp* openedHelp() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* help = qobject_cast<frmHelp*>(window))
            return help;
    }
    return nullptr;
}

class Help : public testing::Test {
protected:
    Help() {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
        frmHelp::offerIn(m_screen);
        m_screen.setModal(true);
        m_screen.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&m_screen));
        QTest::keyClick(&m_screen, Qt::Key_F1);
        m_help = openedHelp();
    }
    ~Help() override { delete m_help; }

    frmHelp& help() { return *m_help; }
    GuideView& guide() { return child<GuideView>(*m_help, u"Guide"); }

    QDialog m_screen;

private:
    QTemporaryDir m_settings;
    frmHelp* m_help;
};

TEST_F(Help, ShowsAllOfTheGuideAtAnyWidth) {
    EXPECT_GT(child<QListWidget>(help(), u"Headings").count(), 5);
    const QTextDocument& text = *guide().document();
    for (const int width : {1100, 600, 800}) {
        help().resize(width, 500);
        QCoreApplication::processEvents();
        EXPECT_LE(text.size().width(), guide().viewport()->width()) << width;
        int pictures = 0;
        for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
            const QRectF place = text.documentLayout()->blockBoundingRect(block);
            EXPECT_TRUE(block.text().isEmpty() || !place.isEmpty()) << block.text().toStdString();
            if (!block.text().startsWith(QChar::ObjectReplacementCharacter))
                continue;
            ++pictures;
            EXPECT_GT(place.height(), 100) << "picture " << pictures << " is not there";
        }
        EXPECT_GT(pictures, 1);
    }
}

TEST_F(Help, IsSearchedWhileTheScreenWaits) {
    const auto find = [this](const char* text) {
        child<QLineEdit>(help(), u"Find").setText(QString::fromLatin1(text));
        const auto& next = child<QPushButton>(help(), u"FindNext");
        QTest::mouseClick(help().windowHandle(), Qt::LeftButton, {},
                          next.mapTo(&help(), next.rect().center()));
        return guide().textCursor().selectionStart();
    };
    const int first = find("the stand-in host");
    EXPECT_EQ(guide().textCursor().selectedText().toLower(), QStringLiteral("the stand-in host"));
    EXPECT_GT(find("the stand-in host"), first);
    for (int rest = 0; rest < 100 && find("the stand-in host") != first; ++rest)
        ;
    EXPECT_EQ(guide().textCursor().selectionStart(), first) << "it begins again at the end";
    find("no such words");
    EXPECT_EQ(child<QLabel>(help(), u"Missing").text(), QStringLiteral("Not found"));
}

} // namespace
} // namespace tallyroom::host
