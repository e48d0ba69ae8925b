#pragma once

#include <QFileDialog>

namespace kestrel {

// The file dialog, a sheet on the setup window, in which the user chooses an assignment file.
class AssignmentSheet : public QFileDialog {
public:
    enum class Purpose { Open, Save };

    // The sheet opens in the folder. It deletes itself once it is closed.
    AssignmentSheet(Purpose purpose, const QString& folder, QWidget& window);

    // The user's documents. A desktop starts programs in folders that hold nothing of the user.
    [[nodiscard]] static QString firstFolder();

    // Empty unless the user has accepted a file with a local path.
    [[nodiscard]] QString chosenPath() const;

protected:
    void accept() override;

private:
    [[nodiscard]] bool lacksExtension() const;
};

} // namespace kestrel
