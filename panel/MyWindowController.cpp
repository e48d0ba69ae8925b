#include "panel/MyWindowController.h"

#include "link/MIDIMessage.h"
#include "panel/PanelLayout.h"
#include "panel/PanelShape.h"
#include "platform/WindowTraits.h"
#include "ui_Plug-in_Panel.h"

#include <QEvent>
#include <QTimer>

#include <utility>

namespace kestrel {

MyWindowController::MyWindowController(const QString& windowNibName, WindowTraits& windowTraits,
    DefaultsStore& defaults, PlugInPanelView::ImageLoader imageNamed)
    : m_windowTraits(windowTraits)
    , m_imageNamed(std::move(imageNamed))
{
    if (windowNibName != QLatin1String("Plug-in_Panel"))
        return;
    loadWindow();
    awakeFromNib();
    m_proportion = std::make_unique<PanelProportion>(
        *m_window, *m_plugInPanelView,
        [this](QSize content) { return contentInProportion(content); },
        [this] { return m_windowTraits.isSizeGiven(m_window->internalWinId()); });
    m_placement = std::make_unique<PanelPlacement>(*m_window, defaults);
    m_placement->restore();
    m_placement->followScreens();
    m_onceShown.setSingleShot(true);
    connect(&m_onceShown, &QTimer::timeout, this, [this] {
        applyWindowTraits();
        orderFront();
    });
    m_window->installEventFilter(this);
}

MyWindowController::~MyWindowController()
{
    if (m_window)
        m_window->removeEventFilter(this);
}

void MyWindowController::loadWindow()
{
    m_window = std::make_unique<DSPWindow>();
    Ui::PlugInPanel interface;
    interface.setupUi(m_window.get());
    m_contentView = interface.contentView;
}

void MyWindowController::awakeFromNib()
{
    m_plugInPanelView = new PlugInPanelView(m_contentView->geometry(), m_imageNamed);
    m_plugInPanelView->setParent(m_window.get());
    delete std::exchange(m_contentView, m_plugInPanelView);
}

void MyWindowController::redrawLCDdisplay(const MIDIMessage& message)
{
    if (m_plugInPanelView)
        m_plugInPanelView->updateZone(message.readData(), isVisible());
}

void MyWindowController::redrawDSParea(const MIDIMessage& message)
{
    if (m_plugInPanelView)
        m_plugInPanelView->updateDSParea(message.readData(), isVisible());
}

void MyWindowController::setNeedDisplay()
{
    if (m_plugInPanelView)
        m_plugInPanelView->setNeedsDisplay();
}

void MyWindowController::initMessage()
{
    if (m_plugInPanelView)
        m_plugInPanelView->initMessageArry();
}

QSizeF MyWindowController::windowWillResize(const DSPWindow& sender, QSizeF frameSize) const
{
    const int decoration = sender.frameGeometry().height() - sender.height();
    return { frameSize.width(), panelHeight(frameSize.width()) + decoration };
}

// The proportion is that of the content, so this passes a frame width without side borders.
QSize MyWindowController::contentInProportion(QSize content) const
{
    const QSize frame(content.width(), m_window->frameGeometry().height());
    const QSizeF better = windowWillResize(*m_window, frame);
    const int decoration = m_window->frameGeometry().height() - m_window->height();
    return { qRound(better.width()), qRound(better.height() - decoration) };
}

bool MyWindowController::isVisible() const
{
    return m_window && m_window->isVisible() && !m_window->isMinimized();
}

void MyWindowController::showWindow()
{
    if (!m_window)
        return;
    if (isVisible()) {
        m_placement->bringOntoScreen();
        m_window->raise();
        orderFront();
        return;
    }
    m_placement->keepPlace();
    m_placement->bringOntoScreen();
    m_window->setWindowState(m_window->windowState() & ~Qt::WindowMinimized);
    m_window->show();
}

// Sets the window traits before the first showing, and again after each showing, because Qt writes
// window properties of its own then. A minimised window is not painted, so it is painted when it is
// restored.
bool MyWindowController::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::WinIdChange)
        applyWindowTraits();
    else if (event->type() == QEvent::Show)
        m_onceShown.start(0);
    else if (event->type() == QEvent::WindowStateChange && isVisible())
        setNeedDisplay();
    return QObject::eventFilter(watched, event);
}

void MyWindowController::orderFront()
{
    if (isVisible())
        m_windowTraits.orderFront(m_window->internalWinId());
}

void MyWindowController::applyWindowTraits()
{
    const NativeWindow native = m_window->internalWinId();
    if (native == 0)
        return;
    m_windowTraits.setNeverFocused(native);
    m_windowTraits.setFloating(native);
    m_windowTraits.setContentAspectRatio(
        native, static_cast<int>(PanelLayout::Width), static_cast<int>(PanelLayout::Height));
}

} // namespace kestrel
