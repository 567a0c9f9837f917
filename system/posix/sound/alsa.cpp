#include "system/posix/sound/alsa.h"

#include <alsa/asoundlib.h>

#include <cerrno>
#include <memory>
#include <utility>
#include <vector>

namespace corvanel {
namespace {

constexpr const char* kDevice = "default";
constexpr unsigned kLatency = 200000;  // microseconds

template <auto Close>
struct Closer {
  void operator()(auto* handle) const { Close(handle); }
};
using Pcm = std::unique_ptr<snd_pcm_t, Closer<snd_pcm_close>>;
using Mixer = std::unique_ptr<snd_mixer_t, Closer<snd_mixer_close>>;

/// The control that sets how loud everything is; null where the device has none.
snd_mixer_elem_t* MasterOf(const Mixer& mixer) {
  if (snd_mixer_attach(mixer.get(), kDevice) < 0) return nullptr;
  if (snd_mixer_selem_register(mixer.get(), nullptr, nullptr) < 0) return nullptr;
  if (snd_mixer_load(mixer.get()) < 0) return nullptr;
  snd_mixer_selem_id_t* id = nullptr;
  snd_mixer_selem_id_alloca(&id);
  snd_mixer_selem_id_set_name(id, "Master");
  return snd_mixer_find_selem(mixer.get(), id);
}

void ReadVolume(Output& output) {
  snd_mixer_t* opened = nullptr;
  if (snd_mixer_open(&opened, 0) < 0) return;
  const Mixer mixer(opened);
  snd_mixer_elem_t* master = MasterOf(mixer);
  if (master == nullptr) return;
  long least = 0;
  long most = 0;
  long volume = 0;
  if (snd_mixer_selem_get_playback_volume_range(master, &least, &most) == 0 && most > least &&
      snd_mixer_selem_get_playback_volume(master, SND_MIXER_SCHN_FRONT_LEFT, &volume) == 0) {
    output.volume = static_cast<int>((volume - least) * 100 / (most - least));
    if (output.volume == 0) output.result = SoundResult::NoVolume;
  }
  int on = 1;
  snd_mixer_selem_get_playback_switch(master, SND_MIXER_SCHN_FRONT_LEFT, &on);
  if (on == 0) output.result = SoundResult::Muted;
}

}  // namespace

Output AlsaOutput() {
  snd_pcm_t* opened = nullptr;
  const int error = snd_pcm_open(&opened, kDevice, SND_PCM_STREAM_PLAYBACK, SND_PCM_NONBLOCK);
  const Pcm pcm(opened);
  // One that another program plays on is there.
  if (error < 0 && error != -EBUSY) return {};
  Output output{SoundResult::Heard, 100, "ALSA"};
  ReadVolume(output);
  return output;
}

SoundResult PlayOnAlsa(Sound& sound, const Begun& begun) {
  snd_pcm_t* opened = nullptr;
  if (snd_pcm_open(&opened, kDevice, SND_PCM_STREAM_PLAYBACK, 0) < 0) return SoundResult::NoOutput;
  const Pcm pcm(opened);
  if (snd_pcm_set_params(opened, SND_PCM_FORMAT_FLOAT, SND_PCM_ACCESS_RW_INTERLEAVED,
                         sound.Channels(), sound.Rate(), 1, kLatency) < 0) {
    return SoundResult::NoSound;
  }
  const size_t block = sound.Rate() / 20;
  std::vector<float> samples(block * sound.Channels());
  bool told = false;
  while (const size_t frames = sound.Read(samples.data(), block)) {
    const float* next = samples.data();
    for (snd_pcm_sframes_t left = static_cast<snd_pcm_sframes_t>(frames); left > 0;) {
      snd_pcm_sframes_t written =
          snd_pcm_writei(opened, next, static_cast<snd_pcm_uframes_t>(left));
      if (written < 0) written = snd_pcm_recover(opened, static_cast<int>(written), 1);
      if (written < 0) return SoundResult::NoOutput;
      next += written * sound.Channels();
      left -= written;
    }
    if (snd_pcm_state(opened) == SND_PCM_STATE_PREPARED) snd_pcm_start(opened);
    if (!std::exchange(told, true)) begun(AlsaOutput().result);
  }
  snd_pcm_drain(opened);
  return SoundResult::Heard;
}

}  // namespace corvanel
