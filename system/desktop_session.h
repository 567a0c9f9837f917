#pragma once

#include <cstdint>
#include <string>

namespace corvanel {

/// Before the first window: of two window systems takes the one that lets a program say where its
/// windows stand. What the environment's QT_QPA_PLATFORM says holds all the same.
void ChooseWindowSystem();

/// The sign that the director himself started this program, by which the desktop lets a window
/// come to the front; empty when there is none. To be asked before the first window uses it up.
std::string StartToken();

/// Hands the token of a later start to a window that is then activated. `window`: its number on
/// the X server; 0 when it is no window of X. A token that is empty or that the desktop does not
/// know changes nothing.
void UseStartToken(const std::string& token, uint64_t window);

}  // namespace corvanel
