#include "platform/desktop/associations/media_types.h"

#include <QMimeDatabase>
#include <algorithm>
#include <string_view>
#include <utility>

#include "platform/base/text.h"

namespace platform::desktop {

namespace {

std::string OwnType(const std::string& extension) {
    return "application/x-extension-" + extension;
}

bool CanBeInAType(std::string_view extension) {
    return std::all_of(extension.begin(), extension.end(), [](char byte) {
        return (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9') || byte == '-' ||
               byte == '_' || byte == '+' || byte == '.';
    });
}

bool SaysNothing(const std::string& type) {
    return type == "application/octet-stream" || type == "text/plain" || type.starts_with("inode/");
}

/// Leaves those that the extension is the usual one of, or that have no other than ours; all of
/// them if there are none such.
void KeepThoseMeant(std::vector<KnownType>& known, const std::string& extension,
                    const std::set<std::string>& ours) {
    const auto isMeant = [&](const KnownType& type) {
        const std::vector<std::string>& all = type.extensions;
        return all.empty() || all.front() == extension ||
               std::all_of(all.begin(), all.end(),
                           [&ours](const std::string& one) { return ours.contains(one); });
    };
    if (std::any_of(known.begin(), known.end(), isMeant)) {
        std::erase_if(known, [&](const KnownType& type) { return !isMeant(type); });
    }
}

}  // namespace

std::vector<KnownType> TypesInDatabase(const std::string& extension) {
    std::vector<KnownType> types;
    const QString name = QString::fromStdString("x." + extension);
    for (const QMimeType& type : QMimeDatabase().mimeTypesForFileName(name)) {
        KnownType known{type.name().toStdString(), {}};
        if (const QString usual = type.preferredSuffix(); !usual.isEmpty()) {
            known.extensions.push_back(usual.toStdString());
        }
        for (const QString& suffix : type.suffixes()) {
            known.extensions.push_back(suffix.toStdString());
        }
        types.push_back(std::move(known));
    }
    return types;
}

MediaTypes MediaTypesOf(
    const std::vector<std::string>& extensions,
    const std::function<std::vector<KnownType>(const std::string& extension)>& typesOf) {
    MediaTypes types;
    const std::set<std::string> ours(extensions.begin(), extensions.end());
    for (const std::string& extension : ours) {
        // A name that ends in a separator is that of a folder.
        if (extension.empty() || extension.find('/') != std::string::npos) {
            continue;
        }
        std::vector<KnownType> known = typesOf(extension);
        // Told by an addition of ours: it is not known by itself.
        std::erase_if(known,
                      [&](const KnownType& type) { return type.name == OwnType(extension); });
        if (known.empty() && CanBeInAType(extension)) {
            types.all.insert(OwnType(extension));
            types.ownExtensions.insert(extension);
        }
        KeepThoseMeant(known, extension, ours);
        for (const KnownType& type : known) {
            if (!SaysNothing(type.name)) {
                types.all.insert(type.name);
            }
        }
    }
    return types;
}

std::string TypesPackage(const std::set<std::string>& extensions) {
    std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<mime-info xmlns=\"http://www.freedesktop.org/standards/shared-mime-info\">\n";
    for (const std::string& extension : extensions) {
        text.append("  <mime-type type=\"").append(OwnType(extension)).append("\">\n");
        text.append("    <comment>").append(extension).append(" file</comment>\n");
        text.append("    <glob pattern=\"*.").append(extension).append("\"/>\n");
        text.append("  </mime-type>\n");
    }
    return text.append("</mime-info>\n");
}

}  // namespace platform::desktop
