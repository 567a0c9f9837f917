#include "widgets/letters.h"

#include <algorithm>

namespace corvanel {

QString CaptionOf(const QString& name, const QString& taken) {
  const auto free = std::find_if(name.begin(), name.end(), [&taken](QChar letter) {
    return letter.isLetterOrNumber() && !taken.contains(letter.toLower());
  });
  const auto before = free - name.begin();
  const auto escaped = [](QString part) { return part.replace('&', "&&"); };
  if (free == name.end()) return escaped(name);
  return escaped(name.left(before)) + '&' + escaped(name.mid(before));
}

}  // namespace corvanel
