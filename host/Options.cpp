#include "host/Options.h"

#include <QHash>

namespace tallyroom::host {

namespace {

const QString boardEntry = QStringLiteral("TLYRShow");
constexpr int largestCodePage = 65535;

void addDataOptions(QCommandLineParser& parser) {
    parser.addOptions({
        {text("create-data"), text("Make a data folder or a site with demonstration data."),
         text("DATA")},
        {text("employees"), text("Number of employees (300)."), text("N"), text("300")},
        {text("days"), text("Days of history (365)."), text("N"), text("365")},
        {text("seed"), text("Same seed and sizes, same data (1)."), text("N"), text("1")},
        {text("end"), text("Last day of the history (yesterday)."), text("YYYY-MM-DD")},
        {text("first-run"), text("Leave out the add-in's associations, period and orderings.")},
        {text("bare"), text("Make the tables without rows.")},
        {text("copy-data"),
         text("Copy a data folder or a site to a new one of either kind, named behind it, and "
              "compare them. A folder may be of the old desktop engine: it is read only."),
         text("DATA")},
        {text("code-page"),
         text("Of the texts in old files of 1997, where they are in another than the file names."),
         text("N")},
        {text("upgrade"),
         text("Add to data of an older version what it lacks, after a copy beside it."),
         text("DATA")},
    });
}

void addRunOptions(QCommandLineParser& parser) {
    parser.addOptions({
        {text("data"), text("Run the host on this data folder or site."), text("DATA")},
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
             "folder.\nUse one of --create-data, --copy-data and --data; without any it asks what "
             "to open.\nDATA is a folder, or a site on a server: "
             "postgresql://[user@]host[:port]/database/SITE"));
    parser.addPositionalArgument(text("TO"), text("Where --copy-data copies to."), text("[TO]"));
    parser.addOption({{text("h"), text("help")}, text("Show this help.")});
    parser.addOption({text("version"), text("Show versions, and where the add-in is found.")});
    addDataOptions(parser);
    addRunOptions(parser);
    addReportOptions(parser);
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

// A command, the option that names it, and those that go with it.
struct KnownCommand {
    Command command;
    QString name;
    QStringList options;
};

// Where several are named, the first counts.
const std::vector<KnownCommand>& knownCommands() {
    static const std::vector<KnownCommand> known{
        {Command::ShowVersion, text("version"), {text("module")}},
        {Command::CreateData,
         text("create-data"),
         {text("employees"), text("days"), text("seed"), text("end"), text("first-run"),
          text("bare")}},
        {Command::CopyData, text("copy-data"), {text("code-page")}},
        {Command::Upgrade, text("upgrade"), {}},
        {Command::Report, text("report"),
         reportOptionNames() + QStringList{text("data"), text("user")}},
        {Command::Run,
         text("data"),
         {text("user"), text("select"), text("open"), text("picture"), text("module")}},
    };
    return known;
}

const KnownCommand& commandOf(const QCommandLineParser& parser) {
    for (const KnownCommand& known : knownCommands()) {
        if (parser.isSet(known.name))
            return known;
    }
    if (!parser.optionNames().isEmpty())
        throw UsageError{text("Give a data folder with --data, or make one with --create-data.")};
    return knownCommands().back();
}

void refuseForeign(const QCommandLineParser& parser, const KnownCommand& command) {
    QStringList foreign;
    for (const QString& name : parser.optionNames()) {
        if (name != command.name && !command.options.contains(name))
            foreign << text("--") + name;
    }
    if (!foreign.isEmpty())
        throw UsageError{
            text("%1 cannot be used with --%2.").arg(foreign.join(text(", ")), command.name)};
}

DemoSettings demoSettings(const QCommandLineParser& parser) {
    DemoSettings settings;
    settings.folder = dataOption(parser, "create-data");
    settings.employees = numberOption(parser, "employees", 1, maximumEmployees);
    settings.days = numberOption(parser, "days", 1, maximumDays);
    settings.seed = static_cast<quint32>(numberOption(parser, "seed", 0, INT_MAX));
    settings.end = dateOption(parser, "end").value_or(QDate::currentDate().addDays(-1));
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
    options.dataFolder = dataOption(parser, "data");
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

// Only a copy has a place behind the options, and it must have one.
void requireArguments(const QStringList& arguments, Command command) {
    const qsizetype wanted = command == Command::CopyData ? 1 : 0;
    if (arguments.size() > wanted)
        throw UsageError{text("Unexpected argument \"%1\".").arg(arguments[wanted])};
    if (arguments.size() < wanted || arguments.contains(QString()))
        throw UsageError{text("--copy-data needs what to copy and where to.")};
}

Options readOptions(const QCommandLineParser& parser) {
    const KnownCommand& command = commandOf(parser);
    const QStringList arguments = parser.positionalArguments();
    requireArguments(arguments, command.command);
    refuseForeign(parser, command);
    Options options;
    options.command = command.command;
    switch (command.command) {
    case Command::ShowVersion:
        options.moduleFile = parser.value(text("module"));
        break;
    case Command::CreateData:
        options.demo = demoSettings(parser);
        break;
    case Command::CopyData:
        options.copiedFrom = dataOption(parser, "copy-data");
        options.copiedTo = dataPath(arguments.first());
        if (parser.isSet(text("code-page")))
            options.codePage = numberOption(parser, "code-page", 1, largestCodePage);
        break;
    case Command::Upgrade:
        options.upgraded = dataOption(parser, "upgrade");
        break;
    case Command::Report:
        options.dataFolder = dataOption(parser, "data");
        options.user = parser.value(text("user"));
        options.report = readReportOptions(parser);
        break;
    default:
        readRunOptions(parser, options);
    }
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
                "3 no display; 4 another window stood in the way of --picture. Of a report: 1 "
                "checks found\n"
                "something; 3 the data cannot be read.\n");
}

} // namespace tallyroom::host
