#include "platform/desktop/associations/media_types.h"

#include <QMimeDatabase>
#include <algorithm>
#include <string_view>

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

}  // namespace

std::set<std::string> TypesInDatabase(const std::string& extension) {
    std::set<std::string> types;
    const QString name = QString::fromStdString("x." + extension);
    for (const QMimeType& type : QMimeDatabase().mimeTypesForFileName(name)) {
        types.insert(type.name().toStdString());
    }
    return types;
}

MediaTypes MediaTypesOf(
    const std::vector<std::string>& extensions,
    const std::function<std::set<std::string>(const std::string& extension)>& typesOf) {
    MediaTypes types;
    for (const std::string& extension : extensions) {
        // A name that ends in a separator is that of a folder.
        if (extension.empty() || extension.find('/') != std::string::npos) {
            continue;
        }
        std::set<std::string> known = typesOf(extension);
        known.erase(OwnType(extension));  // told by an addition of ours: it is not known by itself
        std::copy_if(known.begin(), known.end(), std::inserter(types.all, types.all.end()),
                     [](const std::string& type) { return !SaysNothing(type); });
        if (known.empty() && CanBeInAType(extension)) {
            types.all.insert(OwnType(extension));
            types.ownExtensions.insert(extension);
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
