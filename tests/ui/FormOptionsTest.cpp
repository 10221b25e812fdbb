#include "common/ui/FormOptions.h"

#include "store/FormOptionsTable.h"
#include "tests/support/DataFolder.h"
#include "tests/support/Printing.h"

#include <QCheckBox>
#include <QRadioButton>
#include <QScreen>
#include <QVBoxLayout>
#include <random>

using namespace tallyroom;

namespace {

// A window with the remembered controls of the audit browser.
struct Browser {
    Browser() {
        window.setObjectName(QStringLiteral("frmTLYRAudit"));
        panel.setObjectName(QStringLiteral("SSPanel1"));
        for (std::size_t at = 0; at < 3; ++at)
            options[at].setObjectName(QStringLiteral("Option%1").arg(at + 1));
        for (std::size_t at = 0; at < 4; ++at)
            checks[at].setObjectName(QStringLiteral("Check%1").arg(at + 3));
        options[0].setChecked(true);
        window.resize(500, 400);
    }
    QString state() const {
        QString text = QStringLiteral("%1x%2 ").arg(window.width()).arg(window.height());
        for (const QRadioButton& option : options)
            text += option.isChecked() ? u'1' : u'0';
        for (const QCheckBox& check : checks)
            text += check.isChecked() ? u'1' : u'0';
        return text;
    }

    QWidget window;
    QWidget panel{&window};
    QRadioButton options[3]{QRadioButton(&panel), QRadioButton(&panel), QRadioButton(&panel)};
    QCheckBox checks[4]{QCheckBox(&window), QCheckBox(&window), QCheckBox(&window),
                        QCheckBox(&window)};
};

TEST(FormOptions, AWindowComesBackAsItWasLeft) {
    Browser left;
    left.options[2].setChecked(true);
    left.checks[1].setChecked(true);
    left.window.resize(640, 480);
    const QString text = FormOptions::textOf(left.window);
    EXPECT_EQ(QString::fromLatin1(QByteArray::fromHex(text.toLatin1()).toHex()), text)
        << "hexadecimal";
    EXPECT_FALSE(QByteArray::fromHex(text.toLatin1()).contains("Check"));
    Browser opened;
    opened.checks[0].setChecked(true);
    FormOptions::restore(opened.window, text);
    EXPECT_EQ(opened.state(), QStringLiteral("640x480 0010100"));
}

TEST(FormOptions, WhatTheWindowCannotTakeIsPassedOver) {
    Browser left;
    left.options[1].setObjectName(QStringLiteral("Option9"));
    left.options[1].setChecked(true);
    left.checks[2].setChecked(true);
    left.window.resize(20000, 15000);
    Browser opened;
    FormOptions::restore(opened.window, FormOptions::textOf(left.window));
    EXPECT_TRUE(opened.state().endsWith(QStringLiteral(" 1000010"))) << "no such option button";
    EXPECT_LE(opened.window.width(), opened.window.screen()->availableSize().width());
    EXPECT_LE(opened.window.height(), opened.window.screen()->availableSize().height());
}

TEST(FormOptions, ADamagedOrForeignTextChangesNothing) {
    Browser left;
    left.options[1].setChecked(true);
    left.window.resize(640, 480);
    const QString whole = FormOptions::textOf(left.window);
    QWidget undo;
    undo.setObjectName(QStringLiteral("frmUndo"));
    undo.resize(700, 500);
    QStringList texts = {QString(),
                         QStringLiteral("rubbish"),
                         QStringLiteral("00"),
                         whole.left(whole.size() / 2),
                         whole + whole,
                         whole.mid(2),
                         FormOptions::textOf(undo)};
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
        FormOptions::restore(opened.window, text);
        EXPECT_EQ(opened.state(), before) << text.toStdString();
    }
}

TEST(FormOptionsTable, EachUserHasHisOwnAndMasterLeavesTheDefaults) {
    const DataFolder folder;
    const QString form = QStringLiteral("Tallyroom");
    const auto read = [&](const char16_t* user) {
        return FormOptionsTable::read(folder.path(), QString::fromUtf16(user), form);
    };
    const auto write = [&](const char16_t* user, const QString& text) {
        FormOptionsTable::write(folder.path(), QString::fromUtf16(user), form, text);
    };
    EXPECT_EQ(read(u"Ann"), QString());
    write(u"Master", QStringLiteral("defaults"));
    write(u"O'Hara's", QStringLiteral("first"));
    write(u"o'hara's", QStringLiteral("second"));
    EXPECT_EQ(read(u"Ann"), QStringLiteral("defaults"));
    EXPECT_EQ(read(u"O'HARA'S"), QStringLiteral("second"));
    EXPECT_EQ(
        FormOptionsTable::read(folder.path(), QStringLiteral("Ann"), QStringLiteral("frmUndo")),
        QString());
    EXPECT_EQ(folder.rows(hostFile, QStringLiteral("Select [formname] from [FormOptions];")),
              QStringList({form, form}))
        << "one row a user";
}

TEST(FormOptionsTable, AFailingDatabaseCountsAsNothingRemembered) {
    const DataFolder folder;
    folder.execute(hostFile, QStringLiteral("Drop Table [FormOptions];"));
    for (const QString& path : {folder.path(), folder.path() + QStringLiteral("/none")}) {
        FormOptionsTable::write(path, QStringLiteral("Ann"), QStringLiteral("x"),
                                QStringLiteral("text"));
        EXPECT_EQ(FormOptionsTable::read(path, QStringLiteral("Ann"), QStringLiteral("x")),
                  QString());
    }
}

} // namespace
