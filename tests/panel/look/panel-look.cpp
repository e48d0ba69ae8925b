// Prints how legible the panel is at many sizes and densities, and writes pictures of it.

#include "tests/panel/look/DisplayFigures.h"
#include "tests/panel/look/NaturalSize.h"

#include <QApplication>
#include <QDir>

#include <CLI/CLI.hpp>

#include <cstdio>
#include <cstdlib>

namespace kestrel::test {

namespace {
constexpr std::array Widths { 391, 450, 587, 700, 782, 1001, 1173, 1564, 1920, 2560, 3840 };
constexpr std::array Densities { 1.0, 1.25, 1.5, 1.75, 2.0, 3.0 };

void printFigures()
{
    std::printf("width density  contrast  stems  bars\n");
    for (const int width : Widths) {
        for (const double density : Densities) {
            if (width * density > 4000)
                continue;
            const auto figures = displayFigures(width, density);
            std::printf("%5d    %4.2f  %8.1f  %5.2f %5.2f\n", width, density, figures.contrast,
                figures.evenStems, figures.evenBars);
        }
    }
}

bool writePictures(const QDir& directory)
{
    for (const int width : { 391, 587, 782, 1173, 1564 }) {
        for (const double density : { 1.0, 1.5, 2.0, 3.0 }) {
            PlugInPanelView view(QRect(QPoint(), naturalSize(width)));
            showEditing(view);
            const QString name = QStringLiteral("%1@%2x.png").arg(width).arg(density);
            if (!paintedAt(view, density).save(directory.filePath(name)))
                return false;
        }
    }
    return true;
}
} // namespace

int run(int argc, char** argv)
{
    CLI::App arguments("Prints the contrast and the evenness of the panel's display.");
    std::string folder;
    arguments.add_option("--pictures", folder, "A folder for pictures of the panel");
    CLI11_PARSE(arguments, argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    if (folder.empty()) {
        printFigures();
        return EXIT_SUCCESS;
    }
    const QDir directory(QString::fromStdString(folder));
    return QDir().mkpath(directory.path()) && writePictures(directory) ? EXIT_SUCCESS
                                                                       : EXIT_FAILURE;
}

} // namespace kestrel::test

int main(int argc, char** argv)
{
    return kestrel::test::run(argc, argv);
}
