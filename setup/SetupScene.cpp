#include "setup/SetupScene.h"

#include "common/KestrelUtilities.h"
#include "shortcut/ControlDrawing.h"
#include "shortcut/ShortcutImages.h"

#include <QPainter>

namespace kestrel {

namespace {

constexpr int RowHeight = 13; // of the pictures with the numbers of the keys
constexpr QPoint HeadingNumber(495, 61);
constexpr QPoint LegendNames(517, 357);
constexpr int NumberOffset = 2; // from a key to its number
constexpr int GlowReach = 16; // beyond the button
constexpr int RingReach = 3; // the ring lies on the rim around the field
constexpr double RingRadius = 5;
constexpr double QuietOpacity = 0.3;

struct Images {
    InterfaceImage below;
    InterfaceImage heading;
    InterfaceImage glow;
    std::array<InterfaceImage, 2> legend; // by ModifierNames
};

const Images& images()
{
    const auto load = [](const char* name) {
        return KestrelUtilities::imageAtPath(
            QStringLiteral("UserAssignable/") + QLatin1String(name));
    };
    static const Images images { load("Key_Numbers/below"), load("Key_Numbers/heading"),
        load("Assign_button/glow"), { load("Legend/option_command"), load("Legend/alt_super") } };
    return images;
}

void drawNumber(
    QPainter& painter, const InterfaceImage& numbers, int key, QPoint at, double opacity = 1)
{
    painter.save();
    painter.setClipRect(QRectF(at, QSizeF(numbers.width(), RowHeight)));
    drawImage(painter, numbers, at - QPoint(0, key * RowHeight), opacity);
    painter.restore();
}

} // namespace

QString SetupScene::heading() const
{
    const QString shortcuts = QStringLiteral("Shortcuts");
    return isKey() ? shortcuts + QStringLiteral(" \u00B7 U%1").arg(key + 1) : shortcuts;
}

void SetupScene::draw(QPainter& painter) const
{
    if (isKey())
        drawNumber(painter, images().heading, key, HeadingNumber);
    drawNumbers(painter);
    drawFields(painter);
    drawImage(painter, images().legend[static_cast<std::size_t>(names)], LegendNames);
    if (isWaiting) {
        const SetupTables& tables = SetupTables::shared();
        const QRect assign = tables.inContent(tables.AssignOkCancelButtonFrame[0]);
        drawImage(painter, images().glow, assign.topLeft() - QPoint(GlowReach, GlowReach));
    }
}

// The number below a key is quiet where the key shows the same number on its face.
void SetupScene::drawNumbers(QPainter& painter) const
{
    const SetupTables& tables = SetupTables::shared();
    const int width = static_cast<int>(images().below.width());
    for (int index = 0; index < UserAssignFile::ButtonCount; ++index) {
        const QRect frame = tables.inContent(tables.buttonFrame(index));
        const QPoint at(
            frame.x() + (frame.width() - width) / 2, frame.y() + frame.height() + NumberOffset);
        drawNumber(painter, images().below, index, at,
            numbered[static_cast<std::size_t>(index)] ? QuietOpacity : 1);
    }
}

void SetupScene::drawFields(QPainter& painter) const
{
    const SetupTables& tables = SetupTables::shared();
    for (int index = 0; index < SetupTables::FieldCount; ++index) {
        const QRect frame = tables.inContent(tables.fieldFrame(index));
        if (!used[static_cast<std::size_t>(index)])
            drawImage(painter, ShortcutImages::shared().FieldDisableImage, frame.topLeft());
        if (index == focused)
            drawFocusRing(
                painter, frame.adjusted(-RingReach, -RingReach, RingReach, RingReach), RingRadius);
    }
}

} // namespace kestrel
