// A sound device for the tests: an audio output that GStreamer finds like those of a real desktop
// and prefers to them, that can be plugged in, and be pulled out while it plays.
#pragma once

namespace audio_tests {

/// Makes the fake device the only one that is found, plugged in or not. Starts GStreamer.
void UseFakeDevice(bool pluggedIn);
/// Later attempts to open the device succeed or fail; what plays goes on.
void PlugFakeDevice(bool pluggedIn);
/// The device that plays reports that it is gone.
void BreakFakeDevice();
/// How many devices are open at present, and were opened since UseFakeDevice.
int OpenFakeDevices();
int FakeDevicesEverOpened();

}  // namespace audio_tests
