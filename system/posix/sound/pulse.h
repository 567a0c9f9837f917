#pragma once

#include <pulse/pulseaudio.h>

#include <functional>

#include "system/posix/sound/output.h"

namespace corvanel {

/// The connection to the sound server: PulseAudio, or PipeWire, which speaks the same. Everything
/// happens in the main loop that it was made with.
class Pulse {
 public:
  enum class State { Connecting, Ready, NotThere };

  struct Listener {
    virtual ~Listener() = default;
    virtual void ConnectionChanged() = 0;
    /// May come again with what was told before.
    virtual void OutputSeen(const Output& output) = 0;
    virtual void SoundBegun(SoundResult result) = 0;
    virtual void SoundEnded(SoundResult result) = 0;
  };

  Pulse(pa_mainloop_api* loop, Listener& listener) : loop_(loop), listener_(listener) {}
  ~Pulse();

  /// Connects, anew where there was a connection.
  void Connect();
  State ConnectionState() const { return state_; }
  /// Plays the sound on what is the default output now, whatever output the server remembers for
  /// Corvanel; the connection must be ready, and the sound live until it ended.
  void Play(Sound& sound);

 private:
  void StateChanged();
  void AskForOutput();
  void PlayOn(const char* output);
  void Write(size_t bytes);
  void Started();

  pa_mainloop_api* loop_;
  Listener& listener_;
  State state_ = State::NotThere;
  pa_context* context_ = nullptr;
  pa_stream* stream_ = nullptr;
  Sound* sound_ = nullptr;
  SoundResult ownResult_ = SoundResult::Heard;  // what Corvanel's own volume makes of the sound
};

}  // namespace corvanel
