// The board in the main window: its figures, its grid and the line under it.
#pragma once

#include "audit/AnswersOfDay.h"
#include "canvass/AnswerRecording.h"
#include "canvass/BoardStatus.h"
#include "canvass/BoardStatusBar.h"
#include "canvass/Offer.h"
#include "canvass/OrderMenu.h"
#include "canvass/ViewMenu.h"

#include <QTimer>

namespace tallyroom {

class GridFill;

class CanvassBoard {
public:
    // The window, its controls and menus, and the context must outlive this.
    CanvassBoard(QWidget& window, const Ui::Tallyroom& ui, const HostContext& context,
                 const ViewMenu& view, const OrderMenu& order);

    // Opens bcx.mdb of the context's data folder and looks whether the other files are sound.
    // Raises what hinders it, 3049 for a damaged file.
    void open();
    void close();

    const QString& dataPath() const { return m_state.DataPath; } // as it was at open()
    const std::optional<TotallingPeriod>& period() const { return m_state.period; }
    void readPeriod(); // says so when the stored one cannot be read
    void noteOrderings(int leftOut);

    // Computes the totals and fills the grid; a failing statement is asked about.
    void build();
    // Fills the grid from the totals. Any error ends the fill where it is, without a report, and
    // the grid shows what came in until then: false.
    bool fill();
    // Records the answers and shows them. Raises what ended the recording before its end; what is
    // written by then is seen to be.
    void record(const AnswerRequest& request);

    // Says why what the controls offer cannot be recorded.
    void refuse();

    // Looks in the audit who has been asked for the canvass date, and marks their rows.
    void showAsked();

    // The department of all who are shown; "" where there are several or it cannot be read.
    QString department() const;

private:
    void fillGrid(GridFill& grid, const std::function<void()>& unknownElement);
    void connectControls();
    std::optional<RunError> recordAndShow(AnswerRequest request);
    Standing::Snapshot snapshot() const;
    void goOnTo(const QString& code);
    std::optional<RunError> showRecorded(bool anyWritten);
    void showAfterFailure(const AnswerRecording::Result& result);
    bool rebuildQuietly();
    bool isCutOff() const;
    bool countAnew();
    void noteCurrent();
    void hear(const QStringList& news);
    void ownUpToOldFigures();
    void readAsked();
    void markAsked();
    void showStatus();
    // Though rows may be selected; what an answer would do comes back with the next change.
    void showCommand(const QString& command);
    Offer offer() const;
    BoardFigures figures() const;

    QWidget& m_window;
    const Ui::Tallyroom& m_ui;
    const HostContext& m_context;
    const ViewMenu& m_view;
    const OrderMenu& m_order;
    CanvassState m_state;
    BoardStatus m_status;
    BoardStatusBar m_bar;
    AnswersOfDay m_asked;
    QString m_bucket;             // the name of the employees on the board, if they have one
    QTimer m_news;                // runs out soon after other desks have told something
    bool m_areFilesSound = false; // looked at, which another program may have hindered
};

} // namespace tallyroom
