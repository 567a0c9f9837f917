#pragma once

#include <boost/beast/http.hpp>
#include <optional>
#include <string>

namespace corvanel {

/// What the answers are made of beside the pages.
class Sources {
 public:
  virtual ~Sources() = default;
  /// How things stand now, as JSON.
  virtual std::string StateNow() const = 0;
  /// The bytes of a sound by its number; nothing where there is none.
  virtual std::optional<std::string> Sound(size_t number) const = 0;
};

/// What a web request gets that is no WebSocket.
using WebRequest = boost::beast::http::request<boost::beast::http::string_body>;
using WebAnswer = boost::beast::http::response<boost::beast::http::string_body>;
WebAnswer AnswerTo(const WebRequest& request, const Sources& sources);

/// The answer to what cannot be understood or is refused.
WebAnswer Refusal(boost::beast::http::status status, unsigned version = 11);

/// Whether a page of another site asks for the connection: browsers tell where a page is from.
bool IsFromElsewhere(const WebRequest& request);

}  // namespace corvanel
