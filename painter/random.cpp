#include "painter/random.h"

namespace painter {

float UniformSequence::Next() {
  state_ = state_ * 6364136223846793005u + 1442695040888963407u;
  // 24 bits are what a float holds exactly, so that the largest draw stays below 1.
  return static_cast<float>(state_ >> 40) / static_cast<float>(1 << 24);
}

float NextRandom() {
  static UniformSequence sequence;
  return sequence.Next();
}

}  // namespace painter
