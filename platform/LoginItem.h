#pragma once

namespace kestrel {

// Whether the system starts this program when the user logs in. The system keeps the answer, and
// the user can change it there at any time. Main thread only.
class LoginItem {
public:
    enum class Result {
        Done,
        NeedsApproval, // the user has to allow it in the system's own settings
        Failed
    };

    virtual ~LoginItem() = default;

    // False where the system offers programs no way to ask for it.
    [[nodiscard]] virtual bool isAvailable() = 0;
    [[nodiscard]] virtual bool isEnabled() = 0;
    [[nodiscard]] virtual Result setEnabled(bool enabled) = 0;

    // Opens the settings in which the user can change it; nothing where there are none.
    virtual void showSettings() = 0;
};

} // namespace kestrel
