// Loaded in front of the system's library: counts the calls that a save makes for its files, and at one of
// them fails, or kills the process before or after it. Writes are taken a piece at a time, so that there are
// calls within a file.
#include <dlfcn.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <string_view>

namespace {

constexpr int kKillBefore = -1, kKillAfter = -2;
/// Added to an error: all calls behind that one fail too.
constexpr int kLasting = 1000;
constexpr std::size_t kMostBytesAtOnce = 128;

bool armed = false;
int calls = 0, faulty_call = 0, fault = 0;
pid_t victim = 0;

bool Told(const char* name) { return std::getenv(name) != nullptr; }

template <typename Routine>
Routine* Real(const char* name) {
  return reinterpret_cast<Routine*>(dlsym(RTLD_NEXT, name));
}

bool IsOurs(const char* path) {
  const char* const folder = std::getenv("FAULTY_FOLDER");
  return armed && path != nullptr && folder != nullptr &&
         (std::string_view(path).starts_with(folder) || std::string_view(path).starts_with("/proc/self/fd"));
}

bool IsOurs(int file) {
  if (!armed) return false;
  struct stat status {};
  return fstat(file, &status) == 0 && (S_ISREG(status.st_mode) || S_ISDIR(status.st_mode));
}

void Kill() {
  kill(victim, SIGKILL);
  // A child whose parent has been killed goes on with what it does.
  while (getpid() == victim) pause();
}

/// One call that counts.
template <typename Call>
auto Counted(Call call) -> decltype(call()) {
  const bool is_faulty = ++calls == faulty_call || (calls > faulty_call && fault > kLasting);
  if (is_faulty && fault == kKillBefore) Kill();
  if (is_faulty && fault > 0) {
    errno = fault % kLasting;
    return static_cast<decltype(call())>(-1);
  }
  const auto result = call();
  if (is_faulty && fault == kKillAfter) {
    const int failure = errno;
    Kill();
    errno = failure;
  }
  return result;
}

int Refused(int error) {
  errno = error;
  return -1;
}

/// The error with which a folder that can't be written, or a file system without nameless files, refuses to
/// open this.
int Refusal(const char* path, int flags) {
  const bool nameless = (flags & O_TMPFILE) == O_TMPFILE;
  const char* const refusing = std::getenv("FAULTY_REFUSES");
  if (refusing != nullptr && (nameless || flags & O_CREAT) && std::string_view(path).starts_with(refusing))
    return EACCES;
  return nameless && Told("FAULTY_NO_NAMELESS") ? EOPNOTSUPP : 0;
}

}  // namespace

extern "C" {

void ArmFaults(int at_call, int what) {
  armed = true;
  calls = 0;
  faulty_call = at_call;
  fault = what;
  victim = getpid();
}

int DisarmFaults() {
  armed = false;
  return calls;
}

int open(const char* path, int flags, ...) {
  va_list list;
  va_start(list, flags);
  const auto mode = va_arg(list, mode_t);
  va_end(list);
  static const auto real = Real<int(const char*, int, ...)>("open");
  if (!IsOurs(path)) return real(path, flags, mode);
  return Counted([&] {
    const int refusal = Refusal(path, flags);
    return refusal == 0 ? real(path, flags, mode) : Refused(refusal);
  });
}

#define COUNTED_AS(result, name, parameters, arguments, subject, call) \
  result name parameters {                                             \
    static const auto real = Real<result parameters>(#name);           \
    if (!IsOurs(subject)) return real arguments;                       \
    return Counted([&] { return call; });                              \
  }
#define COUNTED(result, name, parameters, arguments, subject) \
  COUNTED_AS(result, name, parameters, arguments, subject, real arguments)

COUNTED_AS(ssize_t, write, (int file, const void* bytes, size_t size), (file, bytes, size), file,
           real(file, bytes, std::min(size, kMostBytesAtOnce)))
COUNTED_AS(int, rename, (const char* from, const char* to), (from, to), to,
           Told("FAULTY_RENAME") ? Refused(EPERM) : real(from, to))
COUNTED(ssize_t, read, (int file, void* bytes, size_t size), (file, bytes, size), file)
COUNTED(int, fsync, (int file), (file), file)
COUNTED(int, ftruncate, (int file, off_t size), (file, size), file)
COUNTED(off_t, lseek, (int file, off_t at, int from), (file, at, from), file)
COUNTED(int, fallocate, (int file, int mode, off_t at, off_t size), (file, mode, at, size), file)
COUNTED(int, fchown, (int file, uid_t user, gid_t group), (file, user, group), file)
COUNTED(int, fchmod, (int file, mode_t mode), (file, mode), file)
COUNTED(int, flock, (int file, int how), (file, how), file)
COUNTED(int, fsetxattr, (int file, const char* name, const void* value, size_t size, int flags),
        (file, name, value, size, flags), file)
COUNTED(int, fremovexattr, (int file, const char* name), (file, name), file)
COUNTED(ssize_t, getxattr, (const char* path, const char* name, void* value, size_t size),
        (path, name, value, size), path)
COUNTED(ssize_t, listxattr, (const char* path, char* list, size_t size), (path, list, size), path)
COUNTED(int, access, (const char* path, int mode), (path, mode), path)
COUNTED(int, stat, (const char* path, struct stat* status), (path, status), path)
COUNTED(int, unlink, (const char* path), (path), path)
COUNTED(int, linkat, (int from_folder, const char* from, int to_folder, const char* to, int flags),
        (from_folder, from, to_folder, to, flags), to)
COUNTED(int, renameat2, (int from_folder, const char* from, int to_folder, const char* to, unsigned flags),
        (from_folder, from, to_folder, to, flags), to)
}
