#include "scoring/scoring_link.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <utility>

#include "basics/numbers.h"
#include "scoring/session_identity.h"
#include "scoring/take_over.h"

namespace corvanel {
namespace {

constexpr int64_t kRecent = 60;      // minutes
constexpr int kReadsOnOpening = 15;  // of a fifth of a second each, on a slow share

std::string FolderOf(const std::string& path) {
  return path.substr(0, path.find_last_of("/\\") + 1);
}

}  // namespace

bool ScoringLink::Suggest() {
  BWSSetUnitCaptions();
  return parts_.session.options.BMSuggest && BWSChooseFile(true);
}

bool ScoringLink::mnuOpenFile_Click() {
  return BWSChooseFile(false);
}

void ScoringLink::mnuCloseFile_Click() {
  parts_.database.GiveUp();
  Forget();
  BWSSetUnitCaptions();
}

/// What was known of the file, and what was told of it.
void ScoringLink::Forget() {
  // By their labels, which the model knows.
  for (const auto& [table, sent] : file_.leftOut) {
    parts_.notices.Clear(NoticeKind::LeftOutTable, LabelOf(table));
  }
  file_ = {};
  model_ = ScoringSession();
  tonights_.reset();
  other_ = false;
  for (const NoticeKind kind :
       {NoticeKind::ScoringRows, NoticeKind::OtherSession, NoticeKind::TakenOver}) {
    parts_.notices.Clear(kind);
  }
}

void ScoringLink::BWSSetUnitCaptions() {
  std::string& unit = parts_.session.options.TableTopUnit;
  if (unit.empty()) unit = "Bridgemate";
  parts_.listener.ShowScoring(unit, file_.path);
}

/// The stored folder, with a separator at its end; one of a year's results becomes this year's.
std::string ScoringLink::FolderOfThisYear() const {
  std::string folder = parts_.session.options.BWSfolder;
  if (folder.empty()) return folder;
  std::string upper = folder;
  std::transform(upper.begin(), upper.end(), upper.begin(),
                 [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  const size_t place = upper.find("RES20");
  if (place != std::string::npos) {
    const std::string year = fmt::format("RES{:04}", parts_.time.Now().Year());
    folder.replace(place, year.size(), year);
  }
  if (folder.find_last_of("/\\") != folder.size() - 1) folder += '/';
  return place == std::string::npos ? folder : parts_.database.RealSpelling(folder);
}

std::optional<ScoringFile> ScoringLink::LatestFile(const std::string& folder,
                                                   bool recentOnly) const {
  std::optional<ScoringFile> latest;
  for (const ScoringFile& file : parts_.database.Files(folder)) {
    const int64_t age = (parts_.time.Now().seconds - file.modified.seconds) / 60;
    if (recentOnly && age >= kRecent) continue;
    if (!latest || file.modified > latest->modified) latest = file;
  }
  return latest;
}

bool ScoringLink::BWSChooseFile(bool recentOnly) {
  bool opened = false;
  // What hangs on a share that died shall not hold up the director's own wish.
  parts_.database.GiveUp();
  Guarded(parts_.errors, "ModScorer.BWSChooseFile", [&] {
    const std::string folder = FolderOfThisYear();
    const auto latest = folder.empty() ? std::nullopt : LatestFile(folder, recentOnly);
    if (latest && Accept(folder + latest->name, latest->modified)) {
      opened = BWSOpenFile(folder + latest->name);
    } else if (!recentOnly || latest) {
      opened = AskForFile();
    }
  });
  return opened;
}

/// Asks whether the latest file is the one.
bool ScoringLink::Accept(const std::string& path, DateTime modified) const {
  std::string question = "The latest " + UnitName() + " file is:\r\n" +
                         std::string(FileName(path)) + " dated " +
                         DateAndTimeText(modified, parts_.session.options.Form()) + "\r\n";
  const auto picture = parts_.database.ReadNow(path);
  if (picture && !picture.Value()->sessionName.empty()) {
    question += "\r\n" + picture.Value()->sessionName + "\r\n";
  }
  return parts_.prompts.OfferYesNo(question + "\r\nDo you want to use this file?") == Answer::Yes;
}

bool ScoringLink::AskForFile() {
  const auto path = parts_.prompts.ChooseFileToOpen("Choose a " + UnitName() + " (bws) file",
                                                    FolderOfThisYear(), "bws|*.bws");
  if (!path) return false;
  Guarded(parts_.errors, "ModScorer.BWSChooseFile", [&] {
    parts_.session.options.BWSfolder = FolderOf(*path);
    parts_.table.SaveOptions({"BWSfolder"});
  });
  return BWSOpenFile(*path);
}

/// On a slow share the bytes come later than a poll would wait for, and a file that is being
/// written is whole a moment later.
Result<PicturePointer> ScoringLink::ReadPatiently(const std::string& path) {
  auto picture = parts_.database.ReadNow(path);
  for (int again = 0; again < kReadsOnOpening; ++again) {
    if (picture || !picture.Failure().mayPass) break;
    picture = parts_.database.ReadNow(path);
  }
  return picture;
}

bool ScoringLink::BWSOpenFile(const std::string& path) {
  HandlerSteps step(parts_.errors, "ModScorer.BWSOpenFile");
  parts_.log.LogOpen("START - version " + parts_.version);
  parts_.log.LogWrite("Database " + path);
  const auto picture = ReadPatiently(path);
  if (!picture) {
    parts_.prompts.Message(picture.Failure().mayPass
                               ? "Error reading file " + path
                               : "The file\r\n" + path + "\r\nis not in the correct format");
    return false;
  }
  const std::set<int16_t> selected = ChooseSections(*picture.Value());
  if (selected.empty()) {
    parts_.prompts.Message("You haven't selected any sections");
    return false;
  }
  Forget();
  file_.path = path;
  file_.sections = selected;
  Take(picture.Value());
  step([&] { BWSSetUnitCaptions(); });
  // A session under way keeps its round, its start and its shape.
  if (!parts_.clock.UnderWay()) step([&] { BWSUpdateTimerSettings(); });
  parts_.log.LogRead("BWSOpenFile", model_);
  return true;
}

void ScoringLink::Reopen(const FollowedFile& file) {
  if (file.path.empty()) return;
  HandlerSteps step(parts_.errors, "ModScorer.Reopen");
  step([&] {
    parts_.log.LogOpen("CONTINUE - version " + parts_.version);
    parts_.log.LogWrite("Database " + file.path);
  });
  Forget();
  file_ = file;
  step([&] { BWSSetUnitCaptions(); });
  step([&] { ReadNow(); });
}

std::set<int16_t> ScoringLink::ChooseSections(const ScoringPicture& picture) {
  std::set<int16_t> all = AllSections(picture);
  if (all.size() < 2) return all;
  std::vector<std::string> lines;
  for (const SectionRow& row : picture.sections) {
    lines.push_back(fmt::format("Section {} : {} tables", row.letter, row.Tables));
  }
  const std::vector<bool> chosen = parts_.chooseSections(picture.sessionName, lines);
  std::set<int16_t> selected;
  for (size_t i = 0; i < chosen.size(); ++i) {
    if (chosen[i]) selected.insert(picture.sections[i].ID);
  }
  return selected;
}

void ScoringLink::BWSReadFile(std::function<void(bool)> done) {
  parts_.database.Read(file_.path,
                       [this, path = file_.path, done = std::move(done)](const auto& picture) {
                         // Another file may have been opened meanwhile.
                         const bool good = path == file_.path && picture;
                         if (good) Take(picture.Value());
                         done(good);
                       });
}

bool ScoringLink::ReadNow() {
  const auto picture = ReadPatiently(file_.path);
  if (picture) Take(picture.Value());
  return static_cast<bool>(picture);
}

/// The model of a picture; the one that there is serves as long as nothing has changed.
void ScoringLink::Take(const PicturePointer& picture) {
  if (model_.Empty() || picture.get() != &model_.Picture() || file_.sections != modelSections_) {
    model_ = ScoringSession(picture, file_.sections);
    modelSections_ = file_.sections;
    CheckSession(picture);
    if (!other_) CountBackIn();
  }
  parts_.log.LogRead("BWSReadFile", model_);
}

/// Tells what could not be read, and when the file's place was taken by another session's.
void ScoringLink::CheckSession(const PicturePointer& picture) {
  const std::string line = LeftOutLine(*picture);
  if (line.empty()) {
    parts_.notices.Clear(NoticeKind::ScoringRows);
  } else {
    parts_.log.LogWrite(line);
    parts_.notices.Set({NoticeKind::ScoringRows, UnitName() + ": " + line});
  }
  // After a restart the record alone tells of tonight's.
  other_ = tonights_
               ? !SameSession(*tonights_, *picture, file_.sections)
               : !file_.identity.empty() && file_.identity != IdentityOf(*picture, file_.sections);
  if (other_) {
    const std::string& name = picture->sessionName;
    parts_.notices.Set({NoticeKind::OtherSession,
                        "The scoring file holds another session now" +
                            (name.empty() ? "" : ", \"" + name + "\"") +
                            ": the clock does not follow it",
                        "It is tonight's"});
    return;
  }
  TakeAsTonights(picture);
}

void ScoringLink::TakeAsTonights(const PicturePointer& picture) {
  tonights_ = picture;
  other_ = false;
  file_.identity = IdentityOf(*picture, file_.sections);
  parts_.notices.Clear(NoticeKind::OtherSession);
}

/// A table that was left out and sends something plays after all.
void ScoringLink::CountBackIn() {
  // What the units' own software deletes, the table did not send.
  for (auto& [table, sent] : file_.leftOut) sent = std::min(sent, model_.Sent(table));
  std::erase_if(file_.leftOut, [this](const auto& entry) {
    if (model_.Sent(entry.first) == entry.second) return false;
    parts_.notices.Clear(NoticeKind::LeftOutTable, LabelOf(entry.first));
    return true;
  });
}

std::set<TableId> ScoringLink::LeftOut() const {
  std::set<TableId> tables;
  for (const auto& [table, sent] : file_.leftOut) tables.insert(table);
  return tables;
}

std::string ScoringLink::LabelOf(TableId table) const {
  const ScoringSection* section = model_.Empty() ? nullptr : model_.Section(table.first);
  const bool several = section != nullptr && model_.SelectedSections() > 1;
  return (several ? section->row.letter : "") + std::to_string(table.second);
}

void ScoringLink::LeaveOut(TableId table) {
  file_.leftOut[table] = model_.Sent(table);
  parts_.log.LogWrite("Table " + LabelOf(table) + " left out");
  TellOfLeftOut();
}

void ScoringLink::TellOfLeftOut() {
  for (const auto& [table, sent] : file_.leftOut) {
    const std::string label = LabelOf(table);
    parts_.notices.Clear(NoticeKind::LeftOutTable, label);
    parts_.notices.Set({NoticeKind::LeftOutTable,
                        fmt::format("Table {} is left out until it sends something", label),
                        "Count it again", label});
  }
}

void ScoringLink::Act(const Notice& notice) {
  if (notice.kind == NoticeKind::OtherSession && other_) {
    TakeAsTonights(model_.Pointer());
  }
  if (notice.kind == NoticeKind::LeftOutTable) {
    std::erase_if(file_.leftOut,
                  [&](const auto& entry) { return LabelOf(entry.first) == notice.subject; });
    parts_.notices.Clear(NoticeKind::LeftOutTable, notice.subject);
  }
}

/// Takes over what the file says of the session.
void ScoringLink::BWSUpdateTimerSettings() {
  std::optional<ClockTime> start;
  if (parts_.session.options.BMUpdateSettings) {
    start = model_.Picture().SessionStart().TimeOfDay();
    const bool alike = TakeOver(model_, parts_.session);
    parts_.notices.Set(
        {NoticeKind::TakenOver, fmt::format("Taken over from {}: {}", FileName(file_.path),
                                            TakenOverText(model_, parts_.session.settings))});
    if (!alike) parts_.prompts.Message("Sections have different numbers of boards per round");
  }
  parts_.opened(start);
}

}  // namespace corvanel
