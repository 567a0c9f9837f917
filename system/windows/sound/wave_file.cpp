#include "system/windows/sound/wave_file.h"

#include "system/path_text.h"
#include "system/windows/system_call.h"
// After it.
#include <mmreg.h>
#include <mmsystem.h>

#include <algorithm>
#include <vector>

namespace corvanel {
namespace {

/// The chunk of that name below another; false when there is none.
bool Descend(HMMIO file, const char* name, MMCKINFO& chunk, const MMCKINFO& parent) {
  chunk.ckid = mmioFOURCC(name[0], name[1], name[2], name[3]);
  return mmioDescend(file, &chunk, &parent, MMIO_FINDCHUNK) == MMSYSERR_NOERROR;
}

/// How long the sound in an open file is, milliseconds; negative when nothing here plays it.
long LengthOf(HMMIO file) {
  MMCKINFO whole{};
  whole.fccType = mmioFOURCC('W', 'A', 'V', 'E');
  MMCKINFO part{};
  if (mmioDescend(file, &whole, nullptr, MMIO_FINDRIFF) != MMSYSERR_NOERROR ||
      !Descend(file, "fmt ", part, whole)) {
    return -1;
  }
  std::vector<char> bytes(std::clamp<size_t>(part.cksize, sizeof(WAVEFORMATEX), 4096));
  const auto length = static_cast<LONG>(std::min<size_t>(part.cksize, bytes.size()));
  if (mmioRead(file, bytes.data(), length) != length) return -1;
  const auto& format = *reinterpret_cast<const WAVEFORMATEX*>(bytes.data());
  mmioAscend(file, &part, 0);
  if (format.nAvgBytesPerSec == 0 || !Descend(file, "data", part, whole)) return -1;
  const bool played =
      waveOutGetNumDevs() == 0 ||
      waveOutOpen(nullptr, WAVE_MAPPER, &format, 0, 0, WAVE_FORMAT_QUERY) == MMSYSERR_NOERROR;
  if (!played) return -1;
  return static_cast<long>(uint64_t{part.cksize} * 1000 / format.nAvgBytesPerSec);
}

}  // namespace

WaveFile::WaveFile(const std::string& path) : path_(PathOf(path).make_preferred().native()) {
  HMMIO file = mmioOpenW(path_.data(), nullptr, MMIO_READ | MMIO_ALLOCBUF);
  if (file == nullptr) return;
  milliseconds_ = LengthOf(file);
  mmioClose(file, 0);
  fitness_ = milliseconds_ < 0 ? SoundResult::NoSound : SoundResult::Heard;
}

bool WaveFile::Begin() const {
  return PlaySoundW(path_.c_str(), nullptr, SND_FILENAME | SND_ASYNC | SND_NODEFAULT) != FALSE;
}

}  // namespace corvanel
