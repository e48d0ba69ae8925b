#pragma once

#include "archive/PropertyList.h"
#include "platform/DefaultsStore.h"

#include <QString>

#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace kestrel {

// The user defaults as a property list file that several processes may write: a dictionary of
// byte data, in which values of other kinds and keys of others are kept as they are. A value of
// another kind that is replaced is kept aside under its key and ".damaged".
class FileDefaultsStore : public DefaultsStore {
public:
    // The file need not exist, nor its folder.
    explicit FileDefaultsStore(
        QString path, std::chrono::milliseconds lockTimeout = std::chrono::seconds(2));

    // com.holvik.kestrel.plist in the user's folder of configuration.
    [[nodiscard]] static QString standardPath();

    [[nodiscard]] std::optional<Bytes> data(std::string_view key) override;
    void setData(std::string_view key, std::span<const std::uint8_t> value) override;
    // Waits as long as given for another process that writes, no longer. A file that is no
    // dictionary of values is kept aside under its name and ".damaged" before it is replaced.
    [[nodiscard]] bool synchronise() override;

private:
    enum class Health { Sound, Damaged, Unreadable };

    [[nodiscard]] Health read();
    [[nodiscard]] bool keepAside() const;
    [[nodiscard]] bool apply();

    QString m_path;
    std::chrono::milliseconds m_lockTimeout;
    PropertyList m_content; // a dictionary, as the file was when last read
    bool m_wasUnreadable = false; // at first, so that what it holds was never seen
    std::map<std::string, Bytes, std::less<>> m_changes; // not in the file yet
};

[[nodiscard]] std::unique_ptr<DefaultsStore> makeFileDefaultsStore();

} // namespace kestrel
