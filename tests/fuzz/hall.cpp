#include "tests/fuzz/hall.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <utility>

namespace corvanel {
namespace {

constexpr ptrdiff_t kMostOfAKind = 60;  // of a hundred connections that are no pages
constexpr size_t kRemembered = 32;

}  // namespace

void Faults::Tell(const std::string& fault) {
  constexpr size_t kPrinted = 20;
  if (++count_ <= kPrinted) fmt::print(stderr, "FAULT: {}\n", fault);
}

void Overheard::Add(const std::string& word) {
  const std::lock_guard lock(mutex_);
  if (words_.size() == kRemembered) words_.erase(words_.begin());
  words_.push_back(word);
}

std::string Overheard::Word(size_t before) const {
  const std::lock_guard lock(mutex_);
  return words_.empty() ? "" : words_[words_.size() - 1 - before % words_.size()];
}

bool Loiterers::Full(bool page) const {
  const std::lock_guard lock(mutex_);
  return std::count_if(all_.begin(), all_.end(),
                       [&](const Loiterer& one) { return one.page == page; }) >= kMostOfAKind;
}

bool Loiterers::Take(Loiterer loiterer) {
  if (Full(loiterer.page)) return false;
  const std::lock_guard lock(mutex_);
  all_.push_back(std::move(loiterer));
  return true;
}

void Loiterers::Step() {
  const std::lock_guard lock(mutex_);
  for (auto one = all_.begin(); one != all_.end();) {
    WebCaller& caller = *one->caller;
    if (!one->left.empty()) {
      caller.Send(one->left.substr(0, 1));
      one->left.erase(0, 1);
    }
    while (caller.Receive(0)) continue;
    const bool late = uptime_() > one->until;
    if (late) faults_.Tell(fmt::format("{} is never let go", one->what));
    if (caller.Ended()) ++ended_;
    one = late || caller.Ended() ? all_.erase(one) : std::next(one);
  }
}

void Loiterers::GoOn(const std::stop_token& stopped) {
  while (!stopped.stop_requested()) {
    Step();
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
}

void Loiterers::SeeOut() {
  {
    const std::lock_guard lock(mutex_);
    std::erase_if(all_, [](const Loiterer& one) { return one.page; });
  }
  for (bool done = false; !done;) {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    const std::lock_guard lock(mutex_);
    done = all_.empty();
  }
}

}  // namespace corvanel
