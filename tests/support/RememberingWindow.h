// A window that remembers what the audit browser does.
#pragma once

#include "common/ui/WindowMemory.h"

#include <QCheckBox>
#include <QRadioButton>

namespace tallyroom {

struct RememberingWindow {
    RememberingWindow() {
        window.setObjectName(QStringLiteral("frmTLYRAudit"));
        panel.setObjectName(QStringLiteral("SSPanel1"));
        for (std::size_t at = 0; at < 3; ++at)
            options[at].setObjectName(QStringLiteral("Option%1").arg(at + 1));
        for (std::size_t at = 0; at < 4; ++at)
            checks[at].setObjectName(QStringLiteral("Check%1").arg(at + 3));
        options[0].setChecked(true);
        window.resize(500, 400);
    }

    QString text() { return WindowMemory::textOf(window, remembered()); }
    void restore(const QString& text) { WindowMemory::restore(window, remembered(), text); }
    WindowMemory::Remembered remembered() {
        return {&panel, &checks[0], &checks[1], &checks[2], &checks[3], &window};
    }

    QWidget window;
    QWidget panel{&window};
    QRadioButton options[3]{QRadioButton(&panel), QRadioButton(&panel), QRadioButton(&panel)};
    QCheckBox checks[4]{QCheckBox(&window), QCheckBox(&window), QCheckBox(&window),
                        QCheckBox(&window)};
};

} // namespace tallyroom
