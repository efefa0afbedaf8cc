#include "recorder/wave_header.h"

#include <algorithm>
#include <string_view>

namespace recorder {
namespace {

constexpr std::uint64_t kBytesPerSample = 2;
constexpr std::size_t kRateAt = 24, kChannelsAt = 22;

class Writer {
 public:
  explicit Writer(WaveHeader& header) : header_(header) {}
  void Text(std::string_view text) {
    for (const char c : text) header_[at_++] = static_cast<std::uint8_t>(c);
  }
  void Number(std::uint64_t value, int bytes) {
    for (int i = 0; i < bytes; ++i, value >>= 8) header_[at_++] = static_cast<std::uint8_t>(value & 0xFF);
  }

 private:
  WaveHeader& header_;
  std::size_t at_ = 0;
};

std::uint64_t NumberAt(std::span<const std::uint8_t> bytes, std::size_t at, std::size_t count) {
  std::uint64_t value = 0;
  for (std::size_t i = count; i-- > 0;) value = value << 8 | bytes[at + i];
  return value;
}

}  // namespace

WaveHeader MakeWaveHeader(const WaveForm& form, std::uint64_t data_bytes) {
  WaveHeader header{};
  Writer out(header);
  const auto rate = static_cast<std::uint64_t>(form.frames_per_second);
  const auto frame_bytes = static_cast<std::uint64_t>(form.channels) * kBytesPerSample;
  out.Text("RIFF");
  out.Number(kWaveHeaderBytes - 8 + data_bytes, 4);
  out.Text("WAVEfmt ");
  out.Number(16, 4);
  out.Number(1, 2);
  out.Number(static_cast<std::uint64_t>(form.channels), 2);
  out.Number(rate, 4);
  out.Number(rate * frame_bytes, 4);
  out.Number(frame_bytes, 2);
  out.Number(8 * kBytesPerSample, 2);
  out.Text("data");
  out.Number(data_bytes, 4);
  return header;
}

std::optional<WaveForm> ReadWaveHeader(std::span<const std::uint8_t> bytes) {
  if (bytes.size() < kWaveHeaderBytes) return std::nullopt;
  const WaveForm form{static_cast<int>(NumberAt(bytes, kRateAt, 4)),
                      static_cast<int>(NumberAt(bytes, kChannelsAt, 2))};
  if (form.frames_per_second < 1 || form.channels < 1) return std::nullopt;
  // The two lengths are left out of the comparison: they are written last.
  const WaveHeader made = MakeWaveHeader(form, 0);
  const bool same = std::equal(made.begin() + 8, made.begin() + 40, bytes.begin() + 8) &&
                    std::equal(made.begin(), made.begin() + 4, bytes.begin());
  return same ? std::optional(form) : std::nullopt;
}

}  // namespace recorder
