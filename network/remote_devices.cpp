#include "network/remote_devices.h"

#include <fmt/format.h>
#include <sodium.h>
#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>

#include "basics/hex.h"
#include "basics/numbers.h"
#include "basics/runtime_error.h"

namespace corvanel {
namespace {

using nlohmann::json;

constexpr size_t kKeyBytes = crypto_auth_hmacsha256_KEYBYTES;
constexpr size_t kExchangeBytes = crypto_scalarmult_BYTES;
constexpr size_t kIdDigits = 16;
constexpr size_t kChallengeBytes = 16;

// Thirty-two signs of which no two look alike: ten of them are fifty bits.
constexpr std::string_view kSigns = "23456789ABCDEFGHJKLMNPQRSTUVWXYZ";
constexpr size_t kCodeSigns = 10;

// The work that a code's key costs, on both sides the same; 16 MB and a second on a slow phone.
constexpr uint64_t kRounds = 16384;
constexpr uint32_t kBlock = 8;
constexpr std::string_view kSalt = "corvanel remote";

using Key = std::array<unsigned char, kKeyBytes>;
using Mac = std::array<unsigned char, crypto_auth_hmacsha256_BYTES>;
using Part = std::array<unsigned char, kExchangeBytes>;  // of a key that is agreed on

Mac MacOf(const std::string& key, std::string_view text) {
  Mac mac{};
  const Key bytes = FromHex<kKeyBytes>(key).value_or(Key{});
  crypto_auth_hmacsha256(mac.data(), BytesOf(text), text.size(), bytes.data());
  return mac;
}

std::string HexMac(const std::string& key, std::string_view text) {
  return Hex(MacOf(key, text));
}

bool IsKey(const std::string& key) {
  return FromHex<kKeyBytes>(key).has_value();
}

/// Takes the word before the next blank off the front; all when there is none.
std::string_view TakeWord(std::string_view& text) {
  const size_t end = std::min(text.find(' '), text.size());
  const std::string_view word = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return word;
}

template <class Number>
std::optional<Number> NumberOf(std::string_view text) {
  Number number{};
  const char* const end = text.data() + text.size();
  const auto [rest, failure] = std::from_chars(text.data(), end, number);
  return failure == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}

/// Makes the new device's key of both sides' parts. False for a part that leads to none.
bool Agree(const Part& theirs, const std::string& told, RemoteWord& word) {
  Part secret{};
  Part own{};
  Part shared{};
  randombytes_buf(secret.data(), secret.size());
  crypto_scalarmult_base(own.data(), secret.data());
  if (crypto_scalarmult(shared.data(), secret.data(), theirs.data()) != 0) return false;
  word.invitation = word.device.key;
  word.publicKey = Hex(own);
  const std::string both = told + ' ' + word.publicKey;
  word.proof = HexMac(word.invitation, "server " + both);
  word.device.key = HexMac(word.invitation, "device " + both + ' ' + Hex(shared));
  return true;
}

/// Signs that are none, or that turn and hide others.
bool IsHidden(unsigned code) {
  return code < ' ' || (code >= 0x7F && code < 0xA0) || (code >= 0x200B && code <= 0x200F) ||
         (code >= 0x2028 && code <= 0x202E) || (code >= 0x2060 && code <= 0x206F) || code == 0xFEFF;
}

/// As a person calls a device: without signs that are none; empty when it is too long to be shown.
std::string NameIn(std::string_view text) {
  constexpr size_t kLongest = 80;  // bytes
  std::string name;
  while (!text.empty()) {
    utf8proc_int32_t code = -1;
    const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                         static_cast<utf8proc_ssize_t>(text.size()), &code);
    const size_t taken = length > 0 ? static_cast<size_t>(length) : 1;
    if (length > 0 && !IsHidden(static_cast<unsigned>(code))) name += text.substr(0, taken);
    text.remove_prefix(taken);
  }
  name = Trimmed(name);
  return name.size() > kLongest ? "" : name;
}

}  // namespace

std::string RemoteDevice::Id() const {
  return HexMac(key, "id").substr(0, kIdDigits);
}

std::string KeyOfCode(std::string_view code) {
  Key key{};
  if (crypto_pwhash_scryptsalsa208sha256_ll(BytesOf(code), code.size(), BytesOf(kSalt),
                                            kSalt.size(), kRounds, kBlock, 1, key.data(),
                                            key.size()) != 0) {
    throw RuntimeError(7, "Out of memory");
  }
  return Hex(key);
}

std::string NewCode() {
  if (sodium_init() < 0) throw RuntimeError(17, "The computer gives no random numbers");
  std::string code;
  while (code.size() < kCodeSigns) code += kSigns[randombytes_uniform(kSigns.size())];
  return code;
}

std::string TextOf(const std::vector<RemoteDevice>& devices) {
  json list = json::array();
  for (const RemoteDevice& device : devices) {
    list.push_back({{"name", device.name}, {"key", device.key}});
  }
  return list.dump(1, ' ', false, json::error_handler_t::replace) + '\n';
}

Result<std::vector<RemoteDevice>> ReadDevices(const std::string& text) {
  try {
    std::vector<RemoteDevice> devices;
    for (const json& entry : json::parse(text)) {
      devices.push_back({entry.at("key"), entry.at("name")});
      if (!IsKey(devices.back().key) || devices.back().name.empty())
        return Error{13, "it is damaged"};
    }
    return devices;
  } catch (const std::exception&) {
    return Error{13, "it is damaged"};
  }
}

RemoteGate::RemoteGate(std::vector<RemoteDevice> devices, std::string invitedKey)
    : devices_(std::move(devices)), invitedKey_(std::move(invitedKey)) {}

std::optional<RemoteDevice> RemoteGate::Find(std::string_view id) const {
  const auto found = std::find_if(devices_.begin(), devices_.end(),
                                  [&](const RemoteDevice& device) { return device.Id() == id; });
  if (found != devices_.end()) return *found;
  const RemoteDevice invited{invitedKey_, ""};
  return !invitedKey_.empty() && invited.Id() == id ? std::optional(invited) : std::nullopt;
}

bool RemoteGate::Has(const RemoteDevice& device) const {
  return std::any_of(devices_.begin(), devices_.end(),
                     [&](const RemoteDevice& other) { return other.key == device.key; });
}

void RemoteGate::LetIn(const RemoteDevice& device) {
  devices_.push_back(device);
  invitedKey_.clear();
}

const std::string& RemoteLine::Challenge() {
  if (challenge_.empty() && sodium_init() >= 0) {
    std::array<unsigned char, kChallengeBytes> bytes{};
    randombytes_buf(bytes.data(), bytes.size());
    challenge_ = Hex(bytes);
  }
  return challenge_;
}

Result<RemoteWord> RemoteLine::Hear(std::string_view message, const RemoteGate& gate, double now) {
  const Error unknown{0, "unknown"};
  if (TakeWord(message) != "say" || challenge_.empty()) return unknown;
  const auto device = gate.Find(TakeWord(message));
  const std::string_view number = TakeWord(message);
  const std::string_view uptime = TakeWord(message);
  const auto mac = FromHex<crypto_auth_hmacsha256_BYTES>(TakeWord(message));
  const auto counted = NumberOf<uint32_t>(number);
  const auto said = NumberOf<double>(uptime);
  if (!device || !mac || !counted || !said) return unknown;
  const std::string told = fmt::format("{} {} {} {}", challenge_, number, uptime, message);
  const Mac right = MacOf(device->key, told);
  if (sodium_memcmp(right.data(), mac->data(), right.size()) != 0) return unknown;
  if (*counted <= last_) return Error{0, "repeated"};
  last_ = *counted;
  if (!(std::abs(now - *said) <= kTooLate)) return Error{0, "late"};
  RemoteWord word{0, *counted, *device, std::string(message)};
  if (!word.device.name.empty()) return word;
  if (TakeWord(message) != "join") return unknown;
  const auto theirs = FromHex<kExchangeBytes>(TakeWord(message));
  const std::string name = NameIn(message);
  if (name.empty()) return Error{0, "name"};
  if (!theirs || !Agree(*theirs, told, word)) return unknown;
  word.device.name = name;
  return word;
}

}  // namespace corvanel
