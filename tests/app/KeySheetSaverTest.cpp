#include "app/KeySheetDialog.h"
#include "tests/app/AppDelegateBench.h"

#include <QFileInfo>
#include <QImage>
#include <QLineEdit>

#include <gmock/gmock.h>

#include <utility>

namespace kestrel::test {
namespace {

// The program with its file dialogs drawn by Qt, so that they can be used here.
class KeySheetSaver : public testing::Test {
protected:
    KeySheetSaver() { QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }

    KeySheetDialog* choose()
    {
        for (QAction* const item : LaunchedBench::menu().actions()) {
            if (item->objectName() == QStringLiteral("saveKeySheet"))
                item->trigger();
        }
        return dialog();
    }
    static KeySheetDialog* dialog()
    {
        for (QWidget* const widget : QApplication::topLevelWidgets()) {
            if (auto* const dialog = dynamic_cast<KeySheetDialog*>(widget);
                dialog && dialog->isVisible())
                return dialog;
        }
        return nullptr;
    }
    static QMessageBox* alert()
    {
        for (QWidget* const widget : QApplication::topLevelWidgets()) {
            if (auto* const alert = qobject_cast<QMessageBox*>(widget); alert && alert->isVisible())
                return alert;
        }
        return nullptr;
    }
    void saveAs(const QString& name)
    {
        auto* const dialog = choose();
        ASSERT_NE(dialog, nullptr);
        dialog->findChild<QLineEdit*>("fileNameEdit")->setText(m_bench.folder.filePath(name));
        dialog->accept();
        QCoreApplication::processEvents();
    }
    [[nodiscard]] QByteArray saved(const QString& name) const
    {
        QFile file(m_bench.folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    LaunchedBench m_bench;
};

TEST_F(KeySheetSaver, saves_the_live_set_in_the_format_of_the_name)
{
    m_bench.delegate->myUserAssignFile()->setShortcutTitle("Save <now>", 1);
    saveAs("keys.svg");
    EXPECT_TRUE(saved("keys.svg").contains("<title>Save &lt;now&gt;</title>"));
    saveAs("keys.png");
    EXPECT_FALSE(QImage::fromData(saved("keys.png"), "PNG").isNull());
    EXPECT_EQ(alert(), nullptr);
}

TEST_F(KeySheetSaver, adds_the_extension_to_a_name_without_one)
{
    saveAs("Mixing 2.1");
    EXPECT_TRUE(saved("Mixing 2.1.pdf").startsWith("%PDF-"));
}

TEST_F(KeySheetSaver, a_later_dialog_opens_where_the_last_one_was)
{
    ASSERT_TRUE(QDir(m_bench.folder.path()).mkdir("sheets"));
    saveAs("sheets/keys.pdf");
    auto* const dialog = choose();
    EXPECT_EQ(dialog->directory(), QDir(m_bench.folder.filePath("sheets")));
    dialog->reject();
}

TEST_F(KeySheetSaver, tells_why_nothing_was_saved)
{
    static_cast<FakeDocumentFiles&>(*m_bench.platform.documentFiles).failure
        = "No space left on device";
    saveAs("keys.pdf");
    ASSERT_NE(alert(), nullptr);
    EXPECT_EQ(alert()->text(), "The key sheet could not be saved.");
    EXPECT_EQ(alert()->informativeText(), "keys.pdf: No space left on device");
    alert()->accept();
}

TEST_F(KeySheetSaver, has_one_dialog_at_a_time)
{
    auto* const dialog = choose();
    EXPECT_EQ(choose(), dialog);
    dialog->reject();
}

TEST_F(KeySheetSaver, chosen_again_as_soon_as_its_dialog_has_closed_opens_another_one)
{
    auto* const first = choose();
    ASSERT_NE(first, nullptr);
    first->reject();
    auto* const second = choose(); // the first one has not been deleted yet
    ASSERT_NE(second, nullptr);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    second->findChild<QLineEdit*>("fileNameEdit")->setText(m_bench.folder.filePath("keys.pdf"));
    second->accept();
    EXPECT_TRUE(saved("keys.pdf").startsWith("%PDF-"));
    EXPECT_EQ(dialog(), nullptr);
}

TEST_F(KeySheetSaver, closing_the_dialog_leaves_what_is_edited_in_the_setup_window)
{
    m_bench.delegate->userAssign();
    const ButtonEntry working = m_bench.setup().myShortcutArray()->value(1).array();
    working->replace(ShortcutRecord::Text, QStringLiteral("S"));
    auto* const dialog = choose();
    dialog->close();
    QCoreApplication::processEvents();
    EXPECT_EQ(this->dialog(), nullptr);
    EXPECT_TRUE(m_bench.setup().isVisible());
    EXPECT_EQ(working->at(ShortcutRecord::Text).text(), QStringLiteral("S"));
}

TEST_F(KeySheetSaver, brings_back_the_application_before_once_nothing_is_open)
{
    const auto calls = [this] { return std::exchange(m_bench.workspace.calls, {}); };
    choose();
    static_cast<void>(calls());
    dialog()->reject();
    QCoreApplication::processEvents();
    EXPECT_THAT(calls(), testing::ElementsAre("hide"));
    saveAs("keys.svg");
    EXPECT_THAT(calls(), testing::ElementsAre("activate", "hide"));
    static_cast<FakeDocumentFiles&>(*m_bench.platform.documentFiles).failure = "No space";
    saveAs("again.svg");
    ASSERT_NE(alert(), nullptr);
    EXPECT_THAT(calls(), testing::ElementsAre("activate", "activate"));
    alert()->accept();
    EXPECT_THAT(calls(), testing::ElementsAre("hide"));
    m_bench.delegate->showActivity();
    choose()->reject();
    EXPECT_THAT(calls(), testing::ElementsAre("activate", "activate"));
}

TEST_F(KeySheetSaver, the_program_ends_with_the_dialog_open)
{
    choose();
    m_bench.terminate();
    EXPECT_EQ(dialog(), nullptr);
}

} // namespace
} // namespace kestrel::test
