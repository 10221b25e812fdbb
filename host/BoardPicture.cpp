#include "host/BoardPicture.h"

#include "common/TextTable.h"
#include "host/ExitCodes.h"

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

// The texts of the visible columns.
TextTable visibleTexts(const QTableView& view) {
    const QAbstractItemModel& model = *view.model();
    TextTable table;
    table.rows.resize(static_cast<std::size_t>(model.rowCount()));
    for (int column = 0; column < model.columnCount(); ++column) {
        if (view.isColumnHidden(column))
            continue;
        const int place = model.index(0, column).data(Qt::TextAlignmentRole).toInt();
        table.columns.push_back(
            {model.headerData(column, Qt::Horizontal).toString(),
             (place & Qt::AlignRight) != 0 ? CellAlignment::Right : CellAlignment::Left});
        for (int row = 0; row < model.rowCount(); ++row)
            table.rows[static_cast<std::size_t>(row)] << model.index(row, column).data().toString();
    }
    return table;
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
    return aligned(visibleTexts(table));
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
