#include "tests/fuzz/stranger.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <nlohmann/json.hpp>
#include <utility>

#include "basics/numbers.h"
#include "tests/support/remote_device.h"

namespace corvanel {
namespace {

using nlohmann::json;

const std::string kGet = "GET /state HTTP/1.1\r\nHost: 127.0.0.1\r\n\r\n";
const std::string kPost =
    "POST / HTTP/1.1\r\nHost: 127.0.0.1\r\nContent-Length: 500\r\n\r\n" + std::string(500, 'x');
const std::string kChunks =
    "POST / HTTP/1.1\r\nHost: 127.0.0.1\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n0\r\n"
    "Trailer: x\r\n\r\n";
const std::string kFaultyFrame = Frame{0xFF, "x", 5}.Bytes();
const std::string kGoodbye = Frame{0x88, "\x03\xE8"}.Bytes();

std::string Time(double uptime) {
  return fmt::format("{:.3f}", uptime);
}

}  // namespace

const std::vector<Stranger::Kind>& Stranger::Kinds() {
  static const std::vector<Kind> kinds = {
      {"random bytes", &Stranger::RandomBytes},
      {"changed requests", &Stranger::ChangedRequests},
      {"long heads and bodies", &Stranger::LongRequests},
      {"silent connections", &Stranger::StaysSilent},
      {"stopped in the middle", &Stranger::StopsInTheMiddle},
      {"byte by byte", &Stranger::ByteByByte},
      {"pages that stay", &Stranger::PageThatStays},
      {"changed handshakes", &Stranger::ChangedHandshake},
      {"changed frames", &Stranger::ChangedFrames},
      {"fragments and control frames", &Stranger::Fragments},
      {"strange texts", &Stranger::Texts},
      {"forged words", &Stranger::ForgedWords},
      {"repeated words", &Stranger::RepeatedWords},
      {"changed words", &Stranger::ChangedWords},
      {"out of order, late or early", &Stranger::WordsOutOfOrderOrTime},
      {"words of others", &Stranger::WordsOfOthers},
      {"joins", &Stranger::Joins},
  };
  return kinds;
}

size_t Stranger::Below(size_t limit) {
  return std::uniform_int_distribution<size_t>(0, limit - 1)(random_);
}

std::string Stranger::Bytes(size_t most) {
  std::string bytes(Below(most) + 1, ' ');
  for (char& byte : bytes) byte = static_cast<char>(random_());
  return bytes;
}

std::string Stranger::Hex(size_t digits) {
  std::string text(digits, ' ');
  for (char& digit : text) digit = "0123456789abcdef"[Below(16)];
  return text;
}

std::string Stranger::Changed(std::string text) {
  for (size_t changes = 1 + Below(4); changes > 0; --changes) {
    const size_t place = Below(text.size());
    switch (Below(4)) {
      case 0:
        text[place] = static_cast<char>(random_());
        break;
      case 1:
        text.erase(place, 1 + Below(20));
        break;
      case 2:
        text.insert(place, std::string(OneIn(10) ? Below(3000) : Below(4), text[place]));
        break;
      default:
        text.insert(place, text.substr(Below(text.size()), Below(40)));
    }
    if (text.empty()) text = "x";
  }
  return text;
}

/// One that means something at most moments.
std::string Stranger::Command() {
  const char* const commands[] = {"pause", "resume", "longer", "shorter", "next round 1"};
  return AnyOf(commands);
}

/// One of the addresses 127.0.0.1 to 127.0.3.232.
uint32_t Stranger::Host() {
  return 0x7F000001 + static_cast<uint32_t>(Below(1000));
}

/// Half of them wait for the server to end the connection too, half do not.
bool Stranger::Leave(WebCaller& caller, double patience) {
  if (OneIn(4)) {
    caller.Receive(0.01);
  } else {
    caller.SeeOut(patience);
  }
  return !caller.Received().empty();
}

bool Stranger::Send(const std::string& bytes) {
  WebCaller caller(hall_.port, Host());
  caller.Send(bytes);
  return Leave(caller);
}

bool Stranger::AsPage(const std::string& bytes) {
  WebCaller caller(hall_.port, Host());
  if (!caller.Upgrade()) return false;
  caller.Send(bytes);
  return Leave(caller);
}

bool Stranger::RandomBytes() {
  return Send(Bytes(size_t{1} << Below(12)));
}

bool Stranger::ChangedRequests() {
  const std::string* const requests[] = {&kGet, &kPost, &kChunks, &kUpgrade};
  std::string bytes = Changed(*AnyOf(requests));
  for (size_t more = OneIn(20) ? Below(200) : Below(3); more > 0; --more) bytes += kGet;
  return Send(bytes);
}

bool Stranger::LongRequests() {
  const std::string get = "GET / HTTP/1.1\r\nHost: x\r\n";
  const std::string post = "POST / HTTP/1.1\r\nHost: x\r\n";
  const std::string many(size_t{1} << Below(18), static_cast<char>('a' + Below(26)));
  switch (Below(6)) {
    case 0:
      return Send(get + "X: " + many + "\r\n\r\n");
    case 1:
      return Send("GET /" + many + " HTTP/1.1\r\n\r\n");
    case 2: {
      std::string bytes = get;
      for (size_t lines = Below(5000); lines > 0; --lines) bytes += "A: b\r\n";
      return Send(bytes + "\r\n");
    }
    case 3:
      return Send(post + fmt::format("Content-Length: {}\r\n\r\n", random_() << Below(40)) + many);
    case 4:
      return Send(post + fmt::format("Transfer-Encoding: chunked\r\n\r\n{:x}\r\n", random_()) +
                  many);
    default:
      return Send(post + "Transfer-Encoding: chunked\r\n\r\n1;" + many + "\r\nx\r\n0\r\n" + many +
                  ": x\r\n\r\n");
  }
}

bool Stranger::Stay(std::unique_ptr<WebCaller> caller, std::string left, bool page, double seconds,
                    const char* what) {
  return hall_.loiterers.Take(
      {std::move(caller), std::move(left), page, hall_.uptime() + seconds, what});
}

// The server waits ten seconds for a request; twice that is much with sanitizers.
constexpr double kRequestEnds = 25;

bool Stranger::StaysSilent() {
  if (hall_.loiterers.Full(false)) return RandomBytes();
  auto caller = std::make_unique<WebCaller>(hall_.port, Host());
  if (OneIn(2)) caller->Send(kGet);
  return Stay(std::move(caller), "", false, kRequestEnds, "a silent connection");
}

bool Stranger::StopsInTheMiddle() {
  if (hall_.loiterers.Full(false)) return ChangedRequests();
  auto caller = std::make_unique<WebCaller>(hall_.port, Host());
  const std::string* const requests[] = {&kGet, &kPost, &kChunks, &kUpgrade};
  const std::string request = *AnyOf(requests);
  caller->Send(request.substr(0, Below(request.size() - 1)));
  return Stay(std::move(caller), "", false, kRequestEnds, "a request that stops");
}

bool Stranger::ByteByByte() {
  if (hall_.loiterers.Full(false)) return LongRequests();
  const std::string requests[] = {"GET / HTTP/1.1\r\nX: " + std::string(1000, 'x'), kPost, kChunks};
  return Stay(std::make_unique<WebCaller>(hall_.port, Host()), AnyOf(requests), false, kRequestEnds,
              "a request that comes byte by byte");
}

/// It answers no pings: forty seconds after its last byte it is taken for gone.
bool Stranger::PageThatStays() {
  if (hall_.loiterers.Full(true)) return ChangedFrames();
  auto caller = std::make_unique<WebCaller>(hall_.port, Host());
  if (!caller->Upgrade()) return false;
  const std::string begun = Frame{0x81, "time 1", 200}.Bytes();
  const std::string said[] = {"", begun, kGoodbye, kFaultyFrame, Frame{0x01, "x"}.Bytes()};
  caller->Send(AnyOf(said));
  const std::string left = OneIn(2) ? "" : begun;
  return Stay(std::move(caller), left, true, 60 + static_cast<double>(left.size()) / 5,
              "a page that stays");
}

bool Stranger::ChangedHandshake() {
  const std::string frame = Frame{0x81, "time 1"}.Bytes();
  return Send(OneIn(2) ? Changed(kUpgrade) + frame : Changed(kUpgrade + frame));
}

std::string Stranger::AnyFrame() {
  const uint64_t lengths[] = {
      0, 1, 124, 125, 126, 256, 1024, 65535, 1 << 20, 0xFFFFFFFF, uint64_t{1} << 62, ~uint64_t{0}};
  Frame frame{static_cast<unsigned>(random_() & 0xFFU), OneIn(3) ? Bytes(300) : "time 1"};
  if (OneIn(3)) frame.head = 0x81;
  if (OneIn(3)) frame.length = AnyOf(lengths);
  frame.masked = !OneIn(6);
  return OneIn(3) ? Changed(frame.Bytes()) : frame.Bytes();
}

bool Stranger::ChangedFrames() {
  std::string frames;
  for (size_t more = 1 + Below(4); more > 0; --more) frames += AnyFrame();
  return AsPage(frames);
}

/// What a page may send is bounded however it is cut up.
bool Stranger::Fragments() {
  const unsigned heads[] = {0x00, 0x01, 0x02, 0x80, 0x81, 0x88, 0x89, 0x8A, 0x09};
  const size_t most = OneIn(20) ? 3000 : 12;
  std::string frames;
  for (size_t more = 1 + Below(most); more > 0; --more) {
    frames += Frame{AnyOf(heads), std::string(OneIn(4) ? Below(200) : Below(3), 'f')}.Bytes();
  }
  if (OneIn(2)) frames.insert(0, Frame{0x01, ""}.Bytes());
  return AsPage(frames);
}

/// Whatever a page is told is JSON, and nothing of what devices are told.
std::string Stranger::HearAnswer(WebCaller& caller, bool known) {
  for (;;) {
    const auto text = caller.Hear(0.3);
    if (!text) return "";
    if (!json::accept(*text)) hall_.faults.Tell("this is no JSON: " + *text);
    const bool forDevices = text->starts_with("{\"lead\"") || text->starts_with("{\"device\"");
    if (forDevices && !known) hall_.faults.Tell("a stranger is told: " + *text);
    if (!forDevices && !text->starts_with("{\"version\"") && !text->starts_with("{\"clock\"")) {
      return *text;
    }
  }
}

bool Stranger::Texts() {
  const std::string texts[] = {"",
                               "time",
                               "time 1",
                               "time -0",
                               "time nan",
                               "time inf",
                               "time 1e308",
                               "time 1e999",
                               "time  1",
                               "hello",
                               "hello ",
                               "say",
                               "say ",
                               "say   ",
                               "{\"round\":2}",
                               "here",
                               "pause",
                               std::string(256, 'x'),
                               std::string(257, 'x'),
                               "time " + std::string(251, '1')};
  WebCaller caller(hall_.port, Host());
  if (!caller.Upgrade()) return false;
  std::string frames;
  for (size_t more = OneIn(30) ? 300 : 1 + Below(4); more > 0; --more) {
    const std::string text = AnyOf(texts);
    frames +=
        Frame{OneIn(4) ? 0x82U : 0x81U, OneIn(4) && !text.empty() ? Changed(text) : text}.Bytes();
  }
  caller.Send(frames + Frame{0x81, "time 2"}.Bytes());
  HearAnswer(caller, false);
  return Leave(caller);
}

std::string Stranger::Meet(WebCaller& caller) {
  if (!caller.Upgrade() || !caller.Say("hello")) return "";
  const auto told = json::parse(HearAnswer(caller, false), nullptr, false);
  return told.is_object() ? told.value("challenge", "") : "";
}

bool Stranger::SayInVain(WebCaller& caller, const std::vector<std::string>& words,
                         const std::string& refused) {
  // Not all of it is text.
  for (const std::string& word : words) caller.Send(Frame{0x82, word}.Bytes());
  const std::string answer = HearAnswer(caller, refused != "unknown");
  const auto told = json::parse(answer, nullptr, false);
  if (!answer.empty() && (told.value("word", 1) != 0 || told.value("refused", "") != refused)) {
    hall_.faults.Tell(fmt::format("\"{}\" is answered by {}", words[0], answer));
  }
  Leave(caller, 0);
  return !answer.empty();
}

/// With the right words around it, or not.
bool Stranger::ForgedWords() {
  WebCaller caller(hall_.port, Host());
  const std::string challenge = OneIn(4) && caller.Upgrade() ? "" : Meet(caller);
  if (caller.Ended()) return false;
  const std::string ids[] = {RemoteDevice{hall_.deviceKey, ""}.Id(),
                             hall_.openId,
                             RemoteDevice{hall_.usedKey, ""}.Id(),
                             RemoteDevice{"", ""}.Id(),
                             Hex(16),
                             Hex(Below(20))};
  std::vector<std::string> words;
  for (size_t more = 1 + Below(3); more > 0; --more) {
    SpeakingDevice own(OneIn(2) ? Hex(64) : std::string(64, '0'));
    own.Meet(challenge);
    std::string word = own.Say(Command(), hall_.uptime());
    word.replace(4, 16, AnyOf(ids));
    words.push_back(OneIn(3) ? word.substr(0, 4 + Below(word.size() - 3)) : word);
  }
  return SayInVain(caller, words);
}

bool Stranger::RepeatedWords() {
  WebCaller caller(hall_.port, Host());
  if (OneIn(4) ? !caller.Upgrade() : Meet(caller).empty()) return false;
  std::vector<std::string> words;
  for (size_t more = 1 + Below(3); more > 0; --more) {
    words.push_back(hall_.overheard.Word(OneIn(2) ? 0 : Below(32)));
  }
  return SayInVain(caller, words);
}

/// Only its sign differs from what the device might say here.
bool Stranger::ChangedWords() {
  WebCaller caller(hall_.port, Host());
  SpeakingDevice device(hall_.deviceKey);
  device.Meet(Meet(caller));
  std::vector<std::string> words;
  for (size_t more = 1 + Below(3); more > 0; --more) {
    const std::string word = device.Say(Command(), hall_.uptime());
    std::string other = OneIn(4) ? word.substr(0, 4 + Below(word.size() - 4)) : Changed(word);
    // Digits can be written with letters of either case.
    if (!SameName(other, word)) words.push_back(std::move(other));
  }
  return !words.empty() && SayInVain(caller, words);
}

bool Stranger::WordsOutOfOrderOrTime() {
  WebCaller caller(hall_.port, Host());
  SpeakingDevice device(hall_.deviceKey);
  device.Meet(Meet(caller));
  const double now = hall_.uptime();
  const auto number = static_cast<uint32_t>(1 + Below(OneIn(2) ? 3 : 0xFFFFFFFE));
  const std::string here = device.Signed(number, Time(now), "here");
  const std::string times[] = {Time(now - 11), Time(now - 1e6), Time(now + 60), Time(now + 1e9),
                               "nan",          "inf",           "-inf",         "1e300"};
  const auto before = static_cast<uint32_t>(Below(number + 1));
  switch (Below(3)) {
    case 0:
      return SayInVain(caller, {device.Signed(number, AnyOf(times), Command()), here}, "late");
    case 1:
      caller.Say(here);
      return SayInVain(caller, {here, device.Signed(before, Time(now), Command())}, "repeated");
    default:
      caller.Say(here);
      return SayInVain(caller, {device.Signed(before, Time(now), Command()), here}, "repeated");
  }
}

bool Stranger::WordsOfOthers() {
  WebCaller caller(hall_.port, Host());
  const char* const keys[] = {hall_.usedKey.c_str(), "", "00"};
  SpeakingDevice other(OneIn(2) ? Hex(64) : std::string(AnyOf(keys)));
  other.Meet(Meet(caller));
  return SayInVain(caller, {other.Say(OneIn(4) ? "here" : Command(), hall_.uptime()),
                            other.Say(Command(), hall_.uptime())});
}

/// By a code that was used, and by the name of the one that is open.
bool Stranger::Joins() {
  WebCaller caller(hall_.port, Host());
  SpeakingDevice used(hall_.usedKey);
  used.Meet(Meet(caller));
  std::string word =
      used.Say(OneIn(4) ? "join " + Bytes(60) : SpeakingDevice::Join("Mallory"), hall_.uptime());
  if (OneIn(2)) word.replace(4, 16, hall_.openId);
  return SayInVain(
      caller, {word, used.Say(SpeakingDevice::Join("Mallory"), hall_.uptime()), Changed(word)});
}

}  // namespace corvanel
