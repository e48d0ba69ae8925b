#include "common/AccessibilityListener.h"
#include "tests/setup/ShownSetup.h"

#include <gmock/gmock.h>

namespace kestrel::test {
namespace {

// The colour farthest from grey in that part of the window.
QColor mostColourful(const ShownSetup& bench, const QRect& part)
{
    const QImage shown = bench.picture().copy(part);
    QColor found = Qt::black;
    for (int y = 0; y < shown.height(); ++y) {
        for (int x = 0; x < shown.width(); ++x) {
            const QColor colour = shown.pixelColor(x, y);
            if (std::abs(colour.red() - colour.blue()) > std::abs(found.red() - found.blue()))
                found = colour;
        }
    }
    return found;
}

const QRect HeadingNumber(495, 61, 46, 13);

TEST(SetupScene, the_heading_names_the_key_whose_shortcuts_are_shown)
{
    ShownSetup bench;
    EXPECT_EQ(bench.controller.window()->engravings()[1].text, "Shortcuts · U1");
    const QImage first = bench.picture().copy(HeadingNumber);
    EXPECT_GT(mostColourful(bench, HeadingNumber).red(), 180);
    click(bench.button(11));
    EXPECT_EQ(bench.controller.window()->engravings()[1].text, "Shortcuts · U12");
    EXPECT_NE(bench.picture().copy(HeadingNumber), first);
    click(bench.button(0));
    EXPECT_EQ(bench.picture().copy(HeadingNumber), first);
}

TEST(SetupScene, without_a_selected_key_the_heading_names_none)
{
    ShownSetup bench;
    bench.controller.userAssignableButtons()[0]->setCurrentButtonId(-1);
    bench.controller.refreshShortcutText();
    EXPECT_EQ(bench.controller.window()->engravings()[1].text, "Shortcuts");
    EXPECT_LT(mostColourful(bench, HeadingNumber).red(), 60);
    bench.controller.userAssignableButtons()[0]->setCurrentButtonId(0);
}

TEST(SetupScene, a_listener_is_told_the_new_heading)
{
    ShownSetup bench;
    std::vector<std::string> told;
    AccessibilityListener::shared() = { [] { return true; },
        [&](QAccessibleEvent* event) {
            const QAccessibleInterface* about = event->accessibleInterface();
            if (event->type() == QAccessible::NameChanged && about)
                told.push_back(about->text(QAccessible::Name).toStdString());
        } };
    click(bench.button(3));
    AccessibilityListener::shared() = {};
    EXPECT_THAT(told, testing::Contains("Shortcuts · U4"));
}

// The brightest pixel of the number below a key.
int numberLight(const ShownSetup& bench, int key)
{
    const QRect frame = bench.button(key).geometry();
    const QImage shown = bench.picture().copy(frame.x() + 24, frame.bottom() + 4, 30, 10);
    int light = 0;
    for (int y = 0; y < shown.height(); ++y) {
        for (int x = 0; x < shown.width(); ++x)
            light = std::max(light, qGray(shown.pixel(x, y)));
    }
    return light;
}

TEST(SetupScene, the_number_below_a_key_is_quiet_while_the_key_shows_it_itself)
{
    ShownSetup bench;
    EXPECT_LT(numberLight(bench, 0), 90);
    press(bench.field(0), Keys::A);
    bench.controller.assign();
    EXPECT_GT(numberLight(bench, 0), 130);
    EXPECT_LT(numberLight(bench, 1), 90);
    bench.button(1).setUniqueName("Save");
    EXPECT_GT(numberLight(bench, 1), 130);
    bench.button(1).setUniqueName({});
    EXPECT_LT(numberLight(bench, 1), 90);
}

TEST(SetupScene, a_field_that_is_not_used_looks_switched_off)
{
    ShownSetup bench;
    const auto colour = [&](int field) {
        return qGray(bench.picture().pixel(bench.field(field).geometry().center()));
    };
    EXPECT_EQ(colour(0), 0);
    EXPECT_GT(colour(1), 20);
    press(bench.field(0), Keys::A);
    EXPECT_EQ(colour(1), 0);
    EXPECT_GT(colour(2), 20);
}

TEST(SetupScene, assign_glows_exactly_while_something_waits_for_it)
{
    ShownSetup bench;
    const QRect beside(531, 305, 6, 24); // left of Assign
    const auto warmth = [&] {
        const QColor colour = mostColourful(bench, beside);
        return colour.red() - colour.blue();
    };
    EXPECT_LT(warmth(), 10);
    press(bench.field(0), Keys::F5);
    EXPECT_GT(warmth(), 20);
    bench.controller.assign();
    EXPECT_LT(warmth(), 10);
}

TEST(SetupScene, assign_looks_clearly_different_while_it_is_disabled)
{
    ShownSetup bench;
    const auto light = [&] { return qGray(bench.picture().pixel(550, 325)); };
    EXPECT_LT(light(), 60);
    press(bench.field(0), Keys::F5);
    EXPECT_GT(light(), 150);
}

TEST(SetupScene, the_ring_around_a_field_is_whole_and_follows_the_focus)
{
    ShownSetup bench;
    const auto isRing = [&](QPoint at) {
        const QColor colour = bench.picture().pixelColor(at);
        return colour.green() > 150 && colour.green() > colour.red() + 80;
    };
    const auto isRinged = [&](int field) {
        const QRect frame = bench.field(field).geometry();
        const QPoint middle = frame.center();
        // The clear button covers the right end of the field.
        return isRing({ frame.left() - 2, middle.y() }) && isRing({ frame.right() + 2, middle.y() })
            && isRing({ middle.x() + 60, frame.bottom() + 2 })
            && isRing({ middle.x() + 60, frame.top() - 2 });
    };
    EXPECT_TRUE(isRinged(0));
    press(bench.field(0), Keys::F5);
    bench.field(1).makeFirstResponder();
    EXPECT_FALSE(isRinged(0));
    EXPECT_TRUE(isRinged(1));
    bench.controller.assignButton()->setFocus(Qt::TabFocusReason);
    EXPECT_FALSE(isRinged(1));
}

TEST(SetupScene, the_legend_names_the_keys_as_they_are_engraved)
{
    ShownSetup bench;
    const QRect legend(517, 357, 84, 33);
    const QImage apple = bench.picture().copy(legend);
    EXPECT_EQ(bench.controller.window()->engravings()[3].text, "⌥ Option");
    FakeKeyTranslation pc;
    pc.names = ModifierNames::AltSuper;
    SetupServices services = bench.services();
    const UserAssinableWindowController other({ { services.interface.notificationCenter, pc },
        services.defaults, services.documentFiles, services.visibility, services.setBecameLive });
    QStringList texts;
    for (const Engraving& engraving : other.window()->engravings())
        texts.append(engraving.text);
    EXPECT_EQ(texts.mid(2), QStringList({ "⇪ Shift", "⌥ Alt", "^ Control", "⌘ Super" }));
    EXPECT_EQ(other.window()->scene().names, ModifierNames::AltSuper);
    SetupScene scene = bench.controller.window()->scene();
    scene.names = ModifierNames::AltSuper;
    bench.controller.window()->setScene(scene);
    EXPECT_NE(bench.picture().copy(legend), apple);
}

} // namespace
} // namespace kestrel::test
