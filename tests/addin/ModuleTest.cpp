// The built module, through its entry points only.
#include "common/Objects.h"
#include "tests/support/WindowTest.h"

#include <QFile>
#include <QProcess>
#include <dlfcn.h>

using namespace tallyroom;

namespace {

class ModuleTest : public testing::Test {
protected:
    void SetUp() override {
        module = dlopen(TALLYROOM_MODULE, RTLD_NOW | RTLD_LOCAL);
        ASSERT_TRUE(module) << dlerror();
        getClassObject =
            reinterpret_cast<DllGetClassObjectFunction*>(dlsym(module, "DllGetClassObject"));
        canUnload = reinterpret_cast<DllCanUnloadNowFunction*>(dlsym(module, "DllCanUnloadNow"));
        ASSERT_TRUE(getClassObject && canUnload);
    }
    void TearDown() override {
        EXPECT_EQ(canUnload(), statusOk) << "something of the module is still alive";
        dlclose(module);
    }

    Counted<IClassFactory> factory(const Guid& classId = classTLYR) const {
        void* object = nullptr;
        EXPECT_EQ(getClassObject(&classId, &interfaceClassFactory, &object), statusOk);
        return Counted<IClassFactory>::adopt(static_cast<IClassFactory*>(object));
    }
    ObjectRef create(const Guid& classId = classTLYR) const {
        IObject* object = nullptr;
        EXPECT_EQ(factory(classId)->createInstance(&object), statusOk);
        return ObjectRef(Counted<IObject>::adopt(object));
    }

    void* module = nullptr;
    DllGetClassObjectFunction* getClassObject = nullptr;
    DllCanUnloadNowFunction* canUnload = nullptr;
};

TEST_F(ModuleTest, ExportsItsFourEntryPointsAndNothingElse) {
    QProcess nm;
    nm.start(QStringLiteral("nm"),
             {QStringLiteral("-D"), QStringLiteral("--defined-only"),
              QStringLiteral("--format=just-symbols"), QStringLiteral(TALLYROOM_MODULE)});
    ASSERT_TRUE(nm.waitForFinished(-1));
    EXPECT_EQ(
        QString::fromUtf8(nm.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts),
        QStringList({QStringLiteral("DllCanUnloadNow"), QStringLiteral("DllGetClassObject"),
                     QStringLiteral("DllRegisterServer"), QStringLiteral("DllUnregisterServer")}));
}

TEST_F(ModuleTest, RefusesWhatItDoesNotHave) {
    void* object = this;
    const Guid other{1, 2, 3, {}};
    EXPECT_EQ(getClassObject(&other, &interfaceClassFactory, &object), statusClassNotAvailable);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(getClassObject(&classTLYR, &other, &object), statusNoInterface);
    EXPECT_EQ(getClassObject(nullptr, &interfaceClassFactory, &object), statusPointer);
    EXPECT_EQ(getClassObject(&classTLYR, &interfaceClassFactory, nullptr), statusPointer);
    EXPECT_EQ(factory()->createInstance(nullptr), statusPointer);
}

TEST_F(ModuleTest, DescribesItselfAndRecordsItsInstallation) {
    for (int times = 0; times < 100; ++times) {
        const ObjectRef descriptor = create(classAddInDescriptor);
        const ObjectRef members = descriptor.property(QStringLiteral("Members")).toObject();
        EXPECT_EQ(members.property(QStringLiteral("Count")).toLong(), 1);
    }
    const QString version = create(classMemberInfo).call(QStringLiteral("dllVersion")).toText();
    QFile registry(qEnvironmentVariable("TALLYROOM_REGISTRY"));
    ASSERT_TRUE(registry.open(QIODevice::ReadOnly));
    const QString record = QString::fromUtf8(registry.readAll());
    EXPECT_TRUE(record.contains(QStringLiteral("/TALLYROOM.DLL]")));
    EXPECT_TRUE(record.contains(QStringLiteral("\"Version\"=\"") + version));
}

TEST_F(ModuleTest, SaysNoToUnloadingWhileAnythingIsAlive) {
    {
        const ObjectRef object = create();
        EXPECT_EQ(canUnload(), statusFalse);
        EXPECT_EQ(errorNumberOf([&] { object.call(QStringLiteral("Nonsense")); }), 438);
    }
    EXPECT_EQ(canUnload(), statusOk);
    EXPECT_EQ(factory()->lockServer(true), statusOk);
    EXPECT_EQ(canUnload(), statusFalse);
    EXPECT_EQ(factory()->lockServer(false), statusOk);
    EXPECT_EQ(factory()->lockServer(false), statusFail);
}

// The host context of the module keeps the host's objects; a second call lets them go.
TEST_F(ModuleTest, OpensTheBoardForAHost) {
    const DataFolder folder;
    folder.addHost(2);
    folder.associateAll();
    FakeHost host;
    DialogScript script;
    script.expectWindow(u"Tallyroom", [](QWidget& board) { clickButton(board, u"Command1"); });
    const HostContext given = host.context(folder.path());
    const ObjectRef entry = create();
    const VariantArray values{{Variant(given.DataPath), Variant(given.BucketForm),
                               Variant(given.DatePickerForm), Variant(given.HostMenuForm),
                               Variant(given.SplashPicture), Variant(u"Ann")},
                              0,
                              1};
    entry.call(QStringLiteral("TLYRShow"), {Variant(values)});
    const VariantArray nothing{{Variant(u""), Variant(ObjectRef()), Variant(ObjectRef()),
                                Variant(ObjectRef()), Variant(ObjectRef())},
                               1,
                               1};
    script.expectReport(3024, QStringLiteral("Could not find file '\\bcx.mdb'."));
    entry.call(QStringLiteral("TLYRShow"), {Variant(nothing)});
}

} // namespace
