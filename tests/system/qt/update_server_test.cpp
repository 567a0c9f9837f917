#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include "system/qt/qt_update_server.h"

namespace corvanel {
namespace {

constexpr int kDownloadTakes = 300;  // milliseconds

/// A server on this computer that answers every request with the same bytes, and keeps the
/// connection open when it is to stall.
class UpdateServerTest : public testing::Test {
 protected:
  UpdateServerTest() {
    EXPECT_TRUE(server.listen(QHostAddress::LocalHost));
    QObject::connect(&server, &QTcpServer::newConnection, &server, [this] {
      QTcpSocket* socket = server.nextPendingConnection();
      QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
        requests += socket->readAll();
        socket->write(answer);
        if (drips) {
          auto* drop = new QTimer(socket);
          QObject::connect(drop, &QTimer::timeout, socket, [socket] { socket->write("x"); });
          drop->start(20);
        }
        if (!stalls) socket->disconnectFromHost();
      });
    });
  }
  QUrl Base() const { return QUrl(QString("http://127.0.0.1:%1/").arg(server.serverPort())); }
  static QByteArray Answer(const QByteArray& status, const QByteArray& body,
                           const QByteArray& more = "") {
    return "HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(body.size()) +
           "\r\nLast-Modified: Fri, 20 Nov 2026 10:00:00 GMT\r\n" + more + "\r\n" + body;
  }

  QTcpServer server;
  QByteArray answer;
  QByteArray requests;
  bool stalls = false;
  bool drips = false;  // a byte now and then, without end
};

TEST_F(UpdateServerTest, GivesDatesAndSmallFiles) {
  QtUpdateServer updates(Base(), kDownloadTakes);
  EXPECT_TRUE(updates.Connected());
  answer = Answer("206 Partial Content", "1,2,3\nNotes");
  EXPECT_EQ(updates.DateOf("timerversion.txt"), "20 Nov 2026 10:00:00");
  EXPECT_EQ(updates.Fetch("timerversion.txt").Value(), "1,2,3\nNotes");
  EXPECT_TRUE(requests.contains("GET /timerversion.txt "));
  EXPECT_TRUE(requests.contains("bytes=0-"));
}

TEST_F(UpdateServerTest, BadServersFailInTime) {
  struct Row {
    const char* name;
    QByteArray answer;
    bool stalls;
  };
  const Row rows[] = {
      {"missing", Answer("404 Not Found", "no"), false},
      {"broken", Answer("500 Oops", ""), false},
      {"garbage", "\x01\x02\x03 no http at all\r\n\r\n", false},
      {"nothing", "", false},
      {"silent", "", true},
      {"half a head", "HTTP/1.1 200 OK\r\nContent-", true},
      {"elsewhere", Answer("302 Found", "", "Location: http://192.0.2.1/x\r\n"), false},
      {"stalls in the text", "HTTP/1.1 200 OK\r\nContent-Length: 50\r\n\r\n1,2", true},
      {"cut off", "HTTP/1.1 200 OK\r\nContent-Length: 50\r\n\r\n1,2", false},
      {"200 megabytes",
       "HTTP/1.1 200 OK\r\nContent-Length: 209715200\r\n\r\n" + QByteArray(300000, 'x'), true},
  };
  for (const Row& row : rows) {
    answer = row.answer;
    stalls = row.stalls;
    QtUpdateServer updates(Base(), kDownloadTakes);
    QElapsedTimer time;
    time.start();
    EXPECT_FALSE(updates.Fetch("timerversion.txt")) << row.name;
    EXPECT_LT(time.elapsed(), 20 * kDownloadTakes) << row.name;
  }
}

TEST_F(UpdateServerTest, ATextThatTricklesInEndsInTime) {
  stalls = drips = true;
  for (const char* begin : {"", "HTTP/1.1 200 OK\r\nLast-Modified: x\r\n\r\n"}) {
    answer = begin;
    QtUpdateServer updates(Base(), kDownloadTakes);
    QElapsedTimer time;
    time.start();
    updates.DateOf("timerversion.txt");
    EXPECT_FALSE(updates.Fetch("timerversion.txt"));
    EXPECT_LT(time.elapsed(), 10 * kDownloadTakes);
  }
}

TEST_F(UpdateServerTest, WaitingCanBeStopped) {
  stalls = true;
  QtUpdateServer updates(Base(), 60000);
  QTimer::singleShot(50, &server, [&] { updates.Stop(); });
  EXPECT_EQ(updates.DateOf("timerversion.txt"), "");
  EXPECT_FALSE(updates.Fetch("timerversion.txt"));
  EXPECT_FALSE(updates.Begin("corvanelsetup.exe"));
}

TEST_F(UpdateServerTest, ADownloadComesInChunks) {
  QtUpdateServer updates(Base(), kDownloadTakes);
  const QByteArray body(50000, 'z');
  answer = Answer("200 OK", body);
  EXPECT_EQ(updates.Begin("corvanelsetup.exe").Value(), 50000);
  std::string all;
  for (;;) {
    const auto chunk = updates.Next();
    ASSERT_TRUE(chunk);
    EXPECT_LE(chunk.Value().size(), 20480U);
    if (chunk.Value().empty()) break;
    all += chunk.Value();
  }
  EXPECT_EQ(all, body.toStdString());
  answer = "HTTP/1.1 200 OK\r\nContent-Length: 50000\r\n\r\n" + QByteArray(100, 'z');
  stalls = true;
  ASSERT_TRUE(updates.Begin("corvanelsetup.exe"));
  EXPECT_EQ(updates.Next().Value().size(), 100U);
  EXPECT_FALSE(updates.Next());
}

TEST_F(UpdateServerTest, PlainHttpIsForThisComputerAlone) {
  QtUpdateServer updates(QUrl("http://updates.example.invalid/"), kDownloadTakes);
  EXPECT_EQ(updates.DateOf("timerversion.txt"), "");
  EXPECT_FALSE(updates.Fetch("timerversion.txt"));
  EXPECT_FALSE(updates.Begin("corvanelsetup.exe"));
}

}  // namespace
}  // namespace corvanel
