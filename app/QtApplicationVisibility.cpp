#include "app/QtApplicationVisibility.h"

#include "platform/Workspace.h"

#include <QApplication>
#include <QWidget>

namespace kestrel {

QtApplicationVisibility::QtApplicationVisibility(Workspace& workspace)
    : m_workspace(workspace)
{
}

void QtApplicationVisibility::hide()
{
    if (m_workspace.hideApplication())
        return;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->windowType() != Qt::Popup)
            window->hide();
    }
}

void QtApplicationVisibility::activate()
{
    m_workspace.activateApplication();
}

} // namespace kestrel
