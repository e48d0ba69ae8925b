#include "sets/SetMerge.h"

#include "archive/ArchiveDictionary.h"
#include "sets/SetDiff.h"
#include "sets/SetRoot.h"
#include "sets/SetWords.h"

namespace kestrel {

namespace {
struct Sides {
    const ArchiveValue* base = nullptr; // null where the value is missing
    const ArchiveValue* ours = nullptr;
    const ArchiveValue* theirs = nullptr;

    [[nodiscard]] bool isConflict() const
    {
        return !SetDiff::isSame(ours, theirs) && !SetDiff::isSame(base, ours)
            && !SetDiff::isSame(base, theirs);
    }
    // Null if the merged set does not have the value.
    [[nodiscard]] const ArchiveValue* merged() const
    {
        return SetDiff::isSame(base, ours) && !SetDiff::isSame(ours, theirs) ? theirs : ours;
    }
};

std::shared_ptr<ArchiveDictionary> tableOf(const SetText::Root& set, const QString& name)
{
    return set->value(name).dictionary();
}

const ArchiveValue* find(const std::shared_ptr<ArchiveDictionary>& table, const ArchiveValue& key)
{
    return table && table->contains(key) ? &table->value(key) : nullptr;
}

class Merger {
public:
    Merger(const SetText::Root& base, const SetText::Root& ours, const SetText::Root& theirs)
        : m_base(base)
        , m_ours(ours)
        , m_theirs(theirs)
    {
        m_merge.set = std::make_shared<ArchiveObject>(ours->classes());
    }

    SetMerge merge();

private:
    void mergeMember(const ArchiveObject::Member& member);
    std::shared_ptr<ArchiveDictionary> mergedTable(const QString& name);

    const SetText::Root& m_base;
    const SetText::Root& m_ours;
    const SetText::Root& m_theirs;
    SetMerge m_merge;
};

std::shared_ptr<ArchiveDictionary> Merger::mergedTable(const QString& name)
{
    auto merged = std::make_shared<ArchiveDictionary>();
    const auto base = tableOf(m_base, name);
    const auto ours = tableOf(m_ours, name);
    const auto theirs = tableOf(m_theirs, name);
    ArchiveDictionary seen; // a key that the merge drops stays dropped
    for (const auto& table : { ours, theirs }) {
        for (const ArchiveValue& key : table->keys()) {
            if (seen.contains(key))
                continue;
            seen.set(key, {});
            const Sides sides { find(base, key), find(ours, key), find(theirs, key) };
            if (sides.isConflict())
                m_merge.conflicts.push_back(
                    { SetDiff::place(key, name), SetDiff::words(sides.base, name),
                        SetDiff::words(sides.ours, name), SetDiff::words(sides.theirs, name) });
            const Sides numbers { SetWords::ownKey(base, key), SetWords::ownKey(ours, key),
                SetWords::ownKey(theirs, key) };
            const ArchiveValue* const number = numbers.merged();
            if (const ArchiveValue* const value = sides.merged())
                merged->set(number ? *number : key, *value);
        }
    }
    return merged;
}

void Merger::mergeMember(const ArchiveObject::Member& member)
{
    const QString& name = member.name;
    const bool isTable
        = name == SetRoot::OrgShortcutArray || name == SetRoot::OrgShortcutTitleArray;
    if (isTable && tableOf(m_ours, name) && tableOf(m_theirs, name)) {
        m_merge.set->append({ name, mergedTable(name), member.storage });
        return;
    }
    const auto valueIn = [&](const SetText::Root& set) {
        return set->contains(name) ? &set->value(name) : nullptr;
    };
    const Sides sides { valueIn(m_base), valueIn(m_ours), valueIn(m_theirs) };
    const auto text = [](const ArchiveValue* value) {
        return value ? SetWords::value(*value) : QStringLiteral("none");
    };
    if (sides.isConflict())
        m_merge.conflicts.push_back(
            { name, text(sides.base), text(sides.ours), text(sides.theirs) });
    if (const ArchiveValue* const value = sides.merged())
        m_merge.set->append({ name, *value, member.storage });
}

SetMerge Merger::merge()
{
    for (const ArchiveObject::Member& member : m_ours->members())
        mergeMember(member);
    for (const ArchiveObject::Member& member : m_theirs->members()) {
        if (!m_ours->contains(member.name))
            mergeMember(member);
    }
    return std::move(m_merge);
}
} // namespace

SetMerge SetMerge::of(
    const SetText::Root& base, const SetText::Root& ours, const SetText::Root& theirs)
{
    return Merger(base, ours, theirs).merge();
}

} // namespace kestrel
