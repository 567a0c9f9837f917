#include "system/posix/sound/pulse.h"

#include <string_view>
#include <vector>

namespace corvanel {
namespace {

// Seconds that the server holds, so that a busy computer does not interrupt a sound; how much of it
// must be there before it begins; and how much at a time goes on to the output.
constexpr double kHeld = 2;
constexpr double kBeforeBegin = 0.05;
constexpr double kAtATime = 0.1;

Pulse& Self(void* pulse) {
  return *static_cast<Pulse*>(pulse);
}

void Done(pa_operation* operation) {
  if (operation != nullptr) pa_operation_unref(operation);
}

int Percent(const pa_cvolume& volume) {
  return static_cast<int>((pa_cvolume_max(&volume) * 100ULL + PA_VOLUME_NORM / 2) / PA_VOLUME_NORM);
}

SoundResult ResultOf(bool mute, const pa_cvolume& volume) {
  if (mute) return SoundResult::Muted;
  return Percent(volume) == 0 ? SoundResult::NoVolume : SoundResult::Heard;
}

Output OutputOf(const pa_sink_info& sink) {
  // The server's stand-in for an output that is not there swallows everything.
  if (std::string_view(sink.name) == "auto_null") return {};
  return {ResultOf(sink.mute != 0, sink.volume), Percent(sink.volume), sink.description};
}

}  // namespace

Pulse::~Pulse() {
  if (stream_ != nullptr) pa_stream_unref(stream_);
  if (context_ != nullptr) {
    pa_context_set_state_callback(context_, nullptr, nullptr);
    pa_context_disconnect(context_);
    pa_context_unref(context_);
  }
}

void Pulse::Connect() {
  if (context_ != nullptr) pa_context_unref(context_);
  context_ = pa_context_new(loop_, "Corvanel");
  state_ = State::Connecting;
  pa_context_set_state_callback(
      context_, [](pa_context*, void* self) { Self(self).StateChanged(); }, this);
  if (pa_context_connect(context_, nullptr, PA_CONTEXT_NOFLAGS, nullptr) < 0) StateChanged();
}

void Pulse::StateChanged() {
  const pa_context_state_t now = pa_context_get_state(context_);
  if (PA_CONTEXT_IS_GOOD(now) && now != PA_CONTEXT_READY) return;
  state_ = now == PA_CONTEXT_READY ? State::Ready : State::NotThere;
  if (state_ == State::Ready) {
    pa_context_set_subscribe_callback(
        context_,
        [](pa_context*, pa_subscription_event_type_t, uint32_t, void* self) {
          Self(self).AskForOutput();
        },
        this);
    Done(pa_context_subscribe(context_,
                              static_cast<pa_subscription_mask_t>(PA_SUBSCRIPTION_MASK_SINK |
                                                                  PA_SUBSCRIPTION_MASK_SERVER),
                              nullptr, nullptr));
    AskForOutput();
  }
  listener_.ConnectionChanged();
}

void Pulse::AskForOutput() {
  Done(pa_context_get_server_info(
      context_,
      [](pa_context* context, const pa_server_info* server, void* self) {
        if (server == nullptr) return;
        if (server->default_sink_name == nullptr) return Self(self).listener_.OutputSeen({});
        Done(pa_context_get_sink_info_by_name(
            context, server->default_sink_name,
            [](pa_context*, const pa_sink_info* sink, int end, void* pulse) {
              if (sink != nullptr) Self(pulse).listener_.OutputSeen(OutputOf(*sink));
              if (end < 0) Self(pulse).listener_.OutputSeen({});
            },
            self));
      },
      this));
}

void Pulse::Play(Sound& sound) {
  sound_ = &sound;
  Done(pa_context_get_server_info(
      context_,
      [](pa_context*, const pa_server_info* server, void* self) {
        Self(self).PlayOn(server == nullptr ? nullptr : server->default_sink_name);
      },
      this));
}

void Pulse::PlayOn(const char* output) {
  const pa_sample_spec spec{PA_SAMPLE_FLOAT32NE, sound_->Rate(),
                            static_cast<uint8_t>(sound_->Channels())};
  pa_channel_map places;
  pa_channel_map_init_extend(&places, spec.channels, PA_CHANNEL_MAP_WAVEEX);
  stream_ = pa_stream_new(context_, "Cue", &spec, &places);
  if (stream_ == nullptr) return listener_.SoundEnded(SoundResult::NoSound);
  pa_stream_set_state_callback(
      stream_,
      [](pa_stream* stream, void* self) {
        if (pa_stream_get_state(stream) == PA_STREAM_FAILED) {
          Self(self).listener_.SoundEnded(SoundResult::NoOutput);
        }
      },
      this);
  pa_stream_set_write_callback(
      stream_, [](pa_stream*, size_t bytes, void* self) { Self(self).Write(bytes); }, this);
  pa_stream_set_started_callback(
      stream_, [](pa_stream*, void* self) { Self(self).Started(); }, this);
  const auto bytes = [&](double seconds) {
    return static_cast<uint32_t>(seconds * spec.rate) * static_cast<uint32_t>(pa_frame_size(&spec));
  };
  constexpr auto kServersChoice = static_cast<uint32_t>(-1);
  const pa_buffer_attr held{kServersChoice, bytes(kHeld), bytes(kBeforeBegin), bytes(kAtATime),
                            kServersChoice};
  // Early requests: else the output itself would hold the two seconds, too.
  if (pa_stream_connect_playback(stream_, output, &held, PA_STREAM_EARLY_REQUESTS, nullptr,
                                 nullptr) < 0) {
    listener_.SoundEnded(SoundResult::NoOutput);
  }
}

void Pulse::Write(size_t bytes) {
  const size_t frames = bytes / sizeof(float) / sound_->Channels();
  std::vector<float> samples(frames * sound_->Channels());
  const size_t read = sound_->Read(samples.data(), frames);
  if (read > 0) {
    pa_stream_write(stream_, samples.data(), read * sound_->Channels() * sizeof(float), nullptr, 0,
                    PA_SEEK_RELATIVE);
  }
  if (read == frames) return;
  pa_stream_set_write_callback(stream_, nullptr, nullptr);
  Done(pa_stream_drain(
      stream_,
      [](pa_stream*, int success, void* self) {
        Self(self).listener_.SoundEnded(success != 0 ? SoundResult::Heard : SoundResult::NoOutput);
      },
      this));
}

/// The server plays the first of it: asks whether that can be heard.
void Pulse::Started() {
  pa_stream_set_started_callback(stream_, nullptr, nullptr);
  Done(pa_context_get_sink_input_info(
      context_, pa_stream_get_index(stream_),
      [](pa_context* context, const pa_sink_input_info* own, int, void* self) {
        if (own == nullptr) return;
        Self(self).ownResult_ = ResultOf(own->mute != 0, own->volume);
        Done(pa_context_get_sink_info_by_index(
            context, own->sink,
            [](pa_context*, const pa_sink_info* sink, int, void* pulse) {
              if (sink == nullptr) return;
              const SoundResult output = OutputOf(*sink).result;
              Self(pulse).listener_.SoundBegun(output == SoundResult::Heard ? Self(pulse).ownResult_
                                                                            : output);
            },
            self));
      },
      this));
}

}  // namespace corvanel
