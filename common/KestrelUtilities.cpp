#include "common/KestrelUtilities.h"

#include "platform/KeyCodes.h"

namespace kestrel {

InterfaceImage KestrelUtilities::imageAtPath(const QString& path)
{
    return InterfaceImage::named(path);
}

void KestrelUtilities::getDrawRatio(
    const QRectF& rect, const InterfaceImage& image, double& widthRatio, double& heightRatio, bool)
{
    widthRatio = rect.width() / image.width();
    heightRatio = rect.height() / image.height();
}

QString KestrelUtilities::getShortcutKey(
    std::uint64_t keyFlags, std::uint64_t, const QString& inputStr)
{
    if (inputStr.isEmpty())
        return {};
    const auto flags = static_cast<ModifierFlags>(keyFlags);
    QString text;
    if (flags & Modifier::Shift)
        text += u'\u21EA';
    if (flags & Modifier::Control)
        text += u'^';
    if (flags & Modifier::Option)
        text += u'\u2325';
    if (flags & Modifier::Command)
        text += u'\u2318';
    if (!text.isEmpty())
        text += u'+';
    return text + inputStr;
}

} // namespace kestrel
