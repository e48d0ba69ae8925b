#pragma once

#include "platform/DefaultsStore.h"

#include <map>
#include <string>

namespace kestrel::test {

// Defaults in memory. They record the content of the "disk" after each synchronisation.
class RecordedDefaults : public DefaultsStore {
public:
    using Content = std::map<std::string, Bytes, std::less<>>;

    std::optional<Bytes> data(std::string_view key) override
    {
        const auto found = content.find(key);
        return found == content.end() ? std::nullopt : std::optional(found->second);
    }
    void setData(std::string_view key, std::span<const std::uint8_t> value) override
    {
        content.insert_or_assign(std::string(key), Bytes(value.begin(), value.end()));
    }
    bool synchronise() override
    {
        if (isFailing)
            return false;
        onDisk.push_back(content);
        return true;
    }

    std::string problem() const override { return isFailing ? "No space" : ""; }

    Content content;
    std::vector<Content> onDisk;
    bool isFailing = false;
};

} // namespace kestrel::test
