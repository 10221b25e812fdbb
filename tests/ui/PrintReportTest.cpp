#include "common/ui/PrintReport.h"
#include "common/pages/TableReport.h"

#include "common/DateParser.h"
#include "tests/support/PrintedPages.h"
#include "tests/support/Printing.h"

#include <QDialog>
#include <QDir>
#include <QRadioButton>
#include <QSpinBox>
#include <QTemporaryDir>
#include <cmath>
#include <set>

using namespace tallyroom;

namespace {

const QString title = QStringLiteral("Canvassing Details");

class PrintReportTest : public testing::Test {
protected:
    PrintReportTest() {
        window.setObjectName(QStringLiteral("window"));
        window.resize(900, 700);
        window.show();
    }

    static TextTable table(int rows, const QString& name = QStringLiteral("Anna Smith")) {
        TextTable result{{{QStringLiteral("Code")},
                          {QStringLiteral("Name")},
                          {QStringLiteral("OT Worked"), CellAlignment::Right}},
                         {}};
        for (int row = 1; row <= rows; ++row)
            result.rows.push_back({QStringLiteral("E%1").arg(row, 4, 10, QLatin1Char('0')), name,
                                   row % 3 == 0 ? QString() : QStringLiteral("%1:15").arg(row)});
        return result;
    }
    static TableReport report(const TextTable& what) {
        TableReport result(what, title, QStringLiteral("O'Hara"));
        result.head.details = {QStringLiteral("Totalling Period: 01/01/2020 to 01/14/2020")};
        result.head.printedAt = *Dates::parse(QStringLiteral("2/3/2020 4:05 PM"));
        return result;
    }
    static TableReport report(int rows) { return report(table(rows)); }

    std::vector<PrintedPage> print(const PageSource& what) {
        expectPrinting(script, what.frame().title, file());
        printReport(&window, what);
        return readPages(file());
    }

    QString file() const { return folder.filePath(QStringLiteral("report.pdf")); }
    bool nothingWritten() const { return QDir(folder.path()).isEmpty(); }

    QTemporaryDir folder;
    QWidget window;
    DialogScript script;
};

TEST_F(PrintReportTest, EveryPageCarriesItsFrameAndEveryRowIsPrintedOnce) {
    TableReport what = report(130);
    what.addLine(QStringLiteral("Date"), 24);
    what.addLine(QStringLiteral("Signature"), 60);
    const auto pages = print(what);
    ASSERT_GT(pages.size(), 2U);
    QStringList codes;
    std::set<long> rightEdges;
    for (std::size_t at = 0; at < pages.size(); ++at) {
        const QString text = pages[at].text();
        for (const QString& expected :
             {title, what.head.details.front(), QStringLiteral("Worked"),
              QStringLiteral("Signature"), QStringLiteral("Printed 02/03/2020 04:05 pm by O'Hara"),
              QStringLiteral("Page %1 of %2").arg(at + 1).arg(pages.size())})
            EXPECT_TRUE(text.contains(expected)) << text.toStdString();
        EXPECT_EQ(pages[at].misplaced(), QStringList());
        EXPECT_LT(pages[at].size.width(), pages[at].size.height()) << "upright: it fits";
        for (const PrintedWord& word : pages[at].words) {
            if (word.text.startsWith(QLatin1Char('E')))
                codes.append(word.text);
            if (word.text.endsWith(QLatin1String(":15")))
                rightEdges.insert(std::lround(word.place.right()));
        }
    }
    QStringList expected;
    for (const QStringList& row : table(130).rows)
        expected.append(row.front());
    EXPECT_EQ(codes, expected);
    EXPECT_EQ(rightEdges.size(), 1U) << "figures end at one edge";
    EXPECT_EQ(pages.front().count(QStringLiteral("Smith")) * 2,
              static_cast<int>(pages.front().text().count(QLatin1String(" _____"))))
        << "two lines to write on in every row";
}

// All columns of a board that shows everything, with lines to sign on.
TEST_F(PrintReportTest, WithEveryColumnOnlyTheElasticOnesGiveWay) {
    const QString longName = QStringLiteral("Bartholomew Wolfeschlegelsteinhausenbergerdorff");
    TextTable wide = table(1, longName);
    QStringList& row = wide.rows.front();
    const auto add = [&](const char* heading, const char* text, CellAlignment alignment) {
        wide.columns.push_back({QString::fromLatin1(heading), alignment});
        row.append(QString::fromLatin1(text));
    };
    for (const char* heading : {"Phone", "Alt. Phone", "Cell Phone", "Pager"})
        add(heading, "(555-)123--4567", CellAlignment::Left);
    add("Sen. Date", "12/31/2020", CellAlignment::Left);
    add("Position", "Forklift-and-crane-operator", CellAlignment::Left);
    for (const char* heading :
         {"1.5", "2.0", "1.5 Accepted", "2.0 Accepted", "1.5 Declined", "2.0 Declined", "Total"})
        add(heading, "100:30", CellAlignment::Right);
    TableReport what = report(wide);
    what.makeElastic({QStringLiteral("Name"), QStringLiteral("Position")});
    what.addLine(QStringLiteral("Date"), 24);
    what.addLine(QStringLiteral("Signature"), 60);
    const auto pages = print(what);
    ASSERT_EQ(pages.size(), 1U);
    EXPECT_GT(pages[0].size.width(), pages[0].size.height()) << "across";
    EXPECT_EQ(pages[0].misplaced(), QStringList());
    EXPECT_EQ(pages[0].count(QStringLiteral("(555-)123--4567")), 4);
    EXPECT_EQ(pages[0].count(QStringLiteral("12/31/2020")), 1);
    EXPECT_EQ(pages[0].count(QStringLiteral("100:30")), 7);
    EXPECT_TRUE(pages[0].text().contains(QLatin1String("Barth")));
    EXPECT_TRUE(pages[0].text().contains(QChar(0x2026)));
    EXPECT_FALSE(pages[0].text().contains(QLatin1String("dorff")));
    std::vector<double> lines;
    for (const PrintedWord& word : pages[0].words) {
        if (word.text.startsWith(QLatin1String("___")))
            lines.push_back(word.place.width() / 72 * 25.4);
    }
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_GT(lines[0], 14) << "millimetres for a date";
    EXPECT_GT(lines[1], 36) << "millimetres for a signature";
}

TEST_F(PrintReportTest, LongTextsAboutTheReportStayInTheirPlace) {
    TableReport what = report(table(3, QStringLiteral("\u738b\u5c0f\u660e")));
    what.head.printedBy = QString(300, QLatin1Char('w'));
    QStringList users;
    for (int n = 100; n < 160; ++n)
        users.append(QStringLiteral("user%1").arg(n));
    what.head.details = {users.mid(0, 30).join(QStringLiteral(", ")),
                         users.mid(30).join(QStringLiteral(", ")).repeated(9),
                         QStringLiteral("last")};
    const auto pages = print(what);
    ASSERT_EQ(pages.size(), 1U);
    EXPECT_EQ(pages[0].misplaced(), QStringList());
    for (const char* expected : {"user129", "last", "Code", "E0003", "Page"})
        EXPECT_EQ(pages[0].text().count(QLatin1String(expected)), 1) << expected;
}

TEST_F(PrintReportTest, FromNoRowToFiveThousand) {
    for (const int rows : {0, 1, 5000}) {
        const auto pages = print(report(rows));
        ASSERT_FALSE(pages.empty());
        int printed = 0;
        for (const PrintedPage& page : pages)
            printed += page.count(QStringLiteral("Smith"));
        EXPECT_EQ(printed, rows);
        EXPECT_EQ(pages.size() == 1, rows < 2);
        EXPECT_TRUE(
            pages.back().text().contains(QStringLiteral("Page %1 of %1").arg(pages.size())));
        QFile::remove(file());
    }
}

TEST_F(PrintReportTest, ThePagesThatWereAskedForAsOftenAsWanted) {
    expectPrintDialog(script, title, [&](QWidget& dialog) {
        child<QRadioButton>(dialog, u"printRange").setChecked(true);
        child<QSpinBox>(dialog, u"to").setValue(3);
        child<QSpinBox>(dialog, u"from").setValue(2);
        child<QSpinBox>(dialog, u"copies").setValue(2);
        printInto(dialog, file());
    });
    printReport(&window, report(400));
    QStringList numbers;
    for (const PrintedPage& page : readPages(file()))
        numbers.append(page.text().section(QStringLiteral("Page "), 1).section(u' ', 0, 0));
    EXPECT_EQ(numbers.join(u' '), QStringLiteral("2 3 2 3"));
}

TEST_F(PrintReportTest, WhoCancelsLeavesNothingBehind) {
    const QString question =
        QStringLiteral("Are you sure that you want to print the Canvassing Details?");
    script.expectBox(question, QMessageBox::No, QMessageBox::Question);
    printReport(&window, report(1));
    const DialogScript::Action leave = [](QWidget& shown) {
        qobject_cast<QDialog*>(&shown)->reject();
    };
    script.expectBox(question, QMessageBox::Yes, QMessageBox::Question);
    script.expectWindow(u"ReportPreview", leave);
    printReport(&window, report(1));
    QWidget* preview = nullptr;
    expectPrintDialog(script, title, [&](QWidget& dialog) {
        preview = dialog.parentWidget();
        leave(dialog);
        QMetaObject::invokeMethod(
            preview, [&] { leave(*preview); }, Qt::QueuedConnection);
    });
    printReport(&window, report(1));
    EXPECT_TRUE(nothingWritten());
}

// A device that takes nothing, as a full disk does.
TEST_F(PrintReportTest, AFileThatCannotBeWrittenIsReported) {
    const QString full = QStringLiteral("/dev/full");
    expectPrintDialog(script, title, [&](QWidget& dialog) {
        script.expectBox(
            QStringLiteral("%1 already exists.\nDo you want to overwrite it?").arg(full),
            QMessageBox::Yes, QMessageBox::Question, QStringLiteral("Print"));
        script.expectBox(QStringLiteral("The report could not be written to '/dev/full'. Choose "
                                        "another file or folder."),
                         QMessageBox::Ok, QMessageBox::Critical);
        printInto(dialog, full);
    });
    printReport(&window, report(1));
}

} // namespace
