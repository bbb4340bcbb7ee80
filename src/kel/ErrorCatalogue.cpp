#include "kel/ErrorCatalogue.h"

#include "base/LineText.h"
#include "base/TextFile.h"

#include <string_view>

namespace zem {

void LoadErrorCatalogue(Table<ErrorMessage>& errors, const std::string& path, Host& host) {
    std::string bytes;
    try {
        bytes = ReadFile(path);
    } catch (const KelError&) {
        host.ShowNotice("An error occurred when loading ZEMERR.DAT. Please check that the file exists in the "
                        "same directory as ZEM.",
                        "File Error");
        return;
    }
    for (std::string_view rest = bytes; !rest.empty();) {
        const std::string_view line = TakeLine(rest);
        if (line.starts_with('#'))
            continue;
        const std::size_t semicolon = line.find(';');
        if (semicolon == std::string_view::npos) {
            host.ShowNotice("Bad ZEMERR.DAT file", "");
            return;
        }
        errors.Append({std::string(Trim(line.substr(semicolon + 1))),
                       std::string(Trim(line.substr(0, semicolon))), ""});
    }
}

} // namespace zem
