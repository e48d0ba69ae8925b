#include "tools/pro-tools/WorkstationWindow.h"

#include <QEvent>
#include <QFontDatabase>
#include <QPainter>

namespace kestrel {

namespace {
constexpr std::size_t KeysShown = 14;
constexpr int Margin = 24;
constexpr int HeaderHeight = 64;
constexpr int RowHeight = 26;

constexpr QRgb Background = 0xFF15181B;
constexpr QRgb Stripe = 0xFF1C2024;
constexpr QRgb Text = 0xFFE3E7EA;
constexpr QRgb Quiet = 0xFF7C8791;
constexpr QRgb DownColour = 0xFF5FD3C4;
constexpr QRgb UpColour = 0xFF56616B;

QFont face(int pixels, QFont::Weight weight = QFont::Normal)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    font.setPixelSize(pixels);
    font.setWeight(weight);
    return font;
}
} // namespace

WorkstationWindow::WorkstationWindow(FocusChanged focusChanged)
    : m_focusChanged(std::move(focusChanged))
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    resize(560, HeaderHeight + static_cast<int>(KeysShown) * RowHeight + Margin);
}

void WorkstationWindow::show(const ReceivedKey& key)
{
    m_keys.push_front(key);
    if (m_keys.size() > KeysShown)
        m_keys.pop_back();
    update();
}

// Consumes key events, so that Qt makes no focus changes, menus or shortcuts of them.
bool WorkstationWindow::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
        event->accept();
        return true;
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        m_focusChanged(event->type() == QEvent::FocusIn);
        update();
        return QWidget::event(event);
    default:
        return QWidget::event(event);
    }
}

void WorkstationWindow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor(Background));
    painter.setPen(QColor(Text));
    painter.setFont(face(20, QFont::DemiBold));
    const QRect header(Margin, 0, width() - 2 * Margin, HeaderHeight);
    painter.drawText(header, Qt::AlignLeft | Qt::AlignVCenter, windowTitle());
    painter.setPen(QColor(hasFocus() ? DownColour : Quiet));
    painter.setFont(face(13));
    painter.drawText(header, Qt::AlignRight | Qt::AlignVCenter,
        hasFocus() ? QStringLiteral("in front") : QStringLiteral("behind"));

    QRect row(0, HeaderHeight, width(), RowHeight);
    for (const ReceivedKey& key : m_keys) {
        paintKey(painter, row, key);
        row.translate(0, RowHeight);
    }
    if (m_keys.empty()) {
        painter.setPen(QColor(Quiet));
        painter.drawText(row, Qt::AlignCenter, QStringLiteral("Keys that arrive appear here."));
    }
}

void WorkstationWindow::paintKey(QPainter& painter, const QRect& row, const ReceivedKey& key) const
{
    if ((row.top() - HeaderHeight) / RowHeight % 2 == 0)
        painter.fillRect(row, QColor(Stripe));
    const QRgb colour = key.down ? DownColour : UpColour;
    painter.fillRect(QRect(Margin, row.top() + 7, 4, row.height() - 14), QColor(colour));
    const auto column = [&row](int left, int width) {
        return QRect(Margin + left, row.top(), width, row.height());
    };
    painter.setFont(face(14));
    painter.setPen(QColor(key.down ? Text : Quiet));
    painter.drawText(column(16, 60), Qt::AlignVCenter, key.down ? "down" : "up");
    painter.drawText(
        column(80, 80), Qt::AlignVCenter | Qt::AlignRight, QString::fromStdString(key.glyphs()));
    painter.setFont(face(14, QFont::DemiBold));
    painter.drawText(column(172, 150), Qt::AlignVCenter, QString::fromStdString(key.key));
    painter.setFont(face(12));
    painter.setPen(QColor(Quiet));
    painter.drawText(column(322, 60), Qt::AlignVCenter, key.repeat ? "repeat" : "");
    painter.drawText(QRect(Margin, row.top(), row.width() - 2 * Margin, row.height()),
        Qt::AlignVCenter | Qt::AlignRight,
        QString::number(static_cast<double>(key.microseconds) / 1e6, 'f', 6) + " s");
}

} // namespace kestrel
