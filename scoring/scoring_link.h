#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "basics/runtime_error.h"
#include "control/control_window.h"
#include "scoring/activity_log.h"
#include "scoring/scoring_session.h"
#include "session/prompts.h"
#include "settings/settings_table.h"

namespace corvanel {

/// A scoring file of a folder.
struct ScoringFile {
  std::string name;
  DateTime modified;
};

/// The folders in which scoring files lie.
class ScoringFolders {
 public:
  virtual ~ScoringFolders() = default;
  /// The files "*.bws" of a folder, by name. None when the folder cannot be read.
  virtual std::vector<ScoringFile> Files(const std::string& folder) const = 0;
  /// The folder under the spelling that it really has, where file names tell upper from lower
  /// case; the same text when there is no such folder.
  virtual std::string RealSpelling(const std::string& folder) const = 0;
};

/// Lets the director choose sections. Modal.
class SectionChooser {
 public:
  virtual ~SectionChooser() = default;
  /// One answer for each line; none when the director cancelled.
  virtual std::vector<bool> ChooseSections(const std::string& sessionName,
                                           const std::vector<std::string>& lines) = 0;
};

/// What the control window shows of the link.
class LinkView {
 public:
  virtual ~LinkView() = default;
  /// The caption of `mnuBridgemate` and `mnuOptionsBridgemate`.
  virtual void SetUnitCaptions(const std::string& unit) = 0;
  /// A scoring file was opened, or closed (an empty text).
  virtual void ShowScoringFile(const std::string& path) = 0;
};

/// The scoring database that is open: how it is chosen, opened, read again and closed.
class ScoringLink : public FollowedScoring {
 public:
  struct Parts {
    Session& session;
    SettingsTable& table;
    ScoringDatabase& database;
    const ScoringFolders& folders;
    SectionChooser& sections;
    LinkView& view;
    ControlWindow& control;
    const SessionClock& clock;
    Prompts& prompts;
    ErrorTrap& errors;
    const TimeSource& time;
    ActivityLog& log;
    std::string version;  // of the program, for the log
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
  /// Goes on with a file that an earlier run of the program had open, with the sections chosen
  /// then. Nothing is asked or taken over; a file that is not there now is waited for.
  void Reopen(const std::string& path, const std::set<int16_t>& sections);
  bool BWSReadFile() override;
  /// Writes the unit's name where it stands; an empty name becomes "Bridgemate".
  void BWSSetUnitCaptions();

  bool IsOpen() const override { return !path_.empty(); }
  const ScoringSession& Model() const override { return model_; }
  const std::string& Path() const { return path_; }
  /// The chosen sections, by their numbers in the file.
  const std::set<int16_t>& Sections() const { return selected_; }
  const std::string& UnitName() const { return parts_.session.options.TableTopUnit; }

 private:
  std::string FolderOfThisYear() const;
  std::optional<ScoringFile> LatestFile(const std::string& folder, bool recentOnly) const;
  bool Accept(const std::string& path, DateTime modified) const;
  bool AskForFile();
  Result<PicturePointer> ReadPatiently(const std::string& path);
  std::set<int16_t> ChooseSections(const ScoringPicture& picture);
  void Take(const PicturePointer& picture);
  void BWSUpdateTimerSettings();

  Parts parts_;
  std::string path_;
  std::set<int16_t> selected_;
  ScoringSession model_;
  std::set<int16_t> modelSections_;  // that the model was made for
};

}  // namespace corvanel
