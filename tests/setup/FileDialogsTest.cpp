#include "archive/ArchiveObject.h"
#include "archive/KeyedArchive.h"
#include "tests/setup/SetupBench.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>

namespace kestrel::test {
namespace {

using Calls = std::vector<std::string>;

struct DialogBench : SetupBench {
    DialogBench()
    {
        open();
        activate(*controller.window());
    }
    [[nodiscard]] QFileDialog* sheet() const
    {
        const auto sheets = controller.window()->findChildren<QFileDialog*>();
        return sheets.isEmpty() ? nullptr : sheets.back(); // closed sheets are deleted later
    }
    // Names the file in the sheet and presses its default button.
    void choose(const QString& path) const
    {
        sheet()->findChild<QLineEdit*>()->setText(path);
        QMetaObject::invokeMethod(sheet(), "accept");
    }
    [[nodiscard]] QString path(const QString& name) const { return folder.filePath(name); }
    QString savedFile(const QString& text)
    {
        UserAssignFile set;
        set.initShortcutArray();
        set.getSwitchShortcut(1)->replace(2, text);
        EXPECT_TRUE(AssignmentFiles(attributes).write(path("a.ZKCF"), set));
        return path("a.ZKCF");
    }
    QString damagedFile()
    {
        QFile file(path("bad.ZKCF"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write("bad") == 3);
        return file.fileName();
    }

    QTemporaryDir folder;
};

// Calls `handle` with the next alert once it is open.
void whenAlerted(const std::function<void(QMessageBox&)>& handle)
{
    QTimer::singleShot(0, qApp, [handle] {
        auto* alert = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (alert)
            handle(*alert);
        else
            whenAlerted(handle);
    });
}

TEST(FileDialogs, load_opens_a_sheet_for_one_existing_assignment_file)
{
    DialogBench bench;
    bench.controller.load();
    ASSERT_NE(bench.sheet(), nullptr);
    EXPECT_EQ(bench.sheet()->windowModality(), Qt::WindowModal);
    EXPECT_EQ(bench.sheet()->parentWidget(), bench.controller.window());
    EXPECT_EQ(bench.sheet()->windowTitle(), u"Open Kestrel Console File");
    EXPECT_EQ(bench.sheet()->fileMode(), QFileDialog::ExistingFile);
    EXPECT_EQ(bench.sheet()->acceptMode(), QFileDialog::AcceptOpen);
    EXPECT_EQ(bench.sheet()->nameFilters(), QStringList { "Kestrel Console File (*.ZKCF)" });
    EXPECT_TRUE(bench.controller.visibleFileDialog());
    bench.sheet()->reject();
}

TEST(FileDialogs, save_opens_a_sheet_that_adds_the_extension_and_asks_before_replacing)
{
    DialogBench bench;
    bench.controller.save();
    ASSERT_NE(bench.sheet(), nullptr);
    EXPECT_EQ(bench.sheet()->windowModality(), Qt::WindowModal);
    EXPECT_EQ(bench.sheet()->acceptMode(), QFileDialog::AcceptSave);
    EXPECT_EQ(bench.sheet()->defaultSuffix(), u"ZKCF");
    EXPECT_FALSE(bench.sheet()->testOption(QFileDialog::DontConfirmOverwrite));
    EXPECT_TRUE(bench.controller.visibleFileDialog());
    bench.sheet()->reject();
}

TEST(FileDialogs, the_first_one_opens_among_the_documents_and_each_later_one_where_the_last_one_was)
{
    const QTemporaryDir home;
    const QByteArray oldHome = qgetenv("HOME");
    qputenv("HOME", home.path().toUtf8());
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    EXPECT_TRUE(documents.startsWith(home.path())) << documents.toStdString();
    {
        DialogBench bench;
        bench.controller.save();
        EXPECT_EQ(bench.sheet()->directory(), QDir(home.path())) << "there are no documents";
        bench.choose(bench.path("a.ZKCF"));
    }
    QDir().mkpath(documents);
    DialogBench bench;
    bench.controller.save();
    EXPECT_EQ(bench.sheet()->directory(), QDir(documents));
    bench.choose(bench.path("a.ZKCF"));
    bench.controller.load();
    EXPECT_EQ(bench.sheet()->directory(), QDir(bench.folder.path()));
    bench.sheet()->reject();
    qputenv("HOME", oldHome);
}

TEST(FileDialogs, both_close_rename_boxes)
{
    DialogBench bench;
    bench.give(1, 0, 0, 0, "A");
    bench.controller.setupUI(*bench.live);
    doubleClick(bench.button(0));
    bench.controller.load();
    EXPECT_EQ(bench.button(0).editBox(), nullptr);
    bench.sheet()->reject();
}

TEST(FileDialogs, saving_closes_rename_boxes_too)
{
    DialogBench bench;
    bench.give(1, 0, 0, 0, "A");
    bench.controller.setupUI(*bench.live);
    doubleClick(bench.button(0));
    bench.controller.save();
    EXPECT_EQ(bench.button(0).editBox(), nullptr);
    bench.sheet()->reject();
}

TEST(FileDialogs, saving_shows_again_what_was_assigned)
{
    DialogBench bench;
    press(bench.field(0), Keys::F5);
    bench.controller.save();
    bench.choose(bench.path("new"));
    EXPECT_EQ(bench.field(0).stringValue(), u"");
    EXPECT_FALSE(bench.mayAssign());
}

TEST(FileDialogs, loading_gives_the_first_field_the_focus_anew)
{
    DialogBench bench;
    ASSERT_TRUE(bench.field(0).isFirstResponder());
    NotificationCounter counter(bench.center, NotificationName::hideUserAssignEditBox);
    EXPECT_TRUE(bench.controller.loadFile(bench.savedFile("X"), true));
    EXPECT_EQ(counter.objects, (std::vector<const QObject*> { &bench.field(0) }));
    EXPECT_TRUE(bench.field(0).isFirstResponder());
}

TEST(FileDialogs, a_chosen_file_is_shown)
{
    DialogBench bench;
    const QString path = bench.savedFile("X");
    bench.controller.load();
    bench.choose(path);
    EXPECT_EQ(bench.field(0).stringValue(), u"X");
    EXPECT_EQ(bench.liveText(1), u"");
}

TEST(FileDialogs, a_file_without_the_extension_cannot_be_loaded_by_typing_its_name)
{
    DialogBench bench;
    const QString path = bench.savedFile("X");
    for (const char* name : { "set.txt", "plain", "a.ZKCF.bak" }) {
        ASSERT_TRUE(QFile::copy(path, bench.path(name)));
        bench.controller.load();
        bench.choose(bench.path(name));
        EXPECT_TRUE(bench.sheet()->isVisible()) << name;
        EXPECT_EQ(bench.field(0).stringValue(), u"") << name;
        bench.sheet()->reject();
    }
    ASSERT_TRUE(QFile::copy(path, bench.path("small.zkcf")));
    bench.controller.load();
    bench.choose(bench.path("small.zkcf"));
    EXPECT_EQ(bench.field(0).stringValue(), u"X");
}

TEST(FileDialogs, closing_a_sheet_hides_nothing_and_the_next_window_that_closes_hides_again)
{
    DialogBench bench;
    press(bench.field(0), Keys::F5);
    bench.controller.load();
    bench.sheet()->reject();
    EXPECT_EQ(bench.calls, Calls {});
    EXPECT_FALSE(bench.controller.visibleFileDialog());
    EXPECT_EQ(bench.field(0).stringValue(), u"F5");
    bench.controller.cancel();
    EXPECT_EQ(bench.calls, Calls { "hide" });
}

TEST(FileDialogs, a_panel_that_closes_without_a_notification_leaves_no_marker_behind)
{
    DialogBench bench;
    qApp->removeEventFilter(&bench.observer);
    bench.controller.load();
    bench.sheet()->reject();
    EXPECT_FALSE(bench.controller.visibleFileDialog());
    bench.controller.save();
    bench.sheet()->reject();
    EXPECT_FALSE(bench.controller.visibleFileDialog());
}

TEST(FileDialogs, a_file_that_is_none_shows_invalid_file_and_the_window_keeps_what_it_shows)
{
    DialogBench bench;
    const QString path = bench.damagedFile();
    press(bench.field(0), Keys::F5);
    QString message;
    QString informative;
    QStringList buttons;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    bool isModal = false;
    whenAlerted([&](QMessageBox& alert) {
        message = alert.text();
        informative = alert.informativeText();
        icon = alert.icon();
        isModal = alert.isModal();
        for (const QAbstractButton* button : alert.buttons())
            buttons.append(button->text().remove('&'));
        alert.accept();
    });
    bench.controller.load();
    bench.choose(path);
    EXPECT_EQ(message, u"Kestrel Console");
    EXPECT_EQ(informative, u"Invalid file.");
    EXPECT_EQ(buttons, QStringList { "OK" });
    EXPECT_EQ(icon, QMessageBox::Critical);
    EXPECT_TRUE(isModal);
    EXPECT_EQ(bench.field(0).stringValue(), u"F5");
    EXPECT_TRUE(bench.controller.isVisible());
    EXPECT_EQ(bench.calls, Calls {});
}

TEST(FileDialogs, saving_writes_the_working_copy_and_the_names_and_leaves_the_live_set)
{
    DialogBench bench;
    press(bench.field(0), Keys::F5);
    bench.controller.assign();
    bench.button(0).setUniqueName("Name");
    bench.controller.save();
    bench.choose(bench.path("new"));
    const auto saved = AssignmentFiles(bench.attributes).read(bench.path("new.ZKCF"));
    ASSERT_NE(saved, nullptr);
    EXPECT_EQ(saved->getSwitchShortcut(1)->at(2), ArchiveValue(QString("F5")));
    EXPECT_EQ(saved->getShortcutTitle(1), u"Name");
    EXPECT_EQ(saved->count(), 12U);
    EXPECT_EQ(bench.liveText(1), u"");
    EXPECT_EQ(bench.calls, Calls {});
}

TEST(FileDialogs, saving_writes_what_is_edited_also_when_the_panel_was_closed_meanwhile)
{
    DialogBench bench;
    press(bench.field(0), Keys::F5);
    bench.controller.assign();
    bench.controller.save();
    bench.center.post(NotificationName::windowWillClose);
    bench.calls.clear();
    bench.choose(bench.path("new"));
    const auto saved = AssignmentFiles(bench.attributes).read(bench.path("new.ZKCF"));
    ASSERT_NE(saved, nullptr);
    EXPECT_EQ(saved->getSwitchShortcut(1)->at(2), ArchiveValue(QString("F5")));
    EXPECT_EQ(bench.calls, Calls {}) << "the application stays";
}

TEST(FileDialogs, a_typed_name_gets_the_extension_whatever_follows_its_last_point)
{
    DialogBench bench;
    for (const auto& [typed, name] : { std::pair { "plain", "plain.ZKCF" },
             { "take 1.2", "take 1.2.ZKCF" }, { "small.zkcf", "small.zkcf" },
             { "whole.ZKCF", "whole.ZKCF" }, { "end.", "end..ZKCF" } }) {
        bench.controller.save();
        bench.choose(bench.path(typed));
        EXPECT_TRUE(QFileInfo::exists(bench.path(name))) << typed;
    }
    EXPECT_EQ(QDir(bench.folder.path()).entryList(QDir::Files).size(), 5);
}

TEST(FileDialogs, the_question_about_replacing_is_about_the_name_with_the_extension)
{
    DialogBench bench;
    QFile old(bench.path("take 1.2.ZKCF"));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    QString question;
    whenAlerted([&](QMessageBox& alert) {
        question = alert.text();
        alert.button(QMessageBox::No)->click();
    });
    bench.controller.save();
    bench.choose(bench.path("take 1.2"));
    EXPECT_TRUE(question.contains("take 1.2.ZKCF already exists")) << question.toStdString();
    EXPECT_EQ(QFileInfo(old).size(), 0);
    bench.sheet()->reject();
}

TEST(FileDialogs, a_folder_that_is_typed_is_gone_into)
{
    DialogBench bench;
    ASSERT_TRUE(QDir(bench.folder.path()).mkdir("sub"));
    bench.controller.save();
    bench.choose(bench.path("sub"));
    EXPECT_TRUE(bench.sheet()->isVisible());
    EXPECT_EQ(bench.sheet()->directory(), QDir(bench.path("sub")));
    bench.sheet()->reject();
}

TEST(FileDialogs, saving_over_a_file_asks_first_and_no_keeps_it)
{
    DialogBench bench;
    const QString path = bench.savedFile("X");
    whenAlerted([](QMessageBox& alert) { alert.button(QMessageBox::No)->click(); });
    bench.controller.save();
    bench.choose(path);
    EXPECT_TRUE(bench.controller.visibleFileDialog());
    EXPECT_EQ(bench.calls, Calls {});
    bench.sheet()->reject();
    EXPECT_EQ(bench.calls, Calls {});
    EXPECT_EQ(AssignmentFiles(bench.attributes).read(path)->getSwitchShortcut(1)->at(2),
        ArchiveValue(QString("X")));
}

TEST(FileDialogs, a_cancelled_save_writes_nothing)
{
    DialogBench bench;
    bench.controller.save();
    bench.sheet()->findChild<QLineEdit*>()->setText(bench.path("new.ZKCF"));
    bench.sheet()->reject();
    EXPECT_FALSE(QFileInfo::exists(bench.path("new.ZKCF")));
}

TEST(FileDialogs, a_save_that_fails_is_silent)
{
    DialogBench bench;
    bench.controller.save();
    const QString path = bench.path("gone/new.ZKCF");
    ASSERT_TRUE(QDir(bench.folder.path()).mkdir("gone"));
    bench.sheet()->findChild<QLineEdit*>()->setText(path);
    ASSERT_TRUE(QDir(bench.folder.path()).rmdir("gone"));
    static_cast<QDialog*>(bench.sheet())->done(QDialog::Accepted);
    EXPECT_FALSE(QFileInfo::exists(path));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(bench.calls, Calls {});
}

TEST(FileDialogs, a_save_that_fails_leaves_what_is_typed)
{
    DialogBench bench;
    press(bench.field(0), Keys::F5);
    bench.controller.save();
    ASSERT_TRUE(QDir(bench.folder.path()).mkdir("gone"));
    bench.sheet()->findChild<QLineEdit*>()->setText(bench.path("gone/new.ZKCF"));
    ASSERT_TRUE(QDir(bench.folder.path()).rmdir("gone"));
    static_cast<QDialog*>(bench.sheet())->done(QDialog::Accepted);
    EXPECT_EQ(bench.field(0).stringValue(), u"F5");
    EXPECT_TRUE(bench.mayAssign());
}

TEST(FileDialogs, save_offers_assignment_files_only)
{
    DialogBench bench;
    bench.controller.save();
    ASSERT_NE(bench.sheet(), nullptr);
    EXPECT_EQ(bench.sheet()->nameFilters(), QStringList { "Kestrel Console File (*.ZKCF)" });
    bench.sheet()->reject();
}

TEST(FileDialogs, saving_through_the_panel_over_a_file_gives_a_fresh_one_with_its_codes)
{
    DialogBench bench;
    const QString path = bench.damagedFile();
    press(bench.field(0), Keys::F5);
    bench.controller.assign();
    whenAlerted([](QMessageBox& alert) { alert.button(QMessageBox::Yes)->click(); });
    bench.controller.save();
    bench.choose(path);
    const auto saved = AssignmentFiles(bench.attributes).read(path);
    ASSERT_NE(saved, nullptr);
    EXPECT_EQ(saved->getSwitchShortcut(1)->at(2).text(), u"F5");
    EXPECT_EQ(bench.attributes.codes(path.toStdString()),
        (FileCodes { .type = 0x55534153, .creator = 0x4B5A4C51 })); // USAS, KZLQ
}

TEST(FileDialogs, an_archive_of_another_object_shows_invalid_file_and_a_set_without_a_type_does_not)
{
    DialogBench bench;
    const auto write = [&](const UserAssignFile::Bytes& bytes) {
        QFile file(bench.path("x.ZKCF"));
        const auto size = static_cast<qint64>(bytes.size());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly)
            && file.write(reinterpret_cast<const char*>(bytes.data()), size) == size);
    };
    int alerts = 0;
    const auto load = [&] {
        bench.controller.load();
        bench.choose(bench.path("x.ZKCF"));
    };
    write(KeyedArchive::archivedData(QStringLiteral("text")));
    whenAlerted([&](QMessageBox& alert) {
        ++alerts;
        alert.accept();
    });
    load();
    EXPECT_EQ(alerts, 1);

    auto object = std::make_shared<ArchiveObject>(QStringList { "UserAssignFile", "NSObject" });
    UserAssignFile set;
    set.initShortcutArray();
    set.getSwitchShortcut(1)->replace(2, QStringLiteral("X"));
    object->encodeObject("orgShortcutArray", set.getShortcutArray());
    write(KeyedArchive::archivedData(object));
    load();
    EXPECT_EQ(alerts, 1);
    EXPECT_EQ(bench.field(0).stringValue(), u"X");
}

} // namespace
} // namespace kestrel::test
