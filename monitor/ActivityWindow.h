#pragma once

#include "activity/LinkHealth.h"
#include "monitor/ActivityModel.h"

#include <QTimer>
#include <QWidget>

#include <array>
#include <chrono>
#include <functional>

class QHBoxLayout;

namespace kestrel {

class ActivityList;
class DocumentFiles;
class HealthHeader;
class MonitorButton;

// The "Activity" window: the health of the link, and what the console has sent with what became of
// it, as it happens. While it is hidden it does nothing.
class ActivityWindow : public QWidget {
public:
    // How often the window takes in what has happened. Nobody can read a flood of events, so it is
    // shown less often: a press that comes during a repaint waits for its end.
    static constexpr std::chrono::milliseconds RefreshPeriod { 100 };
    static constexpr std::chrono::milliseconds FloodPeriod { 500 };
    static constexpr int FloodedEvents = 400; // a second

    // All of them outlive the window.
    struct Subject {
        const ActivityLog& log;
        const LinkHealth& health;
        const Clock& clock;
        DocumentFiles& files;
    };

    // `showPermission` leads the user to where the permission to post keys is given.
    ActivityWindow(const Subject& subject, std::function<void()> showPermission);

    // `closed` is called after the window has closed.
    void setClosed(std::function<void()> closed) { m_closed = std::move(closed); }
    // Takes in what has happened. A timer calls it while the window is shown.
    void refresh();
    [[nodiscard]] std::chrono::milliseconds period() const
    {
        return m_refresh.intervalAsDuration();
    }

    [[nodiscard]] HealthHeader& header() { return *m_header; }
    [[nodiscard]] ActivityList& list() { return *m_list; }

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    MonitorButton* addButton(const QString& text, const QString& description,
        void (ActivityWindow::*act)(), QHBoxLayout& bar);
    [[nodiscard]] QHBoxLayout* makeBar();
    void addFilters(QHBoxLayout& bar);
    void filter();
    void pause();
    void clear();
    void copy();
    void save();

    std::function<void()> m_closed = [] {};
    const ActivityLog& m_log;
    DocumentFiles& m_files;
    ActivityModel m_model;
    HealthHeader* m_header;
    ActivityList* m_list;
    std::array<MonitorButton*, EventGroups> m_filters {};
    MonitorButton* m_pause = nullptr;
    QTimer m_refresh;
    QString m_sheetFolder; // of the last sheet
    std::uint64_t m_seen = 0; // events of the log
};

} // namespace kestrel
