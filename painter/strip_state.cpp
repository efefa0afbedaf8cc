#include "painter/strip_state.h"

namespace painter {

StripState& TheStrips() {
  static StripState strips;
  return strips;
}

}  // namespace painter
