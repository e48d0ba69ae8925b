#include "sets/SetDiff.h"

#include "archive/ArchiveDictionary.h"
#include "sets/SetRoot.h"
#include "sets/SetWords.h"

#include <algorithm>

namespace kestrel::SetDiff {

namespace {
const ArchiveValue* memberOf(const SetText::Root& set, const QString& name)
{
    return set->contains(name) ? &set->value(name) : nullptr;
}

void compareTables(const SetText::Root& old, const SetText::Root& now, const QString& table,
    const ArchiveValue& key, std::vector<Difference>& differences)
{
    const ArchiveValue* const was = SetWords::find(old, table, key);
    const ArchiveValue* const is = SetWords::find(now, table, key);
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
    return left && right ? *left == *right : left == right;
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
