#pragma once

#include "tests/setup/SetupBench.h"
#include "tests/support/ApprovedPicture.h"

#include <QBackingStore>
#include <QTest>

namespace kestrel::test {

// The setup window on the screen, for comparisons with approved pictures.
struct ShownSetup : SetupBench {
    ShownSetup()
    {
        open();
        activate(*controller.window());
    }

    void fillAll()
    {
        using namespace Modifier;
        give(1, 0, Command, 1, "S");
        give(2, 0, Command, 6, "Z");
        give(2, 1, Command | Shift, 6, "Z");
        give(3, 0, 0, 49, "SPACE");
        give(3, 1, Control | Option, 96, "F5");
        give(3, 2, Option, 1, "S");
        give(4, 0, Shift | Control | Option | Command, 121, "PAGE DOWN");
        give(4, 1, Shift, 48, "TAB");
        give(4, 2, 0, 87, "NUM 5");
        give(4, 3, Command, 123, u"\u2190"_qs);
        for (int number = 5; number <= 12; ++number)
            give(number, 0, Command, static_cast<KeyCode>(18 + number), QString::number(number));
        live->setShortcutTitle("Save", 5);
        live->setShortcutTitle("Trim to selection", 6);
        live->setShortcutTitle("Loop playback on / off & count in", 7);
        live->setShortcutTitle("Mute", 9);
        controller.setupUI(*live);
    }

    // What the window has painted for the screen, in the pixels of the screen. QWidget::render()
    // would paint anew, and the controls would not know the density of that picture.
    [[nodiscard]] QImage picture() const
    {
        // One turn of the event loop may end before it has painted all that has changed.
        for (int turn = 0; turn < 3; ++turn)
            QCoreApplication::processEvents();
        QBackingStore* painted = controller.window()->backingStore();
        return dynamic_cast<const QImage&>(*painted->paintDevice()).copy();
    }

    void compare(const QString& name) const
    {
        // Rendering of text may differ by this much of 255 between versions of the font library.
        constexpr int Tolerance = 8;
        compareWithApproved(
            QStringLiteral("setup/") + name, picture(), Tolerance, Fonts::OfTheSystem);
    }
};

} // namespace kestrel::test
