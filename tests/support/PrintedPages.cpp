#include "tests/support/PrintedPages.h"

#include <QAction>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <poppler-qt6.h>

namespace tallyroom {

namespace {

PrintedPage readPage(const Poppler::Document& document, int number) {
    const std::unique_ptr<Poppler::Page> page = document.page(number);
    PrintedPage result{page->pageSizeF(), {}};
    for (const auto& box : page->textList())
        result.words.push_back({box->text(), box->boundingBox()});
    std::stable_sort(
        result.words.begin(), result.words.end(), [](const PrintedWord& a, const PrintedWord& b) {
            const auto line = [](const PrintedWord& word) {
                return std::lround(word.place.bottom() / 4);
            };
            return std::pair(line(a), a.place.left()) < std::pair(line(b), b.place.left());
        });
    return result;
}

template<class Control>
Control& withText(QWidget& window, const QString& text) {
    for (auto* control : window.findChildren<Control*>()) {
        if (control->text() == text)
            return *control;
    }
    qFatal("nothing in %s says %s", qPrintable(window.windowTitle()), qPrintable(text));
}

} // namespace

QString PrintedPage::text() const {
    QStringList texts;
    for (const PrintedWord& word : words)
        texts.append(word.text);
    return texts.join(QLatin1Char(' '));
}

int PrintedPage::count(const QString& word) const {
    return static_cast<int>(std::count_if(
        words.begin(), words.end(), [&](const PrintedWord& other) { return other.text == word; }));
}

// The boxes of lines above each other touch; those of two words must not.
QStringList PrintedPage::misplaced() const {
    QStringList result;
    const QRectF paper(QPointF(0, 0), size);
    for (std::size_t at = 0; at < words.size(); ++at) {
        const QRectF core = words[at].place.adjusted(0.2, 2.5, -0.2, -2.5);
        bool clear = paper.contains(words[at].place);
        for (std::size_t other = 0; other < words.size() && clear; ++other)
            clear =
                other == at || !core.intersects(words[other].place.adjusted(0.2, 2.5, -0.2, -2.5));
        if (!clear)
            result.append(words[at].text);
    }
    return result;
}

std::vector<PrintedPage> readPages(const QString& pdf) {
    const std::unique_ptr<Poppler::Document> document = Poppler::Document::load(pdf);
    std::vector<PrintedPage> pages;
    for (int number = 0; document && number < document->numPages(); ++number)
        pages.push_back(readPage(*document, number));
    return pages;
}

QString titleOf(const QString& pdf) {
    const std::unique_ptr<Poppler::Document> document = Poppler::Document::load(pdf);
    return document ? document->title() : QString();
}

void printInto(QWidget& printDialog, const QString& file) {
    child<QLineEdit>(printDialog, QStringLiteral("filename")).setText(file);
    withText<QPushButton>(printDialog, QStringLiteral("&Print")).click();
}

void expectPrintDialog(DialogScript& script, const QString& title,
                       const DialogScript::Action& use) {
    script.expectBox(QStringLiteral("Are you sure that you want to print the %1?").arg(title),
                     QMessageBox::Yes, QMessageBox::Question);
    script.expectWindow(QStringLiteral("ReportPreview"), [&script, use](QWidget& preview) {
        script.expectWindow(QString(), use); // the toolkit's dialog has no name
        QTest::keyClick(&preview, Qt::Key_P, Qt::ControlModifier);
    });
}

void expectPrinting(DialogScript& script, const QString& title, const QString& file) {
    expectPrintDialog(script, title, [file](QWidget& dialog) { printInto(dialog, file); });
}

} // namespace tallyroom
