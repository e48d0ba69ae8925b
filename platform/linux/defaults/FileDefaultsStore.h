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

// The user defaults in a property list file that several processes may write. It is a dictionary of
// byte data; values of other types and keys of other programs stay as they are. Before a value of
// another type is replaced, it is copied to its key with ".damaged" added; before a value that
// another process has stored since this one knew it, to its key with ".replaced" added.
class FileDefaultsStore : public DefaultsStore {
public:
    // The file and its folder need not exist.
    explicit FileDefaultsStore(
        QString path, std::chrono::milliseconds lockTimeout = std::chrono::seconds(2));

    // True when the file was there at the first reading and is no dictionary.
    [[nodiscard]] bool wasDamaged() const { return m_wasDamaged; }

    // com.holvik.kestrel.plist in the user's configuration folder.
    [[nodiscard]] static QString standardPath();

    [[nodiscard]] std::optional<Bytes> data(std::string_view key) override;
    void setData(std::string_view key, std::span<const std::uint8_t> value) override;
    // Waits for another process that writes, up to the given time. A file that is not a dictionary
    // is kept under its name with ".damaged" added before it is replaced.
    [[nodiscard]] bool synchronise() override;
    [[nodiscard]] std::string problem() const override { return m_problem; }

private:
    enum class Health { Sound, Damaged, Unreadable };

    [[nodiscard]] Health read();
    // Return what went wrong; empty if nothing did.
    [[nodiscard]] std::string write();
    [[nodiscard]] std::string keepAside() const;
    [[nodiscard]] std::string apply();
    void keepAsideUnknown(const std::string& key, const Bytes& value);

    QString m_path;
    std::chrono::milliseconds m_lockTimeout;
    PropertyList m_content; // the dictionary when the file was last read
    bool m_wasDamaged = false;
    bool m_wasUnreadable = false; // at the first reading, so its content is unknown
    // What this object last knew of each key that it was asked for.
    std::map<std::string, std::optional<Bytes>, std::less<>> m_known;
    std::string m_unreadable; // why, when the last reading failed
    std::string m_problem;
    std::map<std::string, Bytes, std::less<>> m_changes; // not yet in the file
};

} // namespace kestrel
