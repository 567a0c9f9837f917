#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "basics/runtime_error.h"
#include "clock/round_clock.h"
#include "scoring/activity_log.h"
#include "scoring/scoring_database.h"
#include "scoring/scoring_session.h"
#include "session/notices.h"
#include "session/prompts.h"
#include "settings/settings_table.h"

namespace corvanel {

/// The scoring file that is open, as far as a later run of the program must know it.
struct FollowedFile {
  std::string path;                   // empty: none
  std::set<int16_t> sections;         // the chosen ones, by their numbers in the file
  std::string identity;               // of tonight's session; empty before it was seen
  std::map<TableId, size_t> leftOut;  // tables, with how many results they had sent then

  bool operator==(const FollowedFile&) const = default;
};

/// The scoring database that is open: how it is chosen, opened, read again and closed.
class ScoringLink : public FollowedScoring {
 public:
  struct Parts {
    Session& session;
    SettingsTable& table;
    ScoringDatabase& database;
    const RoundClock& clock;
    SessionListener& listener;
    Prompts& prompts;
    ErrorTrap& errors;
    const TimeSource& time;
    ActivityLog& log;
    Notices& notices;
    std::string version;  // of the program, for the log
    /// Lets the director choose among sections: one answer for each line, none when he cancelled.
    std::function<std::vector<bool>(const std::string& sessionName,
                                    const std::vector<std::string>& lines)>
        chooseSections;
    /// A file was opened for a session that has not begun; with its start time when the session's
    /// shape was taken over.
    std::function<void(std::optional<ClockTime> start)> opened;
  };
  explicit ScoringLink(const Parts& parts) : parts_(parts) {}

  /// At the start of the program: offers the latest file when the options say so.
  bool Suggest();
  bool mnuOpenFile_Click();
  /// Forgets the file.
  void mnuCloseFile_Click();

  /// Chooses a scoring file and opens it. `recentOnly`: only one of the last hour is offered, and
  /// nothing is asked when there is none. True when a file was opened.
  bool BWSChooseFile(bool recentOnly);
  /// Opens a file. False when it is not taken: a message tells why, and what was open stays open.
  bool BWSOpenFile(const std::string& path);
  /// Goes on with the file that an earlier run of the program had open, if any. Nothing is asked
  /// or taken over; a file that is not there now is waited for.
  void Reopen(const FollowedFile& file);
  void BWSReadFile(std::function<void(bool read)> done) override;
  /// Reads it at once, for a director who waits for it. False as above.
  bool ReadNow();
  /// Writes the unit's name where it stands; an empty name becomes "Bridgemate".
  void BWSSetUnitCaptions();

  /// A table does not count any more, until it sends something or the director counts it again.
  void LeaveOut(TableId table);
  void TellOfLeftOut() override;
  /// The director pressed the button of a line about the file.
  void Act(const Notice& notice);

  bool IsOpen() const override { return !file_.path.empty(); }
  bool IsTonights() const override { return !other_; }
  std::set<TableId> LeftOut() const override;
  const ScoringSession& Model() const override { return model_; }
  const std::string& Path() const { return file_.path; }
  const FollowedFile& Followed() const { return file_; }
  const std::string& UnitName() const { return parts_.session.options.TableTopUnit; }

 private:
  std::string FolderOfThisYear() const;
  std::optional<ScoringFile> LatestFile(const std::string& folder, bool recentOnly) const;
  bool Accept(const std::string& path, DateTime modified) const;
  bool AskForFile();
  Result<PicturePointer> ReadPatiently(const std::string& path);
  std::set<int16_t> ChooseSections(const ScoringPicture& picture);
  void Forget();
  void Take(const PicturePointer& picture);
  void CheckSession(const PicturePointer& picture);
  void TakeAsTonights(const PicturePointer& picture);
  void CountBackIn();
  std::string LabelOf(TableId table) const;
  void BWSUpdateTimerSettings();

  Parts parts_;
  FollowedFile file_;
  ScoringSession model_;
  std::set<int16_t> modelSections_;  // that the model was made for
  PicturePointer tonights_;          // the last one of the session that the file was opened for
  bool other_ = false;               // the file holds another session's now
};

}  // namespace corvanel
