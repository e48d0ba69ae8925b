#include "tests/support/ApprovedPicture.h"

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace kestrel::test {

namespace {
int distance(QRgb left, QRgb right)
{
    return std::max({ std::abs(qRed(left) - qRed(right)), std::abs(qGreen(left) - qGreen(right)),
        std::abs(qBlue(left) - qBlue(right)), std::abs(qAlpha(left) - qAlpha(right)) });
}
} // namespace

int largestDifference(const QImage& left, const QImage& right)
{
    const QImage a = left.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const QImage b = right.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    int largest = 0;
    for (int y = 0; y < a.height(); ++y) {
        const auto* lineA = reinterpret_cast<const QRgb*>(a.constScanLine(y));
        const auto* lineB = reinterpret_cast<const QRgb*>(b.constScanLine(y));
        for (int x = 0; x < a.width(); ++x)
            largest = std::max(largest, distance(lineA[x], lineB[x]));
    }
    return largest;
}

void compareWithApproved(const QString& name, const QImage& actual, int tolerance)
{
    const QString approvedPath = QStringLiteral(KESTREL_APPROVED_PICTURES "/%1.png").arg(name);
    if (std::getenv("KESTREL_APPROVE")) {
        ASSERT_TRUE(actual.save(approvedPath));
        return;
    }
    const QImage approved(approvedPath);
    if (approved.size() == actual.size() && largestDifference(approved, actual) <= tolerance)
        return;
    const QString actualPath = QDir::current().absoluteFilePath(
        QStringLiteral("actual-%1.png").arg(QFileInfo(name).fileName()));
    actual.save(actualPath);
    FAIL() << approvedPath.toStdString()
           << " is not what is painted now: " << actualPath.toStdString();
}

} // namespace kestrel::test
