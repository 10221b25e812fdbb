#include "tests/store/StatementFile.h"

#include <QDir>
#include <gtest/gtest.h>

namespace tallyroom {

namespace {

const QString folder = QStringLiteral(STATEMENTS_FOLDER);

std::vector<std::string> fileNames() {
    std::vector<std::string> names;
    for (const QString& name : QDir(folder).entryList({QStringLiteral("*.txt")}))
        names.push_back(name.chopped(4).toStdString());
    return names;
}

class Statements : public testing::TestWithParam<std::string> {};

TEST_P(Statements, GiveWhatTheFileSays) {
    runStatementFile(
        QDir(folder).filePath(QString::fromStdString(GetParam()) + QStringLiteral(".txt")));
}

INSTANTIATE_TEST_SUITE_P(Files, Statements, testing::ValuesIn(fileNames()),
                         [](const auto& parameter) { return parameter.param; });

} // namespace

} // namespace tallyroom
