#include "network/web_answer.h"

#include <algorithm>
#include <utility>

#include "network/pages.h"

namespace corvanel {
namespace {

namespace http = boost::beast::http;

struct Route {
  std::string_view path;
  std::string_view file;
  std::string_view type;
};

constexpr std::string_view kHtml = "text/html; charset=utf-8";
constexpr std::string_view kScript = "text/javascript; charset=utf-8";
constexpr std::string_view kStyle = "text/css; charset=utf-8";
constexpr std::string_view kPlain = "text/plain; charset=utf-8";

/// Every file that there is; no path leads anywhere else.
constexpr Route kRoutes[] = {
    {"/", "display.html", kHtml},
    {"/remote", "remote.html", kHtml},
    {"/rooms", "rooms.html", kHtml},
    {"/display.css", "display.css", kStyle},
    {"/remote.css", "remote.css", kStyle},
    {"/rooms.css", "rooms.css", kStyle},
    {"/icon.svg", "corvanel.svg", "image/svg+xml"},
    {"/count.js", "count.js", kScript},
    {"/display.js", "display.js", kScript},
    {"/line.js", "line.js", kScript},
    {"/noble.js", "noble.js", kScript},
    {"/remote.js", "remote.js", kScript},
    {"/room.js", "room.js", kScript},
    {"/rooms.js", "rooms.js", kScript},
    {"/sounds.js", "sounds.js", kScript},
    {"/sync.js", "sync.js", kScript},
};

void Protect(WebAnswer& answer) {
  answer.head.set(http::field::cache_control, "no-store");
  answer.head.set("Content-Security-Policy",
                  "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self'; "
                  "media-src 'self'; connect-src 'self'; base-uri 'none'; form-action 'none'; "
                  "frame-ancestors 'none'");
  answer.head.set("X-Content-Type-Options", "nosniff");
  answer.head.set("Referrer-Policy", "no-referrer");
}

WebAnswer AnswerWith(http::status status, unsigned version, std::string_view type,
                     const SharedText& body) {
  WebAnswer answer{{status, version}, body};
  answer.head.set(http::field::content_type, {type.data(), type.size()});
  answer.head.content_length(body->size());
  Protect(answer);
  return answer;
}

SharedText Shared(std::string text) {
  return std::make_shared<const std::string>(std::move(text));
}

std::string_view PathOf(const WebRequest& request) {
  const std::string_view target(request.target().data(), request.target().size());
  return target.substr(0, target.find('?'));
}

SharedText PageOf(std::string_view file) {
  const auto& files = PageFiles();
  return Shared(std::string(std::find_if(files.begin(), files.end(), [&](const PageFile& f) {
                              return f.name == file;
                            })->bytes));
}

/// "/sound/3"
SharedText SoundOf(std::string_view path, Sources& sources) {
  constexpr std::string_view kSounds = "/sound/";
  if (!path.starts_with(kSounds) || path.size() != kSounds.size() + 1) return nullptr;
  const char digit = path.back();
  if (digit < '0' || digit > '9') return nullptr;
  return sources.Sound(static_cast<size_t>(digit - '0'));
}

}  // namespace

WebAnswer Refusal(http::status status, unsigned version) {
  const auto reason = http::obsolete_reason(status);
  WebAnswer answer =
      AnswerWith(status, version, kPlain, Shared(std::string(reason.data(), reason.size()) + '\n'));
  answer.head.keep_alive(false);
  return answer;
}

WebAnswer AnswerTo(const WebRequest& request, Sources& sources) {
  const bool head = request.method() == http::verb::head;
  if (request.method() != http::verb::get && !head) {
    return Refusal(http::status::method_not_allowed, request.version());
  }
  const std::string_view path = PathOf(request);
  const auto* const route =
      std::find_if(std::begin(kRoutes), std::end(kRoutes),
                   [&](const Route& candidate) { return candidate.path == path; });
  WebAnswer answer;
  if (path == "/state") {
    answer = AnswerWith(http::status::ok, request.version(), "application/json",
                        Shared(sources.StateNow()));
  } else if (route != std::end(kRoutes)) {
    answer = AnswerWith(http::status::ok, request.version(), route->type, PageOf(route->file));
  } else if (const SharedText sound = SoundOf(path, sources)) {
    answer = AnswerWith(http::status::ok, request.version(), "application/octet-stream", sound);
  } else {
    return Refusal(http::status::not_found, request.version());
  }
  // The length is told all the same.
  if (head) answer.body = nullptr;
  answer.head.keep_alive(request.keep_alive());
  return answer;
}

bool IsFromElsewhere(const WebRequest& request) {
  const auto origin = request[http::field::origin];
  const auto field = request[http::field::host];
  const std::string host(field.data(), field.size());
  const std::string name = host.substr(0, host.rfind(':'));
  const bool address = name.find_first_not_of("0123456789.") == std::string::npos;
  const bool local = name.find('.') == std::string::npos || name.ends_with(".local");
  if (!address && !local) return true;
  return !origin.empty() && std::string_view(origin.data(), origin.size()) != "http://" + host;
}

bool IsSound(std::string_view bytes) {
  const bool mpeg = bytes.size() > 1 && bytes[0] == '\xFF' && (bytes[1] & 0xE0) == 0xE0;
  return mpeg || bytes.starts_with("RIFF") || bytes.starts_with("OggS") ||
         bytes.starts_with("fLaC") || bytes.starts_with("ID3") || bytes.starts_with("FORM");
}

}  // namespace corvanel
