// Measures a full repaint of the panel at its natural size and at twice that, and one changed cell,
// beside a bare copy of the pixels and the plainest code that paints the same. Rounds are
// interleaved, so that all of them see the machine in the same mood.

#include "bench/parts/MedianTable.h"
#include "bench/parts/PlainPanel.h"

#include <QApplication>
#include <QPainter>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

namespace kestrel::bench {

namespace {
// A full scene on one size of the panel.
struct Scene {
    explicit Scene(int density)
        : view(QRect(0, 0, 782 * density, 220 * density))
        , plain(view, density)
        , target(782 * density, 220 * density, QImage::Format_RGB32)
    {
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

    // The real and the plain drawing may round a blended channel differently, by one at the most.
    [[nodiscard]] bool plainPaintsTheSame()
    {
        QImage other(target.size(), target.format());
        plain.paint(other);
        paint(view.rect());
        for (int y = 0; y < target.height(); ++y) {
            for (int x = 0; x < target.width(); ++x) {
                const QRgb a = target.pixel(x, y);
                const QRgb b = other.pixel(x, y);
                if (std::abs(qRed(a) - qRed(b)) > 1 || std::abs(qGreen(a) - qGreen(b)) > 1
                    || std::abs(qBlue(a) - qBlue(b)) > 1)
                    return false;
            }
        }
        return true;
    }

    PlugInPanelView view;
    PlainPanel plain;
    QImage target;
};

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

void addScene(const std::string& size, Scene& scene)
{
    const QRect cell
        = scene.view.zoneRect(2).adjusted(0, 0, -scene.view.zoneRect(2).width() * 9 / 10, 0);
    add("copy/" + size, [&scene] { scene.plain.copyBackground(scene.target); });
    add("plain/" + size, [&scene] { scene.plain.paint(scene.target); });
    add("panel/" + size, [&scene] { scene.paint(scene.view.rect()); });
    add("cell/" + size, [&scene, cell] { scene.paint(cell); });
    add("knob/" + size, [&scene] { scene.paint(scene.view.knobRect(1)); });
}

void printSideBySide(const MedianTable& medians)
{
    std::printf("\nµs a frame, median        copy   plain   panel  panel/plain    cell    knob\n");
    for (const std::string size : { "782x220", "1564x440" }) {
        const double plain = medians.medianUs("plain/" + size);
        const double panel = medians.medianUs("panel/" + size);
        std::printf("%-22s %7.1f %7.1f %7.1f %12.2f %7.1f %7.1f\n", size.c_str(),
            medians.medianUs("copy/" + size), plain, panel, plain > 0 ? panel / plain : 0,
            medians.medianUs("cell/" + size), medians.medianUs("knob/" + size));
    }
}
} // namespace

int run(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    Scene natural(1);
    Scene twice(2);
    if (!natural.plainPaintsTheSame() || !twice.plainPaintsTheSame()) {
        std::fprintf(stderr, "the plain panel differs from the real one\n");
        return EXIT_FAILURE;
    }
    std::vector<char*> arguments(argv, argv + argc);
    std::string interleaved = "--benchmark_enable_random_interleaving=true";
    arguments.insert(arguments.begin() + 1, interleaved.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    addScene("782x220", natural);
    addScene("1564x440", twice);
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
