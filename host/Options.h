// The host's command line.
#pragma once

#include "host/ReportOptions.h"
#include "host/demo/DemoSettings.h"

#include <QString>
#include <QStringList>
#include <optional>

namespace tallyroom::host {

enum class Command { ShowHelp, ShowVersion, CreateData, CopyData, Upgrade, Report, Run };

struct Options {
    Command command = Command::Run;
    DemoSettings demo;  // CreateData
    QString copiedFrom; // CopyData; as dataFolder
    QString copiedTo;   // CopyData
    int codePage = 0;   // of old texts; 0: as their file says
    QString upgraded;   // Upgrade
    ReportOptions report;
    QString dataFolder; // Run, Report; absolute or a site's address, empty to ask the user
    QString user;       // empty when the host has no users
    std::optional<QStringList> selection; // employee codes; without them the user's last bucket
    bool selectsAll = false;              // everybody, whatever the last bucket was
    QString openEntry;                    // call this entry of the add-in at once and end with it
    QString pictureFile;                  // save a picture of the board there, without a display
    QString moduleFile;                   // the add-in's module; empty to look in the usual places

    bool opensBoard() const;
    // Nobody is expected to be at the screen, so errors go to standard error.
    bool isScripted() const { return !openEntry.isEmpty(); }
};

struct OptionsResult {
    std::optional<Options> options;
    QString error; // why there are none
};

// Reads the arguments, the first of which names the program.
OptionsResult parseOptions(const QStringList& arguments);

// The text of --help. Needs an application object.
QString helpText();

} // namespace tallyroom::host
