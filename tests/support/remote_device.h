#pragma once

#include <fmt/format.h>
#include <sodium.h>

#include <array>
#include <string>

#include "basics/hex.h"
#include "network/remote_devices.h"

namespace corvanel {

/// Speaks as a device's page does; where its key is none, with one of zeros.
class SpeakingDevice {
 public:
  explicit SpeakingDevice(std::string key) : device_{std::move(key), ""} {}

  const RemoteDevice& Device() const { return device_; }
  void Meet(const std::string& challenge) {
    challenge_ = challenge;
    number_ = 0;
  }
  /// "join" and the public part of a key that is thrown away.
  static std::string Join(const std::string& name) {
    std::array<unsigned char, crypto_scalarmult_BYTES> secret{7};
    std::array<unsigned char, crypto_scalarmult_BYTES> own{};
    crypto_scalarmult_base(own.data(), secret.data());
    return fmt::format("join {} {}", Hex(own), name);
  }
  /// The next word on this connection.
  std::string Say(const std::string& text, double uptime) {
    return Signed(++number_, fmt::format("{:.3f}", uptime), text);
  }
  std::string Signed(uint32_t number, const std::string& uptime, const std::string& text) const {
    const std::string told = fmt::format("{} {} {} {}", challenge_, number, uptime, text);
    const auto key = FromHex<crypto_auth_hmacsha256_KEYBYTES>(device_.key)
                         .value_or(std::array<unsigned char, crypto_auth_hmacsha256_KEYBYTES>{});
    std::array<unsigned char, crypto_auth_hmacsha256_BYTES> mac{};
    crypto_auth_hmacsha256(mac.data(), BytesOf(told), told.size(), key.data());
    return fmt::format("say {} {} {} {} {}", device_.Id(), number, uptime, Hex(mac), text);
  }

 private:
  RemoteDevice device_;
  std::string challenge_;
  uint32_t number_ = 0;
};

}  // namespace corvanel
