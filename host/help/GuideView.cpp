#include "host/help/GuideView.h"

#include "common/RunError.h"
#include "common/look/Contrast.h"

#include <QAbstractTextDocumentLayout>
#include <QDesktopServices>
#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextList>
#include <QTextTable>

namespace tallyroom::host {

namespace {

constexpr double pageMargin = 16;
constexpr double cellPadding = 5;
constexpr double lineHeight = 118;   // percent of the font's own
constexpr double headingMargin = 20; // above
constexpr double lineShare = 0.25;   // of the text's colour in that of a table's lines
constexpr double headShare = 0.07;   // and in the ground of its headings

// The toolkit lays out step by step, and a document that is changed half-way loses texts.
void finishLayout(const QTextDocument& document) {
    document.size();
}

// A picture's line is as high as the picture.
void space(const QTextBlock& block) {
    QTextBlockFormat format = block.blockFormat();
    if (!block.text().contains(QChar::ObjectReplacementCharacter))
        format.setLineHeight(lineHeight, QTextBlockFormat::ProportionalHeight);
    if (format.headingLevel() > 1)
        format.setTopMargin(headingMargin);
    QTextCursor(block).setBlockFormat(format);
}

int indents(const QTextBlock& block) {
    const QTextList* list = block.textList();
    return block.blockFormat().indent() + (list ? list->format().indent() : 0);
}

template<class Act>
void forEachBlock(const QTextDocument& document, Act&& act) {
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        act(block);
}

} // namespace

GuideView::GuideView(QWidget* parent) : QTextBrowser(parent) {
    setOpenLinks(false);
    // One that comes and goes would change the room for pictures, and these whether it is needed.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    connect(this, &QTextBrowser::anchorClicked, this, &GuideView::follow);
    connect(this, &QTextBrowser::sourceChanged, this, &GuideView::dress);
}

void GuideView::open(const QString& file) {
    if (!QFileInfo(file).isReadable())
        throw RunError(ErrorNumber::fileNotFound,
                       QStringLiteral("The usage guide cannot be read: %1")
                           .arg(QDir::toNativeSeparators(file)),
                       QStringLiteral("Brightclock"));
    setSource(QUrl::fromLocalFile(file), QTextDocument::MarkdownResource);
}

// What is not installed with the guide is not gone to.
void GuideView::follow(const QUrl& link) {
    const QUrl target = source().resolved(link);
    if (!target.isLocalFile())
        QDesktopServices::openUrl(target);
    else if (QFileInfo(target.toLocalFile()).isReadable())
        open(target.toLocalFile());
}

std::vector<GuideView::Heading> GuideView::headings() const {
    std::vector<Heading> found;
    forEachBlock(*document(), [&](const QTextBlock& block) {
        if (const int level = block.blockFormat().headingLevel())
            found.push_back({block.text(), level, block.position()});
    });
    return found;
}

void GuideView::showHeading(const Heading& heading) {
    QTextCursor cursor(document());
    cursor.setPosition(heading.position);
    setTextCursor(cursor);
    const QRectF place = document()->documentLayout()->blockBoundingRect(cursor.block());
    verticalScrollBar()->setValue(static_cast<int>(place.top()));
}

bool GuideView::findNext(const QString& text, QTextDocument::FindFlags flags) {
    if (find(text, flags))
        return true;
    const QTextCursor before = textCursor();
    moveCursor(flags.testFlag(QTextDocument::FindBackward) ? QTextCursor::End : QTextCursor::Start);
    const bool isFound = find(text, flags);
    if (!isFound)
        setTextCursor(before);
    return isFound;
}

void GuideView::dress() {
    finishLayout(*document());
    document()->setDocumentMargin(pageMargin);
    forEachBlock(*document(), space);
    for (QTextFrame* frame : document()->rootFrame()->childFrames()) {
        if (auto* table = qobject_cast<QTextTable*>(frame))
            dressTable(*table);
    }
    fitPictures();
}

void GuideView::dressTable(QTextTable& table) const {
    const QColor ground = palette().color(QPalette::Base);
    const QColor text = palette().color(QPalette::Text);
    QTextTableFormat format = table.format();
    format.setBorder(1);
    format.setBorderCollapse(true);
    format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    format.setBorderBrush(Contrast::mixed(text, ground, lineShare));
    format.setCellSpacing(0);
    format.setCellPadding(cellPadding);
    table.setFormat(format);
    for (int column = 0; column < table.columns(); ++column) {
        QTextTableCell cell = table.cellAt(0, column);
        QTextCharFormat head = cell.format();
        head.setBackground(Contrast::mixed(text, ground, headShare));
        cell.setFormat(head);
    }
}

void GuideView::fitPictures() {
    finishLayout(*document());
    const double page = viewport()->width() - 2 * document()->documentMargin();
    forEachBlock(*document(), [&](const QTextBlock& block) {
        const double room = page - indents(block) * document()->indentWidth();
        for (auto part = block.begin(); part != block.end(); ++part) {
            QTextImageFormat format = part.fragment().charFormat().toImageFormat();
            if (!format.isValid())
                continue;
            const auto picture = document()
                                     ->resource(QTextDocument::ImageResource, QUrl(format.name()))
                                     .value<QImage>();
            QTextCursor cursor(block);
            cursor.setPosition(part.fragment().position());
            cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
            format.setWidth(std::min<double>(room, picture.width()));
            cursor.setCharFormat(format);
        }
    });
}

void GuideView::changeEvent(QEvent* event) {
    QTextBrowser::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        dress();
}

void GuideView::resizeEvent(QResizeEvent* event) {
    QTextBrowser::resizeEvent(event);
    fitPictures();
}

} // namespace tallyroom::host
