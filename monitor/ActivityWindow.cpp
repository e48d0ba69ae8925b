#include "monitor/ActivityWindow.h"

#include "activity/Recording.h"
#include "monitor/ActivityColours.h"
#include "monitor/ActivityList.h"
#include "monitor/HealthHeader.h"
#include "monitor/MonitorAccessibility.h"
#include "monitor/MonitorButton.h"
#include "monitor/RecordingSheet.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace kestrel {

using namespace std::chrono_literals;

namespace {
constexpr int FirstHeight = 560;
constexpr QSize LeastSize { 720, 400 };

struct Filter {
    QString word;
    QString description;
};
// In the order of EventGroup.
const std::array<Filter, EventGroups> Filters { {
    { QStringLiteral("Keys"), QStringLiteral("Show keys") },
    { QStringLiteral("Panel"), QStringLiteral("Show display, knobs and lamps") },
    { QStringLiteral("Beats"), QStringLiteral("Show heartbeats") },
    { QStringLiteral("Link"), QStringLiteral("Show events of the link") },
    { QStringLiteral("Unknown"), QStringLiteral("Show unknown packets") },
} };
} // namespace

ActivityWindow::ActivityWindow(const Subject& subject, std::function<void()> showPermission)
    : m_log(subject.log)
    , m_files(subject.files)
    , m_model(subject.log)
    , m_header(new HealthHeader(subject.health, subject.clock, this))
    , m_list(new ActivityList(m_model, this))
{
    installMonitorAccessibility();
    setWindowTitle(QStringLiteral("Activity"));
    const int room = screen()->availableGeometry().width();
    resize(std::min(m_list->usualWidth(), room), FirstHeight);
    setMinimumSize(LeastSize);
    m_header->setShowPermission(std::move(showPermission));
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_header);
    column->addLayout(makeBar());
    column->addWidget(m_list, 1);
    m_refresh.setInterval(RefreshPeriod);
    connect(&m_refresh, &QTimer::timeout, this, &ActivityWindow::refresh);
}

QHBoxLayout* ActivityWindow::makeBar()
{
    auto* const bar = new QHBoxLayout;
    bar->setContentsMargins(16, 7, 16, 7);
    bar->setSpacing(3);
    addFilters(*bar);
    bar->addStretch(1);
    m_pause = addButton(
        QStringLiteral("Pause"), QStringLiteral("Pause the list"), &ActivityWindow::pause, *bar);
    addButton(
        QStringLiteral("Clear"), QStringLiteral("Clear the list"), &ActivityWindow::clear, *bar);
    addButton(QStringLiteral("Copy"), QStringLiteral("Copy the selected events, or all"),
        &ActivityWindow::copy, *bar);
    addButton(QStringLiteral("Save…"), QStringLiteral("Save as a console script"),
        &ActivityWindow::save, *bar);
    return bar;
}

void ActivityWindow::addFilters(QHBoxLayout& bar)
{
    for (std::size_t i = 0; i < Filters.size(); ++i) {
        m_filters[i] = new MonitorButton(Filters[i].word, MonitorButton::Kind::Switch, this);
        m_filters[i]->setAccessibleName(Filters[i].description);
        m_filters[i]->setToolTip(Filters[i].description);
        m_filters[i]->setChecked(true);
        connect(m_filters[i], &QAbstractButton::toggled, this, &ActivityWindow::filter);
        bar.addWidget(m_filters[i]);
    }
}

MonitorButton* ActivityWindow::addButton(const QString& text, const QString& description,
    void (ActivityWindow::*act)(), QHBoxLayout& bar)
{
    const auto kind
        = act == &ActivityWindow::pause ? MonitorButton::Kind::Switch : MonitorButton::Kind::Push;
    auto* const button = new MonitorButton(text, kind, this);
    button->setAccessibleName(description);
    button->setToolTip(description);
    connect(button, &QAbstractButton::clicked, this, act);
    bar.addWidget(button);
    return button;
}

void ActivityWindow::refresh()
{
    m_header->refresh();
    m_list->refresh();
    const auto happened = m_log.count() - std::exchange(m_seen, m_log.count());
    const auto flood = static_cast<std::uint64_t>(FloodedEvents * period() / 1s);
    m_refresh.setInterval(happened > flood ? FloodPeriod : RefreshPeriod);
}

void ActivityWindow::filter()
{
    ActivityModel::Groups groups;
    for (std::size_t i = 0; i < m_filters.size(); ++i)
        groups.set(i, m_filters[i]->isChecked());
    m_model.setGroups(groups);
    m_list->scrollToNewest();
}

void ActivityWindow::pause()
{
    m_model.setPaused(m_pause->isChecked());
    m_list->refresh();
}

void ActivityWindow::clear()
{
    m_model.clear();
}

void ActivityWindow::copy()
{
    QApplication::clipboard()->setText(m_list->text());
}

void ActivityWindow::save()
{
    const auto script = Recording::script(m_log, m_model.first());
    (new RecordingSheet(script, m_files, m_sheetFolder, *this))->open();
}

void ActivityWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy))
        copy();
    else if (event->matches(QKeySequence::Save))
        save();
    else if (event->matches(QKeySequence::Close) || event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

void ActivityWindow::showEvent(QShowEvent* event)
{
    refresh();
    m_list->scrollToNewest();
    m_refresh.start();
    QWidget::showEvent(event);
}

void ActivityWindow::hideEvent(QHideEvent* event)
{
    m_refresh.stop();
    QWidget::hideEvent(event);
}

// Qt hides the window after this event.
void ActivityWindow::closeEvent(QCloseEvent* event)
{
    QMetaObject::invokeMethod(
        this, [this] { m_closed(); }, Qt::QueuedConnection);
    QWidget::closeEvent(event);
}

void ActivityWindow::paintEvent(QPaintEvent*)
{
    const ActivityColours& colours = ActivityColours::of(palette());
    QPainter painter(this);
    painter.fillRect(rect(), colours.headBottom);
    painter.fillRect(0, m_list->y() - 1, width(), 1, colours.line);
}

} // namespace kestrel
