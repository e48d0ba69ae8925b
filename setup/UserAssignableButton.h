#pragma once

#include "assign/ButtonEntry.h"
#include "setup/KeyMarks.h"
#include "setup/RenameBox.h"

#include <QAbstractButton>
#include <QPointer>

#include <functional>
#include <optional>

namespace kestrel {

class UserAssignableButtonController;

// One of the square buttons of the setup window. It shows its name, else its shortcuts, else its
// number. A click selects it, and a double click, F2 or Return opens a box to rename it.
class UserAssignableButton : public QAbstractButton {
public:
    enum class State { Off, On };

    // The look of the text. Each text is drawn in one line and cut at its end with an ellipsis.
    struct TextAttributes {
        QFont font;
        QColor foreground;
        Qt::Alignment alignment;
    };

    UserAssignableButton(
        const QRect& frame, const InterfaceServices& services, QWidget* parent = nullptr);
    ~UserAssignableButton() override;

    [[nodiscard]] static TextAttributes createFontAttribute();
    [[nodiscard]] const TextAttributes& attributes() const { return m_attributes; }

    [[nodiscard]] UserAssignableButtonController* delegate() const { return m_delegate; }
    void setDelegate(UserAssignableButtonController* delegate) { m_delegate = delegate; }
    [[nodiscard]] const ButtonEntry& shortcutArray() const { return m_shortcutArray; }
    void setShortcutArray(const ButtonEntry& entry); // shared, not copied
    [[nodiscard]] QString uniqueName() const { return m_uniqueName; }
    void setUniqueName(const QString& name); // an empty name means none
    void setMarks(const KeyMarks& marks);
    [[nodiscard]] const KeyMarks& marks() const { return m_marks; }
    // Sets the function that is called with each name that the button gets.
    void setRenamed(std::function<void(const QString&)> renamed);
    [[nodiscard]] RenameBox* editBox() const { return m_editBox; } // null when closed
    [[nodiscard]] int tag() const { return m_tag; }
    void setTag(int tag) { m_tag = tag; } // 0-based

    [[nodiscard]] int getEntryShortcutNum() const; // 0 to 4
    [[nodiscard]] bool showsItsNumber() const;
    void setNeedsDisplay();

    // The number and the name, and all shortcuts, for assistive technology.
    [[nodiscard]] QString spokenName() const;
    [[nodiscard]] QString spokenShortcuts() const;
    [[nodiscard]] QString spokenWords() const; // the shortcuts and the marks
    [[nodiscard]] bool mayBeRenamed() const { return getEntryShortcutNum() != 0; }
    void rename(); // selects the button and opens the rename box, if it may be renamed

    void mouseDown(QMouseEvent& event, int clickCount);
    void setState(State state);
    [[nodiscard]] State state() const { return isChecked() ? State::On : State::Off; }
    void closeEditBox();

    // The rename box asks the button to carry out a command. True when the button has handled it.
    bool controlTextViewDoCommandBySelector(RenameBox::Command command);
    // Performs the editing shortcut (cut, copy, paste and so on) of the rename box's current event.
    void sendEvent();

    void drawRect();
    void drawTitleButton(QPainter& painter);

    bool event(QEvent* event) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void nextCheckState() override;
    void focusInEvent(QFocusEvent* event) override;

private:
    [[nodiscard]] QString shortcutText(std::size_t record) const;
    void drawShortcuts(QPainter& painter);
    void drawName(QPainter& painter);
    void drawLine(QPainter& painter, QPointF topLeft, QStringView text) const;
    void openEditBox();
    void announceWords();

    InterfaceServices m_services;
    TextAttributes m_attributes;
    UserAssignableButtonController* m_delegate = nullptr; // owns this button
    ButtonEntry m_shortcutArray;
    QString m_uniqueName;
    KeyMarks m_marks;
    std::function<void(const QString&)> m_renamed;
    QPointer<RenameBox> m_editBox;
    int m_tag = 0;
    // The words that were announced last; no value where a listener may have heard others.
    std::optional<QString> m_toldName;
    std::optional<QString> m_toldShortcuts;
};

} // namespace kestrel
