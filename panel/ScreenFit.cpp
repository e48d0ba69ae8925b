#include "panel/ScreenFit.h"

#include <algorithm>

namespace kestrel {

namespace {
constexpr int GrabWidth = 64;
constexpr int GrabHeight = 16;

bool canBeGrabbed(const QRect& frame, const QRect& screen)
{
    const QRect edge(frame.topLeft(), QSize(frame.width(), GrabHeight));
    const QRect reachable = edge & screen;
    return reachable.height() == GrabHeight
        && reachable.width() >= std::min(GrabWidth, frame.width());
}

int distance(const QRect& frame, const QRect& screen)
{
    return (frame.center() - screen.center()).manhattanLength();
}
} // namespace

QRect fittedOntoScreens(const QRect& frame, const QList<QRect>& screens)
{
    if (screens.isEmpty())
        return frame;
    QRect everything;
    for (const QRect& screen : screens)
        everything |= screen;
    const bool grabbable = std::any_of(screens.begin(), screens.end(),
        [&](const QRect& screen) { return canBeGrabbed(frame, screen); });
    if (grabbable && frame.width() <= everything.width() && frame.height() <= everything.height())
        return frame;

    const QRect home = *std::min_element(screens.begin(), screens.end(),
        [&](const QRect& a, const QRect& b) { return distance(frame, a) < distance(frame, b); });
    QRect fitted = frame;
    if (frame.width() > home.width() || frame.height() > home.height())
        fitted.setSize(frame.size().scaled(home.size(), Qt::KeepAspectRatio));
    fitted.moveLeft(std::clamp(fitted.left(), home.left(), home.right() - fitted.width() + 1));
    fitted.moveTop(std::clamp(fitted.top(), home.top(), home.bottom() - fitted.height() + 1));
    return fitted;
}

} // namespace kestrel
