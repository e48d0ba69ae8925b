#pragma once

#include "assign/ButtonEntry.h"
#include "shortcut/InterfaceServices.h"
#include "shortcut/KeyPress.h"
#include "shortcut/ShortcutFields.h"

#include <QPointer>
#include <QWidget>

#include <functional>

namespace kestrel {

class ClearButton;

// The capture box of one shortcut: it never edits text but turns each key that is pressed in it
// into a shortcut record of its own, which the window copies from and to button entries.
class MyShortcutField : public QWidget {
public:
    MyShortcutField(
        const QRect& frame, const InterfaceServices& services, QWidget* parent = nullptr);
    ~MyShortcutField() override;

    // `offset` is the place of the record in the entry; an entry too short for it is left alone.
    void setUserAssignParam(std::int64_t offset, const ButtonEntry& userArray);
    void replaceUserAssignParam(std::int64_t offset, const ButtonEntry& userArray);
    // True when modifiers or key code differ; names and repeat flags are not compared.
    [[nodiscard]] bool compareUserAssignParam(
        std::int64_t offset, const ButtonEntry& userArray) const;

    [[nodiscard]] bool isEntryShortcut() const;
    void clearShortcut(); // the shown text stays
    void updateClearButton();
    [[nodiscard]] bool isFncKey() const;
    [[nodiscard]] bool isFncKey(std::uint64_t keyCode) const;
    [[nodiscard]] bool isAlradyEntryFncKey(std::uint64_t keyCode) const;
    [[nodiscard]] QString getInputCharacters() const;
    [[nodiscard]] QString getShortcutKey(
        std::uint64_t keyFlags, std::uint64_t keyCode, const QString& inputStr) const;
    void drawShortcutKey(std::uint64_t keyFlags, std::uint64_t keyCode, const QString& inputStr);

    // Shows the text as it is, an ampersand included.
    void setTitleWithMnemonic(const QString& text);
    [[nodiscard]] QString stringValue() const { return m_stringValue; }

    bool acceptsFirstResponder();
    bool becomeFirstResponder();
    bool resignFirstResponder();
    [[nodiscard]] bool canBecomeKeyView() const { return true; }
    bool performKeyEquivalent(const KeyPress& event);
    void keyDown(const KeyPress& event);
    void mouseDown();
    void rightMouseDown() { } // no context menu

    // Moves the window's keyboard focus here, or from any field to the window itself; also while
    // the window is not active.
    void makeFirstResponder();
    static void makeWindowFirstResponder(QWidget& window);
    [[nodiscard]] bool isFirstResponder() const;

    [[nodiscard]] bool bBecome() const { return m_bBecome; }
    [[nodiscard]] bool bNotAvailable() const { return m_bNotAvailable; }
    void setBNotAvailable(bool bNotAvailable) { m_bNotAvailable = bNotAvailable; }
    [[nodiscard]] ClearButton* myClearButton() const;
    void setMyClearButton(ClearButton* button); // null for none; not owned
    [[nodiscard]] const ShortcutFields* shortcutFields() const { return m_shortcutFields; }
    void setShortcutFields(const ShortcutFields* fields); // shared by all of them; not owned
    [[nodiscard]] std::int64_t myIndex() const { return m_myIndex; }
    // Null until the first entry was shown: nothing is captured before.
    [[nodiscard]] const ButtonEntry& myUserArray() const { return m_myUserArray; }
    void setAction(std::function<void()> action) { m_action = std::move(action); }
    [[nodiscard]] int tag() const { return m_tag; }
    void setTag(int tag) { m_tag = tag; }

    bool event(QEvent* event) override;

protected:
    void drawRect();
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void capture(const KeyPress& event);
    void keyPressed(const QKeyEvent& event);
    void loseFirstResponder();
    void sendAction();
    [[nodiscard]] const ArchiveValue& element(std::size_t place) const;

    InterfaceServices m_services;
    bool m_bBecome = false;
    bool m_bNotAvailable = false;
    bool m_isFirstResponder = false;
    QPointer<ClearButton> m_myClearButton;
    const ShortcutFields* m_shortcutFields = nullptr;
    std::int64_t m_myIndex = 0;
    ButtonEntry m_myUserArray;
    QString m_stringValue;
    std::function<void()> m_action;
    int m_tag = 0;
};

} // namespace kestrel
