#include "system/windows/sound/output.h"

#include "system/path_text.h"
#include "system/windows/system_call.h"
// After it.
#include <endpointvolume.h>
#include <mmdeviceapi.h>
#include <mmsystem.h>

#include <cmath>
#include <memory>

namespace corvanel {
namespace {

struct Release {
  void operator()(IUnknown* object) const { object->Release(); }
};
template <class Interface>
using Pointer = std::unique_ptr<Interface, Release>;

/// The volume of the default output; nothing where the system does not say.
Pointer<IAudioEndpointVolume> DefaultVolume() {
  // Once for this thread.
  thread_local const HRESULT begun = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
  static_cast<void>(begun);
  void* found = nullptr;
  if (FAILED(CoCreateInstance(__uuidof(MMDeviceEnumerator), nullptr, CLSCTX_ALL,
                              __uuidof(IMMDeviceEnumerator), &found))) {
    return nullptr;
  }
  const Pointer<IMMDeviceEnumerator> devices(static_cast<IMMDeviceEnumerator*>(found));
  IMMDevice* device = nullptr;
  if (FAILED(devices->GetDefaultAudioEndpoint(eRender, eConsole, &device))) return nullptr;
  const Pointer<IMMDevice> output(device);
  void* volume = nullptr;
  if (FAILED(output->Activate(__uuidof(IAudioEndpointVolume), CLSCTX_ALL, nullptr, &volume))) {
    return nullptr;
  }
  return Pointer<IAudioEndpointVolume>(static_cast<IAudioEndpointVolume*>(volume));
}

std::string NameOfOutput() {
  WAVEOUTCAPSW output{};
  if (waveOutGetDevCapsW(0, &output, sizeof output) != MMSYSERR_NOERROR)
    return "the default output";
  return PathText(output.szPname);
}

}  // namespace

Output PresentOutput() {
  if (waveOutGetNumDevs() == 0) return {SoundResult::NoOutput, 0, {}};
  Output output{SoundResult::Heard, 100, NameOfOutput()};
  const auto volume = DefaultVolume();
  float share = 1;
  BOOL muted = FALSE;
  if (!volume || FAILED(volume->GetMasterVolumeLevelScalar(&share)) ||
      FAILED(volume->GetMute(&muted))) {
    return output;
  }
  output.volume = static_cast<int>(std::lround(share * 100));
  if (output.volume == 0) output.result = SoundResult::NoVolume;
  if (muted != FALSE) output.result = SoundResult::Muted;
  return output;
}

}  // namespace corvanel
