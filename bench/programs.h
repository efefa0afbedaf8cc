// Running a program beside another: what can't be had twice in one process.
#pragma once

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>
#include <string>

namespace bench {

/// Runs a program of this build, by its name, with one argument or none, to its end. Throws if it fails.
inline void RunProgram(const std::string& name, const std::string& argument = {}) {
  std::string path = BUILD_DIR "/" + name, word = argument;
  char* const arguments[] = {path.data(), word.empty() ? nullptr : word.data(), nullptr};
  pid_t process = 0;
  int status = 0;
  if (posix_spawn(&process, path.c_str(), nullptr, nullptr, arguments, environ) != 0)
    throw std::runtime_error("Can't start " + path);
  waitpid(process, &status, 0);
  if (status != 0) throw std::runtime_error(path + " failed");
}

}  // namespace bench
