#pragma once

#include "platform/LoginItem.h"

#include <QString>

#include <memory>

namespace kestrel {

// The user's autostart entry, a desktop file in the configuration folder. The file exists while the
// setting is on.
class AutostartLoginItem final : public LoginItem {
public:
    // `entryPath` is the desktop file, `program` the path of the program that it starts.
    AutostartLoginItem(QString entryPath, QString program);

    bool isAvailable() override { return true; }
    bool isEnabled() override;
    Result setEnabled(bool enabled) override;
    void showSettings() override { }

    // The path of the program that the entry starts, if that program is not there any more.
    [[nodiscard]] QString missingProgram() const;

private:
    QString m_entryPath;
    QString m_program;
};

// The path of the entry in the user's configuration folder.
[[nodiscard]] QString standardAutostartEntry();

// That entry for the running program.
[[nodiscard]] std::unique_ptr<LoginItem> makeAutostartLoginItem();

} // namespace kestrel
