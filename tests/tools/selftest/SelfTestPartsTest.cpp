#include "tools/selftest/PanelPicture.h"
#include "tools/selftest/Scene.h"
#include "tools/selftest/Tap.h"
#include "tools/stage/KeyLines.h"
#include "tools/stage/TemporaryFolder.h"

#include <QImage>

#include <gtest/gtest.h>

#include <sstream>

namespace kestrel::selftest {
namespace {

TEST(Tap, numbers_the_results_and_explains_them)
{
    std::ostringstream out;
    Tap tap(out);
    tap.plan(3);
    tap.ok("first");
    tap.notOk("second # of them", "is a\nand not b");
    tap.skip("third", "no permission");
    EXPECT_EQ(out.str(),
        "1..3\n"
        "ok 1 - first\n"
        "not ok 2 - second   of them\n"
        "# is a\n"
        "# and not b\n"
        "ok 3 - third # SKIP no permission\n");
    EXPECT_EQ(tap.passed(), 1u);
    EXPECT_EQ(tap.failed(), 1u);
    EXPECT_EQ(tap.skipped(), 1u);
}

TEST(Facts, are_read_up_to_the_next_one)
{
    const std::string answer = "visible=yes area=1,2,3,4 level=3";
    EXPECT_EQ(factOf(answer, "visible"), "yes");
    EXPECT_EQ(factOf(answer, "area"), "1,2,3,4");
    EXPECT_EQ(factOf(answer, "level"), "3");
    EXPECT_EQ(factOf(answer, "ible"), "");
    EXPECT_EQ(factOf("text=Key of two words", "text"), "Key of two words");
    EXPECT_EQ(factOf("menu=Plug-in Panel|Quit; area=1,2,3,4", "menu"), "Plug-in Panel|Quit");
}

TEST(KeyLines, are_told_from_others_and_shortened)
{
    EXPECT_TRUE(stage::isKeyLine("down S Command repeat=no t=1"));
    EXPECT_FALSE(stage::isKeyLine("focus in"));
    EXPECT_EQ(stage::briefKeyLine("down S Command repeat=no t=123 code=1"), "down S Command");
    EXPECT_EQ(stage::briefKeyLine("up S none repeat=no t=124"), "up S");
    EXPECT_EQ(stage::briefKeyLine("down A none repeat=yes t=124"), "down A");
}

TEST(PanelPicture, equals_the_approved_one_of_its_density_up_to_rounding)
{
    const stage::TemporaryFolder folder;
    const auto path = folder.path() / "panel.png";
    const auto differenceOf = [&path](QImage picture, int change) {
        picture = picture.convertToFormat(QImage::Format_RGB32);
        const QColor before = picture.pixelColor(5, 5);
        picture.setPixelColor(5, 5, QColor(before.red() + change, before.green(), before.blue()));
        picture.save(QString::fromStdString(path.string()));
        return differenceFromApproved(path, KESTREL_APPROVED_PANEL, "equaliser");
    };
    for (const char* density : { "@1x.png", "@2x.png" }) {
        const QImage approved(QStringLiteral(KESTREL_APPROVED_PANEL "/equaliser") + density);
        EXPECT_EQ(differenceOf(approved, 2), "");
        EXPECT_EQ(
            differenceOf(approved, 3), "1 pixels of the panel differ from the approved equaliser");
    }
    EXPECT_EQ(differenceOf(QImage(10, 10, QImage::Format_RGB32), 0),
        "the panel has 10 by 10 pixels, and no approved picture has");
}

} // namespace
} // namespace kestrel::selftest
