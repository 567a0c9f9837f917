#pragma once

#include <boost/beast/http.hpp>
#include <functional>
#include <memory>
#include <string>

namespace corvanel {

/// What a web request gets that is no WebSocket. `state`: what GET /state answers now.
using WebRequest = boost::beast::http::request<boost::beast::http::string_body>;
using WebAnswer = boost::beast::http::response<boost::beast::http::string_body>;
WebAnswer AnswerTo(const WebRequest& request, const std::function<std::string()>& state);

/// The answer to what cannot be understood or is refused.
WebAnswer Refusal(boost::beast::http::status status, unsigned version = 11);

/// Whether a page of another site asks for the connection: browsers tell where a page is from.
bool IsFromElsewhere(const WebRequest& request);

}  // namespace corvanel
