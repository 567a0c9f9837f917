#pragma once

#include <QString>

namespace corvanel {

/// A name as the caption of a control: with the letter that leads to it, the name's first that is
/// not `taken` (in small letters); without one where all are. '&' in the name stays what it is.
QString CaptionOf(const QString& name, const QString& taken);

}  // namespace corvanel
