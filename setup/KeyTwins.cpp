#include "setup/KeyTwins.h"

#include "assign/WorkingSet.h"
#include "common/KestrelUtilities.h"

#include <algorithm>

namespace kestrel {

QString KeyTwin::words() const
{
    QStringList keys;
    for (std::size_t other = 0; other < others.size(); ++other) {
        if (others[other])
            keys.append(QStringLiteral("U%1").arg(other + 1));
    }
    return QStringLiteral("%1 is also on %2")
        .arg(KestrelUtilities::getShortcutKey(stroke.flags, stroke.code, keyName),
            keys.join(QStringLiteral(", ")));
}

KeyTwins::KeyTwins(const WorkingSet& set)
    : m_set(set)
{
    for (std::size_t key = 0; key < m_strokes.size(); ++key) {
        const ButtonEntry entry = set.entry(static_cast<int>(key) + 1);
        for (std::size_t record = 0; entry && record < ShortcutRecordCount; ++record)
            m_strokes[key][record] = postedStroke(*entry, shortcutRecordOffset(record));
    }
}

std::vector<KeyTwin> KeyTwins::of(int key) const
{
    const auto index = static_cast<std::size_t>(key);
    const Strokes& strokes = m_strokes[index];
    std::vector<KeyTwin> twins;
    for (std::size_t record = 0; record < strokes.size(); ++record) {
        const auto& stroke = strokes[record];
        const auto here = strokes.begin() + static_cast<std::ptrdiff_t>(record);
        if (!stroke || std::find(strokes.begin(), here, stroke) != here)
            continue;
        KeyTwin twin { *stroke, {}, {} };
        for (std::size_t other = 0; other < m_strokes.size(); ++other) {
            const Strokes& theirs = m_strokes[other];
            twin.others[other]
                = other != index && std::find(theirs.begin(), theirs.end(), stroke) != theirs.end();
        }
        if (twin.others.none())
            continue;
        const ArchiveArray& entry = *m_set.entry(key + 1);
        twin.keyName = entry[shortcutRecordOffset(record) + ShortcutRecord::Text].text();
        twins.push_back(std::move(twin));
    }
    return twins;
}

} // namespace kestrel
