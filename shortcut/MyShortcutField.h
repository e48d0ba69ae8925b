#pragma once

#include "assign/ButtonEntry.h"
#include "shortcut/FieldAnnouncer.h"
#include "shortcut/InterfaceServices.h"
#include "shortcut/KeyPress.h"
#include "shortcut/ShortcutFields.h"

#include <QPointer>
#include <QWidget>

#include <functional>

namespace kestrel {

class ClearButton;

// The capture box of one shortcut. It does not edit text: it stores each key that is pressed in it
// in its own shortcut record. The window copies records between the field and button entries.
class MyShortcutField : public QWidget {
public:
    static inline const QString NotAvailable = QStringLiteral("Not Available");

    MyShortcutField(
        const QRect& frame, const InterfaceServices& services, QWidget* parent = nullptr);
    ~MyShortcutField() override;

    // `offset` is the place of the record in the entry. An entry that is too short is left
    // unchanged.
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

    // Shows the text literally: an ampersand marks no mnemonic.
    void setTitleWithMnemonic(const QString& text);
    [[nodiscard]] QString stringValue() const { return m_stringValue; }
    [[nodiscard]] QString shownShortcut() const; // in one line; empty if none is shown

    bool acceptsFirstResponder();
    bool becomeFirstResponder();
    bool resignFirstResponder();
    [[nodiscard]] bool canBecomeKeyView() const { return true; }
    bool performKeyEquivalent(const KeyPress& event);
    void keyDown(const KeyPress& event);
    void mouseDown();
    void rightMouseDown() { } // no context menu

    // Move the window's keyboard focus to this field, or from any field to the window itself. They
    // work in an inactive window too.
    void makeFirstResponder();
    static void makeWindowFirstResponder(QWidget& window);
    [[nodiscard]] bool isFirstResponder() const;

    [[nodiscard]] bool bBecome() const { return m_bBecome; }
    [[nodiscard]] bool bNotAvailable() const { return m_bNotAvailable; }
    void setBNotAvailable(bool bNotAvailable);
    // True while the field says so. A field that is hidden keeps the mark, but not the text.
    [[nodiscard]] bool isRefused() const
    {
        return m_bNotAvailable && m_stringValue == NotAvailable;
    }
    [[nodiscard]] ClearButton* myClearButton() const;
    void setMyClearButton(ClearButton* button); // null for none; not owned
    [[nodiscard]] const ShortcutFields* shortcutFields() const { return m_shortcutFields; }
    void setShortcutFields(const ShortcutFields* fields); // all fields of the window; not owned
    [[nodiscard]] std::int64_t myIndex() const { return m_myIndex; }
    // Null until the field has shown its first entry. It captures no key before.
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
    [[nodiscard]] bool holdsKey() const; // also one without a name, for which nothing is shown
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
    FieldAnnouncer m_announcer { *this };
    std::function<void()> m_action;
    int m_tag = 0;
};

} // namespace kestrel
