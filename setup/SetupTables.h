#pragma once

#include "assign/ButtonEntry.h"
#include "pictures/InterfaceImage.h"

#include <QRect>

#include <array>

namespace kestrel {

// The frames and pictures of the setup window, filled once, before the first window is made. Frames
// are in units with the origin at the lower left: of the screen for the frame of the window, of its
// content for the frames of the controls.
struct SetupTables {
    using Images = std::array<InterfaceImage, 3>;

    QRect UserAssignableWindowFrame { 600, 350, 620, 453 };
    QRect UserAssignableButtonFrame { 36, 272, 78, 78 }; // of the first button in the grid
    QRect ShortcutFieldFrame { 430, 315, 171, 34 }; // of the topmost field
    QSize ClearButtonSize { 56, 31 };
    std::array<QRect, 2> LoadSaveButtonFrame { QRect(3, 419, 56, 31), QRect(61, 419, 56, 31) };
    std::array<QRect, 3> AssignOkCancelButtonFrame { QRect(540, 119, 56, 31),
        QRect(540, 15, 56, 31), QRect(460, 15, 56, 31) };

    InterfaceImage BackgroundImage;
    InterfaceImage ClearButtonImage;
    InterfaceImage ClearButtonOnPressImage;
    InterfaceImage ClearButtonDisableImage;
    InterfaceImage ClearButtonOffImage;
    // For Load and Save, the Off pictures show the button at rest. For the other three buttons,
    // they show it pressed.
    std::array<InterfaceImage, 2> LoadSaveButtonOffImage;
    std::array<InterfaceImage, 2> LoadSaveButtonImage;
    Images AssignOkCancelButtonImage;
    Images AssignOkCancelButtonOffImage;
    InterfaceImage AssignButtonDisableImage;

    [[nodiscard]] static const SetupTables& shared();

    static constexpr int ButtonColumns = 4;
    static constexpr int ButtonGap = 20;
    static constexpr int FieldGap = 15;
    static constexpr int FieldCount = static_cast<int>(ShortcutRecordCount);
    static constexpr int ClearButtonOffset = 114; // from the left end of its field

    [[nodiscard]] QRect buttonFrame(int index) const;
    [[nodiscard]] QRect fieldFrame(int index) const;
    [[nodiscard]] QRect clearButtonFrame(int index) const;
    // Converts a frame to the coordinates of Qt, with the origin at the upper left.
    [[nodiscard]] QRect inContent(const QRect& frame) const;
};

} // namespace kestrel
