// corvanel-sound FOLDER: plays one sound. It stands ready, with its libraries loaded and the
// connection to the sound server made, until it is told on its standard input what to play; and is
// a program of its own, so that nothing that a sound server or a damaged file does (hang, crash,
// go, come back) can reach the clock. Orders, each with a zero byte at its end:
//   check FILE   whether the file could be played; answers "file RESULT"
//   play FILE    answers "begun RESULT MILLISECONDS" when the sound has begun, with its length, and
//                ends with it
// A file that is not there is looked for in FOLDER. In between it tells on what it would play,
// whenever that changes: "output RESULT VOLUME NAME". Results are numbers of SoundResult, and the
// last is what the program ends with. It ends, too, when its standard input does.

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "system/folders.h"
#include "system/posix/sound/alsa.h"
#include "system/posix/sound/pulse.h"

namespace corvanel {
namespace {

constexpr long kLookAgain = 2;  // seconds

class Player : Pulse::Listener {
 public:
  explicit Player(std::string folder) : folder_(std::move(folder)) {
    loop_->io_new(
        loop_, STDIN_FILENO, PA_IO_EVENT_INPUT,
        [](pa_mainloop_api*, pa_io_event*, int, pa_io_event_flags_t, void* self) {
          static_cast<Player*>(self)->ReadOrders();
        },
        this);
    LookAgain();
  }

  int Run() {
    int result = 0;
    pa_mainloop_run(main_.get(), &result);
    return result;
  }

 private:
  void End(SoundResult result) { loop_->quit(loop_, static_cast<int>(result)); }

  template <class... Values>
  static void Tell(const char* format, Values... values) {
    std::printf(format, values...);
    std::fflush(stdout);
  }

  void ReadOrders() {
    char bytes[4096];
    const ssize_t read = ::read(STDIN_FILENO, bytes, sizeof bytes);
    if (read <= 0) return End(SoundResult::NoOutput);
    orders_.append(bytes, static_cast<size_t>(read));
    for (size_t end = 0; (end = orders_.find('\0')) != std::string::npos;) {
      const std::string order = orders_.substr(0, end);
      orders_.erase(0, end + 1);
      const size_t blank = order.find(' ');
      const std::string file = SoundFile(order.substr(blank + 1), folder_);
      if (order.substr(0, blank) == "play") {
        sound_.emplace(file);
        Begin();
      } else {
        Tell("file %d\n", static_cast<int>(Sound(file).Fitness()));
      }
    }
  }

  /// Plays the sound that was asked for as soon as it is known on what.
  void Begin() {
    if (!sound_ || begun_ || pulse_.ConnectionState() == Pulse::State::Connecting) return;
    begun_ = true;
    if (sound_->Fitness() != SoundResult::Heard) return End(sound_->Fitness());
    if (pulse_.ConnectionState() == Pulse::State::Ready) return pulse_.Play(*sound_);
    End(PlayOnAlsa(*sound_, [this](SoundResult result) { SoundBegun(result); }));
  }

  void ConnectionChanged() override {
    if (pulse_.ConnectionState() == Pulse::State::NotThere) {
      if (begun_) return End(SoundResult::NoOutput);
      OutputSeen(AlsaOutput());
    }
    Begin();
  }

  void OutputSeen(const Output& output) override {
    if (output == output_) return;
    output_ = output;
    Tell("output %d %d %s\n", static_cast<int>(output.result), output.volume, output.name.c_str());
  }

  void SoundBegun(SoundResult result) override {
    Tell("begun %d %lld\n", static_cast<int>(result), sound_->Milliseconds());
  }

  void SoundEnded(SoundResult result) override { End(result); }

  /// A server that is not there may come; one that does not answer is told of.
  void LookAgain() {
    if (pulse_.ConnectionState() == Pulse::State::NotThere && !begun_) pulse_.Connect();
    timeval next;
    pa_gettimeofday(&next);
    next.tv_sec += kLookAgain;
    loop_->time_new(
        loop_, &next,
        [](pa_mainloop_api* loop, pa_time_event* event, const timeval*, void* self) {
          loop->time_free(event);
          auto& player = *static_cast<Player*>(self);
          if (player.pulse_.ConnectionState() == Pulse::State::Connecting) {
            player.OutputSeen({SoundResult::NoAnswer});
          }
          player.LookAgain();
        },
        this);
  }

  struct Free {
    void operator()(pa_mainloop* loop) const { pa_mainloop_free(loop); }
  };
  const std::string folder_;
  std::unique_ptr<pa_mainloop, Free> main_{pa_mainloop_new()};
  pa_mainloop_api* loop_ = pa_mainloop_get_api(main_.get());
  Pulse pulse_{loop_, *this};
  std::string orders_;
  std::optional<Output> output_;
  std::optional<Sound> sound_;
  bool begun_ = false;
};

}  // namespace
}  // namespace corvanel

int main(int argc, char** argv) {
  return corvanel::Player(argc > 1 ? argv[1] : ".").Run();
}
