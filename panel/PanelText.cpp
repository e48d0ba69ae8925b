#include "panel/PanelText.h"

#include <string_view>

namespace kestrel::PanelText {

namespace {
constexpr std::array<const char16_t*, 0x20> LowGlyphs { u" ", u" ", u" ", u" ", u" ", u" ", u" ",
    u" ", u" ", u" ", u" ", u" ", u" ", u" ", u" ", u" ", u"11", u"12", u"13", u"14", u"█", u"▐",
    u"▐", u"▐", u"▐", u"♪", u"°C", u"°F", u"▼", u"▶", u"◀", u"▲" };
constexpr std::uint8_t RightArrow = 0x7E;
constexpr std::uint8_t LeftArrow = 0x7F;

constexpr std::array<const char*, PanelLayout::Switches> SwitchNames { "INSERT/PARAM", "ASSIGN",
    "SELECT 1", "SELECT 2", "SELECT 3", "SELECT 4", "BYPASS", "COMPARE" };

QString zoneText(const PanelZones& zones, std::size_t zone)
{
    QString text;
    for (const std::uint8_t code : zones[zone])
        text += glyph(code);
    return text.simplified();
}

// Screen readers skip a hyphen but speak the minus sign.
QString withMinusSign(QString value)
{
    for (qsizetype i = 0; i + 1 < value.size(); ++i) {
        const bool isFirst = i == 0 || value[i - 1].isSpace();
        if (isFirst && value[i] == u'-' && (value[i + 1].isDigit() || value[i + 1] == u'.'))
            value[i] = QChar(0x2212);
    }
    return value;
}

QString litLamps(KnobRing ring)
{
    const int position = ring.position();
    if (position == 0)
        return QStringLiteral("dark");
    switch (ring.mode()) {
    case KnobRing::Mode::OneLamp:
        return QStringLiteral("lamp %1 of %2").arg(position).arg(KnobRing::Lamps);
    case KnobRing::Mode::FromMiddle:
        return QStringLiteral("from the middle to lamp %1 of %2")
            .arg(position)
            .arg(KnobRing::Lamps);
    case KnobRing::Mode::FromFirst:
        return QStringLiteral("from the first to lamp %1 of %2").arg(position).arg(KnobRing::Lamps);
    case KnobRing::Mode::BothSides:
        break;
    }
    if (position == 1)
        return QStringLiteral("the middle lamp");
    return position == 2 ? QStringLiteral("1 lamp to each side of the middle")
                         : QStringLiteral("%1 lamps to each side of the middle").arg(position - 1);
}
} // namespace

QString glyph(std::uint8_t code)
{
    if (code < LowGlyphs.size())
        return QString::fromUtf16(LowGlyphs[code]);
    if (code == RightArrow)
        return QStringLiteral("→");
    if (code == LeftArrow)
        return QStringLiteral("←");
    return code < RightArrow ? QString(QChar(code)) : QStringLiteral(" ");
}

QString row(const PanelZones& zones, std::size_t row)
{
    QString text;
    for (std::size_t i = 0; i < PanelLayout::ZonesPerRow; ++i) {
        if (i > 0)
            text += QLatin1Char(' ');
        for (const std::uint8_t code : zones[row * PanelLayout::ZonesPerRow + i])
            text += glyph(code);
    }
    while (text.endsWith(QLatin1Char(' ')))
        text.chop(1);
    return text;
}

QString knobName(const std::optional<PanelZones>& zones, std::size_t knob)
{
    const QString upper = zones ? zoneText(*zones, knob) : QString();
    const QString lower
        = zones ? withMinusSign(zoneText(*zones, PanelLayout::ZonesPerRow + knob)) : QString();
    const QString name = upper.isEmpty() ? QStringLiteral("Knob %1").arg(knob + 1) : upper;
    return lower.isEmpty() ? name : name + QStringLiteral(", ") + lower;
}

QString parameter(const PanelZones& zones, std::size_t knob)
{
    const QString name = zoneText(zones, knob);
    const QString value = withMinusSign(zoneText(zones, PanelLayout::ZonesPerRow + knob));
    return (name + QLatin1Char(' ') + value).trimmed();
}

QString ring(KnobRing ring)
{
    if (!ring.hasPicture())
        return QStringLiteral("not shown");
    return ring.isLowerLampLit() ? litLamps(ring) + QStringLiteral(", lower lamp lit")
                                 : litLamps(ring);
}

QString switchName(std::size_t lamp)
{
    return QString::fromLatin1(SwitchNames[lamp]);
}

QString lampState(bool isLit)
{
    return isLit ? QStringLiteral("lit") : QStringLiteral("unlit");
}

} // namespace kestrel::PanelText
