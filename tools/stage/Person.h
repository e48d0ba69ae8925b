#pragma once

#include "tools/stage/Screen.h"
#include "tools/stage/Studio.h"

#include <optional>
#include <string>
#include <vector>

namespace kestrel::stage {

// Somebody who sits before the screen of a studio with a pointer and a keyboard. Whatever takes
// too long to come about throws std::runtime_error.
class Person {
public:
    explicit Person(const Studio& studio)
        : m_studio(studio)
    {
    }

    void click(int x, int y) const; // of the screen
    void doubleClick(int x, int y) const;
    void press(const std::string& chord) const; // as xdotool names it, e.g. "super+s"
    void type(const std::string& text) const;

    // The content of the visible window of that title; missing when there is none.
    [[nodiscard]] std::optional<Area> window(const std::string& title) const;
    // Once it stays where it is: a window manager moves a window some time after it has come up.
    [[nodiscard]] Area windowAtRest(const std::string& title) const;
    void moveWindow(const std::string& title, int x, int y) const;
    void waitUntilShown(const std::string& title) const; // and has the keyboard
    void waitUntilGone(const std::string& title) const;
    void waitUntilThereAre(int count, const std::string& title) const; // visible windows

    // Opens the menu behind the icon in the tray and chooses the entry with that mnemonic.
    void chooseFromTray(char mnemonic) const;

private:
    [[nodiscard]] std::vector<Area> windows(const std::string& title) const; // visible ones
    std::vector<std::string> run(std::vector<std::string> arguments) const; // its output

    const Studio& m_studio;
};

} // namespace kestrel::stage
