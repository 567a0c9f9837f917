// corvanel-sound FOLDER: plays one sound. It speaks to the program as its fellow of the other
// systems does: orders on its standard input, each with a zero byte at its end, answers in lines.
//   check FILE   whether the file could be played; answers "file RESULT"
//   play FILE    answers "begun RESULT MILLISECONDS" when the sound has begun, with its length, and
//                ends with it
// In between it tells on what it would play, whenever that changes: "output RESULT VOLUME NAME".

#include <fcntl.h>
#include <io.h>

#include <chrono>
#include <cstdio>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "system/folders.h"
#include "system/program_arguments.h"
#include "system/windows/sound/output.h"
#include "system/windows/sound/wave_file.h"
#include "system/windows/system_call.h"

namespace corvanel {
namespace {

constexpr std::chrono::seconds kLookAgain(2);
constexpr DWORD kAfterItsEnd = 150;  // milliseconds, that the system needs to play out

template <class... Values>
void Tell(const char* format, Values... values) {
  // Two threads tell.
  static std::mutex mutex;
  const std::lock_guard lock(mutex);
  std::printf(format, values...);
  std::fflush(stdout);
}

/// Tells of the output as long as the program lives.
void WatchOutput() {
  Output last{SoundResult::NoAnswer, -1, {}};
  for (;; std::this_thread::sleep_for(kLookAgain)) {
    const Output now = PresentOutput();
    if (now == last) continue;
    last = now;
    Tell("output %d %d %s\n", static_cast<int>(now.result), now.volume, now.name.c_str());
  }
}

SoundResult Play(const std::string& path) {
  const WaveFile file(path);
  if (file.Fitness() != SoundResult::Heard) return file.Fitness();
  const Output output = PresentOutput();
  if (output.result == SoundResult::NoOutput) return output.result;
  if (!file.Begin()) return SoundResult::NoAnswer;
  Tell("begun %d %ld\n", static_cast<int>(output.result), file.Milliseconds());
  Sleep(static_cast<DWORD>(file.Milliseconds()) + kAfterItsEnd);
  return SoundResult::Heard;
}

int Run(const std::string& folder) {
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
  std::thread(WatchOutput).detach();
  std::string order;
  for (int byte = std::getchar(); byte != EOF; byte = std::getchar()) {
    if (byte != 0) {
      order += static_cast<char>(byte);
      continue;
    }
    const size_t blank = order.find(' ');
    const std::string file = SoundFile(order.substr(blank + 1), folder);
    if (order.substr(0, blank) == "play") return static_cast<int>(Play(file));
    Tell("file %d\n", static_cast<int>(WaveFile(file).Fitness()));
    order.clear();
  }
  return static_cast<int>(SoundResult::NoOutput);
}

}  // namespace
}  // namespace corvanel

int main(int argc, char** argv) {
  const std::vector<std::string> arguments = corvanel::ProgramArguments(argc, argv);
  // Not by way of the destructors: the thread that watches the output would outlive them.
  std::_Exit(corvanel::Run(arguments.size() > 1 ? arguments[1] : "."));
}
