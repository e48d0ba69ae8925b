#include "setup/SavedWindowFrame.h"

#include "common/ScreenFit.h"
#include "platform/DefaultsStore.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStringList>
#include <QWidget>
#include <QWindow>

#include <array>
#include <cmath>

namespace kestrel {

namespace {

// Estimates, used before a window was shown
constexpr int TitleBarHeight = 28;
constexpr QSize LikelyFrame(8, 40); // generous, so that a small screen has room for the frame
constexpr int FarthestCoordinate = 100'000;

// Converts between an origin at the upper left of the primary screen and one at its lower left. The
// conversion is its own inverse.
QRect flipped(const QRect& rect)
{
    const int height = QGuiApplication::primaryScreen()->geometry().height();
    return { QPoint(rect.left(), height - rect.top() - rect.height()), rect.size() };
}

QString words(const QRect& rect)
{
    return QStringLiteral("%1 %2 %3 %4 ")
        .arg(rect.x())
        .arg(rect.y())
        .arg(rect.width())
        .arg(rect.height());
}

} // namespace

SavedWindowFrame::SavedWindowFrame(std::string_view autosaveName, DefaultsStore& defaults)
    : m_key("NSWindow Frame " + std::string(autosaveName))
    , m_defaults(defaults)
{
}

// Asks the native window, because a QWidget keeps the frame that it knew when it last moved, and a
// slow window manager may have framed the window after that.
void SavedWindowFrame::save(const QWidget& window)
{
    if (!window.isVisible())
        return;
    const QRect frame = window.windowHandle()->frameGeometry();
    const QByteArray text
        = (words(flipped(frame)) + words(flipped(window.screen()->geometry()))).toLatin1();
    m_defaults.setData(m_key,
        { reinterpret_cast<const std::uint8_t*>(text.constData()),
            static_cast<std::size_t>(text.size()) });
}

void SavedWindowFrame::restore(
    QWidget& window, const QRect& content, const QList<QRect>& screens) const
{
    const auto bytes = m_defaults.data(m_key);
    const auto saved = bytes
        ? parsed({ reinterpret_cast<const char*>(bytes->data()), bytes->size() })
        : std::nullopt;
    if (saved) {
        window.move(movedOntoScreens(flipped(*saved), screens).topLeft());
        return;
    }
    // The frame of a window that was never shown is not known yet, so this assumes a title bar.
    const QRect frame = flipped(content).adjusted(0, -TitleBarHeight, 0, 0);
    const QRect placed = movedOntoScreens(frame, screens).adjusted(0, TitleBarHeight, 0, 0);
    window.setGeometry(placed);
}

QSize SavedWindowFrame::contentRoom(const QWidget& window, const QSize& screen)
{
    const QSize known = window.frameGeometry().size() - window.size();
    return screen - (known.isNull() ? LikelyFrame : known);
}

std::optional<QRect> SavedWindowFrame::parsed(std::string_view text)
{
    const QStringList words = QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()))
                                  .split(u' ', Qt::SkipEmptyParts);
    if (words.size() < 4)
        return std::nullopt;
    std::array<int, 4> numbers {};
    for (int i = 0; i < 4; ++i) {
        bool isNumber = false;
        const double number = words[i].toDouble(&isNumber);
        if (!isNumber || !(std::abs(number) <= FarthestCoordinate))
            return std::nullopt;
        numbers[static_cast<std::size_t>(i)] = static_cast<int>(number);
    }
    const QRect frame(numbers[0], numbers[1], numbers[2], numbers[3]);
    return frame.isValid() ? std::optional(frame) : std::nullopt;
}

} // namespace kestrel
