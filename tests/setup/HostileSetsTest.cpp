#include "tests/setup/ProcessorTime.h"
#include "tests/setup/SetupBench.h"

namespace kestrel::test {
namespace {

std::shared_ptr<UserAssignFile> emptySet()
{
    auto set = std::make_shared<UserAssignFile>();
    set->initShortcutArray();
    return set;
}

ButtonEntry entryOf(ArchiveArray values)
{
    return std::make_shared<ArchiveArray>(std::move(values));
}

// Shows the set as if it were loaded, selects every button, assigns, saves, and reads the file.
std::shared_ptr<UserAssignFile> shownAndSaved(SetupBench& bench, const UserAssignFile& set)
{
    bench.open();
    const auto loaded = UserAssignFile::fromFileImage(set.fileImage());
    bench.controller.setupUI(*loaded);
    for (int i = 0; i < 12; ++i) {
        click(bench.button(i));
        doubleClick(bench.button(i));
        bench.controller.window()->grab();
        bench.controller.assign();
    }
    UserAssignFile saved;
    saved.initShortcutArray();
    bench.controller.changeShortcut(saved);
    return UserAssignFile::fromFileImage(saved.fileImage());
}

TEST(HostileSets, elements_of_wrong_kinds_are_shown_as_empty_and_saved_as_they_came)
{
    SetupBench bench;
    const auto set = emptySet();
    const ArchiveArray odd { QString("x"), QByteArray("y"), 5, QString("yes"), ArchiveValue(), 1.5,
        QByteArray("z"), 0, entryOf({ 1, 2 }), entryOf({}), entryOf({ 3 }), 0, true, true, true,
        true };
    set->getShortcutArray()->set(1, entryOf(odd));
    set->getShortcutTitleArray()->set(1, 42);
    const auto saved = shownAndSaved(bench, *set);
    EXPECT_EQ(*saved->getSwitchShortcut(1), odd);
    EXPECT_EQ(bench.shownFields(), "0");
    EXPECT_EQ(saved->getShortcutTitle(1), u"");
}

TEST(HostileSets, short_and_long_entries_keep_their_sixteen_elements)
{
    SetupBench bench;
    const auto set = emptySet();
    ArchiveArray seventeen;
    for (int i = 0; i < 17; ++i)
        seventeen.append(i % 4 == 2 ? ArchiveValue(QString("T")) : ArchiveValue(i));
    set->getShortcutArray()->set(1, entryOf(seventeen));
    set->getShortcutArray()->set(2, entryOf({ 0x100000, 1, QString("S") }));
    set->getShortcutArray()->set(3, entryOf({}));
    const auto saved = shownAndSaved(bench, *set);
    EXPECT_EQ(saved->getSwitchShortcut(1)->size(), 16U);
    EXPECT_EQ(saved->getSwitchShortcut(1)->at(14).text(), u"T");
    EXPECT_EQ(saved->getSwitchShortcut(2)->at(2).text(), u"S");
    EXPECT_EQ(*saved->getSwitchShortcut(3), *emptySet()->getSwitchShortcut(3));
}

TEST(HostileSets, keys_that_are_no_button_numbers_touch_no_button)
{
    SetupBench bench;
    bench.give(1, 0, 0, 0, "A");
    UserAssignFile set;
    set.initShortcutArray();
    for (const ArchiveValue& key : { ArchiveValue(0), ArchiveValue(-1), ArchiveValue(13),
             ArchiveValue(QString("1")), ArchiveValue(1.5), ArchiveValue(QByteArray("1")),
             ArchiveValue(4294967297), ArchiveValue(std::int64_t { 1 } << 62) })
        set.getShortcutArray()->set(key, entryOf({ 0, 0, QString("intruder"), 0 }));
    set.getShortcutArray()->set(1, 7); // no entry: button 1 stays as it is
    bench.open();
    bench.controller.setupUI(set);
    EXPECT_EQ(bench.field(0).stringValue(), u"A");
    for (int i = 1; i < 12; ++i)
        EXPECT_EQ(bench.button(i).getEntryShortcutNum(), 0) << i;
    bench.controller.ok();
    EXPECT_EQ(bench.live->count(), 12U);
}

TEST(HostileSets, tables_that_are_no_dictionaries_are_an_empty_set)
{
    SetupBench bench;
    bench.give(1, 0, 0, 0, "A");
    bench.controller.setupShortcut(*bench.live);
    bench.open();
    bench.controller.setupUI(*setOf(QString("none"), entryOf({ 1 })));
    EXPECT_EQ(bench.field(0).stringValue(), u"A");
}

TEST(HostileSets, texts_of_every_sort_come_back_to_the_letter)
{
    const QString texts[] { QString(100'000, 'W'), QString(100'000, QChar(0x301)),
        QString(100'000, QChar(0x200B)), u"\u0634\u0643\u0631\u0627 (RTL) \u202E abc"_qs,
        u"a\nb\rc\td\u0001\u001B"_qs, QString("Save & close && go"),
        u"\U0001F3B9\U0001F3B9"_qs.repeated(40), QString("<b>bold</b>"), QString(500, '\n') };
    for (const QString& text : texts) {
        SetupBench bench;
        const auto set = emptySet();
        set->getSwitchShortcut(1)->replace(2, text);
        set->getSwitchShortcut(2)->replace(2, QString("S"));
        set->setShortcutTitle(text, 2);
        const auto saved = shownAndSaved(bench, *set);
        EXPECT_EQ(saved->getSwitchShortcut(1)->at(2).text(), text);
        EXPECT_EQ(saved->getShortcutTitle(2), text);
    }
}

TEST(HostileSets, enormous_names_are_drawn_within_a_moment)
{
    for (const char16_t c : { u'i', u'W', u'\u0301', u'\u200B', u'\u0634' }) {
        SetupBench bench;
        bench.button(0).setUniqueName(QString(100'000, c));
        bench.field(0).setTitleWithMnemonic(QString(100'000, c));
        const ProcessorTime time;
        bench.button(0).grab();
        bench.field(0).grab();
        EXPECT_LT(time.elapsedMs(), 100) << static_cast<int>(c);
    }
}

} // namespace
} // namespace kestrel::test
