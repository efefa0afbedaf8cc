#include "convert/sound/mix_down.h"

#include <algorithm>
#include <cmath>

namespace convert {
namespace {

constexpr double kFullScale = 32768;
constexpr double kGreatest = 32767;
constexpr int kBytesPerSample = 2;

/// Little-endian, whatever the machine.
void Append(std::string& head, std::int64_t value, int bytes) {
  for (int i = 0; i < bytes; ++i) head += static_cast<char>(value >> (8 * i) & 0xff);
}

}  // namespace

SampleRounder::SampleRounder(bool dither, double peak) : dither_(dither), gain_(1) {
  const double greatest = dither ? kGreatest - 1 : kGreatest;
  // The negative end of the range reaches one step further: what comes from 16 bits has it and must stay.
  const double room = dither ? greatest : kFullScale;
  if (peak * kFullScale > room) gain_ = greatest / (peak * kFullScale);
}

double SampleRounder::Noise() {
  // xorshift64*; the upper half of the product as a number from 0 to 1.
  state_ ^= state_ >> 12;
  state_ ^= state_ << 25;
  state_ ^= state_ >> 27;
  return static_cast<double>(state_ * 0x2545f4914f6cdd1d >> 32) / 4294967296.0;
}

std::int16_t SampleRounder::Rounded(double sample) {
  double value = sample * gain_ * kFullScale;
  if (dither_) value += Noise() - Noise();
  return static_cast<std::int16_t>(std::clamp(std::nearbyint(value), -kFullScale, kGreatest));
}

std::string WaveHead(std::int64_t frames, std::int32_t samples_per_second) {
  constexpr std::int64_t kFormatBytes = 16;
  const std::int64_t data_bytes = frames * kBytesPerSample;
  std::string head = "RIFF";
  Append(head, 4 + 8 + kFormatBytes + 8 + data_bytes, 4);
  head += "WAVEfmt ";
  Append(head, kFormatBytes, 4);
  Append(head, 1, 2);  // plain samples
  Append(head, 1, 2);  // one channel
  Append(head, samples_per_second, 4);
  Append(head, std::int64_t{samples_per_second} * kBytesPerSample, 4);
  Append(head, kBytesPerSample, 2);
  Append(head, std::int64_t{8} * kBytesPerSample, 2);
  head += "data";
  Append(head, data_bytes, 4);
  return head;
}

}  // namespace convert
