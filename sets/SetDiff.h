#pragma once

#include "sets/SetText.h"

#include <QString>

#include <vector>

namespace kestrel::SetDiff {

// What differs between two sets, in words: "key 6 name", "\"Save\"", "none".
struct Difference {
    QString place;
    QString was;
    QString is;
};

// The integer 1 and the real 1.0 differ; no and 0 do not, since Kestrel writes either for a
// shortcut that is not used. The order of the keys does not matter.
[[nodiscard]] std::vector<Difference> between(const SetText::Root& old, const SetText::Root& now);

// The words for a value in this table of a set; null is a value that is missing.
[[nodiscard]] QString words(const ArchiveValue* value, const QString& table);
// "key 6 name" for a table of titles, "key 6 shortcuts" for the other one.
[[nodiscard]] QString place(const ArchiveValue& key, const QString& table);
[[nodiscard]] bool isSame(const ArchiveValue* left, const ArchiveValue* right);

} // namespace kestrel::SetDiff
