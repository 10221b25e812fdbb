// The host with an order on its command line: what it tells whoever has started it.
#include "host/BoardRun.h"
#include "host/ExitCodes.h"
#include "tests/system/SystemFixture.h"

#include <QFile>

using namespace tallyroom;

namespace {

class BoardRunTest : public SystemTest {
protected:
    BoardRunTest() : SystemTest(false) {}

    int run(const QString& entry) const {
        host::Options options;
        options.dataFolder = data.path();
        options.openEntry = entry;
        options.moduleFile = QStringLiteral(TALLYROOM_MODULE);
        return host::runBoard(options);
    }
};

TEST_F(BoardRunTest, FailsWhenTheBoardDidNotOpen) {
    script.expectWindow(u"Tallyroom", [](QWidget& board) { clickButton(board, u"Command1"); });
    EXPECT_EQ(run(QStringLiteral("tlyrshow")), host::exitSuccess);
    ASSERT_TRUE(QFile::remove(data.path() + QStringLiteral("/aidb01.mdb")));
    script.expectReport(3024,
                        QStringLiteral("Could not find file '%1\\aidb01.mdb'.").arg(data.path()));
    EXPECT_EQ(run(QStringLiteral("TLYRShow")), host::exitFailure);
    EXPECT_EQ(run(QStringLiteral("Smallforge")), host::exitSuccess) << "it opens no board";
}

} // namespace
