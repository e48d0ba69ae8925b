#include "app/FocusConnections.h"

#include <QGuiApplication>
#include <QPlatformSurfaceEvent>
#include <QWindow>

namespace kestrel {

FocusConnections::FocusConnections()
{
    qApp->installEventFilter(this);
}

bool FocusConnections::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::PlatformSurface || !watched->isWindowType())
        return false;
    const auto& surface = static_cast<const QPlatformSurfaceEvent&>(*event);
    if (surface.surfaceEventType() == QPlatformSurfaceEvent::SurfaceAboutToBeDestroyed)
        disconnect(static_cast<QWindow*>(watched), &QWindow::focusObjectChanged, qApp, nullptr);
    return false;
}

} // namespace kestrel
