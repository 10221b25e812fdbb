// A window over a data folder, with a host, and a script of what is done in it.
#pragma once

#include "tests/support/DataFolder.h"
#include "tests/support/DialogScript.h"
#include "tests/support/FakeHost.h"
#include "tests/support/Printing.h"

namespace tallyroom {

template<class Folder>
class WindowTestOn : public testing::Test {
protected:
    template<class Window>
    void show(const DialogScript::Action& use) {
        const HostContext context = host.context(folder.path());
        Window window(context);
        script.expectWindow(window.objectName(), use);
        window.showModally();
    }

    Folder folder;
    FakeHost host;
    DialogScript script;
};

using WindowTest = WindowTestOn<DataFolder>;

} // namespace tallyroom
