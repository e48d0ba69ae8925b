#pragma once

namespace kestrel {

// A window that another part of the program looks after.
class WindowVisibility {
public:
    virtual ~WindowVisibility() = default;

    [[nodiscard]] virtual bool isVisible() const = 0;
    virtual void showWindow() = 0;
};

} // namespace kestrel
