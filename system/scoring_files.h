#pragma once

#include <cstdint>
#include <future>
#include <string>

#include "scoring/scoring_link.h"

namespace corvanel {

/// Scoring databases on the disk or on a share. The file is opened for reading alone, read whole
/// into memory and closed again, and only then looked at.
///
/// A share that has gone can block whoever reads it for minutes. The bytes are therefore fetched
/// by a thread of their own; when they do not come in time the read has failed, and no other is
/// begun before that one has ended.
class ScoringFiles : public ScoringDatabase {
 public:
  Result<PicturePointer> Read(const std::string& path) override;

 private:
  struct Content {
    std::string bytes;
    DateTime modified;
  };
  static Result<Content> Fetch(const std::string& path);
  Result<Content> FetchInTime(const std::string& path);

  std::future<Result<Content>> fetching_;
  std::string fetchingPath_;
  // What was read last, and what came of it.
  std::string path_;
  std::string bytes_;
  Result<PicturePointer> last_ = Error{53, "File not found"};
};

/// The folders of the disk.
class ScoringFoldersOnDisk : public ScoringFolders {
 public:
  std::vector<ScoringFile> Files(const std::string& folder) const override;
  std::string RealSpelling(const std::string& folder) const override;
};

}  // namespace corvanel
