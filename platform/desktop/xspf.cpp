#include "platform/desktop/xspf.h"

#include <QXmlStreamReader>
#include <utility>

#include "platform/files/media_list.h"

namespace platform::desktop {

namespace {

class XspfReader {
  public:
    explicit XspfReader(std::string_view bytes)
        : xml_(QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()))) {}

    std::optional<std::vector<std::string>> Read() {
        while (!xml_.atEnd() && locations_.size() < kMostMediaNames) {
            switch (xml_.readNext()) {
                case QXmlStreamReader::DTD:
                    return std::nullopt;
                case QXmlStreamReader::StartElement:
                    if (!Begin()) {
                        return std::nullopt;
                    }
                    break;
                case QXmlStreamReader::Characters:
                    if (inLocation_ && text_.size() <= qsizetype{kLongestMediaName}) {
                        text_ += xml_.text();
                    }
                    break;
                case QXmlStreamReader::EndElement:
                    End();
                    break;
                default:
                    break;
            }
        }
        return isXspf_ ? std::optional(std::move(locations_)) : std::nullopt;
    }

  private:
    bool Begin() {
        const QStringView name = xml_.name();
        if (!isXspf_) {
            isXspf_ = name == u"playlist";
            return isXspf_;
        }
        if (name == u"track") {
            hasLocation_ = false;
        } else if (name == u"location") {
            inLocation_ = !hasLocation_;
            text_.clear();
        }
        return true;
    }

    void End() {
        // The list itself may say where it comes from.
        hasLocation_ = hasLocation_ || xml_.name() == u"track";
        if (inLocation_ && xml_.name() == u"location") {
            const std::string location = text_.trimmed().toStdString();
            hasLocation_ = !location.empty();
            inLocation_ = false;
            if (hasLocation_ && location.size() <= kLongestMediaName) {
                locations_.push_back(location);
            }
        }
    }

    QXmlStreamReader xml_;
    std::vector<std::string> locations_;
    QString text_;
    bool isXspf_ = false;
    bool inLocation_ = false;
    bool hasLocation_ = true;  ///< outside of tracks none is looked for
};

}  // namespace

std::optional<std::vector<std::string>> LocationsOfXspf(std::string_view bytes) {
    return XspfReader(bytes).Read();
}

}  // namespace platform::desktop
