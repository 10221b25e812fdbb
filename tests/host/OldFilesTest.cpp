// Bringing over folders of the old desktop engine: what becomes of values, what is refused, and
// that all is told.
#include "common/RunError.h"
#include "host/oldfiles/OldConversion.h"
#include "host/oldfiles/OldCopy.h"
#include "host/oldfiles/OldFileProcess.h"
#include "host/oldfiles/OldSource.h"
#include "tests/support/DataFolder.h"
#include "tests/support/OldFileWriter.h"

#include <QDir>
#include <QFile>
#include <limits>

namespace tallyroom::host {
namespace {

QString text(const char16_t* letters) {
    return QString::fromUtf16(letters);
}

constexpr double noon = 43831.5; // of 1 January 2020
using Type = Schema::ColumnType;

TEST(OldConversion, KeepsWhatItCanAndTellsTheRest) {
    struct Case {
        OldValue from;
        Schema::ColumnType type;
        const char16_t* to; // as a report shows it
        OldChange change = OldChange::None;
        int width = 5;
    };
    const double infinite = std::numeric_limits<double>::infinity();
    const Case cases[] = {
        {{}, Type::Long, u"nothing"},
        {text(u"12345"), Type::Text, u"'12345'"},
        {text(u"123456"), Type::Text, u"'12345'", OldChange::Cut},
        {text(u"1234\U0001F600"), Type::Text, u"'1234'", OldChange::Cut},
        {QString(QStringLiteral("a") + QChar::Null + u'b'), Type::Memo, u"'ab'",
         OldChange::Cleaned},
        {text(u"a\n\x1B"), Type::Memo, u"'a··'"},
        {text(u"a\xD800"), Type::Memo, u"'a\xFFFD'", OldChange::Cleaned},
        {text(u"a\xFFFD"), Type::Memo, u"'a\xFFFD'", OldChange::Cleaned},
        {qint32(-7), Type::Text, u"'-7'"},
        {0.1, Type::Text, u"'0.1'"},
        {1.0 / 3, Type::Memo, u"'0.333333333333333'", OldChange::Rounded},
        {-infinite, Type::Memo, u"nothing", OldChange::Unconverted},
        {OldDecimal{text(u"-12.5000")}, Type::Text, u"'-12.5000'", OldChange::None, 9},
        {true, Type::Long, u"-1"},
        {2.0, Type::Long, u"2"},
        {2.5, Type::Long, u"2", OldChange::Rounded},
        {3e9, Type::Long, u"nothing", OldChange::Unconverted},
        {OldDecimal{text(u"12.0000")}, Type::Long, u"12"},
        {text(u" 12 "), Type::Long, u"12"},
        {text(u"twelve"), Type::Long, u"nothing", OldChange::Unconverted},
        {QString(), Type::Long, u"nothing", OldChange::Unconverted},
        {OldDecimal{text(u"1234.5600")}, Type::Double, u"1234.56"},
        {OldDecimal{text(u"922337203685477.5807")}, Type::Double, u"922337203685477.6",
         OldChange::Rounded},
        {double(0.1F), Type::Double, u"0.10000000149011612"},
        {infinite, Type::Double, u"nothing", OldChange::Unconverted},
        {Date{noon}, Type::Date, u"2020-01-01 12:00:00"},
        {Date{noon + 0.4 / 86400}, Type::Date, u"2020-01-01 12:00:00", OldChange::Rounded},
        {Date{0.25}, Type::Date, u"1899-12-30 06:00:00"},
        {Date{-0.25}, Type::Date, u"1899-12-30 06:00:00"},
        {Date{-2.25}, Type::Date, u"1899-12-28 06:00:00"},
        {Date{1e7}, Type::Date, u"nothing", OldChange::Unconverted},
        {Date{infinite}, Type::Date, u"nothing", OldChange::Unconverted},
        {qint32(2), Type::Date, u"1900-01-01 00:00:00"},
        {text(u"soon"), Type::Date, u"nothing", OldChange::Unconverted},
        {qint32(2), Type::Boolean, u"True"},
        {QByteArray("bytes"), Type::Memo, u"nothing", OldChange::Unconverted},
    };
    for (const Case& each : cases) {
        const ConvertedValue made = converted(each.from, {QString(), each.type, each.width});
        EXPECT_EQ(shown(made.value), text(each.to)) << shown(each.from).toStdString();
        EXPECT_EQ(made.change, each.change) << shown(each.from).toStdString();
    }
}

// Tables made up in memory.
class MadeUp final : public OldFile {
public:
    struct Content {
        OldTable table;
        std::vector<OldRow> rows;
        qint64 counted = 0;
    };
    explicit MadeUp(std::vector<Content> contents) : m_contents(std::move(contents)) {}
    std::vector<OldTable> tables() override {
        std::vector<OldTable> tables;
        for (const Content& content : m_contents)
            tables.push_back(content.table);
        return tables;
    }
    qint64 readRows(const OldTable& table, const TakeOldRows& take) override {
        const Content& content = *std::ranges::find(m_contents, table, &Content::table);
        take(content.rows);
        return content.counted;
    }

private:
    std::vector<Content> m_contents;
};

const OldTable people{text(u"EMPLOYEE"),
                      {{text(u"EMP_CODE"), OldType::Text, 12},
                       {text(u"emp_name"), OldType::Memo},
                       {text(u"Seniority"), OldType::Decimal},
                       {text(u"picture"), OldType::Binary},
                       {text(u"hired"), OldType::Date}}};

OldRow person(const char16_t* code, const QString& name, const char16_t* seniority = u"1.0000") {
    return {text(code), name, OldDecimal{text(seniority)}, QByteArray("x"), Date{noon}};
}

class OldFolders : public testing::Test {
protected:
    // The report on a site goes into the current folder.
    OldFolders() { QDir::setCurrent(place.path()); }
    ~OldFolders() override { QDir::setCurrent(QDir::rootPath()); }

    const QString& to() const { return m_to; }
    QString reportFile() const {
        const QString end = QStringLiteral("-copied.txt");
        return testsOnServer() ? to().section(u'?', 0, 0).section(u'/', -1) + end : to() + end;
    }
    QString report() const {
        QFile file(reportFile());
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }
    QStringList rows(const char16_t* file, QStringView sql) const {
        const auto open = Workspace::openDatabase(to() + u'\\' + text(file));
        return textsOf(*open->openRecordset(sql.toString(), RecordsetType::Snapshot));
    }
    static CopyMessages silent() {
        return {[](const QString&) {}, [](const QString&) {}};
    }
    void copyMadeUp(std::vector<MadeUp::Content> host) {
        QDir(place.path()).mkpath(QStringLiteral("in"));
        CopyReport written(reportFile());
        std::vector<CopiedSource> sources;
        for (const Schema::File& file : Schema::files()) {
            const bool isHost = text(file.name) == text(hostFile);
            auto old = std::make_unique<MadeUp>(isHost ? host : std::vector<MadeUp::Content>{});
            sources.push_back({file, std::make_unique<OldSource>(file, text(file.name),
                                                                 std::move(old), written)});
        }
        copySources(sources, to(), silent());
        for (const QString& line : written.summary())
            written.line(line);
        written.finish();
    }
    void write(const char16_t* name, const QByteArray& bytes) const {
        QDir().mkpath(old());
        QFile file(old() + u'/' + text(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    QString old() const { return place.filePath(QStringLiteral("älter")); }

    void expectNothingMade(const QStringList& left) const {
        EXPECT_THROW(Workspace::openAddIn(to()), RunError);
        const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
        QDir(place.path()).rmdir(QStringLiteral("in")); // which an empty folder allows only
        EXPECT_EQ(QDir(place.path()).entryList(all), left);
    }

    QTemporaryDir place;

private:
    QString m_to = testsOnServer() ? newSite() : place.filePath(QStringLiteral("in/new"));
};

TEST_F(OldFolders, TablesGetOurNamesAndTheReportWhatIsNotTheSame) {
    // Names that have a meaning to engines or to the report.
    const OldTable odd{text(u"SQLite %1"),
                       {{text(u"it's \"id\""), OldType::Guid}, {text(u"rowid"), OldType::Whole}}};
    const OldTable pictures{text(u"Pictures"), {{text(u"picture"), OldType::Binary}}};
    const OldTable shifts{text(u"Shift"), {{text(u"Shift_Code"), OldType::Whole}}};
    copyMadeUp({{people,
                 {person(u"É1", text(u"First")), person(u"é1 ", text(u"Twice")),
                  person(u"123456789012", QString(60, u'n'), u"922337203685477.5807")},
                 2},
                {odd, {{text(u"{A}"), qint32(7)}, {text(u"{B}"), qint32(7)}}, 2},
                {pictures, {{QByteArray("x")}}, 1},
                {shifts, {{qint32(-1234567890)}}, 1}});
    EXPECT_EQ(rows(hostFile, u"Select [emp_code], [Seniority], [hired], [phone] from [Employee];"),
              (QStringList{text(u"É1|1|1/1/2020 12:00:00 PM|Null"),
                           text(u"123456789012|922337203685478|1/1/2020 12:00:00 PM|Null")}));
    EXPECT_EQ(rows(hostFile, u"Select * from [SQLite %1];"),
              (QStringList{text(u"{A}|7"), text(u"{B}|7")}));
    EXPECT_EQ(rows(hostFile, u"Select [Shift_Code] from [Shift];"),
              QStringList{text(u"-1234567890")});
    const QString said = report();
    for (const char16_t* line :
         {u"Employee, row 2: left out, for its key is there already: 'é1 '\n",
          u"Employee, row 3 ('123456789012'), emp_name: 'nnn", u"(cut to its column's width)\n",
          u"Seniority: 922337203685477.5807 became 922337203685477.6 (rounded)\n",
          u"Employee, picture: pictures, objects and bytes are left out, 3 of them\n",
          u"Employee: 3 rows read, 2 written (the file itself counts 2)\n",
          u"SQLite %1: 2 rows read, 2 written\n", u"Pictures: left out",
          u"Not the same in the copy: 5\n"})
        EXPECT_TRUE(said.contains(text(line))) << text(line).toStdString() << said.toStdString();
}

TEST_F(OldFolders, NothingIsThereOfWhatCannotBeWhole) {
    EXPECT_THROW(copyMadeUp({{people, {person(u"E1", text(u"First"))}, 2}}), RunError) << "damaged";
    const OldTable longNames{text(u"Long"), {{QString(32, u'ä'), OldType::Whole}}};
    if (testsOnServer()) {
        EXPECT_THROW(copyMadeUp({{longNames, {}, 0}}), RunError) << "it would cut the name";
    }
    expectNothingMade({});
}

// The program that reads old files, with what it is to read.
class OldFilesRead : public OldFolders {
protected:
    void SetUp() override {
        if (OldFileProcess::program().isEmpty())
            GTEST_SKIP() << "this build has no program that reads old files";
    }
    static OldFileWriter host() {
        OldFileWriter writer;
        writer.scatter();
        writer.addTable(people, {person(u"E1", text(u"Name \u4e2d"), u"-0.0100"),
                                 {text(u"E2"), {}, {}, {}, {}}});
        writer.addTable({text(u"All"),
                         {{text(u"flag"), OldType::Boolean},
                          {text(u"whole"), OldType::Whole},
                          {text(u"single"), OldType::Single},
                          {text(u"double"), OldType::Double},
                          {text(u"guid"), OldType::Guid}}},
                        {{true, qint32(-5), 0.5, -1e300, text(u"00112233445566778899AABBCCDDEEFF")},
                         {false, {}, {}, {}, {}}});
        return writer;
    }
    void writeAll() const {
        write(u"AIDB01.MDB", OldFileWriter().bytes());
        write(mainFile, OldFileWriter().bytes());
        write(hostFile, host().bytes());
    }
};

TEST_F(OldFilesRead, AFolderComesOverWhole) {
    writeAll();
    EXPECT_TRUE(isOldFolder(old()));
    EXPECT_THROW(refuseOldFolder(old()), RunError);
    copyOldData(old(), to(), 0, silent());
    EXPECT_FALSE(isOldFolder(to()));
    EXPECT_EQ(rows(hostFile, u"Select * from [All];"),
              (QStringList{text(u"True|-5|0.5|-1E+300|{33221100-5544-7766-8899AABBCCDDEEFF}"),
                           text(u"False|Null|Null|Null|Null")}));
    EXPECT_EQ(rows(hostFile, u"Select [emp_code], [emp_name], [Seniority] from [Employee];"),
              (QStringList{text(u"E1|Name \u4e2d|-0.01"), text(u"E2|Null|Null")}));
    EXPECT_TRUE(report().contains(text(u"Absent codes for answers"))) << "the checks";
}

TEST_F(OldFilesRead, WhatCannotBeReadWholeIsRefusedByName) {
    OldFileWriter locked = host();
    locked.setPassword();
    OldFileWriter encrypted = host();
    encrypted.setEncrypted();
    OldFileWriter linked = host();
    linked.addLink(text(u"Elsewhere"));
    QByteArray later = host().bytes();
    later[0x14] = 2;
    const QByteArray whole = host().bytes();
    const struct {
        QByteArray bytes;
        const char16_t* said;
    } cases[] = {
        {locked.bytes(), u"a password"},
        {encrypted.bytes(), u"encrypted"},
        {linked.bytes(), u"Elsewhere"},
        {later, u"version"},
        {whole.left(whole.size() / 2), u"repair"},
        {whole.left(4096), u"repair"},
        {QByteArray("something else"), u"not in the format"},
        {QByteArray(), u"not in the format"},
    };
    for (const auto& each : cases) {
        writeAll();
        write(hostFile, each.bytes);
        try {
            copyOldData(old(), to(), 0, silent());
            ADD_FAILURE() << "copied, where it says: " << text(each.said).toStdString();
        } catch (const RunError& error) {
            EXPECT_TRUE(error.description().contains(text(hostFile))) << error.what();
            EXPECT_TRUE(error.description().contains(text(each.said))) << error.what();
        }
        expectNothingMade({QStringLiteral("älter")});
    }
    QFile::remove(old() + u'/' + text(mainFile));
    EXPECT_THROW(copyOldData(old(), to(), 0, silent()), RunError);
}

} // namespace
} // namespace tallyroom::host
