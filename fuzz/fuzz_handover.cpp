// Whatever a stranger sends as a hand-over message: it reads the same in one piece and byte by
// byte, and what is understood says the same when it is sent on.
#include "fuzz/fuzz.h"
#include "host/instance/handover_message.h"

std::string_view fuzz::Seed() {
    return "veldrin 1;L15:\"/music/a.flac\",S0:,L21:/ADD \"/music/\xe9,\n.ogg\",Q0:,";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = fuzz::Bytes(data, size);
    veldrin::MessageReader whole;
    const bool sound = whole.Feed(bytes);

    veldrin::MessageReader pieces;
    bool soundInPieces = true;
    for (std::size_t i = 0; i < bytes.size() && soundInPieces; ++i) {
        soundInPieces = pieces.Feed(bytes.substr(i, 1));
    }
    fuzz::Check(sound == soundInPieces, "pieces are judged like the whole");
    if (!sound || !whole.IsComplete()) {
        return 0;
    }
    fuzz::Check(pieces.Requests() == whole.Requests(), "pieces say what the whole says");

    veldrin::MessageReader again;
    fuzz::Check(again.Feed(veldrin::EncodeMessage(whole.Requests())) && again.IsComplete() &&
                    again.Requests() == whole.Requests(),
                "requests survive the way out and in");
    return 0;
}
