#pragma once

#include "shortcut/InterfaceServices.h"
#include "shortcut/KeyPress.h"

#include <QPlainTextEdit>

#include <functional>

namespace kestrel {

// The small text box over a button in which the user types its name.
class RenameBox : public QPlainTextEdit {
public:
    // The meaning of a key while text is edited.
    enum class Command {
        InsertNewline,
        CancelOperation,
        Noop, // a Command combination that the box does not handle itself
        Other
    };
    // Returns true when it has carried out the command. The text does not get the key then.
    using Delegate = std::function<bool(Command)>;

    RenameBox(const QRect& frame, const QString& text, const InterfaceServices& services,
        QWidget* parent);

    void setDelegate(Delegate delegate) { m_delegate = std::move(delegate); }

    // The typed text. If the user has typed nothing, exactly the text that the box was opened with.
    [[nodiscard]] QString stringValue() const;

    // The key that the delegate is being asked about. No value at other times.
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
