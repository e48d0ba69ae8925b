#pragma once

namespace kestrel {

// The setting that the system starts this program when the user logs in. The system stores it, and
// the user can change it there at any time. Main thread only.
class LoginItem {
public:
    enum class Result {
        Done,
        NeedsApproval, // the user has to allow it in the system settings
        Failed
    };

    virtual ~LoginItem() = default;

    // False if the system has no such setting for programs.
    [[nodiscard]] virtual bool isAvailable() = 0;
    [[nodiscard]] virtual bool isEnabled() = 0;
    [[nodiscard]] virtual Result setEnabled(bool enabled) = 0;

    // Opens the system settings that contain it. Does nothing if there are none.
    virtual void showSettings() = 0;
};

} // namespace kestrel
