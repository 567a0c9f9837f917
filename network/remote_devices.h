#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "basics/result.h"

namespace corvanel {

/// A device from which the session may be led: whoever has its key.
struct RemoteDevice {
  std::string key;   // 32 bytes as hex digits; never sent
  std::string name;  // as its owner calls it; text, never markup

  /// What it calls itself when it speaks: follows from the key, and tells nothing of it.
  std::string Id() const;
  bool operator==(const RemoteDevice&) const = default;
};

/// The key that follows from a code of ten characters, by so much work that nobody tries them all.
/// Throws RuntimeError when there is no memory for that.
std::string KeyOfCode(std::string_view code);
/// A new code: "K7QM2XRT9B". Throws RuntimeError on a computer without random numbers.
std::string NewCode();

/// A file of devices: one JSON text. Error when that is what it is not.
std::string TextOf(const std::vector<RemoteDevice>& devices);
Result<std::vector<RemoteDevice>> ReadDevices(const std::string& text);

/// What a device said, and proved to have said.
struct RemoteWord {
  uint64_t line = 0;    // the connection that it came by
  uint32_t number = 0;  // of the word on this connection
  RemoteDevice device;
  std::string text;             // "pause"
  std::string invitation = {};  // the key with which the device comes in; empty where it is in
  std::string publicKey = {};   // with which it does: the server's part of its key, hex digits
  std::string proof = {};       // that the server has the invited key: what that makes of its part
};

/// Who is let in, and who may come.
class RemoteGate {
 public:
  RemoteGate() = default;
  /// `invitedKey`: the next device to be let in proves to have this one; empty: none will be.
  RemoteGate(std::vector<RemoteDevice> devices, std::string invitedKey);

  /// The device that calls itself `id`, its name empty where it is only invited; nothing for
  /// others.
  std::optional<RemoteDevice> Find(std::string_view id) const;
  bool Has(const RemoteDevice& device) const;
  /// The invited device comes in under a name, and with it the invitation ends.
  void LetIn(const RemoteDevice& device);

 private:
  std::vector<RemoteDevice> devices_;
  std::string invitedKey_;
};

/// One connection on which devices speak. It has a challenge of its own and its words are counted,
/// so that what somebody else heard can never be said again, here or on another connection.
class RemoteLine {
 public:
  static constexpr double kTooLate = 10;  // seconds from a word's saying to its coming

  /// What every word on this connection is signed with.
  const std::string& Challenge();
  /// What `message` says: "say ID NUMBER UPTIME MAC TEXT", where UPTIME is when it was said by the
  /// server's clock in seconds, and MAC what the device's key makes of "CHALLENGE NUMBER UPTIME
  /// TEXT" (HMAC-SHA-256, hex). All that an invited device can say is "join PUBLIC NAME"; the
  /// word's device then has that name and a key of its own, which is agreed on (X25519) and signed
  /// for by the invited key, so that whoever sees the code later has no use for it. An error's
  /// description is what the device is told: "unknown" when nobody who is let in or invited said
  /// that, "repeated", "late", "name" for one that cannot be shown.
  Result<RemoteWord> Hear(std::string_view message, const RemoteGate& gate, double now);

 private:
  std::string challenge_;
  uint32_t last_ = 0;
};

}  // namespace corvanel
