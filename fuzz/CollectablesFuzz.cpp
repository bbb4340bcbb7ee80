// Any text as the definition line of a collectable: it is taken apart; and unless a "[" stands before the
// display text, which begins there, what was built once comes back from its line.
#include "model/CollectableDefinition.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string line(reinterpret_cast<const char*>(data), size);
    const zem::CollectableDefinition definition = zem::ParseCollectable(line);
    zem::CheckCollectable(definition);
    if ((definition.Name + definition.Min + definition.Max + definition.InitialValue).find('[') !=
        std::string::npos)
        return 0;
    const std::string built = zem::BuildCollectable(zem::ParseCollectable(zem::BuildCollectable(definition)));
    if (zem::BuildCollectable(zem::ParseCollectable(built)) != built)
        std::abort();
    return 0;
}
