#pragma once

#include "shortcut/InterfaceServices.h"
#include "shortcut/KeyPress.h"

#include <QPlainTextEdit>

#include <functional>

namespace kestrel {

// The small text box over a button in which the user types its name.
class RenameBox : public QPlainTextEdit {
public:
    // What a key means to a text that is being edited.
    enum class Command {
        InsertNewline,
        CancelOperation,
        Noop, // a combination that nothing else handles
        Other
    };
    // True when the command was carried out and the text shall not see the key.
    using Delegate = std::function<bool(Command)>;

    RenameBox(const QRect& frame, const QString& text, const InterfaceServices& services,
        QWidget* parent);

    void setDelegate(Delegate delegate) { m_delegate = std::move(delegate); }

    // As typed; the text that the box was opened with, to the letter, if nothing was.
    [[nodiscard]] QString stringValue() const;

    // The key that is being handled.
    [[nodiscard]] const std::optional<KeyPress>& currentEvent() const { return m_currentEvent; }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void moveOrDelete(int key, bool isSelecting);

    KeyTranslation& m_keyTranslation;
    QString m_text;
    Delegate m_delegate;
    std::optional<KeyPress> m_currentEvent;
};

} // namespace kestrel
