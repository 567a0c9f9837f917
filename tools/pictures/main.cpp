#include <QApplication>
#include <cstdio>

#include "app/desktop.h"
#include "tools/pictures/demonstration.h"
#include "tools/pictures/gallery.h"

/// Takes pictures of the real windows into a folder: of both displays in every state ("gallery"),
/// or of a short session while it is played ("demonstration").
int main(int argc, char** argv) {
  const QApplication app(argc, argv);
  QApplication::setApplicationName("Corvanel");
  QApplication::setQuitOnLastWindowClosed(false);
  const QStringList arguments = QApplication::arguments();
  const bool gallery = arguments.value(1) == "gallery";
  if (arguments.size() != 3 || (!gallery && arguments[1] != "demonstration")) {
    std::fprintf(stderr, "Usage: corvanel-pictures gallery|demonstration FOLDER\n");
    return 2;
  }
  // Settings of their own: what is played and saved here must not end up in the user's.
  corvanel::Desktop desktop((arguments[2] + "/settings.json").toStdString());
  if (!desktop.Load()) return 2;
  if (gallery) return corvanel::RenderGallery(desktop, arguments[2]) ? 0 : 2;
  const corvanel::Demonstration demonstration(desktop, arguments[2]);
  return QApplication::exec();
}
