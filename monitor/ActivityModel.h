#pragma once

#include "activity/ActivityLog.h"
#include "activity/EventGroup.h"

#include <QAbstractTableModel>

#include <algorithm>
#include <bitset>
#include <deque>
#include <vector>

namespace kestrel {

// The events of the log as rows. It keeps the numbers of the rows only; the events stay in the log.
class ActivityModel : public QAbstractTableModel {
public:
    enum Column { Time, Event, Outcome, Bytes, ColumnCount };
    using Groups = std::bitset<EventGroups>;

    // The log outlives the model.
    explicit ActivityModel(const ActivityLog& log, QObject* parent = nullptr);

    // Takes in what has happened since the last call, unless paused, and drops what the log no
    // longer holds. Returns how many rows it has dropped from the top.
    int refresh();
    void setPaused(bool paused) { m_isPaused = paused; }
    void setGroups(Groups groups);
    // Shows only what happens from now on. The log keeps what it holds, for those who follow it.
    void clear();
    // The number of the first event that the list can show.
    [[nodiscard]] std::uint64_t first() const { return std::max(m_cleared, m_log.first()); }

    // Null when the log no longer holds the event, which is so for a moment until refresh().
    [[nodiscard]] const ActivityEvent* eventAt(int row) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(
        int section, Qt::Orientation orientation, int role) const override;

private:
    int dropOverwritten();
    [[nodiscard]] std::vector<std::uint64_t> takeNew(std::uint64_t from, std::uint64_t to) const;

    const ActivityLog& m_log;
    Groups m_groups = Groups().set();
    bool m_isPaused = false;
    std::uint64_t m_next = 0; // the number of the first event that was not taken in
    std::uint64_t m_cleared = 0; // the number of the first event after clear()
    std::deque<std::uint64_t> m_numbers;
};

} // namespace kestrel
