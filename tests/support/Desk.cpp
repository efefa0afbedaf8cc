#include "support/desk.h"

#include <QCoreApplication>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "app/Form1.h"
#include "app/Program.h"
#include "host/HostSession.h"

namespace support {
namespace {

std::string LittleEndian(std::size_t value, int bytes) {
  std::string out;
  for (int i = 0; i < bytes; ++i) out += static_cast<char>(value >> (8 * i) & 255);
  return out;
}

}  // namespace

std::string ScratchFolder() {
  /// Takes the folder away at the end of the process.
  struct Folder {
    std::string path = (std::filesystem::temp_directory_path() / "für Łódź-XXXXXX").string();
    Folder() { path = mkdtemp(path.data()); }
    ~Folder() {
      std::error_code ignored;
      std::filesystem::remove_all(path, ignored);
    }
  };
  static const Folder folder;
  return folder.path;
}

std::string WriteScratch(const std::string& name, const std::string& bytes) {
  const std::string path = ScratchFolder() + "/" + name;
  std::ofstream(path, std::ios::binary) << bytes;
  return path;
}

std::string ReadWhole(const std::string& path) {
  std::ostringstream all;
  all << std::ifstream(path, std::ios::binary).rdbuf();
  return all.str();
}

std::string WaveBytes(int bits_per_sample, int samples_per_second, const std::string& data, int channels) {
  const auto bits = static_cast<std::size_t>(bits_per_sample), count = static_cast<std::size_t>(channels),
             rate = static_cast<std::size_t>(samples_per_second), block = count * bits / 8;
  return "RIFF" + LittleEndian(36 + data.size(), 4) + "WAVEfmt " + LittleEndian(16, 4) + LittleEndian(1, 2) +
         LittleEndian(count, 2) + LittleEndian(rate, 4) + LittleEndian(rate * block, 4) +
         LittleEndian(block, 2) + LittleEndian(bits, 2) + "data" + LittleEndian(data.size(), 4) + data;
}

void HandleEvents() {
  for (int i = 0; i < 10; ++i) QCoreApplication::processEvents();
}

Desk::Desk() {
  host->app_dir = ScratchFolder();
  host::HostSession.Set(host);
  app::AppTitle = "Exposure Sheet 2.3";
}

Form1& Desk::Main() {
  form1.Hold().Show();
  HandleEvents();
  return *form1.IfLoaded();
}

}  // namespace support
