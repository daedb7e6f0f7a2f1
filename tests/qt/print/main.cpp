// Pages are painted with fonts, which need an application object, but no display. The paper is the
// one that is usual in MEMWRIGHT_TEST_LOCALE.

#include <gmock/gmock.h>

#include <QGuiApplication>

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QByteArray locale = qgetenv("MEMWRIGHT_TEST_LOCALE");
    qputenv("LC_ALL", locale.isEmpty() ? "C.UTF-8" : locale);
    QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
