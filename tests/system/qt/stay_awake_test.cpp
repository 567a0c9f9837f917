#include "system/stay_awake.h"

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QProcess>
#include <QTest>
#include <memory>

namespace corvanel {
namespace {

constexpr int kDaemonAnswers = 5000;  // milliseconds

/// A desktop's service that keeps the screen on.
class Desktops : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.PowerManagement.Inhibit")

 public slots:
  unsigned Inhibit(const QString& /*who*/, const QString& /*why*/) {
    ++held;
    return 7;
  }
  void UnInhibit(unsigned cookie) { held -= cookie == 7 ? 1 : 100; }

 public:
  int held = 0;
};

/// A bus of the test's own; the session bus of this process from now on.
class Bus {
 public:
  Bus() {
    daemon_.start("dbus-daemon", {"--session", "--print-address", "--nofork"});
    daemon_.waitForReadyRead(kDaemonAnswers);
    address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
    qputenv("DBUS_SESSION_BUS_ADDRESS", address_.toUtf8());
  }
  ~Bus() {
    daemon_.kill();
    daemon_.waitForFinished();
  }
  QDBusConnection Join(const QString& name) const {
    return QDBusConnection::connectToBus(address_, name);
  }

 private:
  QProcess daemon_;
  QString address_;
};

TEST(StayAwakeTest, AsksWhoIsThereAndAsksAgainWhenItComesBack) {
  const Bus bus;
  StayAwake awake;
  std::vector<bool> told;
  QObject::connect(&awake, &StayAwake::Unprotected, [&](bool may) { told.push_back(may); });
  ClockFace face;
  face.phase = Phase::Round;
  awake.ShowFace(face);
  EXPECT_TRUE(QTest::qWaitFor([&] { return told == std::vector{true}; }, kDaemonAnswers));
  // XFCE's, which comes later, goes and comes back.
  Desktops desktop;
  for (const char* start : {"first", "second"}) {
    told.clear();
    desktop.held = 0;
    QDBusConnection service = bus.Join(start);
    service.registerObject("/org/freedesktop/PowerManagement/Inhibit", &desktop,
                           QDBusConnection::ExportAllSlots);
    ASSERT_TRUE(service.registerService("org.freedesktop.PowerManagement"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return told == std::vector{false}; }, kDaemonAnswers))
        << start;
    EXPECT_EQ(desktop.held, 1);
    if (start == std::string("first")) {
      service.unregisterService("org.freedesktop.PowerManagement");
      QDBusConnection::disconnectFromBus(start);
      EXPECT_TRUE(QTest::qWaitFor([&] { return told.back(); }, kDaemonAnswers));
    }
  }
  awake.ShowFace(face);  // asked once
  face.phase = Phase::Ended;
  awake.ShowFace(face);
  EXPECT_TRUE(QTest::qWaitFor([&] { return desktop.held == 0; }, kDaemonAnswers));
}

}  // namespace
}  // namespace corvanel

#include "stay_awake_test.moc"
