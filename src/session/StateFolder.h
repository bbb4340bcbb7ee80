#pragma once

#include <QString>

namespace zem {

/// The folder for what the editor keeps for the user between its runs and that is no setting: recovery copies
/// and earlier versions. It need not exist yet.
QString StateFolder();

} // namespace zem
