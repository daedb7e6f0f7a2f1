// Windows need an application object. Without a display they are tested on Qt's offscreen platform,
// with a screen as large as people have (screen.json).

#include <gmock/gmock.h>

#include <QApplication>

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" MEMWRIGHT_SCREEN);
    }
    // No test prints on anybody's printer: here is no print service.
    qputenv("CUPS_SERVER", "/no/such/socket");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
