#include "common/ScreenChanges.h"

#include <QGuiApplication>
#include <QScreen>

namespace kestrel {

ScreenChanges::ScreenChanges(std::function<void()> changed)
{
    m_told.setSingleShot(true);
    m_told.setInterval(0);
    m_told.callOnTimeout(this, std::move(changed));
    for (const QScreen* screen : QGuiApplication::screens())
        follow(*screen);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](const QScreen* screen) {
        follow(*screen);
        m_told.start();
    });
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, [this] { m_told.start(); });
}

void ScreenChanges::follow(const QScreen& screen)
{
    connect(&screen, &QScreen::availableGeometryChanged, this, [this] { m_told.start(); });
}

} // namespace kestrel
