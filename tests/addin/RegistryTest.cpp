#include "addin/Registry.h"
#include "addin/ClassRegistration.h"
#include "addin/InstallationRecord.h"
#include "tests/support/Printing.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace tallyroom;

namespace {

class RegistryTest : public testing::Test {
protected:
    QByteArray bytes() const {
        QFile opened(file);
        EXPECT_TRUE(opened.open(QIODevice::ReadOnly));
        return opened.readAll();
    }
    QString contents() const { return QString::fromUtf8(bytes()); }
    bool set(const char16_t* key, const QString& name, const QString& value) {
        return registry.change(
            [&](RegistryText& text) { text.setValue(QString::fromUtf16(key), name, value); });
    }
    bool remove(const char16_t* key) {
        return registry.change(
            [&](RegistryText& text) { text.deleteKey(QString::fromUtf16(key)); });
    }

    QTemporaryDir folder;
    QString file = folder.filePath(QStringLiteral("deep/registry.reg"));
    Registry registry{file};
};

TEST_F(RegistryTest, KeepsValuesInTheExportedForm) {
    EXPECT_TRUE(set(u"A\\B", QStringLiteral("Name \"x\""), QStringLiteral("C:\\é")));
    EXPECT_TRUE(set(u"a\\b", QString(), QStringLiteral("default")));
    EXPECT_EQ(contents(), QStringLiteral("Windows Registry Editor Version 5.00\n\n"
                                         "[HKEY_LOCAL_MACHINE\\A\\B]\n@=\"default\"\n"
                                         "\"Name \\\"x\\\"\"=\"C:\\\\é\"\n"));
    EXPECT_EQ(registry.value(QStringLiteral("A\\b"), QStringLiteral("NAME \"X\"")),
              QStringLiteral("C:\\é"));
    EXPECT_FALSE(registry.value(QStringLiteral("A\\B"), QStringLiteral("other")));
    EXPECT_TRUE(set(u"A\\BC", {}, {}));
    EXPECT_TRUE(remove(u"A\\B"));
    EXPECT_FALSE(registry.hasKey(QStringLiteral("A\\B")));
    EXPECT_TRUE(registry.hasKey(QStringLiteral("A\\BC")));
    EXPECT_TRUE(remove(u"A\\B")) << "nothing is left to remove";
}

TEST_F(RegistryTest, CanBeReadByAllUsersOfTheMachine) {
    const mode_t before = umask(077);
    EXPECT_TRUE(set(u"A", {}, {}));
    umask(before);
    struct stat status {};
    EXPECT_EQ(stat(QFile::encodeName(file).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, mode_t{0644});
    EXPECT_EQ(stat(QFile::encodeName(QFileInfo(file).path()).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, mode_t{0755});
}

TEST_F(RegistryTest, KeepsWhatOthersHaveWritten) {
    ASSERT_TRUE(QDir().mkpath(QFileInfo(file).path()));
    QFile others(file);
    ASSERT_TRUE(others.open(QIODevice::WriteOnly));
    const QByteArray before = "REGEDIT4\n; caf\xe9\n\n[HKEY_CURRENT_USER\\K]\n@=\"user\"\n";
    const QByteArray key =
        "\n[HKEY_LOCAL_MACHINE\\K]\n; counted\n\"a=b\"=dword:00000001\n"
        "\"bytes\"=hex:01,02,\\\n  03\n\"two\"=\"one\n[two]\"\n\"end\"=\"a\nb\\\n\"\n"
        "\"more\"=\"one\" ; \"two\"\n\"odd\" = 1\n";
    const QByteArray after = "; of the shop \\\n[HKEY_LOCAL_MACHINE\\Z]\n[-HKEY_LOCAL_MACHINE\\K]\n"
                             "[HKEY_LOCAL_MACHINE\\Z]\r\n\"z\"=\"1\"\r\n";
    others.write(before + key + after);
    others.close();
    for (const char16_t* name : {u"a=b", u"bytes", u"more", u"none"})
        EXPECT_FALSE(registry.value(QStringLiteral("K"), QString::fromUtf16(name)));
    EXPECT_EQ(registry.value(QStringLiteral("k"), QStringLiteral("TWO")),
              QStringLiteral("one\n[two]"));
    EXPECT_EQ(registry.value(QStringLiteral("K"), QStringLiteral("end")), QStringLiteral("a\nb\n"));
    EXPECT_EQ(registry.value(QStringLiteral("Z"), QStringLiteral("z")), QStringLiteral("1"));
    EXPECT_TRUE(set(u"k", QStringLiteral("text"), QString()));
    EXPECT_EQ(bytes(), before + key + "\"text\"=\"\"\n" + after);
    EXPECT_TRUE(remove(u"K"));
    EXPECT_EQ(bytes(), before + after);
}

TEST_F(RegistryTest, AValueThatIsNeverClosedIsReadInAMoment) {
    ASSERT_TRUE(QDir().mkpath(QFileInfo(file).path()));
    for (const QByteArray& start : {QByteArray("\"open"), QByteArray("hex:00,\\")}) {
        const QByteArray key = "[HKEY_LOCAL_MACHINE\\K]\n\"a\"=" + start + '\n';
        QFile others(file);
        ASSERT_TRUE(others.open(QIODevice::WriteOnly));
        others.write(key + QByteArray("00, \\\"\\\n\n").repeated(30000));
        others.close();
        QElapsedTimer time;
        time.start();
        EXPECT_FALSE(registry.value(QStringLiteral("K"), QStringLiteral("a")));
        EXPECT_TRUE(set(u"Z", {}, {}));
        EXPECT_LT(time.elapsed(), 5000);
    }
}

TEST_F(RegistryTest, WhatCannotBeWrittenIsNotAnError) {
    ASSERT_TRUE(QDir().mkpath(QFileInfo(file).path()));
    ASSERT_EQ(mkfifo(QFile::encodeName(file).constData(), 0600), 0);
    EXPECT_FALSE(set(u"A", {}, {}));
    EXPECT_FALSE(registry.value(QStringLiteral("A"), QString())) << "nobody writes to the pipe";
    ASSERT_TRUE(QFile::rename(file, file + QStringLiteral(".lock")));
    EXPECT_FALSE(set(u"A", {}, {}));
    EXPECT_FALSE(Registry(QStringLiteral("/dev/zero")).hasKey(QStringLiteral("A")));
    Registry nowhere(QStringLiteral("/proc/no/registry.reg"));
    EXPECT_FALSE(nowhere.change([](RegistryText&) {}));
    EXPECT_FALSE(nowhere.value(QStringLiteral("A"), QString()));
    InstallationRecord::write(nowhere, QString(), applicationInfo(), QString());
}

TEST_F(RegistryTest, TheRecordIsReplacedAtEveryLoad) {
    ApplicationInfo application;
    application.path = QStringLiteral("C:\\Program Files\\Host");
    application.fileName = QStringLiteral("vrlxai02");
    application.comments = QStringLiteral("Comments");
    application.major = 9;
    const QString category = QStringLiteral(" Add-Ins.02 ");
    const QString kind = QStringLiteral("Dll");
    const QString key = InstallationRecord::keyOf(category, application, kind);
    EXPECT_EQ(key, QStringLiteral("Software\\Vorelax Inc.\\Installed Dynamic Link Libraries\\"
                                  "Add-Ins.02\\c:/program files/host/VRLXAI02.DLL"));
    application.path += QLatin1Char('\\');
    EXPECT_EQ(InstallationRecord::keyOf(category, application, kind), key);

    ASSERT_TRUE(set(key.toStdU16String().c_str(), QStringLiteral("Old"), QStringLiteral("value")));
    const int watch = inotify_init1(IN_NONBLOCK);
    inotify_add_watch(watch, QFile::encodeName(QFileInfo(file).path()).constData(), IN_MOVE);
    InstallationRecord::write(registry, category, application, kind);
    alignas(inotify_event) char events[4096];
    const ssize_t size = read(watch, events, sizeof events);
    int moves = 0;
    for (ssize_t at = 0; at < size; ++moves)
        at += sizeof(inotify_event) + reinterpret_cast<inotify_event*>(events + at)->len;
    EXPECT_EQ(moves, 2) << "from one new file to the old one's place";
    close(watch);
    EXPECT_FALSE(registry.value(key, QStringLiteral("Old")));
    EXPECT_EQ(registry.value(key, QStringLiteral("Version")), QStringLiteral("9.0.0"));
    EXPECT_EQ(registry.value(key, QStringLiteral("Application Comments")),
              QStringLiteral("Comments"));
    const QString lastRan = *registry.value(key, QStringLiteral("Last Ran"));
    EXPECT_TRUE(
        lastRan.contains(QString::number(QDate::currentDate().year()) + QStringLiteral(" at ")))
        << lastRan.toStdString();
}

TEST_F(RegistryTest, ASubKeyTurnsTheTextIntoTheDefaultValue) {
    const QString key = QStringLiteral("K");
    const QString name = QStringLiteral("n");
    RegistryText text({});
    InstallationRecord::writeStringValue(text, key, {}, name, QStringLiteral("1"));
    InstallationRecord::writeStringValue(text, key, QStringLiteral("sub"), name,
                                         QStringLiteral("2"));
    EXPECT_EQ(text.value(key, name), QStringLiteral("1"));
    EXPECT_EQ(text.value(key, QString()), QStringLiteral("2"));
    EXPECT_FALSE(text.hasKey(QStringLiteral("K\\sub")));
}

TEST_F(RegistryTest, ClassesAreWrittenWhereHostsFindThem) {
    ApplicationInfo application;
    application.file = QStringLiteral("/lib/tallyroom.so");
    ASSERT_TRUE(ClassRegistration::add(registry, application));
    const QString id =
        *registry.value(QStringLiteral("Software\\Classes\\Tallyroom.TLYR\\CLSID"), QString());
    EXPECT_EQ(id, QStringLiteral("{6B1F5C52-3B0E-4C57-9A41-702D15E8B001}"));
    EXPECT_EQ(registry.value(QStringLiteral("Software\\Classes\\CLSID\\%1\\InprocServer32").arg(id),
                             QString()),
              application.file);
    EXPECT_TRUE(ClassRegistration::remove(registry));
    EXPECT_EQ(contents().count(QLatin1Char('[')), 0);
    EXPECT_TRUE(ClassRegistration::remove(registry)) << "nothing is left to remove";
    Registry nowhere(QStringLiteral("/proc/no/registry.reg"));
    EXPECT_FALSE(ClassRegistration::add(nowhere, application));
    EXPECT_FALSE(ClassRegistration::remove(nowhere));
}

} // namespace
