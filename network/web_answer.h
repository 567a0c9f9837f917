#pragma once

#include <boost/beast/http.hpp>
#include <memory>
#include <string>
#include <string_view>

namespace corvanel {

/// What is sent. Shared by all that get the same.
using SharedText = std::shared_ptr<const std::string>;

/// What the answers are made of beside the pages.
class Sources {
 public:
  virtual ~Sources() = default;
  /// How things stand now, as JSON.
  virtual std::string StateNow() const = 0;
  /// The bytes of a sound by its number; null where there is none.
  virtual SharedText Sound(size_t number) = 0;
};

/// What a web request gets that is no WebSocket.
using WebRequest = boost::beast::http::request<boost::beast::http::string_body>;
struct WebAnswer {  // NOLINT(bugprone-exception-escape): moved as Boost moves its heads
  boost::beast::http::response<boost::beast::http::empty_body> head;  // tells the body's length
  SharedText body;                                                    // null: none follows
};
WebAnswer AnswerTo(const WebRequest& request, Sources& sources);

/// The answer to what cannot be understood or is refused.
WebAnswer Refusal(boost::beast::http::status status, unsigned version = 11);

/// Whether a page of another site asks: browsers tell where a page is from, and under which name
/// they look for this computer. In a club's network that is an address or a name without a domain.
bool IsFromElsewhere(const WebRequest& request);

/// Whether these bytes begin as a sound file does.
bool IsSound(std::string_view bytes);

}  // namespace corvanel
