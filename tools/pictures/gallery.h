#pragma once

#include <QString>

#include "app/desktop.h"

namespace corvanel {

/// Renders both displays in every state at five sizes into a folder, and all of them on one
/// contact sheet, "contact-sheet.png". Returns false when a picture could not be written.
bool RenderGallery(Desktop& desktop, const QString& folder);

}  // namespace corvanel
