#pragma once

#include <QMessageBox>

namespace kestrel {

class SecondStart;

// Tells the user of a start that the running program does not answer, and lets them give it up.
// Prints to stderr too, but a user who starts the program from a menu sees only the box.
class StartBox final {
public:
    // Appears when `start` runs out of patience. `start` outlives the box.
    explicit StartBox(SecondStart& start);

    // Says why the program does not start. Returns when the user has closed the box.
    static void showProblem(const QString& problem);

private:
    QMessageBox m_box;
};

} // namespace kestrel
