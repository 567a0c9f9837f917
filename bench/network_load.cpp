// Many pages on one server, as a congress has them: how late a command shows on them, and what they
// cost. network_load [PAGES]: prints a line a figure.

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <boost/asio.hpp>
#include <boost/beast.hpp>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <thread>
#include <vector>

#include "network/room_teller.h"
#include "network/web_server.h"
#include "system/open_files.h"
#include "tests/support/fakes.h"

namespace corvanel {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
using asio::ip::tcp;

constexpr int kCommands = 40;
constexpr double kCalm = 10;           // seconds without a command
constexpr double kQuestionEvery = 10;  // seconds, of each page

double Uptime() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// A page that notes how old each state is when it comes, and asks for the time as a page does.
class LoadPage : public std::enable_shared_from_this<LoadPage> {
 public:
  LoadPage(asio::io_context& context, std::vector<double>& ages)
      : socket_(context), timer_(context), ages_(ages) {}

  void Open(uint16_t port, double firstQuestion) {
    beast::get_lowest_layer(socket_).connect({asio::ip::make_address("127.0.0.1"), port});
    socket_.handshake("127.0.0.1", "/session");
    Read();
    Ask(firstQuestion);
  }

 private:
  void Read() {
    socket_.async_read(buffer_, [self = shared_from_this()](beast::error_code error, size_t) {
      if (error) return self->End();
      const std::string text = beast::buffers_to_string(self->buffer_.data());
      self->buffer_.consume(self->buffer_.size());
      const size_t now = text.find("\"now\":");
      if (text.starts_with("{\"version\"")) {
        self->ages_.push_back(Uptime() - std::strtod(text.c_str() + now + 6, nullptr));
      }
      self->Read();
    });
  }
  void Ask(double seconds) {
    timer_.expires_after(std::chrono::duration_cast<asio::steady_timer::duration>(
        std::chrono::duration<double>(seconds)));
    timer_.async_wait([self = shared_from_this()](beast::error_code error) {
      if (error) return;
      self->socket_.async_write(asio::buffer(self->question_),
                                [self](beast::error_code failed, size_t) {
                                  if (!failed) self->Ask(kQuestionEvery);
                                });
    });
  }
  void End() { timer_.cancel(); }

  beast::websocket::stream<tcp::socket> socket_;
  asio::steady_timer timer_;
  std::vector<double>& ages_;
  beast::flat_buffer buffer_;
  std::string question_ = "time 1";
};

/// The pages, in a process of their own; ends when the server does.
int RunPages(int pages, uint16_t port) {
  asio::io_context context;
  std::vector<double> ages;
  for (int i = 0; i < pages; ++i) {
    std::make_shared<LoadPage>(context, ages)->Open(port, kQuestionEvery * i / pages);
  }
  ages.clear();
  context.run();
  std::sort(ages.begin(), ages.end());
  if (ages.empty()) return 1;
  const auto part = [&](double share) {
    return 1000 * ages[static_cast<size_t>(share * static_cast<double>(ages.size() - 1))];
  };
  std::printf("states shown\t%zu\n", ages.size());
  std::printf("age in ms\tmedian %.1f, 99 of 100 within %.1f, longest %.1f\n", part(0.5),
              part(0.99), part(1));
  return 0;
}

double ProcessorSeconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto seconds = [](const timeval& t) {
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) * 1e-6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double ResidentKilobytes() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmRSS:")) return std::strtod(line.c_str() + 6, nullptr);
  }
  return 0;
}

void Wait(double seconds) {
  std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

int Run(int pages) {
  RaiseOpenFiles();
  ClockBench bench;
  auto server = WebServer::Listen(
      "127.0.0.1", 0,
      {Uptime, [](const std::string&) { return std::nullopt; }, [](const RemoteWord&) {}},
      {.viewersFrom = 100'000, .visitorsFrom = 100'000});
  if (!server) return 1;
  RoomTeller teller({bench.session, bench.clock, bench.time});
  teller.TellTo([&](const RoomState& state) { server.Value()->Show(state); });
  bench.broadcast.Add(teller);
  bench.clock.Start(1);
  const double before = ResidentKilobytes();
  std::fflush(stdout);
  const pid_t child = fork();
  if (child == 0) _exit((RunPages(pages, server.Value()->Port()), std::fflush(stdout), 0));
  while (server.Value()->ViewerCount() < static_cast<size_t>(pages)) Wait(0.1);
  Wait(1);
  std::printf("pages\t%d\n", pages);
  std::printf("memory a page, KB\t%.1f\n", (ResidentKilobytes() - before) / pages);
  const double calm = ProcessorSeconds();
  Wait(kCalm);
  std::printf("processor while nothing happens\t%.2f %% of a core\n",
              100 * (ProcessorSeconds() - calm) / kCalm);
  const double busy = ProcessorSeconds();
  for (int i = 0; i < kCommands; ++i) {
    bench.clock.Do(i % 2 == 0 ? SessionCommand::Pause : SessionCommand::Resume);
    Wait(0.5);
  }
  std::printf("processor for two commands a second\t%.2f %% of a core\n",
              100 * (ProcessorSeconds() - busy) / (kCommands * 0.5));
  std::fflush(stdout);
  server.Value().reset();
  int status = 0;
  waitpid(child, &status, 0);
  return status;
}

}  // namespace
}  // namespace corvanel

int main(int argc, char** argv) {
  return corvanel::Run(argc > 1 ? std::atoi(argv[1]) : 1000);
}
