// The rules about numbers, texts of numbers and colours that hold everywhere, each once.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

/// A boolean kept as a 16-bit integer: true is -1, false is 0.
using Flag = std::int16_t;
inline constexpr Flag kTrue = -1;
inline constexpr Flag kFalse = 0;

/// A colour as one number: red + 256 x green + 65536 x blue, each part 0 to 255.
using Color = std::int32_t;

constexpr Color Rgb(int red, int green, int blue) { return red | green << 8 | blue << 16; }
constexpr int RedOf(Color color) { return color & 255; }
constexpr int GreenOf(Color color) { return color >> 8 & 255; }
constexpr int BlueOf(Color color) { return color >> 16 & 255; }

/// Nearest integer, ties to the even neighbour; values beyond the range of the result stop at its ends,
/// what is not a number gives 0.
std::int32_t RoundToLong(double value);
std::int64_t RoundToInt64(double value);
/// The same for a signed 16-bit result.
std::int16_t RoundToShort(double value);
/// Next integer at or below the value, held within 32 bits likewise.
std::int32_t FloorToLong(double value);

/// Integer division of floating-point operands: both are rounded first, the quotient is cut toward zero.
/// A divisor that rounds to 0 gives 0.
std::int32_t IntegerDivide(double dividend, double divisor);

/// The decimal number at the start of a text: blanks skipped, those within it too ("12 4" is 124), the point
/// is the decimal sign in every locale, what follows the number is ignored; 0 if there is none. No exponent
/// form. A number too great for a double gives the greatest one; 0 has no sign.
double NumberAtStart(std::string_view text);

/// A number in its decimal form: shortest digits that read back as the same value, no exponent, the point
/// as decimal sign: 12, 29.97.
std::string NumberText(double value);

/// The number form with a place for the sign: " 13", "-13".
std::string SignedForm(std::int64_t value);

/// The picture "###.#": at most one digit behind the sign, none forced on either side, the sign always
/// there: 12.34 gives 12.3, 0.5 gives .5, 3 gives "3.". Ties go away from zero.
std::string OneDecimalPicture(double value, std::string_view decimal_sign);

/// An amount of memory for a message, in whole tenths: "1.2 GB".
enum class RoundTo { Above, Below };
std::string SizeText(double bytes, RoundTo direction);

/// Design positions: 15 twips to the pixel, whatever the screen. Cut, not rounded: 1150 twips are 76 pixels.
inline constexpr int kTwipsPerPixel = 15;
constexpr int PixelsFromTwips(int twips) { return twips / kTwipsPerPixel; }
constexpr int TwipsFromPixels(int pixels) { return pixels * kTwipsPerPixel; }

}  // namespace platform
