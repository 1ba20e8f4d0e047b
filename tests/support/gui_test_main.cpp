#include <gtest/gtest.h>
#include <QApplication>
#include <QStyleFactory>
#include <QTemporaryDir>

// The widgets under test need a QApplication; the tests run under the offscreen platform.
int main(int argc, char** argv) {
    // Listing the tests (as CTest does to find them) needs no display either.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    qputenv("SONALYX_NO_SPLASH", "1");
    // Whatever the program keeps in the user's data folder (receive logs) goes to a folder of
    // the test run's own, removed at the end.
    QTemporaryDir dataHome;
    qputenv("XDG_DATA_HOME", dataHome.path().toLocal8Bit());
    QApplication app(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
