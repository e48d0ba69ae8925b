#pragma once

#include <QFileDialog>

namespace kestrel {

// The panel, a sheet on the setup window, in which an assignment file is chosen.
class AssignmentSheet : public QFileDialog {
public:
    enum class Purpose { Open, Save };

    // Goes by itself once it is closed.
    AssignmentSheet(Purpose purpose, QWidget& window);

    // Empty unless it was closed with a file that has a path.
    [[nodiscard]] QString chosenPath() const;

protected:
    void accept() override;

private:
    [[nodiscard]] bool lacksExtension() const;
};

} // namespace kestrel
