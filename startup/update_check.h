#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "basics/result.h"
#include "session/prompts.h"
#include "session/time_source.h"
#include "startup/signed_files.h"
#include "startup/version.h"

namespace corvanel {

/// What the update server says of its release.
struct Release {
  Version version;
  std::string notes;              // lines joined by carriage return and line feed
  std::vector<SignedFile> files;  // none where no signature could be looked at
};

/// Reads the version file: three numbers separated by commas, and the notes. Nothing when its
/// first line does not say a version.
std::optional<Release> ParseVersionFile(const std::string& bytes);

/// A number of bytes as people read it: "900 kb", "1.5 mb".
std::string SizeText(double bytes);

/// The way to the update server. Everything waits a few seconds at most, while windows stay alive.
class UpdateServer {
 public:
  virtual ~UpdateServer() = default;
  virtual bool Connected() = 0;
  /// Where its files are, for people.
  virtual std::string Address() const = 0;
  /// The date of a file of the server, "20 Nov 2026 10:00:00"; empty when it does not answer.
  virtual std::string DateOf(const std::string& name) = 0;
  /// A small file of the server. The error's number is the result code.
  virtual Result<std::string> Fetch(const std::string& name) = 0;
  /// Begins a download, in the place of one that is under way. The length that the server promises;
  /// negative when it does not say. An error when it does not give the file.
  virtual Result<int64_t> Begin(const std::string& name) = 0;
  /// Waits for the next bytes of the download, at most 20480. Empty when there are no more; an
  /// error when the connection is lost.
  virtual Result<std::string> Next() = 0;
};

/// The installer's file on this computer, under a fresh name that nobody else can write.
class InstallerFile {
 public:
  virtual ~InstallerFile() = default;
  /// False when it cannot be created.
  virtual bool Create() = 0;
  virtual bool Write(const std::string& bytes) = 0;
  /// Finishes writing, and reads the file back: its SHA-256. From then on nobody can change it. An
  /// error when not everything reached the disk.
  virtual Result<std::string> Close() = 0;
  /// Takes a partial or wrong file away.
  virtual void Remove() = 0;
  /// Starts the file that was read back.
  virtual Status Start() = 0;
};

/// The splash as start-up sees it.
class SplashView {
 public:
  virtual ~SplashView() = default;
  /// Appends a line to the log, selects it and shows it at once.
  virtual void Log(const std::string& line) = 0;
  virtual void ShowDownload(bool shown) = 0;
  /// "1.5 mb of 20.0 mb", " - 12 secs remaining", 0 to 100.
  virtual void ShowDownloadProgress(const std::string& sizes, const std::string& remaining,
                                    int percent) = 0;
  /// The stop button was pressed, or the splash closed.
  virtual bool StopWanted() const = 0;
};

/// Looks for a newer release, and fetches and starts its installer when the director wants it. With
/// a key, a release that is not signed is no release, and nothing is started that the signature
/// does not vouch for; without one, a new version is only told.
class UpdateCheck {
 public:
  struct Parts {
    SplashView& splash;
    UpdateServer& server;
    InstallerFile* installer;  // null where programs do not install themselves
    Prompts& prompts;
    const TimeSource& time;
    Version version;  // of this program
    std::string key;  // public half of the one that releases are signed with; empty: there is none
    std::function<void(const std::string&)> keepVersionFile;  // a copy of what the server said
  };
  explicit UpdateCheck(const Parts& parts) : parts_(parts) {}

  /// True when the installer was started and the program has to end. Every failure is a line of
  /// the log or a message, and start-up goes on.
  bool Run();

 private:
  std::optional<Release> NewerRelease();
  bool Vouched(Release& release, const std::string& versionFile);
  void Tell(const std::string& news, const Release& release);
  bool FetchAndStart(const SignedFile& wanted);
  Status Receive(const SignedFile& wanted);

  Parts parts_;
};

}  // namespace corvanel
