#include "startup/update_check.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <string_view>

#include "basics/numbers.h"
#include "settings/settings_files.h"

namespace corvanel {
namespace {

constexpr const char* kVersionFile = "timerversion.txt";
constexpr const char* kInstaller = "corvanelsetup.exe";
constexpr const char* kSignature = "timerversion.sig";
constexpr const char* kPackage = ".deb";
constexpr const char* kNoAccess = "- can't access Corvanel website at present";
constexpr double kHighestPart = 99;  // of a version number, which are compared by hundreds
constexpr int kStopped = 1;          // by the director
constexpr const char* kOther = "the file is not the one that was signed";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// Takes the next line off the text, without its end.
std::string_view TakeLine(std::string_view& text) {
  const size_t end = std::min(text.find('\n'), text.size());
  std::string_view line = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

/// The whole text as a part of a version.
std::optional<int> VersionPart(std::string_view text) {
  text = Trimmed(text);
  const bool digits = !text.empty() && text.find_first_not_of("0123456789") == text.npos;
  if (!digits || Val(text) > kHighestPart * 100) return std::nullopt;
  return static_cast<int>(Val(text));
}

}  // namespace

std::optional<Release> ParseVersionFile(const std::string& bytes) {
  std::string_view rest = bytes;
  if (rest.starts_with(kByteOrderMark)) rest.remove_prefix(kByteOrderMark.size());
  std::string_view first = TakeLine(rest);
  Release release;
  for (int* part : {&release.version.major, &release.version.minor, &release.version.revision}) {
    const size_t comma = std::min(first.find(','), first.size());
    const auto number = VersionPart(first.substr(0, comma));
    if (!number) return std::nullopt;
    *part = *number;
    first.remove_prefix(std::min(comma + 1, first.size()));
  }
  while (!rest.empty()) {
    if (!release.notes.empty()) release.notes += "\r\n";
    release.notes += AsUtf8(std::string(TakeLine(rest)));
  }
  return release;
}

std::string SizeText(double bytes) {
  const double kilobytes = bytes / 1024;
  if (kilobytes < 1024) return fmt::format("{:.0f} kb", kilobytes);
  return fmt::format("{:.1f} mb", kilobytes / 1024);
}

bool UpdateCheck::Run() {
  const auto release = NewerRelease();
  if (!release) return false;
  const Version& version = release->version;
  const std::string available = fmt::format("Version {}.{}.{} is available for download",
                                            version.major, version.minor, version.revision);
  parts_.splash.Log(available);
  std::string question = available;
  if (!release->notes.empty()) question += "\r\n" + release->notes;
  const SignedFile* installer = FindFile(release->files, kInstaller);
  if (parts_.installer == nullptr || installer == nullptr) {
    Tell(question, *release);
    return false;
  }
  question += "\r\n\r\nDo you want to download and install the update?";
  return parts_.prompts.AskYesNo(question) == Answer::Yes && FetchAndStart(*installer);
}

/// Where the release is, or its package where there is one for this system.
void UpdateCheck::Tell(const std::string& news, const Release& release) {
  std::string place = parts_.server.Address();
  const auto package =
      std::find_if(release.files.begin(), release.files.end(),
                   [](const SignedFile& file) { return file.name.ends_with(kPackage); });
  if (package != release.files.end()) place += package->name;
  parts_.prompts.Message(news + "\r\n\r\nIt is at " + place);
}

/// What the server has, when it is newer than this program; else the log says why not.
std::optional<Release> UpdateCheck::NewerRelease() {
  SplashView& splash = parts_.splash;
  splash.Log("Checking internet");
  if (!parts_.server.Connected()) {
    splash.Log("- not connected");
    return std::nullopt;
  }
  splash.Log("- connected");
  splash.Log("- contacting Corvanel website");
  if (parts_.server.DateOf(kVersionFile).empty()) {
    splash.Log(kNoAccess);
    return std::nullopt;
  }
  const auto file = parts_.server.Fetch(kVersionFile);
  auto release = file ? ParseVersionFile(file.Value()) : std::nullopt;
  if (release) parts_.keepVersionFile(file.Value());
  if (!release) {
    if (!file) splash.Log(fmt::format("{}{:X}", kNoAccess, file.Failure().number));
    splash.Log("Update information could not be found");
    return std::nullopt;
  }
  splash.Log("Checking for updates");
  if (release->version.Number() <= parts_.version.Number()) {
    splash.Log("Your version of Corvanel is up-to-date");
    return std::nullopt;
  }
  if (!parts_.key.empty() && !Vouched(*release, file.Value())) {
    splash.Log("- version on the website is not signed");
    return std::nullopt;
  }
  return release;
}

/// Looks at the signature of the version file, and with it of all others: the number of the version
/// cannot be that of another release than the installer.
bool UpdateCheck::Vouched(Release& release, const std::string& versionFile) {
  const auto signature = parts_.server.Fetch(kSignature);
  auto files = signature ? ReadSignedFiles(signature.Value(), parts_.key) : std::nullopt;
  const SignedFile* version = files ? FindFile(*files, kVersionFile) : nullptr;
  if (version == nullptr) return false;
  Sha256 hash;
  hash.Add(versionFile);
  if (version->sha256 != hash.Digits()) return false;
  release.files = *std::move(files);
  return true;
}

bool UpdateCheck::FetchAndStart(const SignedFile& wanted) {
  parts_.splash.ShowDownload(true);
  Status done = Receive(wanted);
  parts_.splash.ShowDownload(false);
  if (done) {
    parts_.prompts.Message("Corvanel will now close whilst the update is installed");
    done = parts_.installer->Start();
    if (done) return true;
  }
  // Deliberate: a download that the director stopped stays as far as it came.
  if (done.Failure().number != kStopped) parts_.installer->Remove();
  parts_.prompts.Message(done.Failure().description);
  parts_.splash.Log("Download failed");
  return false;
}

Status UpdateCheck::Receive(const SignedFile& wanted) {
  const auto failed = [](const std::string& details) {
    return Error{0, "Error trying to download - " + details};
  };
  InstallerFile& file = *parts_.installer;
  const auto promised = parts_.server.Begin(kInstaller);
  if (!promised) return failed(promised.Failure().description);
  if (promised.Value() >= 0 && promised.Value() != wanted.length) return failed(kOther);
  if (!file.Create()) return failed("the file could not be created");
  const auto total = static_cast<double>(wanted.length);
  const double start = parts_.time.Uptime();
  double received = 0;
  for (;;) {
    if (parts_.splash.StopWanted()) return Error{kStopped, "Download was stopped"};
    const auto chunk = parts_.server.Next();
    // Nothing before the last byte is a lost connection too.
    if (!chunk || (chunk.Value().empty() && received < total)) {
      return Error{0, "Connection to the internet has been lost"};
    }
    if (chunk.Value().empty()) break;
    received += static_cast<double>(chunk.Value().size());
    if (received > total) return failed(kOther);
    if (!file.Write(chunk.Value())) return failed("the disk is full");
    const double perByte = (parts_.time.Uptime() - start) / received;
    parts_.splash.ShowDownloadProgress(
        SizeText(received) + " of " + SizeText(total),
        fmt::format(" - {:.0f} secs remaining", (total - received) * perByte),
        static_cast<int>(std::lround(100 * received / total)));
  }
  const auto digits = file.Close();
  if (!digits) return failed(digits.Failure().description);
  if (digits.Value() != wanted.sha256) return failed(kOther);
  return {};
}

}  // namespace corvanel
