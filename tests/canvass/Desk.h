// A desk for tests that need several, or one that is cut off.
#pragma once

#include "canvass/AnswerRecording.h"
#include "canvass/CanvassTotals.h"
#include "tests/support/DataFolder.h"
#include "tests/support/FakeHost.h"

namespace tallyroom {

// A board and who works on it, without its window.
struct Desk {
    Desk(const QString& dataPath, const QString& filter) {
        host.filter = filter;
        context = host.context(dataPath);
        context.CurrentUser = QStringLiteral("jo");
        state.DataPath = dataPath;
        state.listener = [this](const QStringList& told) {
            news += told;
            isDeaf = told.isEmpty();
        };
        state.openHostOptions();
    }
    bool count() {
        return CanvassTotals::build(state, context.BucketForm, true,
                                    [](const RunError&) { return ErrorAnswer::Abort; });
    }
    AnswerRecording::Result accept(const QStringList& codes,
                                   const QString& date = QStringLiteral("1/9/2008")) {
        AnswerRequest request;
        request.employees = codes;
        request.accept = true;
        request.multiply = true;
        request.amount = QStringLiteral("2:00");
        request.canvassDate = date;
        request.user = QStringLiteral("jo");
        request.board = shown();
        return AnswerRecording::record(state, request);
    }
    // The board as a window would show it, when it was first asked for.
    const std::optional<Standing::Snapshot>& shown() {
        if (board)
            return board;
        Standing::Snapshot seen;
        for (const QString& code : counted())
            seen.rows.push_back({code.section(u'|', 0, 0), {}, false});
        seen.listed = static_cast<int>(seen.rows.size());
        board = std::move(seen);
        return board;
    }
    QStringList counted() const { return textsOf(*state.rows().openRecordset()); }

    FakeHost host;
    HostContext context;
    CanvassState state;
    std::optional<Standing::Snapshot> board;
    QStringList news;
    bool isDeaf = false;
};

} // namespace tallyroom
