#pragma once

#include <QObject>
#include <memory>

#include "system/scoring_files.h"

namespace corvanel {

/// Scoring databases on the disk or on a share, each read by a thread of its own: whoever asks for
/// a file carries on, and is answered by an event of its own thread. No other read of a
/// file is begun before the last one has ended.
class QtScoringFiles : public QObject, public ScoringDatabase {
  Q_OBJECT

 public:
  QtScoringFiles();
  ~QtScoringFiles() override;

  void Read(const std::string& path, Answer answer) override;
  Result<PicturePointer> ReadNow(const std::string& path) override;
  std::vector<ScoringFile> Files(const std::string& folder) override;
  std::string RealSpelling(const std::string& folder) override;

 private:
  class Way;

  template <class Found, class Work>
  Found InTime(Work work, Found otherwise);
  void Arrived(const std::string& path, const Result<ScoringContent>& content);

  std::shared_ptr<Way> way_;  // from the threads to here, as long as this lives
  std::string reading_;       // the path under way; empty when none is
  Answer answer_;
  std::string path_;  // of what was read last
  ScoringContent last_;
};

}  // namespace corvanel
