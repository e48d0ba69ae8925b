#pragma once

#include <QFileDialog>

namespace kestrel {

// The file dialog in which the user chooses one file of certain kinds, to open it or to save it.
// It deletes itself once it is closed.
class FileDialog : public QFileDialog {
public:
    enum class Purpose { Open, Save };

    struct Kind {
        QString name;
        QString extension; // without the point
    };

    // Opens in `folder`, or among the user's documents if that is no folder, and leaves there the
    // folder that the user has gone to. `folder` outlives the dialog. The first of the kinds is
    // chosen at the start. A dialog without a window belongs to the program.
    FileDialog(Purpose purpose, const QList<Kind>& kinds, QString& folder, QWidget* window);

    // Empty unless the user has accepted a file with a local path.
    [[nodiscard]] QString chosenPath() const;

    void accept() override;

private:
    [[nodiscard]] bool lacksExtension() const;

    QStringList m_extensions;
};

} // namespace kestrel
