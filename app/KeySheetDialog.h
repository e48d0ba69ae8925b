#pragma once

#include <QFileDialog>

namespace kestrel {

// The file dialog in which the user chooses where a key sheet is saved. It belongs to no window.
class KeySheetDialog final : public QFileDialog {
public:
    KeySheetDialog();

    // Empty unless the user has accepted a file with a local path.
    [[nodiscard]] QString chosenPath() const;

    void accept() override;
};

} // namespace kestrel
