#include "addin/TLYR.h"
#include "tests/support/WindowTest.h"

#include <QApplication>

using namespace tallyroom;

namespace {

class TLYRTest : public WindowTest {
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
        script.expectWindow(u"Tallyroom", [](QWidget& board) { clickButton(board, u"Command1"); });
        entry.call(QStringLiteral("tlyrshow"), {Variant(array)});
    }
    int errorOf(const Variant& argument) {
        return errorNumberOf([&] { entry.call(QStringLiteral("TLYRShow"), {argument}); });
    }

    HostContext given;
    HostContext context;
    ObjectRef entry = makeObject<TLYR>(context);
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
    script.expectWindow(u"Tallyroom", [&](QWidget& board) {
        entry.call(QStringLiteral("TLYRShow"), {Variant(values(Variant(u"Bob")))});
        EXPECT_TRUE(board.isVisible());
        clickButton(board, u"Command1");
    });
    entry.call(QStringLiteral("TLYRShow"), {Variant(values(Variant(u"Ann")))});
    EXPECT_EQ(context.CurrentUser, QStringLiteral("Bob"));
}

TEST_F(TLYRTest, HostObjectsThatFailAreReportedAndNothingStaysOpen) {
    const auto failsWith = [&](const VariantArray& array, const QString& report) {
        script.expectBox(QStringLiteral("Run-time error ") + report, QMessageBox::Ok,
                         QMessageBox::Critical);
        entry.call(QStringLiteral("TLYRShow"), {Variant(array)});
        EXPECT_FALSE(QApplication::activeModalWidget());
    };
    VariantArray array = values(Variant(u"Ann"));
    array.elements[4] = Variant(ObjectRef());
    failsWith(array, QStringLiteral("'91':\n\nObject variable or With block variable not set"));
    array.elements[4] = Variant(given.HostMenuForm); // has no picture
    failsWith(array, QStringLiteral("'438':\n\nObject doesn't support this property or method"));
    array = values(Variant(u"Ann"));
    const QByteArray picture = std::exchange(host.picture, QByteArray("no image"));
    failsWith(array, QStringLiteral("'481':\n\nInvalid picture"));
    host.picture = picture;
    host.onFilterRead = [] {
        throw RunError(1000, QStringLiteral("the bucket leaks"), QStringLiteral("Bucket"));
    };
    script.expectBox(QStringLiteral("An error has occured.\n\nNumber: \t\t1000\nDescription: "
                                    "\tthe bucket leaks\nSource: \t\tBucket\n\n"),
                     QMessageBox::Abort, QMessageBox::Critical);
    show(array);
}

} // namespace
