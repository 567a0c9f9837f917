#pragma once

#include <boost/beast/core.hpp>
#include <boost/beast/websocket.hpp>
#include <deque>
#include <memory>
#include <string>

#include "network/web_answer.h"

namespace corvanel {

/// What a page is sent. Shared by all pages that get the same.
using SharedText = std::shared_ptr<const std::string>;

class Viewer;

/// The server as its pages know it. All in its own thread.
class Viewers {
 public:
  virtual ~Viewers() = default;
  virtual void Joined(const std::shared_ptr<Viewer>& viewer) = 0;
  virtual void Left(Viewer& viewer) = 0;
  /// The server's time, an uptime in seconds.
  virtual double Uptime() const = 0;
};

/// A page that shows the session: it is sent every new state, and what time it is when it asks.
class Viewer : public std::enable_shared_from_this<Viewer> {
 public:
  Viewer(boost::beast::tcp_stream stream, Viewers& viewers);
  /// Answers the request that asks for the connection.
  void Accept(const WebRequest& request);
  /// A state takes the place of one that still waits to be sent: a slow page gets the latest only.
  void Send(const SharedText& state);
  void Close();

 private:
  void Read();
  void Answer();
  void Write();
  bool Hurries();
  void Leave();

  boost::beast::websocket::stream<boost::beast::tcp_stream> socket_;
  Viewers& viewers_;
  boost::beast::flat_buffer received_;
  SharedText state_;                // waits to be sent
  std::deque<SharedText> answers_;  // the same
  SharedText sending_;
  double secondOf_ = 0;  // uptime from which its messages are counted
  int messages_ = 0;
  bool joined_ = false;
};

}  // namespace corvanel
