#include "addin/TLYR.h"
#include "tests/support/DataFolder.h"
#include "tests/support/DialogScript.h"
#include "tests/support/FakeHost.h"
#include "tests/support/Printing.h"

using namespace tallyroom;

namespace {

class TLYRTest : public testing::Test {
protected:
    TLYRTest() {
        folder.addHost(1);
        folder.associateAll();
        given = host.context(folder.path());
    }

    VariantArray values(const Variant& user) const {
        return {{Variant(given.DataPath), Variant(given.BucketForm), Variant(given.DatePickerForm),
                 Variant(given.HostMenuForm), Variant(given.SplashPicture), user},
                1,
                1};
    }
    void show(const VariantArray& array) {
        script.expectWindow(QStringLiteral("Tallyroom"),
                            [](QWidget& board) { clickButton(board, QStringLiteral("Command1")); });
        entry.call(QStringLiteral("tlyrshow"), {Variant(array)});
    }
    int errorOf(const Variant& argument) {
        return errorNumberOf([&] { entry.call(QStringLiteral("TLYRShow"), {argument}); });
    }

    DataFolder folder;
    FakeHost host;
    HostContext given;
    HostContext context;
    ObjectRef entry = makeObject<TLYR>(context);
    DialogScript script;
};

TEST_F(TLYRTest, ReadsPositionsFromAnyLowerBoundAndReplacesAllSixEachTime) {
    VariantArray array = values(Variant(u"Ann"));
    for (const int lowerBound : {1, 0, -3}) {
        array.lowerBound = lowerBound;
        context = {};
        show(array);
        EXPECT_EQ(context.DataPath, folder.path());
        EXPECT_EQ(context.SplashPicture.get(), given.SplashPicture.get());
        EXPECT_EQ(context.CurrentUser, QStringLiteral("Ann"));
    }
    show(values(Variant(u"Bob")));
    EXPECT_EQ(context.CurrentUser, QStringLiteral("Bob"));
}

TEST_F(TLYRTest, NobodyIsNotTheMaster) {
    VariantArray withoutUser = values(Variant());
    withoutUser.elements.pop_back();
    for (const VariantArray& array : {withoutUser, values(Variant(u"")), values(Variant::null()),
                                      values(Variant(given.BucketForm))}) {
        show(array);
        EXPECT_EQ(context.CurrentUser, QStringLiteral("*Master*"));
        EXPECT_FALSE(context.isMaster());
    }
}

TEST_F(TLYRTest, MalformedArgumentsAreErrorsOfTheCaller) {
    EXPECT_EQ(errorOf(Variant(u"no array")), 13);
    VariantArray array = values(Variant(u"Ann"));
    array.dimensions = 2;
    EXPECT_EQ(errorOf(Variant(array)), 9);
    array.dimensions = 1;
    array.elements[2] = Variant(u"no object");
    EXPECT_EQ(errorOf(Variant(array)), 424);
    EXPECT_EQ(context.DataPath, folder.path()) << "what was copied stays";
    EXPECT_FALSE(context.DatePickerForm.isSet());
    array.elements.resize(4);
    array.elements[2] = Variant(given.DatePickerForm);
    EXPECT_EQ(errorOf(Variant(array)), 9);
    EXPECT_TRUE(context.HostMenuForm.isSet());
    EXPECT_EQ(errorNumberOf([&] { entry.call(QStringLiteral("TLYRShow")); }), 450);
    EXPECT_EQ(errorNumberOf([&] { entry.call(QStringLiteral("Smallforge"), {Variant()}); }), 0);
}

TEST_F(TLYRTest, ASecondCallWhileTheBoardIsUpChangesNothingOnScreen) {
    script.expectWindow(QStringLiteral("Tallyroom"), [&](QWidget& board) {
        entry.call(QStringLiteral("TLYRShow"), {Variant(values(Variant(u"Bob")))});
        EXPECT_TRUE(board.isVisible());
        clickButton(board, QStringLiteral("Command1"));
    });
    entry.call(QStringLiteral("TLYRShow"), {Variant(values(Variant(u"Ann")))});
    EXPECT_EQ(context.CurrentUser, QStringLiteral("Bob"));
}

} // namespace
