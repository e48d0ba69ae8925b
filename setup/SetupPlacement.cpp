#include "setup/SetupPlacement.h"

#include "common/ScreenFit.h"
#include "setup/SetupTables.h"
#include "setup/SetupWindow.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTimer>

#include <chrono>

namespace kestrel {

namespace {
const QString FrameAutosaveName = QStringLiteral("UAssignWindow");

// A window manager has placed and framed a window after this time.
constexpr std::chrono::milliseconds SettleTime { 500 };
} // namespace

SetupPlacement::SetupPlacement(SetupWindow& window, DefaultsStore& defaults)
    : m_window(window)
    , m_savedFrame(FrameAutosaveName.toStdString(), defaults)
    , m_screens([this] {
        if (m_window.isVisible())
            bringIntoView();
    })
{
}

void SetupPlacement::save()
{
    m_savedFrame.save(m_window);
}

void SetupPlacement::restore()
{
    m_savedFrame.restore(
        m_window, SetupTables::shared().UserAssignableWindowFrame, availableScreenAreas());
    fitIntoScreen();
}

void SetupPlacement::bringIntoView()
{
    fitOntoScreens();
    QTimer::singleShot(SettleTime, &m_window, [this] {
        if (m_window.isVisible())
            fitOntoScreens();
    });
}

void SetupPlacement::fitOntoScreens()
{
    moveOntoScreens();
    fitIntoScreen();
    moveOntoScreens();
}

void SetupPlacement::moveOntoScreens()
{
    const QPoint place
        = movedOntoScreens(m_window.frameGeometry(), availableScreenAreas()).topLeft();
    if (place != m_window.pos())
        m_window.move(place);
}

void SetupPlacement::fitIntoScreen()
{
    const QScreen* screen = QGuiApplication::screenAt(m_window.geometry().center());
    if (!screen)
        screen = m_window.screen();
    m_window.fitInto(SavedWindowFrame::contentRoom(m_window, screen->availableGeometry().size()));
}

} // namespace kestrel
