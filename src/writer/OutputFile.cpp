#include "writer/OutputFile.h"

#include "base/KelError.h"
#include "base/SystemError.h"

#include <cerrno>

namespace zem {

namespace {

[[noreturn]] void ThrowUnwritable(int error) {
    throw KelError("the file cannot be written: " + DescribeSystemError(error));
}

} // namespace

OutputFile::OutputFile(const std::string& path) : file_(std::fopen(path.c_str(), "wb")) {
    if (!file_)
        ThrowUnwritable(errno);
    std::setvbuf(file_.get(), nullptr, _IONBF, 0); // LineWriter has a buffer already.
}

void OutputFile::Write(std::string_view bytes) {
    if (std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size())
        ThrowUnwritable(errno);
}

void OutputFile::Close() {
    if (std::fclose(file_.release()) != 0)
        ThrowUnwritable(errno);
}

} // namespace zem
