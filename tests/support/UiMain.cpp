// Runs tests with real widgets on the offscreen platform.
#include <QApplication>
#include <QTemporaryDir>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir folder; // what the module records about itself stays out of the machine
    qputenv("TALLYROOM_REGISTRY", folder.filePath(QStringLiteral("registry.reg")).toLocal8Bit());
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
