#include "system/posix/sound/sound.h"

#include <sndfile.h>

#include <filesystem>
#include <vector>

namespace corvanel {
namespace {

// What every sound system takes.
constexpr int kGreatestRate = 384000;
constexpr int kMostChannels = 32;

}  // namespace

void Sound::Close::operator()(sf_private_tag* file) const {
  sf_close(file);
}

Sound::Sound(const std::string& path) : fitness_(Open(path)) {}

SoundResult Sound::Open(const std::string& path) {
  std::error_code error;
  // Anything else, a pipe say, could be waited for without end.
  if (!std::filesystem::is_regular_file(path, error)) return SoundResult::NoFile;
  SF_INFO info{};
  file_.reset(sf_open(path.c_str(), SFM_READ, &info));
  if (!file_ || info.samplerate <= 0 || info.samplerate > kGreatestRate ||
      info.channels > kMostChannels) {
    return SoundResult::NoSound;
  }
  rate_ = static_cast<unsigned>(info.samplerate);
  channels_ = static_cast<unsigned>(info.channels);
  frames_ = info.frames;
  std::vector<float> first(channels_);
  if (Read(first.data(), 1) == 0 || sf_seek(file_.get(), 0, SEEK_SET) != 0) {
    return SoundResult::NoSound;
  }
  return SoundResult::Heard;
}

size_t Sound::Read(float* samples, size_t frames) {
  const sf_count_t read = sf_readf_float(file_.get(), samples, static_cast<sf_count_t>(frames));
  return read > 0 ? static_cast<size_t>(read) : 0;
}

}  // namespace corvanel
