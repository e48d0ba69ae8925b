#include "sets/sheet/KeySheetFile.h"
#include "tests/sets/SetBuilder.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QImage>
#include <QXmlStreamReader>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

using Format = KeySheetFile::Format;
using Paper = KeySheet::Paper;

SetBuilder usual()
{
    SetBuilder builder;
    builder.title(1, "Save").record(1, 0, { 0x100000, 1, QStringLiteral("S"), false });
    builder.record(1, 1, { 0x80000, 96, QStringLiteral("F5"), false });
    return builder;
}

// Each text as long as no key has room for, of all kinds of characters.
SetBuilder overlong()
{
    const QString words = QStringLiteral("Bounce the whole mix to disk again ").repeated(20);
    SetBuilder builder;
    for (int key = 1; key <= 12; ++key) {
        builder.title(key, key % 2 ? words : QStringLiteral("字W").repeated(200));
        for (std::size_t record = 0; record < 4; ++record)
            builder.record(
                key, record, { 0x1E0000, 1, QStringLiteral("PAGE DOWN").repeated(20), false });
    }
    return builder;
}

KeySheet sheetOf(const SetBuilder& builder, Paper paper = Paper::A4)
{
    return { UserAssignFile(*builder.set()), QStringLiteral("Mixing"), paper };
}

std::vector<std::string> textsOf(const KeySheet& sheet)
{
    std::vector<std::string> texts;
    for (const KeySheet::Text& text : sheet.texts())
        texts.push_back(text.text.toStdString());
    return texts;
}

QRectF inkOf(const KeySheet::Text& text)
{
    return QFontMetricsF(text.font).tightBoundingRect(text.text).translated(text.baseline);
}

TEST(KeySheet, has_the_twelve_keys_in_three_rows_of_four)
{
    for (const Paper paper : { Paper::A4, Paper::Letter }) {
        const KeySheet sheet = sheetOf(SetBuilder(), paper);
        ASSERT_EQ(sheet.keys().size(), 12u);
        EXPECT_LT(sheet.keys()[0].right(), sheet.keys()[1].left());
        EXPECT_EQ(sheet.keys()[0].top(), sheet.keys()[3].top());
        EXPECT_LT(sheet.keys()[3].bottom(), sheet.keys()[4].top());
        EXPECT_EQ(sheet.keys()[0].left(), sheet.keys()[4].left());
        EXPECT_TRUE(QRectF({}, sheet.size())
                        .adjusted(300, 300, -300, -300)
                        .contains(sheet.keys()[0] | sheet.keys()[11]));
    }
}

TEST(KeySheet, shows_number_name_and_shortcuts_of_each_key)
{
    EXPECT_THAT(textsOf(sheetOf(usual())),
        testing::ElementsAre("Mixing", "1", "Save", "⌘S", "⌥F5", "2", "3", "4", "5", "6", "7", "8",
            "9", "10", "11", "12"));
}

TEST(KeySheet, no_text_leaves_its_place_and_each_place_is_in_its_key)
{
    for (const Paper paper : { Paper::A4, Paper::Letter }) {
        for (const SetBuilder& builder : { usual(), overlong() }) {
            const KeySheet sheet = sheetOf(builder, paper);
            for (const KeySheet::Text& text : sheet.texts())
                EXPECT_TRUE(text.place.adjusted(-8, -8, 8, 8).contains(inkOf(text)))
                    << text.text.toStdString();
            for (auto text = sheet.texts().begin() + 1; text != sheet.texts().end(); ++text)
                EXPECT_TRUE(std::any_of(sheet.keys().begin(), sheet.keys().end(),
                    [&](const QRectF& key) { return key.contains(text->place); }));
        }
    }
}

TEST(KeySheet, a_word_of_any_length_stays_in_its_place)
{
    for (int length = 1; length <= 60; ++length) {
        SetBuilder builder;
        const QString word = QStringLiteral("W").repeated(length);
        builder.title(1, word).record(1, 0, { 0x100000, 1, word, false });
        const KeySheet sheet = sheetOf(builder);
        for (const KeySheet::Text& text : sheet.texts())
            EXPECT_TRUE(text.place.adjusted(-8, -8, 8, 8).contains(inkOf(text))) << length;
    }
}

TEST(KeySheet, no_two_texts_of_a_key_overlap)
{
    for (const SetBuilder& builder : { usual(), overlong() }) {
        const KeySheet sheet = sheetOf(builder);
        for (std::size_t i = 1; i < sheet.texts().size(); ++i)
            EXPECT_FALSE(inkOf(sheet.texts()[i - 1]).intersects(inkOf(sheet.texts()[i])))
                << sheet.texts()[i].text.toStdString();
    }
}

TEST(KeySheet, a_long_name_stands_in_two_lines_and_a_longer_one_is_cut)
{
    const auto texts
        = textsOf(sheetOf(SetBuilder().title(1, "Consolidate clip and fade both ends")));
    EXPECT_EQ(texts[2] + ' ' + texts[3], "Consolidate clip and fade both ends");
    EXPECT_EQ(texts[4], "2");
    const auto cut = textsOf(sheetOf(overlong()));
    EXPECT_THAT(cut[3], testing::EndsWith("…"));
}

TEST(KeySheet, shortcuts_of_a_key_without_a_name_stand_in_its_middle)
{
    const SetBuilder builder = SetBuilder().record(1, 0, { 0, 96, QStringLiteral("F5"), false });
    const KeySheet sheet = sheetOf(builder);
    EXPECT_LT(inkOf(sheet.texts()[2]).center().y(), sheet.keys()[0].center().y() + 150);
}

TEST(KeySheet, a_name_with_line_breaks_stays_on_its_key)
{
    EXPECT_EQ(textsOf(sheetOf(SetBuilder().title(1, "a\n\tb")))[2], "a b");
}

TEST(KeySheetFile, the_format_is_that_of_the_extension)
{
    EXPECT_EQ(KeySheetFile::formatOf("keys.pdf"), Format::Pdf);
    EXPECT_EQ(KeySheetFile::formatOf("a.b/keys.SVG"), Format::Svg);
    EXPECT_EQ(KeySheetFile::formatOf("keys.png"), Format::Png);
    for (const char* const path : { "keys", "keys.ps", "pdf", "" })
        EXPECT_EQ(KeySheetFile::formatOf(path), std::nullopt) << path;
}

TEST(KeySheetFile, the_picture_has_the_shape_of_the_paper_and_black_lines_on_white)
{
    const auto picture = QImage::fromData(
        KeySheetFile::content(sheetOf(usual(), Paper::Letter), Format::Png), "PNG");
    EXPECT_EQ(picture.size(), QSize(2200, 1700));
    EXPECT_EQ(picture.pixelColor(0, 0), QColor(Qt::white));
    const QRectF key = sheetOf(usual(), Paper::Letter).keys()[0];
    EXPECT_LT(
        picture.pixelColor(qRound(key.left() * 200 / 720), qRound(key.center().y() * 200 / 720))
            .lightness(),
        60);
}

TEST(KeySheetFile, the_pdf_is_one_page_of_the_paper)
{
    const QByteArray pdf = KeySheetFile::content(sheetOf(usual()), Format::Pdf);
    EXPECT_TRUE(pdf.startsWith("%PDF-"));
    EXPECT_TRUE(pdf.contains("/MediaBox [0 0 842"))
        << pdf.mid(pdf.indexOf("/MediaBox"), 60).constData();
    EXPECT_EQ(pdf.count("/Type /Page\n"), 1);
}

TEST(KeySheetFile, the_svg_is_sound_xml_with_each_text)
{
    SetBuilder builder = usual();
    builder.title(2, "<A&B>\"");
    QXmlStreamReader reader(KeySheetFile::content(sheetOf(builder), Format::Svg));
    QStringList titles;
    int frames = 0;
    while (!reader.atEnd()) {
        reader.readNext();
        frames += reader.isStartElement()
            && reader.attributes().value(QStringLiteral("stroke")) == QStringLiteral("#000");
        if (reader.isStartElement() && reader.name() == u"title")
            titles.append(reader.readElementText());
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    EXPECT_EQ(frames, 12);
    EXPECT_TRUE(titles.contains("<A&B>\""));
    EXPECT_TRUE(titles.contains("⌥F5"));
}

} // namespace
} // namespace kestrel::test
