#pragma once

#include <functional>
#include <string>

namespace zem {

/// Runs `write`, which writes a new version of the file at the path to the file it is given, so that nothing
/// is lost when it fails: the version that is there is first kept beside it under its name and a "~". `write`
/// is not run when that cannot be done.
///
/// The new version is written beside the file and takes its place in one step, so that the file is whole at
/// any moment, even when the program is killed, as long as no other program saves it. Where that cannot be
/// done (the file has other names, another owner or special rights, the disk has no room for three versions),
/// `write` is run, perhaps again, on the file itself. When that throws, the file is back byte for byte, or
/// gone if there was none, and a KelError says so in plain words.
///
/// Both versions are on the disk when this returns, which takes as long as the disk takes. That is done here
/// and not by whoever writes: only what replaces an author's file is worth the wait.
void ReplaceFile(const std::string& path, const std::function<void(const std::string& file)>& write);

} // namespace zem
