// Windows as large as their font asks for and their screen allows.
#pragma once

#include <QDialog>
#include <QScrollArea>

namespace tallyroom::WindowFit {

// How many times larger the application's font is than the one that windows are designed for (9
// points on a screen of 96 dots an inch), at least 1. The platform's dots an inch count, its scale
// does not, as that enlarges the pixels.
double growth();

// What a window may take of its screen: pixels within the frame, as good as that is known before
// the window is shown.
QSize room(const QWidget& window);

// Makes fonts larger that have a size of their own. To be called once, before such a control is
// measured.
void growFonts(QWidget& window, double factor);

// growFonts() and the designed size of a window, which its font makes larger. For a window that has
// just been set up.
void grow(QWidget& window);

// To be called when the window is filled, before it is shown: makes it large enough for its layout
// and cuts it to the screen. On a screen that is too small, labels are broken into lines, and if
// that does not help the content scrolls.
void fit(QDialog& window);

// An area that scrolls what does not fit and shows nothing of itself otherwise.
QScrollArea* scrollArea(QWidget* parent);

} // namespace tallyroom::WindowFit
