#include "common/ScreenFit.h"

#include <QGuiApplication>
#include <QRegion>
#include <QScreen>

#include <algorithm>

namespace kestrel {

namespace {
bool isWhollyInView(const QRect& frame, const QList<QRect>& screens)
{
    QRegion hidden(frame);
    for (const QRect& screen : screens)
        hidden -= screen;
    return hidden.isEmpty();
}

QRect nearestScreen(const QRect& frame, const QList<QRect>& screens)
{
    const auto distance
        = [&](const QRect& screen) { return (frame.center() - screen.center()).manhattanLength(); };
    return *std::min_element(screens.begin(), screens.end(),
        [&](const QRect& a, const QRect& b) { return distance(a) < distance(b); });
}

// A frame that is larger than the screen goes to the upper left corner of the screen.
QRect movedOnto(const QRect& screen, QRect frame)
{
    const int right = std::max(screen.left(), screen.right() + 1 - frame.width());
    const int bottom = std::max(screen.top(), screen.bottom() + 1 - frame.height());
    frame.moveTo(std::clamp(frame.left(), screen.left(), right),
        std::clamp(frame.top(), screen.top(), bottom));
    return frame;
}
} // namespace

QList<QRect> availableScreenAreas()
{
    QList<QRect> areas;
    for (const QScreen* screen : QGuiApplication::screens())
        areas.append(screen->availableGeometry());
    return areas;
}

QRect movedOntoScreens(const QRect& frame, const QList<QRect>& screens)
{
    if (screens.isEmpty() || isWhollyInView(frame, screens))
        return frame;
    return movedOnto(nearestScreen(frame, screens), frame);
}

QRect fittedOntoScreens(
    const QRect& frame, const QList<QRect>& screens, const std::function<QSize(QSize room)>& shrunk)
{
    if (screens.isEmpty() || isWhollyInView(frame, screens))
        return frame;
    const QRect home = nearestScreen(frame, screens);
    QRect fitted = frame;
    if (frame.width() > home.width() || frame.height() > home.height())
        fitted.setSize(shrunk(home.size()));
    return movedOnto(home, fitted);
}

} // namespace kestrel
