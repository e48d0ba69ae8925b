#pragma once

#include <QString>

#include <optional>

namespace kestrel {

// What a bundle's property list says for people; empty where it says nothing.
struct BundleInfo {
    QString shortVersion;
    QString copyright;

    // `path` is the property list, a file or a resource. Missing when it cannot be read.
    [[nodiscard]] static std::optional<BundleInfo> read(const QString& path);

    // `path` is the bundle's folder. Missing when there is none; a bundle whose list cannot be
    // read says nothing.
    [[nodiscard]] static std::optional<BundleInfo> ofBundle(const QString& path);
};

// The informative text of the about box. The label "Console" stands before the application's own
// version; the line that begins with "V" is the driver's.
[[nodiscard]] QString aboutText(
    const std::optional<BundleInfo>& driver, const BundleInfo& application);

// The same for this application and the console driver that is installed. `systemRoot` is put
// before the driver's absolute path.
[[nodiscard]] QString aboutInstalled(const QString& systemRoot = {});

} // namespace kestrel
