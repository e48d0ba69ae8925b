// Writes the pictures of the console's editing scene, for an animated picture of the panel, and
// prints how long each is shown, as ImageMagick's convert takes it:
//     convert $(panel-film FOLDER) -layers Optimize editing-scene.gif

#include "tests/panel/Painted.h"
#include "tools/zenta-console/EditingScene.h"

#include <QApplication>
#include <QDir>

#include <cstdio>
#include <cstdlib>
#include <variant>

namespace kestrel::test {

namespace {
constexpr double Density = 2;

class Film {
public:
    explicit Film(const QDir& folder)
        : m_folder(folder)
    {
    }

    void take(const console::Send& send)
    {
        for (const console::Bytes& packet : send.packets) {
            if (packet.front() == 0xF0)
                m_view.updateZone(packet, false);
            else
                m_view.updateDSParea(packet, false);
        }
    }

    // Writes what is shown while the console pauses.
    void take(const console::Wait& wait)
    {
        const QString path
            = m_folder.filePath(QStringLiteral("%1.png").arg(++m_count, 3, 10, QLatin1Char('0')));
        if (!painted(m_view, Density).save(path))
            std::exit(EXIT_FAILURE);
        std::printf(
            "-delay %d %s\n", static_cast<int>(wait.duration.count() / 10), qPrintable(path));
    }

private:
    QDir m_folder;
    PlugInPanelView m_view { QRect(0, 0, 782, 220) };
    int m_count = 0;
};
} // namespace

int run(int argc, char** argv)
{
    if (argc != 2 || !QDir().mkpath(QString::fromLocal8Bit(argv[1])))
        return EXIT_FAILURE;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    Film film(QDir(QString::fromLocal8Bit(argv[1])));
    for (const console::Command& command : console::editingScene()) {
        if (const auto* send = std::get_if<console::Send>(&command))
            film.take(*send);
        else if (const auto* wait = std::get_if<console::Wait>(&command))
            film.take(*wait);
    }
    return EXIT_SUCCESS;
}

} // namespace kestrel::test

int main(int argc, char** argv)
{
    return kestrel::test::run(argc, argv);
}
