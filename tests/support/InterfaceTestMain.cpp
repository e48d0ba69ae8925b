#include <QApplication>
#include <QFont>

#include <gmock/gmock.h>

// Runs the tests on an offscreen display of 1920 × 1080 with one font without hinting, so that text
// has the same size and look everywhere.
int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" KESTREL_TEST_SCREEN);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(QFont::NoSubpixelAntialias);
    QApplication::setFont(font);
    return RUN_ALL_TESTS();
}
