#include "display/line_breaks.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace corvanel {
namespace {

constexpr std::string_view kBetweenParts = " - ";
constexpr std::string_view kBetweenFacts = " · ";

std::vector<std::string> Words(const std::string& text) {
  std::vector<std::string> words;
  size_t start = 0;
  while ((start = text.find_first_not_of(' ', start)) != std::string::npos) {
    const size_t end = std::min(text.find(' ', start), text.size());
    words.push_back(text.substr(start, end - start));
    start = end;
  }
  return words;
}

/// Takes off the last character, of one byte or of several.
void PopCharacter(std::string& text) {
  const auto continues = [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
  };
  while (!text.empty() && continues(text.back())) text.pop_back();
  if (!text.empty()) text.pop_back();
}

std::string Elided(std::string text, double width, const ElementStyle& style, double points,
                   const TextMeasure& measure) {
  if (measure.Line(text, style, points).width <= width) return text;
  const std::string ellipsis = "…";
  while (!text.empty() && measure.Line(text + ellipsis, style, points).width > width) {
    PopCharacter(text);
  }
  return text + ellipsis;
}

}  // namespace

std::vector<std::string> Fill(const std::string& text, double width, const ElementStyle& style,
                              double points, const TextMeasure& measure) {
  std::vector<std::string> lines;
  for (const std::string& word : Words(text)) {
    const std::string longer = lines.empty() ? word : lines.back() + ' ' + word;
    if (!lines.empty() && measure.Line(longer, style, points).width <= width) {
      lines.back() = longer;
    } else {
      lines.push_back(word);
    }
  }
  return lines;
}

double WidestLine(const std::vector<std::string>& lines, const ElementStyle& style, double points,
                  const TextMeasure& measure) {
  double widest = 0;
  for (const std::string& line : lines) {
    widest = std::max(widest, measure.Line(line, style, points).width);
  }
  return widest;
}

std::vector<std::string> Balance(const std::string& text, int count, const ElementStyle& style,
                                 double points, const TextMeasure& measure) {
  for (const auto& [mark, stays] :
       {std::pair(kBetweenParts, size_t{2}), std::pair(kBetweenFacts, size_t{0})}) {
    const size_t between = text.find(mark);
    if (count == 1 || between == std::string::npos) continue;
    std::vector<std::string> lines = {text.substr(0, between + stays)};
    for (std::string& line :
         Balance(text.substr(between + mark.size()), count - 1, style, points, measure)) {
      lines.push_back(std::move(line));
    }
    return lines;
  }
  double low = WidestLine(Words(text), style, points, measure);
  double high = WidestLine(Fill(text, 1e9, style, points, measure), style, points, measure);
  std::vector<std::string> best = Fill(text, high, style, points, measure);
  if (count == 1) return best;
  best = Fill(text, std::max(high / count, low), style, points, measure);
  for (int step = 0; step < 12; ++step) {
    const double width = (low + high) / 2;
    const auto lines = Fill(text, width, style, points, measure);
    if (static_cast<int>(lines.size()) > count) {
      low = width;
    } else {
      high = width;
      best = lines;
    }
  }
  return best;
}

std::vector<std::string> BreakLines(const std::string& text, int lines, double width,
                                    const ElementStyle& style, double points,
                                    const TextMeasure& measure) {
  // As few lines as the width allows: a short text keeps to one.
  std::vector<std::string> broken;
  for (int count = 1; count <= lines; ++count) {
    broken = Balance(text, count, style, points, measure);
    if (WidestLine(broken, style, points, measure) <= width) return broken;
  }
  broken = Fill(text, width, style, points, measure);
  while (static_cast<int>(broken.size()) > lines) {
    broken[broken.size() - 2] += ' ' + broken.back();
    broken.pop_back();
  }
  for (std::string& line : broken) line = Elided(line, width, style, points, measure);
  return broken;
}

}  // namespace corvanel
