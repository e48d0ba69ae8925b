#pragma once

#include "assign/ButtonEntry.h"
#include "common/InterfaceImage.h"

#include <QRect>

#include <array>

namespace kestrel {

// Frames and pictures of the setup window, filled once, before the first window is made. Frames
// are in units with their origin at the lower left, that of the window on the screen and those of
// the controls in its content.
struct SetupTables {
    using Images = std::array<InterfaceImage, 3>;

    QRect UserAssignableWindowFrame { 600, 350, 620, 453 };
    QRect UserAssignableButtonFrame { 36, 272, 78, 78 }; // the first of the grid
    QRect ShortcutFieldFrame { 430, 315, 171, 34 }; // the topmost
    QSize ClearButtonSize { 56, 31 };
    std::array<QRect, 2> LoadSaveButtonFrame { QRect(3, 419, 56, 31), QRect(61, 419, 56, 31) };
    std::array<QRect, 3> AssignOkCancelButtonFrame { QRect(540, 119, 56, 31),
        QRect(540, 15, 56, 31), QRect(460, 15, 56, 31) };

    InterfaceImage BackgroundImage;
    InterfaceImage ClearButtonImage;
    InterfaceImage ClearButtonOnPressImage;
    InterfaceImage ClearButtonDisableImage;
    InterfaceImage ClearButtonOffImage;
    // Of Load and Save the Off pictures are those at rest, of the other three the pressed ones.
    std::array<InterfaceImage, 2> LoadSaveButtonOffImage;
    std::array<InterfaceImage, 2> LoadSaveButtonImage;
    Images AssignOkCancelButtonImage;
    Images AssignOkCancelButtonOffImage;

    [[nodiscard]] static const SetupTables& shared();

    static constexpr int ButtonColumns = 4;
    static constexpr int ButtonGap = 20;
    static constexpr int FieldGap = 15;
    static constexpr int FieldCount = static_cast<int>(ShortcutRecordCount);
    static constexpr int ClearButtonOffset = 114; // from the left end of its field

    [[nodiscard]] QRect buttonFrame(int index) const;
    [[nodiscard]] QRect fieldFrame(int index) const;
    [[nodiscard]] QRect clearButtonFrame(int index) const;
    // The same frame as the toolkit has it, with its origin at the upper left.
    [[nodiscard]] QRect inContent(const QRect& frame) const;
};

} // namespace kestrel
