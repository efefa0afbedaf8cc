#include "recorder/take.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "sheet/safe_write.h"

namespace recorder {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kPrefix = "take-";
constexpr int kMostNames = 1000;
constexpr std::uint64_t kBytesPerSample = 2;

// The lock tells other processes that somebody is at work on the take; it goes with the process.
bool Lock(int file) { return flock(file, LOCK_EX | LOCK_NB) == 0; }

}  // namespace

Take::Take(std::string path, int file, const WaveForm& form, std::uint64_t data_bytes)
    : path_(std::move(path)), file_(file), form_(form), data_bytes_(data_bytes) {}

Take::~Take() {
  unlink(path_.c_str());
  close(file_);
}

std::unique_ptr<Take> Take::Begin(const std::string& folder, const WaveForm& form, std::string& failure) {
  std::error_code error;
  fs::create_directories(folder, error);
  if (error) {
    failure = error.message();
    return nullptr;
  }
  for (int i = 0; i < kMostNames; ++i) {
    const std::string name =
        std::string(kPrefix) + std::to_string(getpid()) + "-" + std::to_string(i) + ".wav";
    const std::string path = (fs::path(folder) / name).string();
    const int file = open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (file < 0 && errno == EEXIST) continue;
    if (file < 0) break;
    // On a file system without locks the take can't be told from one that was left; it works all the same.
    (void)Lock(file);
    std::unique_ptr<Take> take(new Take(path, file, form, 0));
    if (take->Finish()) return take;
    failure = take->Failure();
    return nullptr;
  }
  failure = std::strerror(errno);
  return nullptr;
}

std::unique_ptr<Take> Take::Open(const std::string& path) {
  const int file = open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
  if (file < 0) return nullptr;
  struct stat status {};
  WaveHeader header{};
  const bool ours = fstat(file, &status) == 0 && S_ISREG(status.st_mode) && Lock(file) &&
                    pread(file, header.data(), header.size(), 0) == static_cast<ssize_t>(header.size());
  const auto form = ours ? ReadWaveHeader(header) : std::nullopt;
  if (!form) {
    close(file);
    return nullptr;
  }
  const auto bytes = static_cast<std::uint64_t>(status.st_size) - kWaveHeaderBytes;
  const std::uint64_t whole = std::min(bytes, kMostDataBytes) / kBytesPerSample * kBytesPerSample;
  return std::unique_ptr<Take>(new Take(path, file, *form, whole));
}

std::unique_ptr<Take> Take::LeftBehind(const std::string& folder) {
  std::error_code error;
  for (auto at = fs::directory_iterator(folder, error); !error && at != fs::directory_iterator();
       at.increment(error)) {
    if (!at->path().filename().string().starts_with(kPrefix)) continue;
    // A take without a sample is of no use to anybody: its end here removes the file.
    auto take = Open(at->path().string());
    if (take && take->DataBytes() > 0 && take->Finish()) return take;
  }
  return nullptr;
}

bool Take::Append(std::span<const std::int16_t> samples) {
  const std::uint64_t room = (kMostDataBytes - data_bytes_) / kBytesPerSample;
  const auto some = samples.first(static_cast<std::size_t>(std::min<std::uint64_t>(room, samples.size())));
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(some.data());
  if (!WriteAt({bytes, some.size_bytes()}, kWaveHeaderBytes + data_bytes_)) return false;
  data_bytes_ += some.size_bytes();
  return some.size() == samples.size();
}

bool Take::WriteAt(std::span<const std::uint8_t> bytes, std::uint64_t at) {
  while (!bytes.empty()) {
    const ssize_t written = pwrite(file_, bytes.data(), bytes.size(), static_cast<off_t>(at));
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return Failed();
    bytes = bytes.subspan(static_cast<std::size_t>(written));
    at += static_cast<std::uint64_t>(written);
  }
  return true;
}

bool Take::Failed() {
  failure_ = std::strerror(errno);
  return false;
}

bool Take::Finish() {
  // A failed write may have left a part of its block at the end: it is cut off.
  if (ftruncate(file_, static_cast<off_t>(kWaveHeaderBytes + data_bytes_)) != 0) return Failed();
  return WriteAt(MakeWaveHeader(form_, data_bytes_), 0);
}

std::string Take::SaveAs(const std::string& path) {
  if (!Finish()) return failure_;
  const std::size_t length = kWaveHeaderBytes + static_cast<std::size_t>(data_bytes_);
  void* const mapped = mmap(nullptr, length, PROT_READ, MAP_SHARED, file_, 0);
  if (mapped == MAP_FAILED) return std::strerror(errno);
  sheet::SafeWriter writer(path);
  std::string failure = writer.CreateFailure();
  if (failure.empty()) failure = writer.Finish({static_cast<const char*>(mapped), length});
  munmap(mapped, length);
  return failure;
}

double Take::Seconds() const {
  const auto bytes_per_second =
      static_cast<double>(form_.frames_per_second) * form_.channels * double{kBytesPerSample};
  return static_cast<double>(data_bytes_) / bytes_per_second;
}

}  // namespace recorder
