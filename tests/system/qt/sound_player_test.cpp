#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sndfile.h>

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include "system/qt/qt_sound_player.h"

namespace corvanel {
namespace {

using testing::ElementsAre;

constexpr int kPatience = 10000;  // milliseconds
constexpr const char* kBell = "\\Bell.wav";
constexpr const char* kLong = "\\Fx2 Move.wav";

/// A sound server of the test's own, with two loudspeakers that swallow everything; ones that take
/// nothing back, since the others begin what comes after a silence up to two seconds late.
class SoundPlayerTest : public testing::Test {
 protected:
  SoundPlayerTest() {
    qputenv("PULSE_SERVER", ("unix:" + folder_.filePath("native")).toUtf8());
    qputenv("PULSE_RUNTIME_PATH", folder_.path().toUtf8());
    StartServer();
    QObject::connect(&player_, &QtSoundPlayer::Heard, &player_,
                     [this](const std::string& file) { told_.push_back("heard " + file); });
    QObject::connect(&player_, &QtSoundPlayer::NotHeard, &player_,
                     [this](const std::string& /*file*/, const std::string& why) {
                       if (told_.empty() || told_.back() != why) told_.push_back(why);
                     });
    QObject::connect(&player_, &QtSoundPlayer::Tested, &player_,
                     [this](const SoundTest& test) { told_.push_back(TestText(test)); });
    EXPECT_TRUE(Within([] {
      return Ask("list short clients").contains("Corvanel") ||
             Ask("list clients").contains("Corvanel");
    }));
  }
  ~SoundPlayerTest() override {
    server_.kill();
    server_.waitForFinished();
    qunsetenv("PULSE_SERVER");
    qunsetenv("PULSE_RUNTIME_PATH");
  }

  void StartServer() {
    server_.start(
        "pulseaudio",
        {"-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no", "-L",
         "module-null-sink norewinds=1 sink_name=first sink_properties=device.description=First",
         "-L",
         "module-null-sink norewinds=1 sink_name=second sink_properties=device.description=Second",
         "-L",
         "module-native-protocol-unix auth-anonymous=1 socket=" + folder_.filePath("native")});
    EXPECT_TRUE(Within([] { return Ask("info").contains("first"); }));
  }

  static QByteArray Ask(const QString& words) {
    QProcess pactl;
    pactl.start("pactl", words.split(' '));
    pactl.waitForFinished();
    return pactl.readAllStandardOutput();
  }

  template <class Condition>
  static bool Within(Condition condition) {
    return QTest::qWaitFor(condition, kPatience);
  }

  /// What is told next when the sound is played.
  std::vector<std::string> Told(const std::string& file) {
    told_.clear();
    player_.Play(file);
    Within([this] { return !told_.empty(); });
    return told_;
  }

  std::string File(const char* name, const QByteArray& contents) {
    QFile file(folder_.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size());
    return file.fileName().toStdString();
  }

  QTemporaryDir folder_;
  QProcess server_;
  QtSoundPlayer player_{CORVANEL_SOUND_FOLDER};
  std::vector<std::string> told_;
};

TEST_F(SoundPlayerTest, PlaysOnTheDefaultOutputAsItIsNow) {
  for (const char* output : {"second", "first", "second"}) {
    Ask(QString("set-default-sink ") + output);
    EXPECT_THAT(Told(kLong), ElementsAre(std::string("heard ") + kLong));
    const QByteArray states = Ask("list short sinks");
    EXPECT_TRUE(states.contains("RUNNING")) << states.toStdString();
    for (const QByteArray& sink : states.trimmed().split('\n')) {
      EXPECT_EQ(sink.contains("RUNNING"), sink.contains(output)) << sink.toStdString();
    }
  }
}

TEST_F(SoundPlayerTest, TellsWhyACueIsNotHeard) {
  const std::pair<const char*, const char*> rows[] = {
      {"set-sink-mute first 1", "the sound is muted"},
      {"set-sink-mute first 0", ""},
      {"set-sink-volume first 0", "the volume is at 0"},
      {"set-sink-volume first 60%", ""},
      {"suspend-sink first 1", "it did not begin within a second"},
      {"suspend-sink first 0", ""},
      {"unload-module module-null-sink", "no audio output is connected"},
      {"load-module module-null-sink norewinds=1 sink_name=third", ""}};
  Ask("set-default-sink first");
  for (const auto& [change, why] : rows) {
    Ask(change);
    const bool heard = *why == 0;
    EXPECT_TRUE(!heard || Within([&] { return player_.OutputProblem().empty(); })) << change;
    EXPECT_THAT(Told(kLong), ElementsAre(heard ? std::string("heard ") + kLong : why)) << change;
    const bool seenBefore = !heard && !std::string_view(why).starts_with("it did");
    const std::string seen = seenBefore ? why : "";
    EXPECT_TRUE(Within([&] { return player_.OutputProblem() == seen; }))
        << change << ": " << player_.OutputProblem();
  }
}

TEST_F(SoundPlayerTest, AServerThatWentAndCameBackIsHeardAgain) {
  server_.kill();
  server_.waitForFinished();
  EXPECT_TRUE(Within([this] { return !player_.OutputProblem().empty(); }));
  EXPECT_EQ(Told(kBell).size(), 1U);
  EXPECT_NE(told_[0].substr(0, 5), "heard");
  StartServer();
  EXPECT_TRUE(Within([this] { return player_.OutputProblem().empty(); }));
  EXPECT_THAT(Told(kBell), ElementsAre(std::string("heard ") + kBell));
}

TEST_F(SoundPlayerTest, KnowsWhatCanBePlayedByItsContents) {
  QFile bell(QString(CORVANEL_SOUND_FOLDER) + "/Bell.wav");
  ASSERT_TRUE(bell.open(QIODevice::ReadOnly));
  const QByteArray sound = bell.readAll();
  const std::pair<std::string, SoundFitness> rows[] = {
      {kBell, SoundFitness::Fine},
      {File("half.wav", sound.left(sound.size() / 2)), SoundFitness::Fine},
      {File("header.wav", sound.left(44)), SoundFitness::Unplayable},
      {File("empty.wav", ""), SoundFitness::Unplayable},
      {File("text.wav", "Please move"), SoundFitness::Unplayable},
      {"\\no such.wav", SoundFitness::NotFound},
      {folder_.path().toStdString(), SoundFitness::NotFound}};
  for (const auto& [file, fitness] : rows) {
    EXPECT_EQ(player_.Fitness(file), SoundFitness::Fine) << file;  // not known yet
  }
  for (const auto& [name, wanted] : rows) {
    const std::string& file = name;
    const SoundFitness fitness = wanted;
    EXPECT_TRUE(Within([&] { return player_.Fitness(file) == fitness; })) << file;
    if (fitness == SoundFitness::Unplayable) {
      EXPECT_THAT(Told(file), ElementsAre("the file is not a sound that can be played"));
    }
  }
  EXPECT_THAT(Told("\\no such.wav"), ElementsAre("the file is not there"));
}

TEST_F(SoundPlayerTest, PlaysWhatOldSoundSetsAreMadeOf) {
  struct Row {
    int format;
    int channels = 1;
  };
  const Row rows[] = {
      {SF_FORMAT_WAV | SF_FORMAT_PCM_U8},    {SF_FORMAT_WAV | SF_FORMAT_PCM_24},
      {SF_FORMAT_WAV | SF_FORMAT_PCM_32},    {SF_FORMAT_WAV | SF_FORMAT_FLOAT},
      {SF_FORMAT_WAV | SF_FORMAT_ALAW},      {SF_FORMAT_WAV | SF_FORMAT_ULAW},
      {SF_FORMAT_WAV | SF_FORMAT_MS_ADPCM},  {SF_FORMAT_WAV | SF_FORMAT_IMA_ADPCM},
      {SF_FORMAT_WAV | SF_FORMAT_PCM_16, 6}, {SF_FORMAT_WAV | SF_FORMAT_PCM_16, 8},
      {SF_FORMAT_FLAC | SF_FORMAT_PCM_16},   {SF_FORMAT_OGG | SF_FORMAT_VORBIS},
      {SF_FORMAT_AIFF | SF_FORMAT_PCM_16},   {SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III}};
  for (const Row& row : rows) {
    const std::string file = folder_.filePath("cue.wav").toStdString();
    SF_INFO info{0, 44100, row.channels, row.format, 0, 0};
    SNDFILE* sound = sf_open(file.c_str(), SFM_WRITE, &info);
    ASSERT_NE(sound, nullptr) << std::hex << row.format;
    const std::vector<float> samples(8820 * static_cast<size_t>(row.channels), 0.5F);
    sf_writef_float(sound, samples.data(), 8820);
    sf_close(sound);
    EXPECT_THAT(Told(file), ElementsAre("heard " + file))
        << std::hex << row.format << ", channels " << row.channels;
  }
}

TEST(SoundPlayerWithoutServerTest, AlsaPlaysInstead) {
  const QTemporaryDir folder;
  const QString heard = folder.filePath("heard.raw");
  QFile settings(folder.filePath("asound.conf"));
  ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
  settings.write(QString("pcm.!default { type file format raw slave.pcm nothing file \"%1\" }\n"
                         "pcm.nothing { type null }\n")
                     .arg(heard)
                     .toUtf8());
  settings.close();
  qputenv("PULSE_SERVER", "unix:/nowhere");
  qputenv("ALSA_CONFIG_PATH", settings.fileName().toUtf8());
  QtSoundPlayer player(CORVANEL_SOUND_FOLDER);
  bool ended = false;
  QString told;
  QObject::connect(&player, &QtSoundPlayer::Tested, &player, [&](const SoundTest& test) {
    told = QString::fromStdString(TestText(test));
    ended = test.ended;
  });
  player.Test(kBell);
  EXPECT_TRUE(QTest::qWaitFor([&] { return ended; }, kPatience));
  EXPECT_EQ(told, "Bell.wav was played on ALSA, volume 100 %");
  QFile bell(QString(CORVANEL_SOUND_FOLDER) + "/Bell.wav");
  ASSERT_TRUE(bell.open(QIODevice::ReadOnly));
  const QByteArray file = bell.readAll();
  const qsizetype samples = (file.size() - file.indexOf("data") - 8) / 2;
  // All of it, as four bytes a sample.
  EXPECT_EQ(QFileInfo(heard).size(), samples * 4);
  qunsetenv("PULSE_SERVER");
  qunsetenv("ALSA_CONFIG_PATH");
}

TEST_F(SoundPlayerTest, ACueGoesBeforeATest) {
  const std::string heard = std::string("heard ") + kLong;
  const std::string playing = "Fx2 Break.wav is playing on First, volume 100 %";
  const std::string gaveWay = "Fx2 Break.wav was not heard: a cue of the session came";
  const std::string tested = "\\Fx2 Break.wav";
  player_.Test(tested);
  EXPECT_TRUE(Within([this] { return told_.size() == 2; }));
  player_.Play(kLong);
  EXPECT_TRUE(Within([this] { return told_.size() == 4; }));
  player_.Test(tested);
  EXPECT_TRUE(Within([this] { return told_.size() == 5; }));
  EXPECT_THAT(told_, ElementsAre(playing, "heard " + tested, gaveWay, heard, gaveWay));
  EXPECT_THAT(Told(kLong), ElementsAre(heard));  // one cue after the other is no fault
}

}  // namespace
}  // namespace corvanel
