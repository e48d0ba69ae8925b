#include "platform/linux/defaults/FileDefaultsStore.h"
#include "tests/end-to-end/SecondStartBench.h"
#include "tools/stage/SetupWindowOnScreen.h"
#include "tools/stage/ShownWindows.h"
#include "tools/stage/XQuery.h"

#include <xcb/xcb.h>

#include <array>
#include <optional>

namespace kestrel::test {
namespace {

constexpr int ScreenHeight = 800;
// What the window manager puts around a window.
constexpr int Side = 1;
constexpr int Title = 22;

// The test is the window manager, so it alone decides when the window moves and gets its frame.
class SetupFramedLate : public SecondStartBench {
protected:
    SetupFramedLate()
        : SecondStartBench({ .windowManager = false })
    {
        const xcb_atom_t framing = atom("_NET_FRAME_EXTENTS");
        xcb_change_property(server.get(), XCB_PROP_MODE_REPLACE,
            stage::firstScreen(server.get()).root, atom("_NET_SUPPORTED"), XCB_ATOM_ATOM, 32, 1,
            &framing);
        xcb_flush(server.get());
    }

    [[nodiscard]] xcb_atom_t atom(const char* name) const
    {
        return stage::atomOf(server.get(), name);
    }
    [[nodiscard]] std::optional<stage::ShownWindow> setupWindow() const
    {
        for (const auto& window : stage::shownWindows(display.display(), "kestrel")) {
            if (window.title == stage::SetupWindowOnScreen::Title)
                return window;
        }
        return {};
    }
    // Another start is answered once the program has handled what came to it before.
    void startAgain() const { EXPECT_EQ(start()->wait(Timeout), 0); }

    void moveTo(xcb_window_t window, std::uint32_t x, std::uint32_t y) const
    {
        const std::array place { x, y };
        xcb_configure_window(
            server.get(), window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, place.data());
        xcb_flush(server.get());
    }
    void frame(xcb_window_t window) const
    {
        static constexpr std::array<std::uint32_t, 4> Extents { Side, Side, Title, Side };
        xcb_change_property(server.get(), XCB_PROP_MODE_REPLACE, window, atom("_NET_FRAME_EXTENTS"),
            XCB_ATOM_CARDINAL, 32, 4, Extents.data());
    }
    // The program gets this event after those of all earlier requests.
    void close(xcb_window_t window) const
    {
        xcb_client_message_event_t event {};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = window;
        event.type = atom("WM_PROTOCOLS");
        event.data.data32[0] = atom("WM_DELETE_WINDOW");
        xcb_send_event(server.get(), 0, window, XCB_EVENT_MASK_NO_EVENT,
            reinterpret_cast<const char*>(&event));
        xcb_flush(server.get());
    }

    stage::XConnection server = stage::connectTo(display.display());
};

TEST_F(SetupFramedLate, it_is_stored_with_the_frame_that_came_after_its_last_move)
{
    const auto kestrel = startFirst();
    startAgain();
    ASSERT_TRUE(stage::comesTrue([this] { return setupWindow().has_value(); }, Timeout));
    const auto window = setupWindow()->id;
    moveTo(window, 200, 150);
    startAgain();
    const stage::Area content = setupWindow()->area;
    frame(window);
    close(window);
    ASSERT_TRUE(stage::comesTrue([this] { return !setupWindow(); }, Timeout));
    EXPECT_EQ(terminate(*kestrel), 0);

    const auto path = settings.configFolder() / "com.holvik.kestrel.plist";
    FileDefaultsStore stored(QString::fromStdString(path.string()));
    const auto bytes = stored.data("NSWindow Frame UAssignWindow");
    ASSERT_TRUE(bytes);
    const std::string text(bytes->begin(), bytes->end());
    const int height = content.height + Title + Side; // vertical places count from below
    EXPECT_EQ(text.substr(0, text.find(" 0 0 1280 ")),
        "199 " + std::to_string(ScreenHeight - 128 - height) + " "
            + std::to_string(content.width + 2 * Side) + " " + std::to_string(height));
}

} // namespace
} // namespace kestrel::test
