#include "tests/support/ApprovedPicture.h"

#include <QDir>
#include <QFileInfo>
#include <QSysInfo>

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

ApprovedFolder::ApprovedFolder(const QString& folder, const QString& kernel)
    : m_folder(folder)
    , m_folderOfSystem(
          kernel == QLatin1String("linux") ? folder : folder + QLatin1Char('/') + kernel)
{
}

QString ApprovedFolder::path(const QString& name, Fonts fonts) const
{
    const QString& folder = fonts == Fonts::OfTheSystem ? m_folderOfSystem : m_folder;
    return QStringLiteral("%1/%2.png").arg(folder, name);
}

ApprovedFolder::Verdict ApprovedFolder::compare(
    const QString& name, const QImage& actual, int tolerance, Fonts fonts) const
{
    if (fonts == Fonts::OfTheSystem && !QFileInfo::exists(m_folderOfSystem))
        return Verdict::NoneForThisSystem;
    const QImage approved(path(name, fonts));
    const bool isSame = !approved.isNull() && approved.size() == actual.size()
        && largestDifference(approved, actual) <= tolerance;
    return isSame ? Verdict::Same : Verdict::Different;
}

void compareWithApproved(const QString& name, const QImage& actual, int tolerance, Fonts fonts)
{
    const ApprovedFolder pictures(
        QStringLiteral(KESTREL_APPROVED_PICTURES), QSysInfo::kernelType());
    const QString approvedPath = pictures.path(name, fonts);
    if (std::getenv("KESTREL_APPROVE")) {
        QDir().mkpath(QFileInfo(approvedPath).path());
        ASSERT_TRUE(actual.save(approvedPath));
        return;
    }
    const auto verdict = pictures.compare(name, actual, tolerance, fonts);
    if (verdict == ApprovedFolder::Verdict::Same)
        return;
    const QString actualPath = QDir::current().absoluteFilePath(
        QStringLiteral("actual-%1.png").arg(QFileInfo(name).fileName()));
    actual.save(actualPath);
    if (verdict == ApprovedFolder::Verdict::NoneForThisSystem)
        GTEST_SKIP() << "No picture is approved for this system yet: " << actualPath.toStdString();
    FAIL() << approvedPath.toStdString()
           << " is not what is painted now: " << actualPath.toStdString();
}

} // namespace kestrel::test
