// The one sequence of random numbers of the process.
#pragma once

#include <cstdint>

namespace painter {

/// A uniform sequence from 0 up to but not including 1. Always starts at the same place.
class UniformSequence {
 public:
  float Next();

 private:
  std::uint64_t state_ = 0x853c49e6748fea9bu;
};

/// The next draw of the process-wide sequence. Nothing ever seeds it: each run goes through the same numbers.
float NextRandom();

}  // namespace painter
