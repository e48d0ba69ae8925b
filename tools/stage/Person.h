#pragma once

#include "tools/stage/ShownWindows.h"
#include "tools/stage/Studio.h"

#include <optional>
#include <string>
#include <vector>

namespace kestrel::stage {

// Acts like a person at a display, with pointer and keyboard. Every function that waits throws
// std::runtime_error when its condition does not come true in time.
class Person {
public:
    explicit Person(const Studio& studio)
        : m_studio(studio)
    {
    }

    void click(int x, int y) const; // screen coordinates
    void doubleClick(int x, int y) const;
    void press(const std::string& chord) const; // as xdotool names it, e.g. "super+s"
    // Twice, far faster than the double click of a desktop.
    void pressTwice(const std::string& chord) const;
    void type(const std::string& text) const;

    // The content area of the visible window with that title; no value when there is none.
    [[nodiscard]] std::optional<Area> window(const std::string& title) const;
    // Waits until the window no longer moves: window managers move a window after it was shown.
    [[nodiscard]] Area windowAtRest(const std::string& title) const;
    // Of any program, with the keyboard focus.
    void bringToFront(const std::string& title) const;
    void moveWindow(const std::string& title, int x, int y) const;
    void waitUntilShown(const std::string& title) const; // with the keyboard focus
    void waitUntilGone(const std::string& title) const;
    // Visible windows. The uppermost of them, if there is one, then has the keyboard focus.
    void waitUntilThereAre(int count, const std::string& title) const;

    // Opens the menu of the status icon and chooses the entry with that mnemonic.
    void chooseFromTray(char mnemonic) const;

private:
    // The visible ones, the uppermost last.
    [[nodiscard]] std::vector<ShownWindow> windows(const std::string& title) const;
    [[nodiscard]] bool hasFocus(const ShownWindow& window) const;
    std::vector<std::string> run(std::vector<std::string> arguments) const; // its output

    const Studio& m_studio;
};

} // namespace kestrel::stage
