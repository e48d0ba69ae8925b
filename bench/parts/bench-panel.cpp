// Measures a full repaint of the panel at several densities of the display, and one changed cell or
// knob, beside a bare copy of the panel's pixels. Also measures the first picture of a new panel,
// for which all its parts are drawn, and a step while its window is dragged larger. Rounds are
// interleaved, so that all of them see the machine in the same mood.

#include "bench/parts/MedianTable.h"
#include "link/Clock.h"
#include "panel/PlugInPanelView.h"

#include <QApplication>
#include <QPainter>
#include <QResizeEvent>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

namespace kestrel::bench {

namespace {
constexpr std::array Densities { "1", "1.25", "1.5", "1.75", "2", "3" };

QImage picture(double density)
{
    return QImage((QSizeF(782, 220) * density).toSize(), QImage::Format_RGB32);
}

// The window is dragged for as long as this clock stands still.
struct StillClock : Clock {
    [[nodiscard]] TimePoint now() const override { return {}; }
    [[nodiscard]] WallTime wallTime() const override { return {}; }
};

// A full scene on a display of one density.
struct Scene {
    explicit Scene(double density)
        : view(QRect(0, 0, 782, 220), &artwork::panelPicture, clock)
        , source(picture(density))
        , target(picture(density))
    {
        source.fill(Qt::black);
        target.setDevicePixelRatio(density);
        std::vector<std::uint8_t> display { 0xF0, 0x00, 0x00, 0x66, 0x05, 0x00, 0x12 };
        for (std::uint8_t zone = 0; zone < 8; ++zone) {
            display.push_back(zone);
            for (std::uint8_t k = 0; k < 10; ++k)
                display.push_back(static_cast<std::uint8_t>('A' + (zone * 10 + k) % 58));
        }
        view.updateZone(display, false);
        for (std::uint8_t i = 0; i < 4; ++i) {
            const auto controller = static_cast<std::uint8_t>(0x18 + i);
            const auto value = static_cast<std::uint8_t>(0x11 * i + 3);
            view.updateDSParea(std::array<std::uint8_t, 3> { 0xB0, controller, value }, false);
        }
        for (std::uint8_t i = 0; i < 8; i = static_cast<std::uint8_t>(i + 2)) {
            const auto value = static_cast<std::uint8_t>(0x40 + i);
            view.updateDSParea(std::array<std::uint8_t, 3> { 0xB0, 0x2C, value }, false);
        }
    }

    void paint(const QRect& dirty)
    {
        QPainter painter(&target);
        if (dirty != view.rect())
            painter.setClipRect(dirty);
        view.drawRect(painter, dirty);
    }

    // The bare copy of as many pixels.
    void copy()
    {
        std::memcpy(
            target.bits(), source.constBits(), static_cast<std::size_t>(source.sizeInBytes()));
    }

    // Changes the cell or the knob to another value each time, and paints it.
    void changeCell(const QRect& cell)
    {
        std::array<std::uint8_t, 19> display { 0xF0, 0x00, 0x00, 0x66, 0x05, 0x00, 0x12, 2 };
        display[8] = ++changes % 2 == 0 ? 'R' : 'K';
        display.back() = 0xF7;
        view.updateZone(display, false);
        paint(cell);
    }
    void changeKnob()
    {
        const auto value = static_cast<std::uint8_t>(0x21 + ++changes % 11);
        view.updateDSParea(std::array<std::uint8_t, 3> { 0xB0, 0x19, value }, false);
        paint(view.knobRect(1));
    }

    // One of the sizes that pass while the window is dragged larger and smaller.
    void passSize()
    {
        const QSize before = view.size();
        const int longer = ++changes % 2;
        view.resize(782 + 8 * longer, 220 + 2 * longer);
        QResizeEvent event(view.size(), before);
        QCoreApplication::sendEvent(&view, &event);
        paint(view.rect());
    }

    StillClock clock;
    PlugInPanelView view;
    QImage source;
    QImage target;
    int changes = 0;
};

// What a new panel, or one of a new size, needs for its first picture.
void paintFirst(double density)
{
    Scene scene(density);
    scene.paint(scene.view.rect());
}

template <typename Work> void add(const std::string& name, Work work)
{
    benchmark::RegisterBenchmark(name.c_str(),
        [work](benchmark::State& state) {
            for (auto _ : state) {
                work();
                benchmark::ClobberMemory();
            }
        })
        ->Unit(benchmark::kMicrosecond)
        ->Repetitions(15)
        ->MinTime(0.05)
        ->ReportAggregatesOnly();
}

void addScene(const std::string& density, Scene& scene)
{
    // Nothing is drawn for the first time while it is measured. The library runs a measurement only
    // once if its first iteration is slow.
    scene.paint(scene.view.rect());
    const QRect zone = scene.view.zoneRect(2);
    const QRect cell = zone.adjusted(0, 0, -zone.width() * 9 / 10, 0);
    for (int i = 0; i < 11; ++i) {
        scene.changeCell(cell);
        scene.changeKnob();
    }
    add("copy/" + density, [&scene] { scene.copy(); });
    add("panel/" + density, [&scene] { scene.paint(scene.view.rect()); });
    add("cell/" + density, [&scene, cell] { scene.changeCell(cell); });
    add("knob/" + density, [&scene] { scene.changeKnob(); });
    add("first/" + density, [density] { paintFirst(std::stod(density)); });
    // A scene of its own: the others keep their size.
    const auto dragged = std::make_shared<Scene>(std::stod(density));
    dragged->paint(dragged->view.rect());
    dragged->passSize(); // the first size counts as one to keep
    add("drag/" + density, [dragged] { dragged->passSize(); });
}

void printSideBySide(const MedianTable& medians)
{
    std::printf("\nµs, median    copy   panel  panel/copy    cell    knob      first    drag\n");
    for (const std::string density : Densities) {
        const double copy = medians.medianUs("copy/" + density);
        const double panel = medians.medianUs("panel/" + density);
        std::printf("%-9s %8.1f %7.1f %11.2f %7.1f %7.1f %10.0f %7.0f\n", density.c_str(), copy,
            panel, copy > 0 ? panel / copy : 0, medians.medianUs("cell/" + density),
            medians.medianUs("knob/" + density), medians.medianUs("first/" + density),
            medians.medianUs("drag/" + density));
    }
}
} // namespace

int run(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    std::vector<char*> arguments(argv, argv + argc);
    std::string interleaved = "--benchmark_enable_random_interleaving=true";
    arguments.insert(arguments.begin() + 1, interleaved.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    std::vector<std::unique_ptr<Scene>> scenes;
    for (const std::string density : Densities) {
        scenes.push_back(std::make_unique<Scene>(std::stod(density)));
        addScene(density, *scenes.back());
    }
    MedianTable medians;
    benchmark::RunSpecifiedBenchmarks(&medians);
    printSideBySide(medians);
    return EXIT_SUCCESS;
}

} // namespace kestrel::bench

int main(int argc, char** argv)
{
    return kestrel::bench::run(argc, argv);
}
