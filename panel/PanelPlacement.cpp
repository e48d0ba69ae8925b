#include "panel/PanelPlacement.h"

#include "common/ScreenFit.h"
#include "panel/PanelShape.h"
#include "platform/DefaultsStore.h"

#include <QByteArray>
#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include <chrono>
#include <optional>

namespace kestrel {

namespace {
constexpr std::chrono::milliseconds RestTime { 500 };
constexpr QSize LikelyDecoration(8, 40); // of a window that has none yet
constexpr int FarthestPixel = 32767; // no window system places anything beyond it

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
        if (!isNumber || std::abs(numbers[i]) > FarthestPixel)
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
    m_window.resize(width, qRound(panelHeight(width)));
    m_window.move(place->topLeft());
    bringOntoScreen();
}

void PanelPlacement::keepPlace()
{
    // A place that was never asked for does not count as one, even if the user dragged it there.
    if (QWindow* const native = m_window.windowHandle())
        native->setGeometry(native->geometry());
}

void PanelPlacement::bringOntoScreen()
{
    const QSize known = m_window.frameGeometry().size() - m_window.size();
    const QSize decoration = known.isNull() ? LikelyDecoration : known;
    const QRect frame(m_window.pos(), m_window.size() + decoration);
    const QRect fitted = fittedOntoScreens(frame, availableScreenAreas());
    if (fitted == frame)
        return;
    const int width = fitted.width() - decoration.width();
    m_window.resize(width, qRound(panelHeight(width)));
    m_window.move(fitted.topLeft());
}

void PanelPlacement::followScreens()
{
    for (const QScreen* screen : QGuiApplication::screens())
        follow(*screen);
    connect(qGuiApp, &QGuiApplication::screenAdded, this,
        [this](const QScreen* screen) { follow(*screen); });
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &PanelPlacement::bringOntoScreen,
        Qt::QueuedConnection);
}

void PanelPlacement::follow(const QScreen& screen)
{
    connect(&screen, &QScreen::availableGeometryChanged, this, &PanelPlacement::bringOntoScreen,
        Qt::QueuedConnection);
}

bool PanelPlacement::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
        if (m_window.isVisible())
            m_rest.start();
        break;
    case QEvent::Hide:
        save();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void PanelPlacement::remember()
{
    if (m_window.windowState() != Qt::WindowNoState)
        return;
    const QPoint corner = m_window.pos();
    const QByteArray text = QByteArray::number(corner.x()) + ' ' + QByteArray::number(corner.y())
        + ' ' + QByteArray::number(m_window.width()) + ' ' + QByteArray::number(m_window.height());
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
