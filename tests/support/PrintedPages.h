// Printing a report as a user does, and reading its pages back.
#pragma once

#include "tests/support/DialogScript.h"

#include <QRectF>
#include <QStringList>
#include <vector>

namespace tallyroom {

struct PrintedWord {
    QString text;
    QRectF place; // in points
};

struct PrintedPage {
    QSizeF size; // in points
    std::vector<PrintedWord> words;

    QString text() const; // the words, in reading order, one blank between them
    int count(const QString& word) const;
    // The words that stand outside the page or over another word.
    QStringList misplaced() const;
};

std::vector<PrintedPage> readPages(const QString& pdf);
QString titleOf(const QString& pdf); // under which the print dialog proposes to save it

// Lets the script expect the question, the preview and the print dialog, which prints into `file`.
void expectPrinting(DialogScript& script, const QString& title, const QString& file);
// The same up to the print dialog, in which `use` acts.
void expectPrintDialog(DialogScript& script, const QString& title, const DialogScript::Action& use);
// Chooses a file in the print dialog and prints.
void printInto(QWidget& printDialog, const QString& file);

} // namespace tallyroom
