// main() of the tests that need windows: Qt's offscreen platform unless the environment names another.
#include <QApplication>

#include <gmock/gmock.h>

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setEffectEnabled(Qt::UI_AnimateMenu, false);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
