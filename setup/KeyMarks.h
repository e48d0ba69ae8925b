#pragma once

#include <QString>

#include <vector>

class QPainter;

namespace kestrel {

class WorkingSet;

// The small signs in the corners of a key of the setup window.
struct KeyMarks {
    // A shortcut that other keys have as well.
    struct Twin {
        QString shortcut;
        std::vector<int> keys; // the numbers of the others, 1 to 12

        friend bool operator==(const Twin&, const Twin&) = default;
    };

    bool isUnassigned = false; // shortcuts were typed for the key and left without Assign
    std::vector<Twin> twins;

    // The twins of the shortcuts of one key, as the program posts them.
    [[nodiscard]] static std::vector<Twin> twinsOf(int number, const WorkingSet& set);

    // One sentence for each mark and each twin.
    [[nodiscard]] QStringList words() const;
    void draw(QPainter& painter, double width) const; // at the top of a key of that width

    friend bool operator==(const KeyMarks&, const KeyMarks&) = default;
};

} // namespace kestrel
