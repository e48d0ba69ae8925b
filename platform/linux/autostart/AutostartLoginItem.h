#pragma once

#include "platform/LoginItem.h"

#include <QString>

#include <memory>

namespace kestrel {

// The user's own autostart entry, as desktops read it from the configuration folder. It is there
// as long as the program is to be started.
class AutostartLoginItem final : public LoginItem {
public:
    // `entryPath` is the desktop file, `program` what it starts.
    AutostartLoginItem(QString entryPath, QString program);

    bool isAvailable() override { return true; }
    bool isEnabled() override;
    Result setEnabled(bool enabled) override;
    void showSettings() override { }

private:
    QString m_entryPath;
    QString m_program;
};

// The running program, in the configuration folder of the user.
[[nodiscard]] std::unique_ptr<LoginItem> makeAutostartLoginItem();

} // namespace kestrel
