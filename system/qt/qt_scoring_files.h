#pragma once

#include <QObject>
#include <chrono>
#include <memory>

#include "system/scoring_files.h"

namespace corvanel {

/// Scoring databases on the disk or on a share, each read by a thread of its own: whoever asks for
/// a file carries on, and is answered by an event of its own thread. No other read of a
/// file is begun before the last one has ended, or is given up: on a share that died, a read may
/// wait for ever, though the share is back under the same name.
class QtScoringFiles : public QObject, public ScoringDatabase {
  Q_OBJECT

 public:
  /// `patience`: after it a read is given up, and after twice as long while others are stuck; after
  /// ten times as long when many are, so that a share that is gone for the evening does not collect
  /// threads.
  explicit QtScoringFiles(std::chrono::milliseconds patience = std::chrono::seconds(30));
  ~QtScoringFiles() override;

  void Read(const std::string& path, Answer answer) override;
  Result<PicturePointer> ReadNow(const std::string& path) override;
  void GiveUp() override;
  std::vector<ScoringFile> Files(const std::string& folder) override;
  std::string RealSpelling(const std::string& folder) override;

 private:
  class Way;

  template <class Found, class Work>
  Found InTime(Work work, Found otherwise);
  bool Waiting() const;
  void Arrived(int number, const std::string& path, const Result<ScoringContent>& content);

  std::shared_ptr<Way> way_;  // from the threads to here, as long as this lives
  std::chrono::milliseconds patience_;
  std::string reading_;                          // the path under way; empty when none is
  int number_ = 0;                               // of the read under way
  std::chrono::steady_clock::time_point begun_;  // when it was
  int stuck_ = 0;                                // reads that were given up and have not ended
  Answer answer_;
  std::string path_;  // of what was read last
  ScoringContent last_;
};

}  // namespace corvanel
