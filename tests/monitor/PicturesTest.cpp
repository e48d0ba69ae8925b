#include "tests/monitor/MonitorBench.h"
#include "tests/support/ApprovedPicture.h"

#include <QTest>

namespace kestrel::test {
namespace {

class PictureBench : public MonitorBench {
public:
    explicit PictureBench(bool isDark)
    {
        qputenv("TZ", "UTC");
        window.setPalette(isDark ? QPalette(QColor(0x30, 0x30, 0x30)) : QPalette(Qt::lightGray));
    }

    // Some minutes at work.
    void work()
    {
        link(Kind::LinkOpened, "ZENTA, port 5");
        for (int second = 0; second < 260; ++second) {
            clock.advance(1s + std::chrono::microseconds((second * 7919) % 1900 - 950));
            if (second == 120)
                clock.advance(2s);
            beat();
        }
        clock.advance(211ms);
        press(6, Outcome::Typed, "⌘S");
        clock.advance(93ms);
        packet({ 0xB0, 0x0F, 0x40, 0x2F, 0x05 }, Outcome::Released, "⌘S");
        clock.advance(480ms);
        packet({ 0xF0, 0, 0, 0x66, 5, 0, 0x12, 4, 'F', 'R', 'E', 'Q', ' ', ' ', ' ', ' ', ' ', ' ',
                   0xF7 },
            Outcome::Shown);
        knob(1, 0x25);
        packet({ 0xB0, 0x0C, 0x1C, 0x2C, 0x46 }, Outcome::Shown);
        clock.advance(216ms);
        beat();
        clock.advance(304ms);
        press(6, Outcome::OtherInFront, "Finder");
        clock.advance(88ms);
        press(9, Outcome::NoShortcut);
        clock.advance(200ms);
        packet({ 0x90, 0x3C, 0x40 }, Outcome::Ignored);
        clock.advance(408ms);
        beat();
    }

    void compare(const QString& name)
    {
        constexpr int Tolerance = 8; // between versions of the font library
        window.show();
        window.refresh();
        window.setFocus();
        QTest::qWait(0);
        compareWithApproved(QStringLiteral("monitor/") + name, window.grab().toImage(), Tolerance,
            Fonts::OfTheSystem);
    }
};

TEST(MonitorPictures, at_work_dark)
{
    PictureBench bench(true);
    bench.work();
    bench.compare("at-work-dark");
}

TEST(MonitorPictures, at_work_light)
{
    PictureBench bench(false);
    bench.work();
    bench.compare("at-work-light");
}

TEST(MonitorPictures, without_the_permission)
{
    PictureBench bench(true);
    bench.work();
    bench.press(6, ActivityEvent::Outcome::NotPermitted, "⌘S");
    bench.compare("no-permission-dark");
}

TEST(MonitorPictures, a_lost_link)
{
    PictureBench bench(false);
    bench.work();
    bench.link(ActivityEvent::Kind::ConsoleSilent);
    bench.link(ActivityEvent::Kind::LinkRebuilt, "a MIDI source has disappeared");
    bench.link(ActivityEvent::Kind::NoMIDIService);
    bench.compare("lost-link-light");
}

TEST(MonitorPictures, nothing_yet)
{
    PictureBench bench(true);
    bench.compare("nothing-yet-dark");
}

} // namespace
} // namespace kestrel::test
