#pragma once

namespace kestrel {

// Hides the program with all its windows, and brings it to the front. Main thread only.
class ApplicationVisibility {
public:
    virtual ~ApplicationVisibility() = default;

    virtual void hide() = 0; // the application that was in front before gets the focus
    virtual void activate() = 0; // ignoring other applications
};

} // namespace kestrel
