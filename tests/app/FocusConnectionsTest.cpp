#include "app/FocusConnections.h"

#include <QGuiApplication>
#include <QTest>
#include <QWindow>

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

class CountingWindow : public QWindow {
public:
    [[nodiscard]] int connections() const
    {
        return receivers(SIGNAL(focusObjectChanged(QObject*)));
    }

    void showAndClose()
    {
        show();
        requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(this));
        close();
    }
};

TEST(FocusConnections, a_window_that_is_shown_again_is_connected_once)
{
    const FocusConnections cut;
    CountingWindow window;
    for (int time = 0; time < 3; ++time)
        window.showAndClose();
    EXPECT_EQ(window.connections(), 0);
    window.show();
    window.requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    EXPECT_EQ(window.connections(), 1);
}

} // namespace
} // namespace kestrel::test
