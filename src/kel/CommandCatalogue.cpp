#include "kel/CommandCatalogue.h"

#include "base/LineText.h"
#include "base/TextFile.h"

#include <array>
#include <string_view>

namespace zem {

namespace {

CommandDefinition ReadDefinition(std::string_view line) {
    std::array<std::string, 5> fields;
    for (std::size_t k = 0; k + 1 < fields.size(); ++k) {
        const std::size_t percent = line.find('%');
        if (percent == std::string_view::npos)
            throw KelError("a command needs five fields with \"%\" between them");
        fields[k] = Trim(line.substr(0, percent));
        line.remove_prefix(percent + 1);
    }
    fields.back() = Trim(line); // which may hold further "%"
    return {fields[0], fields[1], fields[2], fields[3], fields[4]};
}

} // namespace

void LoadCommandCatalogue(CommandCatalogue& catalogue, const std::string& path) {
    catalogue.Clear();
    const std::string bytes = ReadFile(path);
    if (bytes.empty())
        throw KelError("the file is empty");
    std::size_t number = 0;
    for (std::string_view rest = bytes; !rest.empty();)
        UseLineOfFile(TakeLine(rest), ++number,
                      [&](std::string_view line) { catalogue.Append(ReadDefinition(line)); });
}

} // namespace zem
