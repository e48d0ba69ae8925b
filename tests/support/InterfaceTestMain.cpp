#include <QApplication>
#include <QFont>

#include <gtest/gtest.h>

// On a screen of 1920 × 1080 that nobody sees, and with one known font without hinting, so that
// text measures and looks the same everywhere.
int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" KESTREL_TEST_SCREEN);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(QFont::NoSubpixelAntialias);
    QApplication::setFont(font);
    return RUN_ALL_TESTS();
}
