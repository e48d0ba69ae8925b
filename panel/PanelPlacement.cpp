#include "panel/PanelPlacement.h"

#include "common/ScreenFit.h"
#include "panel/PanelShape.h"
#include "platform/DefaultsStore.h"

#include <QByteArray>
#include <QEvent>
#include <QWidget>
#include <QWindow>

#include <array>
#include <chrono>
#include <cstdlib>
#include <utility>

namespace kestrel {

namespace {
constexpr std::chrono::milliseconds RestTime { 500 };
constexpr QSize LikelyDecoration(8, 40); // assumed until the window has its decoration
constexpr int FarthestPlace = 32767; // no window system places anything beyond it

std::span<const std::uint8_t> bytes(const QByteArray& text)
{
    return { reinterpret_cast<const std::uint8_t*>(text.constData()),
        static_cast<std::size_t>(text.size()) };
}

std::optional<QRect> parsed(const DefaultsStore::Bytes& stored)
{
    const QByteArray text(
        reinterpret_cast<const char*>(stored.data()), static_cast<qsizetype>(stored.size()));
    const QList<QByteArray> fields = text.split(' ');
    if (fields.size() != 4)
        return std::nullopt;
    std::array<int, 4> numbers {};
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        bool isNumber = false;
        numbers[i] = fields[static_cast<qsizetype>(i)].toInt(&isNumber);
        if (!isNumber || std::abs(numbers[i]) > FarthestPlace)
            return std::nullopt;
    }
    const auto [left, top, width, height] = numbers;
    if (width <= 0 || height <= 0)
        return std::nullopt;
    return QRect(left, top, width, height);
}
} // namespace

PanelPlacement::PanelPlacement(QWidget& window, DefaultsStore& defaults)
    : m_window(window)
    , m_defaults(defaults)
{
    m_rest.setSingleShot(true);
    m_rest.setInterval(RestTime);
    connect(&m_rest, &QTimer::timeout, this, &PanelPlacement::remember);
    m_settling.setSingleShot(true);
    m_settling.setInterval(RestTime);
    connect(&m_settling, &QTimer::timeout, this, &PanelPlacement::settled);
    m_window.installEventFilter(this);
}

PanelPlacement::~PanelPlacement()
{
    save();
}

void PanelPlacement::restore()
{
    const auto stored = m_defaults.data(Key);
    const auto place = stored ? parsed(*stored) : std::nullopt;
    if (!place)
        return;
    const int width = std::max(place->width(), m_window.minimumWidth());
    m_wanted.want({ place->topLeft(), QSize(width, qRound(panelHeight(width))) });
    const QRect inView = placeInView();
    m_wanted.give(inView);
    m_window.resize(inView.size());
    m_window.move(inView.topLeft());
}

void PanelPlacement::keepPlace()
{
    QWindow* const native = m_window.windowHandle();
    if (!native)
        return;
    // Qt asks for a place only after a program has set one, even if the user dragged the window.
    if (!hasGivenSize() || !m_wanted.isKnown()) {
        native->setGeometry(native->geometry());
        return;
    }
    // The window manager has forgotten the place of the window before it was maximised.
    const QRect inView = placeInView();
    native->resize(inView.size());
    native->setFramePosition(inView.topLeft());
}

void PanelPlacement::bringOntoScreen()
{
    if (m_rest.isActive()) { // the user has just moved the window
        m_rest.stop();
        remember();
    }
    adjust();
}

void PanelPlacement::followScreens()
{
    m_screens.emplace([this] {
        m_rest.stop(); // the window manager made that move, or the place is gone
        m_isToBeRepeated = true;
        adjust();
        m_settling.start();
    });
}

QRect PanelPlacement::place() const
{
    return { m_window.pos(), m_window.size() };
}

QRect PanelPlacement::placeInView() const
{
    const QSize known = m_window.frameGeometry().size() - m_window.size();
    const QSize decoration = known.isNull() ? LikelyDecoration : known;
    const QRect wanted = m_wanted.isKnown() ? m_wanted.place() : place();
    const QRect frame(wanted.topLeft(), wanted.size() + decoration);
    const QRect fitted = fittedOntoScreens(frame, availableScreenAreas(), [&](QSize room) {
        const QSize content = fittedPanel(room - decoration).size();
        return content.expandedTo(m_window.minimumSize()) + decoration;
    });
    return { fitted.topLeft(), fitted.size() - decoration };
}

// True while the window is maximised or full-screen. The window manager keeps its normal place.
bool PanelPlacement::hasGivenSize() const
{
    return m_window.windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen);
}

void PanelPlacement::adjust()
{
    m_isOwed = hasGivenSize();
    if (m_isOwed)
        return;
    const QRect inView = placeInView();
    // The window manager chooses the place of a window that was never shown, unless it must shrink.
    const bool isUnplaced = !m_window.testAttribute(Qt::WA_Moved) && !m_window.isVisible();
    if (inView == place() || (isUnplaced && inView.size() == m_window.size()))
        return;
    if (!m_wanted.isKnown())
        m_wanted.want(place());
    m_wanted.give(inView);
    m_window.resize(inView.size());
    m_window.move(inView.topLeft());
    m_settling.start();
}

void PanelPlacement::settled()
{
    if (!hasGivenSize() && std::exchange(m_isToBeRepeated, false) && placeInView() != place())
        adjust();
    else if (m_wanted.isKnown() && !hasGivenSize())
        m_wanted.give(place()); // the window manager may insist on another place
}

bool PanelPlacement::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
        if (m_window.isVisible() && !m_settling.isActive())
            m_rest.start();
        break;
    case QEvent::WindowStateChange:
        followWindowState();
        break;
    case QEvent::Hide:
        save();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void PanelPlacement::followWindowState()
{
    if (hasGivenSize()) {
        // The user moved the window just before, and it does not have the size of the new state
        // yet.
        if (m_rest.isActive() && isInProportion(m_window.size()))
            store();
        m_rest.stop();
    } else if (std::exchange(m_isOwed, false)) {
        m_isToBeRepeated = true;
        m_settling.start(); // the window does not have its new size yet
    }
}

void PanelPlacement::remember()
{
    if (m_window.windowState() == Qt::WindowNoState)
        store();
}

void PanelPlacement::store()
{
    m_wanted.foundAt(place());
    const QRect wanted = m_wanted.place();
    const QByteArray text = QByteArray::number(wanted.x()) + ' ' + QByteArray::number(wanted.y())
        + ' ' + QByteArray::number(wanted.width()) + ' ' + QByteArray::number(wanted.height());
    m_defaults.setData(Key, bytes(text));
    m_isUnsaved = true;
}

void PanelPlacement::save()
{
    if (m_rest.isActive()) {
        m_rest.stop();
        remember();
    }
    if (m_isUnsaved)
        m_isUnsaved = !m_defaults.synchronise();
}

} // namespace kestrel
