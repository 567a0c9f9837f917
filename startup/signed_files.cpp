#include "startup/signed_files.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "basics/hex.h"

namespace corvanel {
namespace {

constexpr std::string_view kSigned = "ed25519 ";

/// "SHA256 LENGTH NAME".
std::optional<SignedFile> ReadLine(std::string_view line) {
  constexpr size_t kDigits = size_t{2} * crypto_hash_sha256_BYTES;
  SignedFile file;
  file.sha256 = line.substr(0, kDigits);
  if (!FromHex<crypto_hash_sha256_BYTES>(file.sha256)) return std::nullopt;
  line.remove_prefix(kDigits);
  if (!line.starts_with(' ')) return std::nullopt;
  const char* last = line.data() + line.size();
  const auto [end, error] = std::from_chars(line.data() + 1, last, file.length);
  if (error != std::errc() || file.length <= 0 || end == last || *end != ' ') return std::nullopt;
  file.name.assign(end + 1, last);
  return file;
}

}  // namespace

std::optional<std::vector<SignedFile>> ReadSignedFiles(std::string_view text,
                                                       std::string_view key) {
  const size_t last = text.rfind(kSigned);
  if (last == text.npos || !text.ends_with('\n')) return std::nullopt;
  std::string_view lines = text.substr(0, last);
  std::string_view digits = text.substr(last + kSigned.size());
  digits.remove_suffix(1);
  const auto publicKey = FromHex<crypto_sign_PUBLICKEYBYTES>(key);
  const auto signature = FromHex<crypto_sign_BYTES>(digits);
  if (!publicKey || !signature ||
      crypto_sign_verify_detached(signature->data(), BytesOf(lines), lines.size(),
                                  publicKey->data()) != 0) {
    return std::nullopt;
  }
  std::vector<SignedFile> files;
  while (!lines.empty()) {
    const size_t end = lines.find('\n');
    const auto file = end == lines.npos ? std::nullopt : ReadLine(lines.substr(0, end));
    if (!file) return std::nullopt;
    files.push_back(*file);
    lines.remove_prefix(end + 1);
  }
  return files;
}

const SignedFile* FindFile(const std::vector<SignedFile>& files, std::string_view name) {
  const auto found = std::find_if(files.begin(), files.end(),
                                  [&](const SignedFile& file) { return file.name == name; });
  return found == files.end() ? nullptr : &*found;
}

Sha256::Sha256() {
  crypto_hash_sha256_init(&state_);
}

void Sha256::Add(std::string_view bytes) {
  crypto_hash_sha256_update(&state_, BytesOf(bytes), bytes.size());
}

std::string Sha256::Digits() {
  std::array<unsigned char, crypto_hash_sha256_BYTES> hash{};
  crypto_hash_sha256_final(&state_, hash.data());
  return Hex(hash);
}

}  // namespace corvanel
