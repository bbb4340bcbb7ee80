#pragma once

#include "base/TextFile.h"

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace zem {

/// Where a game is written to. Every function throws KelError when it fails.
class Output {
public:
    virtual ~Output() = default;
    virtual void Write(std::string_view bytes) = 0;

    /// Makes sure that all that was written has arrived.
    virtual void Close() = 0;
};

/// A file, created or emptied when it is opened.
class OutputFile : public Output {
public:
    /// Throws KelError when the file cannot be opened for writing.
    explicit OutputFile(const std::string& path);

    void Write(std::string_view bytes) override;
    void Close() override;

private:
    std::unique_ptr<std::FILE, CloseFile> file_;
};

} // namespace zem
