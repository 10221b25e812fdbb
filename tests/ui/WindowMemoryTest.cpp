#include "tests/support/Printing.h"
#include "tests/support/RememberingWindow.h"

#include <QScreen>
#include <random>

using namespace tallyroom;

namespace {

struct Browser : RememberingWindow {
    QString state() const {
        QString text = QStringLiteral("%1x%2 ").arg(window.width()).arg(window.height());
        for (const QRadioButton& option : options)
            text += option.isChecked() ? u'1' : u'0';
        for (const QCheckBox& check : checks)
            text += check.isChecked() ? u'1' : u'0';
        return text;
    }
};

TEST(WindowMemory, ATextIsReadAndWrittenAsItAlwaysWas) {
    const QString kept(
        QStringLiteral("7e1401140f4b0b0a5204511a4d00140826293d72351a441d1c470c4e1c1a061116070249"
                       "1e5035010b044b554b4807063a134950370108064b5d511a09070a16174946631c0a431f"
                       "5d471a181d1b0249513748160619404b541352130c5e51271c26041c11055c471a4b3c50"
                       "1b0f090b40474802121d4d20243c722d1a0a0e11514e5b510d171f0e0613025c5c464358"
                       "6d1b040a1d04041f450d511a09070a16174946571d0b541c4a5f16585f131a18"));
    Browser opened;
    opened.restore(kept);
    EXPECT_EQ(opened.state(), QStringLiteral("640x540 0101011"));
    EXPECT_EQ(opened.text(), kept);
}

TEST(WindowMemory, WhatTheWindowCannotTakeIsPassedOver) {
    Browser left;
    left.options[1].setObjectName(QStringLiteral("Option9"));
    left.options[1].setChecked(true);
    left.checks[2].setChecked(true);
    left.window.resize(20000, 15000);
    Browser opened;
    opened.restore(left.text());
    EXPECT_TRUE(opened.state().endsWith(QStringLiteral(" 1000010"))) << "no such option button";
    EXPECT_LE(opened.window.width(), opened.window.screen()->availableSize().width());
    EXPECT_LE(opened.window.height(), opened.window.screen()->availableSize().height());
}

TEST(WindowMemory, ADamagedOrForeignTextChangesNothing) {
    Browser left;
    left.options[1].setChecked(true);
    left.window.resize(640, 480);
    const QString whole = left.text();
    QWidget undo;
    undo.setObjectName(QStringLiteral("frmUndo"));
    undo.resize(700, 500);
    QStringList texts = {QString(),
                         QStringLiteral("rubbish"),
                         QStringLiteral("00"),
                         whole.left(whole.size() / 2),
                         whole + whole,
                         whole.mid(2),
                         WindowMemory::textOf(undo, {&undo})};
    std::mt19937 random(1);
    for (int round = 0; round < 200; ++round) {
        QString damaged = whole;
        const auto at = static_cast<qsizetype>(random() % static_cast<unsigned>(whole.size()));
        damaged[at] = damaged[at] == u'0' ? u'1' : u'0';
        texts.append(damaged);
    }
    Browser opened;
    const QString before = opened.state();
    for (const QString& text : texts) {
        opened.restore(text);
        EXPECT_EQ(opened.state(), before) << text.toStdString();
    }
}

} // namespace
