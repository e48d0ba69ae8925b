#include "monitor/HealthHeader.h"

#include "activity/EventTime.h"
#include "common/AccessibilityListener.h"
#include "monitor/ActivityColours.h"
#include "monitor/BeatPlot.h"
#include "monitor/Figure.h"
#include "monitor/MonitorButton.h"
#include "monitor/StateLamp.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLocale>
#include <QPainter>

#include <chrono>

namespace kestrel {

namespace {
const std::array<QString, 7> FigureNames { QStringLiteral("Beats"), QStringLiteral("Missed"),
    QStringLiteral("Answers"), QStringLiteral("Link built"), QStringLiteral("Typed"),
    QStringLiteral("Kept back"), QStringLiteral("Losses") };
enum FigureIndex : std::size_t { Beats, MissedBeats, Answers, Built, Typed, KeptBack, Losses };

StateLamp::State lampState(const LinkHealth& health)
{
    if (!health.complaint().empty())
        return StateLamp::State::Wrong;
    return health.state() == LinkHealth::State::Online ? StateLamp::State::Well
                                                       : StateLamp::State::Waiting;
}
} // namespace

HealthHeader::HealthHeader(const LinkHealth& health, const Clock& clock, QWidget* parent)
    : QWidget(parent)
    , m_health(health)
    , m_clock(clock)
    , m_lamp(new StateLamp(this))
    , m_title(new QLabel(this))
    , m_sentence(new QLabel(this))
    , m_permissionButton(
          new MonitorButton(QStringLiteral("Give Permission…"), MonitorButton::Kind::Push, this))
    , m_plot(new BeatPlot(health, this))
{
    makeTexts();
    auto* const grid = new QGridLayout(this);
    grid->setContentsMargins(20, 16, 20, 14);
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(6);
    grid->setColumnStretch(1, 1);
    grid->addWidget(m_lamp, 0, 0);
    grid->addWidget(m_title, 0, 1);
    grid->addWidget(m_sentence, 1, 1, Qt::AlignTop);
    grid->addWidget(m_permissionButton, 2, 1, Qt::AlignLeft | Qt::AlignTop);
    grid->addWidget(m_plot, 0, 2, 3, 1, Qt::AlignRight | Qt::AlignTop);
    grid->setRowStretch(2, 1);
    makeFigures();
    takeColours();
    refresh();
}

void HealthHeader::makeTexts()
{
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    m_title->setFont(large);
    m_sentence->setWordWrap(true);
    m_title->setTextFormat(Qt::PlainText);
    m_sentence->setTextFormat(Qt::PlainText);
    connect(m_permissionButton, &QPushButton::clicked, this, [this] { m_showPermission(); });
}

void HealthHeader::makeFigures()
{
    auto* const row = new QHBoxLayout;
    row->setContentsMargins(0, 10, 0, 0);
    row->setSpacing(12);
    for (std::size_t i = 0; i < FigureCount; ++i) {
        m_figures[i] = new Figure(FigureNames[i], this);
        row->addWidget(m_figures[i]);
    }
    static_cast<QGridLayout*>(layout())->addLayout(row, 3, 0, 1, 3);
}

QString HealthHeader::title() const
{
    return m_title->text();
}

QString HealthHeader::sentence() const
{
    return m_sentence->text();
}

QString HealthHeader::titleText() const
{
    switch (m_health.state()) {
    case LinkHealth::State::Unknown:
        return QStringLiteral("Not open yet");
    case LinkHealth::State::NoMIDIService:
        return QStringLiteral("No MIDI service");
    case LinkHealth::State::NoConsole:
        return QStringLiteral("No console");
    case LinkHealth::State::Waiting:
        return QStringLiteral("Waiting for the console");
    case LinkHealth::State::Silent:
        return QStringLiteral("The console is silent");
    case LinkHealth::State::Online:
        break;
    }
    const auto ago = m_clock.now() - m_health.onlineSince().value_or(m_clock.now());
    const auto since
        = m_clock.wallTime() - std::chrono::duration_cast<Clock::WallTime::duration>(ago);
    return QStringLiteral("Online since ") + QString::fromStdString(EventTime::seconds(since));
}

QString HealthHeader::sentenceText() const
{
    if (const std::string complaint = m_health.complaint(); !complaint.empty())
        return QString::fromStdString(complaint);
    switch (m_health.state()) {
    case LinkHealth::State::Online:
        return QStringLiteral("All is well. Keys are typed while Pro Tools is in front.");
    case LinkHealth::State::Waiting:
        return QStringLiteral("The link is open; the first heartbeat has not come yet.");
    default:
        return QStringLiteral("Kestrel looks for the console within ten seconds of its start.");
    }
}

void HealthHeader::refresh()
{
    const auto& counts = m_health.counts();
    m_lamp->setState(lampState(m_health));
    m_title->setText(titleText());
    tellSentence(sentenceText());
    m_permissionButton->setVisible(m_health.isPermissionMissing());
    const std::array<std::uint64_t, FigureCount> values { counts.beats, counts.missedBeats,
        counts.answers, counts.timesBuilt, counts.typed, counts.keptBack, counts.lossesOfPackets };
    for (std::size_t i = 0; i < FigureCount; ++i)
        m_figures[i]->setValue(QLocale().toString(static_cast<qulonglong>(values[i])));
    for (const auto trouble : { MissedBeats, KeptBack, Losses })
        m_figures[trouble]->setWarning(values[trouble] > 0);
    m_plot->refresh();
}

// Assistive technology reads the sentence aloud when it has changed.
void HealthHeader::tellSentence(const QString& text)
{
    if (text == m_sentence->text())
        return;
    m_sentence->setText(text);
    takeColours();
    const AccessibilityListener& listener = AccessibilityListener::shared();
    if (!isVisible() || !listener.isActive())
        return;
    QAccessibleEvent event(m_sentence, QAccessible::Alert);
    listener.tell(&event);
}

void HealthHeader::takeColours()
{
    const ActivityColours& colours = ActivityColours::of(palette());
    const auto paint = [](QLabel& label, const QColor& colour) {
        QPalette palette = label.palette();
        palette.setColor(QPalette::WindowText, colour);
        label.setPalette(palette);
    };
    paint(*m_title, colours.text);
    paint(*m_sentence, m_health.complaint().empty() ? colours.dim : colours.warning);
}

void HealthHeader::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::PaletteChange)
        takeColours();
    QWidget::changeEvent(event);
}

void HealthHeader::paintEvent(QPaintEvent*)
{
    const ActivityColours& colours = ActivityColours::of(palette());
    QLinearGradient ground(0, 0, 0, height());
    ground.setColorAt(0, colours.headTop);
    ground.setColorAt(1, colours.headBottom);
    QPainter painter(this);
    painter.fillRect(rect(), ground);
    painter.fillRect(0, height() - 1, width(), 1, colours.line);
}

} // namespace kestrel
