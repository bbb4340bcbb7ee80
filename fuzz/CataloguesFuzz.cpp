// Any bytes as the command catalogue: it loads or is refused, and whatever it holds serves for look-ups.
#include "kel/CommandLookup.h"
#include "kel/RenderScript.h"

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string path = "/tmp/zem-fuzz-" + std::to_string(getpid()) + ".dat";
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    std::ofstream(path, std::ios::binary) << bytes;
    zem::CommandCatalogue catalogue;
    try {
        zem::LoadCommandCatalogue(catalogue, path);
    } catch (const zem::KelError&) {
        // The entries before the bad line stay, and are looked up below.
    }
    unlink(path.c_str());
    const zem::CommandLookup commands(catalogue);
    try {
        zem::RenderScript("msg <x>\r\nif has <y> then z\r\n" + bytes.substr(0, 100), zem::ScriptForm::Rich,
                          zem::InternalProcedures::ShowCall, {}, commands, true);
    } catch (const zem::KelError&) {
        // A template may ask for a parameter that the line lacks.
    }
    return 0;
}
