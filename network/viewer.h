#pragma once

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/websocket.hpp>
#include <deque>
#include <memory>
#include <string>
#include <string_view>

#include "network/remote_devices.h"
#include "network/web_answer.h"

namespace corvanel {

/// A connection, which is read from no faster than anybody has anything to say.
using WebStream = boost::beast::basic_stream<boost::asio::ip::tcp, boost::asio::any_io_executor,
                                             boost::beast::simple_rate_policy>;

class Viewer;

/// The server as its pages know it. All in its own thread.
class Viewers {
 public:
  virtual ~Viewers() = default;
  /// Its connection stands: it is to be sent the state.
  virtual void Joined(Viewer& viewer) = 0;
  virtual void Left(Viewer& viewer) = 0;
  /// A device says something; false when nobody who may.
  virtual bool Said(Viewer& viewer, std::string_view message) = 0;
  /// The server's time, an uptime in seconds.
  virtual double Uptime() const = 0;
};

/// What a page shows.
enum class PageKind { Session, Rooms };

/// A page that shows the session, or the rooms: it is sent every new state, and what time it is
/// when it asks. The page of a device that is let in is also sent what devices are told.
class Viewer : public std::enable_shared_from_this<Viewer> {
 public:
  /// `number` tells it from all others.
  Viewer(uint64_t number, PageKind kind, WebStream stream, boost::asio::ip::address from,
         Viewers& viewers);
  const boost::asio::ip::address& From() const { return from_; }
  /// Answers the request that asks for the connection.
  void Accept(const WebRequest& request);
  /// A state takes the place of one that still waits to be sent: a slow page gets the latest only.
  void Send(const SharedText& state);
  void Tell(const SharedText& devices);
  void Answer(std::string text);
  void Close();

  uint64_t Number() const { return number_; }
  PageKind Kind() const { return kind_; }
  RemoteLine& Line() { return line_; }
  std::optional<RemoteDevice> device;  // that has shown on this connection that it is let in

 private:
  void Read();
  void Received();
  void Write();
  bool Hurries();
  bool Understand(std::string_view text);
  void Leave();

  boost::beast::websocket::stream<WebStream> socket_;
  const boost::asio::ip::address from_;
  Viewers& viewers_;
  boost::beast::flat_buffer received_;
  boost::asio::steady_timer slow_;
  const uint64_t number_;
  const PageKind kind_;
  RemoteLine line_;
  SharedText state_;                // waits to be sent
  SharedText devices_;              // the same
  std::deque<SharedText> answers_;  // the same
  SharedText sending_;
  double minuteOf_ = 0;  // uptime from which its messages are counted
  int messages_ = 0;
  bool open_ = false;
};

}  // namespace corvanel
