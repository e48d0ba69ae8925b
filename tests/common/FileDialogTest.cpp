#include "common/dialogs/FileDialog.h"

#include <QApplication>
#include <QCompleter>
#include <QFile>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>

#include <gmock/gmock.h>

#include <functional>

namespace kestrel::test {
namespace {

using testing::ElementsAre;
using Purpose = kestrel::FileDialog::Purpose;

// Dialogs drawn by Qt for files of two kinds, one after the other, and a home of the test's own.
class FileDialog : public testing::Test {
protected:
    FileDialog()
    {
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        qputenv("HOME", m_home.path().toUtf8());
    }
    ~FileDialog() override
    {
        delete m_dialog;
        qputenv("HOME", m_oldHome);
    }

    kestrel::FileDialog& open(Purpose purpose)
    {
        delete m_dialog;
        const QList<kestrel::FileDialog::Kind> kinds { { "Drawing", "svg" }, { "Text", "txt" } };
        m_dialog = new kestrel::FileDialog(purpose, kinds, m_folder, nullptr);
        m_dialog->show();
        return *m_dialog;
    }
    // Names a file of the home and presses the default button of the dialog.
    void choose(const QString& name)
    {
        nameField().setText(path(name));
        m_dialog->accept();
        m_chosen = m_dialog->chosenPath();
    }
    // The path that the user has chosen after this name was typed.
    [[nodiscard]] QString savedAs(const QString& name)
    {
        open(Purpose::Save);
        choose(name);
        return m_chosen;
    }

    [[nodiscard]] QLineEdit& nameField() const
    {
        return *m_dialog->findChild<QLineEdit*>("fileNameEdit");
    }
    [[nodiscard]] static QString documents()
    {
        return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    }
    [[nodiscard]] QString path(const QString& name) const { return m_home.filePath(name); }
    void makeFile(const QString& name) const
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }

    const QByteArray m_oldHome = qgetenv("HOME");
    const QTemporaryDir m_home;
    QString m_folder;
    QPointer<kestrel::FileDialog> m_dialog;
    QString m_chosen;
};

// Calls `look` with the question whether to replace a file once it is open, and answers it with
// yes.
void whenAsked(const std::function<void(QMessageBox&)>& look)
{
    QTimer::singleShot(0, qApp, [look] {
        auto* const question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!question)
            return whenAsked(look);
        look(*question);
        question->button(QMessageBox::Yes)->click();
    });
}

TEST_F(FileDialog, offers_its_kinds_and_the_first_one_is_chosen)
{
    const auto& dialog = open(Purpose::Open);
    EXPECT_THAT(dialog.nameFilters(), ElementsAre("Drawing (*.svg)", "Text (*.txt)"));
    EXPECT_EQ(dialog.selectedNameFilter(), "Drawing (*.svg)");
}

TEST_F(FileDialog, a_name_gets_the_extension_of_the_first_kind_unless_it_has_one_of_a_kind)
{
    EXPECT_EQ(savedAs("plain"), path("plain.svg"));
    EXPECT_EQ(savedAs("take 1.2"), path("take 1.2.svg"));
    EXPECT_EQ(savedAs("notes.txt"), path("notes.txt"));
    EXPECT_EQ(savedAs("LOUD.SVG"), path("LOUD.SVG"));
}

TEST_F(FileDialog, a_name_gets_the_extension_of_the_kind_that_the_user_has_chosen)
{
    auto& dialog = open(Purpose::Save);
    dialog.selectNameFilter("Text (*.txt)");
    emit dialog.filterSelected("Text (*.txt)");
    choose("plain");
    EXPECT_EQ(m_chosen, path("plain.txt"));
}

TEST_F(FileDialog, opens_no_file_of_another_kind)
{
    makeFile("picture.png");
    makeFile("drawing.svg");
    open(Purpose::Open);
    choose("picture.png");
    EXPECT_TRUE(m_dialog->isVisible());
    EXPECT_EQ(m_chosen, QString());
    choose("drawing.svg");
    EXPECT_FALSE(m_dialog->isVisible());
    EXPECT_EQ(m_chosen, path("drawing.svg"));
}

TEST_F(FileDialog, the_first_one_opens_among_the_documents_if_there_are_any)
{
    EXPECT_EQ(open(Purpose::Save).directory(), QDir(m_home.path()));
    ASSERT_TRUE(QDir().mkpath(documents()));
    EXPECT_EQ(open(Purpose::Save).directory(), QDir(documents()));
}

TEST_F(FileDialog, a_later_one_opens_where_the_last_one_was_as_long_as_the_folder_is_there)
{
    for (const char* const name : { "chosen", "seen" })
        ASSERT_TRUE(QDir(m_home.path()).mkdir(name));
    EXPECT_EQ(savedAs("chosen/plain"), path("chosen/plain.svg"));
    EXPECT_EQ(open(Purpose::Open).directory(), QDir(path("chosen")));
    m_dialog->setDirectory(path("seen"));
    m_dialog->reject();
    EXPECT_EQ(open(Purpose::Save).directory(), QDir(path("seen")));
    m_dialog->reject();
    ASSERT_TRUE(QDir(m_home.path()).rmdir("seen"));
    ASSERT_TRUE(QDir().mkpath(documents()));
    EXPECT_EQ(open(Purpose::Save).directory(), QDir(documents()));
}

TEST_F(FileDialog, nothing_is_chosen_in_a_cancelled_one)
{
    open(Purpose::Save);
    nameField().setText(path("plain.svg"));
    m_dialog->reject();
    EXPECT_EQ(m_dialog->chosenPath(), QString());
}

TEST_F(FileDialog, completes_names_but_not_over_the_question_whether_to_replace_a_file)
{
    makeFile("plain.svg");
    open(Purpose::Save);
    QCompleter* const completer = nameField().completer();
    ASSERT_NE(completer, nullptr);
    QString question;
    const QCompleter* asked = completer;
    whenAsked([&](const QMessageBox& box) {
        question = box.text();
        asked = nameField().completer();
    });
    choose("plain");
    EXPECT_TRUE(question.contains("plain.svg already exists")) << question.toStdString();
    EXPECT_EQ(asked, nullptr);
    EXPECT_EQ(nameField().completer(), completer);
    EXPECT_EQ(m_chosen, path("plain.svg"));
}

TEST_F(FileDialog, deletes_itself_once_it_is_closed)
{
    open(Purpose::Save).reject();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(m_dialog.isNull());
}

} // namespace
} // namespace kestrel::test
