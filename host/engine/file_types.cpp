#include "host/engine/file_types.h"

#include <array>

#include "host/engine/gst_ptr.h"

namespace veldrin {

namespace {

struct FileType {
    const char* extension;
    const char* container;  ///< what a demuxer or parser must take; null for none
    const char* codec;      ///< what a decoder must take; null for none
};

constexpr const char* kOgg = "application/ogg";
constexpr const char* kMp4 = "video/quicktime";
constexpr const char* kAac = "audio/mpeg, mpegversion=(int)4";
constexpr const char* kMpegLayer2 = "audio/mpeg, mpegversion=(int)1, layer=(int)2";
constexpr const char* kMpegLayer3 = "audio/mpeg, mpegversion=(int)1, layer=(int)3";
constexpr const char* kTracker = "audio/x-mod";

constexpr std::array kFileTypes = {
    FileType{"aac", nullptr, kAac},
    FileType{"ac3", nullptr, "audio/x-ac3"},
    FileType{"aif", "audio/x-aiff", nullptr},
    FileType{"aifc", "audio/x-aiff", nullptr},
    FileType{"aiff", "audio/x-aiff", nullptr},
    FileType{"amr", nullptr, "audio/AMR"},
    FileType{"ape", "application/x-ape", nullptr},
    FileType{"au", "audio/x-au", nullptr},
    FileType{"dts", nullptr, "audio/x-dts"},
    FileType{"flac", nullptr, "audio/x-flac"},
    FileType{"it", nullptr, kTracker},
    FileType{"m4a", kMp4, kAac},
    FileType{"m4b", kMp4, kAac},
    FileType{"mka", "audio/x-matroska", nullptr},
    FileType{"mod", nullptr, kTracker},
    FileType{"mp2", nullptr, kMpegLayer2},
    FileType{"mp3", nullptr, kMpegLayer3},
    FileType{"mpc", nullptr, "audio/x-musepack"},
    FileType{"oga", kOgg, "audio/x-vorbis"},
    FileType{"ogg", kOgg, "audio/x-vorbis"},
    FileType{"opus", kOgg, "audio/x-opus"},
    FileType{"s3m", nullptr, kTracker},
    FileType{"spx", kOgg, "audio/x-speex"},
    FileType{"tta", "audio/x-ttafile", nullptr},
    FileType{"wav", "audio/x-wav", nullptr},
    FileType{"wma", "video/x-ms-asf", "audio/x-wma"},
    FileType{"wv", nullptr, "audio/x-wavpack"},
    FileType{"xm", nullptr, kTracker},
};

/// The installed elements of a kind, for as long as it lives.
class Factories {
  public:
    explicit Factories(GstElementFactoryListType kind)
        : list_(gst_element_factory_list_get_elements(kind, GST_RANK_MARGINAL)) {}
    ~Factories() { gst_plugin_feature_list_free(list_); }
    Factories(const Factories&) = delete;
    Factories& operator=(const Factories&) = delete;

    /// Whether one of them takes this; nothing at all is always taken.
    bool Take(const char* format) const {
        if (format == nullptr) {
            return true;
        }
        const CapsPtr caps(gst_caps_from_string(format));
        for (GList* node = list_; node != nullptr; node = node->next) {
            if (gst_element_factory_can_sink_any_caps(GST_ELEMENT_FACTORY(node->data),
                                                      caps.get())) {
                return true;
            }
        }
        return false;
    }

  private:
    GList* list_;
};

}  // namespace

SupportedTypes SupportedTypes::Installed() {
    SupportedTypes types;
    const Factories containers(GST_ELEMENT_FACTORY_TYPE_DEMUXER | GST_ELEMENT_FACTORY_TYPE_PARSER);
    const Factories decoders(GST_ELEMENT_FACTORY_TYPE_DECODER);
    for (const FileType& type : kFileTypes) {
        if (containers.Take(type.container) && decoders.Take(type.codec)) {
            types.extensions_.emplace(type.extension);
        }
    }
    return types;
}

SupportedTypes SupportedTypes::Known() {
    SupportedTypes types;
    for (const FileType& type : kFileTypes) {
        types.extensions_.emplace(type.extension);
    }
    return types;
}

std::string SupportedTypes::Patterns() const {
    std::string patterns;
    for (const std::string& extension : extensions_) {
        patterns += (patterns.empty() ? "*." : ";*.") + extension;
    }
    return patterns;
}

bool SupportedTypes::Supports(const std::string& path) const {
    return extensions_.contains(ExtensionOf(path));
}

}  // namespace veldrin
