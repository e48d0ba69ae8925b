#pragma once

#include <QString>

#include <optional>

namespace kestrel {

// The version and copyright in a bundle's property list. A member is empty if the list lacks it.
struct BundleInfo {
    QString shortVersion;
    QString copyright;

    // `path` is the property list, a file or a resource. No value when it cannot be read.
    [[nodiscard]] static std::optional<BundleInfo> read(const QString& path);

    // `path` is the bundle's folder. No value when there is none; empty members when its property
    // list cannot be read.
    [[nodiscard]] static std::optional<BundleInfo> ofBundle(const QString& path);
};

// The informative text of the about box. The label "Console" precedes the application's own
// version; the line that begins with "V" is the driver's version.
[[nodiscard]] QString aboutText(
    const std::optional<BundleInfo>& driver, const BundleInfo& application);

// The same for this application and the installed console driver. `systemRoot` is a prefix for the
// driver's absolute path.
[[nodiscard]] QString aboutInstalled(const QString& systemRoot = {});

} // namespace kestrel
