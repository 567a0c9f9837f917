#include "control/start_checks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "control/watch.h"
#include "tests/support/program_run.h"

namespace corvanel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FakeSounds : public SoundPlayer {
 public:
  void Play(const std::string& /*file*/) override {}
  void Test(const std::string& /*file*/) override {}
  void StopTest() override {}
  SoundFitness Fitness(const std::string& file) const override {
    if (file == unplayable) return SoundFitness::Unplayable;
    return std::find(missing.begin(), missing.end(), file) == missing.end()
               ? SoundFitness::Fine
               : SoundFitness::NotFound;
  }
  std::vector<std::string> missing;
  std::string unplayable;
};

std::vector<std::string> Texts(const FakeNotices& view) {
  std::vector<std::string> texts;
  for (const Notice& notice : view.notices) texts.push_back(notice.text);
  return texts;
}

TEST(StartChecksTest, NamesWhatTheSessionWouldMissAndNothingElse) {
  Session session;
  SessionSettings& s = session.settings;
  s.sounds.files = {"a/first.wav", "a/second.wav", "a/end.wav", "a/break.wav",
                    "a/skip.wav",  "a/arrow.wav",  "a/back.wav"};
  session.options.TableTopUnit = "BridgeTab";
  FakeSounds sounds;
  FakeNotices view;
  Notices notices(view);
  Surroundings around{sounds, "", false, "", true};
  const auto check = [&] {
    CheckBeforeStart(session, around, notices);
    return Texts(view);
  };
  EXPECT_THAT(check(), IsEmpty());
  sounds.missing = {"a/skip.wav", "a/end.wav"};
  EXPECT_THAT(
      check(),
      ElementsAre("Sound file that will not be heard: end.wav (not found)"));  // nobody skips
  s.Skip = "3";
  EXPECT_THAT(check(), ElementsAre("Sound files that will not be heard: end.wav (not found), "
                                   "skip.wav (not found)"));
  sounds.missing = {"a/end.wav"};
  sounds.unplayable = "a/skip.wav";
  EXPECT_THAT(check(), ElementsAre("Sound files that will not be heard: end.wav (not found), "
                                   "skip.wav (cannot be played)"));
  s.sounds.play[static_cast<size_t>(Cue::EndOfRound)] = false;
  s.sounds.play[static_cast<size_t>(Cue::Skip)] = false;
  EXPECT_THAT(check(), IsEmpty());
  around.soundProblem = "the volume is at 0";
  around.scoringProblem = "the file x.bws cannot be read";  // but none is open
  around.secondScreen = false;                              // but none is wanted
  EXPECT_THAT(check(), ElementsAre("No sound will be heard: the volume is at 0"));
  around.scoringOpen = true;
  s.ExtraMonitor = true;
  s.sounds.play = {};  // a silent session needs no loudspeaker
  EXPECT_THAT(check(), ElementsAre("BridgeTab: the file x.bws cannot be read",
                                   "There is no second screen: both displays will share this one"));
  ClearChecks(notices);
  EXPECT_THAT(view.notices, IsEmpty());
}

TEST(WatchTest, TellsOfGapsSoundsAndAForeignStore) {
  ClockBench bench;
  FakeNotices view;
  Notices notices(view);
  std::string outside;
  FakeSounds sounds;
  bool planning = true;
  Watch watch({bench.session, bench.clock, notices,
               [&]() -> std::optional<Surroundings> {
                 if (!planning) return std::nullopt;
                 return Surroundings{sounds, "the sound is muted", false, "", true};
               },
               [&] { return outside; }});
  bench.broadcast.Add(watch);
  watch.Check();
  EXPECT_THAT(Texts(view), ElementsAre("No sound will be heard: the sound is muted"));
  bench.clock.Start(1);
  watch.Check();  // the start has taken place
  for (const char* file : {"/x/Bell.wav", "/x/Move.wav", "/x/Bell.wav"}) {
    watch.SoundNotHeard(file, "why");
  }
  watch.SoundHeard("/x/Skip.wav");  // of itself it tells nothing about the others
  EXPECT_THAT(Texts(view), ElementsAre("The sound Bell.wav was not heard: why",
                                       "The sound Move.wav was not heard: why"));
  watch.SoundHeard("/x/Move.wav");
  EXPECT_THAT(Texts(view), ElementsAre("The sound Bell.wav was not heard: why"));
  watch.Dismiss(view.notices[0]);
  bench.time.PassTo(126);
  bench.clock.Tick();
  EXPECT_EQ(view.notices.back(), (Notice{NoticeKind::Away,
                                         "The computer was asleep for 2 min 5 s. The clock kept "
                                         "running.",
                                         "Don't count that time"}));
  watch.Act(NoticeKind::Away);
  EXPECT_EQ(bench.face.countdown, "14:59");
  EXPECT_THAT(view.notices, IsEmpty());
  bench.time.PassTo(300);
  bench.clock.Tick();
  watch.Dismiss(view.notices[0]);
  EXPECT_THAT(view.notices, IsEmpty());
  EXPECT_FALSE(bench.face.awayCanBeTakenOut);
  outside = "/x/settings.json.outside-1";
  planning = false;
  watch.Check();
  EXPECT_THAT(Texts(view), ElementsAre("The settings file was changed by another program. Its "
                                       "contents were kept as settings.json.outside-1"));
}

TEST(WatchTest, EachDisplayThatLandedElsewhereIsToldOf) {
  ClockBench bench;
  FakeNotices view;
  Notices notices(view);
  Watch watch({bench.session, bench.clock, notices, [] { return std::optional<Surroundings>(); },
               [] { return std::string(); }});
  watch.DisplayLanded("room", false);
  watch.DisplayLanded("twin", false);
  watch.DisplayLanded("room", true);
  EXPECT_THAT(Texts(view),
              ElementsAre("This desktop did not let \"twin\" choose its screen: drag it to the "
                          "other one and press F there"));
}

TEST(WatchTest, AComputerThatMayFallAsleepIsToldOf) {
  ClockBench bench;
  FakeNotices view;
  Notices notices(view);
  Watch watch({bench.session, bench.clock, notices, [] { return std::optional<Surroundings>(); },
               [] { return std::string(); }});
  watch.MayFallAsleep(true);
  EXPECT_THAT(Texts(view), ElementsAre("Nothing keeps this computer awake: set its power settings "
                                       "so that the screen stays on"));
  watch.MayFallAsleep(false);
  EXPECT_THAT(view.notices, IsEmpty());
}

TEST(NoticesTest, ALineThatWasDismissedComesBackOnlyWithNews) {
  FakeNotices view;
  Notices notices(view);
  const Notice missing{NoticeKind::SoundFiles, "Sound file not found: a.wav", ""};
  notices.Set(missing);
  notices.Set({NoticeKind::Away, "Away", "Take it out"});
  notices.Set(missing);
  EXPECT_THAT(Texts(view), ElementsAre("Sound file not found: a.wav", "Away"));
  notices.Dismiss(missing);
  notices.Set(missing);
  EXPECT_THAT(Texts(view), ElementsAre("Away"));
  notices.Set({NoticeKind::SoundFiles, "Sound file not found: b.wav", ""});
  EXPECT_THAT(Texts(view), ElementsAre("Away", "Sound file not found: b.wav"));
  notices.Dismiss(view.notices[1]);
  notices.Clear(NoticeKind::SoundFiles);  // mended, and broken again
  notices.Set({NoticeKind::SoundFiles, "Sound file not found: b.wav", ""});
  EXPECT_THAT(Texts(view), ElementsAre("Away", "Sound file not found: b.wav"));
}

TEST(NoticesTest, TheLatestDismissalCounts) {
  FakeNotices view;
  Notices notices(view);
  for (const char* text : {"a.wav", "b.wav"}) {
    notices.Set({NoticeKind::SoundFiles, text, ""});
    notices.Dismiss(view.notices[0]);
  }
  notices.Set({NoticeKind::SoundFiles, "b.wav", ""});
  EXPECT_THAT(view.notices, IsEmpty());
}

class FailingListener : public SessionListener {
 public:
  void ShowFace(const ClockFace& /*face*/) override { throw RuntimeError(5, "broken"); }
};

TEST(BroadcastTest, AListenerThatFailsKeepsNothingFromTheOthers) {
  ClockBench bench;
  FailingListener failing;
  Broadcast broadcast(bench.errors);
  broadcast.Add(failing);
  broadcast.Add(bench);
  ClockFace face;
  face.countdown = "1:23";
  broadcast.ShowFace(face);
  EXPECT_EQ(bench.face.countdown, "1:23");
  EXPECT_EQ(bench.errors.reports.size(), 1U);
}

TEST(WatchTest, AGapThatCannotBeTakenOutIsOnlyTold) {
  ClockBench bench;
  FakeNotices view;
  Notices notices(view);
  Watch watch({bench.session, bench.clock, notices, [] { return std::optional<Surroundings>(); },
               [] { return std::string(); }});
  bench.broadcast.Add(watch);
  bench.clock.Start(1);
  bench.time.PassTo(126);
  bench.clock.Do(SessionCommand::AddMinute);
  ASSERT_EQ(view.notices.size(), 1U);
  EXPECT_EQ(view.notices[0].action, "");
}

TEST(WatchTest, EveryLineCanBeDismissed) {
  ClockBench bench;
  FakeNotices view;
  Notices notices(view);
  Watch watch({bench.session, bench.clock, notices, [] { return std::optional<Surroundings>(); },
               [] { return std::string(); }});
  watch.SoundNotHeard("/x/Bell.wav", "why");
  ASSERT_EQ(view.notices.size(), 1U);
  watch.Dismiss(view.notices[0]);
  EXPECT_THAT(view.notices, IsEmpty());
}

TEST(StartChecksTest, ThePauseSoundCountsWhereItWouldBePlayed) {
  Session session;
  session.settings.sounds.play = {};
  Options& options = session.options;
  options.BMPauseSound = "a/gong.wav";
  FakeSounds sounds;
  sounds.missing = {"a/gong.wav"};
  FakeNotices view;
  Notices notices(view);
  Surroundings around{sounds, "", true, "", true};
  const auto check = [&] {
    CheckBeforeStart(session, around, notices);
    return Texts(view);
  };
  EXPECT_THAT(check(), ElementsAre("Sound file that will not be heard: gong.wav (not found)"));
  for (bool* needed : {&options.BMAutoPause, &options.BMPausePlay, &around.scoringOpen}) {
    *needed = false;
    EXPECT_THAT(check(), IsEmpty());
    *needed = true;
  }
}

TEST(StartChecksTest, ACueThatWillNotBePlayedMayBeMissing) {
  SessionSettings singleRound;  // nobody moves
  singleRound.nRounds = 1;
  SessionSettings noLastWarning;  // so no bell ends the break
  noLastWarning.MinWarning = 0;
  SessionSettings noBreak;
  noBreak.TimeForBreak = 0;
  SessionSettings endsBeforeBreak;
  endsBeforeBreak.nRounds = endsBeforeBreak.BreakAfterRound;
  const std::pair<SessionSettings, Cue> rows[] = {{singleRound, Cue::EndOfRound},
                                                  {noBreak, Cue::Break},
                                                  {endsBeforeBreak, Cue::EndOfBreak},
                                                  {noLastWarning, Cue::EndOfBreak}};
  for (const auto& [settings, cue] : rows) {
    Session session;
    session.settings = settings;
    session.settings.sounds.files.fill("a/there.wav");
    session.settings.sounds.files[static_cast<size_t>(cue)] = "a/missing.wav";
    FakeSounds sounds;
    sounds.missing = {"a/missing.wav"};
    FakeNotices view;
    Notices notices(view);
    CheckBeforeStart(session, {sounds, "", false, "", true}, notices);
    EXPECT_THAT(view.notices, IsEmpty()) << static_cast<int>(cue);
  }
}

}  // namespace
}  // namespace corvanel
