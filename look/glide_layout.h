// Where the bar of a scroll trough stands.
#pragma once

namespace look {

/// A bar within its trough, in pixels from the trough's left end.
struct BarPlace {
  int left = 0, width = 0;
  friend bool operator==(const BarPlace&, const BarPlace&) = default;
};

/// The bar is as wide as one of the range's positions, but never too narrow to be taken hold of (three times
/// the trough's height), and with any range at all never wider than half the trough. A range of 0 fills the
/// trough. `position` runs from 0 to `range`.
BarPlace PlaceBar(int trough_width, int trough_height, int range, int position);

/// The position whose bar has its left end nearest to a pixel, held within 0 and `range`.
int PositionAtBarLeft(int left, int trough_width, int trough_height, int range);

/// How many positions a press beside the bar moves: the bar's own width, at least 1.
int PageOf(int trough_width, int trough_height, int range);

}  // namespace look
