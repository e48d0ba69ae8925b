#include "tests/panel/ApprovedPicture.h"

#include <QDir>

#include <gtest/gtest.h>

#include <cstdlib>

namespace kestrel {

namespace {
// Processors may round a blended channel differently by one.
int differingPixels(const QImage& a, const QImage& b)
{
    int differing = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y);
            const QRgb q = b.pixel(x, y);
            differing += std::abs(qRed(p) - qRed(q)) > 1 || std::abs(qGreen(p) - qGreen(q)) > 1
                || std::abs(qBlue(p) - qBlue(q)) > 1;
        }
    }
    return differing;
}
} // namespace

void compareWithApproved(const QString& name, int scale, const QImage& actual)
{
    const QString file = QStringLiteral("%1@%2x.png").arg(name).arg(scale);
    const QString approvedPath = QStringLiteral(KESTREL_APPROVED_PICTURES "/") + file;
    if (std::getenv("KESTREL_APPROVE")) {
        ASSERT_TRUE(actual.save(approvedPath));
        return;
    }
    const QImage approved = QImage(approvedPath).convertToFormat(QImage::Format_RGB32);
    const QString actualPath = QDir::current().absoluteFilePath(QStringLiteral("actual-") + file);
    const bool isSame = approved.size() == actual.size() && differingPixels(approved, actual) == 0;
    if (!isSame)
        actual.save(actualPath);
    EXPECT_TRUE(isSame) << approvedPath.toStdString()
                        << " is not what is painted now: " << actualPath.toStdString();
}

} // namespace kestrel
