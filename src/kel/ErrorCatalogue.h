#pragma once

#include "base/Host.h"
#include "model/GameModel.h"

#include <string>

namespace zem {

/// Adds the entries of the error-message catalogue, "name; description" a line, to the table. What is wrong
/// with the file is shown through the host; the entries before a bad line stay.
void LoadErrorCatalogue(Table<ErrorMessage>& errors, const std::string& path, Host& host);

} // namespace zem
