#include "setup/RenameBox.h"

#include "shortcut/InterfaceFont.h"

#include <QKeyEvent>
#include <QTextCursor>
#include <QTextDocument>

#include <optional>

namespace kestrel {

namespace {

constexpr double BoxMargin = 2;

// A paper-coloured box on the button, with the focus ring of the other controls.
const QString Look = QStringLiteral(
    "QPlainTextEdit { border: 2px solid #5ED6CE; border-radius: 6px; background: #F6F3EC;"
    " color: black; selection-background-color: #5ED6CE; selection-color: black; }");

// The cursor movement for a key that is pressed with Command. Backspace deletes up to that place.
std::optional<QTextCursor::MoveOperation> moveWithCommand(int key)
{
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Backspace:
        return QTextCursor::StartOfLine;
    case Qt::Key_Right:
        return QTextCursor::EndOfLine;
    case Qt::Key_Up:
        return QTextCursor::Start;
    case Qt::Key_Down:
        return QTextCursor::End;
    default:
        return std::nullopt;
    }
}

RenameBox::Command meaningOf(int key, ModifierFlags flags)
{
    if (flags & Modifier::Command)
        return moveWithCommand(key) ? RenameBox::Command::Other : RenameBox::Command::Noop;
    const bool isReturn = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (isReturn && !(flags & (Modifier::Option | Modifier::Control)))
        return RenameBox::Command::InsertNewline;
    if (key == Qt::Key_Escape)
        return RenameBox::Command::CancelOperation;
    return RenameBox::Command::Other;
}

} // namespace

RenameBox::RenameBox(
    const QRect& frame, const QString& text, const InterfaceServices& services, QWidget* parent)
    : QPlainTextEdit(parent)
    , m_keyTranslation(services.keyTranslation)
    , m_text(text)
{
    setGeometry(frame);
    setStyleSheet(Look);
    setFont(smallSystemFont());
    setTabChangesFocus(true);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    document()->setDocumentMargin(BoxMargin);
    setPlaceholderText(QStringLiteral("Name")); // an empty box looks like a blank key
    setPlainText(text);
    document()->setModified(false);
    selectAll();
}

// QTextDocument stores line ends as paragraph separators.
QString RenameBox::stringValue() const
{
    if (!document()->isModified())
        return m_text;
    return document()->toRawText().replace(QChar::ParagraphSeparator, u'\n');
}

// The delegate may have closed the box by the time it returns.
void RenameBox::keyPressEvent(QKeyEvent* event)
{
    m_currentEvent = KeyPress::from(*event, m_keyTranslation);
    const ModifierFlags flags = m_currentEvent ? m_currentEvent->flags : 0;
    const Command meaning = meaningOf(event->key(), flags);
    const bool isHandled = m_delegate && m_delegate(meaning);
    m_currentEvent.reset();
    if (isHandled || meaning == Command::Noop)
        event->accept();
    else if (flags & Modifier::Command)
        moveOrDelete(event->key(), flags & Modifier::Shift);
    else
        QPlainTextEdit::keyPressEvent(event);
}

// `key` is one that `moveWithCommand` knows. Qt does not treat it as an editing key on every
// platform.
void RenameBox::moveOrDelete(int key, bool isSelecting)
{
    QTextCursor cursor = textCursor();
    const bool isDelete = key == Qt::Key_Backspace;
    const auto anchor = isDelete || isSelecting ? QTextCursor::KeepAnchor : QTextCursor::MoveAnchor;
    if (!isDelete || !cursor.hasSelection())
        cursor.movePosition(moveWithCommand(key).value(), anchor);
    if (isDelete)
        cursor.removeSelectedText();
    setTextCursor(cursor);
}

} // namespace kestrel
