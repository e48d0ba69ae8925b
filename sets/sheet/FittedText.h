#pragma once

#include <QFont>
#include <QStringList>

namespace kestrel {

// A text that is made to fit into a place. Sizes are in pixels of the font.
struct FittedText {
    struct Limits {
        double width = 0;
        int lines = 1;
        int largest = 0;
        int smallest = 0;
    };

    QStringList lines;
    QFont font;

    // Tries the sizes from the largest to the smallest, and breaks lines at blanks. If even the
    // smallest is too wide, it breaks anywhere and cuts the last line with an ellipsis.
    [[nodiscard]] static FittedText of(const QString& text, QFont font, const Limits& limits);
};

} // namespace kestrel
