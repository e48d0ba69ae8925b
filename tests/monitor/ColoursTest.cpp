#include "monitor/ActivityColours.h"

#include <QPalette>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace kestrel::test {
namespace {

// The relative luminance and the contrast ratio of the Web Content Accessibility Guidelines.
double luminance(const QColor& colour)
{
    const auto linear = [](double channel) {
        return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
        + 0.0722 * linear(colour.blueF());
}

double contrast(const QColor& one, const QColor& other)
{
    const auto [dark, light] = std::minmax({ luminance(one), luminance(other) });
    return (light + 0.05) / (dark + 0.05);
}

TEST(ActivityColours, every_text_is_legible_on_every_ground_beneath_it)
{
    constexpr double Legible = 4.5;
    for (const auto* colours : { &ActivityColours::dark(), &ActivityColours::light() }) {
        for (const QColor& ground :
            { colours->headTop, colours->headBottom, colours->list, colours->band }) {
            for (const QColor& text :
                { colours->text, colours->dim, colours->good, colours->warning, colours->bad })
                EXPECT_GE(contrast(text, ground), Legible)
                    << text.name().toStdString() << " on " << ground.name().toStdString();
        }
        for (const QColor& ground : { colours->keyTop, colours->keyBottom, colours->selected })
            EXPECT_GE(contrast(colours->text, ground), Legible) << ground.name().toStdString();
        EXPECT_GE(contrast(colours->displayText, colours->display), Legible);
        EXPECT_GE(contrast(colours->displayWarning, colours->display), 3);
    }
}

TEST(ActivityColours, follow_the_desktop)
{
    QPalette palette;
    palette.setColor(QPalette::Window, Qt::black);
    palette.setColor(QPalette::WindowText, Qt::white);
    EXPECT_EQ(&ActivityColours::of(palette), &ActivityColours::dark());
    palette.setColor(QPalette::Window, Qt::white);
    palette.setColor(QPalette::WindowText, Qt::black);
    EXPECT_EQ(&ActivityColours::of(palette), &ActivityColours::light());
}

} // namespace
} // namespace kestrel::test
