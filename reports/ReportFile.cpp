#include "reports/ReportFile.h"

#include "common/RunError.h"
#include "common/pages/ReportLayout.h"
#include "reports/Csv.h"
#include "reports/ReportPages.h"
#include "reports/ReportText.h"
#include "reports/Workbook.h"

#include <QFileInfo>
#include <QImage>
#include <QPdfWriter>
#include <QSaveFile>
#include <algorithm>

namespace tallyroom::ReportFile {

namespace {

struct Format {
    ReportFormat format;
    const char16_t* name;
    const char16_t* suffix;
};

constexpr Format formats[] = {
    {ReportFormat::Text, u"text", u"txt"},      {ReportFormat::Csv, u"csv", u"csv"},
    {ReportFormat::Workbook, u"xlsx", u"xlsx"}, {ReportFormat::Pdf, u"pdf", u"pdf"},
    {ReportFormat::Picture, u"png", u"png"},
};

// By which a spreadsheet knows that letters are not those of its own country.
const QByteArray byteOrderMark = "\xEF\xBB\xBF";

constexpr double margin = 12.7;       // millimetres
constexpr int paperResolution = 1200; // dots to the inch
constexpr int screenResolution = 110;

std::optional<ReportFormat> find(const char16_t* Format::*field, const QString& text) {
    const auto found = std::ranges::find_if(formats, [&](const Format& each) {
        return text.compare(QStringView(each.*field), Qt::CaseInsensitive) == 0;
    });
    return found == std::end(formats) ? std::nullopt : std::optional(found->format);
}

RunError notWritten(const QString& fileName) {
    return {ErrorNumber::cannotOpenFile,
            QStringLiteral("The report could not be written to '%1'. Choose another file or "
                           "folder.")
                .arg(fileName),
            QStringLiteral("Brightclock")};
}

void save(const QString& fileName, const std::function<bool(QIODevice&)>& fill) {
    QSaveFile file(fileName);
    // A full disk shows when what is buffered is written, which commit() does not look at.
    const bool isWritten = file.open(QIODevice::WriteOnly) && fill(file) && file.flush() &&
                           file.error() == QFileDevice::NoError;
    if (!isWritten || !file.commit())
        throw notWritten(fileName);
}

void saveBytes(const QString& fileName, const QByteArray& bytes) {
    save(fileName, [&](QIODevice& device) { return device.write(bytes) == bytes.size(); });
}

QPageLayout paperFor(const PageSource& pages) {
    QPageLayout paper(QPageSize(QPageSize::A4), QPageLayout::Portrait,
                      QMarginsF(margin, margin, margin, margin), QPageLayout::Millimeter);
    paper.setOrientation(pages.orientation(paper));
    return paper;
}

bool writePdf(const PageSource& pages, QIODevice& device) {
    QPdfWriter writer(&device);
    writer.setTitle(pages.frame().documentName());
    writer.setResolution(paperResolution);
    const QPageLayout paper = paperFor(pages);
    writer.setPageLayout(paper);
    QPainter painter;
    if (!painter.begin(&writer))
        return false;
    const ReportLayout layout(pages, paper.paintRectPixels(paperResolution).size(),
                              paperResolution / 72.0);
    for (int page = 1; page <= layout.count(); ++page) {
        if (page > 1 && !writer.newPage())
            return false;
        layout.paint(painter, page);
    }
    return painter.end();
}

// "sheet.png" is followed by "sheet-2.png".
QString pictureName(const QString& fileName, int page) {
    if (page == 1)
        return fileName;
    const QFileInfo file(fileName);
    const QString suffix = file.suffix().isEmpty() ? QString() : QLatin1Char('.') + file.suffix();
    return fileName.chopped(suffix.size()) + QStringLiteral("-%1").arg(page) + suffix;
}

// Whoever has the first page replaced means all of them; else nobody was asked about the others.
void requireFree(const QString& fileName, int pages) {
    if (QFileInfo::exists(fileName))
        return;
    for (int page = 2; page <= pages; ++page) {
        const QString name = pictureName(fileName, page);
        if (QFileInfo::exists(name))
            throw RunError(ErrorNumber::cannotOpenFile,
                           QStringLiteral("'%1' is there already, where page %2 would go; nothing "
                                          "was written. Choose another name.")
                               .arg(name)
                               .arg(page),
                           QStringLiteral("Brightclock"));
    }
}

void writePictures(const PageSource& pages, const QString& fileName) {
    const QPageLayout paper = paperFor(pages);
    const QRect sheet = paper.fullRectPixels(screenResolution);
    const QRect room = paper.paintRectPixels(screenResolution);
    const ReportLayout layout(pages, room.size(), screenResolution / 72.0);
    requireFree(fileName, layout.count());
    for (int page = 1; page <= layout.count(); ++page) {
        QImage image(sheet.size(), QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.translate(room.topLeft());
        layout.paint(painter, page);
        painter.end();
        save(pictureName(fileName, page),
             [&](QIODevice& device) { return image.save(&device, "PNG"); });
    }
}

} // namespace

std::optional<ReportFormat> formatNamed(const QString& name) {
    return find(&Format::name, name);
}

std::optional<ReportFormat> formatOf(const QString& fileName) {
    return find(&Format::suffix, QFileInfo(fileName).suffix());
}

QStringList formatNames() {
    QStringList names;
    for (const Format& each : formats)
        names << QString::fromUtf16(each.name);
    return names;
}

bool isText(ReportFormat format) {
    return format == ReportFormat::Text || format == ReportFormat::Csv;
}

QByteArray text(const Report& report, ReportFormat format) {
    Q_ASSERT(isText(format));
    return format == ReportFormat::Csv ? reportCsv(report) : reportText(report).toUtf8();
}

void write(const Report& report, ReportFormat format, const QString& fileName,
           const QString& user) {
    if (isText(format))
        return saveBytes(fileName, (format == ReportFormat::Csv ? byteOrderMark : QByteArray()) +
                                       text(report, format));
    if (format == ReportFormat::Workbook)
        return saveBytes(fileName, reportWorkbook(report, user));
    const ReportPages pages(report, user);
    if (format == ReportFormat::Picture)
        return writePictures(pages, fileName);
    save(fileName, [&](QIODevice& device) { return writePdf(pages, device); });
}

} // namespace tallyroom::ReportFile
