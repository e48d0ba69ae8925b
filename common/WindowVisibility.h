#pragma once

namespace kestrel {

// A window that belongs to another folder of the program.
class WindowVisibility {
public:
    virtual ~WindowVisibility() = default;

    [[nodiscard]] virtual bool isVisible() const = 0;
    virtual void showWindow() = 0;
};

} // namespace kestrel
