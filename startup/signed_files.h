#pragma once

#include <sodium.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvanel {

/// A file of a release, as its signature vouches for it.
struct SignedFile {
  std::string name;
  int64_t length = 0;  // bytes
  std::string sha256;  // lower-case hexadecimal digits, as all of them here

  bool operator==(const SignedFile&) const = default;
};

/// Reads a signature file, as tools/release makes it: a line "SHA256 LENGTH NAME" for each file,
/// and last the line "ed25519 SIGNATURE", which signs all bytes before it. `key`: the public key,
/// 64 digits. Nothing when anything about it is not as it should be.
std::optional<std::vector<SignedFile>> ReadSignedFiles(std::string_view text, std::string_view key);

/// The file of that name, or null.
const SignedFile* FindFile(const std::vector<SignedFile>& files, std::string_view name);

/// The SHA-256 of bytes that come piece by piece.
class Sha256 {
 public:
  Sha256();
  void Add(std::string_view bytes);
  /// Nothing can be added afterwards.
  std::string Digits();

 private:
  crypto_hash_sha256_state state_;
};

}  // namespace corvanel
