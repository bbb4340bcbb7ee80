#pragma once

#include <functional>
#include <string>

namespace zem {

/// Runs `write`, which writes the file at the path, so that nothing is lost when it fails: the file that is
/// there is first kept beside it under its name and a "~". When `write` throws, the file is back byte for
/// byte, or gone if there was none, and a KelError says so in plain words. `write` is not run when the file
/// that is there cannot be kept.
///
/// Both versions are on the disk when this returns, which takes as long as the disk takes. That is done here
/// and not by whoever writes: only what replaces an author's file is worth the wait.
void ReplaceFile(const std::string& path, const std::function<void()>& write);

} // namespace zem
