#include "tools/selftest/PanelPicture.h"

#include <QImage>

#include <algorithm>
#include <cstdlib>

namespace kestrel::selftest {

namespace {
constexpr int Tolerance = 2; // processors and graphics of screens round a channel differently

QImage read(const std::filesystem::path& path)
{
    return QImage(QString::fromStdString(path.string())).convertToFormat(QImage::Format_RGB32);
}

int distance(QRgb a, QRgb b)
{
    return std::max({ std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
        std::abs(qBlue(a) - qBlue(b)) });
}
} // namespace

std::string differenceFromApproved(const std::filesystem::path& picture,
    const std::filesystem::path& approved, const std::string& name)
{
    const QImage actual = read(picture);
    const QImage single = read(approved / (name + "@1x.png"));
    const QImage doubled = read(approved / (name + "@2x.png"));
    const QImage& expected = actual.size() == doubled.size() ? doubled : single;
    if (actual.isNull() || actual.size() != expected.size())
        return "the panel has " + std::to_string(actual.width()) + " by "
            + std::to_string(actual.height()) + " pixels, and no approved picture has";
    int count = 0;
    for (int y = 0; y < actual.height(); ++y) {
        for (int x = 0; x < actual.width(); ++x)
            count += distance(actual.pixel(x, y), expected.pixel(x, y)) > Tolerance ? 1 : 0;
    }
    return count == 0
        ? std::string()
        : std::to_string(count) + " pixels of the panel differ from the approved " + name;
}

} // namespace kestrel::selftest
