#pragma once

#include "sets/SetText.h"

#include <QString>

#include <vector>

namespace kestrel {

// A merge of two sets that were made from the same one. The name and the shortcuts of each key are
// merged by themselves: one that only one side has changed is that side's.
struct SetMerge {
    // What both sides have changed, each in its own way. The merged set has ours there.
    struct Conflict {
        QString place; // "key 6 name"
        QString base;
        QString ours;
        QString theirs;
    };

    SetText::Root set;
    std::vector<Conflict> conflicts;

    // The merged set shares values with those given.
    [[nodiscard]] static SetMerge of(
        const SetText::Root& base, const SetText::Root& ours, const SetText::Root& theirs);
};

} // namespace kestrel
