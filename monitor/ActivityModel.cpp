#include "monitor/ActivityModel.h"

#include "activity/EventTime.h"
#include "activity/OutcomeWords.h"
#include "activity/PacketWords.h"

#include <algorithm>

namespace kestrel {

ActivityModel::ActivityModel(const ActivityLog& log, QObject* parent)
    : QAbstractTableModel(parent)
    , m_log(log)
{
    refresh();
}

int ActivityModel::refresh()
{
    const int dropped = dropOverwritten();
    if (m_isPaused)
        return dropped;
    const auto added = takeNew(std::max(m_next, first()), m_log.count());
    m_next = m_log.count();
    if (added.empty())
        return dropped;
    const int first = rowCount();
    beginInsertRows({}, first, first + static_cast<int>(added.size()) - 1);
    m_numbers.insert(m_numbers.end(), added.begin(), added.end());
    endInsertRows();
    return dropped;
}

int ActivityModel::dropOverwritten()
{
    const auto kept = std::lower_bound(m_numbers.begin(), m_numbers.end(), m_log.first());
    const auto count = static_cast<int>(kept - m_numbers.begin());
    if (count == 0)
        return 0;
    beginRemoveRows({}, 0, count - 1);
    m_numbers.erase(m_numbers.begin(), kept);
    endRemoveRows();
    return count;
}

std::vector<std::uint64_t> ActivityModel::takeNew(std::uint64_t from, std::uint64_t to) const
{
    std::vector<std::uint64_t> numbers;
    for (auto number = from; number < to; ++number) {
        if (m_groups.test(static_cast<std::size_t>(groupOf(m_log.event(number)))))
            numbers.push_back(number);
    }
    return numbers;
}

// While the list is paused, a change of the groups adds no later events.
void ActivityModel::setGroups(Groups groups)
{
    beginResetModel();
    m_groups = groups;
    const auto shown = takeNew(first(), std::max(m_next, first()));
    m_numbers.assign(shown.begin(), shown.end());
    endResetModel();
}

void ActivityModel::clear()
{
    beginResetModel();
    m_cleared = m_log.count();
    m_next = m_cleared;
    m_numbers.clear();
    endResetModel();
}

const ActivityEvent* ActivityModel::eventAt(int row) const
{
    const std::uint64_t number = m_numbers.at(static_cast<std::size_t>(row));
    return number < m_log.first() ? nullptr : &m_log.event(number);
}

int ActivityModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_numbers.size());
}

int ActivityModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ActivityModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || role != Qt::DisplayRole)
        return {};
    const ActivityEvent* const shown = eventAt(index.row());
    if (!shown)
        return {};
    const auto text = [&]() -> std::string {
        switch (index.column()) {
        case Time:
            return EventTime::milliseconds(shown->wallTime());
        case Event:
            return PacketWords::describe(*shown);
        case Outcome:
            return OutcomeWords::describe(*shown);
        default:
            return PacketWords::hexadecimal(*shown);
        }
    };
    return QString::fromStdString(text());
}

QVariant ActivityModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Time:
        return QStringLiteral("Time");
    case Event:
        return QStringLiteral("What happened");
    case Outcome:
        return QStringLiteral("What became of it");
    default:
        return QStringLiteral("Bytes");
    }
}

} // namespace kestrel
