#pragma once

#include "setup/KeyTwins.h"

#include <vector>

class QPainter;

namespace kestrel {

// The small signs in the corners of a key of the setup window.
struct KeyMarks {
    bool isUnassigned = false; // shortcuts were typed for the key and left without Assign
    std::vector<KeyTwin> twins;

    // One sentence for each mark and each twin.
    [[nodiscard]] QStringList words() const;
    void draw(QPainter& painter, double width) const; // at the top of a key of that width

    friend bool operator==(const KeyMarks&, const KeyMarks&) = default;
};

} // namespace kestrel
