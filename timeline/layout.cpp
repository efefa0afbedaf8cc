#include "timeline/layout.h"

#include <stdexcept>
#include <string>

#include "platform/numbers.h"

namespace timeline {

const ControlPlace* FindPlace(std::string_view control) {
  for (const ControlPlace& place : kWindowPlaces)
    if (place.control == control) return &place;
  for (const ControlPlace& place : kViewportPlaces)
    if (place.control == control) return &place;
  return nullptr;
}

const StripLine& StripLineOf(std::string_view control) {
  for (const StripLine& line : kStripLines)
    if (line.control == control) return line;
  throw std::logic_error("no rule " + std::string(control));
}

std::optional<WindowLayout> LayoutFor(int client_width, int client_height) {
  if (client_width < kLeastWidth || client_height < kLeastHeight) return std::nullopt;
  return WindowLayout{client_width - 140, client_height - 182, client_height - 166,
                      CommentColumnTwips(client_width)};
}

int CommentColumnTwips(int client_width) { return platform::TwipsFromPixels(client_width - 284); }

}  // namespace timeline
