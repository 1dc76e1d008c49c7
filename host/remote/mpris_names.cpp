#include "host/remote/mpris_names.h"

namespace veldrin {

const char* const kMprisMembers = R"xml(<interface name="org.mpris.MediaPlayer2">
  <method name="Raise"/>
  <method name="Quit"/>
  <property name="CanQuit" type="b" access="read"/>
  <property name="CanRaise" type="b" access="read"/>
  <property name="CanSetFullscreen" type="b" access="read"/>
  <property name="Fullscreen" type="b" access="read"/>
  <property name="HasTrackList" type="b" access="read"/>
  <property name="Identity" type="s" access="read"/>
  <property name="DesktopEntry" type="s" access="read"/>
  <property name="SupportedUriSchemes" type="as" access="read"/>
  <property name="SupportedMimeTypes" type="as" access="read"/>
</interface>
<interface name="org.mpris.MediaPlayer2.Player">
  <method name="Next"/>
  <method name="Previous"/>
  <method name="Pause"/>
  <method name="PlayPause"/>
  <method name="Stop"/>
  <method name="Play"/>
  <method name="Seek"><arg name="Offset" type="x" direction="in"/></method>
  <method name="SetPosition">
    <arg name="TrackId" type="o" direction="in"/>
    <arg name="Position" type="x" direction="in"/>
  </method>
  <method name="OpenUri"><arg name="Uri" type="s" direction="in"/></method>
  <signal name="Seeked"><arg name="Position" type="x"/></signal>
  <property name="PlaybackStatus" type="s" access="read"/>
  <property name="LoopStatus" type="s" access="readwrite"/>
  <property name="Rate" type="d" access="readwrite"/>
  <property name="Shuffle" type="b" access="readwrite"/>
  <property name="Metadata" type="a{sv}" access="read"/>
  <property name="Volume" type="d" access="readwrite"/>
  <property name="Position" type="x" access="read">
    <annotation name="org.freedesktop.DBus.Property.EmitsChangedSignal" value="false"/>
  </property>
  <property name="MinimumRate" type="d" access="read"/>
  <property name="MaximumRate" type="d" access="read"/>
  <property name="CanGoNext" type="b" access="read"/>
  <property name="CanGoPrevious" type="b" access="read"/>
  <property name="CanPlay" type="b" access="read"/>
  <property name="CanPause" type="b" access="read"/>
  <property name="CanSeek" type="b" access="read"/>
  <property name="CanControl" type="b" access="read">
    <annotation name="org.freedesktop.DBus.Property.EmitsChangedSignal" value="false"/>
  </property>
</interface>
)xml";

std::string ItemPath(std::uint64_t number) {
    return number == 0 ? "/org/mpris/MediaPlayer2/TrackList/NoTrack"
                       : "/veldrin/item/" + std::to_string(number);
}

platform::BusTable RootProperties() {
    using platform::BusTexts;
    return {
        {"CanQuit", {true}},
        {"CanRaise", {true}},
        {"CanSetFullscreen", {false}},
        {"Fullscreen", {false}},
        {"HasTrackList", {false}},
        {"Identity", {std::string("Veldrin")}},
        {"DesktopEntry", {std::string("veldrin")}},
        {"SupportedUriSchemes", {BusTexts{"file"}}},
        {"SupportedMimeTypes",
         {BusTexts{"audio/mpeg", "audio/flac", "audio/ogg", "audio/x-vorbis+ogg",
                   "audio/x-opus+ogg", "audio/mp4", "audio/aac", "audio/x-wav", "audio/vnd.wave",
                   "audio/x-aiff", "audio/x-wavpack", "audio/x-ms-wma", "audio/x-matroska"}}},
    };
}

}  // namespace veldrin
