#include "convert/sound/SoundFile.h"

#include <sndfile.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <utility>
#include <vector>

#include "convert/sound/mix_down.h"
#include "convert/streams.h"

namespace convert {
namespace {

constexpr std::size_t kPieceFrames = 4096;

double Mixed(const double* frame, int channels) {
  double sum = 0;
  for (int channel = 0; channel < channels; ++channel) {
    if (std::isfinite(frame[channel])) sum += frame[channel];
  }
  return sum / channels;
}

std::string Decibels(double gain) {
  char text[32];
  std::snprintf(text, sizeof text, "%.2f", -20 * std::log10(gain));
  return text;
}

Message BreaksOff(std::int64_t samples, std::int64_t readable) {
  return {QT_TRANSLATE_NOOP("convert", "the sound breaks off: of its %1 samples %2 can be read"),
          {std::to_string(samples), std::to_string(readable)}};
}

/// Where the samples of a wave file go: straight out, or aside until all of them are there.
class WaveSink {
 public:
  explicit WaveSink(const std::string& output) : output_(output) {
    if (output != kStandardStream) spool_.emplace(output);
  }
  bool Take(std::string_view bytes) {
    return spool_ ? spool_->Append(bytes) : WriteWhole(STDOUT_FILENO, bytes);
  }
  /// The reason of a failure, or an empty text.
  std::string Finish() {
    if (!spool_) return {};
    const auto bytes = spool_->Bytes();
    return bytes ? WriteOutput(output_, *bytes) : std::strerror(errno);
  }

 private:
  std::string output_;
  std::optional<Spool> spool_;
};

}  // namespace

struct SoundFile::State {
  SF_INFO info{};
  SNDFILE* file = nullptr;
};

SoundFile::SoundFile(std::unique_ptr<State> state) : state_(std::move(state)) {}

SoundFile::~SoundFile() { sf_close(state_->file); }

SoundFile::Opened SoundFile::Open(const std::string& name) {
  SeekableInput input = OpenSeekable(name);
  if (!input.reason.empty()) return {nullptr, input.reason};
  auto state = std::make_unique<State>();
  // From here on the library closes the file, also where it refuses it.
  state->file = sf_open_fd(input.file.Release(), SFM_READ, &state->info, SF_TRUE);
  if (!state->file) return {nullptr, sf_strerror(nullptr)};
  return {std::unique_ptr<SoundFile>(new SoundFile(std::move(state))), {}};
}

int SoundFile::Channels() const { return state_->info.channels; }

std::int32_t SoundFile::SamplesPerSecond() const { return state_->info.samplerate; }

std::optional<std::int64_t> SoundFile::FramesTold() const {
  // The library's greatest number stands for a length that only reading shows.
  if (state_->info.frames == SF_COUNT_MAX) return std::nullopt;
  return state_->info.frames;
}

bool SoundFile::IsPlainWave() const {
  const int kind = state_->info.format & SF_FORMAT_TYPEMASK, depth = state_->info.format & SF_FORMAT_SUBMASK;
  return kind == SF_FORMAT_WAV && (depth == SF_FORMAT_PCM_16 || depth == SF_FORMAT_PCM_U8) && Channels() <= 2;
}

bool SoundFile::FitsSixteenBits() const {
  if (Channels() != 1) return false;
  switch (state_->info.format & SF_FORMAT_SUBMASK) {
    case SF_FORMAT_PCM_16:
    case SF_FORMAT_PCM_S8:
    case SF_FORMAT_PCM_U8:
    case SF_FORMAT_ULAW:
    case SF_FORMAT_ALAW:
      return true;
    default:
      return false;
  }
}

void SoundFile::Play(const std::function<bool(std::span<const double>)>& take) {
  sf_seek(state_->file, 0, SEEK_SET);
  const auto channels = static_cast<std::size_t>(Channels());
  std::vector<double> piece(kPieceFrames * channels), mixed(kPieceFrames);
  while (true) {
    const sf_count_t frames = sf_readf_double(state_->file, piece.data(), kPieceFrames);
    if (frames <= 0) return;
    const auto count = static_cast<std::size_t>(frames);
    for (std::size_t i = 0; i < count; ++i) mixed[i] = Mixed(&piece[i * channels], Channels());
    if (!take(std::span<const double>(mixed.data(), count))) return;
  }
}

SoundFile::Scan SoundFile::ScanAll() {
  Scan scan;
  Play([&](std::span<const double> samples) {
    scan.frames += static_cast<std::int64_t>(samples.size());
    for (const double sample : samples) scan.peak = std::max(scan.peak, std::abs(sample));
    return true;
  });
  return scan;
}

Message WriteWave(SoundFile& sound, const std::string& output, Messages& notes) {
  const SoundFile::Scan scan = sound.ScanAll();
  if (scan.frames > kMostWaveFrames) {
    return {QT_TRANSLATE_NOOP("convert",
                              "the sound is too long: %1 samples, where a wave file of this form holds "
                              "%2"),
            {std::to_string(scan.frames), std::to_string(kMostWaveFrames)}};
  }
  const std::int64_t told = sound.FramesTold().value_or(scan.frames);
  if (scan.frames == 0 && told > 0) return BreaksOff(told, 0);
  SampleRounder rounder(!sound.FitsSixteenBits(), scan.peak);
  WaveSink sink(output);
  bool written = sink.Take(WaveHead(scan.frames, sound.SamplesPerSecond()));
  std::int64_t left = scan.frames;
  std::string bytes;
  sound.Play([&](std::span<const double> samples) {
    bytes.clear();
    // A file that grows meanwhile mustn't outgrow the size in the head.
    for (std::size_t i = 0; i < samples.size() && left > 0; ++i, --left) {
      const auto value = static_cast<std::uint16_t>(rounder.Rounded(samples[i]));
      bytes += static_cast<char>(value & 0xff);
      bytes += static_cast<char>(value >> 8);
    }
    written = written && sink.Take(bytes);
    return written;
  });
  if (!written) return {"%1", {std::strerror(errno)}};
  // What is damaged, or shrinks meanwhile, needn't give twice what it gave once.
  if (left > 0) return BreaksOff(std::max(told, scan.frames), scan.frames - left);
  const std::string failure = sink.Finish();
  if (!failure.empty()) return {"%1", {failure}};
  if (scan.frames < told) notes.push_back(BreaksOff(told, scan.frames));
  if (sound.Channels() > 1) {
    notes.push_back(
        {QT_TRANSLATE_NOOP("convert", "%1 channels are mixed to one"), {std::to_string(sound.Channels())}});
  }
  if (Decibels(rounder.Gain()) != "-0.00" && Decibels(rounder.Gain()) != "0.00") {
    notes.push_back({QT_TRANSLATE_NOOP("convert",
                                       "the sound is made quieter by %1 dB, so that its peaks are kept "
                                       "whole"),
                     {Decibels(rounder.Gain())}});
  }
  return {};
}

}  // namespace convert
