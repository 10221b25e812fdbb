#include "host/BoardPicture.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QTextStream>
#include <cstdlib>

namespace tallyroom::host {

namespace {

constexpr int pollInterval = 20; // milliseconds
constexpr qint64 longestWait =
    60000; // milliseconds in which the event loop runs and no board comes

// The texts of the visible columns, row by row, the heading first.
std::vector<QStringList> visibleTexts(const QTableView& table) {
    const QAbstractItemModel& model = *table.model();
    std::vector<QStringList> lines;
    for (int row = -1; row < model.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model.columnCount(); ++column) {
            if (!table.isColumnHidden(column))
                cells << (row < 0 ? model.headerData(column, Qt::Horizontal)
                                  : model.index(row, column).data())
                             .toString();
        }
        lines.push_back(cells);
    }
    return lines;
}

std::vector<bool> rightAligned(const QTableView& table) {
    const QAbstractItemModel& model = *table.model();
    std::vector<bool> result;
    for (int column = 0; column < model.columnCount(); ++column) {
        const int alignment = model.index(0, column).data(Qt::TextAlignmentRole).toInt();
        if (!table.isColumnHidden(column))
            result.push_back((alignment & Qt::AlignRight) != 0);
    }
    return result;
}

std::vector<int> widest(const std::vector<QStringList>& lines) {
    std::vector<int> widths(static_cast<std::size_t>(lines.front().size()), 0);
    for (const QStringList& cells : lines) {
        for (std::size_t at = 0; at < widths.size(); ++at)
            widths[at] = std::max(widths[at], static_cast<int>(cells[static_cast<int>(at)].size()));
    }
    return widths;
}

QString windowText(const QWidget& window) {
    if (const auto* box = qobject_cast<const QMessageBox*>(&window))
        return box->text();
    QStringList texts;
    for (const QLabel* label : window.findChildren<QLabel*>())
        texts << label->text();
    return texts.join(QLatin1Char('\n'));
}

} // namespace

QString tableText(const QTableView& table) {
    const std::vector<QStringList> lines = visibleTexts(table);
    const std::vector<bool> isRight = rightAligned(table);
    const std::vector<int> widths = widest(lines);
    QString text;
    for (const QStringList& cells : lines) {
        QString line;
        for (std::size_t at = 0; at < widths.size(); ++at) {
            const QString& cell = cells[static_cast<int>(at)];
            line +=
                (isRight[at] ? cell.rightJustified(widths[at]) : cell.leftJustified(widths[at])) +
                QStringLiteral("  ");
        }
        while (line.endsWith(QLatin1Char(' ')))
            line.chop(1);
        text += line + QLatin1Char('\n');
    }
    return text;
}

BoardPicture::BoardPicture(const QString& file) : m_file(file) {
    connect(&m_timer, &QTimer::timeout, this, &BoardPicture::poll);
    m_timer.start(pollInterval);
    m_waiting.start();
}

void BoardPicture::poll() {
    if (m_isTaken)
        return;
    QWidget* modal = QApplication::activeModalWidget();
    if (modal && !BoardWatch::isBoard(*modal))
        giveUp(modal, QStringLiteral("Another window came up instead of the board."));
    if (m_watch.board() && m_watch.board()->isVisible())
        take(*m_watch.board());
    else if (m_waiting.hasExpired(longestWait))
        giveUp(nullptr, QStringLiteral("The board did not come up."));
}

void BoardPicture::take(QWidget& board) {
    const auto* grid = board.findChild<QTableView*>(QStringLiteral("Grid"));
    auto* exitButton = board.findChild<QPushButton*>(QStringLiteral("Command1"));
    if (!grid || !exitButton)
        giveUp(&board, QStringLiteral("The board has no grid or no exit button."));
    QTextStream(stdout) << tableText(*grid);
    if (!save(board))
        giveUp(nullptr, QStringLiteral("The picture could not be written to %1.").arg(m_file));
    m_isTaken = true;
    exitButton->click();
}

bool BoardPicture::save(QWidget& window) const {
    return window.grab().save(m_file, "PNG");
}

void BoardPicture::giveUp(QWidget* window, const QString& reason) const {
    QTextStream errors(stderr);
    errors << reason << '\n';
    if (window) {
        errors << window->windowTitle() << '\n' << windowText(*window) << '\n';
        if (!save(*window))
            errors << QStringLiteral("The picture could not be written to %1.").arg(m_file) << '\n';
    }
    errors.flush();
    std::_Exit(exitUnexpectedWindow);
}

} // namespace tallyroom::host
