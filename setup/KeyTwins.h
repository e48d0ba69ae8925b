#pragma once

#include "assign/PostedStroke.h"
#include "assign/UserAssignFile.h"

#include <QString>

#include <array>
#include <bitset>
#include <optional>
#include <vector>

namespace kestrel {

class WorkingSet;

// A shortcut of one key of the setup window that other keys have as well.
struct KeyTwin {
    PostedStroke stroke;
    QString keyName; // as the entry of the key has it
    std::bitset<UserAssignFile::ButtonCount> others; // 0-based

    [[nodiscard]] QString words() const;

    friend bool operator==(const KeyTwin&, const KeyTwin&) = default;
};

// Finds the shortcuts that the keys of a working copy have in common, as the program posts them.
class KeyTwins {
public:
    explicit KeyTwins(const WorkingSet& set); // read again by of()

    [[nodiscard]] std::vector<KeyTwin> of(int key) const; // 0-based

private:
    using Strokes = std::array<std::optional<PostedStroke>, ShortcutRecordCount>;

    const WorkingSet& m_set;
    std::array<Strokes, UserAssignFile::ButtonCount> m_strokes;
};

} // namespace kestrel
