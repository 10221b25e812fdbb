// Where the board's controls lie.
#pragma once

#include <QMainWindow>

namespace Ui {
class Tallyroom;
}

namespace tallyroom {

// Keeps the controls at their measures from the edges of the window's inner area, in twips at the
// font that the board is designed for. In a larger font measures and window grow, as far as the
// screen has room; where it has none for the controls the inner area scrolls.
class BoardPlaces {
public:
    // Of a board that has just been set up; refers to it and its controls.
    BoardPlaces(QMainWindow& window, Ui::Tallyroom& ui);

    void resize(); // the inner area has another size

private:
    void growControls() const;
    int grown(int pixels) const { return qRound(pixels * m_growth); }

    QMainWindow& m_window;
    Ui::Tallyroom& m_ui;
    double m_growth; // of the designed measures
};

} // namespace tallyroom
