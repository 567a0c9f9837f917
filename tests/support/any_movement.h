#pragma once

#include <random>

#include "scoring/scoring_picture.h"

namespace corvanel {

/// Chance, always the same for the same seed.
class Dice {
 public:
  explicit Dice(unsigned seed) : random_(seed) {}
  int Below(int least, int greatest) {
    return std::uniform_int_distribution<int>(least, greatest)(random_);
  }
  bool Chance(double share) { return std::bernoulli_distribution(share)(random_); }
  double Between(double least, double greatest) {
    return std::uniform_real_distribution<double>(least, greatest)(random_);
  }

 private:
  std::mt19937 random_;
};

/// A session of one or two sections, each of a movement of its own: a Mitchell with pairs numbered
/// through or from 1 on both sides, with an arrow-switch, or a Howell; with a pair that is missing,
/// a table that pauses for a round, a rover's table, or boards that are listed one by one.
ScoringPicture AnyMovement(Dice& dice, int rounds, int boards);

/// Whether a table has something to play in a round.
bool IsPlayed(const ScoringPicture& picture, const RoundRow& row);
/// The boards of a row, those of its list when it has one.
std::vector<int16_t> BoardsOf(const RoundRow& row);

}  // namespace corvanel
