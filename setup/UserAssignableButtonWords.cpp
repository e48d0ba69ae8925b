// The part of the button that speaks to assistive technology.

#include "common/AccessibilityListener.h"
#include "setup/UserAssignableButton.h"

#include <utility>

namespace kestrel {

QString UserAssignableButton::spokenName() const
{
    const QString number = QStringLiteral("User-assignable button %1").arg(m_tag + 1);
    return m_uniqueName.isEmpty() ? number : number + QStringLiteral(", ") + m_uniqueName;
}

QString UserAssignableButton::spokenShortcuts() const
{
    QStringList shown;
    for (std::size_t record = 0; record < ShortcutRecordCount; ++record) {
        if (const QString text = shortcutText(record); !text.isEmpty())
            shown.append(text);
    }
    return shown.join(QStringLiteral(", "));
}

QString UserAssignableButton::spokenWords() const
{
    QStringList words = m_marks.words();
    if (const QString shortcuts = spokenShortcuts(); !shortcuts.isEmpty())
        words.prepend(shortcuts);
    return words.join(QStringLiteral(". "));
}

// The button is not told of changes in its entry, so this compares the words at each display.
void UserAssignableButton::announceWords()
{
    if (!AccessibilityListener::shared().isActive()) {
        m_toldName.reset(); // whoever listens next may have heard something else
        m_toldShortcuts.reset();
        return;
    }
    const auto tellIfChanged
        = [this](std::optional<QString>& told, const QString& now, QAccessible::Event type) {
              if (std::exchange(told, now) == now)
                  return;
              QAccessibleEvent event(this, type);
              AccessibilityListener::shared().tell(&event);
          };
    tellIfChanged(m_toldName, spokenName(), QAccessible::NameChanged);
    tellIfChanged(m_toldShortcuts, spokenWords(), QAccessible::DescriptionChanged);
}

// Selecting moves the focus to the first field, which closes every rename box, so it comes first.
void UserAssignableButton::rename()
{
    if (!mayBeRenamed())
        return;
    setChecked(true);
    openEditBox();
}

} // namespace kestrel
