#pragma once

#include "archive/AtomicFile.h"
#include "platform/DefaultsStore.h"
#include "platform/DocumentFiles.h"
#include "platform/LoginItem.h"
#include "platform/Notices.h"
#include "platform/Permissions.h"
#include "platform/ProcessTable.h"
#include "platform/WindowTraits.h"
#include "platform/Workspace.h"

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace kestrel::test {

// The command names of the processes that run.
class FakeProcessTable final : public ProcessTable {
public:
    [[nodiscard]] bool isRunning(std::string_view commandName) override
    {
        return !unreadable && std::find(names.begin(), names.end(), commandName) != names.end();
    }

    std::vector<std::string> names;
    bool unreadable = false;
};

class FakeWorkspace final : public Workspace {
public:
    struct Application {
        std::string name;
        bool active;
    };

    void visitActiveApplications(const Visitor& visit) override
    {
        for (const auto& application : applications) {
            if (!application.active)
                continue;
            ++visited;
            if (!visit(application.name))
                return;
        }
    }
    [[nodiscard]] bool openFile(std::string_view path) override
    {
        calls.push_back("open " + std::string(path));
        return true;
    }
    [[nodiscard]] bool hideApplication() override
    {
        calls.push_back("hide");
        hidden = hidesByItself;
        return hidesByItself;
    }
    [[nodiscard]] bool isApplicationHidden() const override { return hidden; }
    void activateApplication() override
    {
        calls.push_back("activate");
        hidden = false;
    }
    void setReopened(std::function<void()> value) override { reopened = std::move(value); }
    void setQuitRequested(std::function<void()> value) override
    {
        quitRequested = std::move(value);
    }

    std::vector<Application> applications;
    int visited = 0;
    bool hidesByItself = true;
    bool hidden = false;
    std::function<void()> reopened;
    std::function<void()> quitRequested;
    std::vector<std::string> calls;
};

// Writes real files.
class FakeDocumentFiles final : public DocumentFiles {
public:
    [[nodiscard]] std::string replace(
        std::string_view path, std::span<const std::uint8_t> content) override
    {
        if (!failure.empty())
            return failure;
        return AtomicFile::write(QString::fromStdString(std::string(path)), content)
            .problem.toStdString();
    }
    [[nodiscard]] bool setCodes(std::string_view path, FileCodes codes) override
    {
        if (refusing)
            return false;
        byPath[std::string(path)] = codes;
        return true;
    }
    [[nodiscard]] std::optional<FileCodes> codes(std::string_view path) override
    {
        const auto found = byPath.find(std::string(path));
        return found == byPath.end() ? std::nullopt : std::optional(found->second);
    }

    std::string failure; // what replace() says instead of writing
    bool refusing = false; // codes
    std::map<std::string, FileCodes> byPath;
};

class FakeWindowTraits final : public WindowTraits {
public:
    void setContentAspectRatio(NativeWindow, int width, int height) override
    {
        calls.push_back("ratio " + std::to_string(width) + ":" + std::to_string(height));
    }
    void setFloating(NativeWindow) override { calls.push_back("floating"); }
    void setNeverFocused(NativeWindow) override { calls.push_back("never focused"); }
    void orderFront(NativeWindow) override { calls.push_back("front"); }
    [[nodiscard]] bool isSizeGiven(NativeWindow) override { return sizeGiven; }

    bool sizeGiven = false;
    std::vector<std::string> calls;
};

class FakePermissions final : public Permissions {
public:
    [[nodiscard]] bool mayPostKeyEvents() override { return granted; }
    void requestKeyEvents() override { ++requests; }
    void showKeyEventSettings() override { ++settingsShown; }

    bool granted = true;
    int requests = 0;
    int settingsShown = 0;
};

class FakeNotices final : public Notices {
public:
    [[nodiscard]] std::vector<Notice> current() override { return notices; }

    std::vector<Notice> notices;
};

// A login item in memory, switched on and off as long as `result` is Done.
class FakeLoginItem final : public LoginItem {
public:
    [[nodiscard]] bool isAvailable() override { return available; }
    [[nodiscard]] bool isEnabled() override { return enabled; }
    [[nodiscard]] Result setEnabled(bool value) override
    {
        calls.emplace_back(value ? "on" : "off");
        if (result == Result::Done)
            enabled = value;
        return result;
    }
    void showSettings() override { calls.emplace_back("settings"); }

    bool available = true;
    bool enabled = false;
    Result result = Result::Done;
    std::vector<std::string> calls;
};

// Defaults in memory; `stored` is what is on disk.
class FakeDefaultsStore final : public DefaultsStore {
public:
    [[nodiscard]] std::optional<Bytes> data(std::string_view key) override
    {
        const auto found = current.find(std::string(key));
        return found == current.end() ? std::nullopt : std::optional(found->second);
    }
    void setData(std::string_view key, std::span<const std::uint8_t> value) override
    {
        current[std::string(key)] = Bytes(value.begin(), value.end());
    }
    [[nodiscard]] bool synchronise() override
    {
        ++synchronised;
        if (onSynchronise)
            onSynchronise();
        if (failing)
            return false;
        stored = current;
        return true;
    }

    [[nodiscard]] std::string problem() const override { return failing ? "No space" : ""; }

    std::map<std::string, Bytes> current;
    std::map<std::string, Bytes> stored;
    int synchronised = 0;
    std::function<void()> onSynchronise;
    bool failing = false;
};

} // namespace kestrel::test
