// What belongs to a file beside its bytes: owner, group, mode, access list, extended attributes.
#pragma once

#include <sys/stat.h>

#include <string>

namespace sheet {

/// Gives a new file what belongs to an old one, as far as the system lets us. The rights of a group that
/// can't be kept go to nobody else. False, with errno, only if the disk is full or broken.
bool KeepBelongings(const std::string& old_path, const struct stat& old_status, int new_file);

}  // namespace sheet
