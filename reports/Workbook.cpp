#include "reports/Workbook.h"

#include "common/RunError.h"
#include "reports/WorkbookSheet.h"

#include <QFile>
#include <QTemporaryDir>

namespace tallyroom {

namespace {

// The names of sheets, as spreadsheets allow them: up to 31 characters, each name once.
class SheetNames {
public:
    QString nameFor(const QString& wanted) {
        const QString base = legal(wanted);
        QString name = base;
        for (int number = 2; m_taken.contains(name, Qt::CaseInsensitive); ++number) {
            const QString suffix = QStringLiteral(" (%1)").arg(number);
            name = base.left(longest - suffix.size()) + suffix;
        }
        m_taken << name;
        return name;
    }

private:
    static constexpr qsizetype longest = 31;

    // "History" is a sheet of the spreadsheet's own; apostrophes surround names in formulas.
    static QString legal(const QString& wanted) {
        QString name;
        for (const QChar character : wanted.simplified())
            name += QStringLiteral("[]:*?/\\'").contains(character) || !character.isPrint() ||
                            character.isSurrogate()
                        ? QLatin1Char(' ')
                        : character;
        name = name.simplified().left(longest).trimmed();
        const bool isTaken = name.compare(QLatin1String("History"), Qt::CaseInsensitive) == 0;
        return name.isEmpty() || isTaken ? QStringLiteral("Report") : name;
    }

    QStringList m_taken;
};

class Book {
public:
    Book(const QString& fileName, const QString& directory)
        : m_directory(QFile::encodeName(directory)) {
        lxw_workbook_options options{LXW_FALSE, m_directory.data(), LXW_FALSE};
        m_book = workbook_new_opt(QFile::encodeName(fileName).constData(), &options);
        if (!m_book)
            throw std::bad_alloc();
    }
    ~Book() {
        if (m_book)
            lxw_workbook_free(m_book);
    }
    Book(const Book&) = delete;
    Book& operator=(const Book&) = delete;

    lxw_workbook* get() const { return m_book; }

    lxw_worksheet* addSheet(const QString& name) {
        lxw_worksheet* sheet =
            workbook_add_worksheet(m_book, m_names.nameFor(name).toUtf8().constData());
        if (!sheet)
            throw std::bad_alloc();
        return sheet;
    }

    bool write() { return workbook_close(std::exchange(m_book, nullptr)) == LXW_NO_ERROR; }

private:
    QByteArray m_directory; // of the library's temporary files, which keeps the pointer
    lxw_workbook* m_book;
    SheetNames m_names;
};

QString nameOf(const ValueTable& table, const Report& report) {
    return table.caption.isEmpty() ? report.title : table.caption;
}

bool writeSheets(Book& book, const Report& report, const QString& user) {
    const CellFormats formats(book.get());
    const Date now = Dates::now();
    bool isWhole = true;
    const auto add = [&](const QString& name, const std::function<void(WorkbookSheet&)>& fill) {
        WorkbookSheet sheet(book.addSheet(name), formats);
        sheet.addHead(report, user, now);
        fill(sheet);
        isWhole = isWhole && sheet.isWhole();
    };
    const auto addTable = [&](const ValueTable& table) {
        add(nameOf(table, report), [&](WorkbookSheet& sheet) { sheet.addTable(table); });
    };
    for (const ValueTable& table : report.tables)
        addTable(table);
    for (const Chart& chart : report.charts)
        addTable(pointsOf(chart));
    const QStringList words = report.words + report.notes;
    if (!words.isEmpty() || (report.tables.empty() && report.charts.empty()))
        add(QStringLiteral("Notes"), [&](WorkbookSheet& sheet) { sheet.addParagraphs(words); });
    return isWhole;
}

} // namespace

QByteArray reportWorkbook(const Report& report, const QString& user) {
    const QTemporaryDir directory; // the library writes to names only
    const QString fileName = directory.filePath(QStringLiteral("report.xlsx"));
    if (directory.isValid()) {
        Book book(fileName, directory.path());
        const bool isWhole = writeSheets(book, report, user) && book.write();
        QFile file(fileName);
        if (isWhole && file.open(QIODevice::ReadOnly))
            return file.readAll();
    }
    throw RunError(ErrorNumber::cannotOpenFile,
                   QStringLiteral("The workbook could not be made: is there room in '%1'?")
                       .arg(directory.path()),
                   QStringLiteral("Brightclock"));
}

} // namespace tallyroom
