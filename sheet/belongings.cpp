#include "sheet/belongings.h"

#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <utility>
#include <vector>

namespace sheet {
namespace {

constexpr const char* kAccessList = "system.posix_acl_access";
/// The system's own limit for a list of names and for a value.
constexpr std::size_t kMostAttributeBytes = 65536;

/// The access list as the system hands it out: a version of four bytes, then eight bytes for each entry, the
/// lowest byte first: tag (2), rights (2), user or group (4).
class AccessList {
 public:
  explicit AccessList(std::string bytes) : bytes_(std::move(bytes)) {}

  const std::string& Bytes() const { return bytes_; }

  mode_t RightsOfGroup() const { return Rights(kOwningGroup).value_or(0) & Rights(kMask).value_or(7); }

  /// What the owning group may do beyond what everybody may goes.
  void LowerGroupToOthers() {
    for (std::size_t at = kHeader; at + kEntry <= bytes_.size(); at += kEntry)
      if (Number(at) == kOwningGroup)
        bytes_[at + 2] = static_cast<char>(Number(at + 2) & Rights(kOthers).value_or(0));
  }

 private:
  static constexpr std::size_t kHeader = 4, kEntry = 8;
  static constexpr unsigned kOwningGroup = 0x04, kMask = 0x10, kOthers = 0x20;

  unsigned Number(std::size_t at) const {
    return static_cast<unsigned char>(bytes_[at]) |
           static_cast<unsigned>(static_cast<unsigned char>(bytes_[at + 1])) << 8;
  }
  std::optional<mode_t> Rights(unsigned tag) const {
    for (std::size_t at = kHeader; at + kEntry <= bytes_.size(); at += kEntry)
      if (Number(at) == tag) return Number(at + 2) & 7u;
    return std::nullopt;
  }

  std::string bytes_;
};

/// Whether the failure that errno tells is the system's way of saying that this can't be kept here.
bool MayBeLost() { return errno != ENOSPC && errno != EDQUOT && errno != EIO && errno != ENOMEM; }

std::vector<std::string> AttributeNames(const std::string& path) {
  std::string list(kMostAttributeBytes, '\0');
  const ssize_t size = listxattr(path.c_str(), list.data(), list.size());
  std::vector<std::string> names;
  for (std::size_t at = 0; size > 0 && at < static_cast<std::size_t>(size); at += names.back().size() + 1)
    names.emplace_back(list.c_str() + at);
  return names;
}

std::optional<std::string> Attribute(const std::string& path, const std::string& name) {
  std::string value(kMostAttributeBytes, '\0');
  const ssize_t size = getxattr(path.c_str(), name.c_str(), value.data(), value.size());
  if (size < 0) return std::nullopt;
  value.resize(static_cast<std::size_t>(size));
  return value;
}

bool Set(int file, const std::string& name, const std::string& value) {
  return fsetxattr(file, name.c_str(), value.data(), value.size(), 0) == 0;
}

}  // namespace

bool KeepBelongings(const std::string& old_path, const struct stat& old_status, int new_file) {
  mode_t mode = old_status.st_mode & 07777;
  const mode_t others = mode & 07;
  const bool owner_kept = fchown(new_file, old_status.st_uid, old_status.st_gid) == 0;
  if (!owner_kept && !MayBeLost()) return false;
  const bool group_kept = owner_kept || fchown(new_file, static_cast<uid_t>(-1), old_status.st_gid) == 0;
  if (!group_kept && !MayBeLost()) return false;
  if (!owner_kept) mode &= ~static_cast<mode_t>(S_ISUID);
  if (!group_kept) mode &= ~static_cast<mode_t>(S_ISGID);

  std::optional<AccessList> access;
  bool access_kept = false;
  for (const std::string& name : AttributeNames(old_path)) {
    std::optional<std::string> value = Attribute(old_path, name);
    if (!value) continue;
    const bool is_access = name == kAccessList;
    if (is_access) {
      access.emplace(*std::move(value));
      if (!group_kept) access->LowerGroupToOthers();
      value = access->Bytes();
    }
    const bool kept = Set(new_file, name, *value);
    if (!kept && !MayBeLost()) return false;
    if (is_access) access_kept = kept;
  }
  if (!access_kept) {
    // The folder may have given the new file a list of its own.
    fremovexattr(new_file, kAccessList);
    // Beside a list, the group's bits of a mode tell the most that anybody in it may do.
    mode_t group = access ? access->RightsOfGroup() : mode >> 3 & 07;
    if (!group_kept) group &= others;
    mode = (mode & ~static_cast<mode_t>(070)) | group << 3;
  }
  return fchmod(new_file, mode) == 0 || MayBeLost();
}

}  // namespace sheet
