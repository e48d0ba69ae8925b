#pragma once

#include <QImage>
#include <QString>

namespace kestrel::test {

// The largest difference of any channel of any pixel, from 0 to 255. Colours are premultiplied, so
// transparent pixels are equal. The pictures have the same size.
[[nodiscard]] int largestDifference(const QImage& left, const QImage& right);

// Fails the running test unless `actual` is the approved picture of this name, which is its path
// below tests/approved without ".png". `tolerance` is the largest difference allowed in a channel.
// A picture that differs is written to the working directory. With KESTREL_APPROVE=1 in the
// environment the approved picture is written anew instead.
void compareWithApproved(const QString& name, const QImage& actual, int tolerance);

} // namespace kestrel::test
