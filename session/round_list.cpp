#include "session/round_list.h"

#include <charconv>

namespace corvanel {

RoundList::RoundList(std::string text) : text_(std::move(text)) {
  for (size_t start = 0; start <= text_.size();) {
    const size_t end = std::min(text_.find(',', start), text_.size());
    const std::string piece = text_.substr(start, end - start);
    int round = 0;
    std::from_chars(piece.data(), piece.data() + piece.size(), round);
    // "07" or " 7" is no round: a list is compared as it is written.
    if (std::to_string(round) == piece) rounds_.push_back(round);
    start = end + 1;
  }
}

}  // namespace corvanel
