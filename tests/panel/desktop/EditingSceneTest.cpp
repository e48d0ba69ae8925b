#include "tools/zenta-console/EditingScene.h"

#include "panel/KnobRing.h"
#include "tests/panel/Painted.h"
#include "tests/panel/PanelMessages.h"
#include "tests/support/ApprovedPicture.h"

#include <gmock/gmock.h>

#include <chrono>

namespace kestrel::test {

namespace {
using console::Bytes;

std::vector<Bytes> packetsOf(const std::vector<console::Command>& commands)
{
    std::vector<Bytes> packets;
    for (const auto& command : commands) {
        if (const auto* send = std::get_if<console::Send>(&command))
            packets.insert(packets.end(), send->packets.begin(), send->packets.end());
    }
    return packets;
}

// A panel that receives the messages of the console.
class EditedPanel : public testing::TestWithParam<int> {
protected:
    void mirror(const std::vector<Bytes>& packets) { mirror(packets, view); }
    static void mirror(const std::vector<Bytes>& packets, PlugInPanelView& view)
    {
        for (const Bytes& packet : packets) {
            if (packet.front() == 0xF0)
                view.updateZone(packet, false);
            else
                view.updateDSParea(packet, false);
        }
    }
    [[nodiscard]] QImage panel() { return painted(view, GetParam()); }

    PlugInPanelView view { QRect(0, 0, 782, 220) };
};
} // namespace

TEST_P(EditedPanel, ends_with_the_second_page_of_the_equaliser)
{
    ASSERT_FALSE(view.imageBack().isNull());
    mirror(packetsOf(console::editingScene()));
    compareWithApproved(
        QStringLiteral("panel/equaliser@%1x").arg(GetParam()), panel(), 1, Fonts::None);
}

// A panel that has been painted before draws only what has changed.
TEST_P(EditedPanel, looks_after_each_change_as_if_it_were_painted_for_the_first_time)
{
    std::vector<Bytes> packets;
    for (const Bytes& packet : packetsOf(console::editingScene())) {
        packets.push_back(packet);
        mirror({ packet });
        const QImage changed = panel();
        if (packets.size() % 8 != 0)
            continue;
        PlugInPanelView fresh(view.rect());
        mirror(packets, fresh);
        ASSERT_EQ(changed, painted(fresh, GetParam())) << packets.size() << " packets";
    }
}

TEST_P(EditedPanel, leaves_nothing_on_a_panel_whose_console_falls_silent)
{
    mirror(packetsOf(console::editingScene()));
    mirror(PanelMessages::silence());
    compareWithApproved(
        QStringLiteral("panel/silent@%1x").arg(GetParam()), panel(), 1, Fonts::None);
}

INSTANTIATE_TEST_SUITE_P(, EditedPanel, testing::Values(1, 2),
    [](const auto& scale) { return "at_scale_" + std::to_string(scale.param); });

TEST(EditingScene, takes_a_few_seconds)
{
    std::chrono::milliseconds duration {};
    for (const auto& command : console::editingScene()) {
        if (const auto* wait = std::get_if<console::Wait>(&command))
            duration += wait->duration;
    }
    EXPECT_GE(duration, std::chrono::seconds(3));
    EXPECT_LE(duration, std::chrono::seconds(6));
}

TEST(EditingScene, consists_of_messages_that_the_panel_shows_and_pauses_alone)
{
    int knobs = 0;
    for (const auto& command : console::editingScene())
        EXPECT_TRUE(std::holds_alternative<console::Send>(command)
            || std::holds_alternative<console::Wait>(command));
    for (const Bytes& packet : packetsOf(console::editingScene())) {
        if (packet.front() == 0xF0) {
            EXPECT_EQ(packet.size(), 19u);
        } else if (packet.size() == 3 && (packet[1] & 0xFC) == 0x18) {
            EXPECT_TRUE(KnobRing(packet[2]).hasPicture()) << int(packet[2]);
            ++knobs;
        }
    }
    EXPECT_GT(knobs, 20);
}

} // namespace kestrel::test
