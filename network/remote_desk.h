#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "clock/round_clock.h"
#include "network/remote_devices.h"
#include "session/notices.h"

namespace corvanel {

/// The lines by which devices speak and are told, as the desk needs them.
class RemoteLines {
 public:
  virtual ~RemoteLines() = default;
  /// From now on these, and nobody else, are let in.
  virtual void Admit(const RemoteGate& gate) = 0;
  /// Tells every device that is let in how the session can be led: one JSON object.
  virtual void TellDevices(const std::string& state) = 0;
  /// Answers a word: why it was not carried out; empty when it was.
  virtual void Answer(const RemoteWord& word, const std::string& refusal) = 0;
};

/// Where the list of devices lies from one evening to the next.
class DeviceKeeper {
 public:
  virtual ~DeviceKeeper() = default;
  /// False when another program works with the list: it is not ours then.
  virtual bool Take() = 0;
  virtual void Keep(const std::string& text) = 0;
  /// What was kept; empty when nothing was.
  virtual std::string Kept() const = 0;
  /// Why the latest text is not kept; empty when it is, or is still on its way.
  virtual std::string Failure() const = 0;
  /// What was kept is damaged: puts it aside, for a person to look at.
  virtual void PutAside() = 0;
};

/// Leads the session from devices in the hall: who is let in, what they have done, and what they
/// are told. All words come to it one after the other, as the keys do.
class RemoteDesk : public SessionListener {
 public:
  struct Parts {
    RoundClock& clock;
    Notices& notices;
    DeviceKeeper& keeper;
  };
  explicit RemoteDesk(const Parts& parts) : parts_(parts) {}

  /// Reads who was let in on earlier evenings. Where another program works with the list, nobody
  /// was.
  void Load();
  /// The lines that are served now; null: none.
  void SpeakBy(RemoteLines* lines);

  /// The code with which one device can come in until EndInvitation; after it another code.
  const std::string& Invite();
  void EndInvitation();
  /// Of the open invitation; empty when there is none.
  const std::string& Code() const { return code_; }

  const std::vector<RemoteDevice>& Devices() const { return devices_; }
  /// From now on it cannot do anything any more.
  void SendAway(const RemoteDevice& device);

  /// Carries out what a device said: one of those that are let in, or the invited one, which then
  /// is.
  void Hear(const RemoteWord& word);

  void ShowFace(const ClockFace& face) override;
  void ShowNotices(const std::vector<Notice>& notices) override;

 private:
  void Admit();
  void Keep();
  void Join(const RemoteDevice& device);
  std::string Obey(const RemoteWord& word, const std::string& by);
  void Tell();
  void TellOfKeeping();

  Parts parts_;
  RemoteLines* lines_ = nullptr;
  std::vector<RemoteDevice> devices_;
  std::string code_;
  std::string invitedKey_;
  std::vector<Notice> notices_;
  std::string told_;
  std::string failure_;
  bool keeps_ = false;  // the list is ours
};

}  // namespace corvanel
