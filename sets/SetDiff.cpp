#include "sets/SetDiff.h"

#include "archive/ArchiveDictionary.h"
#include "sets/SetRoot.h"
#include "sets/SetWords.h"

#include <algorithm>

namespace kestrel::SetDiff {

namespace {
// Whether equal values have their reals and their integers in the same places.
bool haveSameReals(const ArchiveValue& left, const ArchiveValue& right)
{
    if (left.isNumber() && right.isNumber())
        return (left.type() == ArchiveValue::Type::Real)
            == (right.type() == ArchiveValue::Type::Real);
    if (const auto array = left.array())
        return std::equal(array->begin(), array->end(), right.array()->begin(), haveSameReals);
    if (const auto dictionary = left.dictionary()) {
        return std::all_of(
            dictionary->begin(), dictionary->end(), [&](const ArchiveDictionary::Entry& entry) {
                return haveSameReals(entry.key, *SetWords::ownKey(right.dictionary(), entry.key))
                    && haveSameReals(entry.value, right.dictionary()->value(entry.key));
            });
    }
    if (const auto object = left.object()) {
        const auto& members = object->members();
        return std::all_of(
            members.begin(), members.end(), [&](const ArchiveObject::Member& member) {
                return haveSameReals(member.value, right.object()->value(member.name));
            });
    }
    return true;
}

const ArchiveValue* memberOf(const SetText::Root& set, const QString& name)
{
    return set->contains(name) ? &set->value(name) : nullptr;
}

// The same key can be the number 1 in one table and 1.0 in the other.
void compareKeys(const std::shared_ptr<ArchiveDictionary>& old,
    const std::shared_ptr<ArchiveDictionary>& now, const ArchiveValue& key, const QString& place,
    std::vector<Difference>& differences)
{
    const ArchiveValue* const was = SetWords::ownKey(old, key);
    const ArchiveValue* const is = SetWords::ownKey(now, key);
    if (was && is && !isSame(was, is))
        differences.push_back({ place + QStringLiteral(", its number"), SetWords::value(*was),
            SetWords::value(*is) });
}

void compareTables(const SetText::Root& old, const SetText::Root& now, const QString& table,
    const ArchiveValue& key, std::vector<Difference>& differences)
{
    const ArchiveValue* const was = SetWords::find(old, table, key);
    const ArchiveValue* const is = SetWords::find(now, table, key);
    compareKeys(old->value(table).dictionary(), now->value(table).dictionary(), key,
        place(key, table), differences);
    if (isSame(was, is))
        return;
    QString oldWords = words(was, table);
    QString newWords = words(is, table);
    if (oldWords == newWords) { // something differs that the words do not tell
        oldWords = was ? SetWords::value(*was) : oldWords;
        newWords = is ? SetWords::value(*is) : newWords;
    }
    differences.push_back({ place(key, table), oldWords, newWords });
}

void compareMembers(
    const SetText::Root& old, const SetText::Root& now, std::vector<Difference>& differences)
{
    QStringList names;
    for (const SetText::Root& set : { old, now }) {
        for (const ArchiveObject::Member& member : set->members()) {
            if (!names.contains(member.name))
                names.append(member.name);
        }
    }
    for (const QString& name : names) {
        const ArchiveValue* const was = memberOf(old, name);
        const ArchiveValue* const is = memberOf(now, name);
        const bool areTables = was && is && was->dictionary() && is->dictionary()
            && (name == SetRoot::OrgShortcutArray || name == SetRoot::OrgShortcutTitleArray);
        if (!areTables && !isSame(was, is))
            differences.push_back(
                { SetWords::printable(name), was ? SetWords::value(*was) : QStringLiteral("none"),
                    is ? SetWords::value(*is) : QStringLiteral("none") });
    }
    if (old->classes() != now->classes())
        differences.push_back(
            { QStringLiteral("classes"), SetWords::printable(old->classes().join(u' ')),
                SetWords::printable(now->classes().join(u' ')) });
}
} // namespace

bool isSame(const ArchiveValue* left, const ArchiveValue* right)
{
    return left && right ? *left == *right && haveSameReals(*left, *right) : left == right;
}

QString words(const ArchiveValue* value, const QString& table)
{
    if (!value)
        return QStringLiteral("none");
    if (table == SetRoot::OrgShortcutTitleArray)
        return value->isString() ? u'"' + SetWords::title(*value) + u'"' : SetWords::value(*value);
    if (!value->array())
        return SetWords::value(*value);
    const QString shortcuts = SetWords::shortcuts(*value);
    return shortcuts.isEmpty() ? QStringLiteral("none used") : shortcuts;
}

QString place(const ArchiveValue& key, const QString& table)
{
    return QStringLiteral("key ") + SetWords::value(key)
        + (table == SetRoot::OrgShortcutTitleArray ? QStringLiteral(" name")
                                                   : QStringLiteral(" shortcuts"));
}

std::vector<Difference> between(const SetText::Root& old, const SetText::Root& now)
{
    std::vector<Difference> differences;
    for (const ArchiveValue& key : SetWords::keysOf({ old, now })) {
        compareTables(old, now, SetRoot::OrgShortcutTitleArray, key, differences);
        compareTables(old, now, SetRoot::OrgShortcutArray, key, differences);
    }
    compareMembers(old, now, differences);
    return differences;
}

} // namespace kestrel::SetDiff
