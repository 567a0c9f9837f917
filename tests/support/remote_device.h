#pragma once

#include <fmt/format.h>
#include <sodium.h>

#include <array>
#include <string>

#include "network/remote_devices.h"

namespace corvanel {

/// Speaks as a device's page does.
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
    std::array<char, 2 * crypto_scalarmult_BYTES + 1> digits{};
    crypto_scalarmult_base(own.data(), secret.data());
    sodium_bin2hex(digits.data(), digits.size(), own.data(), own.size());
    return fmt::format("join {} {}", digits.data(), name);
  }
  /// The next word on this connection.
  std::string Say(const std::string& text, double uptime) {
    return Signed(++number_, fmt::format("{:.3f}", uptime), text);
  }
  std::string Signed(uint32_t number, const std::string& uptime, const std::string& text) const {
    const std::string told = fmt::format("{} {} {} {}", challenge_, number, uptime, text);
    std::array<unsigned char, crypto_auth_hmacsha256_KEYBYTES> key{};
    std::array<unsigned char, crypto_auth_hmacsha256_BYTES> mac{};
    sodium_hex2bin(key.data(), key.size(), device_.key.data(), device_.key.size(), nullptr, nullptr,
                   nullptr);
    crypto_auth_hmacsha256(mac.data(), reinterpret_cast<const unsigned char*>(told.data()),
                           told.size(), key.data());
    std::array<char, 2 * crypto_auth_hmacsha256_BYTES + 1> digits{};
    sodium_bin2hex(digits.data(), digits.size(), mac.data(), mac.size());
    return fmt::format("say {} {} {} {} {}", device_.Id(), number, uptime, digits.data(), text);
  }

 private:
  RemoteDevice device_;
  std::string challenge_;
  uint32_t number_ = 0;
};

}  // namespace corvanel
