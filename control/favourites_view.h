#pragma once

#include <string>
#include <vector>

namespace corvanel {

/// The favourites' controls in the control window. Nothing written here fires a handler.
class FavouritesView {
 public:
  virtual ~FavouritesView() = default;
  /// The list `cboFavs`, its text, and whether the loader frame around it is shown.
  virtual void ShowFavourites(const std::vector<std::string>& names, const std::string& text) = 0;
  /// The label that names the favourite in use.
  virtual void ShowInUse(const std::string& name) = 0;
  virtual void ClearNewName() = 0;
};

}  // namespace corvanel
