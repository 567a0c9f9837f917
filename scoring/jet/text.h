#pragma once

#include <string>

#include "scoring/jet/file.h"

namespace corvanel::jet {

/// A text of the file as UTF-8: in Jet 3 single bytes of the file's code page, in Jet 4 pairs of
/// bytes (UTF-16), or a stretch of single ones where a mark says so.
std::string TextOf(const View& bytes, const File& file);

}  // namespace corvanel::jet
