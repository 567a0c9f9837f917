#pragma once

#include <QMainWindow>
#include <array>
#include <memory>

#include "control/control_window.h"
#include "control/control_window_view.h"
#include "session/session_listener.h"

class QCheckBox;

namespace Ui {
class FrmMain;
}

namespace corvanel {

class EntryBox;

/// The control window. It reads its widgets, calls its logic, and shows what comes back.
class FrmMain : public QMainWindow, public ControlWindowView, public SessionListener {
  Q_OBJECT

 public:
  explicit FrmMain(const Session& session, QWidget* parent = nullptr);
  ~FrmMain() override;

  /// Connects the widgets to their logic; to be called once, before the window is shown.
  void SetLogic(ControlWindow& logic);

  void ShowTakenOver(const std::vector<Box>& boxes) override;
  void SetText(Box box, const std::string& text) override;
  void SetLabel(Label label, const std::string& text) override;
  void SetTick(Tick tick, bool on) override;
  void SetMode(int calculate) override;
  void Focus(Box box) override;
  bool CommitEditing() override;
  void OfferFavouriteSave(bool offered) override;
  void OfferResume() override;
  void ShowEvening(const Evening& evening) override;
  void ShowLive(const std::optional<LiveStrip>& live) override;

  /// The entries of the menus, each with its name in the form: "mnuManual".
  QList<QAction*> MenuEntries() const;
  /// Names the program's version, such as "1.4.02", in the caption and at the foot.
  void ShowVersion(const QString& version);
  /// Names the table-top unit in the menus, and the scoring file that is open at the foot.
  void ShowScoring(const std::string& unit, const std::string& file) override;
  void ShowNotices(const std::vector<Notice>& notices) override;
  void ShowFavourites(const std::vector<std::string>& names, const std::string& text) override;
  void ShowInUse(const std::string& name) override;
  void ClearNewName() override;

 signals:
  /// The favourites' buttons and list, each with the name it is about.
  void SaveAsNew(const std::string& name);
  void FavouriteChosen(const std::string& name);
  void FavouriteSaveWanted(const std::string& name);
  void FavouriteDeleteWanted(const std::string& name);
  /// Of a line for the director.
  void NoticeActionWanted(const Notice& notice);
  void NoticeDismissed(const Notice& notice);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  EntryBox* BoxOf(Box box) const { return boxes_[static_cast<size_t>(box)]; }
  QCheckBox* CheckOf(Tick tick) const;
  void Leave(EntryBox* box);
  void ConnectLive();
  void ArrangeStart();
  void ShowWhatIsOff();
  void AlignRows();

  const Session& session_;
  std::unique_ptr<Ui::FrmMain> ui_;
  std::array<EntryBox*, kBoxes> boxes_{};
  ControlWindow* logic_ = nullptr;
  bool live_ = false;            // a session is under way
  QWidget* liveRoom_ = nullptr;  // as wide as the widest state beside the countdown
};

}  // namespace corvanel
