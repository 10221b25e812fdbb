#include "host/Options.h"

#include <QCommandLineParser>
#include <QDir>
#include <QHash>

namespace tallyroom::host {

namespace {

const QString boardEntry = QStringLiteral("TLYRShow");

// What is wrong with the command line.
struct UsageError {
    QString text;
};

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

void addDataOptions(QCommandLineParser& parser) {
    parser.addOptions({
        {text("create-data"), text("Make a data folder with demonstration data."), text("DIR")},
        {text("employees"), text("Number of employees (300)."), text("N"), text("300")},
        {text("days"), text("Days of history (365)."), text("N"), text("365")},
        {text("seed"), text("Same seed and sizes, same data (1)."), text("N"), text("1")},
        {text("end"), text("Last day of the history (yesterday)."), text("YYYY-MM-DD")},
        {text("first-run"), text("Leave out the add-in's associations, period and orderings.")},
        {text("bare"), text("Make the tables without rows.")},
    });
}

void addRunOptions(QCommandLineParser& parser) {
    parser.addOptions({
        {text("data"), text("Run the host on this data folder."), text("DIR")},
        {text("user"), text("Name of the current user."), text("NAME")},
        {text("select"),
         text("Employees selected at the start: codes, or \"all\" (the last bucket of the user, or "
              "everybody)."),
         text("CODE,...")},
        {text("open"), text("Open this entry of the add-in (TLYRShow) at once and end with it."),
         text("ENTRY")},
        {text("picture"), text("Print the board and save its picture, without a display."),
         text("FILE")},
        {text("module"), text("The add-in's module, when it is not in its usual place."),
         text("FILE")},
    });
}

void prepare(QCommandLineParser& parser) {
    parser.setApplicationDescription(
        text("Stand-in for the Brightclock host: runs the overtime canvassing board on a data "
             "folder.\nUse either --create-data or --data; without either it asks what to open."));
    parser.addOption({{text("h"), text("help")}, text("Show this help.")});
    addDataOptions(parser);
    addRunOptions(parser);
}

// What the toolkit takes out of the arguments by itself, and whether a value follows.
const QHash<QString, bool>& toolkitOptions() {
    static const QHash<QString, bool> known{
        {text("-style"), true},    {text("-stylesheet"), true}, {text("-platform"), true},
        {text("-display"), true},  {text("-geometry"), true},   {text("-qwindowgeometry"), true},
        {text("-reverse"), false},
    };
    return known;
}

QStringList withoutToolkitOptions(const QStringList& arguments) {
    QStringList own;
    for (qsizetype at = 0; at < arguments.size(); ++at) {
        const QString name = arguments[at].section(u'=', 0, 0);
        const auto taken = toolkitOptions().constFind(name);
        if (taken == toolkitOptions().constEnd())
            own << arguments[at];
        else if (*taken && name == arguments[at])
            ++at; // its value
    }
    return own;
}

// Names of the given options that do not belong to the command.
QStringList foreignOptions(const QCommandLineParser& parser, bool creating) {
    static const QStringList ofCreate{text("employees"), text("days"),      text("seed"),
                                      text("end"),       text("first-run"), text("bare")};
    static const QStringList ofRun{text("data"), text("user"),    text("select"),
                                   text("open"), text("picture"), text("module")};
    QStringList found;
    for (const QString& name : creating ? ofRun : ofCreate) {
        if (parser.isSet(name))
            found << text("--") + name;
    }
    return found;
}

int number(const QCommandLineParser& parser, const char* name, int minimum, int maximum) {
    bool isNumber = false;
    const int value = parser.value(text(name)).toInt(&isNumber);
    if (!isNumber || value < minimum || value > maximum)
        throw UsageError{
            text("--%1 must be a number from %2 to %3.").arg(text(name)).arg(minimum).arg(maximum)};
    return value;
}

QDate endOfHistory(const QCommandLineParser& parser) {
    if (!parser.isSet(text("end")))
        return QDate::currentDate().addDays(-1);
    const QDate end = QDate::fromString(parser.value(text("end")), Qt::ISODate);
    if (!end.isValid())
        throw UsageError{text("--end must be a date like 2024-03-31.")};
    return end;
}

QString folder(const QCommandLineParser& parser, const char* name) {
    const QString given = parser.value(text(name));
    if (given.isEmpty())
        throw UsageError{text("--%1 needs the name of a folder.").arg(text(name))};
    return QDir(given).absolutePath();
}

DemoSettings demoSettings(const QCommandLineParser& parser) {
    DemoSettings settings;
    settings.folder = folder(parser, "create-data");
    settings.employees = number(parser, "employees", 1, maximumEmployees);
    settings.days = number(parser, "days", 1, maximumDays);
    settings.seed = static_cast<quint32>(number(parser, "seed", 0, INT_MAX));
    settings.end = endOfHistory(parser);
    settings.firstRun = parser.isSet(text("first-run"));
    settings.bare = parser.isSet(text("bare"));
    return settings;
}

std::optional<QStringList> selection(const QCommandLineParser& parser) {
    const QString given = parser.value(text("select"));
    if (!parser.isSet(text("select")) || given == text("all"))
        return std::nullopt;
    QStringList codes = given.split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (QString& code : codes)
        code = code.trimmed();
    return codes;
}

void readRunOptions(const QCommandLineParser& parser, Options& options) {
    if (!parser.isSet(text("data")))
        return; // the user is asked
    options.dataFolder = folder(parser, "data");
    options.user = parser.value(text("user"));
    options.selection = selection(parser);
    options.selectsAll = parser.isSet(text("select")) && !options.selection;
    options.pictureFile = parser.value(text("picture"));
    options.moduleFile = parser.value(text("module"));
    options.openEntry = parser.isSet(text("open"))      ? parser.value(text("open"))
                        : parser.isSet(text("picture")) ? boardEntry
                                                        : QString();
    if (parser.isSet(text("open")) && options.openEntry.isEmpty())
        throw UsageError{text("--open needs the name of an entry.")};
    if (parser.isSet(text("picture")) && options.pictureFile.isEmpty())
        throw UsageError{text("--picture needs the name of a file.")};
}

Options readOptions(const QCommandLineParser& parser) {
    const bool creating = parser.isSet(text("create-data"));
    if (!parser.positionalArguments().isEmpty())
        throw UsageError{
            text("Unexpected argument \"%1\".").arg(parser.positionalArguments().first())};
    if (!creating && !parser.isSet(text("data")) && !parser.optionNames().isEmpty())
        throw UsageError{text("Give a data folder with --data, or make one with --create-data.")};
    if (const QStringList foreign = foreignOptions(parser, creating); !foreign.isEmpty())
        throw UsageError{
            text("%1 cannot be used with %2.")
                .arg(foreign.join(text(", ")), creating ? text("--create-data") : text("--data"))};
    Options options;
    options.command = creating ? Command::CreateData : Command::Run;
    if (creating)
        options.demo = demoSettings(parser);
    else
        readRunOptions(parser, options);
    return options;
}

} // namespace

bool Options::opensBoard() const {
    return openEntry.compare(boardEntry, Qt::CaseInsensitive) == 0;
}

OptionsResult parseOptions(const QStringList& arguments) {
    QCommandLineParser parser;
    prepare(parser);
    if (!parser.parse(withoutToolkitOptions(arguments)))
        return {std::nullopt, parser.errorText()};
    if (parser.isSet(text("help"))) {
        Options help;
        help.command = Command::ShowHelp;
        return {help, {}};
    }
    try {
        return {readOptions(parser), {}};
    } catch (const UsageError& error) {
        return {std::nullopt, error.text};
    }
}

QString helpText() {
    QCommandLineParser parser;
    prepare(parser);
    return parser.helpText() +
           text("\nOptions of the toolkit, -style and -platform among them, are taken as well.\n"
                "\nExit codes: 0 done; 1 an error, which is printed or was shown; 2 wrong use;\n"
                "3 no display; 4 another window stood in the way of --picture.\n");
}

} // namespace tallyroom::host
