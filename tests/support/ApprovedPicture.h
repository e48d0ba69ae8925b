#pragma once

#include <QImage>
#include <QString>

namespace kestrel::test {

// The largest difference of any channel of any pixel, in 1/255 of that channel; colour counts as
// far as the eye can see it, so transparent pixels have none. The pictures are of the same size.
[[nodiscard]] int largestDifference(const QImage& left, const QImage& right);

// Fails the running test unless `actual` is the approved picture of this name, which is its path
// below tests/approved without ".png", to within `tolerance` of 255 in each channel. A picture that
// differs is written beside the working directory. KESTREL_APPROVE=1 writes the approved picture
// anew instead; what changed is then for git to show.
void compareWithApproved(const QString& name, const QImage& actual, int tolerance);

} // namespace kestrel::test
