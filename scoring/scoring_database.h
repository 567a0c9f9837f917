#pragma once

#include <functional>
#include <string>
#include <vector>

#include "scoring/scoring_picture.h"

namespace corvanel {

/// A scoring file of a folder.
struct ScoringFile {
  std::string name;
  DateTime modified;
};

/// Reads scoring databases. Never writes, locks or touches anything.
///
/// A picture is one consistent state of the file; while its bytes are the same the same picture is
/// given again. An error that may pass: the file does not answer yet, or is being written.
class ScoringDatabase {
 public:
  virtual ~ScoringDatabase() = default;
  using Answer = std::function<void(const Result<PicturePointer>&)>;

  /// Has the file read. `answer` is called with what came of it, at once or later, on the thread
  /// of the caller; at once with an error when the last read of this file has not come yet.
  virtual void Read(const std::string& path, Answer answer) = 0;
  /// Reads the file for a director who waits for it, a fifth of a second at most.
  virtual Result<PicturePointer> ReadNow(const std::string& path) = 0;

  /// A read that has not come yet is waited for no more: the next one begins afresh.
  virtual void GiveUp() = 0;

  /// The files "*.bws" of a folder, by name. None when the folder cannot be read.
  virtual std::vector<ScoringFile> Files(const std::string& folder) = 0;
  /// The folder under the spelling that it really has, where file names tell upper from lower
  /// case; the same text when there is no such folder.
  virtual std::string RealSpelling(const std::string& folder) = 0;
};

}  // namespace corvanel
